// Saves the channel list at any path. The library writes in place and takes short paths only; this writes beside the
// target and renames, so that the target is either the old file or the whole new one.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>

#include "chlist/files/companion.h"

namespace chlist {

class replacement;

// What is to stand beside a channel file that is written. None: what stands there stays. Without anything in it: no
// companion any more.
using companion_to_write = std::optional<companion>;

// The list and what stands beside it are both replaced, or neither. Throws std::runtime_error (or std::system_error)
// with a readable text; the target is then as it was.
void save_list_with(const std::filesystem::path &target, const companion_to_write &beside);

// The same of bytes. companion_text: empty when there is to be none.
void write_both_files(const std::filesystem::path &target, std::string_view bytes, std::string_view companion_text);

// The same of what somebody else writes into the file.
void write_with(const std::filesystem::path &target, const companion_to_write &beside,
                const std::function<void(replacement &file)> &write);

}  // namespace chlist
