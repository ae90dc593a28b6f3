// A favourite group in use, with a TV view behind it that follows its moves.
#pragma once

#include <string>
#include <vector>

#include "support/moving_test.h"

namespace test_support {

class mirrored_test : public moving_test {
 protected:
  // Numbers above 1000 are the TV view's own copies.
  void fill_group_and_tv(const std::vector<int> &group, const std::vector<int> &tv) {
    fill(10, group);
    fill(VIEW_TV, tv, 1000);
    show(10, GROUP_FAV);
  }
};

// What a block move says of each entry at level 2: its positions in the current view, and those in the service-type
// view.
inline std::string moved_from(int destination, int source) {
  return "ChannelAPI move_channel:# des_index " + std::to_string(destination) +
         " src_index ------------------------------------------------ " + std::to_string(source) + " \n";
}

}  // namespace test_support
