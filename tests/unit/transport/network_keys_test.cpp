// Queries that walk every network with a key: which of network index, network id, transport stream id and service id
// each looks at, and that they go on into a later network.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>

#include "support/hierarchy_walk.h"
#include "support/log_capture.h"
#include "support/records_by_hand.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

class NetworkKeys : public store_test {};

TEST_F(NetworkKeys, ATransportStreamHasAFrequencyAndAPolarisation) {
  file_service({.ts_id = 100, .frequency = 0xFFFFFFFF, .polarisation = 255});
  file_service({.ts_id = 101, .frequency = 12'000'000, .polarisation = 1});

  EXPECT_EQ(get_frequency_by_ts_id(1, 1, 100), 0xFFFFFFFF);
  EXPECT_EQ(get_polarisation_by_ts_id(1, 1, 100), 255U);
  EXPECT_EQ(get_frequency_by_ts_id(1, 1, 101), 12'000'000U);
  EXPECT_EQ(get_polarisation_by_ts_id(1, 1, 101), 1U);
}

TEST_F(NetworkKeys, ATransportStreamIsKnownByBothIdsOfItsNetwork) {
  file_service({.net_index = 1, .network_id = 2, .ts_id = 100, .frequency = 12'000'000, .polarisation = 1});

  EXPECT_EQ(get_frequency_by_ts_id(1, 1, 100), 0U);
  EXPECT_EQ(get_frequency_by_ts_id(2, 2, 100), 0U);
  EXPECT_EQ(get_frequency_by_ts_id(1, 2, 101), 0U);
  EXPECT_EQ(get_polarisation_by_ts_id(1, 1, 100), 0U);
  EXPECT_EQ(get_polarisation_by_ts_id(2, 2, 100), 0U);
  EXPECT_EQ(get_polarisation_by_ts_id(1, 2, 101), 0U);
}

TEST_F(NetworkKeys, TheFirstTransponderOfATransportStreamAnswers) {
  file_service({.ts_id = 100, .frequency = 12'000'000, .polarisation = 1});
  file_service({.ts_id = 100, .frequency = 11'000'000, .polarisation = 2});

  EXPECT_EQ(get_frequency_by_ts_id(1, 1, 100), 12'000'000U);
  EXPECT_EQ(get_polarisation_by_ts_id(1, 1, 100), 1U);
}

// Compatibility: the transponder answers by its own fields, not by those of its channels.
TEST_F(NetworkKeys, ATransportStreamIsAskedAtItsTransponder) {
  channel_st *service = file_service({.frequency = 12'000'000, .polarisation = 1});
  service->frequency = 5;
  service->polarisation = 7;
  service->ts_id = 999;

  EXPECT_EQ(get_frequency_by_ts_id(1, 1, 100), 12'000'000U);
  EXPECT_EQ(get_polarisation_by_ts_id(1, 1, 100), 1U);
  EXPECT_EQ(get_frequency_by_ts_id(1, 1, 999), 0U);
}

TEST_F(NetworkKeys, TheSecondOfTwoNetworksWithOneIdentityIsSearchedWhenTheFirstLacksTheStream) {
  network_ch_st *first = alloc_network_ch_info(1, 1, nullptr);
  network_ch_st *second = alloc_network_ch_info(1, 1, nullptr);
  append_transponder(*first, 100, 11'000'000, 0);
  append_transponder(*second, 100, 12'000'000, 1);
  append_transponder(*second, 200, 12'500'000, 2);

  EXPECT_EQ(get_frequency_by_ts_id(1, 1, 100), 11'000'000U);
  EXPECT_EQ(get_polarisation_by_ts_id(1, 1, 100), 0U);
  EXPECT_EQ(get_frequency_by_ts_id(1, 1, 200), 12'500'000U);
  EXPECT_EQ(get_polarisation_by_ts_id(1, 1, 200), 2U);
}

TEST_F(NetworkKeys, AStoredZeroIsAnsweredLikeNothing) {
  network_ch_st *network = alloc_network_ch_info(1, 1, nullptr);
  append_transponder(*network, 100, 0, 0);
  append_transponder(*network, 100, 12'000'000, 1);

  EXPECT_EQ(get_frequency_by_ts_id(1, 1, 100), 0U);
  EXPECT_EQ(get_polarisation_by_ts_id(1, 1, 100), 0U);
}

TEST_F(NetworkKeys, AServiceIsFoundInEveryNetworkWithTheIndex) {
  file_service({.net_index = 2, .network_id = 1, .service_id = 5});
  channel_st *service =
      file_service({.net_index = 1, .network_id = 9, .frequency = 12'000'000, .service_id = 5, .polarisation = 1});

  EXPECT_EQ(get_network_ch_info(1, 1), nullptr);
  EXPECT_EQ(get_ipchannel(1, 100, 5), service);
  EXPECT_EQ(get_frequency_by_service_id(1, 5), 12'000'000U);
  EXPECT_EQ(get_polarisation_by_service_id(1, 5), 1U);
  EXPECT_EQ(get_frequency_by_ts_id(1, 1, 100), 0U);
}

