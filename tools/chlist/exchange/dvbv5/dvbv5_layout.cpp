// A section is its lines KEY = value, with the blank lines behind them. Comments in front of a section stand apart, so
// that they outlive the section above.
#include "chlist/exchange/dvbv5/dvbv5.h"

#include <algorithm>
#include <string>

#include "chlist/exchange/dvbv5/dvbv5_words.h"
#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/layout/text_units.h"
#include "chlist/exchange/text_lines.h"

namespace chlist {
namespace {

bool begins_section(std::string_view line) { return without_leading_blanks(line).starts_with('['); }

bool is_comment(std::string_view line) {
  const std::string_view text = without_blanks_around(line);
  return !text.empty() && is_blank_or_comment(text);
}

// Of the comments behind the last setting, only those in front of a section are cut off.
std::vector<std::size_t> beginnings_of_sections(std::string_view text) {
  std::vector<std::size_t> places;
  std::size_t comments = std::string_view::npos;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size() - 1) + 1;
    const std::string_view line = without_trailing_blanks(text.substr(at, end - at - (text[end - 1] == '\n' ? 1 : 0)));
    if (begins_section(line) && comments != std::string_view::npos) {
      places.push_back(comments);
    }
    if (begins_section(line) || at == 0) {
      places.push_back(at);
    }
    const bool goes_on = is_comment(line) || (comments != std::string_view::npos && line.empty());
    comments = !goes_on || at == 0 ? std::string_view::npos : std::min(comments, at);
    at = end;
  }
  return places;
}

bool is_section(std::string_view piece) { return begins_section(piece); }

// What a line is of: its key, and of a key that is there again its number. Comments and blank lines are of themselves.
std::string key_of_line(std::string_view line, std::size_t place) {
  const std::string_view text = without_blanks_around(line);
  if (text.empty() || is_blank_or_comment(text)) {
    return "#" + std::to_string(place);
  }
  if (begins_section(text)) {
    return "[";
  }
  std::string key(key_and_value(text).first);
  std::ranges::transform(key, key.begin(), [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
  return key;
}

std::vector<text_unit> lines_of_section(std::string_view section) {
  std::vector<text_unit> units;
  for (const std::string_view line : split(section, '\n')) {
    units.push_back({key_of_line(line, units.size()), std::string(line)});
  }
  return units;
}

std::vector<text_unit> settings_of_section(std::string_view section, bool has_carriage_returns) {
  std::vector<text_unit> units = lines_of_section(section);
  std::erase_if(units, [](const text_unit &each) { return each.key.starts_with('#'); });
  for (text_unit &each : units) {
    each.text += has_carriage_returns ? "\r" : "";
  }
  return units;
}

std::string merged_section(const piece_versions &versions) {
  const bool has_carriage_returns = versions.kept.find("\r\n") != std::string_view::npos;
  std::string section;
  for (const text_unit &each :
       merged_units(lines_of_section(versions.kept), settings_of_section(versions.before, has_carriage_returns),
                    settings_of_section(versions.now, has_carriage_returns))) {
    section += each.text + '\n';
  }
  section.pop_back();
  return section;
}

}  // namespace

const source_layout dvbv5_layout = {.cut = beginnings_of_sections, .is_service = is_section, .merge = merged_section};

}  // namespace chlist
