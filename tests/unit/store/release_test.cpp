// Releasing channels, transponders and networks: which counts fall, what stays, and what is logged. The pointers that
// views and the history keep to freed channels have tests of their own.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <functional>

#include "support/hierarchy_walk.h"
#include "support/log_capture.h"
#include "support/records_by_hand.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

class Release : public store_test {};

TEST_F(Release, AChannelLeavesItsTransponderAndLowersItsCount) {
  channel_st *first = file_service({.service_id = 1});
  channel_st *second = file_service({.service_id = 2});

  release_rch_info(first);

  ASSERT_TRUE(counts_match_lists());
  const tp_ch_st *transponder = transponders(*networks().at(0)).at(0);
  EXPECT_EQ(services(*transponder), std::vector<channel_st *>{second});
  EXPECT_EQ(transponder->rch_num, 1);
}

TEST_F(Release, ATransponderWithoutChannelsStays) {
  release_rch_info(file_service({}));

  ASSERT_TRUE(counts_match_lists());
  ASSERT_EQ(transponders(*networks().at(0)).size(), 1U);
  EXPECT_EQ(transponders(*networks()[0])[0]->rch_num, 0);
  EXPECT_EQ(list.network_num, 1);
}

TEST_F(Release, AChannelsReleaseIsNotLogged) {
  channel_st *service = file_service({});

  const auto writes = writes_at(9, [service] {
    release_rch_info(service);
    return 0;
  });

  EXPECT_EQ(writes, lines{});
}

TEST_F(Release, OnlyNetworksOfTheChannelsIdentityAreCountedDown) {
  channel_st *service = file_service({.net_index = 1, .network_id = 1});
  file_service({.net_index = 1, .network_id = 2});
  file_service({.net_index = 2, .network_id = 1});

  release_rch_info(service);

  EXPECT_TRUE(counts_match_lists());
}

TEST_F(Release, TheCountIsLoweredOnATransponderLessThan2500Away) {
  for (const int distance : {-2499, -1, 0, 1, 2499}) {
    channel_st *service = file_service({});
    service->frequency += distance;

    release_rch_info(service);

    EXPECT_EQ(transponders(*networks().at(0)).at(0)->rch_num, 0) << distance;
    reset_channel_list();
  }
}

// The search for the transponder looks at the transport stream id as well, at a frequency of 64 bits and at the
// polarisation; the finders look at less.
class MatchingTransponder : public Release {
 protected:
  // A service on a transponder of its own, in front of which another network has one like it.
  void SetUp() override {
    Release::SetUp();
    doubled_ = append_transponder(*alloc_network_ch_info(1, 1, nullptr), 100, 11'000'000, 1);
    append_service(*doubled_, {.service_id = 9});
    own_ = append_transponder(*alloc_network_ch_info(1, 1, nullptr), 555, 22'000'000, 0);
    service_ = append_service(*own_, {.polarisation = 1});
  }

  tp_ch_st *doubled_ = nullptr;
  tp_ch_st *own_ = nullptr;
  channel_st *service_ = nullptr;
};

TEST_F(MatchingTransponder, IsCountedDownInsteadOfTheOneThatHoldsTheChannel) {
  release_rch_info(service_);

  EXPECT_EQ(doubled_->rch_num, 0);
  EXPECT_EQ(own_->rch_num, 1);
}

TEST_F(MatchingTransponder, IsNotOneOfAnotherTransportStream) {
  service_->ts_id = 101;

  release_rch_info(service_);

  EXPECT_EQ(doubled_->rch_num, 1);
}

TEST_F(MatchingTransponder, IsNotOneOfAnotherPolarisation) {
  service_->polarisation = 2;

  release_rch_info(service_);

  EXPECT_EQ(doubled_->rch_num, 1);
}

TEST_F(MatchingTransponder, IsNotOne2500Away) {
  for (const std::int64_t distance : {-2501LL, -2500LL, 2500LL, 2501LL, 0x1'0000'0000LL, -0x1'0000'0000LL}) {
    channel_st *service = append_service(*own_, {.frequency = 11'000'000 + distance, .polarisation = 1});

    release_rch_info(service);

    EXPECT_EQ(doubled_->rch_num, 1) << distance;
  }
}

