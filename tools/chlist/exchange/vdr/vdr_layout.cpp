// A line is its fields; a separator is ":[@N][ name]".
#include "chlist/exchange/vdr/vdr_layout.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/layout/text_units.h"
#include "chlist/exchange/text_lines.h"

namespace chlist {
namespace {

constexpr std::size_t fields_of_a_line = 13;

bool is_vdr_service(std::string_view piece) { return !piece.empty() && piece.front() != ':'; }

std::vector<text_unit> fields_in(std::string_view line) {
  std::vector<text_unit> units;
  for (const std::string_view field : split(line, ':')) {
    units.push_back({std::to_string(units.size()), std::string(field)});
  }
  return units;
}

// A line of an older form has other fields at these places: it is written anew.
std::string merged_line(const piece_versions &versions) {
  const std::vector<text_unit> kept = fields_in(versions.kept);
  if (kept.size() < fields_of_a_line) {
    return std::string(versions.now);
  }
  std::string line;
  for (const text_unit &each : merged_units(kept, fields_in(versions.before), fields_in(versions.now))) {
    line += (each.key == "0" ? "" : ":") + each.text;
  }
  return line;
}

// What stands behind ":@".
std::optional<std::string_view> behind_at(std::string_view piece) {
  constexpr std::string_view beginning = ":@";
  return piece.starts_with(beginning) ? std::optional(piece.substr(beginning.size())) : std::nullopt;
}

std::optional<int> number_in_separator(std::string_view piece) {
  const auto digits = behind_at(piece);
  int number = 0;
  if (!digits || std::from_chars(digits->data(), digits->data() + digits->size(), number).ec != std::errc()) {
    return std::nullopt;
  }
  return number;
}

std::string separator_raising_to(int number) { return fmt::format(":@{}", number); }

std::string separator_without_number(std::string_view piece) {
  const std::string_view behind = behind_at(piece).value_or(std::string_view());
  const std::string_view name =
      without_blanks_around(behind.substr(std::min(behind.find_first_not_of("0123456789"), behind.size())));
  return name.empty() ? std::string() : ":" + std::string(name);
}

std::vector<std::size_t> beginnings_of_lines(std::string_view text) {
  std::vector<std::size_t> places;
  for (std::size_t at = 0; at < text.size(); at = std::min(text.find('\n', at), text.size() - 1) + 1) {
    places.push_back(at);
  }
  return places;
}

}  // namespace

const source_layout vdr_layout = {.cut = beginnings_of_lines,
                                  .is_service = is_vdr_service,
                                  .merge = merged_line,
                                  .number_in = number_in_separator,
                                  .raising_to = separator_raising_to,
                                  .without_number = separator_without_number};

}  // namespace chlist
