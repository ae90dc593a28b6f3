// Adding channels to a favourite group: what is copied, what counts as the same channel, and the limit.
#include "support/favourite_test.h"

namespace {

using namespace test_support;

class FavouriteEntries : public favourite_test {
 protected:
  // Three groups; the second has index 1 and id 5.
  void SetUp() override {
    favourite_test::SetUp();
    create_groups(3);
    list.favorite_group[1].id = 5;
  }
};

int add(int id, const virtual_channel_st &entry) {
  return add_fav_virtual_channel(static_cast<std::int16_t>(id), &entry);
}

std::string added(int index, int count, int major) {
  return "ChannelAPI add_fav_virtual_channel:# ADD FAV " + std::to_string(index) + " , vnumber " +
         std::to_string(count) + " , major " + std::to_string(major) + ", favorite id : " + std::to_string(count) +
         "\n";
}

// An entry of which no byte is zero.
virtual_channel_st full_entry(channel_st *service) {
  virtual_channel_st entry = {};
  entry.vch_tag = -5;
  entry.favorite_id = 77;
  entry.major_ch_num = -12345;
  entry.minor_ch_num = 32767;
  entry.net_index = 255;
  entry.reserved_7 = 0xA7;
  entry.frequency = 0xFEDCBA98;
  entry.polarisation = 200;
  entry.reserved_13 = 0xB3;
  entry.service_id = 0xABCD;
  entry.network_id = 0x1234;
  entry.ts_id = 0x5678;
  entry.rch = service;
  return entry;
}

TEST_F(FavouriteEntries, AreCopiesWithTheirPositionAsFavouriteId) {
  const virtual_channel_st entry = full_entry(file_service({}));
  add(5, unfiled_entry(1));

  EXPECT_EQ(add(5, entry), 0);

  virtual_channel_st expected = entry;
  expected.favorite_id = 1;
  EXPECT_TRUE(same_bytes(list.favorite_vch[1][1], expected));
  EXPECT_EQ(entry.favorite_id, 77);
  EXPECT_EQ(list.favorite_vnumber[1], 2);
  EXPECT_TRUE(slots_behind_count_are_zero(11, 40));
}

TEST_F(FavouriteEntries, GoToTheGroupWithTheId) {
  const std::string before = table();

  add(5, unfiled_entry(1));

  EXPECT_EQ(service_ids(11), std::vector<int>{1});
  init_vindex(11);
  EXPECT_EQ(table(), before);
}

TEST_F(FavouriteEntries, AreNumberedFromZero) {
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(add(0, unfiled_entry(100 + i)), 0);
  }

