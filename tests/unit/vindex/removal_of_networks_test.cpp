// Removing the networks of an index whole, and which view is current afterwards.
#include <base/verbosity.h>
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "removal_of_networks.h"

namespace {

using namespace test_support;

class RemovalOfNetworks : public removal_test {
 protected:
  // Services of networks in the order of their indexes, one each, all in the ALL view.
  static void file_networks(const std::vector<int> &indexes) {
    for (std::size_t i = 0; i < indexes.size(); ++i) {
      append_entry(VIEW_ALL, entry_of(*file_service({.net_index = static_cast<std::uint8_t>(indexes[i]),
                                                     .network_id = static_cast<std::uint16_t>(i + 1)}),
                                      static_cast<std::int16_t>(i + 1)));
    }
  }
  static std::vector<int> filed_indexes() {
    std::vector<int> found;
    for (const network_ch_st *network : networks()) {
      found.push_back(network->net_index);
    }
    return found;
  }
  // A channel of network index 2 as the only entry of a view.
  static void only_entry(std::int8_t view) { append_entry(view, entry_of(*file_service({.net_index = 2}), 1)); }
};

const std::string no_view_line = "ERROR: remove_channel_info_by_net_index:# \n";

TEST_F(RemovalOfNetworks, EveryNetworkWithTheIndexGoesWithItsEntries) {
  for (const auto &[before, after] : removals_of_index_2()) {
    reset_channel_list();
    file_networks(before);

    EXPECT_EQ(remove_channel_info_by_net_index(2), 0);

    EXPECT_EQ(filed_indexes(), after);
    EXPECT_EQ(list.network_num, after.size());
    EXPECT_EQ(net_indexes(VIEW_ALL), after);
  }
}

TEST_F(RemovalOfNetworks, TheIndexIsTheWholeByte) {
  file_networks({0, 255});

  remove_channel_info_by_net_index(255);
  EXPECT_EQ(filed_indexes(), (std::vector<int>{0}));

  remove_channel_info_by_net_index(0);
  EXPECT_EQ(list.network_num, 0);
}

TEST_F(RemovalOfNetworks, ANetworkGoesWithAllItsTranspondersAndChannels) {
  for (int i = 0; i < 6; ++i) {
    file_service(
        {.net_index = 2, .frequency = 11'000'000 + i / 2 * 10'000, .service_id = static_cast<std::uint16_t>(i)});
  }
  file_service({.net_index = 1});

  remove_channel_info_by_net_index(2);

  EXPECT_EQ(filed_indexes(), (std::vector<int>{1}));
  EXPECT_TRUE(counts_match_lists());
}

TEST_F(RemovalOfNetworks, EveryViewButTheWorkViewIsSwept) {
  channel_st *gone = file_service({.net_index = 2});
  channel_st *kept = file_service({.net_index = 1});
  list_around(*gone, *kept);

  remove_channel_info_by_net_index(2);

  expect_gone_from_swept_views(kept);
}

TEST_F(RemovalOfNetworks, EntriesThatNeverHadAChannelAreSweptToo) {
  append_entry(VIEW_USER, entry_with({.net_index = 9}));

  remove_channel_info_by_net_index(2);

  EXPECT_EQ(count_of(VIEW_USER), 0);
}

TEST_F(RemovalOfNetworks, TheHistoryForgetsTheChannels) {
  only_entry(VIEW_ALL);
  add_return_channel(0, 2, 1, 100, 11'000'000, 1, 0);
  ASSERT_NE(get_return_channel()->vch.rch, nullptr);

  remove_channel_info_by_net_index(2);

  EXPECT_EQ(get_return_channel()->vch.rch, nullptr);
}

TEST_F(RemovalOfNetworks, ATvViewThatTheSweepEmptiesBecomesCurrent) {
  only_entry(VIEW_TV);
  append_entry(VIEW_RADIO, entry_of(*file_service({.net_index = 1}), 1));
  list.use_group_list = 6;
  list.service_type = 2;
  list.net_index = 2;

  EXPECT_EQ(remove_channel_info_by_net_index(2), 0);

  EXPECT_EQ(get_vindex_type(), VIEW_TV);
  EXPECT_EQ(list.cur_vch, list.tv_vch);
  EXPECT_EQ(list.cur_vnumber, &list.tv_vnumber);
  EXPECT_EQ(get_channel_list_number(), 0);
  EXPECT_EQ(list.use_group_list, 0);
  EXPECT_EQ(list.service_type, 1);
  EXPECT_EQ(list.net_index, -1);
}

TEST_F(RemovalOfNetworks, WithoutTvTheRadioViewBecomesCurrentThoughTheSweepEmptiesIt) {
  only_entry(VIEW_RADIO);

  remove_channel_info_by_net_index(2);

  EXPECT_EQ(get_vindex_type(), VIEW_RADIO);
  EXPECT_EQ(list.cur_vch, list.radio_vch);
  EXPECT_EQ(get_channel_list_number(), 0);
  EXPECT_EQ(list.service_type, 2);
}

TEST_F(RemovalOfNetworks, WithoutTvAndRadioTheCurrentViewStays) {
  only_entry(VIEW_USER);
  change_vindex_type(VIEW_USER);
  list.use_group_list = 3;

  EXPECT_EQ(remove_channel_info_by_net_index(2), 0);

  EXPECT_EQ(get_vindex_type(), VIEW_USER);
  EXPECT_EQ(list.cur_vch, list.user_vch);
  EXPECT_EQ(list.cur_vnumber, &list.user_vnumber);
  EXPECT_EQ(list.use_group_list, 3);
  EXPECT_EQ(get_channel_list_number(), 0);
}

TEST_F(RemovalOfNetworks, TheTvViewBecomesCurrentThoughNoNetworkHasTheIndex) {
  append_entry(VIEW_TV, entry_of(*file_service({.net_index = 1}), 1));

  EXPECT_EQ(remove_channel_info_by_net_index(2), 0);

  EXPECT_EQ(get_vindex_type(), VIEW_TV);
  EXPECT_EQ(count_of(VIEW_TV), 1);
}

TEST_F(RemovalOfNetworks, ReportsWithTheScansLevelThatNoViewIsLeft) {
  const auto writes_with = [](int own_level, int scan_level) {
    const log_capture log(own_level);
    verbosity_map[1] = scan_level;
    remove_channel_info_by_net_index(2);
    return log.writes();
  };

  EXPECT_EQ(writes_with(-1, 0), lines{no_view_line});
  EXPECT_EQ(writes_with(0, 0), lines{no_view_line});
  EXPECT_EQ(writes_with(0, -1), lines{});
  EXPECT_EQ(writes_with(2, -1), lines{sweep_line});
  EXPECT_EQ(writes_with(2, 0), (lines{no_view_line, sweep_line}));
}

TEST_F(RemovalOfNetworks, DoesNotReportAnErrorWhileThereIsAView) {
  only_entry(VIEW_TV);
  EXPECT_EQ(writes_at(1, [] { return remove_channel_info_by_net_index(2); }), lines{});
  only_entry(VIEW_RADIO);
  EXPECT_EQ(writes_at(1, [] { return remove_channel_info_by_net_index(2); }), lines{});
}

TEST_F(RemovalOfNetworks, NamesTheNetworksAtLevelFiveBehindAnEmptyLine) {
  only_entry(VIEW_ALL);
  file_service({.net_index = 2, .network_id = 2});
  const lines expected = {"\n",
                          "ChannelAPI remove_channel_info_by_net_index:# network name(Network)\n",
                          "ChannelAPI release_tp_ch_info:# \n",
                          "ChannelAPI remove_channel_info_by_net_index:# network name(Network)\n",
                          "ChannelAPI release_tp_ch_info:# \n",
                          no_view_line,
                          sweep_line};

  EXPECT_EQ(writes_at(5, [] { return remove_channel_info_by_net_index(2); }), expected);
}

TEST_F(RemovalOfNetworks, NamesNothingBelowLevelFive) {
  only_entry(VIEW_ALL);

  EXPECT_EQ(writes_at(4, [] { return remove_channel_info_by_net_index(2); }),
            (lines{"ChannelAPI release_tp_ch_info:# \n", no_view_line, sweep_line}));
}

TEST_F(RemovalOfNetworks, TheEmptyLineIsColouredAndIsWrittenWithoutNetworksToo) {
  const log_capture log(5);
  remove_channel_info_by_net_index(2);

  EXPECT_EQ(log.raw().substr(0, 10), "\033[32m\n\033[0m");
  EXPECT_EQ(log.writes(), (lines{"\n", no_view_line, sweep_line}));
}

TEST_F(RemovalOfNetworks, ANameWithoutTerminatorEndsWithItsField) {
  only_entry(VIEW_ALL);
  std::memset(networks().at(0)->network_name, 'n', 64);

  EXPECT_EQ(writes_at(5, [] { return remove_channel_info_by_net_index(2); }).at(1),
            "ChannelAPI remove_channel_info_by_net_index:# network name(" + std::string(64, 'n') + ")\n");
}

TEST_F(RemovalOfNetworks, TheViewIsSwitchedBetweenTheReleaseAndTheSweep) {
  only_entry(VIEW_TV);
  const log_capture log(2);

  remove_channel_info_by_net_index(2);

  const lines writes = log.writes();
  ASSERT_EQ(writes.size(), 5U);
  EXPECT_EQ(writes[0], "ChannelAPI release_tp_ch_info:# \n");
  EXPECT_EQ(writes[2], "ChannelAPI change_vindex_type:# \t USE LIST CHANGE CHANNEL LIST : 1  type('TV CH') \n");
  EXPECT_EQ(writes[4], sweep_line);
}

}  // namespace
