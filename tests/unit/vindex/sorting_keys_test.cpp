// The keys of the sort types, except the name.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <array>
#include <utility>
#include <vector>

#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

class SortingKeys : public store_test {
 protected:
  using edit = void (*)(virtual_channel_st &, int);

  // Sorts a view of one entry for each key, and gives the keys' positions in the new order.
  static std::vector<int> order_of(std::int8_t sort_type, const std::vector<int> &keys, edit set_key) {
    fill_unfiled(VIEW_ALL, static_cast<int>(keys.size()));
    for (std::size_t i = 0; i < keys.size(); ++i) {
      get_channel_list()->vch[i].minor_ch_num = static_cast<std::int16_t>(i);
      set_key(get_channel_list()->vch[i], keys[i]);
    }
    EXPECT_EQ(sort_vch_type(sort_type, VIEW_ALL), 0);
    std::vector<int> order;
    for (std::size_t i = 0; i < keys.size(); ++i) {
      order.push_back(get_channel_list()->vch[i].minor_ch_num);
    }
    return order;
  }
};

TEST_F(SortingKeys, NumbersSortByMajorThenMinor) {
  fill_unfiled(VIEW_TV, 3);
  const std::vector<std::pair<int, int>> numbers = {{3, 0}, {1, 2}, {1, 1}};
  for (std::size_t i = 0; i < 3; ++i) {
    list.tv_vch[i].major_ch_num = static_cast<std::int16_t>(numbers[i].first);
    list.tv_vch[i].minor_ch_num = static_cast<std::int16_t>(numbers[i].second);
  }

  EXPECT_EQ(sort_vch_type(6, 1), 0);

  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{3, 2, 1}));
  EXPECT_EQ(majors(VIEW_TV), (std::vector<int>{1, 1, 3}));
}

TEST_F(SortingKeys, NumbersAreSigned) {
  EXPECT_EQ(order_of(SORT_NUMBER, {32767, 0, -32768, -1},
                     [](virtual_channel_st &entry, int key) { entry.major_ch_num = static_cast<std::int16_t>(key); }),
            (std::vector<int>{2, 3, 1, 0}));

  fill_unfiled(VIEW_ALL, 4);
  for (int i = 0; i < 4; ++i) {
    list.vch[i].major_ch_num = 1;
    list.vch[i].minor_ch_num = std::array<std::int16_t, 4>{32767, 0, -32768, -1}[static_cast<std::size_t>(i)];
  }
  sort_vch_type(SORT_NUMBER, VIEW_ALL);
  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{3, 4, 2, 1}));
}

TEST_F(SortingKeys, ServiceIdsAreUnsigned) {
  EXPECT_EQ(order_of(SORT_SERVICE_ID, {0xFFFF, 0x8000, 0, 0x7FFF, 1},
                     [](virtual_channel_st &entry, int key) { entry.service_id = static_cast<std::uint16_t>(key); }),
            (std::vector<int>{2, 4, 3, 1, 0}));
}

TEST_F(SortingKeys, TranspondersSortByFrequencyThenServiceId) {
  EXPECT_EQ(order_of(SORT_TRANSPONDER, {12, 11, 12, 10},
                     [](virtual_channel_st &entry, int key) {
                       entry.frequency = static_cast<std::uint32_t>(key) * 1'000'000;
                       entry.service_id = static_cast<std::uint16_t>(0xFFFF - entry.minor_ch_num);
                     }),
            (std::vector<int>{3, 1, 2, 0}));
}

TEST_F(SortingKeys, FrequenciesAreNotTheSameWithinATolerance) {
  EXPECT_EQ(order_of(SORT_TRANSPONDER, {2, 1, 0},
                     [](virtual_channel_st &entry, int key) {
                       entry.frequency = 11'000'000 + static_cast<std::uint32_t>(key);
                       entry.service_id = static_cast<std::uint16_t>(10 - key);
                     }),
            (std::vector<int>{2, 1, 0}));
}

TEST_F(SortingKeys, FrequenciesCompareByTheirThirtyTwoBitDifference) {
  const edit set_frequency = [](virtual_channel_st &entry, int key) {
    entry.frequency = static_cast<std::uint32_t>(key);
  };
  // 0xFFFFFFFF is one below 0; 0xF0000000 is below 1 because the difference is positive as a 32-bit value.
  EXPECT_EQ(order_of(SORT_TRANSPONDER, {0, -1}, set_frequency), (std::vector<int>{1, 0}));
  EXPECT_EQ(order_of(SORT_TRANSPONDER, {1, static_cast<int>(0xF000'0000U)}, set_frequency), (std::vector<int>{1, 0}));
  EXPECT_EQ(order_of(SORT_TRANSPONDER, {0x7FFF'FFFF, 0}, set_frequency), (std::vector<int>{1, 0}));
  EXPECT_EQ(order_of(SORT_TRANSPONDER, {static_cast<int>(0x8000'0001U), static_cast<int>(0x7FFF'FFFF)}, set_frequency),
            (std::vector<int>{1, 0}));
}

TEST_F(SortingKeys, FavouritesSortByFavouriteIdThenServiceId) {
  EXPECT_EQ(order_of(SORT_FAV_DEFAULT, {255, 3, 128, 3, 0},
                     [](virtual_channel_st &entry, int key) {
                       entry.favorite_id = static_cast<std::uint8_t>(key);
                       entry.service_id = static_cast<std::uint16_t>(0xFFFF - entry.minor_ch_num);
                     }),
            (std::vector<int>{4, 3, 1, 2, 0}));
}

TEST_F(SortingKeys, TheUserOrderIsTheKeyOfTheRealChannel) {
  const std::vector<channel_st *> services = fill_view(VIEW_USER, 5);
  const std::array<int, 5> keys = {32767, 0, -32768, 1, -1};
  for (std::size_t i = 0; i < 5; ++i) {
    services[i]->user_order_key = static_cast<std::int16_t>(keys[i]);
  }

  EXPECT_EQ(sort_vch_type(SORT_USER_TYPE, VIEW_USER), 0);

  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{3, 5, 2, 4, 1}));
}

TEST_F(SortingKeys, TheUserOrderIsReadFromTheEntrysOwnChannel) {
  const std::vector<channel_st *> services = fill_view(VIEW_USER, 2);
  services[0]->user_order_key = 1;
  services[1]->user_order_key = 2;
  std::swap(list.user_vch[0].rch, list.user_vch[1].rch);

  sort_vch_type(SORT_USER_TYPE, VIEW_USER);

  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{2, 1}));
}

}  // namespace