// Where no transponder matches, the one that holds the channel is counted down: a count that stays too high makes the
// next file one that is read out of frame.
class TransponderThatHoldsTheChannel : public Release {
 protected:
  // Releases a channel that hangs beside another one of its transponder.
  static void expect_counted_down_after(const std::function<void(channel_st &)> &change) {
    channel_st *service = file_service({.service_id = 1});
    channel_st *left = file_service({.service_id = 2});
    file_service({.net_index = 2, .service_id = 3});
    change(*service);

    release_rch_info(service);

    EXPECT_TRUE(counts_match_lists());
    EXPECT_EQ(services(*transponders(*networks().at(0)).at(0)), std::vector<channel_st *>{left});
    reset_channel_list();
  }
};

TEST_F(TransponderThatHoldsTheChannel, IsCountedDownWhenTheBroadcasterChangedTheTransportStreamId) {
  expect_counted_down_after([](channel_st &service) { service.ts_id = 200; });
}

TEST_F(TransponderThatHoldsTheChannel, IsCountedDownWhenTheChannelHasAnotherPolarisation) {
  expect_counted_down_after([](channel_st &service) { service.polarisation = 1; });
}

TEST_F(TransponderThatHoldsTheChannel, IsCountedDownWhenTheChannelHasAnotherFrequency) {
  for (const std::int64_t distance : {-2500LL, 2500LL, 0x1'0000'0000LL, -0x1'0000'0000LL, -11'000'000LL}) {
    expect_counted_down_after([distance](channel_st &service) { service.frequency += distance; });
  }
}

TEST_F(TransponderThatHoldsTheChannel, IsCountedDownWhenTheChannelIsOfAnotherNetwork) {
  expect_counted_down_after([](channel_st &service) { service.network_id = 7; });
  expect_counted_down_after([](channel_st &service) { service.net_index = 7; });
}

TEST_F(TransponderThatHoldsTheChannel, IsCountedDownWhenTheChannelWasFiledThereByItsFrequency) {
  file_service({.ts_id = 100, .service_id = 1});
  channel_st *other_stream = file_service({.ts_id = 200, .service_id = 2});

  release_rch_info(other_stream);

  EXPECT_TRUE(counts_match_lists());
}

TEST_F(TransponderThatHoldsTheChannel, IsCountedDownWhenTheChannelWasFiledThereByItsTransportStreamId) {
  file_service({.ts_id = 100, .service_id = 1});
  channel_st *without_frequency = file_service({.ts_id = 100, .frequency = 0, .service_id = 2});
  ASSERT_EQ(transponders(*networks().at(0)).size(), 1U);

  release_rch_info(without_frequency);

  EXPECT_TRUE(counts_match_lists());
}

TEST_F(TransponderThatHoldsTheChannel, IsNoneOfAChannelInNoList) {
  file_service({.service_id = 1});
  channel_st *unfiled = make_service({.ts_id = 200, .service_id = 2});

  release_rch_info(unfiled);

  EXPECT_TRUE(counts_match_lists());
}

TEST_F(TransponderThatHoldsTheChannel, NeverCountsBelowZero) {
  channel_st *service = file_service({});
  service->ts_id = 200;
  transponders(*networks().at(0)).at(0)->rch_num = 0;

  release_rch_info(service);

  EXPECT_EQ(transponders(*networks().at(0)).at(0)->rch_num, 0);
}

TEST_F(Release, TheFirstMatchingTransponderOfANetworkIsCountedDownEvenIfAnotherHoldsTheChannel) {
  file_service({});
  network_ch_st *network = networks().at(0);
  tp_ch_st *second = append_transponder(*network, 100, 11'002'000, 0);
  channel_st *service = append_service(*second, {.frequency = 11'002'000, .service_id = 2});

  release_rch_info(service);

  EXPECT_EQ(transponders(*network).at(0)->rch_num, 0);
  EXPECT_EQ(second->rch_num, 1);
  EXPECT_TRUE(services(*second).empty());
}

