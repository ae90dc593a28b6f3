// Removing a network index: its entries from one view, or its networks whole, and which view is current afterwards.
#include <base/verbosity.h>
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/removal_test.h"

namespace {

using namespace test_support;

class RemovalOfNetworkEntries : public removal_test {};

std::vector<int> net_indexes(std::int8_t view) {
  std::vector<int> found;
  for (int i = 0; i < count_of(view); ++i) {
    found.push_back(get_virtual_channel_st(view)[i].net_index);
  }
  return found;
}

TEST_F(RemovalOfNetworkEntries, EveryEntryOfTheNetworkIndexGoes) {
  struct removing {
    std::vector<int> before;
    std::vector<int> after;
  };
  for (const auto &[before, after] : std::vector<removing>{{{2}, {}},
                                                           {{2, 2, 2}, {}},
                                                           {{2, 2, 1}, {1}},
                                                           {{1, 2, 2}, {1}},
                                                           {{2, 0, 2, 2, 255, 2}, {0, 255}},
                                                           {{0, 1, 255}, {0, 1, 255}},
                                                           {{}, {}}}) {
    for (const view_case &each : every_view()) {
      init_vindex(each.code);
      for (const int net_index : before) {
        append_entry(each.code, entry_with({.net_index = net_index}));
      }

      EXPECT_EQ(vtype_remove_by_net_index(2, each.code), 0);

      EXPECT_EQ(net_indexes(each.code), after) << int{each.code};
      EXPECT_TRUE(slots_behind_count_are_zero(each.code, each.capacity)) << int{each.code};
    }
  }
}

TEST_F(RemovalOfNetworkEntries, NothingButTheNetworkIndexIsCompared) {
  append_entry(VIEW_ALL, entry_with({.tag = -3,
                                     .net_index = 255,
                                     .network_id = 9,
                                     .ts_id = 9,
                                     .frequency = 0,
                                     .service_id = 9,
                                     .polarisation = 1}));
  append_entry(VIEW_ALL, entry_with({.net_index = 255}));
  append_entry(VIEW_ALL, entry_with({.net_index = 0}));

  vtype_remove_by_net_index(255, VIEW_ALL);
  EXPECT_EQ(net_indexes(VIEW_ALL), (std::vector<int>{0}));

  vtype_remove_by_net_index(0, VIEW_ALL);
  EXPECT_EQ(count_of(VIEW_ALL), 0);
}

TEST_F(RemovalOfNetworkEntries, EmptiesAFullViewAndNoOther) {
  for (const view_case &each : every_view()) {
    fill_unfiled(each.code, each.capacity);
  }
  int entries_left = 0;
  for (const view_case &each : every_view()) {
    entries_left += each.capacity;
  }
  for (const view_case &each : every_view()) {
    EXPECT_EQ(vtype_remove_by_net_index(1, each.code), 0);

    EXPECT_EQ(count_of(each.code), 0) << int{each.code};
    entries_left -= each.capacity;
    int counted = 0;
    for (const view_case &other : every_view()) {
      counted += count_of(other.code);
    }
    EXPECT_EQ(counted, entries_left) << int{each.code};
  }
}

TEST_F(RemovalOfNetworkEntries, TheNetworkAndItsChannelsStay) {
  const std::vector<channel_st *> filed = fill_view(VIEW_ALL, 2);

  vtype_remove_by_net_index(1, VIEW_ALL);

  EXPECT_EQ(services(*transponders(*networks().at(0)).at(0)), filed);
  EXPECT_EQ(list.cur_vch, list.vch);
}

TEST_F(RemovalOfNetworkEntries, IsSilent) {
  fill_unfiled(VIEW_TV, 2);

  EXPECT_EQ(writes_at(5, [] { return vtype_remove_by_net_index(1, VIEW_TV); }), lines{});
  EXPECT_EQ(writes_at(5, [] { return vtype_remove_by_net_index(1, VIEW_TV); }), lines{});
}

TEST_F(RemovalOfNetworkEntries, AnUnknownViewFailsWithTheWarningsOfItsLookup) {
  for (const std::int8_t code : unknown_codes) {
    const std::string warning = ":# unknown vch_type=" + std::to_string(code) + "\n";
    EXPECT_EQ(writes_at(5, [&] { EXPECT_EQ(vtype_remove_by_net_index(1, code), -1); }),
              (lines{"WARNING: get_virtual_channel_st" + warning, "WARNING: get_virtual_channel_vnumber" + warning}));
    EXPECT_EQ(writes_at(0, [&] { return vtype_remove_by_net_index(1, code); }), lines{});
  }
}

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

const std::string sweep_line = "ChannelAPI remove_invalid_virtual_channel:# \n";
const std::string no_view_line = "ERROR: remove_channel_info_by_net_index:# \n";

TEST_F(RemovalOfNetworks, EveryNetworkWithTheIndexGoesWithItsEntries) {
  struct removing {
    std::vector<int> before;
    std::vector<int> after;
  };
  for (const auto &[before, after] : std::vector<removing>{{{2}, {}},
                                                           {{2, 2, 2}, {}},
                                                           {{2, 2, 1}, {1}},
                                                           {{1, 2, 2}, {1}},
                                                           {{2, 0, 2, 2, 255, 2}, {0, 255}},
                                                           {{0, 1}, {0, 1}},
                                                           {{}, {}}}) {
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
  for (const view_case &each : every_view()) {
    append_entry(each.code, entry_of(*gone, 1));
    append_entry(each.code, entry_of(*kept, 2));
    append_entry(each.code, entry_with({.net_index = 9}, 3));
  }

  remove_channel_info_by_net_index(2);

  for (const view_case &each : swept_views()) {
    EXPECT_EQ(majors(each.code), (std::vector<int>{2})) << int{each.code};
    EXPECT_EQ(get_virtual_channel_st(each.code)[0].rch, kept) << int{each.code};
  }
  EXPECT_EQ(majors(VIEW_WORK), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(get_virtual_channel_st(VIEW_WORK)[0].rch, nullptr);
  EXPECT_EQ(get_virtual_channel_st(VIEW_WORK)[1].rch, kept);
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
