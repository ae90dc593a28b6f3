// Whether a channel file holds every record that it counts.
#pragma once

#include <cstddef>
#include <string>

namespace fuzz {

// `extra`: how many bytes longer than today's every record of the file is.
bool is_whole(const std::string &file, std::size_t extra = 0);

}  // namespace fuzz
