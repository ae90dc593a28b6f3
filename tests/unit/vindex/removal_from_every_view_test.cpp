// Removing a channel altogether: its entries in every view but the work view, then the real channel, then the sweep.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/removal_test.h"

namespace {

using namespace test_support;

class RemovalFromEveryView : public removal_test {};

bool is_filed(int service_id) {
  return get_channel_st(1, 1, 100, 11'000'000, static_cast<std::uint16_t>(service_id), 0) != nullptr;
}

const std::string start = "ChannelAPI remove_virtual_channel_st:# S \n";
const std::string end = "ChannelAPI remove_virtual_channel_st:# E \n";

TEST_F(RemovalFromEveryView, EveryViewButTheWorkViewLosesTheChannel) {
  channel_st *removed = file(1);
  channel_st *kept = file(2);
  list_around(*removed, *kept);

  EXPECT_EQ(remove_everywhere({}), 0);

  expect_gone_from_swept_views(kept);
  EXPECT_FALSE(is_filed(1));
  EXPECT_TRUE(is_filed(2));
}

TEST_F(RemovalFromEveryView, TheHistoryForgetsTheChannel) {
  append_entry(VIEW_ALL, entry_of(*file(1), 1));
  add_return_channel(0, 1, 1, 100, 11'000'000, 1, 0);

  remove_everywhere({});

  EXPECT_EQ(get_return_channel_num(), 1);
  EXPECT_EQ(get_return_channel()->vch.rch, nullptr);
}

TEST_F(RemovalFromEveryView, AnEmptyTransponderAndItsNetworkStay) {
  fill_view(VIEW_ALL, 1);

  remove_everywhere({});

  EXPECT_EQ(list.network_num, 1);
  EXPECT_EQ(networks().at(0)->tp_num, 1);
  EXPECT_EQ(transponders(*networks().at(0)).at(0)->rch_num, 0);
}

TEST_F(RemovalFromEveryView, AChannelInNoViewIsFreed) {
  file(1);

  EXPECT_EQ(remove_everywhere({}), 0);

  EXPECT_FALSE(is_filed(1));
}

TEST_F(RemovalFromEveryView, EntriesWithAnotherTagDoNotSaveTheChannelAndAreSwept) {
  channel_st *service = file(1);
  append_entry(VIEW_ALL, entry_of(*service, 1, 0, 7));
  append_entry(VIEW_TV, entry_of(*service, 1, 0, 7));

  remove_everywhere({.tag = 0});

  EXPECT_FALSE(is_filed(1));
  EXPECT_EQ(count_of(VIEW_ALL), 0);
  EXPECT_EQ(count_of(VIEW_TV), 0);
}

TEST_F(RemovalFromEveryView, AnEntryOutsideTheToleranceDoesNotSaveTheChannel) {
  file(1);
  append_entry(VIEW_ALL, entry_with({.frequency = 11'002'500}));

  remove_everywhere({});

  EXPECT_FALSE(is_filed(1));
  EXPECT_EQ(count_of(VIEW_ALL), 0);
}

TEST_F(RemovalFromEveryView, AnEntryWithinTheToleranceGoes) {
  file(1);
  append_entry(VIEW_ALL, entry_with({.frequency = 11'002'499}));
  append_entry(VIEW_ALL, entry_with({.frequency = 10'997'501}));

  remove_everywhere({});

  EXPECT_FALSE(is_filed(1));
  EXPECT_EQ(count_of(VIEW_ALL), 0);
}

TEST_F(RemovalFromEveryView, WithoutAFrequencyAnEntryOfTheAllViewSavesTheChannel) {
  channel_st *service = file(1);
  append_entry(VIEW_ALL, entry_of(*service, 1));
  append_entry(VIEW_TV, entry_of(*service, 2));

  EXPECT_EQ(remove_everywhere({.frequency = 0}), 0);

  EXPECT_TRUE(is_filed(1));
  EXPECT_EQ(list.vch[0].rch, service);
  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{1}));
  EXPECT_EQ(majors(VIEW_TV), (std::vector<int>{2}));
}

