// Texts are taken apart by characters: a control above U+007F has two bytes.
#include "chlist/text/plain_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

#include "chlist/text/utf8.h"

namespace chlist {

void must_be_plain(std::string_view text, std::string_view what) {
  if (!is_utf8(text)) {
    throw std::runtime_error(fmt::format("{} is not UTF-8", what));
  }
  const std::u32string characters = characters_of(text);
  if (const auto control = std::ranges::find_if(characters, is_control); control != characters.end()) {
    throw std::runtime_error(
        fmt::format("{} holds a control character, U+{:04X}", what, static_cast<std::uint32_t>(*control)));
  }
}

std::string in_one_line(std::string_view text, char32_t for_controls) {
  if (is_printable_ascii(text)) {
    return std::string(text);
  }
  std::string line;
  for (const char32_t character : characters_of(text)) {
    append_utf8(line, is_control(character) ? for_controls : character);
  }
  return line;
}

}  // namespace chlist
