// UTF-8: whether a text is, and the mark that may stand in front of it.
#pragma once

#include <string_view>

namespace chlist {

inline constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

std::string_view without_byte_order_mark(std::string_view text);

// Whether a text is made of well-formed characters: none longer than it must be, and none that stands for a surrogate.
bool is_utf8(std::string_view text);

}  // namespace chlist