TEST_F(RemovalFromEveryView, WithoutAFrequencyTheTagAndThePolarisationOfThatEntryDoNotMatter) {
  append_entry(VIEW_ALL, entry_of(*file(1), 1, 0, 7));

  remove_everywhere({.tag = 0, .frequency = 0, .polarisation = 1});

  EXPECT_TRUE(is_filed(1));
  EXPECT_EQ(count_of(VIEW_ALL), 1);
}

TEST_F(RemovalFromEveryView, WithoutAFrequencyAnEntryOfAnotherViewDoesNotSaveTheChannel) {
  append_entry(VIEW_TV, entry_of(*file(1), 1));

  remove_everywhere({.frequency = 0});

  EXPECT_FALSE(is_filed(1));
  EXPECT_EQ(count_of(VIEW_TV), 0);
}

TEST_F(RemovalFromEveryView, EntriesWithoutFrequencyAreRemovedByOne) {
  file(1);
  append_entry(VIEW_ALL, entry_with({.frequency = 0}));
  append_entry(VIEW_TV, entry_with({.frequency = 2499}));

  remove_everywhere({.frequency = 0});

  EXPECT_FALSE(is_filed(1));
  EXPECT_EQ(count_of(VIEW_ALL), 0);
  EXPECT_EQ(count_of(VIEW_TV), 0);
}

TEST_F(RemovalFromEveryView, TheSweepFollowsWhateverWasFound) {
  file(1);
  append_entry(VIEW_USER, entry_with({.service_id = 9}));

  EXPECT_EQ(remove_everywhere({.net_index = 2}), 0);

  EXPECT_EQ(count_of(VIEW_USER), 0);
  EXPECT_TRUE(is_filed(1));
}

TEST_F(RemovalFromEveryView, AnEmptyStoreIsNoFailure) {
  EXPECT_EQ(remove_everywhere({}), 0);
  EXPECT_EQ(remove_everywhere({.frequency = 0}), 0);
}

TEST_F(RemovalFromEveryView, TheCurrentViewStaysCurrentWhenItEmpties) {
  fill_view(VIEW_TV, 1);
  change_vindex_type(VIEW_TV);

  remove_everywhere({});

  EXPECT_EQ(get_vindex_type(), VIEW_TV);
  EXPECT_EQ(list.cur_vch, list.tv_vch);
  EXPECT_EQ(list.cur_vnumber, &list.tv_vnumber);
  EXPECT_EQ(get_channel_list_number(), 0);
}

TEST_F(RemovalFromEveryView, LogsStartDumpSweepAndEndAtLevelTwo) {
  const channel_st *service = fill_view(VIEW_ALL, 1)[0];
  const lines expected = joined({{start}, dump_of(service), {sweep_line, end}});

  EXPECT_EQ(writes_at(2, [] { return remove_everywhere({}); }), expected);
}

TEST_F(RemovalFromEveryView, WithoutAFrequencyTheSweepRunsTwice) {
  const lines expected = joined({{start}, dump_of(file(1)), {sweep_line, sweep_line, end}});

  EXPECT_EQ(writes_at(2, [] { return remove_everywhere({.frequency = 0}); }), expected);
}

TEST_F(RemovalFromEveryView, ASavedChannelIsNotDumped) {
  fill_view(VIEW_ALL, 1);

  EXPECT_EQ(writes_at(2, [] { return remove_everywhere({.frequency = 0}); }), (lines{start, sweep_line, end}));
}

TEST_F(RemovalFromEveryView, AMissingNetworkIsToldAtLevelThree) {
  file(1);
  const lines quiet = {start, sweep_line, end};
  const lines told = {
      start, "ChannelAPI get_network_ch_info:# Fail to find network_ch ni=2, on_id=0x1\n",
      "ChannelAPI remove_channel_st:# Fail to find network_ch ni=0x2,on_id=0x1,ts_id=0x64,freq=11000000,sid=0x1\n",
      sweep_line, end};

  EXPECT_EQ(writes_at(2, [] { return remove_everywhere({.net_index = 2}); }), quiet);
  EXPECT_EQ(writes_at(3, [] { return remove_everywhere({.net_index = 2}); }), told);
}

TEST_F(RemovalFromEveryView, IsSilentBelowLevelTwo) {
  fill_view(VIEW_ALL, 1);

  EXPECT_EQ(writes_at(1, [] { return remove_everywhere({}); }), lines{});
}

}  // namespace
