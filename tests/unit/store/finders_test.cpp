// The finders of the hierarchy: what matches, which match wins, and at which level a miss is logged.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include "support/hierarchy_walk.h"
#include "support/log_capture.h"
#include "support/records_by_hand.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

class Finders : public store_test {
 protected:
  // The only network of a test.
  static network_ch_st *network() { return networks().at(0); }
};

const lines no_network = {"ChannelAPI get_network_ch_info:# Fail to find network_ch ni=255, on_id=0xabcd\n"};
const lines no_transponder = {
    "ChannelAPI get_tp_ch_info_by_network_ch:# Fail to find tp_ch ts_id=0xabcd, freq=-1, polar 255 \n"};

TEST_F(Finders, ANetworkIsFoundByBothItsIds) {
  file_service({.net_index = 1, .network_id = 1});
  file_service({.net_index = 1, .network_id = 0xFFFF});
  file_service({.net_index = 255, .network_id = 1});

  EXPECT_EQ(get_network_ch_info(1, 0xFFFF), networks()[1]);
  EXPECT_EQ(get_network_ch_info(255, 1), networks()[2]);
  EXPECT_EQ(get_network_ch_info(255, 0xFFFF), nullptr);
}

TEST_F(Finders, TheFirstOfTwoNetworksWithOneIdentityIsFound) {
  network_ch_st *first = alloc_network_ch_info(1, 1, nullptr);
  alloc_network_ch_info(1, 1, nullptr);

  EXPECT_EQ(get_network_ch_info(1, 1), first);
}

TEST_F(Finders, ANetworkIsFoundWhateverNumberIsCounted) {
  file_service({});
  list.network_num = 0;

  EXPECT_EQ(get_network_ch_info(1, 1), networks().at(0));
  list.network_num = 1;
}

TEST_F(Finders, AMissingNetworkIsLoggedAtLevel3) {
  const auto find = [] { return get_network_ch_info(255, 0xABCD); };

  EXPECT_EQ(writes_at(3, find), no_network);
  EXPECT_EQ(writes_at(2, find), lines{});
}

TEST_F(Finders, ANetworkThatIsFoundIsNotLogged) {
  file_service({});

  EXPECT_EQ(writes_at(5, [] { return get_network_ch_info(1, 1); }), lines{});
}

TEST_F(Finders, ATransponderIsFoundLessThan2500Away) {
  file_service({});
  tp_ch_st *transponder = transponders(*network()).at(0);

  for (const std::uint32_t distance : {0U, 1U, 2499U}) {
    EXPECT_EQ(get_tp_ch_info_by_network_ch(network(), 100, 11'000'000 + distance, 0), transponder) << distance;
    EXPECT_EQ(get_tp_ch_info_by_network_ch(network(), 100, 11'000'000 - distance, 0), transponder) << distance;
  }
}

TEST_F(Finders, ATransponder2500AwayIsAnotherOne) {
  file_service({});

  for (const std::uint32_t distance : {2500U, 2501U, 1'000'000U}) {
    EXPECT_EQ(get_tp_ch_info_by_network_ch(network(), 100, 11'000'000 + distance, 0), nullptr) << distance;
    EXPECT_EQ(get_tp_ch_info_by_network_ch(network(), 100, 11'000'000 - distance, 0), nullptr) << distance;
  }
}

TEST_F(Finders, TheToleranceDoesNotReachAroundTheEndOfTheRange) {
  file_service({.frequency = 0xFFFFFFFF});

  EXPECT_EQ(get_tp_ch_info_by_network_ch(network(), 100, 1, 0), nullptr);
  EXPECT_EQ(get_tp_ch_info_by_network_ch(network(), 100, 0xFFFFFFFF - 2500, 0), nullptr);
  EXPECT_NE(get_tp_ch_info_by_network_ch(network(), 100, 0xFFFFFFFF - 2499, 0), nullptr);
}

TEST_F(Finders, ATransponderWithAFrequencyIsFoundWhateverItsTransportStreamIdIs) {
  file_service({.ts_id = 100});

  EXPECT_NE(get_tp_ch_info_by_network_ch(network(), 200, 11'000'000, 0), nullptr);
}

TEST_F(Finders, PolarisationsAreComparedExactly) {
  file_service({.polarisation = 1});

  EXPECT_NE(get_tp_ch_info_by_network_ch(network(), 100, 11'000'000, 1), nullptr);
  EXPECT_EQ(get_tp_ch_info_by_network_ch(network(), 100, 11'000'000, 0), nullptr);
  EXPECT_EQ(get_tp_ch_info_by_network_ch(network(), 100, 11'000'000, 2), nullptr);
}

TEST_F(Finders, WithoutAFrequencyTheTransportStreamIdAloneCounts) {
  file_service({.ts_id = 100, .polarisation = 1});

  EXPECT_EQ(get_tp_ch_info_by_network_ch(network(), 100, 0, 0), transponders(*network()).at(0));
  EXPECT_EQ(get_tp_ch_info_by_network_ch(network(), 101, 0, 1), nullptr);
}

