// The sweep: what no longer resolves to a real channel leaves every view but the work view.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/removal_test.h"

namespace {

using namespace test_support;

class Sweep : public removal_test {
 protected:
  // Whether an entry survives a sweep of the USER view.
  static bool survives(const channel_key &key) {
    init_vindex(VIEW_USER);
    append_entry(VIEW_USER, entry_with(key));
    remove_invalid_virtual_channel();
    return count_of(VIEW_USER) == 1;
  }
};

TEST_F(Sweep, RemovesWhatDoesNotResolveFromEveryViewButTheWorkView) {
  file(1);
  file(3);
  for (const view_case &each : every_view()) {
    fill_unfiled(each.code, 4);
  }

  EXPECT_EQ(remove_invalid_virtual_channel(), 0);

  for (const view_case &each : swept_views()) {
    EXPECT_EQ(service_ids(each.code), (std::vector<int>{1, 3})) << int{each.code};
    EXPECT_TRUE(slots_behind_count_are_zero(each.code, each.capacity)) << int{each.code};
  }
  EXPECT_EQ(service_ids(VIEW_WORK), (std::vector<int>{1, 2, 3, 4}));
}

TEST_F(Sweep, RemovesAdjacentEntriesWhereverTheyStand) {
  struct sweeping {
    std::vector<int> before;
    std::vector<int> after;
  };
  file(1);
  file(2);
  for (const auto &[before, after] : std::vector<sweeping>{{{9}, {}},
                                                           {{9, 8, 7}, {}},
                                                           {{9, 9, 1}, {1}},
                                                           {{1, 9, 9}, {1}},
                                                           {{9, 2, 9, 9, 1, 9}, {2, 1}},
                                                           {{1, 2, 1}, {1, 2, 1}},
                                                           {{}, {}}}) {
    init_vindex(VIEW_TV);
    for (const int id : before) {
      append_entry(VIEW_TV, entry_with({.service_id = id}));
    }

    remove_invalid_virtual_channel();

    EXPECT_EQ(service_ids(VIEW_TV), after);
    EXPECT_TRUE(slots_behind_count_are_zero(VIEW_TV, 4000));
  }
}

TEST_F(Sweep, KeepsWholeEntriesAndTheirNumbers) {
  append_entry(VIEW_USER, entry_with({.service_id = 9}));
  virtual_channel_st kept = entry_of(*file(1), 30, 4, -7);
  kept.favorite_id = 200;
  kept.reserved_7 = 1;
  kept.reserved_13 = 2;
  append_entry(VIEW_USER, kept);

  remove_invalid_virtual_channel();

  EXPECT_EQ(std::memcmp(&list.user_vch[0], &kept, sizeof kept), 0);
}

TEST_F(Sweep, EntriesAreResolvedFromTheirIdentityNotFromTheirPointer) {
  channel_st *service = file(1);
  append_entry(VIEW_USER, entry_with({.service_id = 1}));
  virtual_channel_st stale = entry_with({.service_id = 2});
  stale.rch = service;
  append_entry(VIEW_USER, stale);

  remove_invalid_virtual_channel();

  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{1}));
  EXPECT_EQ(list.user_vch[0].rch, nullptr) << "the sweep links nothing";
}

TEST_F(Sweep, ResolvesByFrequencyWithinTheToleranceAndPolarisation) {
  file(1);

  EXPECT_TRUE(survives({}));
  EXPECT_TRUE(survives({.frequency = 11'000'000 - 2499}));
  EXPECT_TRUE(survives({.frequency = 11'000'000 + 2499}));
  EXPECT_FALSE(survives({.frequency = 11'000'000 - 2500}));
  EXPECT_FALSE(survives({.frequency = 11'000'000 + 2500}));
  EXPECT_FALSE(survives({.polarisation = 1}));
  EXPECT_FALSE(survives({.net_index = 2}));
  EXPECT_FALSE(survives({.network_id = 2}));
  EXPECT_FALSE(survives({.service_id = 2}));
}

TEST_F(Sweep, NeitherTheTagNorWithAFrequencyTheTransportStreamMatters) {
  file(1);

  EXPECT_TRUE(survives({.tag = 5}));
  EXPECT_TRUE(survives({.ts_id = 101}));
}

TEST_F(Sweep, AnEntryWithoutFrequencyIsResolvedByItsTransportStream) {
  file(1);

  EXPECT_TRUE(survives({.frequency = 0}));
  EXPECT_TRUE(survives({.frequency = 0, .polarisation = 1}));
  EXPECT_FALSE(survives({.ts_id = 101, .frequency = 0}));
}

