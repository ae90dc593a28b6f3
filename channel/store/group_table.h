// A group table as one small value: its records, its count and what its array can hold. A count that a host has written
// outside the array is read as the nearest one inside it.
#pragma once

#include <algorithm>
#include <bitset>
#include <channel/records.h>
#include <cstddef>
#include <cstdint>
#include <span>

namespace channel {

// Compatibility: the favourite groups are counted in the low byte of their field, signed, whatever the other byte
// holds.
constexpr std::int16_t counted_in_low_byte(std::int16_t field) { return static_cast<std::int8_t>(field); }

struct group_table {
  group_st *groups = nullptr;
  std::int16_t *count = nullptr;
  std::int16_t capacity = 0;
  bool is_counted_in_low_byte = false;

  explicit operator bool() const { return groups != nullptr; }
  // The count as it stands, inside the array or not.
  [[nodiscard]] std::int16_t counted() const { return is_counted_in_low_byte ? counted_in_low_byte(*count) : *count; }
  [[nodiscard]] std::int16_t size() const { return std::clamp<std::int16_t>(counted(), 0, capacity); }
  [[nodiscard]] group_st *begin() const { return groups; }
  [[nodiscard]] group_st *end() const { return groups + size(); }
  [[nodiscard]] std::span<group_st> array() const { return {groups, static_cast<std::size_t>(capacity)}; }

  // The first group with an id, or null.
  [[nodiscard]] group_st *find(std::int16_t id) const;

  // The smallest id of 0..capacity-1 that no group has. The table must not be full: it has one then.
  [[nodiscard]] std::int16_t free_id() const;
};

// Group ids, of whatever value: services and tables may hold ids that no table gives.
class id_set {
 public:
  // False when the id was in the set already.
  bool add(std::int16_t id) {
    const bool is_new = !holds(id);
    ids_[bit(id)] = true;
    return is_new;
  }
  // False when the id was not in the set.
  bool remove(std::int16_t id) {
    const bool was_held = holds(id);
    ids_[bit(id)] = false;
    return was_held;
  }
  [[nodiscard]] bool holds(std::int16_t id) const { return ids_[bit(id)]; }

 private:
  static std::size_t bit(std::int16_t id) { return static_cast<std::uint16_t>(id); }

  std::bitset<std::size_t{1} << 16> ids_;
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
