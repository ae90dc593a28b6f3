// What the library writes to standard error, caught write by write. A write is the text between one colour code and the
// code that ends it; text outside the codes shows up as "uncoloured: ..." so that no test passes over it. Source lines,
// which no test may depend on, read "#".
#pragma once

#include <cstdio>
#include <initializer_list>
#include <string>
#include <vector>

namespace test_support {

// Catches a file descriptor from its construction to its end.
class fd_capture {
 public:
  explicit fd_capture(int fd);
  ~fd_capture();
  fd_capture(const fd_capture &) = delete;
  fd_capture &operator=(const fd_capture &) = delete;
  // Everything caught so far.
  [[nodiscard]] std::string text() const;

 private:
  int fd_;
  int saved_;
  int file_;
};

// Catches standard error while the channel list's log level is set; the whole level table is restored at the end.
class log_capture {
 public:
  // level: the library's entry (7) of verbosity_map.
  explicit log_capture(int level = 0);
  ~log_capture();
  log_capture(const log_capture &) = delete;
  log_capture &operator=(const log_capture &) = delete;

  // The writes so far, in order, e.g. "ERROR: load_channel_internal:# Fail to open '/nothing'\n".
  [[nodiscard]] std::vector<std::string> writes() const;
  // Of those, the ones that contain a text.
  [[nodiscard]] std::vector<std::string> writes_with(const std::string &text) const;
  [[nodiscard]] std::string raw() const { return capture_.text(); }

 private:
  std::vector<int> levels_;
  fd_capture capture_;
};

// Lists of writes, one behind the other.
inline std::vector<std::string> joined(std::initializer_list<std::vector<std::string>> parts) {
  std::vector<std::string> all;
  for (const std::vector<std::string> &part : parts) {
    all.insert(all.end(), part.begin(), part.end());
  }
  return all;
}

// The writes of one action at a log level.
template <class Action>
std::vector<std::string> writes_at(int level, Action &&action) {
  const log_capture log(level);
  static_cast<void>(action());
  return log.writes();
}

}  // namespace test_support
