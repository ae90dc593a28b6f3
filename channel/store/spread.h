// Where keys go in tables of a power of two of slots. Files choose the keys: with multipliers that they could know, a
// crafted file would send all of them to one slot.
#pragma once

#include <cstdint>

namespace channel {

// Multiply-shift hashing, a universal family (Dietzfelbinger and others, 1997): of any two keys, whichever they are, at
// most 2 in m of the multipliers send both to one of m slots. The first product takes apart what stands in even steps,
// as ids and frequencies do; it is a bijection, which the argument does not notice.
class spread {
 public:
  // With multipliers that differ from process to process. Nothing may depend on where a key goes but how long it takes.
  spread();

  // With multipliers given.
  constexpr spread(std::uint64_t first, std::uint64_t second) : first_(first | 1U), second_(second | 1U) {}

  // A slot is as many of the high bits as its number has.
  constexpr std::uint64_t operator()(std::uint64_t key) const {
    const std::uint64_t product = key * first_;
    return (product ^ product >> 32U) * second_;
  }

 private:
  std::uint64_t first_;
  std::uint64_t second_;
};

}  // namespace channel
