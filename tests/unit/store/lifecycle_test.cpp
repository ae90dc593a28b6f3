// Initialising, emptying and destroying the list: what is released, what is left alone, and what is logged.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "support/hierarchy_walk.h"
#include "support/log_capture.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

class Lifecycle : public store_test {
 protected:
  // Two networks; the first has two transponders with 2 and 1 channels, the second has one with 1.
  static void file_four_services() {
    file_service({.service_id = 1});
    file_service({.service_id = 2});
    file_service({.frequency = 12'000'000, .service_id = 3});
    file_service({.net_index = 2, .service_id = 4});
  }
  // A channel in the work view and in the history, both of which live outside the list.
  void remember_a_service() {
    channel_st *service = file_service({});
    const virtual_channel_st entry = entry_of(*service, 7);
    append_entry(VIEW_WORK, entry);
    append_entry(VIEW_ALL, entry);
    add_return_channel(0, 1, 1, 100, 11'000'000, 1, 0);
    ASSERT_EQ(get_return_channel_num(), 1);
    ASSERT_EQ(get_return_channel()->vch.rch, service);
  }
};

TEST_F(Lifecycle, InitialisingAnswersThatTheAllViewIsEmpty) { EXPECT_EQ(init_channel_list(), -4); }

TEST_F(Lifecycle, InitialisingMakesTheAllViewCurrent) {
  append_entry(VIEW_USER, {});
  ASSERT_EQ(change_vindex_type(VIEW_USER), 0);

  init_channel_list();

  EXPECT_EQ(get_vindex_type(), VIEW_ALL);
  EXPECT_EQ(list.cur_vch, list.vch);
  EXPECT_EQ(list.cur_vnumber, &list.vnumber);
}

TEST_F(Lifecycle, InitialisingLogsNothing) { EXPECT_EQ(writes_at(5, init_channel_list), lines{}); }

TEST_F(Lifecycle, InitialisingLeavesRecordsThatAreLinkedToTheHost) {
  channel_st *service = file_service({.service_id = 77});
  network_ch_st *network = networks().at(0);

  init_channel_list();

  EXPECT_EQ(service->service_id, 77);
  EXPECT_EQ(network->tp_num, 1);
  EXPECT_TRUE(points_to_itself(list.network_list));
  EXPECT_EQ(list.network_num, 0);
  free_network(network);
}

TEST_F(Lifecycle, InitialisingLeavesWhatLivesOutsideTheList) {
  remember_a_service();
  network_ch_st *network = networks().at(0);
  set_limited_channel_flag(1);
  const char *directory = set_target_dir("/tmp/");

  init_channel_list();

  EXPECT_EQ(service_ids(VIEW_WORK), std::vector<int>{1});
  EXPECT_EQ(get_return_channel_num(), 1);
  EXPECT_EQ(get_limited_channel_flag(), 1);
  EXPECT_STREQ(directory, "/tmp/");
  free_network(network);
  init_vindex(VIEW_WORK);
  init_return_channel();
}

TEST_F(Lifecycle, ResettingEmptiesTheListAndSetsTheDefaults) {
  fill_everything();

  EXPECT_EQ(reset_channel_list(), -4);

  EXPECT_EQ(list.network_num, 0);
  EXPECT_TRUE(points_to_itself(list.network_list));
  EXPECT_EQ(list.version, 10);
  EXPECT_EQ(list.sub_group_id, -1);
  EXPECT_EQ(list.provider_num, 0);
  EXPECT_EQ(list.favorite_group_num, 0);
  for (const int view : {0, 1, 2, 3, 5, 10, 29}) {
    EXPECT_EQ(*get_virtual_channel_vnumber(static_cast<std::int8_t>(view)), 0) << "view " << view;
  }
  EXPECT_TRUE(slots_behind_count_are_zero(VIEW_ALL, MAX_CHANNEL));
}

TEST_F(Lifecycle, ResettingAnEmptyListAnswersAsInitialisingDoes) { EXPECT_EQ(reset_channel_list(), -4); }

TEST_F(Lifecycle, ResettingLogsItselfAndEachTransponder) {
  file_four_services();

  EXPECT_EQ(writes_at(5, reset_channel_list),
            (lines{"ChannelAPI reset_channel_list:# reset channel\n",
                   "ChannelAPI reset_channel_list:# delete tp_ch_info - rch_num 2\n",
                   "ChannelAPI reset_channel_list:# delete tp_ch_info - rch_num 1\n",
                   "ChannelAPI reset_channel_list:# delete tp_ch_info - rch_num 1\n"}));
}

TEST_F(Lifecycle, ResettingLogsTranspondersAloneBelowLevel5) {
  for (const int level : {3, 4}) {
    file_service({});

    EXPECT_EQ(writes_at(level, reset_channel_list),
              lines{"ChannelAPI reset_channel_list:# delete tp_ch_info - rch_num 1\n"});
  }
}

