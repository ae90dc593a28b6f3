// Dropping every transponder on a frequency: what goes, which view is current afterwards, and the sweep.
#include <base/verbosity.h>
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/channel_file.h"
#include "support/hierarchy_walk.h"
#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

constexpr int scan_entry = 1;

class RemovalByFrequency : public store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    // No view to show: silence.
    verbosity_map[scan_entry] = -1;
  }
  static std::vector<std::uint32_t> frequencies() {
    std::vector<std::uint32_t> found;
    for (const network_ch_st *network : networks()) {
      for (const tp_ch_st *transponder : transponders(*network)) {
        found.push_back(transponder->frequency);
      }
    }
    return found;
  }
  // A service with an entry in the ALL view and in one more.
  static channel_st *listed(const service_data &data, std::int8_t view) {
    channel_st *service = file_service(data);
    append_entry(VIEW_ALL, entry_of(*service, 1));
    append_entry(view, entry_of(*service, 1));
    return service;
  }
};

int remove(int net_index, std::uint32_t frequency = 11'000'000, int polarisation = 0) {
  return remove_channel_info_by_frequency(net_index, frequency, static_cast<std::uint8_t>(polarisation));
}

using found = std::vector<std::uint32_t>;

TEST_F(RemovalByFrequency, TransponderAndChannelsGo) {
  file_service({.ts_id = 100, .frequency = 11'000'000, .service_id = 1});
  file_service({.ts_id = 100, .frequency = 11'000'000, .service_id = 2});
  file_service({.ts_id = 101, .frequency = 12'000'000, .service_id = 3});

  EXPECT_EQ(remove(1), 0);

  EXPECT_EQ(frequencies(), found{12'000'000});
  EXPECT_EQ(get_channel_st(1, 1, 100, 0, 1, 0), nullptr);
  EXPECT_NE(get_channel_st(1, 1, 101, 0, 3, 0), nullptr);
  EXPECT_TRUE(counts_match_lists());
}

TEST_F(RemovalByFrequency, EveryMatchingTransponderGoes) {
  file_service({.ts_id = 1, .frequency = 11'000'000});
  file_service({.ts_id = 2, .frequency = 11'002'500});
  file_service({.ts_id = 3, .frequency = 12'000'000});
  file_service({.network_id = 2, .ts_id = 4, .frequency = 11'001'000});
  file_service({.network_id = 3, .ts_id = 5, .frequency = 12'000'001});

  EXPECT_EQ(remove(1, 11'001'250), 0);

  EXPECT_EQ(frequencies(), (found{12'000'000, 12'000'001}));
  EXPECT_TRUE(counts_match_lists());
}

