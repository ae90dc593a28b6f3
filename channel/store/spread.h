// Where keys go in tables of a power of two of slots.
#pragma once

#include <cstdint>

namespace channel {

// Spreads keys that differ little, as ids and addresses do, over 32 bits.
constexpr std::uint32_t spread(std::uint64_t key) {
  constexpr std::uint64_t golden_ratio = 0x9E3779B97F4A7C15;
  return static_cast<std::uint32_t>((key * golden_ratio) >> 32U);
}

}  // namespace channel
