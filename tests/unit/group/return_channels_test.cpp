// The history of watched channels: its order, its limit, what identifies a channel and what an entry keeps.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "support/history_test.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

class ReturnChannels : public history_test {};

TEST_F(ReturnChannels, AnEmptyHistoryHoldsNothing) {
  EXPECT_EQ(get_return_channel_num(), 0);
  EXPECT_EQ(check({}), -1);
  EXPECT_EQ(forget({}), -1);
}

TEST_F(ReturnChannels, TheMostRecentChannelStandsFirst) {
  view_of(2);

  watch(service_number(1));
  watch(service_number(2));

  EXPECT_EQ(listed(), (std::vector<int>{2, 1}));
}

TEST_F(ReturnChannels, AChannelThatIsWatchedAgainMovesToTheTop) {
  view_of(2);
  watch(service_number(1));
  watch(service_number(2));

  watch(service_number(1));
  EXPECT_EQ(listed(), (std::vector<int>{1, 2}));

  watch(service_number(2));
  EXPECT_EQ(listed(), (std::vector<int>{2, 1}));
}

TEST_F(ReturnChannels, AChannelMovesToTheTopFromAnyPlace) {
  for (int place = 1; place < MAX_RETURN_CHANNEL; ++place) {
    reset_channel_list();
    init_return_channel();
    view_of(MAX_RETURN_CHANNEL);
    watch_services(1, MAX_RETURN_CHANNEL);
    std::vector<int> expected = listed();
    std::rotate(expected.begin(), expected.begin() + place, expected.begin() + place + 1);

    watch(service_number(MAX_RETURN_CHANNEL - place));

    EXPECT_EQ(listed(), expected) << place;
  }
}

TEST_F(ReturnChannels, TheHistoryKeepsTheLast20Channels) {
  view_of(21);
  for (int n = 1; n <= 20; ++n) {
    watch(service_number(n));
    EXPECT_EQ(get_return_channel_num(), n);
  }

  watch(service_number(21));

  EXPECT_EQ(get_return_channel_num(), 20);
  EXPECT_EQ(listed().front(), 21);
  EXPECT_EQ(listed().back(), 2);
  EXPECT_EQ(check(service_number(1)), -2);
}

TEST_F(ReturnChannels, AChannelThatIsNotListedIsToldFromAFullHistory) {
  view_of(21);
  watch_services(1, 19);
  EXPECT_EQ(check(service_number(21)), -1);

  watch(service_number(20));

  EXPECT_EQ(check(service_number(21)), -2);
}

TEST_F(ReturnChannels, AListedChannelIsFoundAtItsPlace) {
  view_of(20);
  watch_services(1, 20);

  EXPECT_EQ(check(service_number(20)), 0);
  EXPECT_EQ(check(service_number(19)), 1);
  EXPECT_EQ(check(service_number(1)), 19);
}

TEST_F(ReturnChannels, AnEntryKeepsTheGroupSelectionOfItsTime) {
  view_of(3);
  list.use_group_list = -5;
  list.service_type = -128;
  list.sub_group_id = -2;

  watch(service_number(3));
  list.use_group_list = 3;

  const return_channel_st &top = get_return_channel()[0];
  EXPECT_EQ(top.group, -5);
  EXPECT_EQ(top.service_type, -128);
  EXPECT_EQ(top.sub_group, -2);
  EXPECT_EQ(top.vindex, 2);
  EXPECT_EQ(top.tag, 0);
  EXPECT_EQ(top.net_index, 1);
}

TEST_F(ReturnChannels, AnEntryKeepsACopyOfTheViewEntry) {
  channel_st *service = file_service({.net_index = 255});
  virtual_channel_st entry = entry_of(*service, 7, 8, -1);
  entry.favorite_id = 9;
  entry.reserved_7 = 10;
  entry.reserved_13 = 11;
  append_entry(VIEW_ALL, entry);

  watch({.tag = -1, .net_index = 255, .frequency = 11'002'000});

  const return_channel_st &top = get_return_channel()[0];
  EXPECT_EQ(std::memcmp(&top.vch, &entry, sizeof entry), 0);
  EXPECT_EQ(top.tag, 255);
  EXPECT_EQ(top.net_index, 255);
}

TEST_F(ReturnChannels, AChannelThatMovesUpTakesTheSelectionAndThePositionOfNow) {
  view_of(2);
  watch(service_number(1));
  watch(service_number(2));
  list.sub_group_id = 44;
  std::swap(list.vch[0], list.vch[1]);

  watch(service_number(1));

  EXPECT_EQ(get_return_channel()[0].sub_group, 44);
  EXPECT_EQ(get_return_channel()[0].vindex, 1);
  EXPECT_EQ(get_return_channel()[1].sub_group, -1);
  EXPECT_EQ(get_return_channel()[1].vindex, 1);
}

TEST_F(ReturnChannels, TheChannelAtTheTopKeepsItsSelectionWhenItIsWatchedAgain) {
  view_of(1);
  watch(service_number(1));
  const return_channel_st before = get_return_channel()[0];
  list.use_group_list = 3;
  list.sub_group_id = 44;

  const lines writes = writes_of_watching(2, service_number(1));

  EXPECT_EQ(writes.back(), "ChannelAPI add_return_channel:# latest ch is same with this ch.\n");
  EXPECT_EQ(get_return_channel_num(), 1);
  EXPECT_EQ(std::memcmp(get_return_channel(), &before, sizeof before), 0);
}

