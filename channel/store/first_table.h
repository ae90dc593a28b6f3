// A table from keys to pointers that keeps the first pointer of each key, and grows as keys come. It lives for one
// call.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#include "channel/store/memory.h"
#include "channel/store/spread.h"

namespace channel {

// Hashing with chains: what a lookup costs depends on pairs of keys alone, of which a universal family lets few meet
// whatever the keys are. A table without chains would run keys of different slots together.
template <class Value>
class first_table {
 public:
  // Room for so many keys; more may come.
  explicit first_table(std::size_t keys, const spread &where = {})
      : where_(where), capacity_(keys + 1), bits_(bits_for(capacity_)), heads_(allocate_array<link>(heads())),
        nodes_(allocate_array<node>(capacity_ + 1)) {}

  // The place of a key: null in it when the key is new, and to be filled then. Good until the next key comes.
  Value *&at(std::uint64_t key) {
    if (node *known = find_node(key); known != nullptr) {
      return known->value;
    }
    if (used_ == capacity_) {
      grow();
    }
    link &head = head_of(key);
    node &added = nodes_.get()[++used_];
    added = {key, nullptr, std::exchange(head, static_cast<link>(used_))};
    return added.value;
  }

  void keep_first(std::uint64_t key, Value *value) {
    Value *&kept = at(key);
    kept = kept != nullptr ? kept : value;
  }

  // How many keys there are.
  [[nodiscard]] std::size_t size() const { return used_; }

  // Keys of values that a rule names are new again.
  template <class Rule>
  void remove_if(const Rule &is_removed) {
    for (std::size_t i = 1; i <= used_; ++i) {
      Value *&value = nodes_.get()[i].value;
      value = value != nullptr && is_removed(*value) ? nullptr : value;
    }
  }

  [[nodiscard]] Value *find(std::uint64_t key) const {
    const node *found = find_node(key);
    return found != nullptr ? found->value : nullptr;
  }

 private:
  // The number of a node, from 1; 0 ends a chain.
  using link = std::uint32_t;

  struct node {
    std::uint64_t key;
    Value *value;
    link next;
  };

  // More chains than keys.
  static constexpr int bits_for(std::size_t keys) { return static_cast<int>(std::bit_width(keys)); }
  [[nodiscard]] std::size_t heads() const { return std::size_t{1} << bits_; }

  [[nodiscard]] link &head_of(std::uint64_t key) const {
    return heads_.get()[static_cast<std::size_t>(where_(key) >> (64 - bits_))];
  }

  [[nodiscard]] node *find_node(std::uint64_t key) const {
    for (link number = head_of(key); number != 0; number = nodes_.get()[number].next) {
      if (node &candidate = nodes_.get()[number]; candidate.key == key) {
        return &candidate;
      }
    }
    return nullptr;
  }

  void grow() {
    capacity_ *= 2;
    bits_ = bits_for(capacity_);
    const transient<node> old = std::exchange(nodes_, transient<node>(allocate_array<node>(capacity_ + 1)));
    std::memcpy(nodes_.get() + 1, old.get() + 1, used_ * sizeof(node));
    heads_.reset(allocate_array<link>(heads()));
    for (std::size_t i = 1; i <= used_; ++i) {
      node &moved = nodes_.get()[i];
      moved.next = std::exchange(head_of(moved.key), static_cast<link>(i));
    }
  }

  spread where_;
  std::size_t capacity_;
  std::size_t used_ = 0;
  int bits_;
  transient<link> heads_;
  transient<node> nodes_;
};

}  // namespace channel
