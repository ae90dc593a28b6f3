// Where the promotion channels stand in the ALL view, and which channels are limited.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <array>

#include "support/log_capture.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

constexpr std::uint16_t untouched_value = 0xBEEF;

class Promotion : public store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    positions_.fill(untouched_value);
  }
  int find() { return get_promo_channel_vindex(positions_.data(), &count_); }
  [[nodiscard]] std::uint16_t count() const { return count_; }
  [[nodiscard]] int position(std::size_t promoted) const { return positions_.at(promoted); }

 private:
  // One more than there are promotion channels: nothing is ever written there.
  std::array<std::uint16_t, MAX_PROMO_CHANNEL + 1> positions_{};
  std::uint16_t count_ = untouched_value;
};

TEST_F(Promotion, ChannelsAreFoundAtTheirPositionsInTheAllView) {
  const auto services = fill_view(VIEW_ALL, 5);
  append_entry(VIEW_PROMOTION, entry_of(*services[4], 1));
  append_entry(VIEW_PROMOTION, entry_of(*services[0], 2));

  EXPECT_EQ(find(), 0);

  EXPECT_EQ(count(), 2);
  EXPECT_EQ(position(0), 4);
  EXPECT_EQ(position(1), 0);
  EXPECT_EQ(position(2), untouched_value);
}

TEST_F(Promotion, TheLaterOfTwoEntriesOfAServiceCounts) {
  const auto services = fill_view(VIEW_ALL, 3);
  append_entry(VIEW_ALL, entry_of(*services[1], 99));
  append_entry(VIEW_PROMOTION, entry_of(*services[1], 1));

  find();

  EXPECT_EQ(position(0), 3);
}

TEST_F(Promotion, AChannelThatTheAllViewLacksLeavesItsNumberAsItWas) {
  const auto services = fill_view(VIEW_ALL, 1);
  append_entry(VIEW_PROMOTION, entry_of(*file_service({.service_id = 2}), 1));
  append_entry(VIEW_PROMOTION, entry_of(*services[0], 2));

  EXPECT_EQ(find(), 0);

  EXPECT_EQ(count(), 2);
  EXPECT_EQ(position(0), untouched_value);
  EXPECT_EQ(position(1), 0);
}

TEST_F(Promotion, AnEmptyAllViewHasNoPositions) {
  append_entry(VIEW_PROMOTION, entry_of(*file_service({}), 1));

  EXPECT_EQ(find(), 0);

  EXPECT_EQ(count(), 1);
  EXPECT_EQ(position(0), untouched_value);
}

TEST_F(Promotion, EveryIdentifyingValueButTheTagAndTheNumbersCounts) {
  const virtual_channel_st listed = entry_of(*file_service({.net_index = 3, .polarisation = 1}), 5, 6, 7);
  append_entry(VIEW_ALL, listed);
  std::array<virtual_channel_st, 7> others{};
  others.fill(listed);
  others[0].net_index = 4;
  others[1].network_id = 2;
  others[2].ts_id = 101;
  others[3].service_id = 2;
  others[4].polarisation = 2;
  others[5].frequency = 0;
  others[6].vch_tag = -7;
  others[6].major_ch_num = others[6].minor_ch_num = 0;
  others[6].rch = nullptr;
  for (const virtual_channel_st &other : others) {
    append_entry(VIEW_PROMOTION, other);
  }

  find();

  for (std::size_t i = 0; i < 6; ++i) {
    EXPECT_EQ(position(i), untouched_value) << i;
  }
  EXPECT_EQ(position(6), 0);
}

TEST_F(Promotion, AFrequencyLessThan2500AwayIsTheSame) {
  const auto services = fill_view(VIEW_ALL, 1);
  for (const int distance : {-2500, -2499, -1, 0, 1, 2499, 2500}) {
    virtual_channel_st entry = entry_of(*services[0], 1);
    entry.frequency += static_cast<std::uint32_t>(distance);
    append_entry(VIEW_PROMOTION, entry);
  }

  find();

  EXPECT_EQ(position(0), untouched_value);
  for (std::size_t i = 1; i <= 5; ++i) {
    EXPECT_EQ(position(i), 0) << i;
  }
  EXPECT_EQ(position(6), untouched_value);
}

TEST_F(Promotion, EveryNumberOfChannelsUpTo10IsAnswered) {
  const auto services = fill_view(VIEW_ALL, 10);
  for (std::size_t n = 1; n <= 10; ++n) {
    append_entry(VIEW_PROMOTION, entry_of(*services[n - 1], 1));

    EXPECT_EQ(find(), 0);

    EXPECT_EQ(count(), n);
    EXPECT_EQ(position(n - 1), static_cast<int>(n - 1));
    EXPECT_EQ(position(n), untouched_value);
  }
}

TEST_F(Promotion, ANumberOfChannelsBelow1IsPassedOnAndNothingIsSought) {
  fill_view(VIEW_ALL, 1);
  list.promo_vch[0] = list.vch[0];
  for (const int number : {0, -1, -32768}) {
    list.promo_vnumber = static_cast<std::int16_t>(number);

    EXPECT_EQ(find(), 0);

    EXPECT_EQ(count(), static_cast<std::uint16_t>(number));
    EXPECT_EQ(position(0), untouched_value);
  }
}

