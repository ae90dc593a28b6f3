// A table from keys to pointers that keeps the first pointer of each key, and grows as keys come. It lives for one
// call.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "channel/store/memory.h"
#include "channel/store/spread.h"

namespace channel {

template <class Value>
class first_table {
 public:
  // Room for so many keys; more may come.
  explicit first_table(std::size_t keys)
      : mask_(std::bit_ceil(keys + keys / 3 + 2) - 1), slots_(allocate_array<slot>(mask_ + 1)) {}

  // The place of a key: null in it when the key is new, and to be filled then. Good until the next key comes.
  Value *&at(std::uint64_t key) {
    slot *found = &find_slot(key);
    if (found->value == nullptr) {
      found = is_full() ? &find_slot_in_grown(key) : found;
      found->key = key;
      ++used_;
    }
    return found->value;
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

  [[nodiscard]] bool is_full() const { return 4 * (used_ + 1) > 3 * (mask_ + 1); }

  [[nodiscard]] slot &find_slot(std::uint64_t key) const {
    auto index = static_cast<std::size_t>(spread(key) >> shift_);
    while (slots_.get()[index].value != nullptr && slots_.get()[index].key != key) {
      index = (index + 1) & mask_;
    }
    return slots_.get()[index];
  }

  slot &find_slot_in_grown(std::uint64_t key) {
    const std::size_t old_size = mask_ + 1;
    mask_ = 2 * old_size - 1;
    --shift_;
    const transient<slot> old = std::exchange(slots_, transient<slot>(allocate_array<slot>(mask_ + 1)));
    for (std::size_t i = 0; i < old_size; ++i) {
      if (const slot &moved = old.get()[i]; moved.value != nullptr) {
        find_slot(moved.key) = moved;
      }
    }
    return find_slot(key);
  }

  std::size_t mask_;
  int shift_ = std::countl_zero(std::uint64_t{mask_});
  std::size_t used_ = 0;
  transient<slot> slots_;
};

}  // namespace channel
