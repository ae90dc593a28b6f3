// `chlist salvage` as it is run: what it writes, what it shows, and when it refuses.
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "support/cpu_time.h"
#include "support/full_list.h"
#include "support/resource_limits.h"
#include "tool/chlist_host.h"

namespace {

using namespace tool_test;

namespace fs = std::filesystem;

const service_data news = {.service_id = 1, .name = "News"};
const service_data films = {.service_id = 2, .name = "Films"};
const service_data music = {.service_id = 5, .service_type = SERVICE_TYPE_RADIO, .name = "Music"};

// Of whole_file(): behind one network, one transponder and two services.
constexpr std::size_t third_service = test_support::list_size + test_support::network_size +
                                      test_support::transponder_size + 2 * test_support::service_size;

bytes noise_of(std::size_t size) {
  std::mt19937_64 random(9);
  bytes noise(size, '\0');
  for (std::size_t i = 0; i + 8 <= noise.size(); i += 8) {
    test_support::put(noise, i, 8, random());
  }
  return noise;
}

class SalvageTool : public chlist_test {
 protected:
  static channel_file whole_file() {
    channel_file file;
    file.service(news).service(films).service(music).group(GROUP_FAV, 0, "Best");
    file.entry(VIEW_ALL, news, 101).entry(VIEW_ALL, films, 102).entry(VIEW_ALL, music, 103);
    file.entry(VIEW_FAVOURITE, music, 103, 0).entry(VIEW_FAVOURITE, news, 101, 1);
    return file;
  }

  static channel_file with_provider() {
    channel_file file = whole_file();
    file.group(GROUP_PROVIDER, 7, "Free").set_last(record_kind::service, service_field::provider_id, 2, 7);
    return file;
  }

  program_result salvage(const bytes &damaged, const std::vector<std::string> &options = {}) {
    write_file(path("damaged.dat"), damaged);
    return run({"salvage", path("damaged.dat"), "-o", path("out.dat")}, options);
  }
};

TEST_F(SalvageTool, AWholeFileIsWrittenAsItIs) {
  const program_result result = salvage(whole_file().data);

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(read_file(path("out.dat")), whole_file().data);
  EXPECT_EQ(
      lines_of(result.out),
      (std::vector<std::string>{
          path("out.dat") + ": 3 services on 1 transponder in 1 network, from 461720 bytes of version 10",
          "  entries: ALL                                 3", "  entries: favourites 1 \"Best\"                 2",
          "Nothing is missing, and nothing contradicts itself."}));
  EXPECT_EQ(result.err, "");
}

// A load clears the countries and selects the current view.
TEST_F(SalvageTool, CountriesAndSettingsStayAsTheyAre) {
  channel_file file = whole_file();
  file.set_last(test_support::record_kind::service, service_field::country_id, 2, 77)
      .set(list_field::use_group_list, 1, 2)
      .set(list_field::service_type, 1, 2)
      .set(list_field::net_index, 1, 3);

  EXPECT_EQ(salvage(file.data).exit_code, 0);

  EXPECT_EQ(read_file(path("out.dat")), file.data);
}

TEST_F(SalvageTool, WhatIsWrittenLoadsWithItsNumbersAndFavourites) {
  const program_result result = salvage(whole_file().data.substr(0, third_service + 100));

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(load_named("out.dat"), 10);
  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{1, 2}));
  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{101, 102}));
  EXPECT_EQ(service_ids(VIEW_FAVOURITE), (std::vector<int>{1}));
  EXPECT_EQ(list.favorite_vch[0][0].favorite_id, 1);
}

TEST_F(SalvageTool, WhatIsLostIsShownWithItsPlaces) {
  const program_result result = salvage(whole_file().data.substr(0, third_service + 100));

  EXPECT_EQ(
      lines_of(result.out),
      (std::vector<std::string>{
          path("out.dat") + ": 2 services on 1 transponder in 1 network, from 461508 bytes of version 10",
          "  entries: ALL                                 2", "  entries: favourites 1 \"Best\"                 1",
          "Counts claim 1 service more than came back", "Lost entries, their services did not come back:",
          "  the ALL view, position 3: number 103 (net 1, network 1, ts 100, 11000000 H, service 5)",
          "  the favourites 1 \"Best\" view, position 1: number 103 (net 1, network 1, ts 100, 11000000 H, service "
          "5)",
          "Lost bytes, which belong to no record:", "     461408  100 bytes"}));
}

