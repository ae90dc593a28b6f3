// `chlist show`: everything of one service.
#include "listing_host.h"

namespace {

using namespace listing_test;

class Show : public listing_host {};

TEST_F(Show, TellsFieldsPlaceAndEntries) {
  EXPECT_EQ(output_of({"show", "list.dat", "Films"}), "Films\n"
                                                      "  identity        1:1:100:11000000H:2\n"
                                                      "  name            Films\n"
                                                      "  type            TV\n"
                                                      "  provider        Sky\n"
                                                      "  favourites      Best\n"
                                                      "  network name    Astra\n"
                                                      "  net             1\n"
                                                      "  network         1\n"
                                                      "  ts              100\n"
                                                      "  frequency       11000000\n"
                                                      "  pol             H\n"
                                                      "  service         2\n"
                                                      "  PMT PID         0\n"
                                                      "  PCR PID         0\n"
                                                      "  video PID       0\n"
                                                      "  video tag       0\n"
                                                      "  ECM PID         0\n"
                                                      "  audio PID       0\n"
                                                      "  audio tag       0\n"
                                                      "  locked          yes\n"
                                                      "  skipped         no\n"
                                                      "  scrambled       yes\n"
                                                      "  data            no\n"
                                                      "  flags           6\n"
                                                      "  type id         1\n"
                                                      "  source          1\n"
                                                      "  provider id     3\n"
                                                      "  genre id        0\n"
                                                      "  country id      0\n"
                                                      "  order key       0\n"
                                                      "Transponder\n"
                                                      "  ts              100\n"
                                                      "  frequency       11000000\n"
                                                      "  pol             H\n"
                                                      "  services        2\n"
                                                      "Network\n"
                                                      "  net             1\n"
                                                      "  network         1\n"
                                                      "  transponders    2\n"
                                                      "  services        3\n"
                                                      "  name            Astra\n"
                                                      "view                 number  position  tag  favourite key\n"
                                                      "ALL                      12         2    0              0\n"
                                                      "TV                       12         2    0              0\n"
                                                      "favourites 1 \"Best\"      12         1    0              1\n");
}

TEST_F(Show, TheJsonReportSaysTheSame) {
  const json report = json_of({"show", "list.dat", "Films", "--json"});

  EXPECT_EQ(report["file"], "list.dat");
  EXPECT_EQ(report["service"]["identity"], "1:1:100:11000000H:2");
  EXPECT_EQ(report["service"]["provider"], "Sky");
  EXPECT_EQ(report["service"]["locked"], true);
  EXPECT_FALSE(report["service"].contains("number"));
  EXPECT_EQ(report["transponder"],
            (json{{"ts_id", 100}, {"frequency", 11'000'000}, {"polarisation", "H"}, {"services", 2}}));
  EXPECT_EQ(report["network"],
            (json{{"net_index", 1}, {"network_id", 1}, {"transponders", 2}, {"services", 3}, {"name", "Astra"}}));
  ASSERT_EQ(report["entries"].size(), 3U);
  EXPECT_EQ(report["entries"][2], (json{{"view", "favourites"},
                                        {"group", 1},
                                        {"group_name", "Best"},
                                        {"position", 1},
                                        {"number", 12},
                                        {"minor", 0},
                                        {"tag", 0},
                                        {"favourite_key", 1}}));
}

TEST_F(Show, TakesNumbersOfAViewNamesAndIdentities) {
  const auto shown = [this](const std::vector<std::string> &more) {
    std::vector<std::string> arguments = {"show", "list.dat", "--json"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return json_of(arguments)["service"]["name"].as_string();
  };
  EXPECT_EQ(shown({"101"}), "News");
  EXPECT_EQ(shown({"1", "--view", "radio"}), music.name);
  EXPECT_EQ(shown({"12", "--view", "fav:Best"}), "Films");
  EXPECT_EQ(shown({"usic"}), music.name);
  EXPECT_EQ(shown({"1:1:101:11727480V:5"}), music.name);
}

TEST_F(Show, AServiceInNoViewIsShown) {
  channel_file file;
  write("list.dat", file.service(news));
  const std::string text = output_of({"show", "list.dat", "News"});
  EXPECT_TRUE(has_line(text, "In no view.")) << text;
  EXPECT_EQ(json_of({"show", "list.dat", "News", "--json"})["entries"], json::array());
}

TEST_F(Show, WhatIsNotOneServiceIsRefused) {
  expect_refused({"show", "list.dat", "Sport"}, "no service has the number, the name or the identity \"Sport\"");
  expect_refused({"show", "list.dat", "s"}, "\"s\" could be any of 3 services:\n"
                                            "     101  1:1:100:11000000H:1  \"News\"\n"
                                            "      12  1:1:100:11000000H:2  \"Films\"\n"
                                            "      13  1:1:101:11727480V:5  \"Music, \\\"live\\\"\"");
  expect_refused({"show", "list.dat", "s", "--view", "none"},
                 "no view \"none\": there are all, tv, radio, user, promo, fav:1 to fav:20, fav:Best");
}

TEST_F(Show, RefusesBadFiles) { expect_bad_files_refused("show", {"News"}); }

}  // namespace
