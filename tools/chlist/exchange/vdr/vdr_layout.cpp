// A line is its fields; a separator is ":[@N][ name]".
#include "chlist/exchange/vdr/vdr.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/layout/text_units.h"
#include "chlist/exchange/text_lines.h"
#include "chlist/exchange/vdr/vdr_channels_conf.h"
#include "chlist/text/plain_text.h"

namespace chlist {
namespace {

constexpr std::size_t fields_of_a_line = 13;

bool is_vdr_service(std::string_view piece) { return !piece.empty() && piece.front() != ':'; }

// A line of an older form has other fields at these places: it is written anew.
std::string merged_line(const piece_versions &versions) {
  const std::vector<text_unit> kept = units_by_place(versions.kept, ':');
  if (kept.size() < fields_of_a_line) {
    return std::string(versions.now);
  }
  return joined_units(merged_units(kept, units_by_place(versions.before, ':'), units_by_place(versions.now, ':')), ":");
}

std::optional<separator> read_separator(std::string_view line) {
  if (!line.starts_with(':')) {
    return std::nullopt;
  }
  try {
    const vdr_separator read = read_vdr_separator(without_trailing_blanks(line).substr(1));
    return separator{read.number, read.group};
  } catch (const bad_line &) {
    return std::nullopt;
  }
}

std::string written_separator(const separator &line) {
  std::string group = in_one_line(line.group);
  std::ranges::replace(group, ':', '|');
  const std::string number = line.number ? fmt::format("@{}", *line.number) : "";
  const bool says_nothing = group.empty() && number.empty();
  return says_nothing ? "" : fmt::format(":{}{}{}", number, group.empty() || number.empty() ? "" : " ", group);
}

std::vector<std::size_t> beginnings_of_lines(std::string_view text) {
  std::vector<std::size_t> places;
  for (std::size_t at = 0; at < text.size(); at = std::min(text.find('\n', at), text.size() - 1) + 1) {
    places.push_back(at);
  }
  return places;
}

constexpr separator_layout vdr_separators = {.read = read_separator, .written = written_separator};

}  // namespace

const source_layout vdr_layout = {
    .cut = beginnings_of_lines, .is_service = is_vdr_service, .merge = merged_line, .separators = &vdr_separators};

}  // namespace chlist