TEST_F(SalvageTool, OfManyFindingsOfAKindTheFirstTenAreShownOrAll) {
  channel_file file = whole_file();
  for (int n = 0; n < 12; ++n) {
    file.entry(VIEW_USER, {.service_id = static_cast<std::uint16_t>(100 + n)}, n + 1);
  }
  const auto lost_entries = [](const std::string &text) {
    return std::ranges::count_if(lines_of(text),
                                 [](const std::string &line) { return line.starts_with("  the USER"); });
  };

  const program_result first = salvage(file.data);

  EXPECT_EQ(lost_entries(first.out), 10);
  EXPECT_TRUE(has_line(first.out, "        ...  and 2 more (--all)")) << first.out;
  EXPECT_EQ(lost_entries(salvage(file.data, {"--all"}).out), 12);
  EXPECT_EQ(json::parse(salvage(file.data, {"--json"}).out)["lost"]["lost_entries"].size(), 12U);
}

TEST_F(SalvageTool, JsonTellsTheSame) {
  const program_result result = salvage(whole_file().data.substr(0, third_service + 100), {"--json"});

  const json report = json::parse(result.out);
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(report["bytes"], third_service + 100);
  EXPECT_EQ(report["version"], 10);
  EXPECT_EQ(report["recovered"]["services"], 2);
  EXPECT_EQ(report["recovered"]["views"][0], (json{{"view", "ALL"}, {"count", 2}}));
  EXPECT_EQ(report["lost"]["counted_but_missing"], (json{{"networks", 0}, {"transponders", 0}, {"services", 1}}));
  EXPECT_EQ(report["conversion"], json());
  EXPECT_EQ(report["lost"]["bytes_of_no_record"], json::array({json{{"offset", third_service}, {"bytes", 100}}}));
  ASSERT_EQ(report["lost"]["lost_entries"].size(), 2U);
  EXPECT_EQ(report["lost"]["lost_entries"][0]["service_id"], 5);
  EXPECT_EQ(report["lost"]["lost_entries"][0]["number"], 103);
}

TEST_F(SalvageTool, WhatAConversionFoundIsShown) {
  channel_file file = whole_file();
  file.service(news).set(list_field::version, 2, 9).set(list_field::use_tuner, 1, 5);

  const program_result result = salvage(file.data);

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_TRUE(has_line(result.out, "Dropped, being there already: 1 service"));
  EXPECT_TRUE(has_line(result.out, "Not carried:"));
  EXPECT_EQ(json::parse(salvage(file.data, {"--json"}).out)["conversion"]["duplicate_services"].size(), 0U);
}

TEST_F(SalvageTool, AListThatIsThereTwiceIsShown) {
  const program_result result = salvage(whole_file().data + whole_file().data);

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(read_file(path("out.dat")), whole_file().data);
  EXPECT_TRUE(
      has_line(result.out, "Another list begins at offset 461720: its settings, groups and views are left out"));
  EXPECT_TRUE(has_line(result.out, "Dropped, being there already: 1 network, 1 transponder, 3 services"));
  EXPECT_EQ(result.out.find("Counts claim"), std::string::npos);
}

