// Importing CSV: the input is its text. What a list is filled with is written, and comes back whole.
#include <channel/channel.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>

#include "chlist/exchange/csv/csv_line_up.h"
#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/order_of_all.h"
#include "chlist/line_up/list_line_up.h"
#include "harness.h"

namespace {

struct exported {
  std::string text;
  bool is_whole = false;  // whether the list took everything
  bool is_plain = false;  // whether it is one that CSV holds as it is
};

// A service at another frequency than its transponder, or in no view, may come to stand elsewhere.
bool is_plain(const chlist::line_up &list) {
  return std::ranges::all_of(list.services, [&](const chlist::line_up_service &service) {
    const chlist::line_up_transponder &transponder = list.transponders[service.transponder];
    return service.is_listed && transponder.frequency == service.fields.frequency &&
           transponder.ts_id == service.fields.ts_id && transponder.polarisation == service.fields.polarisation;
  });
}

exported through_a_list(std::string_view text) {
  chlist::loss_counts lost;
  exported made;
  made.is_whole = chlist::fill_list(chlist::line_up_of_csv(text, lost), lost).is_whole();
  fuzz::require_invariants({}, "after the import");
  const chlist::line_up list = chlist::in_order_of_all(chlist::line_up_of(*get_channel_list())).list;
  made.is_plain = is_plain(list);
  made.text = chlist::write_csv(list, {}).files.at(0).text;
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
