// The DVBv5 format: sections that are written, and every loss of a list that is counted.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

#include "tool/exchange/dvbv5/dvbv5_text.h"
#include "tool/exchange/line_ups.h"

namespace {

using namespace tool_test::dvbv5;
using tool_test::row_list;

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

// What an export of one service loses beside its tuning.
row_list losses_of(const line_up_service &service) {
  row_list rows = tool_test::losses(tool_test::export_of(one(service), "dvbv5").lost);
  EXPECT_EQ(rows.at(0), "symbol rate and modulation: 1");
  rows.erase(rows.begin());
  return rows;
}

using Dvbv5Losses = tool_test::line_up_test;

TEST_F(Dvbv5Losses, ThereIsNothingToLoseOfAPlainServiceButWhatIsAssumed) { EXPECT_EQ(losses_of(plain()), row_list{}); }

TEST_F(Dvbv5Losses, EveryLossIsCounted) {
  const struct {
    row_list losses;
    void (*change)(line_up_service &service);
  } cases[] = {
      {{"short_name: 1"}, [](line_up_service &s) { s.short_name = "s"; }},
      {{"genre: 1", "genre group: 1"}, [](line_up_service &s) { s.genre = "g"; }},
      {{"country: 1", "country group: 1"}, [](line_up_service &s) { s.country = "c"; }},
      {{"provider: 1", "provider group: 1"}, [](line_up_service &s) { s.provider = "p"; }},
      {{"skipped: 1"}, [](line_up_service &s) { s.fields.flag = CHANNEL_FLAG_SKIP; }},
      {{"data: 1"}, [](line_up_service &s) { s.fields.flag = CHANNEL_FLAG_DSMCC; }},
      {{"flags: 1"}, [](line_up_service &s) { s.fields.flag = 0x80; }},
      {{"locked: 1"}, [](line_up_service &s) { s.fields.flag = CHANNEL_FLAG_LOCKED; }},
      {{"scrambled: 1"}, [](line_up_service &s) { s.fields.flag = CHANNEL_FLAG_FTA; }},
      {{"pmt_pid: 1"}, [](line_up_service &s) { s.fields.pmt_pid = 32; }},
      {{"pcr_pid: 1"}, [](line_up_service &s) { s.fields.pcr_pid = 33; }},
      {{"video_ecm_pid: 1"}, [](line_up_service &s) { s.fields.video_ecm_pid = 32; }},
      {{"audio_tag: 1"}, [](line_up_service &s) { s.fields.audio_tag = 1; }},
      {{"source_type: 1"}, [](line_up_service &s) { s.fields.source_type = 2; }},
      {{"order_key: 1"}, [](line_up_service &s) { s.fields.user_order_key = 1; }},
      {{"records with values that only the receiver knows: 1"},
       [](line_up_service &s) { s.fields.reserved_262[23] = 1; }},
      {{"audio_pid: 1"}, [](line_up_service &s) { s.fields.audio_pid = 8192; }},
      {{"frequency: 1", "frequency of a transponder: 1"},
       [](line_up_service &s) { s.fields.frequency = 4'294'967'295; }},
      {{"polarisation: 1"}, [](line_up_service &s) { s.fields.polarisation = 2; }},
      {{"type: 1", "entries that come up in the TV view: 1"}, [](line_up_service &s) { s.fields.service_type = 25; }},
      {{"number: 1"},
       [](line_up_service &s) {
         s.number = {-1, 0};
       }},
      {{"entries that come up in the ALL view: 1", "entries that come up in the TV view: 1"},
       [](line_up_service &s) { s.is_listed = false; }},
      {{"name of a network: 1"}, [](line_up_service &s) { s.source = "S19.2E"; }},
      {{"net_index: 1"}, [](line_up_service &s) { s.fields.net_index = 2; }},
      {{"name: 1"}, [](line_up_service &s) { s.name = "]"; }},
  };

  for (const auto &each : cases) {
    line_up_service service = plain();
    each.change(service);

    EXPECT_EQ(losses_of(service), each.losses);
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

TEST(Dvbv5Writer, SatellitesBeyondTheLargestNumberHaveNone) {
  line_up list;
  for (int n = 0; n <= 256; ++n) {
    list.services.push_back(plain());
    list.services.back().source = "Network " + std::to_string(n);

    const line_up read = parse(written(list));

    EXPECT_TRUE(read.skipped.empty()) << n;
    EXPECT_EQ(std::ranges::count(read.services, "S", &line_up_service::source), n == 0 || n == 256 ? 1 : 0) << n;
  }
}

}  // namespace
