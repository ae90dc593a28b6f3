// What watching channels and looking them up logs, and at which level.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/history_test.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

class ReturnChannelLog : public history_test {};

const std::string added_third = "ChannelAPI add_return_channel:# Add Return CH(2), ma(3), mi(0), group(4), "
                                "sub_group(-6)\n";
const std::string sought_first = "ChannelAPI check_same_return_channel:# param ni(1), net_id(1), ti(100), f(11000001), "
                                 "si(1), po(0)\n";
const std::string listed_first = "ChannelAPI check_same_return_channel:# vch ni(1), net_id(1), ti(100), f(11000000), "
                                 "si(1), po(0), name(Service)\n";
const channel_key first_but_1 = {.frequency = 11'000'001};

TEST_F(ReturnChannelLog, ANewChannelIsLoggedAtLevel2) {
  view_of(3);
  list.use_group_list = 4;
  list.sub_group_id = -6;

  EXPECT_EQ(writes_of_watching(2, service_number(3)),
            (lines{"ChannelAPI add_return_channel:# ch(2) not exist.\n", added_third}));
  init_return_channel();
  EXPECT_EQ(writes_of_watching(1, service_number(3)), lines{});
}

TEST_F(ReturnChannelLog, AFullHistoryIsLoggedAtLevel2) {
  view_of(22);
  watch_services(1, 20);

  EXPECT_EQ(writes_of_watching(2, service_number(21)),
            (lines{"ChannelAPI add_return_channel:# return ch count is full.\n",
                   "ChannelAPI add_return_channel:# Add Return CH(20), ma(21), mi(0), group(0), sub_group(-1)\n"}));
  EXPECT_EQ(writes_of_watching(1, service_number(22)), lines{});
}

TEST_F(ReturnChannelLog, AChannelThatMovesUpIsLoggedAtLevel2) {
  view_of(2);
  watch_services(1, 2);

  EXPECT_EQ(writes_of_watching(2, first_but_1),
            (lines{sought_first, listed_first, "ChannelAPI add_return_channel:# ch(0) already exist index(1).\n",
                   "ChannelAPI add_return_channel:# Add Return CH(0), ma(1), mi(0), group(0), sub_group(-1)\n"}));
  EXPECT_EQ(writes_of_watching(1, service_number(2)), lines{});
}

TEST_F(ReturnChannelLog, TheChannelAtTheTopIsLoggedAtLevel2) {
  view_of(1);
  watch(service_number(1));

  EXPECT_EQ(writes_of_watching(2, first_but_1),
            (lines{sought_first, listed_first, "ChannelAPI add_return_channel:# latest ch is same with this ch.\n"}));
  EXPECT_EQ(writes_of_watching(1, first_but_1), lines{});
}

// Compatibility: the current view is searched with any frequency, the history compares it, and so the channel is not
// found there.
TEST_F(ReturnChannelLog, AChannelThatIsWatchedTwiceWithoutAFrequencyIsListedTwice) {
  view_of(1);
  const channel_key without_frequency = {.frequency = 0};
  const lines expected = {"ChannelAPI add_return_channel:# ch(0) not exist.\n",
                          "ChannelAPI add_return_channel:# Add Return CH(0), ma(1), mi(0), group(0), sub_group(-1)\n"};

  EXPECT_EQ(writes_of_watching(2, without_frequency), expected);
  EXPECT_EQ(writes_of_watching(2, without_frequency), expected);

  EXPECT_EQ(listed(), (std::vector<int>{1, 1}));
  EXPECT_EQ(get_return_channel()[0].vch.frequency, 11'000'000U);
}

TEST_F(ReturnChannelLog, AListedChannelIsLoggedWithBothIdentitiesAtLevel2) {
  view_of(1);
  watch(service_number(1));
  const auto look = [] { return check(first_but_1); };

  EXPECT_EQ(writes_at(2, look), (lines{sought_first, listed_first}));
  EXPECT_EQ(writes_at(1, look), lines{});
}

TEST_F(ReturnChannelLog, AChannelThatIsNotListedIsNotLogged) {
  EXPECT_EQ(writes_at(9, [] { return check({}); }), lines{});
}

TEST_F(ReturnChannelLog, LoggedFrequenciesHaveTheSignOf32Bits) {
  channel_st *service = file_service({.net_index = 255,
                                      .network_id = 0xFFFF,
                                      .ts_id = 0xFFFF,
                                      .frequency = 0xFFFFFFFF,
                                      .service_id = 0xFFFF,
                                      .polarisation = 255,
                                      .name = std::string(96, 'x')});
  service->name[0].reserved_97 = '!';
  append_entry(VIEW_ALL, entry_of(*service, 1));
  const channel_key all_ones = {0, 255, 0xFFFF, 0xFFFF, 0xFFFFFFFF, 0xFFFF, 255};
  watch(all_ones);
  const std::string values = "ni(255), net_id(65535), ti(65535), f(-1), si(65535), po(255)";

  EXPECT_EQ(writes_at(2, [&] { return check(all_ones); }),
            (lines{"ChannelAPI check_same_return_channel:# param " + values + "\n",
                   "ChannelAPI check_same_return_channel:# vch " + values + ", name(" + std::string(96, 'x') + ")\n"}));
}

TEST_F(ReturnChannelLog, AListedChannelWithoutARealChannelPrintsAnEmptyName) {
  virtual_channel_st entry = entry_of(*file_service({}), 1);
  entry.rch = nullptr;
  append_entry(VIEW_ALL, entry);
  watch({});

  EXPECT_EQ(writes_at(2, [] { return check({}); }).at(1),
            "ChannelAPI check_same_return_channel:# vch ni(1), net_id(1), ti(100), f(11000000), si(1), po(0), "
            "name()\n");
}

}  // namespace
