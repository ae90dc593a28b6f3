// A view as one small value: its entries, its count and what its array can hold. The 26 views are one table. A count
// that a host has written outside the array is read as the nearest one inside it.
#pragma once

#include <algorithm>
#include <channel/records.h>
#include <cstddef>
#include <cstdint>
#include <span>

namespace channel {

struct view {
  virtual_channel_st *entries = nullptr;
  std::int16_t *count = nullptr;
  std::int16_t capacity = 0;

  explicit operator bool() const { return entries != nullptr && count != nullptr; }
  [[nodiscard]] std::int16_t size() const { return std::clamp<std::int16_t>(*count, 0, capacity); }
  [[nodiscard]] bool is_full() const { return size() == capacity; }
  [[nodiscard]] virtual_channel_st *begin() const { return entries; }
  [[nodiscard]] virtual_channel_st *end() const { return entries + size(); }
  [[nodiscard]] std::span<virtual_channel_st> used() const { return {begin(), end()}; }
  [[nodiscard]] std::span<virtual_channel_st> array() const { return {entries, static_cast<std::size_t>(capacity)}; }

  // The slot at a position of the array, in use or not; null outside the array.
  [[nodiscard]] virtual_channel_st *slot(int vindex) const {
    return vindex >= 0 && vindex < capacity ? entries + vindex : nullptr;
  }

  // False, and nothing changed, when the array is full.
  bool append(const virtual_channel_st &entry) const;
};

// Every view, the work view included.
std::span<const view> all_views();

// The view of a code, or none; an unknown code is not reported.
view find_view(int type);

// The same through the two exported accessors, each of which warns of an unknown code.
view fetch_view(std::int8_t type);

// The view that is current, or none when its array or its count is missing.
view current_view();

}  // namespace channel
