// The flag byte of real channels: by identity, and for a whole view at once.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/channel_key.h"
#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

int set_flag(const channel_key &target, int bits, int set = 1) {
  return target.call_untagged(set_channel_flag, static_cast<std::uint8_t>(bits), set);
}

class FlagsByIdentity : public store_test {};

TEST_F(FlagsByIdentity, BitsAreSetAndClearedAlone) {
  channel_st *service = file_service({.flag = 0x81});

  EXPECT_EQ(set_flag({}, 0x0A, 1), 1);
  EXPECT_EQ(service->flag, 0x8B);
  EXPECT_EQ(set_flag({}, 0x83, 0), 1);
  EXPECT_EQ(service->flag, 0x08);
}

TEST_F(FlagsByIdentity, AnythingButZeroSets) {
  channel_st *service = file_service({});
  for (const int set : {1, 2, -1, 256}) {
    service->flag = 0;
    EXPECT_EQ(set_flag({}, 0x10, set), 1);
    EXPECT_EQ(service->flag, 0x10) << set;
  }
}

TEST_F(FlagsByIdentity, EveryBitCanBeSetAndCleared) {
  channel_st *service = file_service({});
  EXPECT_EQ(set_flag({}, 0xFF, 1), 1);
  EXPECT_EQ(service->flag, 0xFF);
  EXPECT_EQ(set_flag({}, 0, 1), 1);
  EXPECT_EQ(set_flag({}, 0, 0), 1);
  EXPECT_EQ(service->flag, 0xFF);
  EXPECT_EQ(set_flag({}, 0xFF, 0), 1);
  EXPECT_EQ(service->flag, 0);
}

TEST_F(FlagsByIdentity, OnlyTheServiceThatIsNamedChanges) {
  channel_st *named = file_service({.service_id = 1});
  const channel_st *other = file_service({.service_id = 2});

  set_flag({}, 0x08);

  EXPECT_EQ(named->flag, 0x08);
  EXPECT_EQ(other->flag, 0);
}

TEST_F(FlagsByIdentity, ApplyingIsSilent) {
  file_service({});

  EXPECT_EQ(writes_at(5, [] { return set_flag({}, 0x08); }), lines{});
  EXPECT_EQ(writes_at(5, [] { return set_flag({.frequency = 0}, 0x08); }), lines{});
}

TEST_F(FlagsByIdentity, AnEmptyListHoldsNothingSilently) {
  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(set_flag({}, 0x08), 0); }), lines{});
}

TEST_F(FlagsByIdentity, AListThatCountsNoNetworkHoldsNothingSilently) {
  const channel_st *service = file_service({});
  list.network_num = 0;

  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(set_flag({}, 0x08), 0); }), lines{});

  EXPECT_EQ(service->flag, 0);
  list.network_num = 1;
}

