// Edits as lines of a text: the input is the text. Each that can be read and done leaves a list that is well kept, and
// what stands beside it in step with it.
#include <channel/channel.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/edit/edit_line.h"
#include "chlist/exchange/beside.h"
#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/vdr/vdr.h"
#include "chlist/files/kept_in_step.h"
#include "chlist/line_up/list_line_up.h"
#include "harness.h"
#include "small_list.h"

namespace {

bool reads_files(const std::vector<std::string> &words) {
  constexpr std::array edits = {"merge", "order", "salvage"};
  return (!words.empty() && std::ranges::find(edits, words.front()) != edits.end()) ||
         std::ranges::any_of(words, [](const std::string &word) { return word.starts_with("--plan"); });
}

chlist::companion fill_list() {
  chlist::loss_counts lost;
  const chlist::list_source source = chlist::source_of({{"", std::string(fuzz::small_channels_conf)}}, false);
  const chlist::line_up read = chlist::read_vdr(source, lost);
  const chlist::filled_list filled = chlist::fill_list(read, lost);
  return chlist::companion_of_services(read.services, filled.filed, chlist::line_up_in_memory());
}

// The words of a line are those of the line that is made of them.
std::vector<std::string> words_of(std::string_view line) {
  std::vector<std::string> words = chlist::words_of_edit(line);
  fuzz::require(chlist::words_of_edit(chlist::line_of_words(words)) == words, "words are quoted as they are read");
  return words;
}

void require_in_step(const chlist::companion &kept, const chlist::edited_list &list) {
  const chlist::line_up now = chlist::line_up_in_memory();
  for (const chlist::companion_service &each : chlist::in_step(kept, list.identities(), now).services) {
    fuzz::require(std::ranges::any_of(now.services, [&](const auto &service) { return service.id() == each.id; }),
                  "what is kept is of a service that is there");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  std::string_view rest(reinterpret_cast<const char *>(data), size);
  const fuzz::run run(data, 0);
  const chlist::companion kept = fill_list();
  chlist::edit_line_reader reader;
  chlist::edited_list list;
  for (int lines = 0; !rest.empty() && lines < 64; ++lines) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    try {
      if (!reads_files(words_of(line))) {
        reader.read(line).apply(list);
      }
    } catch (const std::runtime_error &) {
      // It cannot be read or done.
    }
    fuzz::require_invariants({}, "after an edit");
  }
  require_in_step(kept, list);
  return 0;
}
