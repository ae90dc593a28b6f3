#include "log_capture.h"

#include <base/verbosity.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>
#include <regex>

namespace test_support {
namespace {

constexpr int channel_module = 7;
const std::string colour_on = "\033[32m";
const std::string colour_off = "\033[0m";

std::string without_line_number(const std::string &write) {
  static const std::regex prefix("^(ERROR: |WARNING: |ChannelAPI )(\\w+):[0-9]+");
  return std::regex_replace(write, prefix, "$1$2:#");
}

}  // namespace

fd_capture::fd_capture(int fd) : fd_(fd) {
  std::fflush(nullptr);
  saved_ = ::dup(fd_);
  file_ = ::memfd_create("capture", 0);
  ::dup2(file_, fd_);
}

fd_capture::~fd_capture() {
  std::fflush(nullptr);
  ::dup2(saved_, fd_);
  ::close(saved_);
  ::close(file_);
}

std::string fd_capture::text() const {
  std::fflush(nullptr);
  std::string all;
  char chunk[65536];
  off_t offset = 0;
  for (ssize_t n = 0; (n = ::pread(file_, chunk, sizeof chunk, offset)) > 0; offset += n) {
    all.append(chunk, static_cast<std::size_t>(n));
  }
  return all;
}

log_capture::log_capture(int level)
    : levels_(std::begin(verbosity_map), std::end(verbosity_map)), capture_(STDERR_FILENO) {
  verbosity_map[channel_module] = level;
}

log_capture::~log_capture() { std::copy(levels_.begin(), levels_.end(), verbosity_map); }

std::vector<std::string> log_capture::writes() const {
  std::vector<std::string> found;
  const std::string all = raw();
  std::size_t at = 0;
  while (at < all.size()) {
    const std::size_t on = all.find(colour_on, at);
    if (on != at) {
      const std::size_t end = std::min(on, all.size());
      found.push_back("uncoloured: " + all.substr(at, end - at));
      at = end;
      continue;
    }
    const std::size_t begin = on + colour_on.size();
    const std::size_t off = std::min(all.find(colour_off, begin), all.size());
    found.push_back(without_line_number(all.substr(begin, off - begin)));
    at = off == all.size() ? off : off + colour_off.size();
  }
  return found;
}

std::vector<std::string> log_capture::writes_with(const std::string &text) const {
  std::vector<std::string> found;
  for (std::string &write : writes()) {
    if (write.find(text) != std::string::npos) {
      found.push_back(std::move(write));
    }
  }
  return found;
}

}  // namespace test_support
