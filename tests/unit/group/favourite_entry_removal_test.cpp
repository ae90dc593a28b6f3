// Removing channels from a favourite group by index, which leaves numbers and positions as they are.
#include "favourite_removal_test.h"

namespace {

using namespace test_support;

class FavouriteRemovalByIndex : public favourite_removal_test {};

int remove_at(int id, int index) {
  return remove_fav_virtual_channel(static_cast<std::int16_t>(id), static_cast<std::int16_t>(index));
}

// Compatibility: numbers and favourite ids of the others stay, unlike after a removal by identity.
TEST_F(FavouriteRemovalByIndex, LeavesNumbersAndFavouriteIds) {
  give_numbers({10, 20, 30});

  EXPECT_EQ(remove_at(5, 1), 0);

  EXPECT_EQ(service_ids(11), (std::vector<int>{1, 3}));
  EXPECT_EQ(majors(11), (std::vector<int>{10, 30}));
  EXPECT_EQ(favourite_ids(11), (std::vector<int>{0, 2}));
  EXPECT_TRUE(slots_behind_count_are_zero(11, 40));
}

TEST_F(FavouriteRemovalByIndex, TakesAnyEntryOfAnyNumber) {
  for (const int count : {1, 2, 39, 40}) {
    for (const int index : {0, 1, count / 2, count - 1}) {
      if (index >= count) {
        continue;
      }
      fill_group(1, count);
      std::vector<int> expected = service_ids(11);
      expected.erase(expected.begin() + index);

      EXPECT_EQ(remove_at(5, index), 0) << count << ' ' << index;

      EXPECT_EQ(service_ids(11), expected) << count << ' ' << index;
      EXPECT_TRUE(slots_behind_count_are_zero(11, 40)) << count << ' ' << index;
    }
  }
  EXPECT_EQ(service_ids(10), (std::vector<int>{1, 2}));
  EXPECT_EQ(service_ids(12), (std::vector<int>{1, 2}));
}

TEST_F(FavouriteRemovalByIndex, IsLoggedAtLevelTwo) {
  give_numbers({10, -20, 30, 40});

  EXPECT_EQ(writes_at(2, [] { return remove_at(5, 1); }),
            lines{"ChannelAPI remove_fav_virtual_channel:# DEL FAV 1 ,4/1 , major -20 , 2 \n"});
  EXPECT_EQ(writes_at(2, [] { return remove_at(5, 2); }),
            lines{"ChannelAPI remove_fav_virtual_channel:# DEL FAV 1 ,3/2 , major 40 , 0 \n"});
  EXPECT_EQ(writes_at(1, [] { return remove_at(5, 0); }), lines{});
}

TEST_F(FavouriteRemovalByIndex, OutsideTheEntriesIsRefused) {
  for (const int count : {0, 1, 39, 40}) {
    fill_group(1, count);
    const std::string before = table();
    for (const int index : {-32768, -1, count, 41, 32767}) {
      const auto refused = [index] { return remove_at(5, index); };
      EXPECT_EQ(refused(), -1) << count << ' ' << index;
      EXPECT_EQ(writes_at(0, refused), lines{"ERROR: remove_fav_virtual_channel:# vnumber " + std::to_string(count) +
                                             " ,id 5, index " + std::to_string(index) + "  \n"});
      EXPECT_EQ(writes_at(-1, refused), lines{});
    }
    EXPECT_EQ(table(), before) << count;
  }
}

TEST_F(FavouriteRemovalByIndex, BehindTheArrayIsRefusedWithTheCountAsItIsStored) {
  fill_group(1, 40);
  list.favorite_vnumber[1] = 41;
  const std::string before = table();

  for (const int index : {40, 41}) {
    EXPECT_EQ(writes_at(0, [index] { EXPECT_EQ(remove_at(5, index), -1); }),
              lines{"ERROR: remove_fav_virtual_channel:# vnumber 41 ,id 5, index " + std::to_string(index) + "  \n"});
  }

  EXPECT_EQ(table(), before);
}

TEST_F(FavouriteRemovalByIndex, FromAGroupThatCountsLessThanNothingIsRefusedWithThatCount) {
  fill_group(1, 1);
  list.favorite_vnumber[1] = -1;

  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(remove_at(5, 0), -1); }),
            lines{"ERROR: remove_fav_virtual_channel:# vnumber -1 ,id 5, index 0  \n"});

  EXPECT_EQ(list.favorite_vch[1][0].service_id, 1);
}

TEST_F(FavouriteRemovalByIndex, FromAGroupThatIsNotThereFailsSilently) {
  const std::string before = table();
  for (const int id : {-32768, -1, 1, 3, 20, 32767}) {
    EXPECT_EQ(writes_at(5, [id] { EXPECT_EQ(remove_at(id, 0), -1); }), lines{}) << id;
  }
  EXPECT_EQ(table(), before);
}

}  // namespace