TEST_F(Lifecycle, ResettingLogsNothingBelowLevel3) {
  file_service({});

  EXPECT_EQ(writes_at(2, reset_channel_list), lines{});
}

TEST_F(Lifecycle, ResettingWithoutNetworksLogsItselfAtLevel5Alone) {
  EXPECT_EQ(writes_at(5, reset_channel_list), lines{"ChannelAPI reset_channel_list:# reset channel\n"});
  EXPECT_EQ(writes_at(4, reset_channel_list), lines{});
}

TEST_F(Lifecycle, ResettingAListThatCountsNoNetworkFreesNothingAndLosesTheRecords) {
  channel_st *service = file_service({.service_id = 77});
  network_ch_st *network = networks().at(0);
  list.network_num = 0;

  EXPECT_EQ(writes_at(4, reset_channel_list), lines{});

  EXPECT_TRUE(points_to_itself(list.network_list));
  EXPECT_EQ(service->service_id, 77);
  EXPECT_EQ(transponders(*network).size(), 1U);
  free_network(network);
}

TEST_F(Lifecycle, ResettingLeavesNoPointerToAFreedChannelOutsideTheList) {
  remember_a_service();

  reset_channel_list();

  EXPECT_EQ(get_virtual_channel_st(VIEW_WORK)->rch, nullptr);
  EXPECT_EQ(get_return_channel()->vch.rch, nullptr);
  EXPECT_EQ(service_ids(VIEW_WORK), std::vector<int>{1});
  EXPECT_EQ(get_return_channel()->vch.service_id, 1);
}

TEST_F(Lifecycle, TheHistoryPrintsAnEmptyNameAfterAReset) {
  remember_a_service();
  reset_channel_list();

  const auto writes = writes_at(2, [] { return check_same_return_channel(0, 1, 1, 100, 11'000'000, 1, 0); });

  ASSERT_EQ(writes.size(), 2U);
  EXPECT_EQ(writes[1], "ChannelAPI check_same_return_channel:# vch ni(1), net_id(1), ti(100), f(11000000), si(1), "
                       "po(0), name()\n");
}

TEST_F(Lifecycle, DestroyingLeavesAZeroedListWhoseHeadsAreZeroAndNotEmpty) {
  file_four_services();
  append_entry(VIEW_TV, {});
  list.genre_num = 3;

  destroy_channel_list();

  const auto *bytes = reinterpret_cast<const char *>(&list);
  EXPECT_TRUE(std::all_of(bytes, bytes + sizeof list, [](char byte) { return byte == 0; }));
  EXPECT_EQ(list.network_list.next, nullptr);
  EXPECT_EQ(list.version, 0);
}

TEST_F(Lifecycle, DestroyingLogsNothing) {
  file_four_services();

  const auto writes = writes_at(5, [] {
    destroy_channel_list();
    return 0;
  });

  EXPECT_EQ(writes, lines{});
}

TEST_F(Lifecycle, DestroyingReleasesRecordsWhateverNumberOfNetworksIsCounted) {
  remember_a_service();
  list.network_num = 0;

  destroy_channel_list();

  EXPECT_EQ(get_virtual_channel_st(VIEW_WORK)->rch, nullptr);
  EXPECT_EQ(get_return_channel()->vch.rch, nullptr);
}

TEST_F(Lifecycle, DestroyingTwiceIsHarmless) {
  file_service({});
  destroy_channel_list();

  destroy_channel_list();

  EXPECT_EQ(list.network_num, 0);
}

TEST_F(Lifecycle, ADestroyedListAnswersLookupsWithNothing) {
  destroy_channel_list();

  EXPECT_EQ(get_network_ch_info(1, 1), nullptr);
  EXPECT_EQ(get_channel_st(1, 1, 100, 11'000'000, 1, 0), nullptr);
  EXPECT_EQ(get_channel_list_vch(), nullptr);
  EXPECT_EQ(get_rch_ch_info_by_tp_ch(nullptr, 1), nullptr);
}

TEST_F(Lifecycle, ADestroyedListIsUsableAgainAfterInitialising) {
  file_service({});
  destroy_channel_list();

  EXPECT_EQ(init_channel_list(), -4);
  channel_st *service = file_service({});

  EXPECT_EQ(get_channel_st(1, 1, 100, 11'000'000, 1, 0), service);
  EXPECT_TRUE(counts_match_lists());
}

TEST_F(Lifecycle, ADestroyedListIsUsableAgainAfterResetting) {
  destroy_channel_list();

  EXPECT_EQ(reset_channel_list(), -4);

  EXPECT_TRUE(points_to_itself(list.network_list));
  EXPECT_EQ(list.version, 10);
}

}  // namespace
