// A file system in memory behind the library's door to files: a harness puts its input there, and nothing touches the
// disk. One at a time. The memory of its files goes on to the next one: a channel file has half a megabyte.
#pragma once

#include <map>
#include <string>

#include "channel/persist/file.h"

namespace fuzz {

class memory_files {
 public:
  memory_files();
  ~memory_files();
  memory_files(const memory_files &) = delete;
  memory_files &operator=(const memory_files &) = delete;

  // A file by its whole path; empty when it is new.
  std::string &at(const std::string &path);
  void remove_all();
  [[nodiscard]] int open_files() const { return open_files_; }

 private:
  static std::FILE *open(const char *path, const char *mode, std::span<char> buffer);
  static std::size_t read(void *data, std::size_t size, std::size_t items, std::FILE *file);
  static std::size_t write(const void *data, std::size_t size, std::size_t items, std::FILE *file);
  static int flush(std::FILE *file);
  static int close(std::FILE *file);
  static void sync();

  static const channel::persist::file_door functions;

  const channel::persist::file_door *before_;
  std::map<std::string, std::string> contents_;
  int open_files_ = 0;
};

}  // namespace fuzz
