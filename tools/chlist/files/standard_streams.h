// "-" on a command line: what is read is standard input, what is written standard output.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace chlist {

bool is_standard_stream(const std::filesystem::path &path);

// As messages name them: "standard input", or the path.
std::string name_of_input(const std::filesystem::path &path);
std::string name_of_output(const std::filesystem::path &path);

// The file that is read, by a name that the system knows.
std::filesystem::path opened_as(const std::filesystem::path &input);

// Throws std::system_error when not all of it comes through.
void write_standard_output(std::string_view text);

}  // namespace chlist
