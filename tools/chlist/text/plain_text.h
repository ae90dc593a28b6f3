// Text of one line without controls: a terminal obeys some of them, and in the fields of a list a byte below 0x20 in
// front names a table of characters.
#pragma once

#include <string>
#include <string_view>

namespace chlist {

// Throws std::runtime_error that begins with what it is of, "the name", when a text is not UTF-8 or holds a control:
// U+0000 to U+001F, line ends among them, and U+007F to U+009F.
void must_be_plain(std::string_view text, std::string_view what);

// The same text with another character for every control and U+FFFD for what is not UTF-8. The change is told by
// comparing.
std::string in_one_line(std::string_view text, char32_t for_controls = U' ');

}  // namespace chlist