TEST_F(Promotion, ANumberOfChannelsAbove10IsReadAs10) {
  const auto services = fill_view(VIEW_ALL, 10);
  for (channel_st *service : services) {
    append_entry(VIEW_PROMOTION, entry_of(*service, 1));
  }
  for (const int number : {11, 32767}) {
    list.promo_vnumber = static_cast<std::int16_t>(number);

    EXPECT_EQ(find(), 0);

    EXPECT_EQ(count(), 10);
    EXPECT_EQ(position(9), 9);
    EXPECT_EQ(position(10), untouched_value);
  }
}

TEST_F(Promotion, ACountOfTheAllViewOutsideItsArrayIsReadAsTheNearestInside) {
  list.vch[4999] = entry_of(*file_service({}), 1);
  append_entry(VIEW_PROMOTION, list.vch[4999]);
  list.vnumber = -1;
  find();
  EXPECT_EQ(position(0), untouched_value);

  list.vnumber = 5001;
  find();

  EXPECT_EQ(position(0), 4999);
}

TEST_F(Promotion, ASearchIsLoggedAtLevel5WithEveryMatch) {
  const auto services = fill_view(VIEW_ALL, 2);
  append_entry(VIEW_ALL, entry_of(*services[1], 3));
  append_entry(VIEW_PROMOTION, entry_of(*services[0], -8));
  append_entry(VIEW_PROMOTION, entry_of(*services[1], 9));
  const auto search = [this] { return find(); };

  EXPECT_EQ(writes_at(5, search),
            (lines{"ChannelAPI get_promo_channel_vindex:# \n",
                   "ChannelAPI get_promo_channel_vindex:#  channel_list.promo_vch[0].major_ch_num -8\n",
                   "ChannelAPI get_promo_channel_vindex:#  channel_list.promo_vch[1].major_ch_num 9\n",
                   "ChannelAPI get_promo_channel_vindex:#  channel_list.promo_vch[1].major_ch_num 9\n"}));
  EXPECT_EQ(writes_at(4, search), lines{});
}

TEST_F(Promotion, ASearchWithoutPromotionChannelsLogsItselfAtLevel5) {
  EXPECT_EQ(writes_at(5, [this] { return find(); }), lines{"ChannelAPI get_promo_channel_vindex:# \n"});
}

TEST_F(Promotion, ASearchWithoutAPlaceForItsResultsIsRefused) {
  append_entry(VIEW_PROMOTION, entry_of(*file_service({}), 1));
  std::uint16_t out[MAX_PROMO_CHANNEL] = {};
  std::uint16_t number = untouched_value;
  const lines refusal = {"ERROR: get_promo_channel_vindex:# out or count is null\n"};

  EXPECT_EQ(get_promo_channel_vindex(nullptr, &number), -1);
  EXPECT_EQ(get_promo_channel_vindex(out, nullptr), -1);

  EXPECT_EQ(number, untouched_value);
  EXPECT_EQ(writes_at(0, [&] { return get_promo_channel_vindex(nullptr, &number); }), refusal);
  EXPECT_EQ(writes_at(0, [&] { return get_promo_channel_vindex(out, nullptr); }), refusal);
}

class Limited : public store_test {};

TEST_F(Limited, AChannelIsLimitedByOneBitOfItsFlags) {
  channel_st service = {};
  for (int flags = 0; flags <= 255; ++flags) {
    service.flag = static_cast<std::uint8_t>(flags);

    EXPECT_EQ(check_limited_channel(&service), (flags & 0x02) != 0 ? 0 : 1) << flags;
  }
}

TEST_F(Limited, TheSwitchLiftsEveryLimit) {
  channel_st service = {};
  service.flag = 0x02;
  ASSERT_EQ(check_limited_channel(&service), 0);

  set_limited_channel_flag(1);

  EXPECT_EQ(check_limited_channel(&service), 1);
}

TEST_F(Limited, NoValueOfTheSwitchBut1LiftsALimit) {
  channel_st service = {};
  service.flag = 0x02;
  for (const int value : {0, 2, 3, 129, 255}) {
    set_limited_channel_flag(static_cast<std::uint8_t>(value));

    EXPECT_EQ(check_limited_channel(&service), 0) << value;
  }
}

TEST_F(Limited, TheSwitchKeepsAnyValue) {
  EXPECT_EQ(get_limited_channel_flag(), 0);
  for (const int value : {1, 2, 128, 255, 0}) {
    set_limited_channel_flag(static_cast<std::uint8_t>(value));

    EXPECT_EQ(get_limited_channel_flag(), value);
  }
}

TEST_F(Limited, NoChannelIsReportedAndFree) {
  const auto look = [] { return check_limited_channel(nullptr); };

  EXPECT_EQ(look(), 1);
  EXPECT_EQ(writes_at(0, look), lines{"ERROR: check_limited_channel:# channel is null\n"});
  EXPECT_EQ(writes_at(-1, look), lines{});
}

TEST_F(Limited, NoChannelIsNotEvenLookedAtWhileTheSwitchLiftsEveryLimit) {
  set_limited_channel_flag(1);

  EXPECT_EQ(writes_at(9, [] { return check_limited_channel(nullptr); }), lines{});
  EXPECT_EQ(check_limited_channel(nullptr), 1);
}

TEST_F(Limited, LookingAtAChannelIsNotLogged) {
  const channel_st service = {};

  EXPECT_EQ(writes_at(9, [&service] { return check_limited_channel(&service); }), lines{});
}

}  // namespace
