// The DVBv5 format: sections that are written, and every loss of a list that is counted.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

#include "tool/exchange/dvbv5/dvbv5_text.h"

namespace {

using namespace tool_test::dvbv5;

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

}  // namespace
