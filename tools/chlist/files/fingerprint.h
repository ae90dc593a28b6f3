// A sum over bytes that tells damage and other files, not intent.
#pragma once

#include <fmt/format.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace chlist {

// Modulo 2^64; the base is squared for each bit of the exponent.
constexpr std::uint64_t power(std::uint64_t base, std::size_t exponent) {
  std::uint64_t value = 1;
  for (; exponent > 0; exponent /= 2, base *= base) {
    value *= exponent % 2 != 0 ? base : 1;
  }
  return value;
}

// How many zeros the bytes begin with, in whole eights.
inline std::size_t eights_of_zeros(std::string_view bytes) {
  std::uint64_t eight = 0;
  std::size_t at = 0;
  for (; at + sizeof eight <= bytes.size(); at += sizeof eight) {
    std::memcpy(&eight, bytes.data() + at, sizeof eight);
    if (eight != 0) {
      break;
    }
  }
  return at;
}

// FNV-1a of 64 bits, in hexadecimal digits. A zero only multiplies, so that a run of them, of which most of a channel
// file is made, is one step.
inline std::string fingerprint_of(std::string_view bytes) {
  constexpr std::uint64_t prime = 0x100000001B3;
  std::uint64_t sum = 0xCBF29CE484222325;
  while (!bytes.empty()) {
    if (const std::size_t zeros = eights_of_zeros(bytes); zeros > 0) {
      sum *= power(prime, zeros);
      bytes.remove_prefix(zeros);
    } else {
      const std::string_view eight = bytes.substr(0, 8);
      for (const char c : eight) {
        sum = (sum ^ static_cast<unsigned char>(c)) * prime;
      }
      bytes.remove_prefix(eight.size());
    }
  }
  return fmt::format("{:016x}", sum);
}

}  // namespace chlist
