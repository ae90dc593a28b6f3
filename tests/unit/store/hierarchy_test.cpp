// Filing channels: where a channel goes, duplicates, full counts, and what is logged.
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

class Hierarchy : public store_test {};

TEST_F(Hierarchy, FilingCreatesTheNetworkAndTheTransponderFromTheChannel) {
  char name[64] = "Nordic";
  channel_st *service = make_service(
      {.net_index = 255, .network_id = 0xFFFF, .ts_id = 0x8001, .frequency = 0xFFFFFFFF, .polarisation = 2});

  EXPECT_EQ(add_rch_info(service, name), 0);

  ASSERT_TRUE(counts_match_lists());
  const network_ch_st *network = networks().at(0);
  EXPECT_EQ(network->net_index, 255);
  EXPECT_EQ(network->network_id, 0xFFFF);
  EXPECT_EQ(std::memcmp(network->network_name, name, sizeof name), 0);
  const tp_ch_st *transponder = transponders(*network).at(0);
  EXPECT_EQ(transponder->ts_id, 0x8001);
  EXPECT_EQ(transponder->frequency, 0xFFFFFFFF);
  EXPECT_EQ(transponder->polarisation, 2);
  EXPECT_EQ(services(*transponder), std::vector<channel_st *>{service});
}

TEST_F(Hierarchy, ANetworkThatIsThereKeepsItsName) {
  file_service({});
  const char other[64] = "Other";

  add_rch_info(make_service({.service_id = 2}), other);

  ASSERT_EQ(networks().size(), 1U);
  EXPECT_STREQ(networks()[0]->network_name, "Network");
}

TEST_F(Hierarchy, FilingWithoutANameLeavesTheNameOfTheNewNetworkEmpty) {
  EXPECT_EQ(add_rch_info(make_service({}), nullptr), 0);

  EXPECT_STREQ(networks().at(0)->network_name, "");
}

TEST_F(Hierarchy, ChannelsAreFiledInOrderBehindOneAnother) {
  const std::vector<channel_st *> filed = {file_service({.service_id = 3}), file_service({.service_id = 1}),
                                           file_service({.service_id = 2})};

  EXPECT_EQ(services(*transponders(*networks().at(0)).at(0)), filed);
}

TEST_F(Hierarchy, AChannelJoinsATransponderLessThan2500Away) {
  for (const int distance : {-2499, -1, 0, 1, 2499}) {
    file_service({.service_id = 1});

    file_service({.frequency = 11'000'000 + distance, .service_id = 2});

    EXPECT_EQ(transponders(*networks().at(0)).size(), 1U) << distance;
    EXPECT_TRUE(counts_match_lists());
    reset_channel_list();
  }
}

TEST_F(Hierarchy, AChannel2500AwayGetsATransponderOfItsOwn) {
  for (const int distance : {-2501, -2500, 2500, 2501}) {
    file_service({.service_id = 1});

    file_service({.frequency = 11'000'000 + distance, .service_id = 1});

    EXPECT_EQ(transponders(*networks().at(0)).size(), 2U) << distance;
    EXPECT_TRUE(counts_match_lists());
    reset_channel_list();
  }
}

TEST_F(Hierarchy, AChannelWithAFrequencyJoinsWhateverTheTransportStreamIdIs) {
  file_service({.ts_id = 100, .service_id = 1});

  file_service({.ts_id = 200, .service_id = 2});

  ASSERT_EQ(transponders(*networks().at(0)).size(), 1U);
  EXPECT_EQ(transponders(*networks()[0])[0]->ts_id, 100);
}

TEST_F(Hierarchy, PolarisationsKeepTranspondersApartEvenIfBothAreVertical) {
  file_service({.polarisation = 1});

  file_service({.polarisation = 2});
  file_service({.polarisation = 0});

  EXPECT_EQ(transponders(*networks().at(0)).size(), 3U);
}

TEST_F(Hierarchy, AChannelWithoutFrequencyJoinsTheTransportStream) {
  file_service({.ts_id = 100, .service_id = 1});

  file_service({.ts_id = 100, .frequency = 0, .service_id = 2, .polarisation = 1});
  file_service({.ts_id = 101, .frequency = 0, .service_id = 3});

  const auto found = transponders(*networks().at(0));
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0]->rch_num, 2);
  EXPECT_EQ(found[1]->ts_id, 101);
  EXPECT_EQ(found[1]->frequency, 0U);
}

