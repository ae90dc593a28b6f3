// The streams are no files that could be replaced: what is written is gone.
#include "chlist/files/standard_streams.h"

#include <cstdio>

#include "chlist/files/descriptor.h"
#include "chlist/text/shown.h"

namespace chlist {

bool is_standard_stream(const std::filesystem::path &path) { return path == "-"; }

std::string name_of_input(const std::filesystem::path &path) {
  return is_standard_stream(path) ? "standard input" : path.string();
}

std::string name_of_output(const std::filesystem::path &path) {
  return is_standard_stream(path) ? "standard output" : harmless(path.string());
}

std::filesystem::path opened_as(const std::filesystem::path &input) {
  return is_standard_stream(input) ? "/dev/stdin" : input;
}

void write_standard_output(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0) {
    fail("standard output");
  }
}

}  // namespace chlist
