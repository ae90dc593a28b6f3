// `chlist import` as it is run: what it writes, loaded through the library, and what it says.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tool/exchange/import_host.h"
#include "tool/exchange/vdr/service_line.h"

namespace {

using test_support::majors;
using test_support::service_ids;
using test_support::write_file;
using tool_test::has_line;
using tool_test::program_result;
using tool_test::run_program;
using tool_test::sample;
using tool_test::service_line;

using Import = tool_test::import_test;

TEST_F(Import, TheSampleLineUpComesThroughWhole) {
  const program_result result = run({"import", sample, "--output", "list.dat"});

  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_EQ(result.err, "");
  EXPECT_TRUE(has_line(result.out,
                       "list.dat: 24 services (18 TV, 5 radio, 1 other) of 9 providers on 8 transponders of 2 "
                       "sources, 0 lines skipped"))
      << result.out;
  load();
  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{1,  2,  3,  4,  5,  6,  7,   8,   9,   50,  51,  52,
                                                53, 54, 55, 56, 57, 58, 900, 901, 902, 903, 904, 905}));
  EXPECT_EQ(list.tv_vnumber, 18);
  EXPECT_EQ(majors(VIEW_RADIO), (std::vector<int>{900, 901, 902, 903, 904}));
  EXPECT_EQ(list.network_num, 2);
}

TEST_F(Import, TheSampleServicesAreWhatTheirLinesSay) {
  run({"import", sample, "-o", "list.dat"});
  load();

  const channel_st *harbour = get_channel(get_channel_index(5));
  ASSERT_NE(harbour, nullptr);
  EXPECT_STREQ(harbour->name[0].text, "Harbour 7");
  EXPECT_EQ(harbour->frequency, 11'345'000);
  EXPECT_EQ(harbour->polarisation, 1);
  EXPECT_EQ(harbour->video_pid, 521);
  EXPECT_EQ(harbour->pcr_pid, 520);
  EXPECT_EQ(harbour->audio_pid, 522);
  EXPECT_EQ(harbour->flag, 0);
  const channel_st *silverscreen = get_channel(get_channel_index(50));
  ASSERT_NE(silverscreen, nullptr);
  EXPECT_STREQ(silverscreen->name[0].text, "Silverscreen Premi\xC3\xA8re HD");
  EXPECT_STREQ(silverscreen->name[1].text, "Silver1 HD");
  EXPECT_EQ(silverscreen->audio_pid, 702);
  EXPECT_EQ(silverscreen->flag, CHANNEL_FLAG_FTA);
  const channel_st *polarstern = get_channel(get_channel_index(54));
  ASSERT_NE(polarstern, nullptr);
  EXPECT_EQ(polarstern->net_index, 2);
  EXPECT_STREQ(get_network_ch_info(2, 171)->network_name, "S31.0E");
}

TEST_F(Import, TheSummarySaysWhatIsNotCarried) {
  const program_result result = import(service_line{.name = "A;Provider",
                                                    .parameters = "H",
                                                    .symbol_rate = "0",
                                                    .audio = "102,103;104",
                                                    .teletext = "105",
                                                    .ca_ids = "B21",
                                                    .radio_id = "3"}
                                           .text());

  EXPECT_EQ(result.out, "list.dat: 1 service (1 TV, 0 radio, 0 other) of 1 provider on 1 transponder "
                        "of 1 source, 0 lines skipped\n"
                        "Not carried by the channel file, but kept in list.dat.more.json:\n"
                        "  further audio PIDs                    1\n"
                        "  Dolby PIDs                            1\n"
                        "  teletext PIDs                         1\n"
                        "  CA ids (but marked as scrambled)      1\n"
                        "  RIDs                                  1\n");
}

TEST_F(Import, AListThatIsCarriedWholeHasAShortSummary) {
  const program_result result = import(service_line{.parameters = "H", .symbol_rate = "0"}.text());

  EXPECT_EQ(result.out, "list.dat: 1 service (1 TV, 0 radio, 0 other) of 0 providers on 1 transponder "
                        "of 1 source, 0 lines skipped\n");
}

TEST_F(Import, TheSampleServicesHaveTheirProviders) {
  run({"import", sample, "-o", "list.dat"});
  load();

  EXPECT_EQ(provider_names(),
            (std::vector<std::string>{"Belv\xC3\xA9\x64\xC3\xA8re", "Delta Vision", "Fjordkast", "Lanterna TV",
                                      "Meridian", "Northlight Media", "Polarstern", "Quayside", "Silverscreen"}));
  EXPECT_EQ(provider_of(1), "Northlight Media");
  EXPECT_EQ(provider_of(5), "Quayside");
  EXPECT_EQ(provider_of(900), "Lanterna TV");
  EXPECT_EQ(provider_of(905), "Quayside");
}

TEST_F(Import, ProvidersThatDoNotFitAreAFinding) {
  std::string text;
  for (int n = 0; n <= MAX_PROVIDER; ++n) {
    text += service_line{.name = "Name;Provider " + std::to_string(n), .service_id = std::to_string(n + 1)}.text();
  }

  const program_result result = import(text);

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err,
            "chlist: import: channels.conf: the list of providers is full: it holds 500, 1 more are left out\n");
  EXPECT_NE(result.out.find(" of 500 providers on "), std::string::npos) << result.out;
  load();
  EXPECT_EQ(list.vnumber, MAX_PROVIDER + 1);
  EXPECT_EQ(list.provider_num, MAX_PROVIDER);
}

