#include "temp_dir.h"

#include <stdlib.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace test_support {

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
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void write_file(const std::filesystem::path &path, const bytes &contents) {
  std::ofstream(path, std::ios::binary).write(contents.data(), static_cast<std::streamsize>(contents.size()));
}

}  // namespace test_support
