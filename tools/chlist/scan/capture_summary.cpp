// Counts and places as sentences.
#include "chlist/scan/capture_summary.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "chlist/scan/descriptors.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

void tell(std::vector<std::string> &into, std::uint64_t count, std::string_view what, std::string_view more) {
  if (count > 0) {
    into.push_back(fmt::format("{}{}", counted(count, what), more));
  }
}

}  // namespace

void tell_reading(const read_capture &read, capture_summary &summary) {
  tell(summary.findings, read.lost.malformed, "section", " left out, whose lengths lead beyond the end");
  tell(summary.findings, read.lost.scrambled, "packet", " of tables left out, which are scrambled");
  tell(summary.findings, read.lost.beyond_memory, "section", " left out: more tables than a network has");
  tell(summary.notes, read.lost.broken_packets, "packet", " of tables marked as broken");
  tell(summary.notes, read.lost.gaps, "gap", " where packets of tables are missing");
  tell(summary.notes, read.lost.wrong_crc, "section", " with a wrong CRC");
  tell(summary.notes, read.skipped_bytes, "byte", " that belong to no packet");
  tell(summary.notes, read.tables.changes, "table", " came in another version later, which counts");
  if (read.has_atsc) {
    summary.findings.emplace_back("it has the tables of ATSC (PSIP), which are not read");
  }
  if (std::ranges::any_of(read.tables.networks, is_isdb)) {
    summary.findings.emplace_back("it has the tables of ISDB, which are not read");
  }
  for (const incomplete_table &each : read.incomplete) {
    summary.findings.push_back(fmt::format("table {:#04x} of {} did not come whole", each.table_id, each.extension));
  }
  for (const program &each : read.misplaced) {
    summary.findings.push_back(fmt::format(
        "service {} left out: its map is said to be on PID {}, where other tables are", each.number, each.pid));
  }
  for (const std::uint16_t number : read.missing_maps) {
    summary.findings.push_back(fmt::format("service {} has no PIDs: its map did not come", number));
  }
}

}  // namespace chlist
