// Services with the ids of their groups, shown in views.
#pragma once

#include <channel/channel.h>

#include <initializer_list>
#include <string>

#include "store_builder.h"

namespace test_support {

// The views of the first two favourite groups.
constexpr std::int8_t first_favourites = VIEW_FAVOURITE;
constexpr std::int8_t second_favourites = VIEW_FAVOURITE + 1;

// Where a list of a group's services goes: the last argument of create_service_by_group_list_id.
constexpr std::uint8_t to_work_view = 0;
constexpr std::uint8_t make_current = 1;

// What it says of a list without services. id: four hexadecimal digits.
inline std::string nothing_found(const std::string &id, int source) {
  return "ERROR: create_service_by_group_list_id:# Can not find 'id " + id + "' 'service_type " +
         std::to_string(source) + " \n";
}

struct grouped {
  int service_id = 1;
  int genre = 0;
  int provider = 0;
  int country = 0;
  int net_index = 1;
  int flag = 0;
};

inline channel_st &file_grouped(const grouped &data) {
  service_data service;
  service.service_id = static_cast<std::uint16_t>(data.service_id);
  service.net_index = static_cast<std::uint8_t>(data.net_index);
  service.flag = static_cast<std::uint8_t>(data.flag);
  channel_st &filed = *file_service(service);
  filed.genre_id = static_cast<std::int16_t>(data.genre);
  filed.provider_id = static_cast<std::int16_t>(data.provider);
  filed.country_id = static_cast<std::int16_t>(data.country);
  return filed;
}

// Files a service and appends it to views; its number is its service id times ten.
inline channel_st &show(const grouped &data, std::initializer_list<std::int8_t> view_types) {
  channel_st &filed = file_grouped(data);
  for (const std::int8_t view_type : view_types) {
    append_entry(view_type, entry_of(filed, static_cast<std::int16_t>(10 * data.service_id)));
  }
  return filed;
}

// Appends an entry that has an identity but no real channel.
inline void show_without_channel(std::int8_t view_type, int service_id = 999) {
  virtual_channel_st entry = {};
  entry.net_index = 1;
  entry.network_id = 1;
  entry.ts_id = 100;
  entry.frequency = 11'000'000;
  entry.service_id = static_cast<std::uint16_t>(service_id);
  append_entry(view_type, entry);
}

// Makes a view hold `count` entries of one service: limits are tested with thousands of entries.
inline void repeat_entry(std::int8_t view_type, channel_st &service, int count) {
  virtual_channel_st *entries = get_virtual_channel_st(view_type);
  for (int i = 0; i < count; ++i) {
    entries[i] = entry_of(service, static_cast<std::int16_t>(i + 1));
  }
  *get_virtual_channel_vnumber(view_type) = static_cast<std::int16_t>(count);
}

}  // namespace test_support
