// `chlist info`: what files of every version hold, counted.
#include "listing_host.h"
#include "support/old_channel_file.h"

namespace {

using namespace listing_test;

class Info : public listing_host {};

TEST_F(Info, CountsWhatTheFileHolds) {
  channel_file file = sample_list();
  write("list.dat", file.set(list_field::bouquet_id, 2, 7));
  EXPECT_EQ(output_of({"info", "list.dat"}), "list.dat: version 10, 462056 bytes, 3 services\n"
                                             "Settings\n"
                                             "  tuner                   -\n"
                                             "  channel type            0\n"
                                             "  bouquet id              7\n"
                                             "  current view            ALL\n"
                                             "  group kind in use       all\n"
                                             "  group id in use         -\n"
                                             "  network index in use    -\n"
                                             "  service type in use     1\n"
                                             "Services by type\n"
                                             "  TV                      2\n"
                                             "  radio                   1\n"
                                             "Services by flag\n"
                                             "  locked                  1\n"
                                             "  skipped                 0\n"
                                             "  scrambled               1\n"
                                             "  data                    0\n"
                                             "Views\n"
                                             "  ALL                     3 of 5000\n"
                                             "  TV                      2 of 4000\n"
                                             "  radio                   1 of 1000\n"
                                             "  promotion               0 of 10\n"
                                             "  USER                    0 of 5000\n"
                                             "  favourites 1 \"Best\"     1 of 40\n"
                                             "Groups\n"
                                             "  providers               2 of 500: BBC, Sky\n"
                                             "  genres                  0 of 50\n"
                                             "  countries               0 of 200\n"
                                             "  favourite groups        1 of 20: Best\n"
                                             "Networks\n"
                                             "net  network  transponders  services  name\n"
                                             "  1        1             2         3  Astra\n");
}

TEST_F(Info, TheJsonReportNamesEverything) {
  const json report = json_of({"info", "list.dat", "--json"});

  EXPECT_EQ(report["file"], "list.dat");
  EXPECT_EQ(report["version"], 10);
  EXPECT_EQ(report["is_current"], true);
  EXPECT_EQ(report["bytes"], sample_list().data.size());
  EXPECT_EQ(report["settings"], (json{{"use_tuner", nullptr},
                                      {"ch_type", 0},
                                      {"bouquet_id", nullptr},
                                      {"current_view", "ALL"},
                                      {"group_kind", "all"},
                                      {"group_id", nullptr},
                                      {"net_index", nullptr},
                                      {"service_type", 1}}));
  EXPECT_EQ(report["views"].size(), 25U);
  EXPECT_EQ(report["views"][1], (json{{"view", "TV"}, {"count", 2}, {"capacity", 4000}}));
  EXPECT_EQ(
      report["group_tables"][0]["groups"],
      json::array({json{{"table", "provider"}, {"number", 0}, {"name", "BBC"}, {"id", 0}, {"position", nullptr}},
                   json{{"table", "provider"}, {"number", 3}, {"name", "Sky"}, {"id", 3}, {"position", nullptr}}}));
  EXPECT_EQ(report["services"], 3);
  EXPECT_EQ(report["services_by_type"][1], (json{{"service_type", 2}, {"type", "radio"}, {"services", 1}}));
  EXPECT_EQ(report["services_by_flag"][0], (json{{"flag", "locked"}, {"services", 1}}));
  EXPECT_EQ(report["network_list"][0]["services"], 3);
  EXPECT_EQ(report["network_list"][0]["transponder_list"][1],
            (json{{"ts_id", 101}, {"frequency", 11'727'480}, {"polarisation", "V"}, {"services", 1}}));
}

TEST_F(Info, NamesAtMostEightGroupsAsText) {
  channel_file file;
  for (int id = 0; id < 8; ++id) {
    file.group(GROUP_GENRE, id, "G" + std::to_string(id));
  }
  write("eight.dat", file);
  write("nine.dat", file.group(GROUP_GENRE, 8, "G8"));
  EXPECT_TRUE(
      has_line(output_of({"info", "eight.dat"}), "  genres                  8 of 50: G0, G1, G2, G3, G4, G5, G6, G7"));
  EXPECT_TRUE(has_line(output_of({"info", "nine.dat"}),
                       "  genres                  9 of 50: G0, G1, G2, G3, G4, G5, G6, G7 and 1 more"));
}

TEST_F(Info, AnEmptyListIsShown) {
  write("list.dat", channel_file());
  EXPECT_TRUE(output_of({"info", "list.dat"}).starts_with("list.dat: version 10, 460032 bytes, 0 services\n"));
}

class InfoOfEarlierVersions : public listing_host, public testing::WithParamInterface<test_support::old_version> {};

TEST_P(InfoOfEarlierVersions, SaysTheSameAndHowToConvert) {
  const json current = json_of({"info", "list.dat", "--json"});
  test_support::write_file(path("old.dat"), test_support::in_version(GetParam(), sample_list()).data);

  const std::string text = output_of({"info", "old.dat"});
  const json report = json_of({"info", "old.dat", "--json"});

  EXPECT_TRUE(has_line(text, "An earlier version: chlist convert makes it current.")) << text;
  EXPECT_EQ(report["version"], GetParam().number);
  EXPECT_EQ(report["is_current"], false);
  for (const char *part : {"settings", "views", "group_tables", "services", "services_by_type", "network_list"}) {
    EXPECT_EQ(report[part], current[part]) << part;
  }
}

TEST_P(InfoOfEarlierVersions, ShortFilesAreRefused) {
  const std::string whole = test_support::in_version(GetParam(), sample_list()).data;
  test_support::write_file(path("old.dat"), whole.substr(0, whole.size() - 1));
  expect_refused({"info", "old.dat"},
                 "old.dat: ends too early for a channel file of version " + std::to_string(GetParam().number));
}

INSTANTIATE_TEST_SUITE_P(All, InfoOfEarlierVersions, testing::ValuesIn(test_support::old_versions()),
                         test_support::name_of_version);

TEST_F(Info, RefusesBadFiles) {
  channel_file other = sample_list();
  expect_refused({"info", "missing.dat"}, "missing.dat: No such file or directory");
  test_support::write_file(path("bad.dat"), "\n");
  expect_refused({"info", "bad.dat"}, "bad.dat: too short for a channel file");
  test_support::write_file(path("bad.dat"), other.data.substr(0, other.data.size() - 1));
  expect_refused({"info", "bad.dat"}, "bad.dat: ends too early for a channel file of version 10");
  for (const int version : {0, 6, 11}) {
    write("bad.dat", other.set(list_field::version, 2, static_cast<std::uint64_t>(version)));
    expect_refused({"info", "bad.dat"},
                   "bad.dat: is of version " + std::to_string(version) + ": only 7 to 10 are known");
  }
}

}  // namespace
