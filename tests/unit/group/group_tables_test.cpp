// The group tables: how they are listed, and how a group is found in each by its id.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include "support/log_capture.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

// One group table of the list, whichever kind it is of.
struct table_of_list {
  const char *name;
  std::int8_t kind;
  group_st *groups;
  std::int16_t *count;
  std::int16_t capacity;
  // The 16 bits behind the table's count, at which a read past the table would find an id.
  std::uint16_t *behind;
};

table_of_list genres() {
  channel_list_st &list = *get_channel_list();
  return {"genre", GROUP_GENRE, list.genre, &list.genre_num, MAX_GENRE, &list.country[0].reserved_0};
}

table_of_list countries() {
  channel_list_st &list = *get_channel_list();
  return {"country", GROUP_COUNTRY, list.country, &list.country_num, MAX_COUNTRY, &list.favorite_group[0].reserved_0};
}

table_of_list providers() {
  channel_list_st &list = *get_channel_list();
  return {"provider", GROUP_PROVIDER, list.provider, &list.provider_num, MAX_PROVIDER, &list.genre[0].reserved_0};
}

class GroupTables : public store_test, public ::testing::WithParamInterface<table_of_list> {
 protected:
  // Groups with the ids first, first + 1, ... in a row.
  static void fill(int count, int first = 1) {
    for (int i = 0; i < count; ++i) {
      GetParam().groups[i].id = static_cast<std::int16_t>(first + i);
    }
    *GetParam().count = static_cast<std::int16_t>(count);
  }
  static group_st *find(int id) { return get_group_st_by_id(GetParam().kind, static_cast<std::int16_t>(id)); }
};

TEST_P(GroupTables, AreListedFromTheirFirstGroupWithTheirCount) {
  const table_of_list &table = GetParam();
  for (const int count : {1, table.capacity - 1, static_cast<int>(table.capacity)}) {
    fill(count);
    std::uint16_t reported = 777;

    EXPECT_EQ(get_group_list(table.kind, &reported), table.groups) << count;
    EXPECT_EQ(reported, count);
  }
}

TEST_P(GroupTables, WithoutGroupsAreNoList) {
  for (const int count : {0, -1, -32768}) {
    *GetParam().count = static_cast<std::int16_t>(count);
    std::uint16_t reported = 777;

    EXPECT_EQ(get_group_list(GetParam().kind, &reported), nullptr) << count;
    EXPECT_EQ(reported, 0) << count;
  }
}

TEST_P(GroupTables, ThatCountMoreThanTheyHoldAreFull) {
  for (const int count : {GetParam().capacity + 1, 32767}) {
    *GetParam().count = static_cast<std::int16_t>(count);
    std::uint16_t reported = 0;

    EXPECT_EQ(get_group_list(GetParam().kind, &reported), GetParam().groups);
    EXPECT_EQ(reported, GetParam().capacity);
  }
}

TEST_P(GroupTables, FindEachOfTheirGroupsById) {
  const int capacity = GetParam().capacity;
  fill(capacity);

  for (const int id : {1, 2, capacity - 1, capacity}) {
    EXPECT_EQ(find(id), &GetParam().groups[id - 1]) << id;
  }
  EXPECT_EQ(find(0), nullptr);
  EXPECT_EQ(find(capacity + 1), nullptr);
}

TEST_P(GroupTables, FindTheFirstOfTwoGroupsWithOneId) {
  fill(4);
  GetParam().groups[1].id = GetParam().groups[3].id = 9;

  EXPECT_EQ(find(9), &GetParam().groups[1]);
}

TEST_P(GroupTables, FindIdsWithTheirSign) {
  fill(3, -2);
  GetParam().groups[2].id = -32768;

  EXPECT_EQ(find(-2), &GetParam().groups[0]);
  EXPECT_EQ(find(-1), &GetParam().groups[1]);
  EXPECT_EQ(find(-32768), &GetParam().groups[2]);
  EXPECT_EQ(find(254), nullptr);
}

TEST_P(GroupTables, DoNotFindGroupsBehindTheirCount) {
  fill(3);
  *GetParam().count = 2;

  EXPECT_NE(find(2), nullptr);
  EXPECT_EQ(find(3), nullptr);
}

TEST_P(GroupTables, WithoutGroupsFindNothingNotEvenTheIdOfAnEmptySlot) {
  for (const int count : {0, -1, -32768}) {
    *GetParam().count = static_cast<std::int16_t>(count);

    EXPECT_EQ(find(0), nullptr) << count;
  }
}

TEST_P(GroupTables, AreNotSearchedPastTheirEndWhateverTheyCount) {
  *GetParam().behind = 777;
  for (const int count : {GetParam().capacity + 1, 32767}) {
    *GetParam().count = static_cast<std::int16_t>(count);

    EXPECT_EQ(find(777), nullptr) << count;
  }
}

TEST_P(GroupTables, AreSearchedWithoutAWord) {
  const auto search = [] { return find(1); };

  EXPECT_EQ(writes_at(9, search), lines{});
  fill(1);
  EXPECT_EQ(writes_at(9, search), lines{});
}
INSTANTIATE_TEST_SUITE_P(OfTheList, GroupTables, ::testing::Values(genres(), countries(), providers()),
                         [](const auto &tested) { return std::string(tested.param.name); });

}  // namespace
