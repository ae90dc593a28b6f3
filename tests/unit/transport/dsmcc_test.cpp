// Finding the channel that carries the DSM-CC data service in the current view.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>

#include "support/hierarchy_walk.h"
#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

class DataServiceChannel : public store_test {};

std::string visited(int index, const std::string &flag) {
  return "ChannelAPI get_dsmcc_channel:# ch index=" + std::to_string(index) + " flag 0x" + flag + "\n";
}

TEST_F(DataServiceChannel, IsTheFirstWithTheFlag) {
  const auto services = fill_view(VIEW_ALL, 5);
  services[2]->flag = CHANNEL_FLAG_DSMCC;
  services[4]->flag = 0xFF;
  EXPECT_EQ(get_dsmcc_channel(), 2);

  services[2]->flag = 0xDF;
  EXPECT_EQ(get_dsmcc_channel(), 4);

  services[0]->flag = CHANNEL_FLAG_DSMCC;
  EXPECT_EQ(get_dsmcc_channel(), 0);
}

TEST_F(DataServiceChannel, MayBeTheVeryLast) {
  fill_everything();
  get_channel_st(2, 2, 1499, 10'700'000 + 249 / 2 * 20'000, 5000, 1)->flag = CHANNEL_FLAG_DSMCC;
  change_vindex_type(VIEW_ALL);

  EXPECT_EQ(get_dsmcc_channel(), 4999);
}

TEST_F(DataServiceChannel, IsMissingWhenNoChannelHasTheFlag) {
  for (channel_st *service : fill_view(VIEW_ALL, 3)) {
    service->flag = 0xDF;
  }

  EXPECT_EQ(get_dsmcc_channel(), -1);
}

TEST_F(DataServiceChannel, IsSearchedInTheCurrentView) {
  const auto services = fill_view(VIEW_ALL, 4);
  services[3]->flag = CHANNEL_FLAG_DSMCC;
  append_entry(VIEW_TV, entry_of(*services[1], 1));
  append_entry(VIEW_TV, entry_of(*services[3], 2));
  append_entry(13, entry_of(*services[1], 1));

  EXPECT_EQ(get_dsmcc_channel(), 3);
  change_vindex_type(VIEW_TV);
  EXPECT_EQ(get_dsmcc_channel(), 1);
  change_vindex_type(13);
  EXPECT_EQ(get_dsmcc_channel(), -1);
}

// Compatibility: the channel is found again from the entry's identity; the entry's own pointer is not used.
TEST_F(DataServiceChannel, IsResolvedFromTheEntrysIdentity) {
  const auto services = fill_view(VIEW_ALL, 2);
  services[0]->flag = CHANNEL_FLAG_DSMCC;
  list.vch[0].rch = nullptr;
  list.vch[1].rch = services[0];
  EXPECT_EQ(get_dsmcc_channel(), 0);

  services[0]->flag = 0;
  services[1]->flag = CHANNEL_FLAG_DSMCC;
  EXPECT_EQ(get_dsmcc_channel(), 1);
}

TEST_F(DataServiceChannel, EntriesThatDoNotResolveDoNotMatch) {
  fill_unfiled(VIEW_ALL, 2);
  channel_st *service = file_service({.service_id = 9, .flag = CHANNEL_FLAG_DSMCC});
  list.vch[0].rch = service;
  EXPECT_EQ(get_dsmcc_channel(), -1);

  append_entry(VIEW_ALL, entry_of(*service, 3));
  EXPECT_EQ(writes_at(2, [] { EXPECT_EQ(get_dsmcc_channel(), 2); }), lines{visited(2, "20")});
}

TEST_F(DataServiceChannel, VisitsAreLoggedAtLevelTwo) {
  const auto services = fill_view(VIEW_ALL, 4);
  services[1]->flag = 0x0F;
  services[2]->flag = 0xFF;

  EXPECT_EQ(writes_at(2, get_dsmcc_channel), (lines{visited(0, "00"), visited(1, "0f"), visited(2, "ff")}));
  EXPECT_EQ(writes_at(1, get_dsmcc_channel), lines{});
}

TEST_F(DataServiceChannel, AnEmptyViewHasNoneSilently) {
  fill_view(VIEW_ALL, 1)[0]->flag = CHANNEL_FLAG_DSMCC;
  for (const int count : {0, -1, -32768}) {
    list.vnumber = static_cast<std::int16_t>(count);
    EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(get_dsmcc_channel(), -1); }), lines{}) << count;
  }
}

TEST_F(DataServiceChannel, ACountAboveTheArrayIsReadAsTheArrays) {
  fill_unfiled(VIEW_PROMOTION, 10);
  change_vindex_type(VIEW_PROMOTION);
  list.promo_vnumber = 11;

  EXPECT_EQ(get_dsmcc_channel(), -1);
}

TEST_F(DataServiceChannel, WithoutACurrentViewThereIsNone) {
  const lines expected = {"ERROR: get_dsmcc_channel:#  channel_list NULL !! "};
  virtual_channel_st *entries = list.cur_vch;
  std::int16_t *count = list.cur_vnumber;

  list.cur_vch = nullptr;
  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(get_dsmcc_channel(), -1); }), expected);
  EXPECT_EQ(writes_at(-1, get_dsmcc_channel), lines{});
  list.cur_vch = entries;
  list.cur_vnumber = nullptr;
  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(get_dsmcc_channel(), -1); }), expected);
  list.cur_vnumber = count;
}

}  // namespace
