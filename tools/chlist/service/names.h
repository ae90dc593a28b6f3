// Names as people write them: without the selector of a character table in front, and without regard to case.
#pragma once

#include <string>
#include <string_view>

namespace chlist {

// A broadcast text without the byte below 0x20 that may lead it.
std::string visible(std::string_view broadcast_text);

// Letters of the Latin alphabet are compared without regard to case, as the library's sort by name does.
bool is_same_name(std::string_view a, std::string_view b);
bool contains_name(std::string_view text, std::string_view part);

}  // namespace chlist
