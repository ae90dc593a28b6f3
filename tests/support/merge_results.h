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
