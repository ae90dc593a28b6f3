// Bytes that are taken one after the other to decide what a program does. Behind their end there are zeros, so that
// every sequence of bytes means something.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace test_support {

class byte_reader {
 public:
  explicit byte_reader(std::span<const std::uint8_t> input) : left_(input) {}

  [[nodiscard]] bool is_at_end() const { return left_.empty(); }

  std::uint8_t byte() {
    if (left_.empty()) {
      return 0;
    }
    const std::uint8_t first = left_.front();
    left_ = left_.subspan(1);
    return first;
  }

  // A number of so many bytes, the low ones first.
  std::uint32_t number(std::size_t width) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < width; ++i) {
      value |= static_cast<std::uint32_t>(byte()) << 8 * i;
    }
    return value;
  }

  // The next bytes as a reader of their own, fewer at the end.
  byte_reader part(std::size_t size) {
    const auto taken = left_.first(std::min(size, left_.size()));
    left_ = left_.subspan(taken.size());
    return byte_reader(taken);
  }

  // Everything that is left.
  std::string rest() {
    const std::span taken = left_;
    left_ = {};
    return {taken.begin(), taken.end()};
  }

 private:
  std::span<const std::uint8_t> left_;
};

}  // namespace test_support
