// Descriptors bit by bit, in the order in which the standards have them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace chlist {

// Takes bits off the front; beyond the end they are 0, and the reader knows.
class bit_reader {
 public:
  explicit bit_reader(std::string_view bytes) : bytes_(bytes) {}

  std::uint32_t take(unsigned bits) {
    std::uint32_t value = 0;
    for (; bits > 0; --bits, ++at_) {
      const std::size_t byte = at_ / 8;
      const bool is_set = byte < bytes_.size() && (static_cast<unsigned char>(bytes_[byte]) >> (7 - at_ % 8) & 1U) != 0;
      value = value << 1U | (is_set ? 1U : 0U);
    }
    return value;
  }
  std::uint16_t take_word() { return static_cast<std::uint16_t>(take(16)); }
  std::uint8_t take_byte() { return static_cast<std::uint8_t>(take(8)); }
  void skip(unsigned bits) { at_ += bits; }

  // Decimal digits of four bits each; one that is none counts as 0.
  std::uint32_t take_digits(unsigned digits) {
    std::uint32_t value = 0;
    for (; digits > 0; --digits) {
      const std::uint32_t digit = take(4);
      value = value * 10 + (digit < 10 ? digit : 0);
    }
    return value;
  }

  // The reader must stand at the beginning of a byte.
  std::string_view take_text(std::size_t size) {
    const std::string_view text = rest().substr(0, size);
    at_ += size * 8;
    return text;
  }
  // A text with its length in front.
  std::string_view take_text() { return take_text(take_byte()); }

  [[nodiscard]] bool has(std::size_t bytes) const { return bytes_.size() * 8 >= at_ + bytes * 8; }
  // False behind the end, too.
  [[nodiscard]] bool is_within() const { return at_ <= bytes_.size() * 8; }
  [[nodiscard]] std::string_view rest() const { return bytes_.substr(std::min(at_ / 8, bytes_.size())); }

 private:
  std::string_view bytes_;
  std::size_t at_ = 0;  // in bits
};

}  // namespace chlist
