// What a merge leaves behind: entries in views, and lines at two levels.
#pragma once

#include <base/verbosity.h>
#include <channel/channel.h>

#include <string>
#include <vector>

#include "log_capture.h"

namespace test_support {

using lines = std::vector<std::string>;

// How many entries each of the views ALL, TV, radio, USER, work and promotion has.
inline std::vector<int> view_sizes() {
  std::vector<int> sizes;
  for (std::int8_t view = VIEW_ALL; view <= VIEW_PROMOTION; ++view) {
    sizes.push_back(*get_virtual_channel_vnumber(view));
  }
  return sizes;
}

// What the reader of a new list says at level 2 when it has read one whose header is that of an empty list.
inline lines new_list_summary() {
  const std::string hashes = "ChannelAPI new_load_channel:# ######################################################\n";
  return {hashes,
          " new channel list version : 10\n",
          "load \tservice_type : 1\n",
          "load \tuse_group_list : 'ALL'\n",
          "load \tbouquet : 65535\n",
          "load \tnet_index : -1\n",
          "load \toriginal channel number : 0\n",
          "load \ttv channel number : 0\n",
          "load \tradio channel number : 0\n",
          "load \tuser channel number : 0\n",
          "load \tvch_type : 'ALL CH'\n",
          "load \tpromotion channel number : 0\n",
          hashes};
}

// The lines of one action at a level, the scan module's level set as well.
template <class Action>
lines writes_at_levels(int level, int scan_level, Action &&action) {
  constexpr int scan_module = 1;
  const log_capture log(level);
  verbosity_map[scan_module] = scan_level;
  action();
  return log.writes();
}

}  // namespace test_support
