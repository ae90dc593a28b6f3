// Favourite groups to remove channels from.
#pragma once

#include "support/favourite_test.h"

namespace test_support {

// Three groups; the second has index 1, id 5 and the channels of a test.
class favourite_removal_test : public favourite_test {
 protected:
  void SetUp() override {
    favourite_test::SetUp();
    create_groups(3);
    list.favorite_group[1].id = 5;
    fill_group(0, 2);
    fill_group(2, 2);
  }
  // Positions and favourite ids follow the numbers' order.
  void give_numbers(const std::vector<int> &numbers) {
    fill_group(1, static_cast<int>(numbers.size()));
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      list.favorite_vch[1][i].major_ch_num = static_cast<std::int16_t>(numbers[i]);
    }
  }
};

}  // namespace test_support
