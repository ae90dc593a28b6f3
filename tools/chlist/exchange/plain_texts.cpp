// From broadcast texts to UTF-8.
#include "chlist/exchange/plain_texts.h"

#include <utility>

#include "chlist/text/broadcast_text.h"

namespace chlist {
namespace {

constexpr std::string line_up_service::*texts[] = {&line_up_service::name,     &line_up_service::short_name,
                                                   &line_up_service::provider, &line_up_service::genre,
                                                   &line_up_service::country,  &line_up_service::source};

void make_plain(std::string &text, loss_counts &lost) {
  if (!names_table(text)) {
    return;
  }
  plain_text made = utf8_of(text);
  lost.add("character tables of names, which are written in UTF-8");
  lost.add("characters of names that their table does not have, or of an unknown table", made.is_whole ? 0 : 1);
  text = std::move(made.text);
}

}  // namespace

line_up with_plain_texts(line_up list, loss_counts &lost) {
  for (line_up_service &service : list.services) {
    for (std::string line_up_service::*const text : texts) {
      make_plain(service.*text, lost);
    }
  }
  for (favourite_group &group : list.favourites) {
    make_plain(group.name, lost);
  }
  return list;
}

}  // namespace chlist
