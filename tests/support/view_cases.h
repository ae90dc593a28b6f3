// The view codes that tests run through, known and unknown, and views of entries that have no real channel: limits are
// tested with thousands of entries, and few of those tests need the hierarchy.
#pragma once

#include <channel/channel.h>

#include <array>
#include <string>
#include <vector>

namespace test_support {

using lines = std::vector<std::string>;

struct view_case {
  std::int8_t code;
  int capacity;
};

// The 26 views: 0 to 5 and the 20 favourite groups.
inline std::vector<view_case> every_view() {
  std::vector<view_case> views = {{0, 5000}, {1, 4000}, {2, 1000}, {3, 5000}, {4, 5000}, {5, 10}};
  for (int code = 10; code <= 29; ++code) {
    views.push_back({static_cast<std::int8_t>(code), 40});
  }
  return views;
}

inline constexpr std::array<std::int8_t, 8> unknown_codes = {-128, -1, 6, 7, 8, 9, 30, 127};

// What a lookup says of a position outside the array of its view.
inline std::string outside(const std::string &function, int vindex) {
  return "ERROR: " + function + ":# vindex " + std::to_string(vindex) + " outside the view\n";
}

// An entry of a service that is not filed; nothing but the service id and the number tells it from the others.
inline virtual_channel_st unfiled_entry(int number) {
  virtual_channel_st entry = {};
  entry.major_ch_num = static_cast<std::int16_t>(number);
  entry.net_index = 1;
  entry.network_id = 1;
  entry.ts_id = 100;
  entry.frequency = 11'000'000;
  entry.service_id = static_cast<std::uint16_t>(number);
  return entry;
}

// Gives the fields that nothing else looks at values of their own: a copy shows then whether it is whole.
inline virtual_channel_st mark_whole(virtual_channel_st &entry) {
  entry.vch_tag = -7;
  entry.favorite_id = 200;
  entry.minor_ch_num = 4;
  entry.reserved_7 = 1;
  entry.reserved_13 = 2;
  return entry;
}

// Makes a view hold unfiled entries 1..n.
inline void fill_unfiled(std::int8_t code, int n) {
  init_vindex(code);
  for (int i = 0; i < n; ++i) {
    get_virtual_channel_st(code)[i] = unfiled_entry(i + 1);
  }
  *get_virtual_channel_vnumber(code) = static_cast<std::int16_t>(n);
}

inline std::vector<int> favourite_ids(std::int8_t code) {
  const virtual_channel_st *entries = get_virtual_channel_st(code);
  std::vector<int> ids;
  for (int i = 0; i < *get_virtual_channel_vnumber(code); ++i) {
    ids.push_back(entries[i].favorite_id);
  }
  return ids;
}

}  // namespace test_support
