// A door to the file system that remembers every call and fails at chosen ones. Files behind it are real; `sync` is
// not.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "channel/persist/file.h"
#include "faults/fault.h"

namespace test_support {

// In place of the real door as long as it lives. One at a time.
class stand_in_door {
 public:
  explicit stand_in_door(const fault &planned = {}) : before_(channel::persist::door), plan_(planned) {
    current = this;
    channel::persist::door = &functions;
  }
  ~stand_in_door() {
    channel::persist::door = before_;
    current = nullptr;
  }
  stand_in_door(const stand_in_door &) = delete;
  stand_in_door &operator=(const stand_in_door &) = delete;

  // The n-th call of a kind fails, counted from 1. A failing read or write moves no bytes.
  void fail_at(door_call kind, int n) { plan_ = fault_plan({.nth = n, .kind = kind}); }
  // The n-th write stops after half of its bytes.
  void write_short_at(int n) { plan_ = fault_plan({.nth = n, .kind = door_call::write, .is_short = true}); }
  // Whoever opens the one path gets the file at the other.
  void redirect(const std::string &from, const std::string &to) {
    redirected_ = from;
    destination_ = to;
  }

  [[nodiscard]] bool has_failed() const { return plan_.has_struck(); }
  [[nodiscard]] int calls(door_call kind) const { return counts_[static_cast<std::size_t>(kind)]; }
  // "open PATH MODE", "read SIZE", "write SIZE", "flush", "close" and "sync", in the order of the calls.
  [[nodiscard]] const std::vector<std::string> &events() const { return events_; }
  [[nodiscard]] int open_files() const { return open_files_; }

 private:
  // Counts and remembers a call; true when it fails.
  bool fails(door_call kind, const std::string &event) {
    events_.push_back(event);
    ++counts_[static_cast<std::size_t>(kind)];
    return plan_.fails(kind);
  }

  static std::FILE *open(const char *path, const char *mode, std::span<char> buffer) {
    const char *opened = path == current->redirected_ ? current->destination_.c_str() : path;
    const bool fails = current->fails(door_call::open, open_event(path, mode));
    std::FILE *file = fails ? nullptr : channel::persist::system_door.open(opened, mode, buffer);
    current->open_files_ += file != nullptr;
    return file;
  }
  static std::size_t read(void *data, std::size_t size, std::size_t items, std::FILE *file) {
    if (!current->fails(door_call::read, read_event(size * items))) {
      return std::fread(data, size, items, file);
    }
    if (current->plan_.is_short()) {
      static_cast<void>(std::fread(data, size / 2, 1, file));
    }
    return 0;
  }
  static std::size_t write(const void *data, std::size_t size, std::size_t items, std::FILE *file) {
    if (!current->fails(door_call::write, write_event(size * items))) {
      return std::fwrite(data, size, items, file);
    }
    if (current->plan_.is_short()) {
      static_cast<void>(std::fwrite(data, size / 2, 1, file));
    }
    return 0;
  }
  static int flush(std::FILE *file) {
    const int result = std::fflush(file);
    return current->fails(door_call::flush, "flush") ? EOF : result;
  }
  static int close(std::FILE *file) {
    const int result = std::fclose(file);
    --current->open_files_;
    return current->fails(door_call::close, "close") ? EOF : result;
  }
  static void sync() { static_cast<void>(current->fails(door_call::sync, "sync")); }

  static constexpr channel::persist::file_door functions = {open, read, write, flush, close, sync};
  static inline stand_in_door *current = nullptr;

  const channel::persist::file_door *before_;
  fault_plan plan_;
  std::array<int, 6> counts_ = {};
  std::vector<std::string> events_;
  std::string redirected_;
  std::string destination_;
  int open_files_ = 0;
};

}  // namespace test_support