TEST_F(NetworkKeys, AServiceThatIsNotThereIsNothing) {
  file_service({.net_index = 1, .service_id = 5, .polarisation = 1});

  EXPECT_EQ(get_ipchannel(2, 100, 5), nullptr);
  EXPECT_EQ(get_ipchannel(1, 101, 5), nullptr);
  EXPECT_EQ(get_ipchannel(1, 100, 6), nullptr);
  EXPECT_EQ(get_frequency_by_service_id(2, 5), 0U);
  EXPECT_EQ(get_frequency_by_service_id(1, 6), 0U);
  EXPECT_EQ(get_polarisation_by_service_id(2, 5), 0U);
  EXPECT_EQ(get_polarisation_by_service_id(1, 6), 0U);
}

// Compatibility: the frequency is the channel's own, the polarisation its transponder's.
TEST_F(NetworkKeys, AServiceHasItsOwnFrequencyAndItsTranspondersPolarisation) {
  channel_st *service = file_service({.frequency = 12'000'000, .service_id = 5, .polarisation = 1});
  service->frequency = 12'345'678;
  service->polarisation = 77;

  EXPECT_EQ(get_frequency_by_service_id(1, 5), 12'345'678U);
  EXPECT_EQ(get_polarisation_by_service_id(1, 5), 1U);
}

TEST_F(NetworkKeys, AServicesFrequencyIsItsLow32Bits) {
  channel_st *service = file_service({.service_id = 5});
  service->frequency = 0x1'2345'6789;
  EXPECT_EQ(get_frequency_by_service_id(1, 5), 0x2345'6789U);
  service->frequency = -1;
  EXPECT_EQ(get_frequency_by_service_id(1, 5), 0xFFFF'FFFFU);
}

TEST_F(NetworkKeys, TheFirstServiceInListOrderAnswersBothQueries) {
  file_service({.network_id = 1, .ts_id = 100, .frequency = 11'000'000, .service_id = 4, .polarisation = 3});
  file_service({.network_id = 1, .ts_id = 101, .frequency = 11'500'000, .service_id = 5, .polarisation = 1});
  file_service({.network_id = 1, .ts_id = 102, .frequency = 12'000'000, .service_id = 5, .polarisation = 2});
  file_service({.network_id = 2, .ts_id = 100, .frequency = 12'500'000, .service_id = 5, .polarisation = 4});

  EXPECT_EQ(get_frequency_by_service_id(1, 5), 11'500'000U);
  EXPECT_EQ(get_polarisation_by_service_id(1, 5), 1U);
}

TEST_F(NetworkKeys, AnIpChannelIsFoundOnAnyTransponderWithItsStream) {
  network_ch_st *first = alloc_network_ch_info(1, 1, nullptr);
  network_ch_st *second = alloc_network_ch_info(1, 2, nullptr);
  append_transponder(*first, 100, 1, 0);
  tp_ch_st *other_stream = append_transponder(*first, 101, 2, 0);
  tp_ch_st *same_stream = append_transponder(*first, 100, 3, 0);
  tp_ch_st *later = append_transponder(*second, 100, 4, 0);
  append_service(*other_stream, {.ts_id = 101, .service_id = 5});
  channel_st *wanted = append_service(*same_stream, {.service_id = 5});
  append_service(*same_stream, {.service_id = 5});
  channel_st *last = append_service(*later, {.network_id = 2, .service_id = 6});

  EXPECT_EQ(get_ipchannel(1, 100, 5), wanted);
  EXPECT_EQ(get_ipchannel(1, 100, 6), last);
}

// Compatibility: the source type is not looked at.
TEST_F(NetworkKeys, AnIpChannelMayBeABroadcastOne) {
  channel_st *service = file_service({.source_type = 1});

  EXPECT_EQ(get_ipchannel(1, 100, 1), service);
}

TEST_F(NetworkKeys, EveryIpLookupIsLoggedOnEntry) {
  file_service({.net_index = 255, .ts_id = 0xFFFF, .service_id = 0xFFFE});
  const lines expected = {"ChannelAPI get_ipchannel:# net_index 255, ts_id 65535 ,service_id 65534 \n"};

  EXPECT_EQ(writes_at(2, [] { EXPECT_NE(get_ipchannel(255, 0xFFFF, 0xFFFE), nullptr); }), expected);
  EXPECT_EQ(writes_at(1, [] { return get_ipchannel(255, 0xFFFF, 0xFFFE); }), lines{});
  reset_channel_list();
  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(get_ipchannel(255, 0xFFFF, 0xFFFE), nullptr); }), expected);
}

TEST_F(NetworkKeys, TheOtherQueriesAreSilent) {
  EXPECT_EQ(writes_at(5,
                      [] {
                        get_frequency_by_ts_id(1, 1, 100);
                        get_polarisation_by_ts_id(1, 1, 100);
                        get_frequency_by_service_id(1, 1);
                        return get_polarisation_by_service_id(1, 1);
                      }),
            lines{});
}

}  // namespace
