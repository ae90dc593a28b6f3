// Texts as messages and tables show them: harmless on a terminal, counted, and several as one.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace chlist {

// In quotes, with escapes for what a terminal would obey; bytes that are not UTF-8 become U+FFFD.
std::string shown(std::string_view text);

// The same without quotes, for cells of tables; nothing is escaped, and controls become "?".
std::string harmless(std::string_view text);

// A word of a command line as a shell takes it: in quotes where it needs them.
std::string shell_word(std::string_view word);

// "1 service", "2 services".
std::string counted(std::size_t count, std::string_view what);

// "one, two" when ", " is put between them.
std::string joined(std::span<const std::string> texts, std::string_view separator);

}  // namespace chlist
