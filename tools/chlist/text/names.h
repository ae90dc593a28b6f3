// Names as people look for them: without regard to case and accents.
#pragma once

#include <string_view>

namespace chlist {

bool is_same_name(std::string_view a, std::string_view b);
bool contains_name(std::string_view text, std::string_view part);

}  // namespace chlist
