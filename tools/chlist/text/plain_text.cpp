// Controls are those of ISO 6429, as Unicode has them.
#include "chlist/text/plain_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

#include "chlist/text/utf8.h"

namespace chlist {
namespace {

bool is_c0_or_c1(char32_t character) { return character < 0x20 || (character >= 0x7F && character < 0xA0); }

}  // namespace

void must_be_plain(std::string_view text, std::string_view what) {
  if (!is_utf8(text)) {
    throw std::runtime_error(fmt::format("{} is not UTF-8", what));
  }
  const std::u32string characters = characters_of(text);
  if (const auto control = std::ranges::find_if(characters, is_c0_or_c1); control != characters.end()) {
    throw std::runtime_error(
        fmt::format("{} holds a control character, U+{:04X}", what, static_cast<std::uint32_t>(*control)));
  }
}

std::string in_one_line(std::string_view text) {
  if (is_printable_ascii(text)) {
    return std::string(text);
  }
  std::string line;
  for (const char32_t character : characters_of(text)) {
    append_utf8(line, is_c0_or_c1(character) ? U' ' : character);
  }
  return line;
}

}  // namespace chlist
