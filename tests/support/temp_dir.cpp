#include "temp_dir.h"

#include <stdlib.h>
#include <unistd.h>

#include <cstdint>
#include <fstream>
#include <stdexcept>

namespace test_support {

std::string fastest_folder() {
  constexpr std::uintmax_t room_for_tests = 512U << 20U;
  const char *memory = "/dev/shm";
  std::error_code unknown;
  const std::filesystem::space_info space = std::filesystem::space(memory, unknown);
  return !unknown && space.available > room_for_tests && ::access(memory, W_OK) == 0 ? memory : "/tmp";
}

temp_dir::temp_dir(const std::string &parent) : path_(parent + "/chlXXXXXX") {
  if (::mkdtemp(path_.data()) == nullptr) {
    throw std::runtime_error("no scratch directory");
  }
  path_ += '/';
}

temp_dir::~temp_dir() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

bytes read_file(const std::filesystem::path &path) {
  std::error_code no_file;
  const std::uintmax_t size = std::filesystem::file_size(path, no_file);
  bytes contents(no_file ? 0 : static_cast<std::size_t>(size), '\0');
  std::ifstream in(path, std::ios::binary);
  in.read(contents.data(), static_cast<std::streamsize>(contents.size()));
  contents.resize(static_cast<std::size_t>(in.gcount()));
  return contents;
}

void write_file(const std::filesystem::path &path, const bytes &contents) {
  std::ofstream(path, std::ios::binary).write(contents.data(), static_cast<std::streamsize>(contents.size()));
}

}  // namespace test_support