TEST_F(Sweep, WithoutNetworksEveryEntryGoes) {
  for (const view_case &each : every_view()) {
    fill_unfiled(each.code, each.capacity);
  }

  EXPECT_EQ(remove_invalid_virtual_channel(), 0);

  for (const view_case &each : swept_views()) {
    EXPECT_EQ(count_of(each.code), 0) << int{each.code};
    EXPECT_TRUE(slots_behind_count_are_zero(each.code, each.capacity)) << int{each.code};
  }
  EXPECT_EQ(count_of(VIEW_WORK), 5000);
}

TEST_F(Sweep, FullViewsKeepWhatResolves) {
  file(1);
  for (const view_case &each : swept_views()) {
    for (int i = 0; i < each.capacity; ++i) {
      append_entry(each.code, entry_with({.service_id = i % 2 == 0 ? 1 : 2}, i + 1));
    }
  }

  remove_invalid_virtual_channel();

  for (const view_case &each : swept_views()) {
    EXPECT_EQ(count_of(each.code), each.capacity / 2) << int{each.code};
    EXPECT_EQ(get_virtual_channel_st(each.code)[each.capacity / 2 - 1].major_ch_num, each.capacity - 1);
  }
}

TEST_F(Sweep, TheHierarchyStays) {
  const std::vector<channel_st *> filed = {file(1), file(2)};

  remove_invalid_virtual_channel();

  EXPECT_EQ(services(*transponders(*networks().at(0)).at(0)), filed);
}

TEST_F(Sweep, TheCurrentViewStaysCurrentWhenItEmpties) {
  file(1);
  for (const std::int8_t code : {std::int8_t{VIEW_TV}, std::int8_t{VIEW_USER}, std::int8_t{15}}) {
    append_entry(code, entry_with({.service_id = 9}));
    change_vindex_type(code);

    remove_invalid_virtual_channel();

    EXPECT_EQ(get_vindex_type(), code);
    EXPECT_EQ(list.cur_vch, get_virtual_channel_st(code));
    EXPECT_EQ(list.cur_vnumber, get_virtual_channel_vnumber(code));
    EXPECT_EQ(get_channel_list_number(), 0);
  }
}

TEST_F(Sweep, LogsItsStartAtLevelTwo) {
  fill_view(VIEW_ALL, 2);

  EXPECT_EQ(writes_at(2, remove_invalid_virtual_channel), lines{sweep_line});
  EXPECT_EQ(writes_at(1, remove_invalid_virtual_channel), lines{});
}

TEST_F(Sweep, LogsOnlyItsStartAlsoWhenItRemoves) {
  file(1);
  append_entry(VIEW_ALL, entry_with({.service_id = 2}));

  EXPECT_EQ(writes_at(2, remove_invalid_virtual_channel), lines{sweep_line});
  EXPECT_EQ(count_of(VIEW_ALL), 0);
}

TEST_F(Sweep, TheLookupsOwnMissesTellTheOrderOfTheViews) {
  file(1);
  lines expected = {sweep_line};
  for (const view_case &each : every_view()) {
    const int id = 0x100 + each.code;
    append_entry(each.code, entry_with({.frequency = 12'000'000, .service_id = id}));
    append_entry(each.code, entry_with({.frequency = 13'000'000, .service_id = id}));
    if (each.code != VIEW_WORK) {
      char number[8];
      std::snprintf(number, sizeof number, "%x", static_cast<unsigned>(id));
      const std::string miss = "ChannelAPI get_channel_st:# Fail to find tp_ch ni=0x1,on_id=0x1,ts_id=0x64,freq=";
      expected.push_back(miss + "12000000,sid=0x" + number + " polar=0\n");
      expected.push_back(miss + "13000000,sid=0x" + number + " polar=0\n");
    }
  }

  EXPECT_EQ(writes_at(2, remove_invalid_virtual_channel), expected);
}

TEST_F(Sweep, ACountOutsideTheArrayIsReadAsTheNearestInside) {
  file(1);
  for (int i = 0; i < 40; ++i) {
    append_entry(10, entry_with({.service_id = 1 + i % 2}));
  }
  append_entry(11, entry_with({.service_id = 1}));
  list.favorite_vnumber[0] = 32767;
  list.favorite_vnumber[2] = -3;

  remove_invalid_virtual_channel();

  EXPECT_EQ(count_of(10), 20);
  EXPECT_EQ(service_ids(11), (std::vector<int>{1}));
  EXPECT_EQ(count_of(12), 0);
}

TEST_F(Sweep, WorksOnADestroyedList) {
  destroy_channel_list();

  EXPECT_EQ(remove_invalid_virtual_channel(), 0);
}

}  // namespace
