// Removing every entry of a channel from one view, with a line for each or silently. The two differ in what they log
// and return and in nothing else.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/removal_test.h"

namespace {

using namespace test_support;

struct removal {
  const char *name;
  int (*remove)(std::int8_t view, const channel_key &key);
  bool returns_count;
};

const removal removals[] = {{"Logged", remove_from, false}, {"Silent", remove_silently_from, true}};

class RemovalByIdentity : public removal_test, public ::testing::WithParamInterface<removal> {
 protected:
  // Removes, and checks the result against the count that is left.
  static void remove_leaving(int left, const channel_key &key, std::int8_t view = VIEW_TV) {
    EXPECT_EQ(GetParam().remove(view, key), GetParam().returns_count ? left : 0);
    EXPECT_EQ(count_of(view), left);
  }
  // The only entry of the TV view, before it is removed or not.
  static void only_entry(const channel_key &key) {
    init_vindex(VIEW_TV);
    append_entry(VIEW_TV, entry_with(key));
  }
  static void fill_with_services(const std::vector<int> &service_ids) {
    init_vindex(VIEW_TV);
    for (const int id : service_ids) {
      append_entry(VIEW_TV, entry_with({.service_id = id}));
    }
  }
};

TEST_P(RemovalByIdentity, RemovesEveryMatchWhereverItStands) {
  struct removing {
    std::vector<int> before;
    std::vector<int> after;
  };
  for (const auto &[before, after] : std::vector<removing>{{{7}, {}},
                                                           {{7, 7, 7}, {}},
                                                           {{7, 1, 2}, {1, 2}},
                                                           {{1, 2, 7}, {1, 2}},
                                                           {{1, 7, 7, 7, 2}, {1, 2}},
                                                           {{7, 1, 7, 7, 2, 7}, {1, 2}},
                                                           {{1, 2}, {1, 2}}}) {
    fill_with_services(before);

    remove_leaving(static_cast<int>(after.size()), {.service_id = 7});

    EXPECT_EQ(service_ids(VIEW_TV), after);
    EXPECT_TRUE(slots_behind_count_are_zero(VIEW_TV, 4000));
  }
}

TEST_P(RemovalByIdentity, KeepsWholeEntriesAndTheirNumbers) {
  fill_with_services({7, 1});
  virtual_channel_st &kept = list.tv_vch[1];
  kept.major_ch_num = 30;
  kept.favorite_id = 200;
  kept.reserved_7 = 1;
  kept.reserved_13 = 2;
  kept.rch = file(1);
  const virtual_channel_st before = kept;

  remove_leaving(1, {.service_id = 7});

  EXPECT_EQ(std::memcmp(&list.tv_vch[0], &before, sizeof before), 0);
}

TEST_P(RemovalByIdentity, ComparesAllSevenValues) {
  const channel_key key;
  for (const channel_key &other : std::vector<channel_key>{{.tag = 1},
                                                           {.tag = -1},
                                                           {.net_index = 2},
                                                           {.network_id = 2},
                                                           {.network_id = 0x101},
                                                           {.ts_id = 101},
                                                           {.frequency = 12'000'000},
                                                           {.service_id = 0x101},
                                                           {.polarisation = 1}}) {
    only_entry(other);

    remove_leaving(1, key);
    remove_leaving(0, other);
  }
}

TEST_P(RemovalByIdentity, ComparesPolarisationsExactly) {
  only_entry({.polarisation = 2});

  remove_leaving(1, {.polarisation = 1});
  remove_leaving(0, {.polarisation = 2});
}

TEST_P(RemovalByIdentity, FrequenciesMatchWithinTheTolerance) {
  for (const std::uint32_t frequency : {11'000'000U - 2499, 11'000'000U, 11'000'000U + 2499}) {
    only_entry({.frequency = frequency});
    remove_leaving(0, {.frequency = 11'000'000});
  }
  for (const std::uint32_t frequency : {11'000'000U - 2500, 11'000'000U + 2500}) {
    only_entry({.frequency = frequency});
    remove_leaving(1, {.frequency = 11'000'000});
  }
}

TEST_P(RemovalByIdentity, FrequencyZeroIsNoWildcard) {
  only_entry({.frequency = 2500});
  remove_leaving(1, {.frequency = 0});
  only_entry({.frequency = 2499});
  remove_leaving(0, {.frequency = 0});
  only_entry({.frequency = 0});
  remove_leaving(1, {.frequency = 2500});
  remove_leaving(0, {.frequency = 2499});
}

TEST_P(RemovalByIdentity, FrequenciesDoNotWrapAround) {
  only_entry({.frequency = 0xFFFF'FFFF});

  remove_leaving(1, {.frequency = 0});
  remove_leaving(1, {.frequency = 0xFFFF'FFFF - 2500});
  remove_leaving(0, {.frequency = 0xFFFF'FFFF - 2499});
}

TEST_P(RemovalByIdentity, AnEmptyViewHasNothingToRemove) {
  remove_leaving(0, {});
  EXPECT_EQ(writes_at(5, [] { return GetParam().remove(VIEW_TV, {}); }), lines{});
}

TEST_P(RemovalByIdentity, AnUnknownViewFailsWithTheWarningsOfItsLookup) {
  for (const std::int8_t code : unknown_codes) {
    const std::string warning = ":# unknown vch_type=" + std::to_string(code) + "\n";
    EXPECT_EQ(writes_at(5, [&] { EXPECT_EQ(GetParam().remove(code, {}), -1); }),
              (lines{"WARNING: get_virtual_channel_st" + warning, "WARNING: get_virtual_channel_vnumber" + warning}));
    EXPECT_EQ(writes_at(0, [&] { return GetParam().remove(code, {}); }), lines{});
  }
}

TEST_P(RemovalByIdentity, WorksOnEveryFullViewAndOnNoOther) {
  for (const view_case &each : every_view()) {
    fill_unfiled(each.code, each.capacity);
  }
  for (const view_case &each : every_view()) {
    remove_leaving(each.capacity - 1, {.service_id = 3}, each.code);

    EXPECT_EQ(get_virtual_channel_st(each.code)[2].service_id, 4) << int{each.code};
    EXPECT_EQ(get_virtual_channel_st(each.code)[each.capacity - 2].service_id, each.capacity) << int{each.code};
    EXPECT_TRUE(slots_behind_count_are_zero(each.code, each.capacity)) << int{each.code};
  }
}

TEST_P(RemovalByIdentity, EmptiesAFullView) {
  for (int i = 0; i < 5000; ++i) {
    append_entry(VIEW_USER, entry_with({}));
  }

  remove_leaving(0, {}, VIEW_USER);

  EXPECT_TRUE(slots_behind_count_are_zero(VIEW_USER, 5000));
}

TEST_P(RemovalByIdentity, TheRealChannelAndTheCurrentViewStay) {
  const channel_st *service = fill_view(VIEW_TV, 1)[0];
  change_vindex_type(VIEW_TV);

  remove_leaving(0, {});

  EXPECT_EQ(get_channel_st(1, 1, 100, 11'000'000, 1, 0), service);
  EXPECT_EQ(get_vindex_type(), VIEW_TV);
  EXPECT_EQ(list.cur_vch, list.tv_vch);
  EXPECT_EQ(get_channel_list_number(), 0);
}

TEST_P(RemovalByIdentity, ACountOutsideTheArrayIsReadAsTheNearestInside) {
  fill_unfiled(10, 40);
  fill_unfiled(11, 1);
  list.favorite_vnumber[0] = 32767;

  remove_leaving(39, {.service_id = 1}, 10);
  EXPECT_EQ(service_ids(11), (std::vector<int>{1}));

  list.favorite_vnumber[1] = -1;
  GetParam().remove(11, {.service_id = 1});
  EXPECT_EQ(list.favorite_vch[1][0].service_id, 1);
  list.favorite_vnumber[1] = 1;
}

INSTANTIATE_TEST_SUITE_P(With, RemovalByIdentity, ::testing::ValuesIn(removals),
                         [](const auto &tested) { return std::string(tested.param.name); });

class RemovalByIdentityLog : public removal_test {};

TEST_F(RemovalByIdentityLog, EachRemovedEntryIsALineAtLevelTwo) {
  const channel_key key = {.tag = -1,
                           .net_index = 0xFE,
                           .network_id = 0xBEEF,
                           .ts_id = 0x0A,
                           .frequency = 0xFFFF'FFFF,
                           .service_id = 0xCAFE,
                           .polarisation = 255};
  const auto removal_of_two = [&key] {
    append_entry(VIEW_USER, entry_with(key));
    append_entry(VIEW_USER, entry_with({}));
    append_entry(VIEW_USER, entry_with(key));
    remove_from(VIEW_USER, key);
    return 0;
  };
  const std::string line = "ChannelAPI vtype_remove_vch:# fe,beef,a,-1,cafe,255\n";

  EXPECT_EQ(writes_at(1, removal_of_two), lines{});
  EXPECT_EQ(writes_at(2, removal_of_two), (lines{line, line}));
  EXPECT_EQ(writes_at(5, removal_of_two), (lines{line, line}));
}

TEST_F(RemovalByIdentityLog, EachLineHasTheFrequencyThatWasAskedFor) {
  append_entry(VIEW_USER, entry_with({.frequency = 11'002'000}));
  append_entry(VIEW_USER, entry_with({.frequency = 10'998'000}));
  const std::string line = "ChannelAPI vtype_remove_vch:# 1,1,64,11000000,1,0\n";

  EXPECT_EQ(writes_at(2, [] { return remove_from(VIEW_USER, {.frequency = 11'000'000}); }), (lines{line, line}));
}

TEST_F(RemovalByIdentityLog, ThreeAdjacentCopiesAreThreeLines) {
  for (int i = 0; i < 3; ++i) {
    append_entry(VIEW_USER, entry_with({}));
  }
  const std::string line = "ChannelAPI vtype_remove_vch:# 1,1,64,11000000,1,0\n";

  EXPECT_EQ(writes_at(2, [] { return remove_from(VIEW_USER, {}); }), (lines{line, line, line}));
}

TEST_F(RemovalByIdentityLog, NothingIsLoggedWhereNothingMatches) {
  fill_unfiled(VIEW_USER, 2);

  EXPECT_EQ(writes_at(5, [] { return remove_from(VIEW_USER, {.service_id = 3}); }), lines{});
}

TEST_F(RemovalByIdentityLog, TheSilentRemovalIsSilentAtEveryLevel) {
  fill_unfiled(VIEW_USER, 2);

  EXPECT_EQ(writes_at(5, [] { return remove_silently_from(VIEW_USER, {.service_id = 1}); }), lines{});
}

}  // namespace
