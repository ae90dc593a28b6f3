// Saves the channel list at any path. The library writes in place and takes short paths only; this writes beside the
// target and renames, so that the target is either the old file or the whole new one.
#pragma once

#include <filesystem>

namespace chlist {

// Throws std::runtime_error (or std::system_error) with a readable text; the target is then as it was.
void save_list_as(const std::filesystem::path &target);

}  // namespace chlist
