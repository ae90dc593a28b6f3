// Texts in lines that fit a screen.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace chlist {

// A text whose lines are broken at blanks in front of a width; all but the first one are indented. A word that is wider
// than that stands on a line of its own.
std::string wrapped(const std::string &text, std::size_t indent, std::size_t width);

// A word, and what is said of it in lines that begin at a column; below the word when that leaves no two blanks.
std::string beside(std::string_view word, const std::string &text, std::size_t column, std::size_t width);

// A command line, indented, in lines that a shell takes for one: they are broken at blanks that stand in no quotes.
std::string wrapped_command(std::string_view line, std::size_t indent, std::size_t width);

}  // namespace chlist
