// The words of the format, which nobody writes in one case alone.
#pragma once

#include <optional>
#include <string_view>
#include <utility>

namespace chlist {

bool is_same_word(std::string_view a, std::string_view b);

// What a line KEY = value has.
std::pair<std::string_view, std::optional<std::string_view>> key_and_value(std::string_view line);

bool is_blank_or_comment(std::string_view line);

}  // namespace chlist
