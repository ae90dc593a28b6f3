// Finding transponders and channels by what a tuner knows of them: which match wins, and at which level a miss is
// logged.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/hierarchy_walk.h"
#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

class TransportQueries : public store_test {
 protected:
  static tp_ch_st *transponder(std::size_t network, std::size_t index) {
    return transponders(*networks().at(network)).at(index);
  }
};

const std::string no_transponder =
    "ChannelAPI get_tp_ch_info_by_network_ch:# Fail to find tp_ch ts_id=0x64, freq=-1, polar 255 \n";

TEST_F(TransportQueries, ATransponderIsFoundInItsNetwork) {
  file_service({.net_index = 1, .network_id = 2, .frequency = 11'000'000});
  file_service({.net_index = 2, .network_id = 1, .frequency = 11'000'000});
  file_service({.net_index = 1, .network_id = 1, .frequency = 11'000'000});

  EXPECT_EQ(get_tp_ch_info(1, 1, 100, 11'000'000, 0), transponder(2, 0));
  EXPECT_EQ(get_tp_ch_info(2, 1, 100, 11'000'000, 0), transponder(1, 0));
}

TEST_F(TransportQueries, AFrequencyIsMatchedWithinTheToleranceAndWithThePolarisation) {
  file_service({.ts_id = 100, .frequency = 11'000'000, .polarisation = 1});
  const struct {
    int frequency;
    int polarisation;
    bool found;
  } cases[] = {{11'000'000, 1, true},  {11'002'499, 1, true},  {10'997'501, 1, true},
               {11'002'500, 1, false}, {10'997'500, 1, false}, {11'000'000, 0, false}};
  for (const auto &each : cases) {
    // The transport stream id is not looked at.
    EXPECT_EQ(get_tp_ch_info(1, 1, 7, each.frequency, static_cast<std::uint8_t>(each.polarisation)),
              each.found ? transponder(0, 0) : nullptr)
        << each.frequency;
    EXPECT_EQ(
        get_tp_ch_simple(1, static_cast<std::uint32_t>(each.frequency), static_cast<std::uint8_t>(each.polarisation)),
        each.found ? transponder(0, 0) : nullptr)
        << each.frequency;
  }
}

TEST_F(TransportQueries, FrequencyZeroMeansTheTransportStream) {
  file_service({.ts_id = 100, .frequency = 0, .polarisation = 0});
  file_service({.ts_id = 200, .frequency = 11'000'000, .polarisation = 1});

  EXPECT_EQ(get_tp_ch_info(1, 1, 200, 0, 0), transponder(0, 1));
  EXPECT_EQ(get_tp_ch_info(1, 1, 201, 0, 0), nullptr);
}

TEST_F(TransportQueries, ANegativeFrequencyIsOneAboveTwoToThe31) {
  file_service({.frequency = 0xFFFFFFFF});

  EXPECT_EQ(get_tp_ch_info(1, 1, 100, -1, 0), transponder(0, 0));
  EXPECT_EQ(get_tp_ch_info(1, 1, 100, -2500, 0), transponder(0, 0));
  EXPECT_EQ(get_tp_ch_info(1, 1, 100, -2501, 0), nullptr);
}

TEST_F(TransportQueries, OnlyTheFirstOfTwoNetworksWithOneIdentityIsSearched) {
  alloc_network_ch_info(1, 1, nullptr);
  network_ch_st *second = alloc_network_ch_info(1, 1, nullptr);
  list_add_tail(&alloc_tp_ch_info(100, 11'000'000, 0)->list, &second->tp_list);
  second->tp_num = 1;

  EXPECT_EQ(get_tp_ch_info(1, 1, 100, 11'000'000, 0), nullptr);
  EXPECT_EQ(get_tp_ch_simple(1, 11'000'000, 0), transponder(1, 0));
}

TEST_F(TransportQueries, AMissingNetworkIsLoggedAtLevelThree) {
  const auto find = [] { return get_tp_ch_info(255, 0xABCD, 0x64, -1, 254); };

  EXPECT_EQ(find(), nullptr);

  EXPECT_EQ(writes_at(3, find),
            (lines{"ChannelAPI get_network_ch_info:# Fail to find network_ch ni=255, on_id=0xabcd\n",
                   "ChannelAPI get_tp_ch_info:# Fail to find tp_ch net_index=255, on_id=0xabcd, "
                   "ts_id=0x64, freq=-1, polar 254 \n"}));
  EXPECT_EQ(writes_at(2, find), lines{});
}

TEST_F(TransportQueries, AMissingTransponderIsLoggedByItsFinderAlone) {
  file_service({});
  const auto find = [] { return get_tp_ch_info(1, 1, 0x64, -1, 255); };

  EXPECT_EQ(writes_at(3, find), lines{no_transponder});
  EXPECT_EQ(writes_at(2, find), lines{});
  EXPECT_EQ(writes_at(5, [] { return get_tp_ch_info(1, 1, 100, 11'000'000, 0); }), lines{});
}

TEST_F(TransportQueries, ATransponderOfAnyNetworkWithTheIndexIsFound) {
  file_service({.net_index = 2, .network_id = 1, .frequency = 12'000'000});
  file_service({.net_index = 1, .network_id = 1, .frequency = 11'000'000});
  file_service({.net_index = 1, .network_id = 2, .frequency = 12'000'000});

  EXPECT_EQ(get_tp_ch_simple(1, 12'000'000, 0), transponder(2, 0));
  EXPECT_EQ(get_tp_ch_simple(2, 12'000'000, 0), transponder(0, 0));
  EXPECT_EQ(get_tp_ch_simple(3, 12'000'000, 0), nullptr);
}

