// Creating and removing favourite groups: ids, names, limits, and that the three parts of a group stay together.
#include "support/favourite_test.h"

namespace {

using namespace test_support;

class FavouriteGroups : public favourite_test {};

TEST_F(FavouriteGroups, AreCreatedInOrderUnderTheSmallestFreeId) {
  EXPECT_EQ(create("Ant"), 0);
  EXPECT_EQ(create("Bee"), 1);
  EXPECT_EQ(create("Cat"), 2);

  EXPECT_EQ(remove_fav_group(1), 0);
  EXPECT_EQ(create("Dog"), 1);

  EXPECT_EQ(group_names(), (std::vector<std::string>{"Ant", "Cat", "Dog"}));
  EXPECT_EQ(group_ids(), (std::vector<int>{0, 2, 1}));
  EXPECT_EQ(get_fav_index(1), 2);
}

TEST_F(FavouriteGroups, AreStoredWholeButForTheId) {
  group_st group = named_group("News");
  group.reserved_0 = 0xABCD;
  group.id = 17;
  std::memset(group.name + 50, 'x', 40);

  EXPECT_EQ(add_fav_group_info(group), 0);

  group.id = 0;
  EXPECT_TRUE(same_bytes(list.favorite_group[0], group));
  EXPECT_EQ(list.favorite_group_num, 1);
}

TEST_F(FavouriteGroups, StoreTheirNameLengthUnchecked) {
  int created = 0;
  for (const int length : {0, 1, 96, 97, 98, 32767}) {
    group_st group = named_group("Name " + std::to_string(length));
    group.name_len = static_cast<std::int16_t>(length);

    EXPECT_EQ(add_fav_group_info(group), created);

    EXPECT_EQ(list.favorite_group[created++].name_len, length);
  }
}

TEST_F(FavouriteGroups, WithANegativeNameLengthAreRefusedFirst) {
  create_groups(20);
  const std::string before = table();
  for (const int length : {-1, -32768}) {
    group_st group = named_group("Group 0");
    group.name_len = static_cast<std::int16_t>(length);
    const auto add = [&group] { return add_fav_group_info(group); };

    EXPECT_EQ(add(), -1);

    EXPECT_EQ(writes_at(0, add), lines{"ERROR: add_fav_group_info:# name_len " + std::to_string(length) + " \n"});
    EXPECT_EQ(writes_at(-1, add), lines{});
  }
  EXPECT_EQ(table(), before);
}

TEST_F(FavouriteGroups, AreTwentyAtMost) {
  create_groups(19);
  EXPECT_EQ(create("The last"), 19);
  const std::string before = table();
  const auto add = [] { return create("One more"); };

  EXPECT_EQ(add(), -1);

  EXPECT_EQ(writes_at(0, add), lines{"ERROR: add_fav_group_info:# favorite_group_number 20 MAX_FAV 20\n"});
  EXPECT_EQ(writes_at(-1, add), lines{});
  EXPECT_EQ(table(), before);
}

TEST_F(FavouriteGroups, AFullTableRefusesEvenANameThatItHas) {
  create_groups(20);

  EXPECT_EQ(writes_at(1, [] { EXPECT_EQ(create("Group 3"), -1); }),
            lines{"ERROR: add_fav_group_info:# favorite_group_number 20 MAX_FAV 20\n"});
}

TEST_F(FavouriteGroups, ACountAboveTheTableIsRefusedLikeAFullOne) {
  create_groups(20);
  list.favorite_group_num = 21;

  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(create("One more"), -1); }),
            lines{"ERROR: add_fav_group_info:# favorite_group_number 21 MAX_FAV 20\n"});

  EXPECT_EQ(list.favorite_group_num, 21);

  list.favorite_group_num = 0x0114;
  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(create("One more"), -1); }),
            lines{"ERROR: add_fav_group_info:# favorite_group_number 20 MAX_FAV 20\n"});
}

