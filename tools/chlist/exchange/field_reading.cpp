// Taking lines apart, and quoting them.
#include "chlist/exchange/field_reading.h"

#include "chlist/text/shown.h"
#include "chlist/text/utf8.h"

namespace chlist {

std::pair<std::string_view, std::optional<std::string_view>> split_at_first(std::string_view text, char separator) {
  const std::size_t at = text.find(separator);
  if (at == std::string_view::npos) {
    return {text, std::nullopt};
  }
  return {text.substr(0, at), text.substr(at + 1)};
}

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  std::optional<std::string_view> rest = text;
  while (rest) {
    const auto [part, tail] = split_at_first(*rest, separator);
    parts.push_back(part);
    rest = tail;
  }
  return parts;
}

std::string quoted(std::string_view text) {
  constexpr std::size_t most_columns = 32;
  return "'" + harmless(shortened(text, most_columns)) + "'";
}

}  // namespace chlist
