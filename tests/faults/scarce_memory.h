// Memory that runs out. The linker sends every calloc of the test program here; the library allocates in no other way.
#pragma once

#include <cstddef>
#include <vector>

namespace test_support {

// While it lives, requests for zeroed memory are remembered, and the n-th of them, counted from 1, is refused. One at a
// time.
class scarce_memory {
 public:
  explicit scarce_memory(std::size_t refused = 0);
  ~scarce_memory();
  scarce_memory(const scarce_memory &) = delete;
  scarce_memory &operator=(const scarce_memory &) = delete;

  // The sizes so far, in order.
  [[nodiscard]] const std::vector<std::size_t> &requests() const { return requests_; }

  // Remembers a request; true when it is the one that is refused.
  static bool refuses(std::size_t size);

 private:
  std::size_t refused_;
  std::vector<std::size_t> requests_;
};

}  // namespace test_support