TEST_F(FavouriteGroups, ANameThatExistsInAnyCaseGivesItsGroup) {
  create("News");
  create("sport");
  list.favorite_group[1].id = 7;
  list.favorite_group[1].name_len = 2;
  const auto add = [] { return create("Sport"); };

  EXPECT_EQ(add(), 7);

  EXPECT_EQ(group_names(), (std::vector<std::string>{"News", "sport"}));
  EXPECT_EQ(list.favorite_group[1].name_len, 5);
  EXPECT_TRUE(slots_behind_groups_are_empty());
  EXPECT_EQ(writes_at(1, add), lines{"WARNING: add_fav_group_info:# same fav 7 (sport)\n"});
  EXPECT_EQ(writes_at(0, add), lines{});
}

TEST_F(FavouriteGroups, ASameNameChangesNothingButTheLength) {
  create_groups(3);
  list.favorite_group[1].name_len = 0;
  const std::string before = table();

  group_st group = named_group("GROUP 1");
  group.reserved_0 = 0x5555;
  EXPECT_EQ(add_fav_group_info(group), 1);

  EXPECT_EQ(list.favorite_group[1].name_len, 7);
  list.favorite_group[1].name_len = 0;
  EXPECT_EQ(table(), before);
}

TEST_F(FavouriteGroups, TheFirstOfTwoSameNamesWins) {
  create_groups(3);
  std::memcpy(list.favorite_group[2].name, "GROUP 1", 8);

  EXPECT_EQ(create("group 1"), 1);
}

TEST_F(FavouriteGroups, AnEmptyNameIsANameLikeAnyOther) {
  EXPECT_EQ(create(""), 0);
  EXPECT_EQ(create("News"), 1);
  EXPECT_EQ(create(""), 0);

  EXPECT_EQ(list.favorite_group_num, 2);
  EXPECT_EQ(list.favorite_group[0].name_len, 0);
}

TEST_F(FavouriteGroups, ANameBehindTheCountIsFree) {
  create_groups(2);
  list.favorite_group_num = 1;

  EXPECT_EQ(create("Group 1"), 1);
}

TEST_F(FavouriteGroups, ANameWithoutTerminatorIsKeptComparedAndPrintedWithinItsField) {
  const std::string name(98, 'n');
  const auto add = [&name] { return create(name); };

  EXPECT_EQ(writes_at(3, add), lines{"add index 0 fav group : " + name + " \n"});
  EXPECT_EQ(name_field(list.favorite_group[0]), name);
  EXPECT_EQ(list.favorite_group[0].name_len, 98);
  // What follows the record is not part of the name.
  list.favorite_group[1].reserved_0 = 0x6E6E;
  list.favorite_group[0].name_len = 3;

  EXPECT_EQ(writes_at(1, add), lines{"WARNING: add_fav_group_info:# same fav 0 (" + name + ")\n"});
  EXPECT_EQ(list.favorite_group[0].name_len, 98);
  list.favorite_group[1].reserved_0 = 0;

  EXPECT_EQ(create(std::string(97, 'n') + "o"), 1);
  EXPECT_EQ(create(std::string(97, 'n')), 2);
  EXPECT_EQ(create(std::string(96, 'n')), 3);
}

TEST_F(FavouriteGroups, ANewGroupIsLoggedAtLevelThree) {
  create_groups(2);

  EXPECT_EQ(writes_at(3, [] { return create("News"); }), lines{"add index 2 fav group : News \n"});
  EXPECT_EQ(writes_at(2, [] { return create("Sport"); }), lines{});
}

TEST_F(FavouriteGroups, IdsOutsideTheTableTakeNoId) {
  create_groups(4);
  list.favorite_group[0].id = 20;
  list.favorite_group[1].id = -1;
  list.favorite_group[2].id = 32767;
  list.favorite_group[3].id = -32768;

  EXPECT_EQ(create("News"), 0);
}

TEST_F(FavouriteGroups, IdsGivenTwiceLeaveMoreFree) {
  create_groups(3);
  list.favorite_group[2].id = 0;

  EXPECT_EQ(create("News"), 2);
}

TEST_F(FavouriteGroups, TheLastFreeIdIsGiven) {
  create_groups(20);
  for (int id = 0; id < 20; ++id) {
    EXPECT_EQ(remove_fav_group(static_cast<std::int16_t>(id)), 0);
    EXPECT_EQ(create("New " + std::to_string(id)), id);
  }
  EXPECT_EQ(list.favorite_group_num, 20);
}

