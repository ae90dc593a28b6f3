// Looking up favourite groups, their slots, and entries by number.
#include "support/favourite_test.h"

namespace {

using namespace test_support;

class FavouriteLookups : public favourite_test {};

constexpr int outside_the_table[] = {-32768, -1, 20, 32767};
constexpr int outside_a_group[] = {-32768, -1, 40, 32767};

std::int16_t i16(int value) { return static_cast<std::int16_t>(value); }

TEST_F(FavouriteLookups, TheNumberOfGroupsIsReported) {
  for (int n = 0; n < 20; ++n) {
    EXPECT_EQ(get_fav_group_number(), n);
    create("Group " + std::to_string(n));
  }
  EXPECT_EQ(get_fav_group_number(), 20);
  EXPECT_EQ(writes_at(5, get_fav_group_number), lines{});
}

TEST_F(FavouriteLookups, AGroupIsFoundByItsIndex) {
  for (const int n : {0, 1, 19, 20}) {
    reset_channel_list();
    create_groups(n);
    for (int index = 0; index < n; ++index) {
      EXPECT_EQ(get_fav_group_info(i16(index)), &list.favorite_group[index]);
    }
    for (const int index : {-32768, -1, n, 40, 32767}) {
      const auto find = [index] { return get_fav_group_info(i16(index)); };
      EXPECT_EQ(find(), nullptr) << index;
      EXPECT_EQ(writes_at(0, find), lines{"ERROR: get_fav_group_info:# \n"}) << index;
      EXPECT_EQ(writes_at(-1, find), lines{}) << index;
    }
  }
}

TEST_F(FavouriteLookups, AGroupIsFoundByItsId) {
  create_groups(3);
  list.favorite_group[0].id = 9;
  list.favorite_group[2].id = 9;
  list.favorite_group[3].id = 3;

  EXPECT_EQ(get_fav_group_info_by_fav_id(9), &list.favorite_group[0]);
  EXPECT_EQ(get_fav_group_info_by_fav_id(1), &list.favorite_group[1]);
  EXPECT_EQ(get_fav_index(9), 0);
  EXPECT_EQ(get_fav_index(1), 1);
  for (const int id : {-32768, -1, 0, 2, 3, 20, 32767}) {
    EXPECT_EQ(writes_at(5, [id] { EXPECT_EQ(get_fav_group_info_by_fav_id(i16(id)), nullptr); }), lines{}) << id;
  }
}

TEST_F(FavouriteLookups, AnUnknownIdHasNoIndex) {
  create_groups(2);
  for (const int id : {-32768, -1, 2, 20, 32767}) {
    const auto find = [id] { return get_fav_index(i16(id)); };
    EXPECT_EQ(find(), -1) << id;
    EXPECT_EQ(writes_at(0, find), lines{"ERROR: get_fav_index:# \n"}) << id;
    EXPECT_EQ(writes_at(-1, find), lines{}) << id;
  }
  EXPECT_EQ(writes_at(5, [] { return get_fav_index(1); }), lines{});
}

TEST_F(FavouriteLookups, AnEmptyTableHasNoGroupWithTheIdZeroOfItsSlots) {
  EXPECT_EQ(get_fav_group_info_by_fav_id(0), nullptr);
  EXPECT_EQ(get_fav_index(0), -1);
}

TEST_F(FavouriteLookups, ASlotIsReachableWhetherInUseOrNot) {
  create_groups(1);
  for (const int group : {0, 1, 19}) {
    for (const int entry : {0, 1, 39}) {
      EXPECT_EQ(writes_at(5, [&] { EXPECT_EQ(get_fav_vch(i16(group), i16(entry)), &list.favorite_vch[group][entry]); }),
                lines{});
    }
  }
}

TEST_F(FavouriteLookups, ThereIsNoSlotOutsideTheArrays) {
  const auto expect_refused = [](int group, int entry) {
    const auto find = [=] { return get_fav_vch(i16(group), i16(entry)); };
    EXPECT_EQ(find(), nullptr) << group << ' ' << entry;
    EXPECT_EQ(writes_at(0, find), lines{"ERROR: get_fav_vch:# group " + std::to_string(group) + ", entry " +
                                        std::to_string(entry) + " outside the favourites\n"});
    EXPECT_EQ(writes_at(-1, find), lines{});
  };
  for (const int group : outside_the_table) {
    expect_refused(group, 0);
  }
  for (const int entry : outside_a_group) {
    expect_refused(0, entry);
    expect_refused(19, entry);
  }
}

TEST_F(FavouriteLookups, TheNumberOfEntriesIsTheStoredOne) {
  for (const int count : {-32768, -1, 0, 1, 39, 40, 41, 32767}) {
    for (const int group : {0, 19}) {
      list.favorite_vnumber[group] = i16(count);
      EXPECT_EQ(writes_at(5, [&] { EXPECT_EQ(get_fav_vch_number(i16(group)), count); }), lines{});
    }
  }
}

TEST_F(FavouriteLookups, AGroupOutsideTheTableHasNoEntries) {
  for (const int group : outside_the_table) {
    const auto count = [group] { return get_fav_vch_number(i16(group)); };
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(writes_at(0, count),
              lines{"ERROR: get_fav_vch_number:# group " + std::to_string(group) + " outside the favourites\n"});
    EXPECT_EQ(writes_at(-1, count), lines{});
  }
}

struct number_lookup {
  const char *name;
  std::int16_t (*find)(std::int16_t group, std::int16_t major, std::int16_t minor);
};

constexpr number_lookup number_lookups[] = {{"get_fav_vindex_by_number", get_fav_vindex_by_number},
                                            {"get_fav_index_by_number", get_fav_index_by_number}};

TEST_F(FavouriteLookups, AnEntryIsFoundByBothItsNumbers) {
  fill_group(19, 5);
  list.favorite_vch[19][1].minor_ch_num = 3;
  list.favorite_vch[19][3] = list.favorite_vch[19][1];
  list.favorite_vch[19][4].major_ch_num = -32768;
  list.favorite_vch[19][4].minor_ch_num = 32767;
  for (const number_lookup &each : number_lookups) {
    EXPECT_EQ(each.find(19, 1, 0), 0) << each.name;
    EXPECT_EQ(each.find(19, 2, 3), 1) << each.name;
    EXPECT_EQ(each.find(19, -32768, 32767), 4) << each.name;
    EXPECT_EQ(each.find(19, 2, 0), -1) << each.name;
    EXPECT_EQ(each.find(19, 3, 3), -1) << each.name;
    EXPECT_EQ(each.find(18, 1, 0), -1) << each.name;
    EXPECT_EQ(writes_at(5, [&] { return each.find(19, 99, 0); }), lines{}) << each.name;
  }
}

TEST_F(FavouriteLookups, NumbersAreSearchedAsFarAsTheCountAndTheArrayReach) {
  fill_group(0, 40);
  fill_group(1, 1);
  list.favorite_vch[1][0].major_ch_num = 41;
  const struct {
    int count;
    int major;
    int found;
  } cases[] = {{0, 1, -1},   {-1, 1, -1},  {-32768, 1, -1}, {1, 1, 0},    {1, 2, -1},
               {39, 40, -1}, {40, 40, 39}, {41, 40, 39},    {41, 41, -1}, {32767, 41, -1}};
  for (const number_lookup &each : number_lookups) {
    for (const auto &[count, major, found] : cases) {
      list.favorite_vnumber[0] = i16(count);
      EXPECT_EQ(each.find(0, i16(major), 0), found) << each.name << ' ' << count << ' ' << major;
    }
  }
}

TEST_F(FavouriteLookups, ThereAreNoNumbersOutsideTheTable) {
  for (const number_lookup &each : number_lookups) {
    for (const int group : outside_the_table) {
      const auto find = [&] { return each.find(i16(group), 0, 0); };
      EXPECT_EQ(find(), -1) << each.name << ' ' << group;
      EXPECT_EQ(writes_at(0, find), lines{"ERROR: get_fav_vindex_by_number:# group " + std::to_string(group) +
                                          " outside the favourites\n"});
      EXPECT_EQ(writes_at(-1, find), lines{});
    }
  }
}

TEST_F(FavouriteLookups, EntriesAreFoundByTheExactNameOfTheirGroup) {
  create("news");
  create("Sport");
  rename_favorite_group(1, "News", 4);
  fill_group(0, 2);
  fill_group(1, 3);
  virtual_channel_st *entries = nullptr;

  EXPECT_EQ(get_fav_vch_by_group_name("News", &entries), 3);
  EXPECT_EQ(entries, list.favorite_vch[1]);
}

TEST_F(FavouriteLookups, NamesAreComparedWithRegardToCase) {
  create_groups(2);
  fill_group(0, 2);
  fill_group(1, 3);
  virtual_channel_st *entries = nullptr;
  EXPECT_EQ(get_fav_vch_by_group_name("Group 1", &entries), 3);
  EXPECT_EQ(entries, list.favorite_vch[1]);

  virtual_channel_st untouched = {};
  entries = &untouched;
  for (const char *name : {"group 1", "Group 11", "Group ", "", "Group 2"}) {
    EXPECT_EQ(writes_at(5, [&] { EXPECT_EQ(get_fav_vch_by_group_name(name, &entries), 0); }), lines{}) << name;
    EXPECT_EQ(entries, &untouched) << name;
  }
}

TEST_F(FavouriteLookups, TheFirstGroupOfANameIsTaken) {
  create_groups(3);
  std::memcpy(list.favorite_group[2].name, "Group 1", 8);
  virtual_channel_st *entries = nullptr;

  EXPECT_EQ(get_fav_vch_by_group_name("Group 1", &entries), 0);

  EXPECT_EQ(entries, list.favorite_vch[1]);
}

TEST_F(FavouriteLookups, ABlankedNameIsFoundAsTheEmptyText) {
  create_groups(2);
  rename_favorite_group(1, "", 0);
  fill_group(1, 4);
  virtual_channel_st *entries = nullptr;

  EXPECT_EQ(get_fav_vch_by_group_name("", &entries), 4);
  EXPECT_EQ(entries, list.favorite_vch[1]);
}

TEST_F(FavouriteLookups, ANameWithoutTerminatorEndsWithItsField) {
  const std::string name(98, 'n');
  create(name);
  list.favorite_group[1].reserved_0 = 0x6E6E;
  fill_group(0, 5);
  virtual_channel_st *entries = nullptr;

  EXPECT_EQ(get_fav_vch_by_group_name(name.c_str(), &entries), 5);
  EXPECT_EQ(get_fav_vch_by_group_name((name + "nn").c_str(), &entries), 0);
  EXPECT_EQ(get_fav_vch_by_group_name(name.substr(1).c_str(), &entries), 0);
}

TEST_F(FavouriteLookups, NoNameAndNoPlaceForTheAnswerAreRefused) {
  create_groups(1);
  fill_group(0, 2);
  virtual_channel_st *entries = list.vch;
  const lines refused = {"ERROR: get_fav_vch_by_group_name:# name or out is null\n"};

  EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(get_fav_vch_by_group_name(nullptr, &entries), 0); }), refused);
  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(get_fav_vch_by_group_name("Group 0", nullptr), 0); }), refused);

  EXPECT_EQ(entries, list.vch);
}

}  // namespace
