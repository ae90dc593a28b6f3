// All rules on one file, and the order of what they found.
#include "chlist/check/findings.h"

#include <algorithm>
#include <iterator>

#include "chlist/check/rules.h"
#include "chlist/files/file_records.h"

namespace chlist {
namespace {

using rule = void (*)(const file_records &framed, finding_list &findings);

constexpr rule rules_of_frames[] = {check_frame};
constexpr rule rules_of_lists[] = {check_settings, check_entries, check_hierarchy, check_texts};

void sort_by_gravity(finding_list &findings) {
  std::ranges::stable_sort(findings, [](const finding &a, const finding &b) {
    return a.level != b.level ? a.level < b.level : a.offset < b.offset;
  });
}

}  // namespace

std::size_t file_findings::count(severity level) const {
  return static_cast<std::size_t>(std::ranges::count(findings, level, &finding::level));
}

std::string_view name_of(severity level) {
  constexpr std::string_view names[] = {"error", "warning", "note"};
  return names[static_cast<std::size_t>(level)];
}

file_findings findings_in(byte_span file) {
  const file_records framed(file);
  file_findings result = {
      file.size(), framed.version(), framed.networks().size(), framed.transponders().size(), framed.services().size(),
      {}};
  for (const rule check : rules_of_frames) {
    check(framed, result.findings);
  }
  if (framed.has_list()) {
    for (const rule check : rules_of_lists) {
      check(framed, result.findings);
    }
  }
  for (finding &each : result.findings) {
    each.place = place_at(each.offset, framed);
  }
  sort_by_gravity(result.findings);
  return result;
}

}  // namespace chlist
