// Lookups of view entries by service id, by transport identity and by transponder. Three searches by identity differ in
// what a frequency of 0 means; each difference has its test.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lookup_on_transponder.h"
#include "support/channel_key.h"
#include "support/log_capture.h"
#include "support/missing_current_view.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

int index_of(const channel_key &sought) { return sought.call(get_vch_index_by_ts_info); }

int index_in(const channel_key &sought, std::int8_t type) { return sought.call(vtype_get_vch_index_by_ts_info, type); }

virtual_channel_st *entry_in(const channel_key &sought, std::int8_t type) {
  return sought.call(vtype_get_vch_by_ts_info, type);
}

// Which of the three searches find the only entry of the ALL view.
struct found {
  bool current_index;
  bool named_entry;
  bool named_index;
  bool operator==(const found &) const = default;
};

constexpr found all_three = {true, true, true};
constexpr found none = {false, false, false};

std::ostream &operator<<(std::ostream &out, const found &each) {
  return out << "current index " << each.current_index << ", named entry " << each.named_entry << ", named index "
             << each.named_index;
}

found search(const channel_key &q) {
  const virtual_channel_st *entry = entry_in(q, VIEW_ALL);
  EXPECT_TRUE(entry == nullptr || entry == get_channel_list()->vch);
  return {index_of(q) == 0, entry != nullptr, index_in(q, VIEW_ALL) == 0};
}

class LookupsByIdentity : public store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    fill_unfiled(VIEW_ALL, 1);
  }
};

TEST_F(LookupsByIdentity, TheWholeIdentityIsFound) { EXPECT_EQ(search({}), all_three); }

TEST_F(LookupsByIdentity, WithAFrequencyAllSevenValuesMustMatch) {
  EXPECT_EQ(search({.tag = 1}), none);
  EXPECT_EQ(search({.tag = -1}), none);
  EXPECT_EQ(search({.net_index = 2}), none);
  EXPECT_EQ(search({.network_id = 2}), none);
  EXPECT_EQ(search({.ts_id = 101}), none);
  EXPECT_EQ(search({.frequency = 12'000'000}), none);
  EXPECT_EQ(search({.service_id = 2}), none);
  EXPECT_EQ(search({.polarisation = 1}), none);
}

TEST_F(LookupsByIdentity, FrequenciesMatchBelowTheTolerance) {
  EXPECT_EQ(search({.frequency = 11'002'499}), all_three);
  EXPECT_EQ(search({.frequency = 10'997'501}), all_three);
  EXPECT_EQ(search({.frequency = 11'002'500}), none);
  EXPECT_EQ(search({.frequency = 10'997'500}), none);
}

TEST_F(LookupsByIdentity, TheToleranceHoldsForFrequenciesOfSatellites) {
  list.vch[0].frequency = 11'727'499;
  EXPECT_EQ(search({.frequency = 11'725'000}), all_three);

  list.vch[0].frequency = 11'727'500;
  EXPECT_EQ(search({.frequency = 11'725'000}), none);
}

