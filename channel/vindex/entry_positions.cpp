// A segment tree over the sorted identities: what can match an identity is a row of leaves, and the first position of a
// row is the least of a few nodes.
#include "channel/vindex/entry_positions.h"

#include <algorithm>
#include <limits>

namespace channel {

std::uint64_t entry_positions::ids_of(const identity &id) {
  return std::uint64_t{id.net_index} << 48U | std::uint64_t{id.network_id} << 32U | std::uint64_t{id.ts_id} << 16U |
         id.service_id;
}

std::uint64_t entry_positions::signal_of(const tagged_identity &id, std::uint32_t frequency) {
  return std::uint64_t{static_cast<std::uint8_t>(id.tag)} << 40U | std::uint64_t{id.polarisation} << 32U | frequency;
}

entry_positions::key entry_positions::key_of(const view &searched, int position) {
  const tagged_identity id = tagged_identity_of(searched.entries[position]);
  return {ids_of(id), signal_of(id, id.frequency), static_cast<std::int16_t>(position)};
}

entry_positions::entry_positions(const view &searched)
    : entries_(searched.entries), size_(static_cast<std::size_t>(searched.size())),
      keys_(allocate_array<key>(size_ + 1)), ranks_(allocate_array<std::uint16_t>(size_ + 1)),
      firsts_(allocate_array<std::int16_t>(2 * size_ + 1)) {
  key *const keys = keys_.get();
  for (int position = 0; position < searched.size(); ++position) {
    keys[position] = key_of(searched, position);
  }
  std::sort(keys, keys + size_);
  for (std::size_t rank = 0; rank < size_; ++rank) {
    ranks_.get()[keys[rank].position] = static_cast<std::uint16_t>(rank);
    firsts_.get()[size_ + rank] = keys[rank].position;
  }
  for (std::size_t node = size_; node-- > 1;) {
    firsts_.get()[node] = std::min(firsts_.get()[2 * node], firsts_.get()[2 * node + 1]);
  }
}

// How many keys stand before one.
std::size_t entry_positions::rank_of(std::uint64_t ids, std::uint64_t signal) const {
  const key *const keys = keys_.get();
  return static_cast<std::size_t>(std::lower_bound(keys, keys + size_, key{ids, signal, 0}) - keys);
}

// The leaves that can match.
entry_positions::row entry_positions::row_of(const tagged_identity &id) const {
  constexpr std::uint32_t reach = frequency_tolerance - 1;
  constexpr std::uint32_t highest = std::numeric_limits<std::uint32_t>::max();
  const std::uint64_t ids = ids_of(id);
  if (id.frequency == 0) {
    return {rank_of(ids, 0), rank_of(ids + 1, 0)};
  }
  const std::uint32_t from = id.frequency - std::min(id.frequency, reach);
  const std::uint32_t to = id.frequency + std::min(highest - id.frequency, reach);
  return {rank_of(ids, signal_of(id, from)), rank_of(ids, signal_of(id, to) + 1)};
}

std::int16_t entry_positions::first_between(std::size_t begin, std::size_t end) const {
  std::int16_t first = nowhere;
  for (begin += size_, end += size_; begin < end; begin /= 2, end /= 2) {
    if (begin % 2 == 1) {
      first = std::min(first, firsts_.get()[begin++]);
    }
    if (end % 2 == 1) {
      first = std::min(first, firsts_.get()[--end]);
    }
  }
  return first;
}

int entry_positions::find(const tagged_identity &id) const {
  const auto [begin, end] = row_of(id);
  std::int16_t first = first_between(begin, end);
  if (same_entry_or_ids(virtual_channel_st{}, id)) {
    first = std::min(first, first_cleared_);
  }
  return first != nowhere ? first : -1;
}

void entry_positions::forget(std::size_t position) {
  first_cleared_ = std::min(first_cleared_, static_cast<std::int16_t>(position));
  std::int16_t *const firsts = firsts_.get();
  std::size_t node = size_ + ranks_.get()[position];
  firsts[node] = nowhere;
  while ((node /= 2) > 0) {
    firsts[node] = std::min(firsts[2 * node], firsts[2 * node + 1]);
  }
}

void entry_positions::clear(virtual_channel_st &entry) {
  entry = {};
  const std::uintptr_t offset = reinterpret_cast<std::uintptr_t>(&entry) - reinterpret_cast<std::uintptr_t>(entries_);
  if (const std::size_t position = offset / sizeof entry; position < size_) {
    forget(position);
  }
}

}  // namespace channel
