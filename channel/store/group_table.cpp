// The four group tables of the channel list.
#include "channel/store/group_table.h"

#include <bitset>
#include <strings.h>

#include "channel/store/channel_list.h"

namespace channel {

group_st *group_table::find(std::int16_t id) const {
  group_st *found = std::find_if(begin(), end(), [id](const group_st &group) { return group.id == id; });
  return found != end() ? found : nullptr;
}

std::int16_t group_table::free_id() const {
  std::bitset<MAX_PROVIDER> used;
  for (const group_st &group : *this) {
    if (group.id >= 0 && group.id < capacity) {
      used[static_cast<std::size_t>(group.id)] = true;
    }
  }
  std::int16_t id = 0;
  while (used[static_cast<std::size_t>(id)]) {
    ++id;
  }
  return id;
}

int compare_group_name(const group_st &a, const group_st &b) { return strncasecmp(a.name, b.name, sizeof a.name); }

group_table provider_table() { return {channel_list.provider, &channel_list.provider_num, MAX_PROVIDER}; }

group_table genre_table() { return {channel_list.genre, &channel_list.genre_num, MAX_GENRE}; }

group_table country_table() { return {channel_list.country, &channel_list.country_num, MAX_COUNTRY}; }

group_table favourite_table() { return {channel_list.favorite_group, &channel_list.favorite_group_num, MAX_FAV, true}; }

group_table table_of_kind(int kind) {
  switch (kind) {
    case GROUP_GENRE:
      return genre_table();
    case GROUP_PROVIDER:
      return provider_table();
    case GROUP_COUNTRY:
      return country_table();
    default:
      return {};
  }
}

}  // namespace channel
