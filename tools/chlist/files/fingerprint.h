// A sum over bytes that tells damage and other files, not intent.
#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace chlist {

// FNV-1a of 64 bits, in hexadecimal digits.
inline std::string fingerprint_of(std::string_view bytes) {
  std::uint64_t sum = 0xCBF29CE484222325;
  for (const char c : bytes) {
    sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001B3;
  }
  return fmt::format("{:016x}", sum);
}

}  // namespace chlist
