// Appending an entry of the ALL view to the USER view unless the same service is there.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

class UserInserting : public store_test {
 protected:
  // Both views hold one entry each, the ALL entry changed by an edit; inserts it.
  template <class Edit>
  int insert_after(Edit edit) {
    fill_unfiled(VIEW_USER, 1);
    fill_unfiled(VIEW_ALL, 1);
    edit(list.vch[0]);
    return insert_user_vch_vindex(0);
  }
};

TEST_F(UserInserting, AppendsTheWholeEntry) {
  fill_unfiled(VIEW_USER, 2);
  channel_st *service = file_service({});
  virtual_channel_st &entry = append_entry(VIEW_ALL, entry_of(*service, 12, 3, -4));
  entry.favorite_id = 9;
  entry.reserved_7 = 1;
  entry.reserved_13 = 2;
  entry.service_id = 77;

  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(insert_user_vch_vindex(0), 0); }), lines{});

  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{1, 2, 77}));
  EXPECT_EQ(std::memcmp(&list.user_vch[2], &list.vch[0], sizeof(virtual_channel_st)), 0);
}

TEST_F(UserInserting, TakesTheEntryOfTheAllViewWhicheverViewIsCurrent) {
  fill_unfiled(VIEW_ALL, 3);
  fill_unfiled(VIEW_TV, 1);
  change_vindex_type(VIEW_TV);

  EXPECT_EQ(insert_user_vch_vindex(2), 0);

  EXPECT_EQ(service_ids(VIEW_USER), std::vector<int>{3});
  EXPECT_EQ(get_vindex_type(), VIEW_TV);
}

TEST_F(UserInserting, MinusOneDoesNothing) {
  fill_unfiled(VIEW_ALL, 1);

  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(insert_user_vch_vindex(-1), 0); }), lines{});

  EXPECT_EQ(list.user_vnumber, 0);
}

TEST_F(UserInserting, RefusesTheSameEntryTwice) {
  fill_unfiled(VIEW_ALL, 6);

  EXPECT_EQ(insert_user_vch_vindex(5), 0);
  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(insert_user_vch_vindex(5), -1); }),
            lines{"ChannelAPI insert_user_vch_vindex:# same - 5\n"});
  EXPECT_EQ(writes_at(4, [] { return insert_user_vch_vindex(5); }), lines{});

  EXPECT_EQ(service_ids(VIEW_USER), std::vector<int>{6});
}

TEST_F(UserInserting, FindsTheSameEntryAnywhereInTheUserView) {
  fill_unfiled(VIEW_ALL, 3);
  fill_unfiled(VIEW_USER, 3);

  for (const std::int16_t all_index : {std::int16_t{0}, std::int16_t{1}, std::int16_t{2}}) {
    EXPECT_EQ(insert_user_vch_vindex(all_index), -1);
  }
  EXPECT_EQ(list.user_vnumber, 3);
}

TEST_F(UserInserting, LooksNoFurtherThanTheCountForTheSameEntry) {
  fill_unfiled(VIEW_ALL, 3);
  fill_unfiled(VIEW_USER, 3);
  list.user_vnumber = 2;

  EXPECT_EQ(insert_user_vch_vindex(2), 0);
}

TEST_F(UserInserting, EveryPartOfTheIdentityTellsEntriesApart) {
  EXPECT_EQ(insert_after([](virtual_channel_st &entry) { ++entry.net_index; }), 0);
  EXPECT_EQ(insert_after([](virtual_channel_st &entry) { ++entry.network_id; }), 0);
  EXPECT_EQ(insert_after([](virtual_channel_st &entry) { ++entry.ts_id; }), 0);
  EXPECT_EQ(insert_after([](virtual_channel_st &entry) { ++entry.service_id; }), 0);
  EXPECT_EQ(insert_after([](virtual_channel_st &entry) { ++entry.polarisation; }), 0);
}