TEST_F(RemovalByFrequency, FrequenciesMatchLessThan2500Away) {
  const struct {
    std::uint32_t stored;
    std::uint32_t named;
    bool goes;
  } cases[] = {{11'000'000, 11'002'499, true},
               {11'000'000, 11'002'500, false},
               {11'000'000, 10'997'501, true},
               {11'000'000, 10'997'500, false},
               {11'000'000, 0, false},
               {2'499, 0, true},
               {2'500, 0, false},
               {0xFFFFFFFF, 0, false},
               {0xFFFFFFFF, 0xFFFFFFFF - 2499, true}};
  for (const auto &each : cases) {
    reset_channel_list();
    file_service({.frequency = each.stored});

    EXPECT_EQ(remove(1, each.named), 0);

    EXPECT_EQ(frequencies().empty(), each.goes) << each.stored << ' ' << each.named;
  }
}

TEST_F(RemovalByFrequency, PolarisationsAreComparedExactly) {
  file_service({.polarisation = 1});

  remove(1, 11'000'000, 0);
  remove(1, 11'000'000, 2);
  EXPECT_EQ(frequencies().size(), 1U);

  remove(1, 11'000'000, 1);
  EXPECT_EQ(frequencies().size(), 0U);
}

TEST_F(RemovalByFrequency, NetworksAreKnownByTheirIndexAlone) {
  file_service({.net_index = 1, .network_id = 1});
  file_service({.net_index = 2, .network_id = 1});
  file_service({.net_index = 1, .network_id = 9});

  EXPECT_EQ(remove(1), 0);

  EXPECT_EQ(networks()[0]->tp_num, 0);
  EXPECT_EQ(networks()[1]->tp_num, 1);
  EXPECT_EQ(networks()[2]->tp_num, 0);
  EXPECT_TRUE(counts_match_lists());
}

TEST_F(RemovalByFrequency, AnIndexOutsideAByteMatchesNoNetwork) {
  file_service({.net_index = 1});
  file_service({.net_index = 255});
  file_service({.net_index = 0});
  for (const int net_index : {257, -255, 256, -1, 511, 0x7FFFFF01, -0x7FFFFFFF}) {
    EXPECT_EQ(remove(net_index), 0);
    EXPECT_EQ(frequencies().size(), 3U) << net_index;
  }
  remove(255);
  remove(0);
  EXPECT_EQ(frequencies().size(), 1U);
}

TEST_F(RemovalByFrequency, ANetworkWithoutTranspondersStays) {
  file_service({});

  remove(1);

  ASSERT_EQ(networks().size(), 1U);
  EXPECT_EQ(networks()[0]->tp_num, 0);
  EXPECT_EQ(list.network_num, 1);
  EXPECT_NE(get_network_ch_info(1, 1), nullptr);
}

TEST_F(RemovalByFrequency, EntriesOfChannelsThatAreGoneAreSwept) {
  channel_st *gone = file_service({.ts_id = 100, .frequency = 11'000'000, .service_id = 1});
  channel_st *kept = file_service({.ts_id = 101, .frequency = 12'000'000, .service_id = 2});
  for (const view_case &each : every_view()) {
    append_entry(each.code, entry_of(*gone, 1));
    append_entry(each.code, entry_of(*kept, 2));
    append_entry(each.code, entry_of(*gone, 3));
  }

  EXPECT_EQ(remove(1), 0);

  for (const view_case &each : every_view()) {
    // The work view is never swept, but it keeps no pointer to what is gone.
    const bool is_swept = each.code != VIEW_WORK;
    EXPECT_EQ(service_ids(each.code), is_swept ? std::vector<int>{2} : (std::vector<int>{1, 2, 1})) << int{each.code};
    EXPECT_TRUE(slots_behind_count_are_zero(each.code, each.capacity)) << int{each.code};
    EXPECT_EQ(get_virtual_channel_st(each.code)[is_swept ? 0 : 1].rch, kept) << int{each.code};
  }
  EXPECT_EQ(get_virtual_channel_st(VIEW_WORK)[0].rch, nullptr);
}

// Compatibility: the counts are looked at before the sweep.
TEST_F(RemovalByFrequency, TheTvViewBecomesCurrentEvenIfTheSweepEmptiesIt) {
  listed({.ts_id = 100, .frequency = 11'000'000}, VIEW_TV);
  listed({.ts_id = 101, .frequency = 12'000'000, .service_type = SERVICE_TYPE_RADIO}, VIEW_RADIO);

  EXPECT_EQ(remove(1), 0);

  EXPECT_EQ(get_vindex_type(), VIEW_TV);
  EXPECT_EQ(get_channel_list_number(), 0);
  EXPECT_EQ(list.service_type, 1);
  EXPECT_EQ(list.radio_vnumber, 1);
}

TEST_F(RemovalByFrequency, TheRadioViewBecomesCurrentWithoutATvView) {
  listed({.service_type = SERVICE_TYPE_RADIO}, VIEW_RADIO);

  EXPECT_EQ(remove(1), 0);

  EXPECT_EQ(get_vindex_type(), VIEW_RADIO);
  EXPECT_EQ(list.radio_vnumber, 0);
  EXPECT_EQ(list.service_type, 2);
}

TEST_F(RemovalByFrequency, TheViewIsChosenWhetherOrNotAnythingMatched) {
  listed({}, VIEW_TV);
  listed({.service_id = 2}, VIEW_RADIO);

  EXPECT_EQ(remove(9), 0);

  EXPECT_EQ(get_vindex_type(), VIEW_TV);
  EXPECT_EQ(list.tv_vnumber, 1);
}

// Compatibility: this line is gated by entry 1 of the level table, not by the library's own.
TEST_F(RemovalByFrequency, WithoutTvAndRadioTheViewStaysAndTheSweepIsMade) {
  listed({}, VIEW_USER);
  change_vindex_type(VIEW_USER);
  const auto remove_at = [](int own_level, int scan_level) {
    const log_capture log(own_level);
    verbosity_map[scan_entry] = scan_level;
    EXPECT_EQ(remove(1), 0);
    return log.writes();
  };

  EXPECT_EQ(remove_at(-1, 0), lines{"ERROR: remove_channel_info_by_frequency:# \n"});
  EXPECT_EQ(get_vindex_type(), VIEW_USER);
  EXPECT_EQ(list.vnumber, 0);
  EXPECT_EQ(list.user_vnumber, 0);
  EXPECT_EQ(remove_at(1, -1), lines{});
}

TEST_F(RemovalByFrequency, EveryStepIsLoggedAtLevelTwo) {
  file_service({.net_index = 1, .ts_id = 100, .frequency = 0xFFFFFFFF, .polarisation = 255});
  file_service({.net_index = 1, .ts_id = 101, .frequency = 12'000'000, .polarisation = 1});
  file_service({.net_index = 2, .ts_id = 100, .frequency = 0xFFFFFFFF, .polarisation = 255});
  const std::string operation = "ChannelAPI remove_channel_info_by_frequency:# ";

  EXPECT_EQ(writes_at(2, [] { return remove(1, 0xFFFFFFFE, 255); }),
            (lines{operation + "net_index 1 freq 4294967294 polar 255 \n", operation + "net_index 1 ,1 \n",
                   operation + "freq 4294967295,4294967294 polar 255,255 \n", "ChannelAPI release_tp_ch_info:# \n",
                   operation + "freq 12000000,4294967294 polar 1,255 \n", operation + "net_index 1 ,2 \n",
                   "ChannelAPI remove_invalid_virtual_channel:# \n"}));
  EXPECT_EQ(writes_at(1, [] { return remove(2, 0xFFFFFFFE, 255); }), lines{});
}

TEST_F(RemovalByFrequency, ALargeIndexIsLoggedWhole) {
  file_service({.net_index = 255});
  const std::string operation = "ChannelAPI remove_channel_info_by_frequency:# ";

  EXPECT_EQ(writes_at(2, [] { return remove(-1); }),
            (lines{operation + "net_index -1 freq 11000000 polar 0 \n", operation + "net_index -1 ,255 \n",
                   "ChannelAPI remove_invalid_virtual_channel:# \n"}));
}

TEST_F(RemovalByFrequency, AnEmptyAndAnUninitialisedListAreLeftAlone) {
  const bytes initialised = list_in_memory();
  EXPECT_EQ(remove(1), 0);
  EXPECT_TRUE(list_in_memory() == initialised);

  destroy_channel_list();
  const bytes destroyed = list_in_memory();
  EXPECT_EQ(remove(1), 0);
  EXPECT_TRUE(list_in_memory() == destroyed);
}

TEST_F(RemovalByFrequency, BothOfTwoNetworksWithOneIdentityAreSearched) {
  for (int i = 0; i < 2; ++i) {
    network_ch_st *network = alloc_network_ch_info(1, 1, nullptr);
    list_add_tail(&alloc_tp_ch_info(100, 11'000'000, 0)->list, &network->tp_list);
    network->tp_num = 1;
  }

  EXPECT_EQ(remove(1), 0);

  EXPECT_EQ(frequencies(), found{});
  EXPECT_TRUE(counts_match_lists());
}

}  // namespace
