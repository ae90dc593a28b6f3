// The values that parameters of reception may have, and what a newer source tells of a service that was known.
#include "chlist/line_up/tuning.h"

#include <gtest/gtest.h>

#include <string_view>
#include <utility>
#include <vector>

namespace {

using chlist::further_facts;
using chlist::is_value_of;
using chlist::take_further;
using chlist::tuning;
using chlist::tuning_parameter;

TEST(Tuning, AWordedParameterHasOneOfItsWords) {
  using enum tuning_parameter;
  constexpr struct {
    tuning_parameter parameter;
    std::string_view name;
    std::string_view first;
    std::string_view last;
    std::string_view foreign;
  } worded[] = {{system, "system", "DVB-S", "DAB", "8PSK"},
                {polarisation, "polarisation", "horizontal", "right", "on"},
                {modulation, "modulation", "QPSK", "16VSB", "3/4"},
                {inner_fec, "inner_fec", "none", "9/10", "1/8"},
                {low_priority_fec, "low_priority_fec", "none", "9/10", "2k"},
                {roll_off, "roll_off", "0.35", "0.05", "35"},
                {pilot, "pilot", "off", "on", "none"},
                {inversion, "inversion", "off", "on", "1"},
                {transmission_mode, "transmission_mode", "1k", "32k", "1/4"},
                {guard_interval, "guard_interval", "1/4", "19/256", "2/3"},
                {hierarchy, "hierarchy", "none", "4", "3"},
                {antennas, "antennas", "SISO", "MISO", "off"}};
  for (const auto &each : worded) {
    EXPECT_EQ(words_of(each.parameter).name, each.name);
    for (const std::string_view value : {each.first, each.last, std::string_view("auto")}) {
      EXPECT_TRUE(is_value_of(each.parameter, value)) << each.name << ' ' << value;
    }
    for (const std::string_view value : {each.foreign, std::string_view()}) {
      EXPECT_FALSE(is_value_of(each.parameter, value)) << each.name << ' ' << value;
    }
  }
}

TEST(Tuning, ANumberHasTenDecimalDigitsAtMost) {
  constexpr std::pair<tuning_parameter, std::string_view> numbers[] = {
      {tuning_parameter::symbol_rate, "symbol_rate"},
      {tuning_parameter::bandwidth, "bandwidth"},
      {tuning_parameter::stream_id, "stream_id"},
      {tuning_parameter::t2_system_id, "t2_system_id"}};
  for (const auto &[parameter, name] : numbers) {
    EXPECT_EQ(words_of(parameter).name, name);
    for (const char *value : {"0", "22000000", "9999999999", "auto"}) {
      EXPECT_TRUE(is_value_of(parameter, value)) << name << ' ' << value;
    }
    for (const char *value : {"", "10000000000", "-1", "+1", "1.5", "0x10", "1 ", "none"}) {
      EXPECT_FALSE(is_value_of(parameter, value)) << name << ' ' << value;
    }
  }
}

TEST(Tuning, WhatIsToldWinsAndTheRestStays) {
  using enum tuning_parameter;
  further_facts known = {{{system, "DVB-S2"}, {symbol_rate, "22000000"}, {pilot, "on"}}, {{101}}, {0x100}};

  take_further(known, {{{system, "DVB-S2"}, {symbol_rate, "27500000"}, {roll_off, "0.20"}}, {}, {}});

  EXPECT_EQ(known,
            (further_facts{
                {{system, "DVB-S2"}, {symbol_rate, "27500000"}, {pilot, "on"}, {roll_off, "0.20"}}, {{101}}, {0x100}}));
}

TEST(Tuning, ASourceThatTellsNoDeliverySystemLeavesTheOneThatIsKnown) {
  using enum tuning_parameter;
  further_facts known = {{{system, "DVB-S2"}, {pilot, "on"}}, {}, {}};
  take_further(known, {{{symbol_rate, "27500000"}}, {}, {}});
  EXPECT_EQ(known.tuned, (tuning{{system, "DVB-S2"}, {pilot, "on"}, {symbol_rate, "27500000"}}));

  known = {{{pilot, "on"}}, {}, {}};
  take_further(known, {{{system, "DVB-S2"}}, {}, {}});
  EXPECT_EQ(known.tuned, (tuning{{system, "DVB-S2"}, {pilot, "on"}}));
}

TEST(Tuning, OfAnotherDeliverySystemNothingIsKnown) {
  using enum tuning_parameter;
  further_facts known = {{{system, "DVB-S2"}, {pilot, "on"}}, {{101}}, {}};

  take_further(known, {{{system, "DVB-S"}, {inner_fec, "3/4"}}, {}, {}});

  EXPECT_EQ(known, (further_facts{{{system, "DVB-S"}, {inner_fec, "3/4"}}, {{101}}, {}}));
}

TEST(Tuning, StreamsAndConditionalAccessAreToldAsAWhole) {
  further_facts known = {{}, {{101}, {102}}, {0x100, 0x200}};

  take_further(known, {{}, {{103}}, {0x300}});

  EXPECT_EQ(known, (further_facts{{}, {{103}}, {0x300}}));
}

TEST(Tuning, EveryKindOfStreamHasAName) {
  using enum chlist::stream_kind;
  EXPECT_EQ(name_of_stream(video), "video");
  EXPECT_EQ(name_of_stream(audio), "audio");
  EXPECT_EQ(name_of_stream(dolby), "dolby");
  EXPECT_EQ(name_of_stream(teletext), "teletext");
  EXPECT_EQ(name_of_stream(subtitles), "subtitles");
  EXPECT_EQ(name_of_stream(other), "other");
}

}  // namespace
