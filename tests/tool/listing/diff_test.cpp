// `chlist diff`: what it says of two files.
#include "listing_host.h"

namespace {

using namespace listing_test;

class Diff : public listing_host {
 protected:
  [[nodiscard]] std::string diff(const channel_file &after, int exit_code = 1) const {
    write("new.dat", after);
    return output_of({"diff", "list.dat", "new.dat"}, exit_code);
  }
  [[nodiscard]] json json_diff(const channel_file &after, int exit_code = 1) const {
    write("new.dat", after);
    return json_of({"diff", "list.dat", "new.dat", "--json"}, exit_code);
  }
};

TEST_F(Diff, EqualFilesHaveNone) {
  EXPECT_EQ(diff(sample_list(), 0), "no differences\n");
  EXPECT_EQ(json_diff(sample_list(), 0), (json{{"schema", 1},
                                               {"before_file", "list.dat"},
                                               {"after_file", "new.dat"},
                                               {"is_changed", false},
                                               {"differences",
                                                {{"added", json::array()},
                                                 {"removed", json::array()},
                                                 {"changed", json::array()},
                                                 {"others", json::array()}}},
                                               {"notes", json::array()}}));
}

TEST_F(Diff, TellsServicesAddedAndRemovedWithTheirNumbers) {
  channel_file file;
  file.network(1, 1, "Astra").service(news).service(films);
  file.set_last(record_kind::service, service_field::provider_id, 2, 3);
  file.group(GROUP_PROVIDER, 0, "BBC").group(GROUP_PROVIDER, 3, "Sky").group(GROUP_FAV, 0, "Best");
  file.entry(VIEW_ALL, news, 101).entry(VIEW_ALL, films, 12);
  file.entry(VIEW_TV, news, 101).entry(VIEW_TV, films, 12);
  file.entry(VIEW_FAVOURITE, films, 12, 1);
  write("less.dat", file);

  EXPECT_EQ(output_of({"diff", "less.dat", "list.dat"}, 1),
            "1 service added, 0 removed, 0 changed; 1 difference around the services\n"
            "Added:\n"
            "  \"Music, \\\"live\\\"\" (1:1:101:11727480V:5): ALL 13, radio 1\n"
            "Around the services:\n"
            "  transponder 1:1:101:11727480V added\n");
  EXPECT_EQ(output_of({"diff", "list.dat", "less.dat"}, 1),
            "0 services added, 1 removed, 0 changed; 1 difference around the services\n"
            "Removed:\n"
            "  \"Music, \\\"live\\\"\" (1:1:101:11727480V:5): ALL 13, radio 1\n"
            "Around the services:\n"
            "  transponder 1:1:101:11727480V removed\n");
}

TEST_F(Diff, HeadingsHaveTheColoursOfWhatTheyHead) {
  write("less.dat", channel_file().network(1, 1, "Astra").service(news).service(films));
  terminal screen({"/bin/sh", "-c",
                   "unset NO_COLOR; PAGER=cat TERM=xterm exec " CHLIST_PROGRAM " diff " + path("less.dat") + ' ' +
                       path("list.dat")});

  EXPECT_EQ(screen.exit_code(), 1);
  EXPECT_TRUE(has_line(screen.unread(), "\033[32mAdded:\033[0m")) << screen.unread();
  EXPECT_TRUE(has_line(screen.unread(), "\033[33mChanged:\033[0m")) << screen.unread();
  EXPECT_TRUE(has_line(screen.unread(), "\033[1mAround the services:\033[0m")) << screen.unread();
}

TEST_F(Diff, TellsFieldsAndNumbersThatChanged) {
  channel_file file;
  service_data renamed = news;
  renamed.name = "News 24";
  service_data free = films;
  free.flag = 0;
  file.network(1, 1, "Astra").service(renamed).service(free).service(music);
  file.group(GROUP_PROVIDER, 0, "BBC").group(GROUP_PROVIDER, 3, "Sky").group(GROUP_FAV, 0, "Best");
  file.entry(VIEW_ALL, news, 101).entry(VIEW_ALL, films, 14).entry(VIEW_ALL, music, 13);
  file.entry(VIEW_TV, news, 101).entry(VIEW_TV, films, 12).entry(VIEW_RADIO, music, 1);
  file.entry(VIEW_FAVOURITE, news, 101, 1);

  EXPECT_EQ(diff(file), "0 services added, 0 removed, 2 changed; 0 differences around the services\n"
                        "Changed:\n"
                        "  \"News 24\" (1:1:100:11000000H:1)\n"
                        "    name: \"News\" -> \"News 24\"\n"
                        "    number in favourites 1 \"Best\": - -> 101\n"
                        "  \"Films\" (1:1:100:11000000H:2)\n"
                        "    provider: \"Sky\" -> \"BBC\"\n"
                        "    locked: yes -> no\n"
                        "    scrambled: yes -> no\n"
                        "    flags: 6 -> 0\n"
                        "    provider id: 3 -> 0\n"
                        "    number in ALL: 12 -> 14\n"
                        "    number in favourites 1 \"Best\": 12 -> -\n");
}

TEST_F(Diff, TheJsonReportNamesFieldsAndViews) {
  channel_file file = sample_list();
  const json report = json_diff(file.set(list_field::vch + entry_field::major_ch_num, 2, 102));

  EXPECT_EQ(report["is_changed"], true);
  const json &changed = report["differences"]["changed"];
  ASSERT_EQ(changed.size(), 1U);
  EXPECT_EQ(changed[0]["name"], "News");
  EXPECT_EQ(changed[0]["service_id"], 1);
  EXPECT_EQ(changed[0]["fields"],
            json::array({json{{"field", "number"}, {"view", "ALL"}, {"before", 101}, {"after", 102}}}));
}

TEST_F(Diff, TellsSettingsGroupsNetworksAndTheOrderOfViews) {
  channel_file file;
  file.network(1, 1, "Hotbird").service(news).service(films);
  file.set_last(record_kind::service, service_field::provider_id, 2, 3);
  file.service(music).group(GROUP_PROVIDER, 0, "BBC").group(GROUP_PROVIDER, 3, "Viva").group(GROUP_GENRE, 1, "Sport");
  file.entry(VIEW_ALL, films, 12).entry(VIEW_ALL, news, 101).entry(VIEW_ALL, music, 13);
  file.entry(VIEW_TV, news, 101).entry(VIEW_TV, films, 12).entry(VIEW_RADIO, music, 1);
  file.entry(VIEW_FAVOURITE, films, 12, 1).entry(VIEW_USER, {.service_id = 99}, 4).set(list_field::bouquet_id, 2, 5);

  EXPECT_EQ(diff(file), "0 services added, 0 removed, 0 changed; 7 differences around the services\n"
                        "Around the services:\n"
                        "  network 1:1: name: \"Astra\" -> \"Hotbird\"\n"
                        "  ALL view: 1 service moved: \"Films\"\n"
                        "  USER view: entries without a service: - -> 4 1:1:100:11000000H:99\n"
                        "  genre 1 added: \"Sport\"\n"
                        "  favourite group 1 removed: \"Best\"\n"
                        "  provider 3: name: \"Sky\" -> \"Viva\"\n"
                        "  bouquet id: - -> 5\n");
}

TEST_F(Diff, OfManyServicesThatMovedFiveAreNamed) {
  const auto with_last_in_front = [](std::uint16_t moved) {
    channel_file file;
    for (std::uint16_t id = 1; id <= 20; ++id) {
      file.service({.service_id = id, .name = "S" + std::to_string(id)});
    }
    for (std::uint16_t place = 0; place < 20; ++place) {
      file.entry(VIEW_ALL, {.service_id = static_cast<std::uint16_t>((place + 20 - moved) % 20 + 1)}, 7);
    }
    return file;
  };
  write("list.dat", with_last_in_front(0));
  EXPECT_TRUE(has_line(diff(with_last_in_front(5)),
                       "  ALL view: 5 services moved: \"S16\", \"S17\", \"S18\", \"S19\", \"S20\""));
  EXPECT_TRUE(has_line(diff(with_last_in_front(6)),
                       "  ALL view: 6 services moved: \"S15\", \"S16\", \"S17\", \"S18\", \"S19\" and 1 more"));
  EXPECT_EQ(json_diff(with_last_in_front(1))["differences"]["others"][0]["fields"],
            json::array({json{{"field", "moved"}, {"before", json::array()}, {"after", json::array({"S20"})}}}));
}

TEST_F(Diff, AnEntryWithoutAServiceMovesToo) {
  const auto with_missing_at = [](std::size_t place, int missing) {
    channel_file file;
    file.service(news).service(films).service(music);
    const std::vector<service_data> row = {news, films, music};
    for (std::size_t i = 0; i <= row.size(); ++i) {
      for (int id = 0; id < missing && i == place; ++id) {
        file.entry(VIEW_ALL, {.service_id = static_cast<std::uint16_t>(98 + id)}, 4);
      }
      if (i < row.size()) {
        file.entry(VIEW_ALL, row[i], 7);
      }
    }
    return file;
  };
  write("list.dat", with_missing_at(0, 1));

  EXPECT_EQ(diff(with_missing_at(0, 1), 0), "no differences\n");
  EXPECT_TRUE(has_line(diff(with_missing_at(3, 1)),
                       "  ALL view: an entry without a service moved: \"4 1:1:100:11000000H:98\""));
  EXPECT_EQ(json_diff(with_missing_at(3, 1))["differences"]["others"][0]["fields"],
            json::array({json{{"field", "unresolved_moved"},
                              {"before", json::array()},
                              {"after", json::array({"4 1:1:100:11000000H:98"})}}}));

  EXPECT_NE(diff(with_missing_at(0, 7)).find("H:101, 4 1:1:100:11000000H:102 and 2 more\n"), std::string::npos)
      << diff(with_missing_at(0, 7));

  write("list.dat", with_missing_at(0, 2));
  EXPECT_TRUE(has_line(diff(with_missing_at(3, 2)),
                       "  ALL view: 2 entries without a service moved: \"4 1:1:100:11000000H:98\", "
                       "\"4 1:1:100:11000000H:99\""));
}

// The frequency of the service, and of its transponder, within the tolerance and just outside of it.
TEST_F(Diff, PairsServicesWithinTheTolerance) {
  const auto at = [](std::int64_t frequency) {
    service_data moved = music;
    moved.frequency = frequency;
    channel_file file;
    return file.service(moved);
  };
  write("list.dat", at(11'727'480));
  EXPECT_EQ(diff(at(11'729'979)), "0 services added, 0 removed, 1 changed; 1 difference around the services\n"
                                  "Changed:\n"
                                  "  \"Music, \\\"live\\\"\" (1:1:101:11729979V:5)\n"
                                  "    frequency: 11727480 -> 11729979\n"
                                  "Around the services:\n"
                                  "  transponder 1:1:101:11729979V: frequency: 11727480 -> 11729979\n");
  EXPECT_TRUE(diff(at(11'729'980)).starts_with("1 service added, 1 removed, 0 changed; 2 differences"));
}

TEST_F(Diff, AServiceThatOccursTwiceIsEqualToItself) {
  channel_file file = sample_list();
  file.service(music);
  write("list.dat", file);
  EXPECT_EQ(diff(file, 0), "no differences\n");
}

// A service whose own fields name another transponder is found by none of its fields.
TEST_F(Diff, AServiceInTheWrongPlaceIsEqualToItself) {
  channel_file file = sample_list();
  file.set_last(record_kind::service, service_field::frequency, 4, 5'000'000);
  write("list.dat", file);
  EXPECT_EQ(diff(file, 0), "no differences\n");
}

TEST_F(Diff, OneFileIsTheOther) { EXPECT_EQ(output_of({"diff", "list.dat", "list.dat"}), "no differences\n"); }

// Two satellites, numbered as they come up.
channel_file of_two_sources(const std::string &first, const std::string &second, const service_data &one,
                            const service_data &other) {
  service_data behind = other;
  behind.net_index = 2;
  return channel_file().network(1, 1, first).service(one).network(2, 1, second).service(behind);
}

TEST_F(Diff, SourcesThatAreNumberedOtherwiseArePairedByTheirNames) {
  service_data far = films;
  far.frequency = 12'500'000;
  write("old.dat", of_two_sources("S19.2E", "S13.0E", news, far));
  write("new.dat", of_two_sources("S13.0E", "S19.2E", far, news));

  const program_result result = run({"diff", "old.dat", "new.dat"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: diff: new.dat: network index 1 (\"S13.0E\") is 2 in the other list\n"
                        "chlist: diff: new.dat: network index 2 (\"S19.2E\") is 1 in the other list\n");
  EXPECT_EQ(result.out, "no differences but in the numbers of sources\n");
}

TEST_F(Diff, OfScansTellsWhatBecameOfTheServices) {
  service_data moved = films;
  moved.service_id = 77;
  service_data renamed = news;
  renamed.name = "News 24";
  write("old.dat", channel_file().service(news).service(films));
  write("new.dat", channel_file().service(renamed).service(moved).service(music));

  const json document = json_of({"diff", "--scan", "old.dat", "new.dat", "--json"}, 1);

  EXPECT_EQ(document["added"].size(), 1U);
  EXPECT_EQ(document["removed"].size(), 0U);
  EXPECT_EQ(document["moved"][0]["found_by"], "name");
  EXPECT_EQ(document["renamed"][0]["new_name"], "News 24");
  EXPECT_EQ(document["doubtful"].size(), 0U);
  const std::string text = output_of({"diff", "--scan", "old.dat", "new.dat"}, 1);
  EXPECT_TRUE(text.starts_with("1 service added, 0 gone, 1 moved, 1 renamed, 0 in doubt\nAdded:\n  \"Music")) << text;
  EXPECT_EQ(output_of({"diff", "--scan", "old.dat", "old.dat"}),
            "0 services added, 0 gone, 0 moved, 0 renamed, 0 in doubt\n");
}

TEST_F(Diff, RefusesBadFiles) {
  expect_bad_files_refused("diff", {"list.dat"});
  expect_refused({"diff", "list.dat", "missing.dat"}, "missing.dat: No such file or directory");
  write("new.dat", sample_list().set(list_field::version, 2, 8));
  expect_refused({"diff", "list.dat", "new.dat"}, "new.dat: is of version 8, not 10: `chlist convert` makes one of it");
}

}  // namespace
