// Favourite groups: the table of groups, and the entries of each.
#include <channel/favourites.h>

#include <algorithm>
#include <array>
#include <channel/transport.h>
#include <cstring>

#include "channel/group/favourite_slots.h"
#include "channel/identity.h"
#include "channel/log.h"
#include "channel/store/channel_list.h"
#include "channel/store/group_table.h"
#include "channel/store/view.h"
#include "channel/text.h"
#include "channel/vindex/moving.h"

using channel::channel_list;

namespace channel {
namespace {

group_st *find_same_name(const group_st &wanted) {
  const group_table groups = favourite_table();
  group_st *found = std::find_if(groups.begin(), groups.end(),
                                 [&wanted](const group_st &group) { return compare_group_name(group, wanted) == 0; });
  return found != groups.end() ? found : nullptr;
}

// Lowers what stood behind a removed entry: a gap in numbers and one in positions are closed apart.
void close_gap(const view &group, const virtual_channel_st &removed) {
  for (virtual_channel_st &entry : group) {
    if (entry.major_ch_num > removed.major_ch_num) {
      --entry.major_ch_num;
    }
    if (entry.favorite_id > removed.favorite_id) {
      --entry.favorite_id;
    }
  }
}

}  // namespace
}  // namespace channel

using channel::entries_of;
using channel::favourite_table;
using channel::group_table;
using channel::view;

