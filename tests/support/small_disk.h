// A disk of this process alone, as full as a test wants it.
#pragma once

#include <string>

#include "temp_dir.h"

namespace test_support {

class small_disk {
 public:
  static constexpr std::size_t block = 4096;
  static constexpr std::size_t size = 256 * block;

  // No name is left for more than so many files, the root among them; 0: as many as there are.
  explicit small_disk(std::size_t files = 0);
  ~small_disk();
  small_disk(const small_disk &) = delete;
  small_disk &operator=(const small_disk &) = delete;

  // False where the system grants no mounts.
  [[nodiscard]] bool is_mounted() const { return is_mounted_; }
  // Ends with "/".
  [[nodiscard]] const std::string &path() const { return dir_.path(); }

  // Removes every file and takes all room but so much.
  void leave(std::size_t room) const;

 private:
  temp_dir dir_;
  bool is_mounted_ = false;
};

}  // namespace test_support
