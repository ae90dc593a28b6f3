// The table of log levels: its size, and which entry gates the lines of the channel list.
#include <base/verbosity.h>
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

constexpr int channel_module = 7;

class VerbosityMap : public store_test {
 protected:
  // What an operation that prints at the levels 0 and 2 says when its own entry and all others have these levels.
  static lines writes_with(int own_level, int other_level) {
    const log_capture log;
    std::fill(std::begin(verbosity_map), std::end(verbosity_map), other_level);
    verbosity_map[channel_module] = own_level;
    load_group_list(GROUP_GENRE);
    remove_invalid_virtual_channel();
    return log.writes();
  }
};

const std::string error = "ERROR: load_group_list:# Fail to open 'genre.dat'\n";
const std::string trace = "ChannelAPI remove_invalid_virtual_channel:# \n";

TEST_F(VerbosityMap, HasAnEntryForEachOf256Modules) { EXPECT_EQ(std::size(verbosity_map), 256U); }

TEST_F(VerbosityMap, EntrySevenGatesTheLinesOfTheChannelList) {
  EXPECT_EQ(writes_with(-1, 9), lines{});
  EXPECT_EQ(writes_with(0, -1), lines{error});
  EXPECT_EQ(writes_with(1, -1), lines{error});
  EXPECT_EQ(writes_with(2, -1), (lines{error, trace}));
}

}  // namespace
