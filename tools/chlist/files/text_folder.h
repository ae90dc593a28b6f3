// Writes a folder of text files: all of them, or no folder.
#pragma once

#include <filesystem>
#include <span>
#include <string>

namespace chlist {

struct named_text {
  std::string name;
  std::string text;
};

// Throws std::runtime_error (or std::system_error) with a readable text; the target is then as it was. A folder that
// holds something is refused: its files would be taken for a part of what is written.
void write_text_folder(const std::filesystem::path &target, std::span<const named_text> files);

}  // namespace chlist
