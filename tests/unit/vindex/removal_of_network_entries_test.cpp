// Removing the entries of a network index from one view.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "removal_of_networks.h"

namespace {

using namespace test_support;

class RemovalOfNetworkEntries : public removal_test {};

TEST_F(RemovalOfNetworkEntries, EveryEntryOfTheNetworkIndexGoes) {
  for (const auto &[before, after] : removals_of_index_2()) {
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

}  // namespace