TEST_F(Release, EveryNetworkOfTheChannelsIdentityIsCountedDown) {
  channel_st *service = file_service({});
  network_ch_st *doubled = alloc_network_ch_info(1, 1, nullptr);
  tp_ch_st *same_transponder = append_transponder(*doubled, 100, 11'000'000, 0);
  same_transponder->rch_num = 5;

  release_rch_info(service);

  EXPECT_EQ(transponders(*networks().at(0)).at(0)->rch_num, 0);
  EXPECT_EQ(same_transponder->rch_num, 4);
}

TEST_F(Release, CountsNeverFallBelowZero) {
  channel_st *service = file_service({});
  tp_ch_st *transponder = transponders(*networks().at(0)).at(0);
  transponder->rch_num = 0;
  release_rch_info(service);
  EXPECT_EQ(transponder->rch_num, 0);

  list.network_num = 0;
  release_network_ch_info(networks().at(0));

  EXPECT_EQ(list.network_num, 0);
  EXPECT_TRUE(networks().empty());
}

TEST_F(Release, ATransponderGoesWithItsChannelsAndItsNetworkStillCountsIt) {
  file_service({.service_id = 1});
  file_service({.service_id = 2});
  file_service({.frequency = 12'000'000, .service_id = 3});
  network_ch_st *network = networks().at(0);

  release_tp_ch_info(transponders(*network).at(0));

  ASSERT_EQ(transponders(*network).size(), 1U);
  EXPECT_EQ(transponders(*network)[0]->frequency, 12'000'000U);
  EXPECT_EQ(network->tp_num, 2);
  network->tp_num = 1;
  EXPECT_TRUE(counts_match_lists());
}

TEST_F(Release, ATransponderInNoNetworkIsReleased) {
  tp_ch_st *transponder = alloc_tp_ch_info(1, 2, 0);

  release_tp_ch_info(transponder);

  EXPECT_TRUE(networks().empty());
}

TEST_F(Release, ATranspondersReleaseIsLoggedAtLevel2) {
  for (const auto &[level, expected] :
       {std::pair{2, lines{"ChannelAPI release_tp_ch_info:# \n"}}, std::pair{1, lines{}}}) {
    tp_ch_st *transponder = alloc_tp_ch_info(1, 2, 0);

    EXPECT_EQ(writes_at(level,
                        [transponder] {
                          release_tp_ch_info(transponder);
                          return 0;
                        }),
              expected);
  }
}

TEST_F(Release, ANetworkGoesWithEverythingBelowAndIsCountedDown) {
  file_service({.net_index = 1});
  file_service({.net_index = 2, .service_id = 1});
  file_service({.net_index = 2, .frequency = 12'000'000, .service_id = 2});
  file_service({.net_index = 3});

  release_network_ch_info(networks().at(1));

  ASSERT_TRUE(counts_match_lists());
  ASSERT_EQ(list.network_num, 2);
  EXPECT_EQ(networks()[0]->net_index, 1);
  EXPECT_EQ(networks()[1]->net_index, 3);
}

TEST_F(Release, ANetworksReleaseLogsEachTransponderAtLevel2) {
  for (const int level : {2, 1}) {
    file_service({.service_id = 1});
    file_service({.frequency = 12'000'000, .service_id = 2});
    const lines each = level < 2 ? lines{} : lines(2, "ChannelAPI release_tp_ch_info:# \n");

    EXPECT_EQ(writes_at(level,
                        [] {
                          release_network_ch_info(networks().at(0));
                          return 0;
                        }),
              each);
  }
}

TEST_F(Release, AnEmptyNetworkIsReleased) {
  release_network_ch_info(alloc_network_ch_info(1, 1, nullptr));

  EXPECT_TRUE(counts_match_lists());
  EXPECT_EQ(list.network_num, 0);
}

TEST_F(Release, NullRecordsAreRefused) {
  const auto release_nothing = [] {
    release_rch_info(nullptr);
    release_tp_ch_info(nullptr);
    release_network_ch_info(nullptr);
    return 0;
  };

  EXPECT_EQ(writes_at(0, release_nothing),
            (lines{"ERROR: release_rch_info:# rch is null\n", "ERROR: release_tp_ch_info:# tp is null\n",
                   "ERROR: release_network_ch_info:# network is null\n"}));
  EXPECT_EQ(writes_at(-1, release_nothing), lines{});
}

}  // namespace
