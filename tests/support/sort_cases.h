// The sort types, what the view sort calls them, and what it traces.
#pragma once

#include <channel/channel.h>

#include <array>
#include <cstdint>
#include <string>

#include "support/view_cases.h"

namespace test_support {

inline constexpr std::array<std::int8_t, 6> sort_types = {SORT_CH_NAME,    SORT_TRANSPONDER, SORT_NUMBER,
                                                          SORT_SERVICE_ID, SORT_FAV_DEFAULT, SORT_USER_TYPE};
inline constexpr std::array<std::int8_t, 9> unknown_types = {-128, -1, 0, 1, 4, 5, 9, 12, 127};

inline const char *sort_name(int sort_type) {
  switch (sort_type) {
    case 2:
      return "SORT_CH_NAME\n";
    case 3:
      return "SORT_TRANSPONDER\n";
    case 6:
      return "SORT_NUMBER\n";
    case 8:
      return "SORT_SERVICE_ID\n";
    case 10:
      return "SORT_FAV_DEFAULT\n";
    default:
      return "SORT_USER_TYPE\n";
  }
}

// What the view sort traces for a number of entries.
inline lines sort_trace(int sort_type, int count) {
  return {sort_name(sort_type), "ChannelAPI qsort_virtual_channel:# vnumber " + std::to_string(count) + " \n",
          "ChannelAPI qsort_virtual_channel:# \n"};
}

inline lines operator+(lines left, const lines &right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

}  // namespace test_support
