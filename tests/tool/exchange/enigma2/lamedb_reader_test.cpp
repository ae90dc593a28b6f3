// The lamedb of Enigma2 in its versions: what is read of transponders, services and their options.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tool/exchange/enigma2/lamedb_samples.h"

namespace {

using namespace tool_test::enigma2;

void expect_the_sample(const line_up &list) {
  EXPECT_EQ(skipped_in(list), texts{});
  ASSERT_EQ(list.services.size(), 3U);
  const line_up_service &first = list.services[0];
  EXPECT_EQ(first.name, "Northlight One");
  EXPECT_EQ(first.provider, "Northlight");
  EXPECT_EQ(first.source, "S13.5E");
  EXPECT_EQ(first.fields.service_id, 3001);
  EXPECT_EQ(first.fields.ts_id, 2010);
  EXPECT_EQ(first.fields.network_id, 158);
  EXPECT_EQ(first.fields.frequency, 11'306'000);
  EXPECT_EQ(first.fields.polarisation, 1);
  EXPECT_EQ(first.fields.service_type, SERVICE_TYPE_TV);
  EXPECT_EQ(first.fields.source_type, 1);
  EXPECT_EQ(first.fields.video_pid, 0x191);
  EXPECT_EQ(first.fields.audio_pid, 0x192);
  EXPECT_EQ(first.fields.pcr_pid, 0x190);
  EXPECT_EQ(first.fields.flag, CHANNEL_FLAG_FTA);
  EXPECT_EQ(list.services[1].source, "C");
  EXPECT_EQ(list.services[1].fields.frequency, 394'000);
  EXPECT_EQ(list.services[1].fields.audio_pid, 0x22);
  EXPECT_EQ(list.services[1].fields.service_type, SERVICE_TYPE_RADIO);
  EXPECT_EQ(list.services[1].fields.flag, 0);
  EXPECT_EQ(list.services[2].source, "T");
  EXPECT_EQ(list.services[2].fields.frequency, 514'000);
  EXPECT_EQ(list.services[2].fields.video_pid, 0xFFFF);
}

TEST(LamedbReader, EveryVersionIsReadAlike) {
  expect_the_sample(parse(version_4));
  expect_the_sample(parse(version_3));
  expect_the_sample(parse(version_5));
  EXPECT_EQ(parse(version_4).services[0].line, 14U);
  EXPECT_EQ(parse(version_5).services[0].line, 6U);
}

TEST(LamedbReader, LinesMayEndInCrLfAndAByteOrderMarkIsPassedOver) {
  expect_the_sample(parse("\xEF\xBB\xBF" + replaced(version_4, "\n", "\r\n")));
  expect_the_sample(parse("\xEF\xBB\xBF" + replaced(version_5, "\n", "\r\n")));
}

TEST(LamedbReader, WhatAListDoesNotKeepIsCounted) {
  loss_counts lost;

  chlist::parse_lamedb(version_4, lost);

  EXPECT_EQ(count_of(lost, "symbol rates and modulation"), 3U);
  EXPECT_EQ(count_of(lost, "service types of newer television and radio"), 1U);
  EXPECT_EQ(count_of(lost, "CA ids (but marked as scrambled)"), 1U);
  EXPECT_EQ(lost.rows().size(), 3U);
}

TEST(LamedbReader, OptionsThatAListDoesNotKeepAreCounted) {
  const struct {
    const char *options;
    const char *what;
  } cases[] = {{"p:,c:010021,c:040022", "further audio PIDs"},
               {"p:,c:020021", "PIDs of other streams, and kinds of streams"},
               {"p:,f:2", "flags of Enigma2"},
               {"p:,x:1", "other settings"}};

  for (const auto &each : cases) {
    loss_counts lost;

    EXPECT_EQ(chlist::parse_lamedb(with_options(each.options), lost).list.services.size(), 1U);

    EXPECT_EQ(count_of(lost, each.what), 1U) << each.options;
    EXPECT_EQ(lost.rows().size(), 2U) << each.options;
  }
}

TEST(LamedbReader, AnOptionThatCannotBeReadLeavesTheService) {
  const struct {
    const char *options;
    const char *reason;
  } cases[] = {
      {"p:,c:0x0021", "8: kind of a cached PID '0x' is not a number; the service is kept"},
      {"p:,c:00", "8: cached PID '' is not a number; the service is kept"},
      {"p:,c:", "8: kind of a cached PID '' is not a number; the service is kept"},
      {"p:,C:xyz", "8: CA id 'xyz' is not a number; the service is kept"},
      {"p:,c:00ffffffffff", "8: cached PID 'ffffffffff' is not within 0..4294967295; the service is kept"},
  };

  for (const auto &each : cases) {
    const line_up list = parse(with_options(each.options));

    EXPECT_EQ(skipped_in(list), texts{each.reason});
    EXPECT_EQ(list.services.size(), 1U);
  }
}

TEST(LamedbReader, PidsOutsideThoseOfStreamsAreNone) {
  EXPECT_EQ(parse(with_options("c:000000")).services.at(0).fields.video_pid, 0xFFFF);
  EXPECT_EQ(parse(with_options("c:000001")).services.at(0).fields.video_pid, 1);
  EXPECT_EQ(parse(with_options("c:001fff")).services.at(0).fields.video_pid, 0x1FFF);
  EXPECT_EQ(parse(with_options("c:002000")).services.at(0).fields.video_pid, 0xFFFF);
}

TEST(LamedbReader, AProviderMayHoldACommaAndACaIdOf0MarksOnly) {
  loss_counts lost;

  const line_up list = chlist::parse_lamedb(with_options("p:Northlight, Ltd,C:0000"), lost).list;

  EXPECT_EQ(list.services.at(0).provider, "Northlight, Ltd");
  EXPECT_EQ(list.services.at(0).fields.flag, CHANNEL_FLAG_FTA);
  EXPECT_EQ(count_of(lost, "CA ids (but marked as scrambled)"), 0U);
}

TEST(LamedbReader, PositionsAreEastOrWest) {
  const struct {
    const char *position;
    const char *source;
  } cases[] = {{"192", "S19.2E"},  {"0", "S0.0E"},      {"-300", "S30.0W"},
               {"3300", "S30.0W"}, {"1800", "S180.0E"}, {"1801", "S179.9W"}};

  for (const auto &each : cases) {
    const std::string text = replaced(with_options("p:"), ":192:", ":" + std::string(each.position) + ":");

    EXPECT_EQ(parse(text).services.at(0).source, each.source);
  }
}

TEST(LamedbReader, CircularPolarisationsAreCounted) {
  for (const auto &[code, polarisation] : {std::pair("2", 0), std::pair("3", 1)}) {
    loss_counts lost;

    const line_up list =
        chlist::parse_lamedb(replaced(with_options("p:"), ":22000000:0:", ":22000000:" + std::string(code) + ":"), lost)
            .list;

    EXPECT_EQ(list.services.at(0).fields.polarisation, polarisation);
    EXPECT_EQ(count_of(lost, "circular polarisations (left as horizontal, right as vertical)"), 1U);
  }
}

TEST(LamedbReader, ServicesMayLackTheirOptions) {
  const line_up list = parse(replaced(version_4, "p:,c:040022\n", ""));

  EXPECT_EQ(skipped_in(list), texts{});
  EXPECT_EQ(list.services.size(), 3U);
}

TEST(LamedbReader, NamesOfVersion5MayHoldQuotationMarksAndCommas) {
  EXPECT_EQ(parse(replaced(version_5, "\"Radio\"", "\"The \"R\", they say\"")).services.at(1).name,
            "The \"R\", they say");
  EXPECT_EQ(parse(replaced(version_5, "\"Antenna\",p:Free", "\"\"")).services.at(2).name, "");
}

}  // namespace
