// Favourite groups as the source of a list.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "support/grouped_services.h"
#include "support/log_capture.h"
#include "support/providers.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;
using ids = std::vector<int>;

int list_favourites(int id, std::int8_t source = VIEW_TV, std::uint8_t current = to_work_view) {
  return create_service_by_group_list_id(GROUP_FAV, static_cast<std::int16_t>(id), source, current);
}

std::string copied(int walked, int favorite_id, int id, int index, int count) {
  return "ChannelAPI create_service_by_group_list_id:#  [create_service_by_group_list_id]  des_vch[" +
         std::to_string(walked) + "].favorite_id : " + std::to_string(favorite_id) + ", id : " + std::to_string(id) +
         ", index : " + std::to_string(index) + ", *des_vnumber : " + std::to_string(count) + "\n";
}

class FavouritesAsLists : public store_test {
 protected:
  // Three TV services, and the groups 1 (entries 21, 22) and 2 (none) at the indexes 0 and 1.
  void SetUp() override {
    store_test::SetUp();
    for (const int id : {1, 2, 3}) {
      show({.service_id = id}, {VIEW_TV});
    }
    for (const char *name : {"Ant", "Bee", "Cat"}) {
      add_fav_group_info(named_group(name));
    }
    remove_fav_group(0);
    show({.service_id = 21}, {first_favourites});
    show({.service_id = 22}, {first_favourites});
    list.favorite_vch[0][0].favorite_id = 7;
    list.favorite_vch[0][1].favorite_id = 200;
  }
};

TEST_F(FavouritesAsLists, TheEntriesOfTheGroupAreCopiedWholeInTheirOrder) {
  fill_unfiled(VIEW_WORK, 50);

  EXPECT_EQ(list_favourites(1), 0);

  EXPECT_EQ(service_ids(VIEW_WORK), (ids{21, 22}));
  EXPECT_EQ(std::memcmp(get_virtual_channel_st(VIEW_WORK), list.favorite_vch[0], 2 * sizeof(virtual_channel_st)), 0);
  EXPECT_TRUE(slots_behind_count_are_zero(VIEW_WORK, MAX_CHANNEL));
}

TEST_F(FavouritesAsLists, MadeCurrentTheyFillTheUserView) {
  EXPECT_EQ(list_favourites(1, VIEW_TV, 1), 0);

  EXPECT_EQ(service_ids(VIEW_USER), (ids{21, 22}));
  EXPECT_EQ(get_vindex_type(), VIEW_USER);
  EXPECT_EQ(get_use_group_list(), GROUP_FAV);
  EXPECT_EQ(get_current_sub_group_id(), 1);
  EXPECT_EQ(get_current_service_type(), VIEW_TV);
}

TEST_F(FavouritesAsLists, EachCopyIsTracedAtLevel2WithTheNumberOfSourceEntries) {
  const auto copy = [] { return list_favourites(1); };

  EXPECT_EQ(writes_at(2, copy), (lines{copied(3, 7, 1, 0, 2), copied(3, 200, 1, 0, 2)}));
  EXPECT_EQ(writes_at(1, copy), lines{});
}

TEST_F(FavouritesAsLists, TheGroupIsFoundByItsIdAtWhateverIndex) {
  show({.service_id = 31}, {second_favourites});

  EXPECT_EQ(writes_at(2, [] { return list_favourites(2); }), lines{copied(3, 0, 2, 1, 1)});

  EXPECT_EQ(service_ids(VIEW_WORK), (ids{31}));
}

TEST_F(FavouritesAsLists, AMissingGroupGivesAnEmptyList) {
  fill_unfiled(VIEW_WORK, 5);
  const lines report = {"ERROR: get_fav_index:# \n",
                        "ERROR: create_service_by_group_list_id:# Can not find 'id 0000' 'service_type 1 \n"};

  EXPECT_EQ(list_favourites(0), 0);

  EXPECT_EQ(*get_virtual_channel_vnumber(VIEW_WORK), 0);
  EXPECT_EQ(writes_at(0, [] { return list_favourites(0); }), report);
  EXPECT_EQ(writes_at(2, [] { return list_favourites(0); }), report);
  EXPECT_EQ(writes_at(-1, [] { return list_favourites(0); }), lines{});
}

