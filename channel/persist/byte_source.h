// A channel file in memory, read record by record: no file is opened, and nothing is said or adjusted that the reader
// does not say or adjust itself.
#pragma once

#include <cstddef>
#include <cstring>
#include <span>

namespace channel::persist {

class byte_source {
 public:
  // The bytes stay the caller's, and stay where they are while this reads.
  explicit byte_source(std::span<const std::byte> bytes) : bytes_(bytes) {}

  // Whole records only: behind a short one nothing more is read.
  [[nodiscard]] bool read(void *data, std::size_t size) {
    if (left() < size) {
      return false;
    }
    std::memcpy(data, bytes_.data() + position_, size);
    position_ += size;
    return true;
  }

  // Where the next record begins.
  [[nodiscard]] std::size_t position() const { return position_; }
  [[nodiscard]] std::size_t left() const { return bytes_.size() - position_; }

 private:
  std::span<const std::byte> bytes_;
  std::size_t position_ = 0;
};

}  // namespace channel::persist
