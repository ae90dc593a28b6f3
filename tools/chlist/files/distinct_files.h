// An output never replaces an input.
#pragma once

#include <filesystem>

namespace chlist {

// Throws when the output is the input, by whatever name, and when that cannot be found out.
void must_differ(const std::filesystem::path &input, const std::filesystem::path &output);

}  // namespace chlist