  EXPECT_EQ(favourite_ids(10), (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(majors(10), (std::vector<int>{100, 101, 102}));
}

TEST_F(FavouriteEntries, AreLoggedAtLevelTwo) {
  add(5, unfiled_entry(8));

  EXPECT_EQ(writes_at(2, [] { return add(5, unfiled_entry(-9)); }), lines{added(1, 1, -9)});
  EXPECT_EQ(writes_at(1, [] { return add(5, unfiled_entry(10)); }), lines{});
}

TEST_F(FavouriteEntries, AChannelThatIsThereIsNotAddedAgain) {
  EXPECT_EQ(add(0, unfiled_entry(1)), 0);
  EXPECT_EQ(add(0, unfiled_entry(2)), 0);
  virtual_channel_st again = unfiled_entry(1);
  again.favorite_id = 9;
  again.major_ch_num = 1000;
  again.minor_ch_num = 3;
  again.reserved_7 = 1;
  again.reserved_13 = 1;
  again.rch = file_service({});
  const std::string before = table();

  EXPECT_EQ(writes_at(5, [&again] { EXPECT_EQ(add(0, again), 0); }), lines{});

  EXPECT_EQ(table(), before);
}

TEST_F(FavouriteEntries, AnyDifferenceInTagOrIdentityIsAnotherChannel) {
  virtual_channel_st changed[7];
  std::fill(std::begin(changed), std::end(changed), unfiled_entry(1));
  changed[0].vch_tag = 1;
  changed[1].net_index = 2;
  changed[2].network_id = 2;
  changed[3].ts_id = 101;
  changed[4].frequency += 2500;
  changed[5].service_id = 2;
  changed[6].polarisation = 1;
  add(0, unfiled_entry(1));
  int count = 1;
  for (const virtual_channel_st &other : changed) {
    EXPECT_EQ(add(0, other), 0);
    EXPECT_EQ(list.favorite_vnumber[0], ++count);
  }
}

TEST_F(FavouriteEntries, FrequenciesLessThan2500ApartAreTheSame) {
  const struct {
    int distance;
    int count;
  } cases[] = {{-2500, 2}, {-2499, 1}, {-1, 1}, {0, 1}, {1, 1}, {2499, 1}, {2500, 2}};
  for (const auto &each : cases) {
    init_vindex(10);
    add(0, unfiled_entry(1));
    virtual_channel_st near = unfiled_entry(1);
    near.frequency += static_cast<std::uint32_t>(each.distance);

    EXPECT_EQ(add(0, near), 0);

    EXPECT_EQ(list.favorite_vnumber[0], each.count) << each.distance;
  }
}

TEST_F(FavouriteEntries, TheSameChannelMayBeInSeveralGroups) {
  EXPECT_EQ(add(0, unfiled_entry(1)), 0);
  EXPECT_EQ(add(5, unfiled_entry(1)), 0);

  EXPECT_EQ(list.favorite_vnumber[0], 1);
  EXPECT_EQ(list.favorite_vnumber[1], 1);
}

TEST_F(FavouriteEntries, ChannelsBehindTheCountAreNotThere) {
  fill_group(0, 2);
  list.favorite_vnumber[0] = 1;

  EXPECT_EQ(add(0, unfiled_entry(2)), 0);

  EXPECT_EQ(list.favorite_vnumber[0], 2);
}

TEST_F(FavouriteEntries, AreFortyAtMost) {
  fill_group(2, 39);
  EXPECT_EQ(add(2, unfiled_entry(40)), 0);
  EXPECT_EQ(list.favorite_vch[2][39].favorite_id, 39);
  const std::string before = table();
  const auto add_one_more = [] { return add(2, unfiled_entry(41)); };

  EXPECT_EQ(add_one_more(), -1);

  EXPECT_EQ(writes_at(0, add_one_more), lines{"ERROR: add_fav_virtual_channel:#  overflow MAX_FAV_NUM 40 \n"});
  EXPECT_EQ(writes_at(-1, add_one_more), lines{});
  EXPECT_EQ(table(), before);
}

TEST_F(FavouriteEntries, AFullGroupRefusesEvenAChannelThatItHas) {
  fill_group(2, 40);

  EXPECT_EQ(add(2, unfiled_entry(1)), -1);
}

TEST_F(FavouriteEntries, TheLastGroupCanBeFilledToItsEnd) {
  fill_everything();
  list.favorite_vnumber[19] = 39;
  list.user_vch[0].service_id = 4711;

  EXPECT_EQ(add(19, unfiled_entry(9999)), 0);
  EXPECT_EQ(add(19, unfiled_entry(9998)), -1);

  EXPECT_EQ(list.favorite_vch[19][39].service_id, 9999);
  EXPECT_EQ(list.favorite_vnumber[0], 40);
  EXPECT_EQ(list.user_vch[0].service_id, 4711);
}

TEST_F(FavouriteEntries, ACountOutsideTheGroupIsReadAsTheNearestInside) {
  fill_group(0, 40);
  for (const int count : {41, 32767}) {
    list.favorite_vnumber[0] = static_cast<std::int16_t>(count);
    EXPECT_EQ(add(0, unfiled_entry(99)), -1) << count;
    EXPECT_EQ(list.favorite_vnumber[0], count);
  }
  list.favorite_vnumber[0] = -1;
  EXPECT_EQ(add(0, unfiled_entry(99)), 0);
  EXPECT_EQ(service_ids(10), std::vector<int>{99});
}

TEST_F(FavouriteEntries, OfAGroupThatIsNotThereAreRefused) {
  list.favorite_group[3].id = 3;
  const std::string before = table();
  for (const int id : {-32768, -1, 1, 3, 20, 32767}) {
    const auto refused = [id] { return add(id, unfiled_entry(1)); };
    EXPECT_EQ(refused(), -1) << id;
    EXPECT_EQ(writes_at(0, refused), lines{"ERROR: add_fav_virtual_channel:# fav_id " + std::to_string(id) + " \n"});
    EXPECT_EQ(writes_at(-1, refused), lines{});
  }
  EXPECT_EQ(table(), before);
}

TEST_F(FavouriteEntries, OfAnEmptyTableAreRefused) {
  list.favorite_group_num = 0;

  EXPECT_EQ(add(0, unfiled_entry(1)), -1);
}

TEST_F(FavouriteEntries, OfTwoGroupsWithOneIdGoToTheFirst) {
  list.favorite_group[2].id = 5;

  add(5, unfiled_entry(1));

  EXPECT_EQ(list.favorite_vnumber[1], 1);
  EXPECT_EQ(list.favorite_vnumber[2], 0);
}

TEST_F(FavouriteEntries, MayComeFromTheGroupItself) {
  fill_group(0, 3);

  EXPECT_EQ(add_fav_virtual_channel(0, &list.favorite_vch[0][1]), 0);
  EXPECT_EQ(list.favorite_vnumber[0], 3);
}

TEST_F(FavouriteEntries, NoEntryIsRefused) {
  const std::string before = table();

  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(add_fav_virtual_channel(0, nullptr), -1); }),
            lines{"ERROR: add_fav_virtual_channel:# vch is null\n"});

  EXPECT_EQ(table(), before);
}

TEST_F(FavouriteEntries, OverwriteWhatAMoveLeftBehindTheLastEntry) {
  fill_group(0, 3);
  const std::uint16_t first = 0;
  move_fav_channel(0, 2, 1, &first);
  ASSERT_EQ(list.favorite_vch[0][3].service_id, 3);

  EXPECT_EQ(add(0, unfiled_entry(99)), 0);

  virtual_channel_st expected = unfiled_entry(99);
  expected.favorite_id = 3;
  EXPECT_TRUE(same_bytes(list.favorite_vch[0][3], expected));
}

}  // namespace
