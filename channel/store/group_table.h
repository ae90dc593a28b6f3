// A group table as one small value: its records, its count and what its array can hold. A count that a host has written
// outside the array is read as the nearest one inside it.
#pragma once

#include <algorithm>
#include <channel/records.h>
#include <cstddef>
#include <cstdint>
#include <span>

namespace channel {

struct group_table {
  group_st *groups = nullptr;
  std::int16_t *count = nullptr;
  std::int16_t capacity = 0;

  explicit operator bool() const { return groups != nullptr; }
  [[nodiscard]] std::int16_t size() const { return std::clamp<std::int16_t>(*count, 0, capacity); }
  [[nodiscard]] group_st *begin() const { return groups; }
  [[nodiscard]] group_st *end() const { return groups + size(); }
  [[nodiscard]] std::span<group_st> array() const { return {groups, static_cast<std::size_t>(capacity)}; }

  // The first group with an id, or null.
  [[nodiscard]] group_st *find(std::int16_t id) const;

  // The smallest id of 0..capacity-1 that no group has, or -1.
  [[nodiscard]] std::int16_t free_id() const;
};

// The order of names without regard to case: negative, 0 or positive.
int compare_group_name(const group_st &a, const group_st &b);

group_table provider_table();
group_table genre_table();
group_table country_table();
group_table favourite_table();

// The table of GROUP_GENRE, GROUP_PROVIDER or GROUP_COUNTRY; none for every other kind.
group_table table_of_kind(int kind);

}  // namespace channel
