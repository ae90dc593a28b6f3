// Reading the DVBv5 format: the input is its text. What is read is written, and what is written is read back whole.
#include <string>
#include <string_view>

#include "chlist/exchange/dvbv5/dvbv5.h"
#include "harness.h"

namespace {

std::string written(const chlist::line_up &list) { return chlist::write_dvbv5(list, {}).files.at(0).text; }

chlist::line_up read(std::string_view text) {
  chlist::loss_counts lost;
  return chlist::parse_dvbv5(text, lost);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const chlist::line_up list = read({reinterpret_cast<const char *>(data), size});
  const chlist::line_up again = read(written(list));

  fuzz::require(again.skipped.empty(), "every section that is written can be read");
  fuzz::require(again.services.size() == list.services.size(), "every service comes back");
  fuzz::require(written(read(written(again))) == written(again), "what was read once comes back whole");
  return 0;
}
