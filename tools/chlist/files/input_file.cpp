// Reading throws where it fails, as in a directory.
#include "chlist/files/input_file.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace chlist {
namespace {

template <class Read>
std::string reading(const std::filesystem::path &path, const Read &read) {
  try {
    if (std::ifstream in(path, std::ios::binary); in) {
      return read(in);
    }
  } catch (const std::ios_base::failure &) {
  }
  throw std::runtime_error(path.string() + ": cannot be read");
}

}  // namespace

std::string read_input_file(const std::filesystem::path &path) {
  return reading(path, [](std::ifstream &in) {
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  });
}

std::string read_beginning(const std::filesystem::path &path, std::size_t most) {
  return reading(path, [most](std::ifstream &in) {
    std::string text(most, '\0');
    in.exceptions(std::ios::badbit);
    in.read(text.data(), static_cast<std::streamsize>(most));
    text.resize(static_cast<std::size_t>(in.gcount()));
    return text;
  });
}

}  // namespace chlist