// Compatibility: the count is a signed byte, whatever the other byte of its field holds.
TEST_F(FavouriteGroups, AreCountedInASignedByte) {
  create_groups(3);
  list.favorite_group_num = 0x0102;

  EXPECT_EQ(get_fav_group_number(), 2);
  EXPECT_EQ(get_fav_group_info(1), &list.favorite_group[1]);
  EXPECT_EQ(get_fav_group_info(2), nullptr);
  EXPECT_EQ(get_fav_group_info_by_fav_id(2), nullptr);
  EXPECT_EQ(create("Group 2"), 2);
  EXPECT_EQ(list.favorite_group_num, 3);

  for (const int negative : {128, 200, 255, -1}) {
    list.favorite_group_num = static_cast<std::int16_t>(negative);
    EXPECT_EQ(get_fav_group_number(), static_cast<std::int8_t>(negative));
    EXPECT_EQ(get_fav_group_info(0), nullptr) << negative;
    EXPECT_EQ(get_fav_group_info_by_fav_id(0), nullptr) << negative;
    EXPECT_EQ(remove_fav_group(0), -1) << negative;
  }
}

TEST_F(FavouriteGroups, AreRemovedWithTheirEntries) {
  for (int removed = 0; removed < 4; ++removed) {
    reset_channel_list();
    create_groups(4);
    for (int index = 0; index < 4; ++index) {
      fill_group(index, index + 1);
    }
    std::vector<int> kept = {0, 1, 2, 3};
    kept.erase(kept.begin() + removed);

    EXPECT_EQ(writes_at(5, [&] { EXPECT_EQ(remove_fav_group(static_cast<std::int16_t>(removed)), 0); }), lines{});

    EXPECT_EQ(group_ids(), kept);
    for (std::size_t index = 0; index < kept.size(); ++index) {
      const auto g = static_cast<int>(index);
      EXPECT_EQ(list.favorite_group[index].name, "Group " + std::to_string(kept[index]));
      EXPECT_EQ(list.favorite_vnumber[index], kept[index] + 1);
      EXPECT_EQ(service_ids(view_of(g)).size(), static_cast<std::size_t>(kept[index]) + 1);
      EXPECT_TRUE(slots_behind_count_are_zero(view_of(g), 40));
    }
    EXPECT_TRUE(slots_behind_groups_are_empty());
  }
}

TEST_F(FavouriteGroups, AreRemovedFromAFullTable) {
  fill_everything();

  EXPECT_EQ(remove_fav_group(0), 0);

  EXPECT_EQ(list.favorite_group_num, 19);
  EXPECT_EQ(list.favorite_group[0].id, 1);
  EXPECT_EQ(list.favorite_vch[0][0].service_id, 41);
  EXPECT_EQ(list.favorite_vch[18][39].service_id, 800);
  EXPECT_TRUE(is_empty_slot(19));
}

TEST_F(FavouriteGroups, TheFirstOfTwoWithOneIdIsRemoved) {
  create_groups(3);
  list.favorite_group[2].id = 1;

  EXPECT_EQ(remove_fav_group(1), 0);

  EXPECT_EQ(group_names(), (std::vector<std::string>{"Group 0", "Group 2"}));
}

TEST_F(FavouriteGroups, WhatIsNotThereIsNotRemoved) {
  EXPECT_EQ(remove_fav_group(0), -1);
  create_groups(3);
  fill_group(2, 40);
  list.favorite_group[3].id = 3;
  const std::string before = table();
  for (const int id : {-32768, -1, 3, 20, 32767}) {
    EXPECT_EQ(writes_at(5, [id] { EXPECT_EQ(remove_fav_group(static_cast<std::int16_t>(id)), -1); }), lines{}) << id;
  }
  EXPECT_EQ(table(), before);
}

TEST_F(FavouriteGroups, ANewGroupAfterARemovalStartsEmpty) {
  create_groups(3);
  fill_group(2, 40);
  remove_fav_group(2);

  EXPECT_EQ(create("News"), 2);

  EXPECT_EQ(list.favorite_vnumber[2], 0);
  EXPECT_TRUE(slots_behind_count_are_zero(view_of(2), 40));
}

}  // namespace
