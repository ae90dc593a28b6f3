// Whether two channels, or two view entries, are the same.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

class ChannelComparison : public store_test {
 protected:
  static channel_st channel() {
    channel_st made = {};
    made.net_index = 1;
    made.network_id = 2;
    made.ts_id = 3;
    made.frequency = 11'000'000;
    made.service_id = 4;
    made.polarisation = 5;
    return made;
  }
};

int same(const channel_st &a, const channel_st &b) {
  const int result = is_same_channel(&a, &b);
  EXPECT_EQ(is_same_channel(&b, &a), result);
  return result;
}

int same(const virtual_channel_st &a, const virtual_channel_st &b) {
  const int result = is_same_vchannel(&a, &b);
  EXPECT_EQ(is_same_vchannel(&b, &a), result);
  return result;
}

TEST_F(ChannelComparison, EverythingThatIdentifiesCounts) {
  const channel_st one = channel();
  EXPECT_EQ(same(one, one), 1);
  EXPECT_EQ(same(one, channel()), 1);

  channel_st other = one;
  other.network_id = 0;
  EXPECT_EQ(same(one, other), 0);
  other = one;
  other.net_index = 0;
  EXPECT_EQ(same(one, other), 0);
  other = one;
  other.ts_id = 0;
  EXPECT_EQ(same(one, other), 0);
  other = one;
  other.frequency += 2500;
  EXPECT_EQ(same(one, other), 0);
  other = one;
  other.service_id = 0;
  EXPECT_EQ(same(one, other), 0);
  other = one;
  other.polarisation = 0;
  EXPECT_EQ(same(one, other), 0);
}

TEST_F(ChannelComparison, NothingElseCounts) {
  const channel_st one = channel();
  channel_st other;
  std::fill_n(reinterpret_cast<char *>(&other), sizeof other, '\x5A');
  other.net_index = one.net_index;
  other.network_id = one.network_id;
  other.ts_id = one.ts_id;
  other.frequency = one.frequency;
  other.service_id = one.service_id;
  other.polarisation = one.polarisation;

  EXPECT_EQ(same(one, other), 1);
}

TEST_F(ChannelComparison, FrequenciesAreComparedIn64Bits) {
  constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min();
  constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();
  const struct {
    std::int64_t a;
    std::int64_t b;
    int same;
  } cases[] = {{11'000'000, 11'002'499, 1},
               {11'000'000, 11'002'500, 0},
               {11'000'000, 10'997'501, 1},
               {11'000'000, 10'997'500, 0},
               {11'000'000, 11'000'000 + (std::int64_t{1} << 32), 0},
               {0, std::int64_t{1} << 32, 0},
               {-1, 0xFFFFFFFF, 0},
               {-1'000, 1'499, 1},
               {-1'000, 1'500, 0},
               {lowest, highest, 0},
               {highest, lowest, 0},
               {lowest, lowest + 2499, 1},
               {highest, highest - 2500, 0},
               {0, lowest, 0}};
  for (const auto &each : cases) {
    channel_st one = channel();
    channel_st other = channel();
    one.frequency = each.a;
    other.frequency = each.b;

    EXPECT_EQ(same(one, other), each.same) << each.a << ' ' << each.b;
  }
}

TEST_F(ChannelComparison, FrequencyZeroIsNoWildcard) {
  channel_st unknown = channel();
  unknown.frequency = 0;

  EXPECT_EQ(same(channel(), unknown), 0);
}

TEST_F(ChannelComparison, NoChannelIsNotTheSame) {
  const channel_st one = channel();
  const lines first = {"ERROR: is_same_channel:# ch1 NULL !!!\n"};
  const lines second = {"ERROR: is_same_channel:# ch2 NULL !!!\n"};

  EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(is_same_channel(nullptr, &one), 0); }), first);
  EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(is_same_channel(&one, nullptr), 0); }), second);
  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(is_same_channel(nullptr, nullptr), 0); }), first);
  EXPECT_EQ(writes_at(-1, [&] { return is_same_channel(nullptr, &one) + is_same_channel(&one, nullptr); }), lines{});
}

TEST_F(ChannelComparison, IsSilent) {
  const channel_st one = channel();
  channel_st other = one;
  other.service_id = 0;

  EXPECT_EQ(writes_at(5, [&] { return is_same_channel(&one, &one) + is_same_channel(&one, &other); }), lines{});
}

class EntryComparison : public store_test {};

TEST_F(EntryComparison, TheTagAndEverythingThatIdentifiesCounts) {
  virtual_channel_st changed[7];
  std::fill(std::begin(changed), std::end(changed), unfiled_entry(1));
  changed[0].vch_tag = -1;
  changed[1].network_id = 2;
  changed[2].net_index = 2;
  changed[3].ts_id = 101;
  changed[4].frequency += 2500;
  changed[5].service_id = 2;
  changed[6].polarisation = 1;
  for (const virtual_channel_st &other : changed) {
    EXPECT_EQ(same(unfiled_entry(1), other), 0);
  }
  EXPECT_EQ(same(unfiled_entry(1), unfiled_entry(1)), 1);
}

TEST_F(EntryComparison, NothingElseCounts) {
  virtual_channel_st other = unfiled_entry(1);
  other.favorite_id = 9;
  other.major_ch_num = -5;
  other.minor_ch_num = 7;
  other.reserved_7 = 1;
  other.reserved_13 = 1;
  other.rch = file_service({});

  EXPECT_EQ(same(unfiled_entry(1), other), 1);
}

TEST_F(EntryComparison, FrequenciesAreComparedWithoutOverflow) {
  const struct {
    std::uint32_t a;
    std::uint32_t b;
    int same;
  } cases[] = {{11'000'000, 11'002'499, 1},
               {11'000'000, 11'002'500, 0},
               {11'000'000, 10'997'501, 1},
               {11'000'000, 10'997'500, 0},
               {0, 0xFFFFFFFF, 0},
               {0xFFFFFFFF, 0, 0},
               {0, 2499, 1},
               {0xFFFFFFFF - 2499, 0xFFFFFFFF, 1},
               {0, 0x80000000, 0},
               {0, 11'000'000, 0}};
  for (const auto &each : cases) {
    virtual_channel_st one = unfiled_entry(1);
    virtual_channel_st other = unfiled_entry(1);
    one.frequency = each.a;
    other.frequency = each.b;

    EXPECT_EQ(same(one, other), each.same) << each.a << ' ' << each.b;
  }
}

TEST_F(EntryComparison, NoEntryIsNotTheSame) {
  const virtual_channel_st one = unfiled_entry(1);
  const lines first = {"ERROR: is_same_vchannel:# x NULL !!!\n"};
  const lines second = {"ERROR: is_same_vchannel:# y NULL !!!\n"};

  EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(is_same_vchannel(nullptr, &one), 0); }), first);
  EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(is_same_vchannel(&one, nullptr), 0); }), second);
  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(is_same_vchannel(nullptr, nullptr), 0); }), first);
  EXPECT_EQ(writes_at(-1, [&] { return is_same_vchannel(nullptr, &one) + is_same_vchannel(&one, nullptr); }), lines{});
}

TEST_F(EntryComparison, IsSilent) {
  const virtual_channel_st one = unfiled_entry(1);
  const virtual_channel_st other = unfiled_entry(2);

  EXPECT_EQ(writes_at(5, [&] { return is_same_vchannel(&one, &one) + is_same_vchannel(&one, &other); }), lines{});
}

}  // namespace