TEST_F(Finders, TheFirstMatchingTransponderInListOrderIsFound) {
  file_service({.ts_id = 100, .frequency = 11'000'000});
  file_service({.ts_id = 100, .frequency = 11'004'000, .service_id = 2});
  const auto found = transponders(*network());

  EXPECT_EQ(get_tp_ch_info_by_network_ch(network(), 0, 11'002'000, 0), found.at(0));
  EXPECT_EQ(get_tp_ch_info_by_network_ch(network(), 100, 0, 0), found.at(0));
  EXPECT_EQ(get_tp_ch_info_by_network_ch(network(), 0, 11'002'500, 0), found.at(1));
}

TEST_F(Finders, AMissingTransponderIsLoggedAtLevel3) {
  const network_ch_st *empty = alloc_network_ch_info(1, 1, nullptr);
  const auto find = [empty] {
    return get_tp_ch_info_by_network_ch(const_cast<network_ch_st *>(empty), 0xABCD, 0xFFFFFFFF, 255);
  };

  EXPECT_EQ(writes_at(3, find), no_transponder);
  EXPECT_EQ(writes_at(2, find), lines{});
}

TEST_F(Finders, ASearchInNoNetworkIsRefused) {
  const auto find = [] { return get_tp_ch_info_by_network_ch(nullptr, 1, 1, 1); };

  EXPECT_EQ(find(), nullptr);
  EXPECT_EQ(writes_at(0, find), lines{"ERROR: get_tp_ch_info_by_network_ch:# network is null\n"});
  EXPECT_EQ(writes_at(-1, find), lines{});
}

TEST_F(Finders, AChannelOfATransponderIsFoundByItsServiceId) {
  file_service({.service_id = 1});
  channel_st *last = file_service({.service_id = 0xFFFF});
  tp_ch_st *transponder = transponders(*network()).at(0);

  EXPECT_EQ(get_rch_ch_info_by_tp_ch(transponder, 0xFFFF), last);
  EXPECT_EQ(get_rch_ch_info_by_tp_ch(transponder, 2), nullptr);
}

TEST_F(Finders, TheFirstOfTwoChannelsWithOneServiceIdIsFound) {
  channel_st *first = file_service({.service_id = 1});
  file_service({.service_id = 2})->service_id = 1;

  EXPECT_EQ(get_rch_ch_info_by_tp_ch(transponders(*network()).at(0), 1), first);
}

TEST_F(Finders, ChannelsThatAreMissingOrSoughtOnNoTransponderAreNotLogged) {
  file_service({});
  tp_ch_st *transponder = transponders(*network()).at(0);

  EXPECT_EQ(get_rch_ch_info_by_tp_ch(nullptr, 1), nullptr);
  EXPECT_EQ(writes_at(9, [] { return get_rch_ch_info_by_tp_ch(nullptr, 1); }), lines{});
  EXPECT_EQ(writes_at(9, [transponder] { return get_rch_ch_info_by_tp_ch(transponder, 9); }), lines{});
}

TEST_F(Finders, AnIdentityResolvesToItsChannel) {
  file_service({.service_id = 1});
  channel_st *sought = file_service({.net_index = 255,
                                     .network_id = 0xFFFF,
                                     .ts_id = 0xFFFF,
                                     .frequency = 0xFFFFFFFF,
                                     .service_id = 0xFFFF,
                                     .polarisation = 255});

  EXPECT_EQ(get_channel_st(255, 0xFFFF, 0xFFFF, 0xFFFFFFFF, 0xFFFF, 255), sought);
  EXPECT_EQ(writes_at(9, [] { return get_channel_st(255, 0xFFFF, 0xFFFF, 0xFFFFFFFF, 0xFFFF, 255); }), lines{});
}

TEST_F(Finders, EveryPartOfAnIdentityButTheTransportStreamCountsWithAFrequency) {
  channel_st *service = file_service({});

  EXPECT_EQ(get_channel_st(2, 1, 100, 11'000'000, 1, 0), nullptr);
  EXPECT_EQ(get_channel_st(1, 2, 100, 11'000'000, 1, 0), nullptr);
  EXPECT_EQ(get_channel_st(1, 1, 101, 11'000'000, 1, 0), service);
  EXPECT_EQ(get_channel_st(1, 1, 100, 11'002'500, 1, 0), nullptr);
  EXPECT_EQ(get_channel_st(1, 1, 100, 11'002'499, 1, 0), service);
  EXPECT_EQ(get_channel_st(1, 1, 100, 10'997'501, 1, 0), service);
  EXPECT_EQ(get_channel_st(1, 1, 100, 10'997'500, 1, 0), nullptr);
  EXPECT_EQ(get_channel_st(1, 1, 100, 11'000'000, 2, 0), nullptr);
  EXPECT_EQ(get_channel_st(1, 1, 100, 11'000'000, 1, 1), nullptr);
}

