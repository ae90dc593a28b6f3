// The bytes of a file, as they are: for commands that look at damaged files, which no reader of formats takes.
#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <vector>

namespace chlist {

using byte_span = std::span<const std::byte>;

// More than any list that counts its services in the views takes by far; a larger file is no channel file.
inline constexpr std::size_t largest_file = std::size_t{256} << 20U;

// Throws when it is no regular file, cannot be read, or is larger than that.
std::vector<std::byte> bytes_of_file(const std::filesystem::path &path);

}  // namespace chlist
