#include "chlist/exchange/dvbv5/dvbv5_words.h"

#include <algorithm>

#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/text_lines.h"

namespace chlist {

bool is_same_word(std::string_view a, std::string_view b) {
  const auto upper = [](char c) { return c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c + 0; };
  return std::ranges::equal(a, b, {}, upper, upper);
}

std::pair<std::string_view, std::optional<std::string_view>> key_and_value(std::string_view line) {
  const auto [key, value] = split_at_first(line, '=');
  return {without_blanks_around(key), value ? std::optional(without_blanks_around(*value)) : std::nullopt};
}

bool is_blank_or_comment(std::string_view line) { return line.empty() || line.front() == '#' || line.front() == ';'; }

}  // namespace chlist
