// UTF-8: whether a text is, how wide it is on a terminal, and which texts people take for the same.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace chlist {

inline constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

std::string_view without_byte_order_mark(std::string_view text);

// Most texts are made of nothing else: every table and every terminal takes them as they are.
constexpr bool is_printable_ascii(char c) { return c >= ' ' && c <= '~'; }
bool is_printable_ascii(std::string_view text);

// The controls of ISO 6429 as Unicode has them: C0, delete, and C1.
constexpr bool is_control(char32_t character) { return character < 0x20 || (character >= 0x7F && character <= 0x9F); }

// Whether a text is made of well-formed characters: none longer than it must be, and none that stands for a surrogate.
bool is_utf8(std::string_view text);

// Each byte that belongs to no character becomes U+FFFD.
std::string valid_utf8(std::string_view text);

// How many bytes at the end begin a character that is not all there; 0 when it ends as it should.
std::size_t incomplete_at_end(std::string_view text);

void append_utf8(std::string &text, char32_t character);
std::u32string characters_of(std::string_view utf8);

// Columns on a terminal: two for the wide characters of East Asia and for emoji, none for marks.
std::size_t width_of(std::string_view utf8);

// A text of at most so many columns: one that is wider ends in "…".
std::string shortened(std::string_view utf8, std::size_t columns);

// In small letters and without accents, which nobody types who looks for a name: "Comédia" is "comedia".
std::string folded(std::string_view utf8);

// Names as people look for them: without regard to case and accents.
bool is_same_name(std::string_view a, std::string_view b);
bool contains_name(std::string_view text, std::string_view part);

}  // namespace chlist
