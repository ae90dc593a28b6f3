// The tables of EN 300 468 and their characters, which the C library's converter knows.
#include "chlist/text/broadcast_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>

#include "chlist/text/charset.h"
#include "chlist/text/iso_6937.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

constexpr char first_printable = 0x20;

struct character_table {
  std::string_view selector;
  const char *name;  // as iconv_open() has it
  std::size_t unit = 1;
};

using namespace std::string_view_literals;

// The three bytes 0x10 0x00 N name ISO 8859-N. The table of Korea comes with the later letters that senders use, and
// 0x14 is a part of what 0x11 is.
constexpr character_table tables[] = {
    {"\x01", "ISO-8859-5"},
    {"\x02", "ISO-8859-6"},
    {"\x03", "ISO-8859-7"},
    {"\x04", "ISO-8859-8"},
    {"\x05", "ISO-8859-9"},
    {"\x06", "ISO-8859-10"},
    {"\x07", "ISO-8859-11"},
    {"\x09", "ISO-8859-13"},
    {"\x0A", "ISO-8859-14"},
    {"\x0B", "ISO-8859-15"},
    {"\x10\0\x01"sv, "ISO-8859-1"},
    {"\x10\0\x02"sv, "ISO-8859-2"},
    {"\x10\0\x03"sv, "ISO-8859-3"},
    {"\x10\0\x04"sv, "ISO-8859-4"},
    {"\x10\0\x05"sv, "ISO-8859-5"},
    {"\x10\0\x06"sv, "ISO-8859-6"},
    {"\x10\0\x07"sv, "ISO-8859-7"},
    {"\x10\0\x08"sv, "ISO-8859-8"},
    {"\x10\0\x09"sv, "ISO-8859-9"},
    {"\x10\0\x0A"sv, "ISO-8859-10"},
    {"\x10\0\x0B"sv, "ISO-8859-11"},
    {"\x10\0\x0D"sv, "ISO-8859-13"},
    {"\x10\0\x0E"sv, "ISO-8859-14"},
    {"\x10\0\x0F"sv, "ISO-8859-15"},
    {"\x11", "UCS-2BE", 2},
    {"\x12", "UHC"},
    {"\x13", "GB2312"},
    {"\x14", "UCS-2BE", 2},
};
constexpr char utf8_selector = 0x15;

const character_table *table_of(std::string_view encoded) {
  if (!names_table(encoded)) {
    return nullptr;
  }
  const auto *const found =
      std::ranges::find_if(tables, [&](const character_table &each) { return encoded.starts_with(each.selector); });
  return found != std::end(tables) ? found : nullptr;
}

// A name that was cut to its field may end within a character; without others it could as well be of another table.
bool is_cut_utf8(std::string_view encoded) {
  const std::string_view whole = encoded.substr(0, encoded.size() - incomplete_at_end(encoded));
  return is_utf8(whole) && std::ranges::any_of(whole, [](char c) { return c < 0; });
}

decoded_text decode_unnamed(std::string_view encoded) {
  if (is_utf8(encoded)) {
    return {std::string(encoded)};
  }
  return is_cut_utf8(encoded) ? decoded_text{valid_utf8(encoded), false} : decode_iso_6937(encoded);
}

decoded_text decode_of_unknown_table(std::string_view encoded) {
  decoded_text made = decode_unnamed(encoded);
  made.is_whole = made.is_whole && encoded.empty();
  return made;
}

decoded_text decode_characters(std::string_view encoded) {
  const std::string_view characters = encoded.substr(size_of_selector(encoded));
  if (!names_table(encoded)) {
    return decode_unnamed(characters);
  }
  if (encoded.front() == utf8_selector) {
    return {valid_utf8(characters), is_utf8(characters)};
  }
  if (const character_table *table = table_of(encoded); table != nullptr) {
    if (charset_converter known(table->name); known.is_open()) {
      converted_text made = known.convert(characters, table->unit);
      const bool is_whole = made.is_whole();
      return {std::move(made.text), is_whole};
    }
  }
  return decode_of_unknown_table(characters);
}

// The table of ISO/IEC 6937 has an accent in front of its letter.
constexpr bool is_accent(char c) { return c >= '\xC1' && c <= '\xCF'; }

