// Taking channels out of the history: the gap is closed, positions are looked up again, and one line has a gate of
// its own.
#include <base/verbosity.h>
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "support/history_test.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

class ReturnChannelRemoval : public history_test {};

// The lines of a removal when entry 7 and entry 106 of the level table have these values.
lines writes_of_forgetting(int level, int history_level) {
  const log_capture log(level);
  verbosity_map[106] = history_level;
  forget(service_number(2));
  return log.writes();
}

TEST_F(ReturnChannelRemoval, ARemovedChannelLeavesNoGap) {
  view_of(4);
  watch_services(1, 4);

  EXPECT_EQ(forget(service_number(3)), 1);
  EXPECT_EQ(listed(), (std::vector<int>{4, 2, 1}));
  EXPECT_EQ(forget(service_number(4)), 0);
  EXPECT_EQ(listed(), (std::vector<int>{2, 1}));
  EXPECT_EQ(forget(service_number(1)), 1);
  EXPECT_EQ(listed(), std::vector<int>{2});
  EXPECT_EQ(forget(service_number(2)), 0);
  EXPECT_EQ(listed(), std::vector<int>{});
}

TEST_F(ReturnChannelRemoval, TheFreedLastSlotIsNotCleared) {
  view_of(3);
  watch_services(1, 3);
  const return_channel_st last = get_return_channel()[2];

  forget(service_number(3));

  ASSERT_EQ(get_return_channel_num(), 2);
  EXPECT_EQ(std::memcmp(&get_return_channel()[2], &last, sizeof last), 0);
  EXPECT_EQ(get_return_channel()[1].vch.service_id, 1);
}

TEST_F(ReturnChannelRemoval, TheLastOf20IsRemoved) {
  view_of(20);
  watch_services(1, 20);

  EXPECT_EQ(forget(service_number(1)), 19);

  EXPECT_EQ(get_return_channel_num(), 19);
  EXPECT_EQ(listed().back(), 2);
}

TEST_F(ReturnChannelRemoval, RemovingLooksUpThePositionsOfTheOthersAgain) {
  const auto services = fill_view(VIEW_ALL, 4);
  watch_services(1, 4);
  append_entry(VIEW_USER, entry_of(*services[0], 1));
  append_entry(VIEW_USER, entry_of(*services[3], 2));
  change_vindex_type(VIEW_USER);

  EXPECT_EQ(forget(service_number(3)), 1);

  EXPECT_EQ(listed(), (std::vector<int>{4, 2, 1}));
  EXPECT_EQ(vindexes(), (std::vector<int>{1, -1, 0}));
}

TEST_F(ReturnChannelRemoval, TheOthersAreLookedUpWithTheirOwnValues) {
  channel_st *removed = file_service({.service_id = 1});
  channel_st *left = file_service(
      {.net_index = 4, .network_id = 5, .ts_id = 6, .frequency = 70'000, .service_id = 8, .polarisation = 9});
  append_entry(VIEW_ALL, entry_of(*removed, 1));
  append_entry(VIEW_ALL, entry_of(*left, 2, 0, 3));
  watch(
      {.tag = 3, .net_index = 4, .network_id = 5, .ts_id = 6, .frequency = 70'000, .service_id = 8, .polarisation = 9});
  watch(service_number(1));
  ASSERT_EQ(vindexes(), (std::vector<int>{0, 1}));
  std::swap(list.vch[0], list.vch[1]);

  EXPECT_EQ(forget(service_number(1)), 0);

  EXPECT_EQ(vindexes(), std::vector<int>{0});
}

TEST_F(ReturnChannelRemoval, AChannelThatIsNotListedIsNotRemoved) {
  view_of(3);
  watch_services(1, 2);
  list.vnumber = 0;

  EXPECT_EQ(forget(service_number(3)), -1);

  EXPECT_EQ(listed(), (std::vector<int>{2, 1}));
  EXPECT_EQ(vindexes(), (std::vector<int>{1, 0}));
}

TEST_F(ReturnChannelRemoval, AChannelThatAFullHistoryLacksIsNotRemoved) {
  view_of(21);
  watch_services(1, 20);
  const std::string before(reinterpret_cast<const char *>(get_return_channel()), 20 * sizeof(return_channel_st));

  EXPECT_EQ(forget(service_number(21)), -1);

  EXPECT_EQ(get_return_channel_num(), 20);
  EXPECT_EQ(std::memcmp(get_return_channel(), before.data(), before.size()), 0);
}

TEST_F(ReturnChannelRemoval, ARemovalIsLoggedByAnotherEntryOfTheLevelTable) {
  view_of(2);
  const lines removed = {"ChannelAPI remove_return_channel:# >>>>>>remove returh channel. index(1).\n"};

  watch(service_number(2));
  watch(service_number(1));
  EXPECT_EQ(writes_of_forgetting(-1, 2), removed);

  init_return_channel();
  watch(service_number(2));
  watch(service_number(1));
  EXPECT_EQ(writes_of_forgetting(1, 1), lines{});

  init_return_channel();
  watch(service_number(2));
  watch(service_number(1));
  const lines without_removal = writes_of_forgetting(2, 1);
  EXPECT_EQ(without_removal.size(), 2U);
  EXPECT_EQ(without_removal.at(0).rfind("ChannelAPI check_same_return_channel:# param ", 0), 0U);
}

TEST_F(ReturnChannelRemoval, ARemovalThatFindsNothingIsNotLogged) {
  const log_capture log(9);
  verbosity_map[106] = 9;

  forget({});

  EXPECT_EQ(log.writes(), lines{});
}

}  // namespace
