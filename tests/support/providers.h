// Providers as a host registers them, and what the provider table holds.
#pragma once

#include <channel/channel.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "groups.h"

namespace test_support {

inline int add_provider(const std::string &name) { return add_provider_info(named_group(name)); }

inline void add_providers(const std::vector<std::string> &names) {
  for (const std::string &name : names) {
    add_provider(name);
  }
}

// Writes a provider behind the last one, as a file brings it: with an id of its own and in any order.
inline void put_provider(const std::string &name, int id) {
  channel_list_st &list = *get_channel_list();
  list.provider[list.provider_num++] = named_group(name, id);
}

// "Provider 0000", "Provider 0001", ...: in the order of their names, the ids 0, 1, ...
inline void fill_providers(int count) {
  for (int i = 0; i < count; ++i) {
    const std::string number = std::to_string(10'000 + i);
    put_provider("Provider " + number.substr(1), i);
  }
}

inline std::vector<std::string> provider_names() {
  std::vector<std::string> names;
  for (int i = 0; i < get_provider_number(); ++i) {
    const char *name = get_channel_list()->provider[i].name;
    names.emplace_back(name, strnlen(name, sizeof(group_st::name)));
  }
  return names;
}

inline std::vector<int> provider_ids() {
  std::vector<int> ids;
  for (int i = 0; i < get_provider_number(); ++i) {
    ids.push_back(get_channel_list()->provider[i].id);
  }
  return ids;
}

inline std::string image_of(const group_st &group) { return {reinterpret_cast<const char *>(&group), sizeof group}; }

// The whole table and its count.
inline std::string provider_table_image() {
  const channel_list_st &list = *get_channel_list();
  return std::string(reinterpret_cast<const char *>(list.provider), sizeof list.provider) +
         std::to_string(list.provider_num);
}

inline bool places_behind_providers_are_zero() {
  const channel_list_st &list = *get_channel_list();
  return std::all_of(list.provider + list.provider_num, list.provider + MAX_PROVIDER,
                     [](const group_st &group) { return image_of(group) == std::string(sizeof group, '\0'); });
}

}  // namespace test_support