TEST_F(FavouritesAsLists, AnEmptyGroupGivesAnEmptyList) {
  fill_unfiled(VIEW_WORK, 5);

  EXPECT_EQ(writes_at(2, [] { return list_favourites(2); }),
            lines{"ERROR: create_service_by_group_list_id:# Can not find 'id 0002' 'service_type 1 \n"});

  EXPECT_EQ(*get_virtual_channel_vnumber(VIEW_WORK), 0);
}

TEST_F(FavouritesAsLists, AMissingGroupMadeCurrentIsRecordedAndTheUserViewAskedFor) {
  change_vindex_type(VIEW_TV);
  fill_unfiled(VIEW_USER, 5);

  EXPECT_EQ(writes_at(1, [] { return list_favourites(-1, VIEW_TV, 1); }),
            (lines{"ERROR: get_fav_index:# \n",
                   "ERROR: create_service_by_group_list_id:# Can not find 'id ffffffff' 'service_type 1 \n",
                   "WARNING: change_vindex_type:# channel_list.user_vnumber 0 \n"}));
  EXPECT_EQ(list_favourites(-1, VIEW_TV, 1), 0);

  EXPECT_EQ(list.user_vnumber, 0);
  EXPECT_EQ(get_vindex_type(), VIEW_TV);
  EXPECT_EQ(get_use_group_list(), GROUP_FAV);
  EXPECT_EQ(get_current_sub_group_id(), -1);
}

TEST_F(FavouritesAsLists, TheSourceMustNotBeEmptyAndPlaysNoOtherPart) {
  EXPECT_EQ(list_favourites(1, VIEW_RADIO), -1);
  EXPECT_EQ(list_favourites(1, 30), -1);
  EXPECT_EQ(*get_virtual_channel_vnumber(VIEW_WORK), 0);
  show_without_channel(VIEW_RADIO);

  EXPECT_EQ(writes_at(2, [] { return list_favourites(1, VIEW_RADIO); }),
            (lines{"ERROR: create_service_by_group_list_id:#  r_ch NULL......\n", copied(1, 7, 1, 0, 2),
                   copied(1, 200, 1, 0, 2)}));

  EXPECT_EQ(service_ids(VIEW_WORK), (ids{21, 22}));
}

TEST_F(FavouritesAsLists, TheGroupsOwnViewIsASourceToo) {
  EXPECT_EQ(writes_at(2, [] { return list_favourites(1, first_favourites); }),
            (lines{copied(2, 7, 1, 0, 2), copied(2, 200, 1, 0, 2)}));

  EXPECT_EQ(service_ids(first_favourites), (ids{21, 22}));
}

TEST_F(FavouritesAsLists, TheUserViewAsItsOwnSourceIsEmptyWhenItIsWalked) {
  show({.service_id = 41}, {VIEW_USER});

  EXPECT_EQ(writes_at(2, [] { return list_favourites(1, VIEW_USER, 1); })[0], copied(0, 7, 1, 0, 2));

  EXPECT_EQ(service_ids(VIEW_USER), (ids{21, 22}));
}

TEST_F(FavouritesAsLists, EntriesOfTheGroupWithoutAChannelAreCopiedToo) {
  list.favorite_vch[0][0].rch = nullptr;

  EXPECT_EQ(writes_at(0, [] { return list_favourites(1); }), lines{});

  EXPECT_EQ(service_ids(VIEW_WORK), (ids{21, 22}));
}

TEST_F(FavouritesAsLists, AFullGroupIsCopiedAndNoMore) {
  for (const int count : {39, 40, 41, 32767}) {
    fill_unfiled(first_favourites, MAX_FAV_NUM);
    list.favorite_vnumber[0] = static_cast<std::int16_t>(count);

    EXPECT_EQ(list_favourites(1), 0);

    EXPECT_EQ(*get_virtual_channel_vnumber(VIEW_WORK), std::min(count, 40));
  }
  list.favorite_vnumber[0] = -1;
  EXPECT_EQ(list_favourites(1), 0);
  EXPECT_EQ(*get_virtual_channel_vnumber(VIEW_WORK), 0);
  list.favorite_vnumber[0] = 0;
}

}  // namespace
