// A sum over bytes that tells damage and other files, not intent.
#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace chlist {

inline bool begins_with_eight_zeros(std::string_view bytes) {
  std::uint64_t eight = 1;
  if (bytes.size() >= sizeof eight) {
    std::memcpy(&eight, bytes.data(), sizeof eight);
  }
  return eight == 0;
}

// FNV-1a of 64 bits, in hexadecimal digits. A zero only multiplies, so that eight of them, which most of a channel file
// is, are one step.
inline std::string fingerprint_of(std::string_view bytes) {
  constexpr std::uint64_t prime = 0x100000001B3;
  constexpr std::uint64_t square = prime * prime;
  constexpr std::uint64_t eighth_power = square * square * square * square;
  std::uint64_t sum = 0xCBF29CE484222325;
  while (!bytes.empty()) {
    const bool is_zeros = begins_with_eight_zeros(bytes);
    sum = is_zeros ? sum * eighth_power : (sum ^ static_cast<unsigned char>(bytes.front())) * prime;
    bytes.remove_prefix(is_zeros ? 8 : 1);
  }
  return fmt::format("{:016x}", sum);
}

}  // namespace chlist
