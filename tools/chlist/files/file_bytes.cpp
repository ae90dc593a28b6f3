// Reads a whole file. It may grow or shrink meanwhile: what was read counts.
#include "chlist/files/file_bytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <stdexcept>
#include <string>

#include "chlist/files/descriptor.h"

namespace chlist {
namespace {

std::size_t size_of_regular_file(const descriptor &file, const std::string &name) {
  struct stat found = {};
  if (::fstat(file.get(), &found) != 0) {
    fail(name);
  }
  if (!S_ISREG(found.st_mode)) {
    throw std::runtime_error(name + ": not a regular file");
  }
  const auto size = static_cast<std::size_t>(found.st_size);
  if (size > largest_file) {
    throw std::runtime_error(name + ": too large for a channel file");
  }
  return size;
}

}  // namespace

// Without O_NONBLOCK the open would wait for the writer of a pipe.
std::vector<std::byte> bytes_of_file(const std::filesystem::path &path) {
  const std::string name = path.string();
  const descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC), name);
  std::vector<std::byte> bytes(size_of_regular_file(file, name));
  std::size_t length = 0;
  while (length < bytes.size()) {
    const ssize_t part = ::read(file.get(), bytes.data() + length, bytes.size() - length);
    if (part < 0 && errno != EINTR) {
      fail(name);
    }
    if (part == 0) {
      break;
    }
    length += part > 0 ? static_cast<std::size_t>(part) : 0;
  }
  bytes.resize(length);
  return bytes;
}

}  // namespace chlist