TEST_F(SalvageTool, WhatTheListsRecordLostIsShown) {
  bytes cut = whole_file().data;
  cut.erase(list_field::vch, 300'000);

  const program_result result = salvage(cut);

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(lines_of(result.out),
            (std::vector<std::string>{
                path("out.dat") + ": 3 services on 1 transponder in 1 network, from 161720 bytes of version 10",
                "  entries: ALL                                 3", "  entries: TV                                  2",
                "  entries: radio                               1", "The list's own record lacks its last 300000 bytes",
                "No view had an entry left: all services are numbered anew",
                "Favourite groups have no entry: whether they had some, nothing tells"}));
}

TEST_F(SalvageTool, WhatIsLostWithTheFirstSectorIsShown) {
  bytes damaged = with_provider().data;
  damaged.replace(0, 512, 512, '\0');

  const program_result result = salvage(damaged);

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_TRUE(has_line(result.out, "The version that the file names is not its own, 10"));
  EXPECT_TRUE(has_line(result.out, "The settings are lost"));
  EXPECT_TRUE(has_line(result.out, "  the table of provider records: 1 -> 0"));
  EXPECT_TRUE(has_line(result.out, "  provider 7: 1 service has it, and it is not there"));
  EXPECT_EQ(result.out.find("Everything"), std::string::npos);
}

TEST_F(SalvageTool, WhatAnotherCopyStillHasIsFoundThere) {
  bytes damaged = with_provider().data;
  damaged.replace(0, 512, 512, '\0');
  for (const std::string name : {"damaged.dat.bak", "like.dat"}) {
    fs::remove(path("damaged.dat.bak"));
    write_file(path(name), with_provider().data);

    const program_result result = name == "like.dat" ? salvage(damaged, {"--like", path(name)}) : salvage(damaged);

    EXPECT_EQ(result.exit_code, 1);
    EXPECT_TRUE(has_line(result.out, "Found again in other copies:"));
    EXPECT_TRUE(has_line(result.out, "  provider 7 \"Free\", in " + path(name)));
    EXPECT_TRUE(has_line(result.out, "  settings, in " + path(name)));
    EXPECT_EQ(read_file(path("out.dat")), with_provider().data);
    const json found = json::parse(salvage(damaged, {"--like", path(name), "--json"}).out)["found_again"];
    EXPECT_EQ(found[0], (json{{"what", "provider"}, {"group_id", 7}, {"name", "Free"}, {"source", path(name)}}));
  }
}

// A letter, a PID, the current view: of what stands in one place only nothing of the file tells.
TEST_F(SalvageTool, WhatStandsInOnePlaceOnlyIsComparedWithAnotherCopy) {
  write_file(path("like.dat"), whole_file().data);
  const std::size_t last = whole_file().records.back().offset;
  for (const std::size_t at : {last + service_field::name, last + service_field::audio_pid, list_field::bouquet_id}) {
    bytes damaged = whole_file().data;
    damaged[at] = static_cast<char>(damaged[at] ^ 2);

    EXPECT_EQ(salvage(damaged).exit_code, 0) << at;
    const program_result result = salvage(damaged, {"--like", path("like.dat")});

    EXPECT_EQ(result.exit_code, 1) << at;
    EXPECT_TRUE(has_line(result.out, "From " + path("like.dat") + " to what came back:")) << at;
  }
  const program_result same = salvage(whole_file().data, {"--like", path("like.dat")});
  EXPECT_EQ(same.exit_code, 0);
  EXPECT_TRUE(has_line(same.out, "Everything came back: " + path("like.dat") + " has the same."));
}

TEST_F(SalvageTool, ACopyThatIsNoChannelFileIsRefused) {
  write_file(path("like.dat"), "News;Provider:11306:H");

  const program_result result = salvage(whole_file().data, {"--like", path("like.dat")});

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: salvage: " + path("like.dat") +
                            ": is no channel file: there is nothing to be found again in it\n");
  EXPECT_FALSE(fs::exists(path("out.dat")));
}

TEST_F(SalvageTool, WithoutServicesItIsToldThatEntriesAloneAreLeft) {
  const program_result result = salvage(whole_file().data.substr(0, list_field::user_vch));

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(
      lines_of(result.out),
      (std::vector<std::string>{
          path("out.dat") + ": 0 services on 0 transponders in 0 networks, from 339364 bytes of version 10",
          "  entries: ALL                                 3", "  entries: favourites 1 \"Best\"                 2",
          "The list's own record lacks its last 120668 bytes",
          "No service is left: 5 entries are kept, without anything to tune to"}));
  EXPECT_EQ(load_named("out.dat"), 10);
  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{101, 102, 103}));
}

