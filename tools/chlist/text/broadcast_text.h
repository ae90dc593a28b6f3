// Texts as they are broadcast (ETSI EN 300 468, annex A): a byte below 0x20 in front names the table of their
// characters. This is the one place that knows what the bytes of a name mean, and where they end.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace chlist {

// The bytes of a text within its field: up to a zero byte, or the whole field. In the tables of two bytes two zero
// bytes end it, and the zero byte in a table's own name ends nothing.
std::string_view encoded_text(std::span<const char> field);

// The bytes in front that name a table, an unknown one too: none, one, two with 0x1F, three with 0x10.
std::size_t size_of_selector(std::string_view encoded);

// Whether a text names its table.
bool names_table(std::string_view encoded);

// What people call the table: "ISO-8859-5" of a text that names it, "UTF-8" or "ISO-6937" of one that names none;
// "table 0x16" of an unknown one. Empty of a text that is the same in each.
std::string table_name(std::string_view encoded);

// A text cut to a number of bytes, not inside a character, nor between an accent and its letter.
std::string_view cut_text(std::string_view encoded, std::size_t most);

struct decoded_text {
  std::string text;              // UTF-8, in one line
  bool is_whole = true;          // no when the table is unknown, or has not what the text holds
  bool has_controls = false;     // others than the standard's own, which are marks of emphasis and line breaks
  bool turns_direction = false;  // overrides or isolates the direction of the letters that follow
};

// A text without a table's name is UTF-8, as other programs write names, or else in the standard's own table, that of
// ISO/IEC 6937 with the euro sign. Bytes that mean nothing become U+FFFD, of an unknown table those that are not the
// standard's own; a line break and other controls become blanks, marks of emphasis go.
decoded_text decode_text(std::string_view encoded);

// What a service, a network or a group is called.
std::string name_in(std::span<const char> field);

}  // namespace chlist
