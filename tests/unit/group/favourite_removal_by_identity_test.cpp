// Removing channels from a favourite group by identity, which closes the gaps in numbers and positions.
#include "favourite_removal_test.h"

namespace {

using namespace test_support;

class FavouriteRemovalByIdentity : public favourite_removal_test {};

// What a removal names; the defaults are those of the unfiled service 1 in the second group.
struct named_channel {
  int tag = 0;
  int id = 5;
  int net_index = 1;
  std::uint32_t frequency = 11'000'000;
  int polarisation = 0;
  int network_id = 1;
  int ts_id = 100;
  int service_id = 1;
};

int remove(const named_channel &named) {
  return remove_fav_virtual_channel_by_ts_info(
      static_cast<std::int8_t>(named.tag), static_cast<std::int16_t>(named.id),
      static_cast<std::uint8_t>(named.net_index), named.frequency, static_cast<std::uint8_t>(named.polarisation),
      static_cast<std::uint16_t>(named.network_id), static_cast<std::uint16_t>(named.ts_id),
      static_cast<std::uint16_t>(named.service_id));
}

std::string visited(int id, int wanted) {
  return "ChannelAPI remove_fav_virtual_channel_by_ts_info:# id " + std::to_string(id) + " fav_id " +
         std::to_string(wanted) + " \n";
}

// Compatibility: numbers and favourite ids close their gap, unlike after a removal by index.
TEST_F(FavouriteRemovalByIdentity, ClosesTheGapInNumbersAndFavouriteIds) {
  give_numbers({10, 20, 30});

  EXPECT_EQ(remove({.service_id = 2}), 0);

  EXPECT_EQ(service_ids(11), (std::vector<int>{1, 3}));
  EXPECT_EQ(majors(11), (std::vector<int>{10, 29}));
  EXPECT_EQ(favourite_ids(11), (std::vector<int>{0, 1}));
  EXPECT_TRUE(slots_behind_count_are_zero(11, 40));
}

TEST_F(FavouriteRemovalByIdentity, LowersWhatIsHigherWhereverItStands) {
  give_numbers({50, 32767, 20, 20, 19, -32768});
  const int ids[] = {9, 255, 4, 4, 3, 0};
  for (int i = 0; i < 6; ++i) {
    list.favorite_vch[1][i].favorite_id = static_cast<std::uint8_t>(ids[i]);
    list.favorite_vch[1][i].minor_ch_num = 100;
  }

  EXPECT_EQ(remove({.service_id = 3}), 0);

  EXPECT_EQ(service_ids(11), (std::vector<int>{1, 2, 4, 5, 6}));
  EXPECT_EQ(majors(11), (std::vector<int>{49, 32766, 20, 19, -32768}));
  EXPECT_EQ(favourite_ids(11), (std::vector<int>{8, 254, 4, 3, 0}));
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(list.favorite_vch[1][i].minor_ch_num, 100);
  }
}

TEST_F(FavouriteRemovalByIdentity, ClosesTheTwoGapsApart) {
  give_numbers({30, 20, 10});

  EXPECT_EQ(remove({.service_id = 2}), 0);

  EXPECT_EQ(majors(11), (std::vector<int>{29, 10}));
  EXPECT_EQ(favourite_ids(11), (std::vector<int>{0, 1}));
}

TEST_F(FavouriteRemovalByIdentity, LeavesTheOtherGroups) {
  give_numbers({1, 2});
  const virtual_channel_st first = list.favorite_vch[0][1];
  const virtual_channel_st third = list.favorite_vch[2][1];

  EXPECT_EQ(remove({}), 0);

  EXPECT_TRUE(same_bytes(list.favorite_vch[0][1], first));
  EXPECT_TRUE(same_bytes(list.favorite_vch[2][1], third));
  EXPECT_EQ(service_ids(11), std::vector<int>{2});
}

TEST_F(FavouriteRemovalByIdentity, TakesTheFirstMatchAlone) {
  give_numbers({7, 8, 9});
  list.favorite_vch[1][2].service_id = 1;

  EXPECT_EQ(remove({}), 0);

  EXPECT_EQ(service_ids(11), (std::vector<int>{2, 1}));
  EXPECT_EQ(majors(11), (std::vector<int>{7, 8}));
}

