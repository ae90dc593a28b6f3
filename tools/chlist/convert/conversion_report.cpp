// Texts and JSON of conversions.
#include "chlist/convert/conversion_report.h"

#include <fmt/format.h>

#include <algorithm>

#include "chlist/fields/described.h"
#include "chlist/position.h"
#include "chlist/report.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

std::string name_of(const cut_array &cut) {
  return cut.group < 0 ? std::string(cut.array) : fmt::format("{} {}", cut.array, position_of(cut.group));
}

json json_of_cut(const cut_array &cut) {
  return {{"what", name_of(cut)}, {"counted", cut.counted}, {"present", cut.carried}};
}

}  // namespace

json json_of_losses(const conversion &result) {
  json not_carried = json::array();
  for (const loss &lost : result.losses) {
    if (lost.count > 0) {
      not_carried.push_back({{"what", lost.key}, {"count", lost.count}});
    }
  }
  return not_carried;
}

json json_of_findings(const conversion &result) {
  return {{"duplicate_services", array_of(result.duplicates, json_of)},
          {"unresolved_entries", array_of(result.unresolved, json_of)},
          {"counts_outside_arrays", array_of(result.cut, json_of_cut)}};
}

std::string text_of_duplicate(const known_service &service) { return "dropped, occurs twice: " + describe(service); }

std::string text_of_cut(const cut_array &cut) {
  return fmt::format("{}: counts {}, taken as {}", name_of(cut), cut.counted, cut.carried);
}

void print_row(std::FILE *to, std::string_view what, std::size_t count) {
  if (count > 0) {
    fmt::print(to, "  {:<48}{:>6}\n", what, count);
  }
}

void print_losses(std::FILE *to, const conversion &result) {
  if (!result.has_losses()) {
    return;
  }
  fmt::print(to, "Not carried:\n");
  for (const loss &lost : result.losses) {
    print_row(to, lost.text, lost.count);
  }
}

}  // namespace chlist