// Tables of the East have characters of one byte and of two, of which the first one tells.
std::size_t incomplete_of_two(std::string_view characters) {
  std::size_t at = 0;
  while (at < characters.size()) {
    at += static_cast<unsigned char>(characters[at]) >= 0x80U ? 2 : 1;
  }
  return at > characters.size() ? 1 : 0;
}

// How many bytes at the end of a text that was cut begin a character.
std::size_t beginning_at_end(std::string_view encoded, std::string_view characters, bool is_in_utf8) {
  if (is_in_utf8) {
    return incomplete_at_end(characters);
  }
  if (const character_table *table = table_of(encoded); table != nullptr && table->unit == 2) {
    return characters.size() % 2;
  }
  if (encoded.front() == '\x12' || encoded.front() == '\x13') {
    return incomplete_of_two(characters);
  }
  return !names_table(encoded) && is_accent(characters.back()) ? 1 : 0;
}

// The standard's own controls.
constexpr char32_t emphasis_on = 0x86;
constexpr char32_t emphasis_off = 0x87;
constexpr char32_t line_break = 0x8A;

// Behind such a character letters may be shown in another order than they are written: one name looks like another.
bool turns_direction(char32_t character) {
  return (character >= 0x202A && character <= 0x202E) || (character >= 0x2066 && character <= 0x2069);
}

// Controls of the tables of one byte stand at 0x80 to 0x9F, those of two bytes at U+E080 to U+E09F.
void append_in_one_line(decoded_text &made, char32_t character) {
  const char32_t control = character >= 0xE080 && character <= 0xE09F ? character - 0xE000 : character;
  if (!is_control(control)) {
    append_utf8(made.text, character);
    made.turns_direction = made.turns_direction || turns_direction(character);
    return;
  }
  made.has_controls = made.has_controls || (control != emphasis_on && control != emphasis_off && control != line_break);
  if (control == line_break || control < static_cast<char32_t>(first_printable)) {
    made.text += ' ';
  }
}

}  // namespace

std::size_t size_of_selector(std::string_view encoded) {
  if (!names_table(encoded)) {
    return 0;
  }
  const std::size_t size = encoded.front() == 0x1F ? 2 : encoded.front() == 0x10 ? 3 : 1;
  return std::min(size, encoded.size());
}

std::string_view encoded_text(std::span<const char> field) {
  const std::string_view all(field.data(), field.size());
  const std::size_t begin = size_of_selector(all);
  const character_table *table = table_of(all);
  if (table == nullptr || table->unit == 1) {
    return all.substr(0, all.find('\0', std::min(begin, all.size())));
  }
  std::size_t end = begin;
  while (end + 1 < all.size() && (all[end] != '\0' || all[end + 1] != '\0')) {
    end += 2;
  }
  return all.substr(0, end);
}

std::string_view cut_text(std::string_view encoded, std::size_t most) {
  const std::size_t selector = size_of_selector(encoded);
  if (encoded.size() <= most || most <= selector) {
    return encoded.substr(0, most);
  }
  const bool is_in_utf8 = names_table(encoded) ? encoded.front() == utf8_selector : is_utf8(encoded);
  const std::string_view cut = encoded.substr(0, most);
  return cut.substr(0, most - beginning_at_end(cut, cut.substr(selector), is_in_utf8));
}

bool names_table(std::string_view encoded) {
  return !encoded.empty() && encoded.front() > '\0' && encoded.front() < first_printable;
}

std::string table_name(std::string_view encoded) {
  if (!names_table(encoded)) {
    return is_printable_ascii(encoded) ? "" : is_utf8(encoded) ? "UTF-8" : "ISO-6937";
  }
  if (const character_table *table = table_of(encoded); table != nullptr) {
    return table->name;
  }
  return encoded.front() == utf8_selector ? "UTF-8 by name"
                                          : fmt::format("table {:#04x}", static_cast<unsigned>(encoded.front()));
}

decoded_text decode_text(std::string_view encoded) {
  if (is_printable_ascii(encoded)) {
    return {std::string(encoded)};
  }
  const decoded_text all = decode_characters(encoded);
  decoded_text made = {"", all.is_whole};
  for (const char32_t character : characters_of(all.text)) {
    append_in_one_line(made, character);
  }
  return made;
}

std::string name_in(std::span<const char> field) { return decode_text(encoded_text(field)).text; }

}  // namespace chlist