TEST_F(FavouriteRemovalByIdentity, ComparesTheTagAndTheWholeIdentity) {
  give_numbers({1});
  list.favorite_vch[1][0].vch_tag = -3;
  const std::string before = table();
  const named_channel others[] = {{.tag = 3},
                                  {.tag = -3, .net_index = 2},
                                  {.tag = -3, .polarisation = 1},
                                  {.tag = -3, .network_id = 2},
                                  {.tag = -3, .ts_id = 101},
                                  {.tag = -3, .service_id = 2}};
  for (const named_channel &other : others) {
    EXPECT_EQ(remove(other), 0);
    EXPECT_EQ(table(), before);
  }
  EXPECT_EQ(remove({.tag = -3}), 0);
  EXPECT_EQ(list.favorite_vnumber[1], 0);
}

TEST_F(FavouriteRemovalByIdentity, MatchesFrequenciesLessThan2500Away) {
  const struct {
    std::uint32_t stored;
    std::uint32_t named;
    int left;
  } cases[] = {{11'000'000, 11'002'499, 0},
               {11'000'000, 11'002'500, 1},
               {11'000'000, 10'997'501, 0},
               {11'000'000, 10'997'500, 1},
               {0xFFFFFFFF, 0, 1},
               {0, 0xFFFFFFFF, 1},
               {0, 2499, 0},
               {0, 2500, 1}};
  for (const auto &each : cases) {
    give_numbers({1});
    list.favorite_vch[1][0].frequency = each.stored;

    EXPECT_EQ(remove({.frequency = each.named}), 0);

    EXPECT_EQ(list.favorite_vnumber[1], each.left) << each.stored << ' ' << each.named;
  }
}

TEST_F(FavouriteRemovalByIdentity, FrequencyZeroIsNoWildcard) {
  give_numbers({1});

  EXPECT_EQ(remove({.frequency = 0}), 0);

  EXPECT_EQ(list.favorite_vnumber[1], 1);
}

TEST_F(FavouriteRemovalByIdentity, TakesTheOnlyAndTheLastOf40Entries) {
  give_numbers({1});
  EXPECT_EQ(remove({}), 0);
  EXPECT_EQ(list.favorite_vnumber[1], 0);
  EXPECT_TRUE(slots_behind_count_are_zero(11, 40));

  fill_group(1, 40);
  EXPECT_EQ(remove({.service_id = 40}), 0);
  EXPECT_EQ(list.favorite_vnumber[1], 39);
  EXPECT_TRUE(slots_behind_count_are_zero(11, 40));
  EXPECT_EQ(service_ids(12), (std::vector<int>{1, 2}));
}

TEST_F(FavouriteRemovalByIdentity, VisitsTheGroupsUpToItsOwn) {
  give_numbers({1, 2});

  EXPECT_EQ(writes_at(2, [] { return remove({}); }), (lines{visited(0, 5), visited(5, 5)}));
  EXPECT_EQ(writes_at(1, [] { return remove({.service_id = 2}); }), lines{});
}

TEST_F(FavouriteRemovalByIdentity, FromAGroupThatIsNotThereVisitsAllAndFails) {
  const std::string before = table();

  EXPECT_EQ(writes_at(2, [] { EXPECT_EQ(remove({.id = 3}), -1); }),
            (lines{visited(0, 3), visited(5, 3), visited(2, 3)}));
  EXPECT_EQ(writes_at(1, [] { return remove({.id = -32768}); }), lines{});

  EXPECT_EQ(table(), before);
}

TEST_F(FavouriteRemovalByIdentity, FromAnEmptyTableFailsSilently) {
  list.favorite_group_num = 0;

  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(remove({.id = 0}), -1); }), lines{});
}

TEST_F(FavouriteRemovalByIdentity, OfWhatIsNotThereIsASuccess) {
  EXPECT_EQ(writes_at(2, [] { EXPECT_EQ(remove({}), 0); }), (lines{visited(0, 5), visited(5, 5)}));
  give_numbers({10, 20});
  const std::string before = table();

  EXPECT_EQ(remove({.service_id = 3}), 0);

  EXPECT_EQ(table(), before);
}

}  // namespace