TEST_F(UserInserting, NothingElseTellsEntriesApart) {
  EXPECT_EQ(insert_after([](virtual_channel_st &entry) { ++entry.vch_tag; }), -1);
  EXPECT_EQ(insert_after([](virtual_channel_st &entry) { ++entry.favorite_id; }), -1);
  EXPECT_EQ(insert_after([](virtual_channel_st &entry) { ++entry.major_ch_num; }), -1);
  EXPECT_EQ(insert_after([](virtual_channel_st &entry) { ++entry.minor_ch_num; }), -1);
  EXPECT_EQ(insert_after([](virtual_channel_st &entry) { ++entry.reserved_7; }), -1);
  EXPECT_EQ(insert_after([](virtual_channel_st &entry) { ++entry.reserved_13; }), -1);
  EXPECT_EQ(insert_after([](virtual_channel_st &entry) { entry.rch = file_service({}); }), -1);
}

TEST_F(UserInserting, FrequenciesAreTheSameBelowTheTolerance) {
  EXPECT_EQ(insert_after([](virtual_channel_st &entry) { entry.frequency += 2499; }), -1);
  EXPECT_EQ(insert_after([](virtual_channel_st &entry) { entry.frequency -= 2499; }), -1);
  EXPECT_EQ(insert_after([](virtual_channel_st &entry) { entry.frequency += 2500; }), 0);
  EXPECT_EQ(insert_after([](virtual_channel_st &entry) { entry.frequency -= 2500; }), 0);
}

TEST_F(UserInserting, FrequencyZeroIsAFrequencyLikeAnyOther) {
  EXPECT_EQ(insert_after([](virtual_channel_st &entry) { entry.frequency = 0; }), 0);
  EXPECT_EQ(insert_after([this](virtual_channel_st &entry) {
              entry.frequency = 2499;
              list.user_vch[0].frequency = 0;
            }),
            -1);
  EXPECT_EQ(insert_after([this](virtual_channel_st &entry) {
              entry.frequency = 0xFFFF'FFFF;
              list.user_vch[0].frequency = 0;
            }),
            0);
}

TEST_F(UserInserting, FillsTheUserViewAndNoFurther) {
  fill_unfiled(VIEW_USER, 4999);
  fill_unfiled(VIEW_ALL, 1);
  list.vch[0].service_id = 8001;
  EXPECT_EQ(insert_user_vch_vindex(0), 0);
  EXPECT_EQ(list.user_vnumber, 5000);
  EXPECT_EQ(list.user_vch[4999].service_id, 8001);

  list.vch[0].service_id = 8002;
  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(insert_user_vch_vindex(0), -1); }),
            lines{"ERROR: insert_user_vch_vindex:# view is full, 5000 entries\n"});
  EXPECT_EQ(list.user_vnumber, 5000);
  EXPECT_EQ(list.user_vch[4999].service_id, 8001);
}

TEST_F(UserInserting, RefusesAnIndexOutsideTheArray) {
  fill_unfiled(VIEW_ALL, 3);
  for (const int all_index : {-32768, -2, 5000, 32767}) {
    const auto index = static_cast<std::int16_t>(all_index);
    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(insert_user_vch_vindex(index), -1); }),
              lines{"ERROR: insert_user_vch_vindex:# vindex " + std::to_string(all_index) + " outside the view\n"});
  }
  EXPECT_EQ(list.user_vnumber, 0);
}

TEST_F(UserInserting, TakesASlotBehindTheCountAsItIs) {
  list.vch[4999] = unfiled_entry(55);

  EXPECT_EQ(insert_user_vch_vindex(4999), 0);
  EXPECT_EQ(insert_user_vch_vindex(0), 0);

  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{55, 0}));
}

TEST_F(UserInserting, AUserCountOutsideTheArrayIsReadAsTheNearestInside) {
  fill_unfiled(VIEW_ALL, 1);
  list.user_vnumber = -7;
  EXPECT_EQ(insert_user_vch_vindex(0), 0);
  EXPECT_EQ(service_ids(VIEW_USER), std::vector<int>{1});

  list.vch[0].service_id = 9000;
  list.user_vnumber = 32767;
  EXPECT_EQ(insert_user_vch_vindex(0), -1);
}

TEST_F(UserInserting, ADestroyedListTakesItsEmptySlots) {
  destroy_channel_list();

  EXPECT_EQ(insert_user_vch_vindex(-1), 0);
  EXPECT_EQ(insert_user_vch_vindex(0), 0);
  EXPECT_EQ(insert_user_vch_vindex(0), -1);

  EXPECT_EQ(list.user_vnumber, 1);
}

}  // namespace
