// Importing a VDR channels.conf: the input is its text.
#include <channel/channel.h>

#include <string_view>

#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/vdr/vdr.h"
#include "chlist/exchange/vdr/vdr_channels_conf.h"
#include "harness.h"
#include "list_checks.h"

namespace {

void import(std::string_view text) {
  chlist::loss_counts lost;
  const chlist::list_counts counts =
      chlist::fill_list(chlist::line_up_of(chlist::parse_vdr_channels_conf(text), lost), lost).counts;

  fuzz::require_invariants({}, "after the import");
  fuzz::require(counts.services == static_cast<std::size_t>(get_channel_list_number()), "every service is shown");
  fuzz::require(counts.tv + counts.radio <= counts.services, "a service is television, radio or neither");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  // The log level is the first byte's, which is text as well.
  fuzz::run run(data, size > 0 ? 1 : 0);
  run.log();
  import({reinterpret_cast<const char *>(data), size});
  fuzz::reload(run);
  fuzz::require_same_when_saved_again(run);
  return 0;
}
