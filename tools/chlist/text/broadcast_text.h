// Texts as they are broadcast (ETSI EN 300 468, annex A): a byte below 0x20 in front names the table of their
// characters. Here they become UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace chlist {

struct plain_text {
  std::string text;
  // Whether every character came through: no when the table is unknown, or has not what the text holds.
  bool is_whole = true;
};

// Whether a text names its table.
bool names_table(std::string_view broadcast_text);

// The text in UTF-8, without the table's name and with blanks for controls. A text that names no table is left as it
// is; in an unknown table the bytes are.
plain_text utf8_of(std::string_view broadcast_text);

}  // namespace chlist
