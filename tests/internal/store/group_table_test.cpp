// A group table as one small value: its bounds, its search, and which table belongs to which kind.
#include "channel/store/group_table.h"

#include <channel/channel.h>
#include <gtest/gtest.h>

#include "support/store_builder.h"

namespace {

using namespace test_support;
using channel::group_table;

class GroupTableValues : public store_test {
 protected:
  // A table of three groups, with the ids 10, 20 and 30, and one behind it, 40, that no search may reach.
  void SetUp() override {
    store_test::SetUp();
    for (std::int16_t i = 0; i < 4; ++i) {
      groups_[i].id = static_cast<std::int16_t>(10 * (i + 1));
    }
  }

  group_st groups_[4] = {};
  std::int16_t count_ = 3;
  const group_table small_ = {groups_, &count_, 3};
};

TEST_F(GroupTableValues, ACountIsReadAsTheNearestOneInsideTheArray) {
  const struct {
    int count;
    int size;
  } cases[] = {{-32768, 0}, {-1, 0}, {0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 3}, {32767, 3}};
  for (const auto &each : cases) {
    count_ = static_cast<std::int16_t>(each.count);

    EXPECT_EQ(small_.size(), each.size) << each.count;
    EXPECT_EQ(std::distance(small_.begin(), small_.end()), each.size) << each.count;
    EXPECT_EQ(count_, each.count);
  }
}

TEST_F(GroupTableValues, TheArrayIsTheWholeCapacity) {
  EXPECT_EQ(small_.array().size(), 3U);
  EXPECT_EQ(small_.array().data(), groups_);
}

TEST_F(GroupTableValues, GroupsAreFoundAsFarAsTheCountAndTheArrayReach) {
  EXPECT_EQ(small_.find(30), &groups_[2]);
  count_ = 2;
  EXPECT_EQ(small_.find(20), &groups_[1]);
  EXPECT_EQ(small_.find(30), nullptr);
  count_ = 4;
  EXPECT_EQ(small_.find(30), &groups_[2]);
  EXPECT_EQ(small_.find(40), nullptr);
  count_ = -1;
  EXPECT_EQ(small_.find(10), nullptr);
}

TEST_F(GroupTableValues, TheFirstOfTwoGroupsWithOneIdIsFound) {
  groups_[2].id = 20;

  EXPECT_EQ(small_.find(20), &groups_[1]);
}

TEST_F(GroupTableValues, NoTableIsFalse) {
  EXPECT_FALSE(group_table{});
  EXPECT_TRUE(small_);
}

TEST_F(GroupTableValues, TheFourTablesHaveTheirLimits) {
  const struct {
    group_table table;
    group_st *groups;
    std::int16_t *count;
    int capacity;
  } cases[] = {{channel::provider_table(), list.provider, &list.provider_num, 500},
               {channel::genre_table(), list.genre, &list.genre_num, 50},
               {channel::country_table(), list.country, &list.country_num, 200},
               {channel::favourite_table(), list.favorite_group, &list.favorite_group_num, 20}};
  for (const auto &each : cases) {
    EXPECT_EQ(each.table.groups, each.groups);
    EXPECT_EQ(each.table.count, each.count);
    EXPECT_EQ(each.table.capacity, each.capacity);
  }
}

TEST_F(GroupTableValues, ThreeKindsHaveATable) {
  EXPECT_EQ(channel::table_of_kind(GROUP_GENRE).groups, list.genre);
  EXPECT_EQ(channel::table_of_kind(GROUP_PROVIDER).groups, list.provider);
  EXPECT_EQ(channel::table_of_kind(GROUP_COUNTRY).groups, list.country);
  for (const int kind : {-128, -1, 0, 1, 5, 6, 7, 127}) {
    EXPECT_FALSE(channel::table_of_kind(kind)) << kind;
  }
}

}  // namespace
