// `chlist convert` as it is run: files of versions 7, 8 and 9 in, what it writes loaded through the library.
#include <channel/channel.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "support/old_channel_file.h"
#include "tool/program.h"

namespace {

namespace fs = std::filesystem;

using nlohmann::json;
using test_support::channel_file;
using test_support::in_version;
using test_support::majors;
using test_support::old_version_of;
using test_support::read_file;
using test_support::record_kind;
using test_support::service_data;
using test_support::service_ids;
using test_support::write_file;
using tool_test::has_line;
using tool_test::program_result;
using tool_test::run_program;

constexpr std::size_t ch_type_at = 3;
constexpr std::size_t bouquet_id_at = 4;
constexpr std::size_t tv_count_at = 296'116;

const service_data news = {.service_id = 1, .name = "News"};
const service_data music = {.service_id = 2, .service_type = SERVICE_TYPE_RADIO, .name = "Music"};

// Two services in three views and a favourite group, and nothing that version 10 has no place for.
channel_file plain_list() {
  channel_file file;
  file.service(news).service(music);
  file.entry(VIEW_ALL, news, 1).entry(VIEW_ALL, music, 2).entry(VIEW_TV, news, 1).entry(VIEW_RADIO, music, 2);
  file.group(GROUP_FAV, 0, "Films").entry(VIEW_FAVOURITE, news, 1);
  return file;
}

class Convert : public test_support::file_test {
 protected:
  // Writes a file of an earlier version, its contents given as today's.
  void write_old(int version, const channel_file &file) const {
    write_file(path("old.dat"), in_version(old_version_of(version), file).data);
  }

  program_result convert(int version, const channel_file &file, const std::vector<std::string> &more = {}) const {
    write_old(version, file);
    std::vector<std::string> arguments = {"old.dat", "new.dat"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return run(arguments);
  }

  program_result run(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {CHLIST_PROGRAM, "convert"});
    return run_program(arguments, dir.path());
  }

  json converted_json(int version, const channel_file &file) const {
    return json::parse(convert(version, file, {"--json"}).out);
  }

  void expect_refused(const std::vector<std::string> &arguments, const std::string &error) const {
    const program_result result = run(arguments);
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_EQ(result.err, "chlist: " + error + "\n");
    EXPECT_EQ(result.out, "");
    EXPECT_FALSE(fs::exists(path("new.dat")));
  }

