// Writes a text file as lists are written: whole, or not at all.
#pragma once

#include <filesystem>
#include <string_view>

namespace chlist {

// Throws std::runtime_error (or std::system_error) with a readable text; the target is then as it was.
void write_text_file(const std::filesystem::path &target, std::string_view text);

}  // namespace chlist
