// What the tests of removals by a network index share.
#pragma once

#include <vector>

#include "support/removal_test.h"

namespace test_support {

// The network indexes of a view's entries.
inline std::vector<int> net_indexes(std::int8_t view) {
  std::vector<int> found;
  for (int i = 0; i < count_of(view); ++i) {
    found.push_back(get_virtual_channel_st(view)[i].net_index);
  }
  return found;
}

// Network indexes before and after a removal of the index 2.
struct removal_of_index {
  std::vector<int> before;
  std::vector<int> after;
};

inline std::vector<removal_of_index> removals_of_index_2() {
  return {{{2}, {}},
          {{2, 2, 2}, {}},
          {{2, 2, 1}, {1}},
          {{1, 2, 2}, {1}},
          {{2, 0, 2, 2, 255, 2}, {0, 255}},
          {{0, 1, 255}, {0, 1, 255}},
          {{}, {}}};
}

}  // namespace test_support
