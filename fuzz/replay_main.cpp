// Runs a harness over the files, and the files in the folders, that it is given. Each is named before it runs: the last
// name belongs to the one that failed. A folder without files is a failure.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "harness.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> files_at(const fs::path &place) {
  std::vector<fs::path> files;
  if (fs::is_directory(place)) {
    std::copy(fs::directory_iterator(place), fs::directory_iterator(), std::back_inserter(files));
    std::ranges::sort(files);
  } else if (fs::exists(place)) {
    files.push_back(place);
  }
  return files;
}

// The exact size on the heap, so that a sanitizer sees what is read behind the end.
std::vector<std::uint8_t> contents_of(const fs::path &file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

bool replay(const fs::path &place) {
  const std::vector<fs::path> files = files_at(place);
  for (const fs::path &file : files) {
    dprintf(STDOUT_FILENO, "%s\n", file.c_str());
    const std::vector<std::uint8_t> input = contents_of(file);
    LLVMFuzzerTestOneInput(input.data(), input.size());
  }
  if (files.empty()) {
    dprintf(STDERR_FILENO, "%s: no input there\n", place.c_str());
  }
  return !files.empty();
}

}  // namespace

int main(int argc, char **argv) {
  LLVMFuzzerInitialize(&argc, &argv);
  if (argc < 2) {
    dprintf(STDERR_FILENO, "usage: %s FILE-OR-FOLDER...\n", argv[0]);
    return 2;
  }
  return std::all_of(argv + 1, argv + argc, replay) ? 0 : 1;
}
