// Creating records: unset states, links, and the count of networks.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "support/hierarchy_walk.h"
#include "support/log_capture.h"
#include "support/owned_record.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

class NewRecords : public store_test {};

// The unset state of a real channel.
channel_st unset_channel() {
  channel_st unset;
  std::memset(&unset, 0, sizeof unset);
  unset.service_id = unset.pmt_pid = unset.pcr_pid = unset.video_pid = unset.video_ecm_pid = 0xFFFF;
  unset.audio_pid = unset.reserved_pid = unset.reserved_id = 0xFFFF;
  unset.video_tag = unset.audio_tag = 0xFF;
  return unset;
}

TEST_F(NewRecords, AClearedChannelIsZeroButForUnsetIdsPidsAndTags) {
  channel_st service;
  std::memset(&service, 0x5A, sizeof service);

  reset_channel(&service);

  const channel_st unset = unset_channel();
  EXPECT_EQ(std::memcmp(&service, &unset, sizeof service), 0);
}

TEST_F(NewRecords, ClearingNoChannelIsRefused) {
  const auto clear_nothing = [] {
    reset_channel(nullptr);
    return 0;
  };

  EXPECT_EQ(writes_at(0, clear_nothing), lines{"ERROR: reset_channel:# rch is null\n"});
  EXPECT_EQ(writes_at(-1, clear_nothing), lines{});
}

TEST_F(NewRecords, ANewChannelIsUnsetAndPointsToItself) {
  const owned<channel_st> service(alloc_channel_info());

  EXPECT_TRUE(points_to_itself(service->list));
  channel_st expected = unset_channel();
  expected.list = service->list;
  EXPECT_EQ(std::memcmp(service.get(), &expected, sizeof expected), 0);
  EXPECT_EQ(list.network_num, 0);
}

TEST_F(NewRecords, ANewTransponderIsUnlinkedAndEmpty) {
  const owned<tp_ch_st> transponder(alloc_tp_ch_info(0xFFFF, 0xFFFFFFFF, 255));

  tp_ch_st expected;
  std::memset(&expected, 0, sizeof expected);
  expected.list = {&transponder->list, &transponder->list};
  expected.ts_id = 0xFFFF;
  expected.frequency = 0xFFFFFFFF;
  expected.polarisation = 255;
  expected.rch_list = {&transponder->rch_list, &transponder->rch_list};
  EXPECT_EQ(std::memcmp(transponder.get(), &expected, sizeof expected), 0);
  EXPECT_TRUE(networks().empty());
}

TEST_F(NewRecords, ANewNetworkIsAppendedAndCounted) {
  const network_ch_st *first = alloc_network_ch_info(1, 2, nullptr);
  const network_ch_st *second = alloc_network_ch_info(255, 0xFFFF, nullptr);

  EXPECT_EQ(list.network_num, 2);
  ASSERT_EQ(networks().size(), 2U);
  EXPECT_EQ(networks()[0], first);
  EXPECT_EQ(networks()[1], second);
  EXPECT_EQ(second->net_index, 255);
  EXPECT_EQ(second->network_id, 0xFFFF);
  EXPECT_TRUE(points_to_itself(second->tp_list));
}

TEST_F(NewRecords, ANewNetworkIsZeroButForItsIdentityAndLists) {
  const network_ch_st *network = alloc_network_ch_info(3, 4, nullptr);

  network_ch_st expected;
  std::memset(&expected, 0, sizeof expected);
  expected.list = {&list.network_list, &list.network_list};
  expected.net_index = 3;
  expected.network_id = 4;
  expected.tp_list = {const_cast<list_head *>(&network->tp_list), const_cast<list_head *>(&network->tp_list)};
  EXPECT_EQ(std::memcmp(network, &expected, sizeof expected), 0);
}

TEST_F(NewRecords, ANetworkTakesAll64BytesOfItsName) {
  const owned<char> name(static_cast<char *>(std::malloc(64)));
  std::memset(name.get(), 'n', 64);
  name.get()[3] = '\0';

  const network_ch_st *network = alloc_network_ch_info(1, 1, name.get());

  EXPECT_EQ(std::memcmp(network->network_name, name.get(), 64), 0);
  EXPECT_EQ(network->tp_num, 0);
}

TEST_F(NewRecords, NetworksAreCountedTo65535AndNoFurther) {
  list.network_num = 65'534;
  EXPECT_NE(alloc_network_ch_info(1, 1, nullptr), nullptr);
  EXPECT_EQ(list.network_num, 65'535);

  const log_capture log(0);
  EXPECT_EQ(alloc_network_ch_info(2, 2, nullptr), nullptr);

  EXPECT_EQ(log.writes(), lines{"ERROR: alloc_network_ch_info:# list is full, 65535 records\n"});
  EXPECT_EQ(list.network_num, 65'535);
  EXPECT_EQ(networks().size(), 1U);
}

}  // namespace
