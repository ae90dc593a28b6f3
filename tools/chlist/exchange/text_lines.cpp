// Taking a text apart at its line ends.
#include "chlist/exchange/text_lines.h"

#include <algorithm>

#include "chlist/text/utf8.h"

namespace chlist {
namespace {

std::string_view without_carriage_return(std::string_view line) {
  return line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
}

}  // namespace

std::string_view without_leading_blanks(std::string_view text) {
  return text.substr(std::min(text.find_first_not_of(blanks), text.size()));
}

std::string_view without_trailing_blanks(std::string_view text) {
  return text.substr(0, text.find_last_not_of(blanks) + 1);
}

std::string_view without_blanks_around(std::string_view text) {
  return without_leading_blanks(without_trailing_blanks(text));
}

text_lines::text_lines(std::string_view text) : rest_(without_byte_order_mark(text)) {}

std::optional<std::string_view> text_lines::next() {
  const std::optional<std::string_view> line = peek();
  if (line) {
    rest_.remove_prefix(std::min(rest_.find('\n'), rest_.size() - 1) + 1);
    ++number_;
  }
  return line;
}

std::optional<std::string_view> text_lines::peek() const {
  if (rest_.empty()) {
    return std::nullopt;
  }
  return without_carriage_return(rest_.substr(0, rest_.find('\n')));
}

}  // namespace chlist
