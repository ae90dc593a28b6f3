// The slots of the favourite groups. A group is three parts that move together: its record, its entries and their
// count.
#pragma once

#include <algorithm>
#include <array>
#include <channel/records.h>
#include <cstdint>

#include "channel/store/channel_list.h"
#include "channel/store/group_table.h"
#include "channel/store/view.h"

namespace channel {

// One slot of the table, whole.
struct favourite_slot {
  group_st record;
  std::array<virtual_channel_st, MAX_FAV_NUM> entries;
  std::int16_t count;
};

inline favourite_slot read_slot(int index) {
  favourite_slot slot;
  slot.record = channel_list.favorite_group[index];
  std::copy_n(channel_list.favorite_vch[index], MAX_FAV_NUM, slot.entries.begin());
  slot.count = channel_list.favorite_vnumber[index];
  return slot;
}

inline void write_slot(int index, const favourite_slot &slot) {
  channel_list.favorite_group[index] = slot.record;
  std::copy(slot.entries.begin(), slot.entries.end(), channel_list.favorite_vch[index]);
  channel_list.favorite_vnumber[index] = slot.count;
}

inline view entries_of(int index) { return find_view(VIEW_FAVOURITE + index); }

inline bool is_slot(int index) { return index >= 0 && index < MAX_FAV; }

// The index of the first group with an id, or -1; a miss is not reported.
inline int find_index(std::int16_t id) {
  const group_table groups = favourite_table();
  const group_st *group = groups.find(id);
  return group != nullptr ? static_cast<int>(group - groups.groups) : -1;
}

}  // namespace channel
