// A view as one small value: its entries, its count and what its array can hold. The 26 views are one table. A count
// that a host has written outside the array is read as the nearest one inside it.
#pragma once

#include <algorithm>
#include <channel/records.h>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace channel {

// The bytes of an entry in front of its pointer to the real channel: which service it is. Files carry no more of it.
inline constexpr std::size_t entry_bytes = offsetof(virtual_channel_st, ts_id) + sizeof(virtual_channel_st::ts_id);

// Every byte of an entry, padding included.
inline void clear_entries(virtual_channel_st *begin, const virtual_channel_st *end) {
  std::memset(static_cast<void *>(begin), 0, static_cast<std::size_t>(end - begin) * sizeof *begin);
}

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

  // Removes every entry that a rule names, asking once for each in order; the slots that become free are zeroed. A rule
  // may write to an entry that stays.
  // The rule stands here once: std::remove_if unrolls its search, and a rule as large as a lookup would be called then.
  template <class Rule>
  void remove_if(const Rule &is_removed) const {
    virtual_channel_st *kept = begin();
    for (virtual_channel_st &entry : used()) {
      if (!is_removed(entry)) {
        *kept++ = entry;
      }
    }
    keep_until(kept);
  }
  void remove_at(int position) const { keep_until(std::move(begin() + position + 1, end(), begin() + position)); }

  // Cuts the view at one of its slots and zeroes those behind.
  void keep_until(virtual_channel_st *new_end) const {
    clear_entries(new_end, end());
    *count = static_cast<std::int16_t>(new_end - begin());
  }
};

// Every view, the work view included.
std::span<const view> all_views();

// The history of watched channels, the latest first. Beside the work view, since its entries point to real channels as
// those of views do.
extern return_channel_st history[MAX_RETURN_CHANNEL];

// The view of a code, or none; an unknown code is not reported.
view find_view(int type);

// The same, with a warning of an unknown code in the name of an operation.
view find_view_as(const char *operation, std::int8_t type);

// The same for an operation that asks for the array and for the count: each of the two warns.
view fetch_view(std::int8_t type);

// The views that removals clean. Compatibility: the work view is never swept; hosts compare it with what is left.
inline bool is_swept_view(int type) { return type != VIEW_WORK && find_view(type); }

// The view that is current, or none when its array or its count is missing.
view current_view();

}  // namespace channel