TEST_F(TransportQueries, TheFirstTransponderInListOrderIsFound) {
  file_service({.network_id = 1, .frequency = 11'003'000});
  file_service({.network_id = 1, .frequency = 11'000'000});
  file_service({.network_id = 2, .frequency = 11'001'500});

  EXPECT_EQ(get_tp_ch_simple(1, 11'001'500, 0), transponder(0, 0));
  EXPECT_EQ(get_tp_ch_simple(1, 11'000'500, 0), transponder(0, 1));
  EXPECT_EQ(get_tp_ch_simple(1, 11'000'499, 0), transponder(0, 1));
}

TEST_F(TransportQueries, FrequencyZeroIsNoWildcardWithoutANetwork) {
  file_service({.frequency = 11'000'000});

  EXPECT_EQ(get_tp_ch_simple(1, 0, 0), nullptr);
  file_service({.ts_id = 7, .frequency = 2'499});
  EXPECT_EQ(get_tp_ch_simple(1, 0, 0), transponder(0, 1));
}

TEST_F(TransportQueries, TheToleranceDoesNotReachAroundTheEndOfTheRange) {
  file_service({.frequency = 0xFFFFFFFF});

  EXPECT_EQ(get_tp_ch_simple(1, 0, 0), nullptr);
  EXPECT_EQ(get_tp_ch_simple(1, 0xFFFFFFFF - 2499, 0), transponder(0, 0));
  EXPECT_EQ(get_tp_ch_simple(1, 0xFFFFFFFF - 2500, 0), nullptr);
}

TEST_F(TransportQueries, AMissWithoutANetworkIsLoggedTwiceAtLevelThree) {
  const auto find = [] { return get_tp_ch_simple(255, 0xFFFFFFFF, 255); };
  const lines expected = {"ChannelAPI get_tp_ch_simple:# Fail to find network_ch ni=255\n",
                          "ChannelAPI get_tp_ch_simple:# Fail to find tp_ch freq=-1 polar= 255\n"};

  EXPECT_EQ(writes_at(3, find), expected);
  EXPECT_EQ(writes_at(2, find), lines{});
  // Whether or not a network has the index.
  file_service({.net_index = 255});
  EXPECT_EQ(writes_at(3, find), expected);
  EXPECT_EQ(writes_at(5, [] { return get_tp_ch_simple(255, 11'000'000, 0); }), lines{});
}

class StreamQueries : public TransportQueries {
 protected:
  static channel_st *service(int id, int video_pid, int audio_pid) {
    channel_st *made = file_service({.service_id = static_cast<std::uint16_t>(id)});
    made->video_pid = static_cast<std::uint16_t>(video_pid);
    made->audio_pid = static_cast<std::uint16_t>(audio_pid);
    return made;
  }
  static channel_st *find(int video_pid, int audio_pid) {
    return get_rch_ch_info_by_tp_ch_and_avpid(transponder(0, 0), static_cast<std::uint16_t>(video_pid),
                                              static_cast<std::uint16_t>(audio_pid));
  }
};

TEST_F(StreamQueries, EitherPidIsEnough) {
  channel_st *first = service(1, 0x300, 0x200);
  channel_st *second = service(2, 0x100, 0x400);

  EXPECT_EQ(find(0x100, 0x200), first);
  EXPECT_EQ(find(0x100, 0x201), second);
  EXPECT_EQ(find(0x300, 0x999), first);
  EXPECT_EQ(find(0x999, 0x400), second);
}

TEST_F(StreamQueries, APidIsNotFoundAsTheOtherKind) {
  service(1, 0x300, 0x200);

  EXPECT_EQ(find(0x200, 0x300), nullptr);
}

TEST_F(StreamQueries, UnsetPidsAreComparedLikeOthers) {
  channel_st *unset = file_service({});

  EXPECT_EQ(find(0xFFFF, 0), unset);
  EXPECT_EQ(find(0, 0xFFFF), unset);
  EXPECT_EQ(find(0x1FFF, 0x1FFF), nullptr);
}

TEST_F(StreamQueries, AMissIsLoggedAtLevelThree) {
  service(1, 0x300, 0x200);

  EXPECT_EQ(writes_at(3, [] { return find(0xABC, 0xFFFF); }),
            lines{"ChannelAPI get_rch_ch_info_by_tp_ch_and_avpid:# Fail to find rchannel vpid=0xabc apid=0xffff\n"});
  EXPECT_EQ(writes_at(2, [] { return find(0xABC, 0xFFFF); }), lines{});
  EXPECT_EQ(writes_at(5, [] { return find(0x300, 0); }), lines{});
}

TEST_F(StreamQueries, NoTransponderHasNoChannelsSilently) {
  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(get_rch_ch_info_by_tp_ch_and_avpid(nullptr, 1, 2), nullptr); }), lines{});
}

TEST_F(TransportQueries, AnUninitialisedListHoldsNothing) {
  file_service({});
  destroy_channel_list();

  EXPECT_EQ(get_tp_ch_info(1, 1, 100, 11'000'000, 0), nullptr);
  EXPECT_EQ(get_tp_ch_simple(1, 11'000'000, 0), nullptr);
  EXPECT_EQ(get_ipchannel(1, 100, 1), nullptr);
  EXPECT_EQ(get_frequency_by_ts_id(1, 1, 100), 0U);
  EXPECT_EQ(get_polarisation_by_service_id(1, 1), 0U);
}

TEST_F(TransportQueries, TheVersionIsThatOfTheListInMemory) {
  EXPECT_EQ(get_channel_list_version(), 10);
  for (const int version : {-32768, -1, 0, 9, 32767}) {
    list.version = static_cast<std::int16_t>(version);
    EXPECT_EQ(writes_at(5, [=] { EXPECT_EQ(get_channel_list_version(), version); }), lines{});
  }
}

}  // namespace