TEST_F(FlagsByIdentity, AMissingNetworkIsLoggedAtLevelThree) {
  const channel_st *service = file_service({});
  const channel_key missing = {.net_index = 200, .network_id = 0xABC, .ts_id = 0x64, .frequency = 0xFFFF'FFFF};

  EXPECT_EQ(writes_at(3, [&] { EXPECT_EQ(set_flag(missing, 0x08), 0); }),
            (lines{"ChannelAPI get_network_ch_info:# Fail to find network_ch ni=200, on_id=0xabc\n",
                   "ChannelAPI set_channel_flag:# Fail to find network_ch "
                   "ni=0xc8,on_id=0xabc,ts_id=0x64,freq=-1,sid=0x1\n"}));
  EXPECT_EQ(writes_at(2, [&] { return set_flag(missing, 0x08); }), lines{});
  EXPECT_EQ(service->flag, 0);
}

TEST_F(FlagsByIdentity, AMissingTransponderIsLoggedAtLevelThree) {
  const channel_st *service = file_service({});
  const channel_key missing = {.frequency = 11'002'500};

  EXPECT_EQ(writes_at(3, [&] { EXPECT_EQ(set_flag(missing, 0x08), 0); }),
            (lines{"ChannelAPI get_tp_ch_info_by_network_ch:# Fail to find tp_ch ts_id=0x64, freq=11002500, polar 0 \n",
                   "ChannelAPI set_channel_flag:# Fail to find tp_ch "
                   "ni=0x1,on_id=0x1,ts_id=0x64,freq=11002500,sid=0x1\n"}));
  EXPECT_EQ(writes_at(2, [&] { return set_flag(missing, 0x08); }), lines{});
  EXPECT_EQ(service->flag, 0);
}

TEST_F(FlagsByIdentity, AMissingServiceIsLoggedAtLevelThree) {
  const channel_st *service = file_service({});
  for (const std::uint32_t frequency : {0U, 11'000'000U}) {
    const channel_key missing = {.frequency = frequency, .service_id = 0xFFFF};
    EXPECT_EQ(writes_at(3, [&] { EXPECT_EQ(set_flag(missing, 0x08), 0); }),
              lines{"ChannelAPI set_channel_flag:# Fail to find rchannel ni=0x1,on_id=0x1,ts_id=0x64,freq=" +
                    std::to_string(frequency) + ",sid=0xffff\n"});
    EXPECT_EQ(writes_at(2, [&] { return set_flag(missing, 0x08); }), lines{});
  }
  EXPECT_EQ(service->flag, 0);
}

TEST_F(FlagsByIdentity, FrequencyZeroWithAnUnknownTransportStreamIsAMissingService) {
  file_service({});

  EXPECT_EQ(writes_at(3, [] { EXPECT_EQ(set_flag({.ts_id = 7, .frequency = 0}, 0x08), 0); }),
            lines{"ChannelAPI set_channel_flag:# Fail to find rchannel ni=0x1,on_id=0x1,ts_id=0x7,freq=0,sid=0x1\n"});
}

TEST_F(FlagsByIdentity, FrequencyZeroFindsTheFirstTransponderThatCarriesTheService) {
  const channel_st *without = file_service({.frequency = 11'000'000, .service_id = 2});
  const channel_st *first = file_service({.frequency = 11'100'000, .service_id = 1});
  const channel_st *second = file_service({.frequency = 11'200'000, .service_id = 1});
  const channel_st *other_stream = file_service({.ts_id = 101, .frequency = 10'900'000, .service_id = 1});

  EXPECT_EQ(set_flag({.frequency = 0}, 0x08), 1);

  EXPECT_EQ(without->flag, 0);
  EXPECT_EQ(first->flag, 0x08);
  EXPECT_EQ(second->flag, 0);
  EXPECT_EQ(other_stream->flag, 0);
}

TEST_F(FlagsByIdentity, FrequencyZeroIgnoresThePolarisation) {
  const channel_st *service = file_service({.polarisation = 1});

  EXPECT_EQ(set_flag({.frequency = 0, .polarisation = 0}, 0x08), 1);

  EXPECT_EQ(service->flag, 0x08);
}

TEST_F(FlagsByIdentity, AFrequencyIgnoresTheTransportStream) {
  const channel_st *service = file_service({});

  EXPECT_EQ(set_flag({.ts_id = 7}, 0x08), 1);

  EXPECT_EQ(service->flag, 0x08);
}

TEST_F(FlagsByIdentity, AFrequencyIsMatchedWithinTheToleranceAndWithThePolarisation) {
  file_service({});

  EXPECT_EQ(set_flag({.frequency = 11'002'499}, 0x08), 1);
  EXPECT_EQ(set_flag({.frequency = 10'997'501}, 0x08), 1);
  EXPECT_EQ(set_flag({.frequency = 11'002'500}, 0x08), 0);
  EXPECT_EQ(set_flag({.frequency = 10'997'500}, 0x08), 0);
  EXPECT_EQ(set_flag({.polarisation = 1}, 0x08), 0);
}

TEST_F(FlagsByIdentity, ADestroyedListHoldsNothing) {
  file_service({});
  destroy_channel_list();

  EXPECT_EQ(set_flag({}, 0x08), 0);
}

class FlagsOfAView : public store_test {
 protected:
  static int flagged(const std::vector<channel_st *> &services, std::uint8_t bits) {
    return static_cast<int>(
        std::count_if(services.begin(), services.end(), [=](const channel_st *each) { return each->flag == bits; }));
  }
};

TEST_F(FlagsOfAView, EveryChannelOfTheCurrentViewIsMarked) {
  const std::vector<channel_st *> services = fill_view(VIEW_ALL, 100);
  for (std::size_t i = 0; i < 30; ++i) {
    append_entry(VIEW_TV, entry_of(*services[i * 3], 1));
  }
  change_vindex_type(VIEW_TV);

  EXPECT_EQ(set_channel_flag_by_bit(0x08), 0);

  EXPECT_EQ(flagged(services, 0x08), 30);
  EXPECT_EQ(flagged(services, 0), 70);
  EXPECT_EQ(services[0]->flag, 0x08);
  EXPECT_EQ(services[87]->flag, 0x08);
  EXPECT_EQ(services[1]->flag, 0);
}

TEST_F(FlagsOfAView, EveryChannelOfTheCurrentViewIsCleared) {
  const std::vector<channel_st *> services = fill_view(VIEW_ALL, 10);
  for (channel_st *each : services) {
    each->flag = 0xFF;
  }
  append_entry(VIEW_TV, entry_of(*services[9], 1));
  change_vindex_type(VIEW_TV);

  EXPECT_EQ(clear_channel_flag_by_bit(0x0A), 0);

  EXPECT_EQ(services[9]->flag, 0xF5);
  EXPECT_EQ(flagged(services, 0xFF), 9);
}

TEST_F(FlagsOfAView, OtherBitsStay) {
  const std::vector<channel_st *> services = fill_view(VIEW_ALL, 2, {.flag = 0x41});

  set_channel_flag_by_bit(0x08);
  EXPECT_EQ(flagged(services, 0x49), 2);
  clear_channel_flag_by_bit(0x40);
  EXPECT_EQ(flagged(services, 0x09), 2);
}

TEST_F(FlagsOfAView, TheCountOfTheAllViewIsTheBound) {
  const std::vector<channel_st *> services = fill_view(VIEW_TV, 5);
  append_entry(VIEW_ALL, entry_of(*services[4], 1));
  append_entry(VIEW_ALL, entry_of(*services[3], 2));
  change_vindex_type(VIEW_TV);

  set_channel_flag_by_bit(0x08);
  EXPECT_EQ(services[0]->flag, 0x08);
  EXPECT_EQ(services[1]->flag, 0x08);
  EXPECT_EQ(flagged(services, 0), 3);

  services[2]->flag = 0x08;
  clear_channel_flag_by_bit(0x08);
  EXPECT_EQ(services[0]->flag, 0);
  EXPECT_EQ(services[2]->flag, 0x08);
}

TEST_F(FlagsOfAView, AnEmptyAllViewDoesNothing) {
  const std::vector<channel_st *> services = fill_view(VIEW_TV, 5);
  change_vindex_type(VIEW_TV);

  EXPECT_EQ(writes_at(5,
                      [] {
                        EXPECT_EQ(set_channel_flag_by_bit(0x08), 0);
                        EXPECT_EQ(clear_channel_flag_by_bit(0x08), 0);
                      }),
            lines{});

  EXPECT_EQ(flagged(services, 0), 5);
}

TEST_F(FlagsOfAView, EntriesWithoutChannelArePassedOver) {
  const std::vector<channel_st *> services = fill_view(VIEW_ALL, 3);
  list.vch[1].service_id = 999;

  EXPECT_EQ(set_channel_flag_by_bit(0x08), 0);

  EXPECT_EQ(services[0]->flag, 0x08);
  EXPECT_EQ(services[1]->flag, 0);
  EXPECT_EQ(services[2]->flag, 0x08);
}

TEST_F(FlagsOfAView, TheLastEntryOfAFullViewIsReached) {
  const channel_st *service = file_service({});
  fill_unfiled(VIEW_ALL, 5000);
  list.vch[0].service_id = 0;
  list.vch[4999].service_id = 1;

  set_channel_flag_by_bit(0x08);

  EXPECT_EQ(service->flag, 0x08);
}

TEST_F(FlagsOfAView, WithoutACurrentViewNothingChanges) {
  const std::vector<channel_st *> services = fill_view(VIEW_ALL, 2);
  list.cur_vch = nullptr;

  EXPECT_EQ(writes_at(0,
                      [] {
                        EXPECT_EQ(set_channel_flag_by_bit(0x08), 0);
                        EXPECT_EQ(clear_channel_flag_by_bit(0x08), 0);
                      }),
            lines(4, "ERROR: get_channel_by_vindex:#  channel_list NULL !! "));

  EXPECT_EQ(flagged(services, 0), 2);
}

TEST_F(FlagsOfAView, ACountOutsideTheAllViewIsReadAsTheNearestInside) {
  const std::vector<channel_st *> services = fill_view(VIEW_ALL, 2);
  list.vnumber = 32767;
  EXPECT_EQ(set_channel_flag_by_bit(0x08), 0);
  EXPECT_EQ(flagged(services, 0x08), 2);

  list.vnumber = -1;
  EXPECT_EQ(clear_channel_flag_by_bit(0x08), 0);
  EXPECT_EQ(flagged(services, 0x08), 2);
}

}  // namespace
