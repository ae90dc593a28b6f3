// The DVBv5 format: what is read, what is written, and what of a line-up comes back.
#include "chlist/exchange/dvbv5/dvbv5.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

#include "tool/exchange/random_line_up.h"

namespace {

using chlist::channel_number;
using chlist::line_up;
using chlist::line_up_service;
using chlist::loss_counts;
using tool_test::count_of;

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

line_up parse(std::string_view text) {
  loss_counts lost;
  return chlist::parse_dvbv5(text, lost);
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

std::string written(const line_up &list) {
  loss_counts lost;
  return chlist::write_dvbv5(list, lost).at(0).text;
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

line_up one(const line_up_service &service) {
  line_up list;
  list.services.push_back(service);
  return list;
}

line_up_service plain() {
  line_up_service service;
  service.name = "A";
  service.source = "S";
  service.fields.source_type = 1;
  service.fields.service_type = SERVICE_TYPE_TV;
  service.fields.service_id = 1;
  service.fields.video_pid = 33;
  service.fields.audio_pid = 34;
  service.fields.frequency = 11'306'000;
  return service;
}

TEST(Dvbv5Writer, AServiceIsASection) {
  line_up_service service = plain();
  service.number = {7, 2};

  EXPECT_EQ(written(one(service)), "[A]\n"
                                   "\tVCHANNEL = 7.2\n"
                                   "\tSERVICE_ID = 1\n"
                                   "\tNETWORK_ID = 0\n"
                                   "\tTRANSPORT_ID = 0\n"
                                   "\tVIDEO_PID = 33\n"
                                   "\tAUDIO_PID = 34\n"
                                   "\tFREQUENCY = 11306000\n"
                                   "\tPOLARIZATION = HORIZONTAL\n"
                                   "\tSYMBOL_RATE = 27500000\n"
                                   "\tINNER_FEC = AUTO\n"
                                   "\tMODULATION = QPSK\n"
                                   "\tINVERSION = AUTO\n"
                                   "\tDELIVERY_SYSTEM = DVBS\n"
                                   "\n");
}

TEST(Dvbv5Writer, ThereIsNothingToLoseOfAPlainServiceButWhatIsAssumed) {
  loss_counts lost;

  chlist::write_dvbv5(one(plain()), lost);

  ASSERT_EQ(lost.rows().size(), 1U);
  EXPECT_EQ(lost.rows()[0].what, "symbol rates and the like (assumed: the list has none)");
}

TEST(Dvbv5Writer, EveryLossIsCounted) {
  const struct {
    const char *what;
    void (*change)(line_up_service &service);
  } cases[] = {
      {"second names", [](line_up_service &s) { s.short_name = "s"; }},
      {"genres", [](line_up_service &s) { s.genre = "g"; }},
      {"countries", [](line_up_service &s) { s.country = "c"; }},
      {"providers", [](line_up_service &s) { s.provider = "p"; }},
      {"skip marks", [](line_up_service &s) { s.fields.flag = CHANNEL_FLAG_SKIP; }},
      {"data service marks", [](line_up_service &s) { s.fields.flag = CHANNEL_FLAG_DSMCC; }},
      {"other flag bits", [](line_up_service &s) { s.fields.flag = 0x80; }},
      {"locks", [](line_up_service &s) { s.fields.flag = CHANNEL_FLAG_LOCKED; }},
      {"scrambling marks", [](line_up_service &s) { s.fields.flag = CHANNEL_FLAG_FTA; }},
      {"PMT PIDs", [](line_up_service &s) { s.fields.pmt_pid = 32; }},
      {"PCR PIDs", [](line_up_service &s) { s.fields.pcr_pid = 33; }},
      {"ECM PIDs", [](line_up_service &s) { s.fields.video_ecm_pid = 32; }},
      {"component tags of audio", [](line_up_service &s) { s.fields.audio_tag = 1; }},
      {"source types", [](line_up_service &s) { s.fields.source_type = 2; }},
      {"user order keys", [](line_up_service &s) { s.fields.user_order_key = 1; }},
      {"values that only the receiver knows", [](line_up_service &s) { s.fields.reserved_262[23] = 1; }},
      {"PIDs outside 1..8191", [](line_up_service &s) { s.fields.audio_pid = 8192; }},
      {"frequencies outside the format's range", [](line_up_service &s) { s.fields.frequency = 4'294'967'295; }},
      {"polarisations", [](line_up_service &s) { s.fields.polarisation = 2; }},
      {"service types other than the streams tell", [](line_up_service &s) { s.fields.service_type = 25; }},
      {"numbers below 0",
       [](line_up_service &s) {
         s.number = {-1, 0};
       }},
      {"services outside the ALL view", [](line_up_service &s) { s.is_listed = false; }},
      {"network names and positions", [](line_up_service &s) { s.source = "S19.2E"; }},
      {"network indexes", [](line_up_service &s) { s.fields.net_index = 2; }},
      {"names with brackets, line ends or blanks in front, or \"CHANNEL\"", [](line_up_service &s) { s.name = "]"; }},
  };

  for (const auto &each : cases) {
    line_up_service service = plain();
    each.change(service);
    loss_counts lost;

    chlist::write_dvbv5(one(service), lost);

    EXPECT_EQ(count_of(lost, each.what), 1U) << each.what;
    EXPECT_EQ(lost.rows().size(), 2U) << each.what;
  }
}

TEST(Dvbv5Writer, FrequenciesThatDoNotFitAreWrittenAs0) {
  const struct {
    const char *source;
    std::int64_t khz;
    const char *line;
  } cases[] = {{"S", 4'294'967'294, "FREQUENCY = 4294967294\n"},
               {"S", 4'294'967'295, "FREQUENCY = 0\n"},
               {"S", -1, "FREQUENCY = 0\n"},
               {"C", 394'000, "FREQUENCY = 394000000\n"},
               {"T", 4'294'967, "FREQUENCY = 4294967000\n"},
               {"T", 4'294'968, "FREQUENCY = 0\n"}};

  for (const auto &each : cases) {
    line_up_service service = plain();
    service.source = each.source;
    service.fields.frequency = each.khz;

    EXPECT_NE(written(one(service)).find(each.line), std::string::npos) << each.line;
  }
}

TEST(Dvbv5Writer, SeveralSatellitesAreNumbered) {
  line_up list;
  for (const char *source : {"S19.2E", "S#0", "S13.0E", "S19.2E"}) {
    list.services.push_back(plain());
    list.services.back().source = source;
  }

  const line_up read = parse(written(list));

  std::vector<std::string> sources;
  std::ranges::transform(read.services, std::back_inserter(sources), &line_up_service::source);
  EXPECT_EQ(sources, (std::vector<std::string>{"S#1", "S#0", "S#2", "S#1"}));
}

TEST(Dvbv5Writer, SatellitesBeyondTheLargestNumberAreCounted) {
  line_up list;
  for (int n = 0; n <= 256; ++n) {
    list.services.push_back(plain());
    list.services.back().source = "Network " + std::to_string(n);
    loss_counts lost;
    const line_up read = parse(chlist::write_dvbv5(list, lost).at(0).text);

    EXPECT_TRUE(read.skipped.empty()) << n;
    EXPECT_EQ(count_of(lost, "satellites beyond 256, which no number tells apart"), n == 256 ? 1U : 0U) << n;
  }
}

TEST(Dvbv5Writer, NamesInOtherTablesBecomeUtf8) {
  line_up_service service = plain();
  service.name = "\x05\xC7"
                 "a";
  loss_counts lost;

  EXPECT_EQ(chlist::write_dvbv5(one(service), lost).at(0).text.substr(0, 6), "[\xC3\x87"
                                                                             "a]\n");
  EXPECT_EQ(count_of(lost, "character tables of names, which are written in UTF-8"), 1U);
}

// What the format gives of a service, by what its losses say.
line_up_service as_read(line_up_service service, const std::string &source, std::size_t line) {
  line_up_service made;
  std::ranges::replace(service.name, '[', '(');
  std::ranges::replace(service.name, ']', ')');
  std::ranges::replace(service.name, '\n', ' ');
  std::ranges::replace(service.name, '\r', ' ');
  made.name = service.name.erase(0, service.name.find_first_not_of(" \t"));
  made.line = line;
  made.source = source;
  made.number = service.is_listed ? service.number : std::nullopt;
  made.fields.service_id = service.fields.service_id;
  made.fields.network_id = service.fields.network_id;
  made.fields.ts_id = service.fields.ts_id;
  made.fields.frequency = service.fields.frequency;
  made.fields.polarisation = source.starts_with('S') ? service.fields.polarisation : std::uint8_t{0};
  made.fields.video_pid = service.fields.video_pid;
  made.fields.audio_pid = service.fields.audio_pid;
  return made;
}

void expect_same(const line_up_service &read, const line_up_service &expected) {
  EXPECT_EQ(read.name, expected.name);
  EXPECT_EQ(read.number, expected.number);
  EXPECT_EQ(read.fields.service_id, expected.fields.service_id);
  EXPECT_EQ(read.fields.network_id, expected.fields.network_id);
  EXPECT_EQ(read.fields.ts_id, expected.fields.ts_id);
  EXPECT_EQ(read.fields.frequency, expected.fields.frequency);
  EXPECT_EQ(read.fields.polarisation, expected.fields.polarisation);
  EXPECT_EQ(read.fields.video_pid, expected.fields.video_pid);
  EXPECT_EQ(read.fields.audio_pid, expected.fields.audio_pid);
}

TEST(Dvbv5RoundTrip, RandomLineUpsComeBackButForTheirLosses) {
  for (unsigned seed = 0; seed < 200; ++seed) {
    const line_up list = tool_test::random_line_up(seed).make(static_cast<int>(seed % 30), 2);

    const line_up read = parse(written(list));

    ASSERT_TRUE(read.skipped.empty()) << seed << ": " << read.skipped.front().reason;
    ASSERT_EQ(read.services.size(), list.services.size()) << seed;
    for (std::size_t i = 0; i < read.services.size(); ++i) {
      expect_same(read.services[i], as_read(list.services[i], read.services[i].source, read.services[i].line));
    }
    // What was read once is written without another loss of its own, and comes back whole.
    EXPECT_EQ(written(parse(written(read))), written(read)) << seed;
  }
}

TEST(Dvbv5RoundTrip, AFullListTakesLittleTime) {
  const line_up list = tool_test::random_line_up(1).make(5000, 20);
  const std::clock_t begin = std::clock();

  const line_up read = parse(written(list));

  EXPECT_EQ(read.services.size(), 5000U);
  EXPECT_LT(std::clock() - begin, 2 * CLOCKS_PER_SEC);
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