TEST_F(Import, AProviderNameThatIsCutIsNotCarriedWhole) {
  const program_result whole = import(service_line{.name = "A;" + std::string(97, 'p')}.text());
  const program_result cut = import(service_line{.name = "A;" + std::string(98, 'p')}.text());

  EXPECT_EQ(whole.out.find("provider names"), std::string::npos) << whole.out;
  EXPECT_TRUE(has_line(cut.out, "  provider names beyond 97 bytes        1")) << cut.out;
}

TEST_F(Import, SkippedLinesAreReportedInOrderAndTheRestIsImported) {
  const program_result result =
      import(service_line{.service_id = "1"}.text() + service_line{.service_id = "1"}.text() + "broken\n" +
             service_line{.service_id = "x"}.text() + service_line{.service_id = "2"}.text());

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: import: channels.conf:2: skipped: is the same service as line 1\n"
                        "chlist: import: channels.conf:3: skipped: has 1 field instead of 9 to 13\n"
                        "chlist: import: channels.conf:4: skipped: SID 'x' is not a number\n");
  EXPECT_NE(result.out.find("2 services (2 TV, 0 radio, 0 other)"), std::string::npos) << result.out;
  EXPECT_NE(result.out.find("3 lines skipped"), std::string::npos) << result.out;
  load();
  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{1, 2}));
  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{1, 2}));
}

TEST_F(Import, OfLinesThatAreSkippedForOneReasonTenAreToldUnlessAllAreAskedFor) {
  std::string text = service_line{.service_id = "1"}.text() + "broken\n";
  for (int n = 0; n < 12; ++n) {
    text += service_line{.service_id = "x" + std::to_string(n)}.text();
  }
  write_file(path("channels.conf"), text);

  const program_result some = run({"import", "channels.conf", "-o", "list.dat"});
  const program_result all = run({"import", "channels.conf", "-o", "list.dat", "--all"});

  EXPECT_EQ(tool_test::lines_of(some.err).size(), 12U) << some.err;
  EXPECT_TRUE(has_line(some.err, "chlist: import: channels.conf:2: skipped: has 1 field instead of 9 to 13"))
      << some.err;
  EXPECT_TRUE(has_line(some.err, "chlist: import: channels.conf:12: skipped: SID 'x9' is not a number")) << some.err;
  EXPECT_EQ(tool_test::lines_of(some.err).back(),
            "chlist: import: channels.conf: and 2 more like: SID 'x0' is not a number (--all)");
  EXPECT_EQ(tool_test::lines_of(all.err).size(), 13U) << all.err;
  EXPECT_EQ(tool_test::lines_of(all.err).back(),
            "chlist: import: channels.conf:14: skipped: SID 'x11' is not a number");
}

TEST_F(Import, ManyRowsOfOneFaultAreToldWithTheRangeOfTheFirst) {
  std::string text = "network_id,ts_id,frequency,service_id,video_pid\n1,2,11000000,1,100\n";
  for (int n = 0; n < 12; ++n) {
    text += "1,2,11000000,5," + std::to_string(9000 + n) + "\n";
  }
  write_file(path("channels.csv"), text);

  const program_result result = run({"import", "channels.csv", "-o", "list.dat"});

  EXPECT_EQ(tool_test::lines_of(result.err).back(),
            "chlist: import: channels.csv: and 2 more like: video_pid=\"9000\": VALUE is 0 to 8191, or none (--all)");
}

TEST_F(Import, AViewThatIsTooSmallIsAFinding) {
  std::string text;
  for (int n = 0; n <= MAX_RADIO_CHANNEL; ++n) {
    text += service_line{.video = "0", .service_id = std::to_string(n + 1)}.text();
  }

  const program_result result = import(text);

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: import: channels.conf: the radio view is full: it holds 1000, 1 more services are in "
                        "the ALL view only\n"
                        "chlist: import: channels.conf: first come favourites, numbered, free (--prefer)\n");
  load();
  EXPECT_EQ(list.vnumber, MAX_RADIO_CHANNEL + 1);
  EXPECT_EQ(list.radio_vnumber, MAX_RADIO_CHANNEL);
}

TEST_F(Import, BadUsageIsRefused) {
  EXPECT_EQ(run_program({CHLIST_PROGRAM, "unknown"}).exit_code, 2);
  EXPECT_EQ(run({"import"}).exit_code, 2);
  EXPECT_EQ(run({"import", sample}).exit_code, 2);
  EXPECT_EQ(run({"import", sample, "-o", "list.dat", "more"}).exit_code, 2);
  EXPECT_EQ(run_program({CHLIST_PROGRAM, "--log-level", "6", "import", sample, "-o", "list.dat"}).exit_code, 2);
}

TEST_F(Import, HelpNamesTheExitCodes) {
  const program_result result = run({"import", "--help"});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_TRUE(has_line(result.out, "  0  everything was imported; what a channel file has no place for stands beside"))
      << result.out;
  EXPECT_TRUE(has_line(result.out, "  1  imported, but lines were skipped, there was no room for something, or"))
      << result.out;
}

TEST_F(Import, TheLogLevelLetsTheLibrarySpeak) {
  write_file(dir.path() + "channels.conf", service_line().text() + service_line().text());

  const program_result result =
      run_program({CHLIST_PROGRAM, "--log-level", "1", "import", "channels.conf", "-o", "list.dat"}, dir.path());

  EXPECT_NE(result.err.find("WARNING: add_rch_info:"), std::string::npos) << result.err;
}

}  // namespace
