// The one door to the file system. Every operation that touches files goes through it, so that a door that fails at a
// chosen call, or writes short, can stand in its place.
#pragma once

#include <array>
#include <cstddef>
#include <cstdio>
#include <span>

namespace channel::persist {

// What the library asks of the file system. Results are those of the functions of <cstdio> that stand behind it. The
// buffer that an open file is lent stays until it is closed.
struct file_door {
  std::FILE *(*open)(const char *path, const char *mode, std::span<char> buffer);
  std::size_t (*read)(void *data, std::size_t size, std::size_t items, std::FILE *file);
  std::size_t (*write)(const void *data, std::size_t size, std::size_t items, std::FILE *file);
  int (*flush)(std::FILE *file);
  int (*close)(std::FILE *file);
  void (*sync)();
};

extern const file_door system_door;
extern const file_door *door;

// An open file; closed when it goes.
class file {
 public:
  // A null path cannot be opened.
  file(const char *path, const char *mode) : stream_(path != nullptr ? door->open(path, mode, buffer_) : nullptr) {}
  ~file() { static_cast<void>(close()); }
  file(const file &) = delete;
  file &operator=(const file &) = delete;

  [[nodiscard]] bool is_open() const { return stream_ != nullptr; }

  // Whole records only: a short one is a failure.
  [[nodiscard]] bool read(void *data, std::size_t size) { return door->read(data, size, 1, stream_) == 1; }
  [[nodiscard]] bool write(const void *data, std::size_t size) { return door->write(data, size, 1, stream_) == 1; }

  // False when bytes that were written before did not reach the file.
  [[nodiscard]] bool flush() { return door->flush(stream_) == 0; }
  bool close();

 private:
  // Larger than what streams bring: a whole list is read or written in a few dozen system calls.
  static constexpr std::size_t buffer_size = 65536;

  std::array<char, buffer_size> buffer_;
  std::FILE *stream_;
};

}  // namespace channel::persist
