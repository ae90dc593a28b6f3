// An open file descriptor that is closed when it goes, and the exception for a system call that failed.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

namespace chlist {

[[noreturn]] inline void fail(const std::string &what) {
  throw std::system_error(errno, std::generic_category(), what);
}

class descriptor {
 public:
  explicit descriptor(int fd, const std::string &what) : fd_(fd) {
    if (fd_ < 0) {
      fail(what);
    }
  }
  ~descriptor() { ::close(fd_); }
  descriptor(const descriptor &) = delete;
  descriptor &operator=(const descriptor &) = delete;
  [[nodiscard]] int get() const { return fd_; }

 private:
  int fd_;
};

}  // namespace chlist
