// Files of other formats, read whole.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace chlist {

// Both throw std::runtime_error when the path cannot be read.
std::string read_input_file(const std::filesystem::path &path);
std::string read_beginning(const std::filesystem::path &path, std::size_t most);

}  // namespace chlist
