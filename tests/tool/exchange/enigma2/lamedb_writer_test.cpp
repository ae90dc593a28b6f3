// The lamedb that is written: its text in each version, frequencies, positions, and what is lost of a list.
#include "chlist/exchange/enigma2/lamedb.h"

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>

#include "tool/exchange/enigma2/lamedb_folder.h"
#include "tool/exchange/line_ups.h"

namespace {

using namespace tool_test::enigma2;
using tool_test::row_list;

TEST(LamedbWriter, Version4IsThreeLinesForAService) {
  line_up_service service = plain_service(0xBB9);
  service.provider = "P";
  service.fields.video_pid = 0x191;
  service.fields.audio_pid = 0x192;
  service.fields.pcr_pid = 0x190;
  service.fields.flag = CHANNEL_FLAG_FTA;

  EXPECT_EQ(written_folder(list_of({service}))["lamedb"], "eDVB services /4/\n"
                                                          "transponders\n"
                                                          "00c00000:07da:009e\n"
                                                          "\ts 11306000:27500000:0:0:192:2:0\n"
                                                          "/\n"
                                                          "end\n"
                                                          "services\n"
                                                          "0bb9:00c00000:07da:009e:1:0\n"
                                                          "A3001\n"
                                                          "p:P,c:000191,c:010192,c:030190,C:0000\n"
                                                          "end\n");
}

TEST(LamedbWriter, Version3HasNoFlagsOfTransponders) {
  const std::string text = written_folder(list_of({plain_service(1)}), 3)["lamedb"];

  EXPECT_EQ(text.substr(0, 18), "eDVB services /3/\n");
  EXPECT_NE(text.find("\ts 11306000:27500000:0:0:192:2\n"), std::string::npos);
}

TEST(LamedbWriter, Version5IsALineForAService) {
  EXPECT_EQ(written_folder(list_of({plain_service(1)}), 5)["lamedb5"],
            "eDVB services /5/\n"
            "t:00c00000:07da:009e,s:11306000:27500000:0:0:192:2:0\n"
            "s:0001:00c00000:07da:009e:1:0:0,\"A1\",p:\n");
}

TEST(LamedbWriter, FrequenciesAreInKhzButForTerrestrialOnes) {
  const struct {
    const char *source;
    std::int64_t khz;
    const char *line;
  } cases[] = {{"S30W", 11'306'000, "0ce40000:07da:009e\n\ts 11306000:27500000:0:0:-300:2:0\n"},
               {"C", 394'000, "ffff0000:07da:009e\n\tc 394000:6900000:2:0:0:0\n"},
               {"T", 514'000, "eeee0000:07da:009e\n\tt 514000000:0:5:5:3:2:4:4:2:0\n"},
               {"T", 4'294'967, "\tt 4294967000:"},
               {"T", 4'294'968, "\tt 0:"},
               {"S0.0E", 4'294'967'295, "\ts 4294967295:"},
               {"S0.0E", 4'294'967'296, "\ts 0:"},
               {"S0.0E", -1, "\ts 0:"}};

  for (const auto &each : cases) {
    line_up_service service = plain_service(1);
    service.source = each.source;
    service.fields.frequency = each.khz;

    EXPECT_NE(written_folder(list_of({service}))["lamedb"].find(each.line), std::string::npos) << each.line;
  }
}

TEST(LamedbWriter, SourcesWithoutAPositionGetFreeOnes) {
  line_up list = list_of({plain_service(1), plain_service(2), plain_service(3), plain_service(4), plain_service(5)});
  list.services[0].source = "Network";
  list.services[1].source = "S0.1E";
  list.services[2].source = "Other";
  list.services[3].source = "Network";
  list.services[4].source = "Other";
  list.services[4].fields.net_index = 7;

  const line_up read = read_folder(written_folder(list));
  texts sources;
  std::ranges::transform(read.services, std::back_inserter(sources), &line_up_service::source);
  EXPECT_EQ(sources, (texts{"S0.2E", "S0.1E", "S0.3E", "S0.2E", "S0.4E"}));
}

TEST(LamedbWriter, TranspondersOfTheSameIdsAreToldApartByTheirNamespace) {
  line_up list = list_of({plain_service(1), plain_service(1), plain_service(1), plain_service(2)});
  list.services[1].fields.frequency = 11'345'000;
  list.services[2].fields.polarisation = 1;

  const line_up read = read_folder(written_folder(list));

  ASSERT_EQ(read.services.size(), 4U);
  EXPECT_EQ(read.services[1].fields.frequency, 11'345'000);
  EXPECT_EQ(read.services[2].fields.polarisation, 1);
  EXPECT_NE(written_folder(list)["lamedb"].find("00c02c51:07da:009e\n"), std::string::npos);
}

// What an export of one service loses beside its tuning.
row_list losses_of(const line_up_service &service) {
  row_list rows = tool_test::losses(tool_test::export_of(list_of({service}), "lamedb5").lost);
  EXPECT_EQ(rows.at(0), "symbol rate and modulation: 1");
  rows.erase(rows.begin());
  return rows;
}

using LamedbLosses = tool_test::line_up_test;

TEST_F(LamedbLosses, ThereIsNothingToLoseOfAPlainServiceButWhatIsAssumed) {
  EXPECT_EQ(losses_of(plain_service(1)), row_list{});
}

TEST_F(LamedbLosses, EveryLossIsCounted) {
  const struct {
    row_list losses;
    void (*change)(line_up_service &service);
  } cases[] = {
      {{"short_name: 1"}, [](line_up_service &s) { s.short_name = "s"; }},
      {{"skipped: 1"}, [](line_up_service &s) { s.fields.flag = CHANNEL_FLAG_SKIP; }},
      {{"name: 1"}, [](line_up_service &s) { s.name = "\"a\""; }},
      {{"provider: 1", "provider group: 1"}, [](line_up_service &s) { s.provider = "a,b"; }},
      {{"type: 1", "entries that come up in the TV view: 1"}, [](line_up_service &s) { s.fields.service_type = 25; }},
      {{"pcr_pid: 1"}, [](line_up_service &s) { s.fields.pcr_pid = 0; }},
      {{"frequency: 1", "frequency of a transponder: 1"}, [](line_up_service &s) { s.fields.frequency = -1; }},
      {{"polarisation: 1"}, [](line_up_service &s) { s.fields.polarisation = 2; }},
      {{"name of a network: 1"}, [](line_up_service &s) { s.source = "S19E2"; }},
      {{"net_index: 1"}, [](line_up_service &s) { s.fields.net_index = 2; }},
  };

  for (const auto &each : cases) {
    line_up_service service = plain_service(1);
    each.change(service);

    EXPECT_EQ(losses_of(service), each.losses);
  }
}

}  // namespace
