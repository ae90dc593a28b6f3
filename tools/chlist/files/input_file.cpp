// A pipe is opened without waiting for its other end: whoever reads one that nobody writes would wait for ever.
#include "chlist/files/input_file.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>

#include "chlist/files/descriptor.h"
#include "chlist/files/standard_streams.h"

namespace chlist {
namespace {

constexpr std::size_t read_at_once = std::size_t{1} << 16U;
constexpr int for_ever = -1;
constexpr int patience_ms = 5000;

[[noreturn]] void refuse_as_too_large(const std::string &name) {
  throw std::runtime_error(name + ": is larger than " + std::to_string(largest_input >> 20U) +
                           " MiB, too large for a list");
}

// Standard input is read on from where it stands.
int open_input(const std::filesystem::path &path) {
  return is_standard_stream(path) ? ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0)
                                  : ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
}

bool has_more_within(const descriptor &file, int milliseconds) {
  pollfd waited = {file.get(), POLLIN, 0};
  return ::poll(&waited, 1, milliseconds) != 0;
}

std::string read_up_to(const descriptor &file, const std::string &name, std::size_t most) {
  std::string text;
  while (text.size() < most) {
    const std::size_t begun = text.size();
    text.resize(begun + std::min(read_at_once, most - begun));
    const ssize_t part = ::read(file.get(), text.data() + begun, text.size() - begun);
    text.resize(begun + static_cast<std::size_t>(std::max<ssize_t>(part, 0)));
    if (part == 0) {
      break;
    }
    if (part < 0 && errno == EAGAIN) {
      has_more_within(file, for_ever);
    } else if (part < 0 && errno != EINTR) {
      fail(name);
    }
  }
  return text;
}

struct stat status_of(const descriptor &file, const std::string &name) {
  struct stat found = {};
  if (::fstat(file.get(), &found) != 0) {
    fail(name);
  }
  return found;
}

}  // namespace

// Where nobody has the other end open, a read says at once that the pipe ends.
std::string read_input_file(const std::filesystem::path &path) {
  const std::string name = name_of_input(path);
  const descriptor file(open_input(path), name);
  const struct stat found = status_of(file, name);
  if (S_ISREG(found.st_mode) && static_cast<std::uintmax_t>(found.st_size) > largest_input) {
    refuse_as_too_large(name);
  }
  const bool is_silent = S_ISFIFO(found.st_mode) && !is_standard_stream(path) && !has_more_within(file, patience_ms);
  std::string text = read_up_to(file, name, largest_input + 1);
  if (is_silent && text.empty()) {
    throw std::runtime_error(name + ": is a pipe that nobody writes");
  }
  if (text.size() > largest_input) {
    refuse_as_too_large(name);
  }
  return text;
}

std::string read_beginning(const std::filesystem::path &path, std::size_t most) {
  const std::string name = name_of_input(path);
  return read_up_to(descriptor(open_input(path), name), name, most);
}

}  // namespace chlist
