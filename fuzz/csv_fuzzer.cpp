// Importing CSV: the input is its text. What a list is filled with is written, and comes back whole.
#include <channel/channel.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>

#include "chlist/exchange/csv/csv_line_up.h"
#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/list_exchange.h"
#include "harness.h"

namespace {

struct exported {
  std::string text;
  bool is_whole = false;  // whether the list took everything
  bool is_plain = false;  // whether it is one that CSV holds as it is
};

// A service at another frequency than its transponder, or in no view, may come to stand elsewhere.
bool is_plain(const chlist::line_up &list, const chlist::loss_counts &lost) {
  return std::ranges::all_of(list.services, &chlist::line_up_service::is_listed) &&
         std::ranges::none_of(lost.rows(), [](const chlist::loss_counts::row &row) {
           return row.what.starts_with("identities of transponders");
         });
}

exported through_a_list(std::string_view text) {
  chlist::loss_counts lost;
  exported made;
  made.is_whole = chlist::fill_list(chlist::line_up_of_csv(text, lost), lost).is_whole();
  fuzz::require_invariants({}, "after the import");
  const chlist::line_up list = chlist::take_line_up(*get_channel_list(), lost);
  made.is_plain = is_plain(list, lost);
  made.text = chlist::write_csv(list, {}, lost).at(0).text;
  return made;
}

void import(std::string_view text) {
  const exported first = through_a_list(text);
  const exported second = through_a_list(first.text);
  if (first.is_plain) {
    fuzz::require(second.is_whole, "what is written is taken whole");
    fuzz::require(through_a_list(second.text).text == second.text, "what was read once comes back whole");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const fuzz::run run(data, 0);
  try {
    import({reinterpret_cast<const char *>(data), size});
  } catch (const std::runtime_error &) {
    // No header that tells services apart, or a quote that does not end.
  }
  return 0;
}
