// What a channel is received from. These lines are gated by entry 5 of the level table, not by the library's own.
#include <base/verbosity.h>
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <string>

#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

constexpr int source_entry = 5;

class SourceTypes : public store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    verbosity_map[source_entry] = -1;
  }
};

channel_st from(int source_type, int service_type = 0) {
  channel_st made = {};
  made.source_type = static_cast<std::uint8_t>(source_type);
  made.service_type = static_cast<std::uint8_t>(service_type);
  return made;
}

// The writes of one classification with the library's own level and that of the gating entry.
lines classify(const channel_st *rch, int own_level, int source_level) {
  const log_capture log(own_level);
  verbosity_map[source_entry] = source_level;
  is_ip_channel(rch);
  return log.writes();
}

std::string unknown(int source_type, int service_type) {
  char text[100];
  std::snprintf(text, sizeof text, "ERROR: is_ip_channel:# unknown source type=%d ch type=0x%02x%02x\n", source_type,
                static_cast<unsigned>(source_type), static_cast<unsigned>(service_type));
  return text;
}

const std::set<int> broadcast = {1, 2, 3, 6, 8, 9, 10, 11};
const std::set<int> ip = {4, 5, 12};

TEST_F(SourceTypes, EveryTypeIsIpBroadcastOrUnknown) {
  for (int type = 0; type <= 255; ++type) {
    const channel_st service = from(type, 0x19);
    const bool is_unknown = broadcast.count(type) + ip.count(type) == 0;

    EXPECT_EQ(is_ip_channel(&service), ip.count(type) == 1 ? 1 : 0) << type;
    EXPECT_EQ(classify(&service, -1, 0), is_unknown ? lines{unknown(type, 0x19)} : lines{}) << type;
    EXPECT_EQ(classify(&service, 5, -1), lines{}) << type;
  }
}

TEST_F(SourceTypes, TheServiceTypeIsPrintedAndNotLookedAt) {
  for (int service_type = 0; service_type <= 255; ++service_type) {
    const channel_st ip_service = from(12, service_type);
    const channel_st broadcast_service = from(9, service_type);
    const channel_st unknown_service = from(7, service_type);

    EXPECT_EQ(is_ip_channel(&ip_service), 1);
    EXPECT_EQ(is_ip_channel(&broadcast_service), 0);
    EXPECT_EQ(classify(&unknown_service, -1, 0), lines{unknown(7, service_type)});
  }
}

TEST_F(SourceTypes, AnUnknownTypeIsWordedSo) {
  const channel_st service = from(255, 1);

  EXPECT_EQ(classify(&service, -1, 0), lines{"ERROR: is_ip_channel:# unknown source type=255 ch type=0xff01\n"});
}

// Compatibility: the library's own level neither shows nor hides these lines.
TEST_F(SourceTypes, NoChannelIsLoggedAtLevelTwoOfTheSourceEntry) {
  EXPECT_EQ(is_ip_channel(nullptr), 0);

  EXPECT_EQ(classify(nullptr, -1, 2), lines{"ChannelAPI is_ip_channel:# Can't find channel\n"});
  EXPECT_EQ(classify(nullptr, 5, 1), lines{});
}

}  // namespace