TEST_F(LookupsByIdentity, FrequencyDifferencesDoNotWrap) {
  list.vch[0].frequency = 0xFFFF'FFFF;
  EXPECT_EQ(search({.frequency = 1}), none);
  EXPECT_EQ(search({.frequency = 0xFFFF'FFFF - 2499}), all_three);
  EXPECT_EQ(search({.frequency = 0xFFFF'FFFF - 2500}), none);

  list.vch[0].frequency = 1;
  EXPECT_EQ(search({.frequency = 0xFFFF'FFFF}), none);
  EXPECT_EQ(search({.frequency = 2500}), all_three);
  EXPECT_EQ(search({.frequency = 2501}), none);
}

TEST_F(LookupsByIdentity, WithoutAFrequencyAnyFrequencyMatches) {
  EXPECT_EQ(search({.frequency = 0}), all_three);
  list.vch[0].frequency = 0xFFFF'FFFF;
  EXPECT_EQ(search({.frequency = 0}), all_three);
  list.vch[0].frequency = 0;
  EXPECT_EQ(search({.frequency = 0}), all_three);
}

TEST_F(LookupsByIdentity, AnEntryWithoutFrequencyIsFoundByFrequenciesNearZero) {
  list.vch[0].frequency = 0;

  EXPECT_EQ(search({.frequency = 2499}), all_three);
  EXPECT_EQ(search({.frequency = 2500}), none);
}

TEST_F(LookupsByIdentity, WithoutAFrequencyOnlyTheIndexInANamedViewIgnoresTheTag) {
  EXPECT_EQ(search({.tag = 1, .frequency = 0}), (found{false, false, true}));
  EXPECT_EQ(search({.tag = -128, .frequency = 0}), (found{false, false, true}));
}

TEST_F(LookupsByIdentity, WithoutAFrequencyOnlyTheCurrentViewComparesThePolarisation) {
  EXPECT_EQ(search({.frequency = 0, .polarisation = 1}), (found{false, true, true}));
}

TEST_F(LookupsByIdentity, WithoutAFrequencyTagAndPolarisationBothLeftOutInTheNamedIndexAlone) {
  EXPECT_EQ(search({.tag = 1, .frequency = 0, .polarisation = 1}), (found{false, false, true}));
}

TEST_F(LookupsByIdentity, WithoutAFrequencyTheIdsMustMatchEverywhere) {
  EXPECT_EQ(search({.net_index = 2, .frequency = 0}), none);
  EXPECT_EQ(search({.network_id = 2, .frequency = 0}), none);
  EXPECT_EQ(search({.ts_id = 101, .frequency = 0}), none);
  EXPECT_EQ(search({.frequency = 0, .service_id = 2}), none);
}

TEST_F(LookupsByIdentity, ValuesAtTheirLimitsAreCompared) {
  virtual_channel_st &entry = list.vch[0];
  entry.vch_tag = -128;
  entry.net_index = 255;
  entry.network_id = 0xFFFF;
  entry.ts_id = 0xFFFF;
  entry.frequency = 0xFFFF'FFFF;
  entry.service_id = 0xFFFF;
  entry.polarisation = 255;

  EXPECT_EQ(search({-128, 255, 0xFFFF, 0xFFFF, 0xFFFF'FFFF, 0xFFFF, 255}), all_three);
}

TEST_F(LookupsByIdentity, TheFirstMatchingEntryWins) {
  list.vch[1] = list.vch[0];
  list.vch[2] = list.vch[0];
  list.vch[0].service_id = 9;
  list.vnumber = 3;

  EXPECT_EQ(index_of({}), 1);
  EXPECT_EQ(index_in({}, VIEW_ALL), 1);
  EXPECT_EQ(entry_in({}, VIEW_ALL), &list.vch[1]);
  EXPECT_EQ(on_transponder({}, VIEW_ALL), &list.vch[0]);
}

TEST_F(LookupsByIdentity, EveryNamedViewIsSearchedToItsLastSlot) {
  for (const view_case &each : every_view()) {
    fill_unfiled(each.code, each.capacity);
    virtual_channel_st &last = get_virtual_channel_st(each.code)[each.capacity - 1];
    last.frequency = 12'000'000;
    const channel_key wanted = {.frequency = 12'000'000, .service_id = each.capacity};

    EXPECT_EQ(index_in(wanted, each.code), each.capacity - 1) << int{each.code};
    EXPECT_EQ(entry_in(wanted, each.code), &last) << int{each.code};
    EXPECT_EQ(on_transponder(wanted, each.code), &last) << int{each.code};

    --*get_virtual_channel_vnumber(each.code);
    EXPECT_EQ(index_in(wanted, each.code), -1) << int{each.code};
    EXPECT_EQ(entry_in(wanted, each.code), nullptr) << int{each.code};
    EXPECT_EQ(on_transponder(wanted, each.code), nullptr) << int{each.code};
    init_vindex(each.code);
  }
}

TEST_F(LookupsByIdentity, TheCurrentViewIsSearched) {
  fill_unfiled(VIEW_TV, 3);
  change_vindex_type(VIEW_TV);

  EXPECT_EQ(index_of({.service_id = 3}), 2);
  EXPECT_EQ(get_vch_index_by_service_id(3), 2);
}

TEST_F(LookupsByIdentity, MissesAreSilent) {
  EXPECT_EQ(writes_at(2, [] { return index_of({.service_id = 2}); }), lines{});
  EXPECT_EQ(writes_at(5, [] { return index_in({.service_id = 2}, VIEW_ALL); }), lines{});
  EXPECT_EQ(writes_at(5, [] { return entry_in({.service_id = 2}, VIEW_ALL); }), lines{});
  EXPECT_EQ(writes_at(5, [] { return on_transponder({.polarisation = 1}, VIEW_ALL); }), lines{});
  EXPECT_EQ(writes_at(5, [] { return get_vch_index_by_service_id(2); }), lines{});
}

TEST_F(LookupsByIdentity, EachVisitedEntryIsLoggedAtLevelThree) {
  fill_unfiled(VIEW_ALL, 3);
  list.vch[0].net_index = 200;
  list.vch[0].network_id = 0xABCD;
  list.vch[0].ts_id = 0xF;
  list.vch[0].frequency = 0xFFFF'FFFF;
  list.vch[0].polarisation = 255;
  const channel_key wanted = {.frequency = 11'000'001, .service_id = 2};
  const lines expected = {
      "ni(200-1) on_id(0xabcd-0x1), ts_id(0xf-0x64), freq(-1-11000001) sid(0x1-0x2) polar(255,0)\n",
      "ni(1-1) on_id(0x1-0x1), ts_id(0x64-0x64), freq(11000000-11000001) sid(0x2-0x2) polar(0,0)\n"};

  EXPECT_EQ(writes_at(3, [&] { EXPECT_EQ(index_of(wanted), 1); }), expected);
  EXPECT_EQ(writes_at(2, [&] { return index_of(wanted); }), lines{});
}

TEST_F(LookupsByIdentity, AMissVisitsEveryEntryAndSaysNoMore) {
  fill_unfiled(VIEW_ALL, 4);

  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(index_of({.service_id = 9}), -1); }).size(), 4U);
}

TEST_F(LookupsByIdentity, AnUnknownViewHoldsNothing) {
  for (const std::int8_t code : unknown_codes) {
    EXPECT_EQ(writes_at(0,
                        [&] {
                          EXPECT_EQ(index_in({}, code), -1);
                          EXPECT_EQ(entry_in({}, code), nullptr);
                          EXPECT_EQ(on_transponder({}, code), nullptr);
                        }),
              lines{});
  }
}

TEST_F(LookupsByIdentity, BothAccessorsWarnOfAnUnknownView) {
  const lines expected = {"WARNING: get_virtual_channel_st:# unknown vch_type=-1\n",
                          "WARNING: get_virtual_channel_vnumber:# unknown vch_type=-1\n"};

  EXPECT_EQ(writes_at(5, [] { return index_in({}, -1); }), expected);
  EXPECT_EQ(writes_at(5, [] { return entry_in({}, -1); }), expected);
  EXPECT_EQ(writes_at(5, [] { return on_transponder({}, -1); }), expected);
}

TEST_F(LookupsByIdentity, AnEmptyViewHoldsNothing) {
  init_vindex(VIEW_ALL);

  EXPECT_EQ(search({}), none);
  EXPECT_EQ(search({0, 0, 0, 0, 0, 0, 0}), none);
  EXPECT_EQ(get_vch_index_by_service_id(0), -1);
}

TEST_F(LookupsByIdentity, WithoutACurrentViewNothingIsFoundSilently) {
  const auto expect_misses = [] {
    EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(index_of({}), -1); }), lines{});
    EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(get_vch_index_by_service_id(1), -1); }), lines{});
  };

  without_current_view(expect_misses);
}

TEST_F(LookupsByIdentity, ACountOutsideTheArrayIsReadAsTheNearestInside) {
  fill_unfiled(10, 40);
  fill_unfiled(11, 1);
  list.favorite_vch[1][0].service_id = 777;
  list.favorite_vch[1][0].polarisation = 1;
  change_vindex_type(10);
  const channel_key in_next_group = {.service_id = 777, .polarisation = 1};

  list.favorite_vnumber[0] = 32767;
  EXPECT_EQ(index_of(in_next_group), -1);
  EXPECT_EQ(index_in(in_next_group, 10), -1);
  EXPECT_EQ(entry_in(in_next_group, 10), nullptr);
  EXPECT_EQ(on_transponder(in_next_group, 10), nullptr);
  EXPECT_EQ(get_vch_index_by_service_id(777), -1);
  EXPECT_EQ(get_vch_index_by_service_id(40), 39);

  list.favorite_vnumber[0] = -1;
  EXPECT_EQ(index_of({}), -1);
  EXPECT_EQ(index_in({}, 10), -1);
  EXPECT_EQ(get_vch_index_by_service_id(1), -1);
}

TEST_F(LookupsByIdentity, TheFirstEntryWithAServiceIdWins) {
  fill_unfiled(VIEW_ALL, 4);
  list.vch[1].service_id = 0xFFFF;
  list.vch[3].service_id = 0xFFFF;
  list.vch[2].service_id = 0;

  EXPECT_EQ(get_vch_index_by_service_id(1), 0);
  EXPECT_EQ(get_vch_index_by_service_id(0xFFFF), 1);
  EXPECT_EQ(get_vch_index_by_service_id(0), 2);
  EXPECT_EQ(get_vch_index_by_service_id(2), -1);
}

}  // namespace
