// A channel file as JSON and back, byte for byte: records by the names of their fields, and whatever those do not say -
// slots of pointers, bytes behind texts and behind the last record - as patches of the file.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "chlist/files/channel_file.h"

namespace chlist {

// Refuses a file that ends too early for its counts, or that has the layout of versions 7 and 8.
std::string json_of_channel_file(const channel_file &input);

// Throws std::runtime_error that tells where the text is wrong.
std::string channel_file_of_json(std::string_view text);

bool is_like_json(const std::filesystem::path &path, std::string_view beginning);

}  // namespace chlist
