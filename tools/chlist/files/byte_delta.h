// What became of some bytes: copies from what they were, and what is new between them.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace chlist {

std::string delta_between(std::string_view before, std::string_view after);

// What the bytes were made into; nothing when the delta does not fit them, or makes more than that of them. A delta is
// trusted in nothing.
std::optional<std::string> apply_delta(std::string_view before, std::string_view delta, std::size_t most);

}  // namespace chlist
