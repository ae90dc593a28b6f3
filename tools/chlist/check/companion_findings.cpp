// The companion of a channel file is held against the services of the file.
#include <fmt/format.h>

#include <algorithm>

#include "chlist/check/rules.h"
#include "chlist/files/companion.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/places.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

void check_services(const companion &kept, byte_span bytes, finding_list &findings) {
  const file_records records(bytes);
  const line_up list = line_up_of(records.list());
  const places_by_identity places(list);
  const auto unknown = std::ranges::count_if(
      kept.services, [&](const companion_service &each) { return places.of(each.id) == nowhere; });
  if (unknown > 0 || kept.is_out_of_step) {
    findings.push_back({.offset = 0,
                        .level = severity::warning,
                        .kind = "companion-out-of-step",
                        .what = unknown > 0 ? fmt::format("{} beside the file and not in it",
                                                          counted(static_cast<std::size_t>(unknown), "service"))
                                            : std::string("what stands beside the file was written with another one"),
                        .consequence = unknown > 0 ? "an export has no symbol rates for what they became"
                                                   : "an export may have names and symbol rates of before"});
  }
}

}  // namespace

void check_companion(const std::filesystem::path &file, byte_span bytes, finding_list &findings) {
  try {
    if (const std::optional<companion> kept = companion_beside(file)) {
      check_services(*kept, bytes, findings);
    }
  } catch (const bad_companion &error) {
    findings.push_back({.offset = 0,
                        .level = severity::warning,
                        .kind = "companion-damaged",
                        .what = error.what(),
                        .consequence = "an export goes without it"});
  }
}

}  // namespace chlist