extern "C" {

int get_fav_group_number(void) { return favourite_table().counted(); }

group_st *get_fav_group_info(int16_t index) {
  const group_table groups = favourite_table();
  if (index < 0 || index >= groups.size()) {
    LOG_ERROR("\n");
    return nullptr;
  }
  return groups.groups + index;
}

group_st *get_fav_group_info_by_fav_id(int16_t id) { return favourite_table().find(id); }

int16_t get_fav_index(int16_t id) {
  const int index = channel::find_index(id);
  if (index < 0) {
    LOG_ERROR("\n");
  }
  return static_cast<int16_t>(index);
}

virtual_channel_st *get_fav_vch(int16_t group, int16_t entry) {
  virtual_channel_st *slot = channel::is_slot(group) ? entries_of(group).slot(entry) : nullptr;
  if (slot == nullptr) {
    LOG_ERROR("group %d, entry %d outside the favourites\n", group, entry);
  }
  return slot;
}

int16_t get_fav_vch_number(int16_t group) {
  if (!channel::is_slot(group)) {
    LOG_ERROR("group %d outside the favourites\n", group);
    return 0;
  }
  return channel_list.favorite_vnumber[group];
}

int16_t get_fav_vindex_by_number(int16_t group, int16_t major, int16_t minor) {
  if (!channel::is_slot(group)) {
    LOG_ERROR("group %d outside the favourites\n", group);
    return -1;
  }
  const view entries = entries_of(group);
  const virtual_channel_st *found = std::find_if(entries.begin(), entries.end(), [=](const virtual_channel_st &entry) {
    return entry.major_ch_num == major && entry.minor_ch_num == minor;
  });
  return static_cast<int16_t>(found != entries.end() ? found - entries.begin() : -1);
}

int16_t get_fav_index_by_number(int16_t group, int16_t major, int16_t minor) {
  return get_fav_vindex_by_number(group, major, minor);
}

int16_t get_fav_vch_by_group_name(const char *name, virtual_channel_st **out) {
  if (name == nullptr || out == nullptr) {
    LOG_ERROR("name or out is null\n");
    return 0;
  }
  const group_table groups = favourite_table();
  const group_st *found = std::find_if(groups.begin(), groups.end(), [name](const group_st &group) {
    return std::strcmp(channel::name_of(group).c_str(), name) == 0;
  });
  if (found == groups.end()) {
    return 0;
  }
  const auto index = found - groups.begin();
  *out = channel_list.favorite_vch[index];
  return channel_list.favorite_vnumber[index];
}

int add_fav_group_info(group_st group) {
  const group_table groups = favourite_table();
  if (group.name_len < 0) {
    LOG_ERROR("name_len %d \n", group.name_len);
    return -1;
  }
  if (groups.size() >= groups.capacity) {
    LOG_ERROR("favorite_group_number %d MAX_FAV %d\n", groups.counted(), MAX_FAV);
    return -1;
  }
  if (group_st *same = channel::find_same_name(group); same != nullptr) {
    LOG_WARNING("same fav %d (%s)\n", same->id, channel::name_of(*same).c_str());
    same->name_len = static_cast<int16_t>(strnlen(same->name, sizeof same->name));
    return same->id;
  }
  const int16_t index = groups.size();
  LOG_PLAIN(3, "add index %d fav group : %s \n", index, channel::name_of(group).c_str());
  group.id = groups.free_id();
  // Moving groups leaves a copy behind the last one: a new group starts empty all the same.
  channel::write_slot(index, {group, {}, 0});
  *groups.count = static_cast<int16_t>(index + 1);
  return group.id;
}

// Compatibility: a length below 1 blanks the name of every group with the id and fails.
int rename_favorite_group(int16_t id, const char *name, int16_t length) {
  constexpr std::size_t cleared = 96;
  if (name == nullptr && length > 0) {
    LOG_ERROR("name is null\n");
    return -1;
  }
  for (group_st &group : favourite_table()) {
    if (group.id != id) {
      continue;
    }
    std::fill_n(group.name, cleared, '\0');
    if (length > 0) {
      group.name_len = std::min<int16_t>(length, sizeof group.name - 1);
      std::copy_n(name, group.name_len, group.name);
      return 0;
    }
  }
  return -1;
}

int remove_fav_group(int16_t id) {
  const int index = channel::find_index(id);
  if (index < 0) {
    return -1;
  }
  const group_table groups = favourite_table();
  const int last = groups.size() - 1;
  for (int moved = index; moved < last; ++moved) {
    channel::write_slot(moved, channel::read_slot(moved + 1));
  }
  channel::write_slot(last, {});
  *groups.count = static_cast<int16_t>(last);
  return 0;
}

int move_fav_ch_group(int16_t dest, int16_t src) {
  const int count = favourite_table().size();
  if (dest < 0 || dest >= count || src < 0 || src >= count) {
    LOG_ERROR("group %d or %d outside the favourites\n", dest, src);
    return -1;
  }
  const channel::favourite_slot moved = channel::read_slot(src);
  const channel::favourite_slot last = channel::read_slot(count - 1);
  const int step = src < dest ? 1 : -1;
  for (int index = src; index != dest; index += step) {
    channel::write_slot(index, channel::read_slot(index + step));
  }
  channel::write_slot(dest, moved);
  // Compatibility: the slot behind the last group is written as the groups shift.
  if (count < MAX_FAV) {
    channel::write_slot(count, last);
  }
  return 0;
}

int add_fav_virtual_channel(int16_t id, const virtual_channel_st *vch) {
  if (vch == nullptr) {
    LOG_ERROR("vch is null\n");
    return -1;
  }
  const int index = channel::find_index(id);
  if (index < 0) {
    LOG_ERROR("fav_id %d \n", id);
    return -1;
  }
  const view group = entries_of(index);
  if (group.is_full()) {
    LOG_ERROR(" overflow MAX_FAV_NUM %d \n", MAX_FAV_NUM);
    return -1;
  }
  const auto is_same = [vch](const virtual_channel_st &entry) { return is_same_vchannel(&entry, vch) == 1; };
  if (std::any_of(group.begin(), group.end(), is_same)) {
    return 0;
  }
  const int16_t position = group.size();
  group.append(*vch);
  virtual_channel_st &added = group.entries[position];
  added.favorite_id = static_cast<uint8_t>(position);
  LOG_TRACE(2, "ADD FAV %d , vnumber %d , major %d, favorite id : %d\n", index, position, added.major_ch_num,
            added.favorite_id);
  return 0;
}

// Compatibility: numbers and positions of the others stay as they are; only a removal by identity closes the gap.
int remove_fav_virtual_channel(int16_t id, int16_t index) {
  const int group_index = channel::find_index(id);
  if (group_index < 0) {
    return -1;
  }
  const view group = entries_of(group_index);
  if (!channel::is_position(group, index)) {
    LOG_ERROR("vnumber %d ,id %d, index %d  \n", *group.count, id, index);
    return -1;
  }
  const int count = group.size();
  LOG_TRACE(2, "DEL FAV %d ,%d/%d , major %d , %d \n", group_index, count, index, group.entries[index].major_ch_num,
            count - index - 1);
  group.remove_at(index);
  return 0;
}

int remove_fav_virtual_channel_by_ts_info(int8_t tag, int16_t id, uint8_t net_index, uint32_t frequency,
                                          uint8_t polarisation, uint16_t network_id, uint16_t ts_id,
                                          uint16_t service_id) {
  const group_table groups = favourite_table();
  constexpr const char *operation = "remove_fav_virtual_channel_by_ts_info";
  const group_st *found = std::find_if(groups.begin(), groups.end(), [id](const group_st &group) {
    LOG_TRACE_AS(operation, 2, "id %d fav_id %d \n", group.id, id);
    return group.id == id;
  });
  if (found == groups.end()) {
    return -1;
  }
  const view group = entries_of(static_cast<int>(found - groups.begin()));
  const channel::tagged_identity wanted = {{net_index, network_id, ts_id, frequency, service_id, polarisation}, tag};
  const virtual_channel_st *entry =
      std::find_if(group.begin(), group.end(),
                   [&wanted](const virtual_channel_st &other) { return channel::same_entry(other, wanted); });
  if (entry != group.end()) {
    const virtual_channel_st removed = *entry;
    group.remove_at(static_cast<int>(entry - group.begin()));
    channel::close_gap(group, removed);
  }
  return 0;
}

int move_fav_channel(int16_t group, int16_t dest, int16_t count, const uint16_t *sources) {
  if (!channel::is_slot(group) || (sources == nullptr && count > 0)) {
    LOG_ERROR("group %d outside the favourites, or no sources\n", group);
    return -1;
  }
  const view moved = entries_of(group);
  const std::span positions(sources, static_cast<std::size_t>(std::max<int16_t>(count, 0)));
  if (!channel::is_position(moved, dest) || !channel::are_distinct_positions(moved, positions)) {
    LOG_ERROR("positions outside the group or given twice\n");
    return -1;
  }
  if (count == 1) {
    channel::move_entry(moved, dest, sources[0]);
    return 0;
  }
  std::array<virtual_channel_st, MAX_FAV_NUM> block;
  std::size_t lifted = 0;
  for (const uint16_t position : positions) {
    block[lifted++] = moved.entries[position];
    LOG_TRACE(2, "des_index %d src_index ------------------------------------------------ %d \n", dest, position);
    moved.entries[position] = {};
  }
  channel::insert_block(moved, dest, std::span(block).first(lifted));
  return 0;
}
}
