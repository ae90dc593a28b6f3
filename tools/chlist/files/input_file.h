// Files of other formats, read whole: regular files, pipes and devices, each once and from its beginning to its end.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace chlist {

// Several times what the largest list takes in any format; what is larger is refused, so that memory stays bounded
// whatever is read.
inline constexpr std::size_t largest_input = std::size_t{16} << 20U;

// "-" is standard input. Throws std::runtime_error when the path cannot be read, is too large, or is a named pipe that
// nobody opens for writing within a few seconds.
std::string read_input_file(const std::filesystem::path &path);

// What a file begins with.
std::string read_beginning(const std::filesystem::path &path, std::size_t most);

}  // namespace chlist