// Every fourth place of the file holds the identity of an entry, and scores.
TEST_F(SalvageTool, PeriodicNoiseTakesMemoryInProportionToTheFile) {
  if (!test_support::no_memory_of::is_possible()) {
    GTEST_SKIP() << "memory cannot be limited here";
  }
  channel_file file;
  const std::uint8_t pattern[] = {0x11, 0x22, 0x33, 0x44};
  for (std::size_t i = 0; i < 4; ++i) {
    const auto at = [&](std::size_t place) { return static_cast<std::uint32_t>(pattern[(i + place) % 4]); };
    service_data data;
    data.net_index = data.polarisation = static_cast<std::uint8_t>(at(0));
    data.frequency = at(0) | at(1) << 8U | at(2) << 16U | at(3) << 24U;
    data.network_id = static_cast<std::uint16_t>(at(0) | at(1) << 8U);
    data.ts_id = data.service_id = static_cast<std::uint16_t>(at(2) | at(3) << 8U);
    file.entry(VIEW_ALL, data, static_cast<int>(i) + 1);
  }
  while (file.data.size() < 10'000'000) {
    file.data.append(reinterpret_cast<const char *>(pattern), sizeof pattern);
  }
  write_file(path("damaged.dat"), file.data);

  const program_result result = run_program({"/bin/sh", "-c", "ulimit -v 120000 && exec \"$@\"", "sh", CHLIST_PROGRAM,
                                             "salvage", path("damaged.dat"), "-o", path("out.dat"), "--json"});

  ASSERT_EQ(result.exit_code, 1) << result.err;
  EXPECT_GT(json::parse(result.out)["repeated"]["services"].as_integer(), 30'000);
}

TEST_F(SalvageTool, ATerminalIsToldHowFarALongSearchHasCome) {
  const bytes block = noise_of(1'000'000);
  bytes noise;
  for (int i = 0; i < 100; ++i) {
    noise += block;
  }
  write_file(path("damaged.dat"), noise);
  tool_test::terminal terminal({CHLIST_PROGRAM, "salvage", path("damaged.dat"), "-o", path("out.dat")});

  EXPECT_NE(terminal.wait_for(" of 400000000 (").find("Bytes searched: "), std::string::npos);
}

TEST_F(SalvageTool, AFileWithoutServicesIsRefusedAndTheOutputStays) {
  write_file(path("out.dat"), "as it was");

  const program_result result = salvage(bytes(500'000, '\0'));

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "chlist: salvage: " + path("damaged.dat") +
                            ": nothing of a channel list is left in it: there is nothing to recover\n");
  EXPECT_EQ(read_file(path("out.dat")), "as it was");
}

TEST_F(SalvageTool, TheOutputIsNotTheInput) {
  write_file(path("damaged.dat"), whole_file().data);
  const std::string link = path("link.dat");
  fs::create_symlink(path("damaged.dat"), link);

  for (const std::string &output : {path("damaged.dat"), link}) {
    const program_result result = run({"salvage", path("damaged.dat"), "-o", output});

    EXPECT_EQ(result.exit_code, 2);
    EXPECT_EQ(result.err, "chlist: salvage: " + output + ": is the input itself\n");
  }
  EXPECT_EQ(run({"salvage", path("damaged.dat")}).exit_code, 2);
}

TEST_F(SalvageTool, WhatIsNoFileIsRefused) {
  const program_result result = run({"salvage", path("none"), "-o", path("out.dat")});

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: salvage: " + path("none") + ": No such file or directory\n");
  EXPECT_FALSE(fs::exists(path("out.dat")));
}

// The golden lists hold a value in every field and reserved byte.
TEST_F(SalvageTool, EarlierVersionsAreConverted) {
  for (const std::string version : {"7", "8", "9"}) {
    const std::string golden = std::string(CHANNEL_SAMPLES_DIR) + "/../tests/golden/channel_v" + version + ".dat";
    const program_result result = run({"salvage", golden, "-o", path("out.dat"), "--json"});

    ASSERT_LT(result.exit_code, 2) << result.err;
    const json report = json::parse(result.out);
    EXPECT_EQ(report["version"], std::stoi(version));
    reset_channel_list();
    EXPECT_EQ(load_named("out.dat"), 10);
  }
}

TEST_F(SalvageTool, AFullListWithATearInItComesBackWhole) {
  test_support::fill_everything();
  ASSERT_EQ(save_channel("full.dat"), 1);
  bytes torn = read_file(path("full.dat"));
  torn.insert(1'000'001, "xyz");

  const program_result result = salvage(torn, {"--json"});

  const json report = json::parse(result.out);
  EXPECT_EQ(result.exit_code, 1);
  EXPECT_GE(report["recovered"]["services"].as_integer(), 4999);
}

// Ten times the noise; a hundred times the time if every byte were compared with all others.
TEST_F(SalvageTool, NoiseTakesTimeInProportionToTheFile) {
  const auto time_of = [this](const bytes &noise) {
    const double begin = test_support::cpu_seconds_of_programs();
    EXPECT_EQ(salvage(noise).exit_code, 2);
    return test_support::cpu_seconds_of_programs() - begin;
  };
  const double of_one_megabyte = time_of(noise_of(1'000'000));

  EXPECT_LT(time_of(noise_of(10'000'000)), 30 * of_one_megabyte);
}

}  // namespace
