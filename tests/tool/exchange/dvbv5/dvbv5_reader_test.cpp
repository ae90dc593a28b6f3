// The DVBv5 format: what is read of a section, what is skipped and what is lost.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>

#include "tool/exchange/dvbv5/dvbv5_text.h"

namespace {

using namespace tool_test::dvbv5;

constexpr std::string_view satellite_section = "[Northlight One]\n"
                                               "\tVCHANNEL = 12\n"
                                               "\tSERVICE_ID = 3001\n"
                                               "\tNETWORK_ID = 158\n"
                                               "\tTRANSPORT_ID = 2010\n"
                                               "\tVIDEO_PID = 401\n"
                                               "\tAUDIO_PID = 402 403\n"
                                               "\tPID_06 = 405 406\n"
                                               "\tFREQUENCY = 11306000\n"
                                               "\tPOLARIZATION = VERTICAL\n"
                                               "\tSYMBOL_RATE = 22000000\n"
                                               "\tINNER_FEC = 3/4\n"
                                               "\tDELIVERY_SYSTEM = DVBS2\n"
                                               "\n";

// A section with one line more.
std::string section(const std::string &line) {
  return "[A]\n\tSERVICE_ID = 1\n\tFREQUENCY = 11306000\n\tDELIVERY_SYSTEM = DVBS\n\tPOLARIZATION = HORIZONTAL\n" +
         line;
}

line_up_service only(std::string_view text) {
  line_up list = parse(text);
  for (const auto &skipped : list.skipped) {
    ADD_FAILURE() << skipped.line << ": " << skipped.reason;
  }
  EXPECT_EQ(list.services.size(), 1U);
  return list.services.empty() ? line_up_service{} : list.services.front();
}

// "line: reason" of the one line that is skipped.
std::string skipped(std::string_view text) {
  const line_up list = parse(text);
  EXPECT_EQ(list.skipped.size(), 1U);
  return list.skipped.empty() ? "" : std::to_string(list.skipped.front().line) + ": " + list.skipped.front().reason;
}

TEST(Dvbv5Reader, AllThatAListKeepsIsRead) {
  const line_up_service service = only(satellite_section);

  EXPECT_EQ(service.line, 1U);
  EXPECT_EQ(service.name, "Northlight One");
  EXPECT_EQ(service.source, "S");
  EXPECT_EQ(service.number, channel_number{12});
  EXPECT_EQ(service.fields.service_id, 3001);
  EXPECT_EQ(service.fields.network_id, 158);
  EXPECT_EQ(service.fields.ts_id, 2010);
  EXPECT_EQ(service.fields.video_pid, 401);
  EXPECT_EQ(service.fields.audio_pid, 402);
  EXPECT_EQ(service.fields.pcr_pid, 0xFFFF);
  EXPECT_EQ(service.fields.frequency, 11'306'000);
  EXPECT_EQ(service.fields.polarisation, 1);
  EXPECT_EQ(service.fields.service_type, SERVICE_TYPE_TV);
  EXPECT_EQ(service.fields.source_type, 1);
}

TEST(Dvbv5Reader, WhatAListDoesNotKeepIsCounted) {
  loss_counts lost;

  chlist::parse_dvbv5(std::string(satellite_section) + section("\tLNB = UNIVERSAL\n\tVIDEO_PID = 5 6\n") +
                          "[T]\n\tSERVICE_ID = 2\n\tFREQUENCY = 514166670\n\tSAT_NUMBER = 1\n" +
                          section("\tPOLARIZATION = LEFT\n"),
                      lost);

  EXPECT_EQ(count_of(lost, "symbol rates, modulation and other settings"), 1U);
  EXPECT_EQ(count_of(lost, "further audio PIDs"), 1U);
  EXPECT_EQ(count_of(lost, "further video PIDs"), 1U);
  EXPECT_EQ(count_of(lost, "PIDs of other streams"), 1U);
  EXPECT_EQ(count_of(lost, "settings of the antenna"), 1U);
  EXPECT_EQ(count_of(lost, "parts of a kHz"), 1U);
  EXPECT_EQ(count_of(lost, "satellite numbers of services that come from elsewhere"), 1U);
  EXPECT_EQ(count_of(lost, "circular polarisations (left as horizontal, right as vertical)"), 1U);
}

TEST(Dvbv5Reader, FrequenciesAreInKhzOnSatellitesAndInHzElsewhere) {
  const struct {
    const char *system;
    const char *frequency;
    std::int64_t khz;
    const char *source;
  } cases[] = {{"DVBS", "11306000", 11'306'000, "S"},       {"ISDBS", "4294967294", 4'294'967'294, "S"},
               {"DVBC/ANNEX_A", "394000000", 394'000, "C"}, {"DVBT", "514000000", 514'000, "T"},
               {"dvbt2", "4294967294", 4'294'967, "T"},     {"ATSC", "999", 0, "T"}};

  for (const auto &each : cases) {
    const line_up_service service = only("[A]\nSERVICE_ID = 1\nFREQUENCY = " + std::string(each.frequency) +
                                         "\nDELIVERY_SYSTEM = " + each.system + "\n");

    EXPECT_EQ(service.fields.frequency, each.khz) << each.system;
    EXPECT_EQ(service.source, each.source) << each.system;
  }
}

TEST(Dvbv5Reader, WithoutADeliverySystemAPolarisationTellsASatellite) {
  EXPECT_EQ(only("[A]\nSERVICE_ID = 1\nFREQUENCY = 11306000\nPOLARIZATION = RIGHT\n").source, "S");
  EXPECT_EQ(only("[A]\nSERVICE_ID = 1\nFREQUENCY = 514000000\nPOLARIZATION = OFF\n").source, "T");
  EXPECT_EQ(only("[A]\nSERVICE_ID = 1\nFREQUENCY = 514000000\n").source, "T");
}

TEST(Dvbv5Reader, SatelliteNumbersTellSatellitesApart) {
  EXPECT_EQ(only(section("SAT_NUMBER = 0")).source, "S#0");
  EXPECT_EQ(only(section("SAT_NUMBER = 255")).source, "S#255");
  EXPECT_EQ(skipped(section("SAT_NUMBER = 256")), "6: SAT_NUMBER '256' is not within 0..255");
}

TEST(Dvbv5Reader, ANumberMayHaveAMinorPart) {
  EXPECT_EQ(only(section("VCHANNEL = 0")).number, channel_number{0});
  EXPECT_EQ(only(section("VCHANNEL = 32767")).number, channel_number{32767});
  EXPECT_EQ(only(section("VCHANNEL = 7.1")).number, (channel_number{7, 1}));
  EXPECT_EQ(only(section("VCHANNEL = 7-2")).number, (channel_number{7, 2}));
  EXPECT_EQ(only(section("")).number, std::nullopt);
  EXPECT_EQ(skipped(section("VCHANNEL = 32768")), "6: VCHANNEL '32768' is not within 0..32767");
  EXPECT_EQ(skipped(section("VCHANNEL = x")), "6: VCHANNEL 'x' is not a number");
}

TEST(Dvbv5Reader, NamesMayHoldBracketsAndRepeat) {
  EXPECT_EQ(only("[A [b] c]\nSERVICE_ID = 1\nFREQUENCY = 1\n").name, "A [b] c");
  EXPECT_EQ(only("[]\nSERVICE_ID = 1\nFREQUENCY = 1\n").name, "");
  EXPECT_EQ(only("[CHANNEL]\nSERVICE_ID = 1\nFREQUENCY = 1\n").name, "");
  EXPECT_EQ(only("[ \xE4 ]\nSERVICE_ID = 1\nFREQUENCY = 1\n").name, "\xE4 ");
  EXPECT_EQ(parse("[A]\nSERVICE_ID = 1\nFREQUENCY = 1\n[A]\nSERVICE_ID = 2\nFREQUENCY = 1\n").services.size(), 2U);
}

TEST(Dvbv5Reader, CommentsBlanksAndLineEndsOfAnyKindArePassedOver) {
  const std::string text = "\xEF\xBB\xBF# comment\r\n\r\n ; another\r\n  [A]\r\n\tservice_id=7\r\n"
                           "   FREQUENCY   =  11306000  \r\n\tDELIVERY_SYSTEM = DVBS\r\n\t#AUDIO_PID = 4";

  const line_up_service service = only(text);

  EXPECT_EQ(service.name, "A");
  EXPECT_EQ(service.line, 4U);
  EXPECT_EQ(service.fields.service_id, 7);
  EXPECT_EQ(service.fields.frequency, 11'306'000);
  EXPECT_EQ(service.fields.audio_pid, 0xFFFF);
}

TEST(Dvbv5Reader, PidsOf0AreNone) {
  const line_up_service service = only(section("VIDEO_PID = 0\nAUDIO_PID = 0 \t 8191\n"));

  EXPECT_EQ(service.fields.video_pid, 0xFFFF);
  EXPECT_EQ(service.fields.audio_pid, 8191);
  EXPECT_EQ(service.fields.service_type, SERVICE_TYPE_RADIO);
}

TEST(Dvbv5Reader, ABadValueOfLittleWeightIsSkippedAlone) {
  EXPECT_EQ(skipped(section("VIDEO_PID = 8192")), "6: VIDEO_PID '8192' is not within 0..8191");
  EXPECT_EQ(parse(section("VIDEO_PID = 8192")).services.size(), 1U);
}

TEST(Dvbv5Reader, ABadValueThatAServiceNeedsTakesTheServiceWithIt) {
  const struct {
    const char *line;
    const char *reason;
  } cases[] = {
      {"SERVICE_ID = 65536", "6: SERVICE_ID '65536' is not within 0..65535; the service is left out"},
      {"NETWORK_ID = -1", "6: NETWORK_ID '-1' is not a number; the service is left out"},
      {"TRANSPORT_ID =", "6: TRANSPORT_ID '' is not a number; the service is left out"},
      {"FREQUENCY = 4294967296", "6: FREQUENCY '4294967296' is not within 0..4294967295; the service is left out"},
      {"FREQUENCY = 99999999999999999999999",
       "6: FREQUENCY '99999999999999999999999' is not within 0..4294967295; the service is left out"},
      {"DELIVERY_SYSTEM = XYZ", "6: DELIVERY_SYSTEM 'XYZ' is unknown; the service is left out"},
      {"POLARIZATION = UP", "6: POLARIZATION 'UP' is unknown; the service is left out"},
  };

  for (const auto &each : cases) {
    const std::string text = section(each.line) + "\nVIDEO_PID = x\n[B]\nSERVICE_ID = 2\nFREQUENCY = 1\n";

    EXPECT_EQ(skipped(text), each.reason);
    EXPECT_EQ(parse(text).services.size(), 1U);
  }
}

TEST(Dvbv5Reader, SectionsThatAreNoServicesAreSkipped) {
  EXPECT_EQ(skipped("[CHANNEL]\nFREQUENCY = 1\n"), "1: has no SERVICE_ID: a transponder, not a service");
  EXPECT_EQ(skipped("\n[A]\nSERVICE_ID = 1\n"), "2: has no FREQUENCY");
  EXPECT_EQ(skipped("[A]\nSERVICE_ID = 1\nFREQUENCY = 4294967295\n"), "1: has no FREQUENCY");
  EXPECT_EQ(skipped("[A\nSERVICE_ID = 1\nFREQUENCY = 5\n"), "1: a section without ']'");
  EXPECT_EQ(skipped(std::string_view("[A\0]\nSERVICE_ID = 1\n", 20)), "1: holds a NUL byte");
}

TEST(Dvbv5Reader, LinesThatAreNothingAreSkipped) {
  EXPECT_EQ(skipped("\x1B[2Jgarbage"), "1: stands before the first section");
  EXPECT_EQ(skipped(section("garbage")), "6: is neither a section nor KEY = value");
  EXPECT_TRUE(parse("").services.empty());
}

TEST(Dvbv5Reader, ItIsToldByItsFirstLine) {
  EXPECT_TRUE(chlist::is_like_dvbv5("x", "# c\n\n[A]\nSERV"));
  EXPECT_FALSE(chlist::is_like_dvbv5("x", "{\"a\": []}"));
  EXPECT_FALSE(chlist::is_like_dvbv5("x", "[1, 2"));
  EXPECT_FALSE(chlist::is_like_dvbv5("x", ""));
}

TEST(Dvbv5Reader, RandomBytesDoNoHarm) {
  std::mt19937 random(7);
  for (int run = 0; run < 300; ++run) {
    std::string text = written(tool_test::random_line_up(static_cast<unsigned>(random())).make(3, 0));
    for (int change = 0; change < 10; ++change) {
      text[random() % text.size()] = static_cast<char>(random());
    }
    text.resize(random() % (text.size() + 1));

    EXPECT_LE(parse(text).services.size(), 3U + 10U);
  }
}

}  // namespace