TEST_F(Finders, WithAFrequencyOnlyTheFirstMatchingTransponderIsSearched) {
  file_service({.frequency = 11'000'000, .service_id = 1});
  channel_st *behind = file_service({.frequency = 11'004'000, .service_id = 2});

  EXPECT_EQ(get_channel_st(1, 1, 100, 11'002'000, 2, 0), nullptr);
  EXPECT_EQ(get_channel_st(1, 1, 100, 11'003'000, 2, 0), behind);
}

TEST_F(Finders, WithoutAFrequencyNetworkTransportStreamAndServiceAreEnough) {
  channel_st *service = file_service({.polarisation = 1});

  EXPECT_EQ(get_channel_st(1, 1, 100, 0, 1, 0), service);
  EXPECT_EQ(get_channel_st(1, 1, 101, 0, 1, 1), nullptr);
  EXPECT_EQ(get_channel_st(1, 1, 100, 0, 2, 1), nullptr);
}

TEST_F(Finders, WithoutAFrequencyEveryTransponderOfTheTransportStreamIsSearched) {
  file_service({.frequency = 11'000'000, .service_id = 1});
  file_service({.ts_id = 101, .frequency = 12'000'000, .service_id = 2});
  channel_st *sought = file_service({.frequency = 13'000'000, .service_id = 2});
  file_service({.frequency = 14'000'000, .service_id = 2});

  EXPECT_EQ(get_channel_st(1, 1, 100, 0, 2, 0), sought);
}

TEST_F(Finders, OnlyTheFirstOfTwoNetworksWithOneIdentityIsSearched) {
  alloc_network_ch_info(1, 1, nullptr);
  network_ch_st *second = alloc_network_ch_info(1, 1, nullptr);
  append_service(*append_transponder(*second, 100, 11'000'000, 0), {});

  EXPECT_EQ(get_channel_st(1, 1, 100, 11'000'000, 1, 0), nullptr);
}

TEST_F(Finders, AListThatCountsNoNetworkResolvesNothingAndSaysNothing) {
  file_service({});
  list.network_num = 0;

  EXPECT_EQ(writes_at(9, [] { return get_channel_st(1, 1, 100, 11'000'000, 1, 0); }), lines{});
  EXPECT_EQ(get_channel_st(1, 1, 100, 11'000'000, 1, 0), nullptr);
  list.network_num = 1;
}

TEST_F(Finders, AnIdentityWithoutNetworkIsLoggedAtLevel5) {
  file_service({});
  const auto find = [] { return get_channel_st(255, 0xABCD, 0xFFFF, 0xFFFFFFFF, 0x2A, 255); };
  lines all = no_network;
  all.emplace_back("ChannelAPI get_channel_st:# Fail to find network_ch "
                   "ni=0xff,on_id=0xabcd,ts_id=0xffff,freq=-1,sid=0x2a polar=255\n");

  EXPECT_EQ(writes_at(5, find), all);
  EXPECT_EQ(writes_at(4, find), no_network);
  EXPECT_EQ(writes_at(3, find), no_network);
  EXPECT_EQ(writes_at(2, find), lines{});
}

TEST_F(Finders, AnIdentityWithoutTransponderIsLoggedTwiceAtLevel5AndOnceAtLevel2) {
  file_service({});
  const auto find = [] { return get_channel_st(1, 1, 0xABCD, 0xFFFFFFFF, 0x2A, 255); };
  const std::string miss = "ChannelAPI get_channel_st:# Fail to find tp_ch "
                           "ni=0x1,on_id=0x1,ts_id=0xabcd,freq=-1,sid=0x2a polar=255\n";

  EXPECT_EQ(writes_at(5, find), (lines{no_transponder[0], miss, miss}));
  EXPECT_EQ(writes_at(4, find), (lines{no_transponder[0], miss}));
  EXPECT_EQ(writes_at(3, find), (lines{no_transponder[0], miss}));
  EXPECT_EQ(writes_at(2, find), lines{miss});
  EXPECT_EQ(writes_at(1, find), lines{});
}

TEST_F(Finders, AnIdentityWhoseServiceIsMissingIsLoggedAtLevel5) {
  file_service({});
  const auto find = [] { return get_channel_st(1, 1, 100, 11'000'000, 0x2A, 0); };

  EXPECT_EQ(writes_at(5, find), lines{"ChannelAPI get_channel_st:# Fail to find rchannel "
                                      "ni=0x1,on_id=0x1,ts_id=0x64,freq=11000000,sid=0x2a polar=0\n"});
  EXPECT_EQ(writes_at(4, find), lines{});
}

TEST_F(Finders, AnIdentityWithoutFrequencyThatIsMissingIsLoggedOnceAtLevel5) {
  file_service({});
  const auto find = [] { return get_channel_st(1, 1, 101, 0, 1, 3); };

  EXPECT_EQ(writes_at(5, find), lines{"ChannelAPI get_channel_st:# Fail to find rchannel "
                                      "ni=0x1,on_id=0x1,ts_id=0x65,freq=0,sid=0x1 polar=3\n"});
  EXPECT_EQ(writes_at(4, find), lines{});
}

}  // namespace
