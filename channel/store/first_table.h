// A table from keys to pointers that keeps the first pointer of each key. It lives for one call.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "channel/store/hierarchy.h"

namespace channel {

template <class Value>
class first_table {
 public:
  // Room for as many keys as will be kept at most.
  explicit first_table(std::size_t keys)
      : mask_(std::bit_ceil(2 * keys + 1) - 1), slots_(allocate_array<slot>(mask_ + 1)) {}

  // The slot of a key: null in it when the key is new.
  Value *&at(std::uint64_t key) {
    slot &found = find_slot(key);
    found.key = key;
    return found.value;
  }

  void keep_first(std::uint64_t key, Value *value) {
    Value *&kept = at(key);
    kept = kept != nullptr ? kept : value;
  }

  [[nodiscard]] Value *find(std::uint64_t key) const { return find_slot(key).value; }

 private:
  struct slot {
    std::uint64_t key;
    Value *value;
  };

  [[nodiscard]] slot &find_slot(std::uint64_t key) const {
    constexpr std::uint64_t golden_ratio = 0x9E3779B97F4A7C15;
    constexpr int spread_bits = 32;
    std::size_t index = static_cast<std::size_t>((key * golden_ratio) >> spread_bits) & mask_;
    while (slots_.get()[index].value != nullptr && slots_.get()[index].key != key) {
      index = (index + 1) & mask_;
    }
    return slots_.get()[index];
  }

  std::size_t mask_;
  transient<slot> slots_;
};

}  // namespace channel
