// Where entries stand in a view, for a move that looks for thousands of them and clears those it finds: gives what a
// walk gives, the first position, and costs about the logarithm of the view's length, however alike the entries are.
#pragma once

#include <channel/records.h>
#include <cstddef>
#include <cstdint>

#include "channel/identity.h"
#include "channel/store/memory.h"
#include "channel/store/view.h"

namespace channel {

class entry_positions {
 public:
  explicit entry_positions(const view &searched);

  // The first position where same_entry_or_ids() holds, or -1.
  [[nodiscard]] int find(const tagged_identity &id) const;

  // Clears an entry, of this view or of another.
  void clear(virtual_channel_st &entry);

 private:
  // An identity as two numbers, so that what can match it stands in a row when they are sorted: entries with the same
  // ids; of these, those with the same tag and polarisation, by frequency.
  struct key {
    std::uint64_t ids;
    std::uint64_t signal;
    std::int16_t position;

    friend bool operator<(const key &a, const key &b) { return a.ids != b.ids ? a.ids < b.ids : a.signal < b.signal; }
  };

  struct row {
    std::size_t begin;
    std::size_t end;
  };

  static std::uint64_t ids_of(const identity &id);
  static std::uint64_t signal_of(const tagged_identity &id, std::uint32_t frequency);
  static key key_of(const view &searched, int position);

  [[nodiscard]] std::size_t rank_of(std::uint64_t ids, std::uint64_t signal) const;
  [[nodiscard]] row row_of(const tagged_identity &id) const;
  [[nodiscard]] std::int16_t first_between(std::size_t begin, std::size_t end) const;
  void forget(std::size_t position);

  static constexpr std::int16_t nowhere = INT16_MAX;

  virtual_channel_st *entries_;
  std::size_t size_;
  transient<key> keys_;             // sorted
  transient<std::uint16_t> ranks_;  // where a position stands in keys_
  transient<std::int16_t> firsts_;  // the first positions below each node of a tree whose leaves are keys_
  std::int16_t first_cleared_ = nowhere;
};

}  // namespace channel
