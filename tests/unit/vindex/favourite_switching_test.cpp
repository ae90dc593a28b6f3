// Making a favourite group current: empty groups, and position keys that occur twice.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "switching_test.h"

namespace {

using namespace test_support;

class FavouriteSwitching : public switching_test {
 protected:
  void SetUp() override {
    switching_test::SetUp();
    for (int group = 0; group < MAX_FAV; ++group) {
      list.favorite_group[group].id = static_cast<std::int16_t>(500 + group);
    }
  }

  void give_favourite_ids(std::int8_t code, const std::vector<int> &ids) {
    fill_unfiled(code, static_cast<int>(ids.size()));
    for (std::size_t i = 0; i < ids.size(); ++i) {
      get_virtual_channel_st(code)[i].favorite_id = static_cast<std::uint8_t>(ids[i]);
    }
  }
};

const std::string resorting = "WARNING: change_vindex_type:# Need Fav_id Resorting.\n";

TEST_F(FavouriteSwitching, AFavouriteGroupIsRecordedAsTheGroupInUse) {
  for (const std::int8_t code : {std::int8_t{10}, std::int8_t{11}, std::int8_t{28}, std::int8_t{29}}) {
    fill_unfiled(code, 1);

    EXPECT_EQ(change_vindex_type(code), 0);

    EXPECT_EQ(list.use_group_list, 6);
    EXPECT_EQ(list.ch_type, code);
    EXPECT_EQ(list.sub_group_id, 500 + code - 10);
    EXPECT_EQ(list.net_index, 9);
    EXPECT_EQ(list.service_type, 8);
  }
}

TEST_F(FavouriteSwitching, AnEmptyFavouriteGroupBecomesCurrent) {
  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(change_vindex_type(12), -4); }),
            lines{"WARNING: change_vindex_type:# channel_list.favorite_vnumber[2] 0  \n"});
  EXPECT_EQ(writes_at(0, [] { return change_vindex_type(12); }), lines{});

  EXPECT_EQ(list.vch_type, 12);
  EXPECT_EQ(list.cur_vch, list.favorite_vch[2]);
  EXPECT_EQ(list.cur_vnumber, &list.favorite_vnumber[2]);
  EXPECT_EQ(list.use_group_list, 6);
  EXPECT_EQ(list.sub_group_id, 502);
  EXPECT_EQ(list.ch_type, 12);
}

TEST_F(FavouriteSwitching, AFavouriteCountBelowZeroIsAnEmptyGroup) {
  list.favorite_vnumber[19] = -3;

  EXPECT_EQ(writes_at(1, [] { EXPECT_EQ(change_vindex_type(29), -4); }),
            lines{"WARNING: change_vindex_type:# channel_list.favorite_vnumber[19] -3  \n"});
}

TEST_F(FavouriteSwitching, DoubledFavouriteIdsAreNumberedAnew) {
  give_favourite_ids(10, {3, 3, 7});

  EXPECT_EQ(writes_at(1, [] { EXPECT_EQ(change_vindex_type(10), 0); }), (lines{visit(3, 1), visit(3, 2), resorting}));

  EXPECT_EQ(favourite_ids(10), (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(service_ids(10), (std::vector<int>{1, 2, 3}));
}

TEST_F(FavouriteSwitching, NumberingAnewIsNoError) {
  give_favourite_ids(10, {3, 3, 7});

  EXPECT_EQ(writes_at(0, [] { return change_vindex_type(10); }), lines{});

  EXPECT_EQ(favourite_ids(10), (std::vector<int>{0, 1, 2}));
}

TEST_F(FavouriteSwitching, DistinctFavouriteIdsAreLeftAlone) {
  give_favourite_ids(10, {5, 9, 2});

  EXPECT_EQ(writes_at(1, [] { EXPECT_EQ(change_vindex_type(10), 0); }), (lines{visit(5, 1), visit(9, 2), visit(2, 3)}));

  EXPECT_EQ(favourite_ids(10), (std::vector<int>{5, 9, 2}));
}

TEST_F(FavouriteSwitching, FavouriteIdsAtTheirLimits) {
  for (const auto &[given, expected] :
       std::vector<std::pair<std::vector<int>, std::vector<int>>>{{{0}, {0}},
                                                                  {{255}, {255}},
                                                                  {{0, 255}, {0, 255}},
                                                                  {{0, 0}, {0, 1}},
                                                                  {{255, 255}, {0, 1}},
                                                                  {{1, 2, 1}, {0, 1, 2}}}) {
    give_favourite_ids(15, given);

    EXPECT_EQ(change_vindex_type(15), 0);

    EXPECT_EQ(favourite_ids(15), expected);
  }
}

TEST_F(FavouriteSwitching, AFullGroupIsNumberedToItsLastEntry) {
  std::vector<int> ids(40, 0);
  std::vector<int> positions(40, 0);
  for (int i = 0; i < 40; ++i) {
    ids[static_cast<std::size_t>(i)] = 200 - i;
    positions[static_cast<std::size_t>(i)] = i;
  }
  give_favourite_ids(29, ids);
  change_vindex_type(29);
  EXPECT_EQ(favourite_ids(29), ids);

  ids[39] = ids[0];
  give_favourite_ids(29, ids);
  change_vindex_type(29);
  EXPECT_EQ(favourite_ids(29), positions);
}

TEST_F(FavouriteSwitching, NumberingAnewLeavesOtherGroupsAndSlotsBehindTheCount) {
  give_favourite_ids(10, {3, 3, 7});
  give_favourite_ids(11, {4, 4});
  list.favorite_vch[0][3].favorite_id = 99;

  change_vindex_type(10);

  EXPECT_EQ(favourite_ids(11), (std::vector<int>{4, 4}));
  EXPECT_EQ(list.favorite_vch[0][3].favorite_id, 99);
}

TEST_F(FavouriteSwitching, ACountAboveTheArrayIsReadAsAFullOne) {
  give_favourite_ids(10, std::vector<int>(40, 6));
  give_favourite_ids(11, {6, 6});
  list.favorite_vnumber[0] = 32767;

  EXPECT_EQ(change_vindex_type(10), 0);

  EXPECT_EQ(list.favorite_vch[0][39].favorite_id, 39);
  EXPECT_EQ(favourite_ids(11), (std::vector<int>{6, 6}));
  EXPECT_EQ(get_channel_list_number(), 40);
}

}  // namespace