  [[nodiscard]] std::vector<std::string> files() const {
    std::vector<std::string> names;
    for (const fs::directory_entry &entry : fs::directory_iterator(dir.path())) {
      names.push_back(entry.path().filename());
    }
    std::ranges::sort(names);
    return names;
  }
};

class ConvertVersion : public Convert, public ::testing::WithParamInterface<int> {};
INSTANTIATE_TEST_SUITE_P(Earlier, ConvertVersion, ::testing::Values(7, 8, 9));

TEST_P(ConvertVersion, GivesAListOfTodayWithServicesViewsAndGroups) {
  const program_result result = convert(GetParam(), plain_list());

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.err, "");
  ASSERT_EQ(load_named("new.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{1, 2}));
  EXPECT_EQ(majors(VIEW_TV), (std::vector<int>{1}));
  EXPECT_EQ(majors(VIEW_RADIO), (std::vector<int>{2}));
  EXPECT_EQ(service_ids(VIEW_FAVOURITE), (std::vector<int>{1}));
  EXPECT_STREQ(list.favorite_group[0].name, "Films");
  ASSERT_NE(list.vch[1].rch, nullptr);
  EXPECT_STREQ(list.vch[1].rch->name[0].text, "Music");
}

TEST_P(ConvertVersion, SaysWhatWasCarried) {
  const program_result result = convert(GetParam(), plain_list());

  const std::string version = std::to_string(GetParam());
  EXPECT_EQ(result.out, "new.dat: converted from version " + version +
                            ", 2 services\n"
                            "Carried:\n"
                            "  networks                                             1\n"
                            "  transponders                                         1\n"
                            "  services                                             2\n"
                            "  entries: ALL                                         2\n"
                            "  entries: TV                                          1\n"
                            "  entries: radio                                       1\n"
                            "  entries: favourites 0 \"Films\"                        1\n"
                            "  favourite groups                                     1\n");
}

TEST_P(ConvertVersion, IsReadFromTheFile) {
  const json report = converted_json(GetParam(), plain_list());

  EXPECT_EQ(report["version"], GetParam());
  EXPECT_EQ(report["carried"]["services"], 2);
}

TEST_P(ConvertVersion, LeavesTheInputAsItIs) {
  write_old(GetParam(), plain_list());
  const std::string before = read_file(path("old.dat"));

  EXPECT_EQ(run({"old.dat", "new.dat"}).exit_code, 0);

  EXPECT_EQ(read_file(path("old.dat")), before);
  EXPECT_EQ(files(), (std::vector<std::string>{"new.dat", "old.dat"}));
}

TEST_P(ConvertVersion, RefusesAFileThatIsOneByteShort) {
  write_old(GetParam(), plain_list());
  fs::resize_file(path("old.dat"), fs::file_size(path("old.dat")) - 1);

  expect_refused({"old.dat", "new.dat"},
                 "old.dat: ends too early for a channel file of version " + std::to_string(GetParam()));
}

TEST_P(ConvertVersion, DropsAndNamesAServiceThatOccursTwice) {
  channel_file file = plain_list();
  file.service({.service_id = 2, .name = "Copy"});

  const program_result result = convert(GetParam(), file);

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "old.dat: dropped, occurs twice: \"Copy\" (net 1, network 1, ts 100, 11000000 H, service 2)\n");
  EXPECT_TRUE(has_line(result.out, "  duplicate services                                   1")) << result.out;
  ASSERT_EQ(load_named("new.dat"), CHANNEL_LIST_VERSION);
  EXPECT_STREQ(list.vch[1].rch->name[0].text, "Music");
}

TEST_P(ConvertVersion, KeepsAndNamesAnEntryThatResolvesToNothing) {
  channel_file file = plain_list();
  file.entry(VIEW_USER, {.frequency = 12'000'000, .service_id = 9, .polarisation = 1}, 77);

  const program_result result = convert(GetParam(), file);

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "old.dat: resolves to no service: the USER view, position 0: number 77 "
                        "(net 1, network 1, ts 100, 12000000 V, service 9)\n");
  ASSERT_EQ(load_named("new.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(majors(VIEW_USER), (std::vector<int>{77}));
}

TEST_P(ConvertVersion, CountsOutsideTheirArraysAreFindings) {
  channel_file file = plain_list();
  constexpr std::uint16_t minus_one = 0xFFFF;
  file.set(tv_count_at, 2, minus_one).set(test_support::group_place(GROUP_GENRE).count, 2, MAX_GENRE + 1);

  const program_result result = convert(GetParam(), file);

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "old.dat: TV: counts -1, taken as 0\n"
                        "old.dat: genres: counts 51, taken as 50\n");
}

TEST_P(ConvertVersion, EmptyNetworksAndTranspondersAreNotCarried) {
  channel_file file = plain_list();
  file.transponder(200, 12'000'000, 1).network(2, 7, "Empty").transponder(300, 12'500'000, 0).network(3, 8, "Bare");

  const program_result result = convert(GetParam(), file);

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_TRUE(has_line(result.out, "  networks without services                            2")) << result.out;
  EXPECT_TRUE(has_line(result.out, "  transponders without services                        2")) << result.out;
  EXPECT_TRUE(has_line(result.out, "  transponders                                         1")) << result.out;
}

// What is lost in one list: the keys of the counts that are not 0.
std::vector<std::string> lost_in(const json &report) {
  std::vector<std::string> lost;
  for (const auto &[key, count] : report["not_carried"].items()) {
    if (count != 0) {
      lost.push_back(key);
    }
  }
  return lost;
}

TEST_P(ConvertVersion, SettingsWithoutAPlaceAreNotCarried) {
  channel_file file = plain_list();
  file.set(ch_type_at, 1, 10).set(bouquet_id_at, 2, 5);

  EXPECT_EQ(lost_in(converted_json(GetParam(), file)), (std::vector<std::string>{"bouquet_id", "ch_type"}));
}

TEST_P(ConvertVersion, PositionsOfFavouritesAreNotCarried) {
  channel_file file = plain_list();
  file.entry(VIEW_FAVOURITE, music, 2, 1);

  const json report = converted_json(GetParam(), file);

  EXPECT_EQ(lost_in(report), (std::vector<std::string>{"favourite_positions"}));
  EXPECT_EQ(report["not_carried"]["favourite_positions"], 1);
}

TEST_P(ConvertVersion, AProviderThatIsNotTheGenreIsNotCarried) {
  constexpr std::size_t genre_id_at = 212;
  constexpr std::size_t provider_id_at = 214;
  channel_file file = plain_list();
  file.set_last(record_kind::service, genre_id_at, 2, 3).set_last(record_kind::service, provider_id_at, 2, 5);

  const json report = converted_json(GetParam(), file);

  EXPECT_EQ(lost_in(report), (std::vector<std::string>{"provider_ids"}));
  ASSERT_EQ(load_named("new.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(list.vch[1].rch->provider_id, 3);
}

TEST_P(ConvertVersion, TagsAreThoseOfTheNetworkIndex) {
  constexpr std::size_t tag_at = 0;
  channel_file file = plain_list();
  file.set(test_support::view_place(VIEW_TV).array + tag_at, 1, 1);

  EXPECT_EQ(lost_in(converted_json(GetParam(), file)), (std::vector<std::string>{"entry_tags"}));
}

TEST_F(Convert, TheTunerIsCarriedFromVersionNineAlone) {
  constexpr std::size_t use_tuner_at = 2;
  channel_file file = plain_list();
  file.set(use_tuner_at, 1, 1);

  EXPECT_EQ(lost_in(converted_json(9, file)), (std::vector<std::string>{}));
  EXPECT_EQ(lost_in(converted_json(8, file)), (std::vector<std::string>{"use_tuner"}));
  EXPECT_EQ(lost_in(converted_json(7, file)), (std::vector<std::string>{"use_tuner"}));
}

TEST_F(Convert, UserOrderKeysOfVersionNineAreNotCarried) {
  constexpr std::size_t user_order_key_at = 298;
  channel_file file = plain_list();
  file.set_last(record_kind::service, user_order_key_at, 2, 4);

  EXPECT_EQ(lost_in(converted_json(9, file)), (std::vector<std::string>{"user_order_keys"}));
}

TEST_F(Convert, AnEmptyListIsConverted) {
  EXPECT_EQ(convert(7, channel_file()).exit_code, 0);

  ASSERT_EQ(load_named("new.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(list.network_num, 0);
}

TEST_F(Convert, TheJsonReportHasEveryCountAndFinding) {
  channel_file file = plain_list();
  file.service({.service_id = 2, .name = "Copy"}).entry(VIEW_USER, {.service_id = 9}, 77);
  file.entry(VIEW_FAVOURITE, {.service_id = 8}, 6).set(test_support::view_place(VIEW_RADIO).count, 2, 1001);

  const program_result result = convert(8, file, {"--json"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "");
  const json report = json::parse(result.out);
  EXPECT_EQ(report["input"], "old.dat");
  EXPECT_EQ(report["output"], "new.dat");
  EXPECT_EQ(report["carried"]["networks"], 1);
  EXPECT_EQ(report["carried"]["transponders"], 1);
  EXPECT_EQ(report["carried"]["views"].size(), 25U);
  EXPECT_EQ(report["carried"]["views"][0], json::parse(R"({"view": "ALL", "entries": 2})"));
  EXPECT_EQ(report["carried"]["views"][5],
            json::parse(R"({"view": "favourites", "group": 0, "group_name": "Films", "entries": 2})"));
  EXPECT_EQ(report["carried"]["groups"],
            json::parse(R"({"providers": 0, "genres": 0, "countries": 0, "favourite groups": 1})"));
  const json &findings = report["findings"];
  EXPECT_EQ(findings["duplicate_services"], json::parse(R"([{"name": "Copy", "net_index": 1, "network_id": 1,
      "ts_id": 100, "frequency": 11000000, "polarisation": "H", "service_id": 2}])"));
  EXPECT_EQ(findings["counts_outside_arrays"],
            json::parse(R"([{"array": "radio", "counted": 1001, "carried": 1000}])"));
  EXPECT_EQ(findings["unresolved_entries"].front()["view"], "radio");
  EXPECT_EQ(findings["unresolved_entries"].back(),
            json::parse(R"({"view": "favourites", "group": 0, "group_name": "Films", "position": 1, "number": 6,
      "net_index": 1, "network_id": 1, "ts_id": 100, "frequency": 11000000, "polarisation": "H", "service_id": 8})"));
}

TEST_F(Convert, NamesAreHarmlessOnATerminalAndInJson) {
  channel_file file = plain_list();
  file.service({.service_id = 2, .name = "\x1B[2J\xC2\x9B\x7F\xFF\xC3\xA9\""});

  EXPECT_EQ(convert(9, file).err, "old.dat: dropped, occurs twice: \"\\u001b[2J??\xEF\xBF\xBD\xC3\xA9\\\"\" "
                                  "(net 1, network 1, ts 100, 11000000 H, service 2)\n");
  EXPECT_EQ(converted_json(9, file)["findings"]["duplicate_services"][0]["name"],
            "\x1B[2J\xC2\x9B\x7F\xEF\xBF\xBD\xC3\xA9\"");
}

TEST_F(Convert, AFileOfTodayNeedsNoConversion) {
  write_file(path("old.dat"), plain_list().data);

  expect_refused({"old.dat", "new.dat"}, "old.dat: is of version 10 already: there is nothing to convert");
}

TEST_F(Convert, OtherVersionsAreUnknown) {
  for (const int version : {0, 6, 11, -1}) {
    channel_file file = plain_list();
    file.set(0, 2, static_cast<std::uint16_t>(version));
    write_file(path("old.dat"), file.data);

    expect_refused({"old.dat", "new.dat"},
                   "old.dat: is of version " + std::to_string(version) + ": only 7, 8 and 9 can be converted");
  }
}

TEST_F(Convert, AFileWithoutAWholeVersionIsRefused) {
  for (const char *contents : {"", "\x08"}) {
    write_file(path("old.dat"), contents);

    expect_refused({"old.dat", "new.dat"}, "old.dat: too short for a channel file");
  }
  write_file(path("old.dat"), std::string("\x08\0", 2));
  expect_refused({"old.dat", "new.dat"}, "old.dat: ends too early for a channel file of version 8");
}

TEST_F(Convert, InputThatIsNoFileIsRefused) {
  fs::create_directory(path("folder"));
  ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);

  expect_refused({"missing.dat", "new.dat"}, "missing.dat: No such file or directory");
  expect_refused({"folder", "new.dat"}, "folder: not a regular file");
  expect_refused({"pipe", "new.dat"}, "pipe: not a regular file");
  expect_refused({"/dev/full", "new.dat"}, "/dev/full: not a regular file");
}

TEST_F(Convert, OutputThatCannotBeWrittenIsRefused) {
  write_old(8, plain_list());
  fs::create_directory(path("folder"));

  expect_refused({"old.dat", "/dev/full"}, "/dev/full: not a regular file");
  expect_refused({"old.dat", path("folder")}, path("folder") + ": not a regular file");
  EXPECT_EQ(run({"old.dat", "missing/new.dat"}).exit_code, 2);
  EXPECT_EQ(files(), (std::vector<std::string>{"folder", "old.dat"}));
}

TEST_F(Convert, AFailedWriteLeavesTheOldOutputAndNoOther) {
  write_old(8, plain_list());
  write_file(path("new.dat"), "before");

  const program_result result = run_program(
      {"/bin/sh", "-c", "trap '' XFSZ; ulimit -f 100; exec " CHLIST_PROGRAM " convert old.dat new.dat"}, dir.path());

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: new.dat: the channel file could not be written\n");
  EXPECT_EQ(read_file(path("new.dat")), "before");
  EXPECT_EQ(files(), (std::vector<std::string>{"new.dat", "old.dat"}));
}

TEST_F(Convert, TheInputIsNotReplaced) {
  write_old(8, plain_list());
  fs::create_symlink("old.dat", path("link.dat"));
  const std::string before = read_file(path("old.dat"));

  expect_refused({"old.dat", "./old.dat"}, "./old.dat: is the input itself");
  expect_refused({"old.dat", "link.dat"}, "link.dat: is the input itself");
  EXPECT_EQ(read_file(path("old.dat")), before);
}

TEST_F(Convert, AnOldOutputIsReplaced) {
  write_file(path("new.dat"), "before");

  EXPECT_EQ(convert(7, plain_list()).exit_code, 0);

  EXPECT_EQ(load_named("new.dat"), CHANNEL_LIST_VERSION);
}

TEST_F(Convert, AnOutputThatNobodyMayWriteStays) {
  write_file(path("protected.dat"), "before");
  fs::permissions(path("protected.dat"), fs::perms(0444));
  write_old(8, plain_list());

  expect_refused({"old.dat", path("protected.dat")}, path("protected.dat") + ": is read-only");
  EXPECT_EQ(read_file(path("protected.dat")), "before");
}

TEST_F(Convert, PathsMayBeLong) {
  const std::string deep = path(std::string(100, 'a') + "/" + std::string(100, 'b'));
  fs::create_directories(deep);
  write_old(8, plain_list());
  fs::rename(path("old.dat"), deep + "/old.dat");

  EXPECT_EQ(run({deep + "/old.dat", deep + "/new.dat"}).exit_code, 0);

  fs::rename(deep + "/new.dat", path("new.dat"));
  EXPECT_EQ(load_named("new.dat"), CHANNEL_LIST_VERSION);
}

TEST_F(Convert, AReportThatCannotBeWrittenIsAFailure) {
  write_old(8, plain_list());

  for (const std::string more : {"", " --json"}) {
    const program_result result = run_program(
        {"/bin/sh", "-c", "exec " CHLIST_PROGRAM " convert old.dat new.dat" + more + " >/dev/full"}, dir.path());

    EXPECT_EQ(result.exit_code, 2);
    EXPECT_EQ(result.err, "chlist: standard output: No space left on device\n");
  }
  EXPECT_EQ(load_named("new.dat"), CHANNEL_LIST_VERSION);
}

TEST_F(Convert, BadUsageIsRefused) {
  write_old(8, plain_list());

  EXPECT_EQ(run({}).exit_code, 2);
  EXPECT_EQ(run({"old.dat"}).exit_code, 2);
  EXPECT_EQ(run({"old.dat", "new.dat", "more"}).exit_code, 2);
  EXPECT_EQ(run({"old.dat", "new.dat", "--unknown"}).exit_code, 2);
  EXPECT_FALSE(fs::exists(path("new.dat")));
}

TEST_F(Convert, HelpNamesTheExitCodesAndAnExample) {
  const program_result result = run({"--help"});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_TRUE(has_line(result.out, "  0  converted")) << result.out;
  EXPECT_TRUE(has_line(result.out, "  chlist convert backup/old.dat channels.dat")) << result.out;
}

}  // namespace
