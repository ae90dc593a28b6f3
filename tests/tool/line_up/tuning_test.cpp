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

struct worded {
  tuning_parameter parameter;
  std::string_view name;
  std::string_view foreign;
  std::vector<std::string_view> words;
};

TEST(Tuning, AWordedParameterHasOneOfItsWords) {
  const worded parameters[] = {
      {tuning_parameter::system,
       "system",
       "8PSK",
       {"DVB-S", "DVB-S2", "DVB-C", "DVB-C2", "DVB-T", "DVB-T2", "DVB-H", "ISDB-S", "ISDB-C", "ISDB-T", "ATSC",
        "ATSC-MH", "ITU-T J.83 B", "DSS", "Turbo", "DTMB", "CMMB", "DAB"}},
      {tuning_parameter::polarisation, "polarisation", "on", {"horizontal", "vertical", "left", "right"}},
      {tuning_parameter::modulation,
       "modulation",
       "3/4",
       {"QPSK", "8PSK", "16APSK", "32APSK", "DQPSK", "16QAM", "32QAM", "64QAM", "128QAM", "256QAM", "8VSB", "16VSB"}},
      {tuning_parameter::inner_fec,
       "inner_fec",
       "1/8",
       {"none", "1/2", "1/3", "1/4", "2/3", "2/5", "3/4", "3/5", "4/5", "5/6", "6/7", "7/8", "8/9", "9/10"}},
      {tuning_parameter::low_priority_fec,
       "low_priority_fec",
       "2k",
       {"none", "1/2", "1/3", "1/4", "2/3", "2/5", "3/4", "3/5", "4/5", "5/6", "6/7", "7/8", "8/9", "9/10"}},
      {tuning_parameter::roll_off, "roll_off", "35", {"0.35", "0.25", "0.20", "0.15", "0.10", "0.05"}},
      {tuning_parameter::pilot, "pilot", "none", {"off", "on"}},
      {tuning_parameter::inversion, "inversion", "1", {"off", "on"}},
      {tuning_parameter::transmission_mode, "transmission_mode", "1/4", {"1k", "2k", "4k", "8k", "16k", "32k"}},
      {tuning_parameter::guard_interval,
       "guard_interval",
       "2/3",
       {"1/4", "1/8", "1/16", "1/32", "1/128", "19/128", "19/256"}},
      {tuning_parameter::hierarchy, "hierarchy", "3", {"none", "1", "2", "4"}},
      {tuning_parameter::antennas, "antennas", "off", {"SISO", "MISO"}},
  };
  for (const worded &each : parameters) {
    SCOPED_TRACE(each.name);
    EXPECT_EQ(words_of(each.parameter).name, each.name);
    EXPECT_EQ(words_of(each.parameter).words.size(), each.words.size());
    for (const std::string_view word : each.words) {
      EXPECT_TRUE(is_value_of(each.parameter, word)) << word;
    }
    EXPECT_TRUE(is_value_of(each.parameter, "auto"));
    EXPECT_FALSE(is_value_of(each.parameter, each.foreign)) << each.foreign;
    EXPECT_FALSE(is_value_of(each.parameter, ""));
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