TEST_F(Hierarchy, ATransponderTakesTheLow32BitsOfTheFrequency) {
  file_service({.frequency = 0x1'0000'0000 + 11'000'000, .service_id = 1});
  file_service({.frequency = 11'000'000, .service_id = 2});

  const auto found = transponders(*networks().at(0));
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0]->frequency, 11'000'000U);
}

TEST_F(Hierarchy, NetIndexAndNetworkIdEachMakeANetwork) {
  file_service({.net_index = 1, .network_id = 1});
  file_service({.net_index = 1, .network_id = 2});
  file_service({.net_index = 2, .network_id = 1});

  EXPECT_EQ(list.network_num, 3);
  EXPECT_TRUE(counts_match_lists());
}

TEST_F(Hierarchy, AServiceThatIsThereIsNotFiledAgainAndStaysTheHosts) {
  channel_st *filed = file_service({});
  const owned<channel_st> refused(make_service({}));

  EXPECT_EQ(add_rch_info(refused.get(), nullptr), 0);

  const tp_ch_st *transponder = transponders(*networks().at(0)).at(0);
  EXPECT_EQ(services(*transponder), std::vector<channel_st *>{filed});
  EXPECT_EQ(transponder->rch_num, 1);
  EXPECT_TRUE(points_to_itself(refused->list));
}

TEST_F(Hierarchy, FilingAFiledRecordAgainChangesNothing) {
  channel_st *filed = file_service({});

  EXPECT_EQ(add_rch_info(filed, nullptr), 0);

  EXPECT_TRUE(counts_match_lists());
  EXPECT_EQ(transponders(*networks().at(0)).at(0)->rch_num, 1);
}

TEST_F(Hierarchy, ARecordThatTheHostHasAllocatedItselfIsFiled) {
  auto *service = static_cast<channel_st *>(std::calloc(1, sizeof(channel_st)));
  service->service_id = 9;

  EXPECT_EQ(add_rch_info(service, nullptr), 0);

  EXPECT_EQ(get_channel_st(0, 0, 0, 0, 9, 0), service);
}

TEST_F(Hierarchy, NoViewGetsAnEntryForAFiledChannel) {
  file_service({});

  for (const int view : {0, 1, 2, 3, 4, 5, 10}) {
    EXPECT_EQ(*get_virtual_channel_vnumber(static_cast<std::int8_t>(view)), 0) << "view " << view;
  }
}

TEST_F(Hierarchy, FilingNothingIsRefused) {
  const auto file_nothing = [] { return add_rch_info(nullptr, nullptr); };

  EXPECT_EQ(file_nothing(), -1);
  EXPECT_EQ(writes_at(0, file_nothing), lines{"ERROR: add_rch_info:# rch is null\n"});
  EXPECT_EQ(list.network_num, 0);
}

TEST_F(Hierarchy, AChannelThatNeedsA65536thNetworkIsRefused) {
  list.network_num = 65'535;
  const owned<channel_st> refused(make_service({}));

  EXPECT_EQ(add_rch_info(refused.get(), nullptr), -1);

  EXPECT_TRUE(networks().empty());
  EXPECT_EQ(list.network_num, 65'535);
}

TEST_F(Hierarchy, ANetworkCounts65535TranspondersAndNoMore) {
  file_service({});
  networks().at(0)->tp_num = 65'534;
  file_service({.frequency = 12'000'000});
  EXPECT_EQ(networks()[0]->tp_num, 65'535);
  const owned<channel_st> refused(make_service({.frequency = 13'000'000}));

  const log_capture log(0);
  EXPECT_EQ(add_rch_info(refused.get(), nullptr), -1);

  EXPECT_EQ(log.writes(), lines{"ERROR: add_rch_info:# list is full, 65535 records\n"});
  EXPECT_EQ(transponders(*networks()[0]).size(), 2U);
  EXPECT_TRUE(points_to_itself(refused->list));
}

TEST_F(Hierarchy, ATransponderCounts65535ChannelsAndNoMore) {
  file_service({.service_id = 1});
  tp_ch_st *transponder = transponders(*networks().at(0)).at(0);
  transponder->rch_num = 65'534;
  file_service({.service_id = 2});
  EXPECT_EQ(transponder->rch_num, 65'535);
  const owned<channel_st> refused(make_service({.service_id = 3}));

  const log_capture log(0);
  EXPECT_EQ(add_rch_info(refused.get(), nullptr), -1);

  EXPECT_EQ(log.writes(), lines{"ERROR: add_rch_info:# list is full, 65535 records\n"});
  EXPECT_EQ(services(*transponder).size(), 2U);
  EXPECT_EQ(transponder->rch_num, 65'535);
}

}  // namespace
