// The two things that a receiver runs out of: room on the disk, and memory.
#pragma once

#include <sys/resource.h>

#include <cstddef>

namespace test_support {

// While it lives no file grows beyond a size; writing past it fails like writing to a full disk.
class file_size_limit {
 public:
  explicit file_size_limit(rlim_t size);
  ~file_size_limit();
  file_size_limit(const file_size_limit &) = delete;
  file_size_limit &operator=(const file_size_limit &) = delete;

 private:
  rlimit before_ = {};
  void (*signal_)(int);
};

// While it lives the allocator has nothing of a size, or above it, to give.
class no_memory_of {
 public:
  explicit no_memory_of(std::size_t size);
  ~no_memory_of();
  no_memory_of(const no_memory_of &) = delete;
  no_memory_of &operator=(const no_memory_of &) = delete;

  // Not under a sanitizer, whose allocator ends the process itself, nor where the system does not keep the limit.
  static bool is_possible();
  // Lets the system give memory again, whatever is alive.
  static void end();

 private:
  struct block {
    block *next;
  };

  block *taken_ = nullptr;
};

}  // namespace test_support
