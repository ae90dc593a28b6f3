// Favourite groups as a host makes them, and their table read directly, so that no test rests on the functions under
// test alone.
#pragma once

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <span>
#include <string>
#include <vector>

#include "support/groups.h"
#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace test_support {

inline int create(const std::string &name) { return add_fav_group_info(named_group(name)); }

// The whole field of a group's name.
inline std::string name_field(const group_st &group) { return {group.name, sizeof group.name}; }

inline std::string padded_name(std::string name) {
  name.resize(sizeof group_st::name, '\0');
  return name;
}

template <class Record>
bool is_zero(const Record &record) {
  static const Record zero = {};
  return std::memcmp(&record, &zero, sizeof zero) == 0;
}

template <class Record>
bool same_bytes(const Record &a, const Record &b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

class favourite_test : public store_test {
 protected:
  // The groups "Group 0", "Group 1" and so on; their ids are their indexes.
  static void create_groups(int n) {
    for (int i = 0; i < n; ++i) {
      EXPECT_EQ(create("Group " + std::to_string(i)), i);
    }
  }
  // A group at an index, with the unfiled services 1..n.
  void fill_group(int index, int n) {
    fill_unfiled(view_of(index), n);
    for (int i = 0; i < n; ++i) {
      list.favorite_vch[index][i].favorite_id = static_cast<std::uint8_t>(i);
    }
  }
  static std::int8_t view_of(int index) { return static_cast<std::int8_t>(VIEW_FAVOURITE + index); }

  std::vector<int> group_ids() {
    std::vector<int> ids;
    for (int i = 0; i < list.favorite_group_num; ++i) {
      ids.push_back(list.favorite_group[i].id);
    }
    return ids;
  }
  std::vector<std::string> group_names() {
    std::vector<std::string> names;
    for (int i = 0; i < list.favorite_group_num; ++i) {
      names.emplace_back(list.favorite_group[i].name);
    }
    return names;
  }
  // True when all three parts of a slot are zero.
  bool is_empty_slot(int index) {
    const std::span entries(list.favorite_vch[index]);
    return is_zero(list.favorite_group[index]) && list.favorite_vnumber[index] == 0 &&
           std::all_of(entries.begin(), entries.end(), is_zero<virtual_channel_st>);
  }
  bool slots_behind_groups_are_empty() {
    for (int index = list.favorite_group_num; index < MAX_FAV; ++index) {
      if (!is_empty_slot(index)) {
        return false;
      }
    }
    return true;
  }
  // The whole table, for operations that must leave it as it is.
  [[nodiscard]] std::string table() {
    const auto bytes_of = [](const auto &part) {
      return std::string(reinterpret_cast<const char *>(&part), sizeof part);
    };
    return bytes_of(list.favorite_group) + bytes_of(list.favorite_group_num) + bytes_of(list.favorite_vch) +
           bytes_of(list.favorite_vnumber);
  }
};

}  // namespace test_support
