// Reading M3U playlists: the first line of the input is the template of addresses, the others are its text. What is
// read is written, and what is written is read back whole.
#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>

#include "chlist/exchange/m3u/m3u.h"
#include "harness.h"

namespace {

chlist::line_up read(std::string_view text, std::string_view url = {}) {
  chlist::loss_counts lost;
  chlist::list_source source = chlist::source_of({{"", std::string(text)}}, false);
  source.url = url;
  return chlist::read_m3u(source, lost);
}

std::string written(const chlist::line_up &list) {
  return chlist::write_m3u(list, {.columns = "", .url = "", .is_by_favourites = true}).files.at(0).text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string_view input(reinterpret_cast<const char *>(data), size);
  const std::size_t end = std::min(input.find('\n'), input.size());
  try {
    const chlist::line_up list = read(input.substr(std::min(end + 1, size)), input.substr(0, end));
    const chlist::line_up again = read(written(list));
    fuzz::require(again.skipped.empty(), "every address that is written can be read");
    fuzz::require(again.services.size() == list.services.size(), "every service comes back");
    fuzz::require(written(read(written(again))) == written(again), "what was read once comes back whole");
  } catch (const std::runtime_error &) {
    // A template of fields that there are not, or one without the ids of a service.
  }
  return 0;
}
