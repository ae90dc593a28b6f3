// What stands beside a channel file: the input is its text, beside a list of three services. What is read is written
// and read again, and goes out with the list in every format that has a text.
#include <channel/channel.h>

#include <array>
#include <stdexcept>
#include <string>
#include <string_view>

#include "chlist/exchange/beside.h"
#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/round_trip.h"
#include "chlist/exchange/vdr/vdr.h"
#include "chlist/files/companion.h"
#include "chlist/files/faithful_load.h"
#include "chlist/files/file_records.h"
#include "chlist/line_up/list_line_up.h"
#include "harness.h"
#include "small_list.h"

namespace {

constexpr std::array formats = {"vdr", "dvbv5", "lamedb3", "lamedb4", "lamedb5", "m3u", "csv"};

std::string small_list_file() {
  chlist::loss_counts lost;
  const chlist::list_source source = chlist::source_of({{"", std::string(fuzz::small_channels_conf)}}, false);
  chlist::fill_list(chlist::read_vdr(source, lost), lost);
  return chlist::image_of(*get_channel_list());
}

void export_with(const chlist::companion &kept, const std::string &file) {
  const chlist::file_records records(std::as_bytes(std::span(file)));
  chlist::line_up list = chlist::line_up_of(records.list());
  chlist::put_back(list, kept);
  for (const char *name : formats) {
    const chlist::exported_list made =
        chlist::export_list({records.list(), list}, kept, chlist::format_to_write(name, ""), {});
    fuzz::require(!made.files.empty(), "a list is written");
    fuzz::require_invariants({}, "after the export");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const fuzz::run run(data, 0);
  static const std::string file = small_list_file();
  try {
    const chlist::companion kept = chlist::companion_from({reinterpret_cast<const char *>(data), size});
    const std::string written = chlist::text_of(kept);
    fuzz::require(chlist::text_of(chlist::companion_from(written)) == written, "what is written is read again");
    export_with(kept, file);
  } catch (const chlist::bad_companion &) {
    // Damaged, or of something else.
  }
  return 0;
}