TEST_F(ReturnChannels, EveryIdentifyingValueCounts) {
  view_of(1);
  watch({});
  const channel_key others[] = {{.tag = 1},       {.tag = -1},           {.net_index = 2},    {.network_id = 2},
                                {.ts_id = 101},   {.frequency = 0},      {.service_id = 2},   {.polarisation = 1},
                                {.net_index = 0}, {.network_id = 0x101}, {.ts_id = 100 + 256}};

  EXPECT_EQ(check({}), 0);
  for (const channel_key &other : others) {
    EXPECT_EQ(check(other), -1) << &other - others;
  }
}

TEST_F(ReturnChannels, AFrequencyLessThan2500AwayIsTheSame) {
  view_of(1);
  watch({});

  for (const std::uint32_t distance : {0U, 1U, 2499U}) {
    EXPECT_EQ(check({.frequency = 11'000'000 + distance}), 0) << distance;
    EXPECT_EQ(check({.frequency = 11'000'000 - distance}), 0) << distance;
  }
  for (const std::uint32_t distance : {2500U, 2501U}) {
    EXPECT_EQ(check({.frequency = 11'000'000 + distance}), -1) << distance;
    EXPECT_EQ(check({.frequency = 11'000'000 - distance}), -1) << distance;
  }
}

TEST_F(ReturnChannels, FrequenciesDifferAsUnsignedValues) {
  channel_st *service = file_service({.frequency = 0xFFFFFFFF});
  append_entry(VIEW_ALL, entry_of(*service, 1));
  watch({.frequency = 0xFFFFFFFF});

  EXPECT_EQ(check({.frequency = 0}), -1);
  EXPECT_EQ(check({.frequency = 0xFFFFFFFF - 2499}), 0);
}

TEST_F(ReturnChannels, AFrequency2500AwayIsAnotherChannelToWatch) {
  append_entry(VIEW_ALL, entry_of(*file_service({}), 1));
  append_entry(VIEW_ALL, entry_of(*file_service({.frequency = 11'002'500}), 2));

  watch({});
  watch({.frequency = 11'002'500});

  EXPECT_EQ(get_return_channel_num(), 2);
  EXPECT_EQ(get_return_channel()[0].vch.frequency, 11'002'500U);
}

TEST_F(ReturnChannels, TheFirstMatchingEntryIsFound) {
  append_entry(VIEW_ALL, entry_of(*file_service({}), 1));
  append_entry(VIEW_ALL, entry_of(*file_service({.frequency = 11'003'000}), 2));
  watch({});
  watch({.frequency = 11'003'000});
  ASSERT_EQ(get_return_channel_num(), 2);

  EXPECT_EQ(check({.frequency = 11'001'000}), 0);
}

TEST_F(ReturnChannels, AChannelThatTheCurrentViewLacksChangesNothing) {
  view_of(1);
  watch(service_number(1));
  const auto watch_other = [] {
    watch(service_number(2));
    return 0;
  };

  EXPECT_EQ(writes_at(0, watch_other), lines{"ERROR: add_return_channel:# Can't find vchannel index(-1).\n"});

  EXPECT_EQ(writes_at(-1, watch_other), lines{});
  EXPECT_EQ(listed(), std::vector<int>{1});
}

TEST_F(ReturnChannels, NothingIsWatchedWithoutACurrentView) {
  view_of(1);
  destroy_channel_list();

  EXPECT_EQ(writes_of_watching(0, service_number(1)),
            lines{"ERROR: add_return_channel:# Can't find vchannel index(-1).\n"});

  EXPECT_EQ(get_return_channel_num(), 0);
}

TEST_F(ReturnChannels, PositionsAreThoseOfTheCurrentView) {
  const auto services = fill_view(VIEW_ALL, 3);
  append_entry(VIEW_USER, entry_of(*services[2], 9));
  change_vindex_type(VIEW_USER);

  watch(service_number(3));

  EXPECT_EQ(get_return_channel()[0].vindex, 0);
  EXPECT_EQ(get_return_channel()[0].vch.major_ch_num, 9);
}

TEST_F(ReturnChannels, WatchingDoesNotLookUpThePositionsOfTheOthers) {
  view_of(3);
  watch_services(1, 2);
  std::swap(list.vch[0], list.vch[2]);

  watch(service_number(3));

  EXPECT_EQ(vindexes(), (std::vector<int>{0, 1, 0}));
}

TEST_F(ReturnChannels, InitialisingZeroesAll20Entries) {
  view_of(20);
  watch_services(1, 20);

  init_return_channel();

  EXPECT_EQ(get_return_channel_num(), 0);
  const std::string zero(20 * sizeof(return_channel_st), '\0');
  EXPECT_EQ(std::memcmp(get_return_channel(), zero.data(), zero.size()), 0);
}

TEST_F(ReturnChannels, EntriesAreReachedByIndexInUseOrNot) {
  for (const std::int16_t index : {std::int16_t{0}, std::int16_t{1}, std::int16_t{18}, std::int16_t{19}}) {
    EXPECT_EQ(get_return_channel_by_index(index), get_return_channel() + index) << index;
  }
}

TEST_F(ReturnChannels, AnIndexOutsideTheHistoryIsRefused) {
  for (const int index : {-32768, -1, 20, 21, 32767}) {
    const auto look = [index] { return get_return_channel_by_index(static_cast<std::int16_t>(index)); };

    EXPECT_EQ(look(), nullptr) << index;
    EXPECT_EQ(writes_at(0, look),
              lines{"ERROR: get_return_channel_by_index:# index " + std::to_string(index) + " outside the history\n"});
    EXPECT_EQ(writes_at(-1, look), lines{});
  }
}

TEST_F(ReturnChannels, TheHistoryOutlivesAResetOfTheList) {
  view_of(2);
  watch_services(1, 2);

  reset_channel_list();

  EXPECT_EQ(listed(), (std::vector<int>{2, 1}));
}

}  // namespace
