// `chlist merge` as it is run: a list and a new list in, what it writes loaded through the library, what it shows.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "support/channel_file.h"
#include "tool/program.h"

namespace {

namespace fs = std::filesystem;

using nlohmann::json;
using test_support::channel_file;
using test_support::majors;
using test_support::read_file;
using test_support::service_data;
using test_support::service_ids;
using test_support::write_file;
using tool_test::has_line;
using tool_test::lines_of;
using tool_test::program_result;
using tool_test::run_program;

const service_data news = {.service_id = 1, .name = "News"};
const service_data films = {.service_id = 2, .name = "Films"};
const service_data music = {.service_id = 5, .service_type = SERVICE_TYPE_RADIO, .name = "Music"};
const service_data data = {.service_id = 6, .service_type = 12, .name = "Data"};

// News and films with numbers of their own, films a favourite.
channel_file own_list() {
  channel_file file;
  file.service(news).service(films).group(GROUP_FAV, 0, "Best");
  file.entry(VIEW_ALL, news, 101).entry(VIEW_ALL, films, 102).entry(VIEW_TV, news, 101).entry(VIEW_TV, films, 102);
  file.entry(VIEW_FAVOURITE, films, 102);
  return file;
}

// As a channel search leaves it; its views do not matter.
channel_file scan_of(const std::vector<service_data> &services) {
  channel_file file;
  for (const service_data &service : services) {
    file.service(service);
  }
  return file;
}

class MergeTool : public test_support::file_test {
 protected:
  void SetUp() override {
    file_test::SetUp();
    write_list(own_list());
    write_scan(scan_of({news, music}));
  }

  void write_list(const channel_file &file) const { write_file(path("list.dat"), file.data); }
  void write_scan(const channel_file &file) const { write_file(path("scan.dat"), file.data); }

  program_result run(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {CHLIST_PROGRAM, "merge"});
    return run_program(arguments, dir.path());
  }

  program_result merge(const std::vector<std::string> &more = {}) const {
    std::vector<std::string> arguments = {"list.dat", "scan.dat", "-o", "out.dat"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return run(arguments);
  }

  json merged_json() const { return json::parse(merge({"--json"}).out); }

  void expect_refused(const std::vector<std::string> &arguments, const std::string &error) const {
    const std::vector<std::string> before = files();
    const program_result result = run(arguments);
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_EQ(result.err, "chlist: " + error + "\n");
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(files(), before);
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

TEST_F(MergeTool, AddsDeletesAndKeeps) {
  const program_result result = merge();

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.err, "");
  ASSERT_EQ(load_named("out.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{1, 5}));
  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{101, 5}));
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1}));
  EXPECT_EQ(service_ids(VIEW_RADIO), (std::vector<int>{5}));
  EXPECT_EQ(service_ids(VIEW_FAVOURITE), (std::vector<int>{}));
}

TEST_F(MergeTool, ShowsWhatIsAddedAndDeletedWithNumbersAndFavourites) {
  EXPECT_EQ(merge().out, "out.dat: 1 service added, 1 deleted, 1 kept\n"
                         "Added:\n"
                         "  net network    ts  frequency pol service type  entries: name\n"
                         "    1       1   100   11000000   H       5    2  ALL 5, radio 5: \"Music\"\n"
                         "Deleted, and with them 1 favourite:\n"
                         "  net network    ts  frequency pol service type  entries: name\n"
                         "    1       1   100   11000000   H       2    1  ALL 102, TV 102, favourites 0 \"Best\" 102: "
                         "\"Films\"\n");
}

TEST_F(MergeTool, TheJsonReportSaysTheSame) {
  const program_result result = merge({"--json"});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(json::parse(result.out), json::parse(R"({
      "list": "list.dat", "scan": "scan.dat", "output": "out.dat", "dry_run": false, "kept": 1,
      "added": [{"name": "Music", "net_index": 1, "network_id": 1, "ts_id": 100, "frequency": 11000000,
                 "polarisation": "H", "service_id": 5, "service_type": 2,
                 "entries": [{"view": "ALL", "number": 5}, {"view": "radio", "number": 5}]}],
      "deleted": [{"name": "Films", "net_index": 1, "network_id": 1, "ts_id": 100, "frequency": 11000000,
                   "polarisation": "H", "service_id": 2, "service_type": 1,
                   "entries": [{"view": "ALL", "number": 102}, {"view": "TV", "number": 102},
                               {"view": "favourites", "group": 0, "group_name": "Best", "number": 102}]}],
      "findings": {"dropped_entries": [], "duplicate_services": [], "full_views": [], "lost": []}})"));
}

TEST_F(MergeTool, ADryRunShowsTheSameAndWritesNothing) {
  const json merged = merged_json();
  fs::remove(path("out.dat"));

  const program_result result = run({"list.dat", "scan.dat", "--dry-run", "--json"});

  EXPECT_EQ(result.exit_code, 0);
  const json report = json::parse(result.out);
  EXPECT_EQ(report["dry_run"], true);
  EXPECT_EQ(report["output"], nullptr);
  EXPECT_EQ(report["added"], merged["added"]);
  EXPECT_EQ(report["deleted"], merged["deleted"]);
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "scan.dat"}));
}

TEST_F(MergeTool, ADryRunLeavesAnOutputAsItIs) {
  write_file(path("out.dat"), "before");

  const program_result result = merge({"--dry-run"});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_TRUE(has_line(result.out, "dry run: 1 service added, 1 deleted, 1 kept")) << result.out;
  EXPECT_EQ(read_file(path("out.dat")), "before");
}

TEST_F(MergeTool, TheSameListChangesNothing) {
  EXPECT_EQ(run({"list.dat", "list.dat", "-o", "out.dat"}).out, "out.dat: 0 services added, 0 deleted, 2 kept\n");

  ASSERT_EQ(load_named("out.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(majors(VIEW_TV), (std::vector<int>{101, 102}));
  EXPECT_EQ(majors(VIEW_FAVOURITE), (std::vector<int>{102}));
}

// Countries, settings and position keys are such as a load changes.
TEST_F(MergeTool, WhatStaysIsAsItWasByteByByte) {
  channel_file own = own_list();
  own.set_last(test_support::record_kind::service, 210, 2, 77).group(GROUP_COUNTRY, 77, "Elbonia");
  own.entry(VIEW_FAVOURITE, news, 101, 9).set(3, 1, VIEW_FAVOURITE).set(6, 1, GROUP_FAV).set(7, 1, VIEW_RADIO);
  own.set(8, 1, 3).set(10, 2, 7).set(80'100, 2, VIEW_FAVOURITE);
  write_list(own);

  EXPECT_EQ(run({"list.dat", "list.dat", "-o", "out.dat"}).exit_code, 0);

  EXPECT_TRUE(read_file(path("out.dat")) == own.data);
}

TEST_F(MergeTool, AnAddedServiceHasNoCountry) {
  channel_file scan = scan_of({news, films, music});
  scan.set_last(test_support::record_kind::service, 210, 2, 77);
  write_scan(scan);

  EXPECT_EQ(merge().exit_code, 0);

  const test_support::bytes merged = read_file(path("out.dat"));
  EXPECT_EQ(test_support::get(merged, merged.size() - test_support::service_size + 210, 2), 0U);
}

TEST_F(MergeTool, WhatCannotBeSavedAgainIsTold) {
  write_file(path("list.dat"), own_list().data + "tail");

  const program_result result = merge();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "list.dat: 4 bytes behind the last record: not saved\n");
  EXPECT_EQ(merged_json()["findings"]["lost"], json{"4 bytes behind the last record: not saved"});
}

TEST_F(MergeTool, TheInputsStayAsTheyAre) {
  EXPECT_EQ(merge().exit_code, 0);

  EXPECT_EQ(read_file(path("list.dat")), own_list().data);
  EXPECT_EQ(read_file(path("scan.dat")), scan_of({news, music}).data);
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "out.dat", "scan.dat"}));
}

TEST_F(MergeTool, TheOutputMayBeTheList) {
  EXPECT_EQ(run({"list.dat", "scan.dat", "-o", "list.dat"}).exit_code, 0);

  ASSERT_EQ(load_named("list.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{1, 5}));
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "scan.dat"}));
}

TEST_F(MergeTool, TheOutputIsNotTheNewList) {
  expect_refused({"list.dat", "scan.dat", "-o", "./scan.dat"}, "./scan.dat: is the input itself");
}

TEST_F(MergeTool, ANewListWithoutServicesDeletesAll) {
  write_scan(scan_of({}));

  const json report = merged_json();

  EXPECT_EQ(report["kept"], 0);
  EXPECT_EQ(report["deleted"].size(), 2U);
  ASSERT_EQ(load_named("out.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(list.vnumber, 0);
}

TEST_F(MergeTool, AListWithoutServicesTakesAll) {
  write_list(channel_file());

  const json report = merged_json();

  EXPECT_EQ(report["kept"], 0);
  EXPECT_EQ(report["added"].size(), 2U);
  EXPECT_EQ(report["deleted"].size(), 0U);
}

TEST_F(MergeTool, AServiceListedInNoViewIsNoFinding) {
  write_scan(scan_of({news, films, data}));

  const program_result result = merge();

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_TRUE(has_line(result.out, "    1       1   100   11000000   H       6   12  no entry: \"Data\""))
      << result.out;
}

TEST_F(MergeTool, AServiceThatOccursTwiceInTheNewListIsTakenOnce) {
  write_scan(scan_of({news, films, music, {.service_id = 5, .name = "Copy"}}));

  const program_result result = merge();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err,
            "scan.dat: taken once, occurs twice: \"Copy\" (net 1, network 1, ts 100, 11000000 H, service 5)\n");
  EXPECT_TRUE(has_line(result.out, "out.dat: 1 service added, 0 deleted, 2 kept")) << result.out;
  EXPECT_EQ(merged_json()["findings"]["duplicate_services"][0]["name"], "Copy");
}

TEST_F(MergeTool, AServiceThatOccursTwiceInTheListIsDeletedOnce) {
  channel_file file = own_list();
  file.service({.service_id = 1, .name = "Copy"});
  write_list(file);

  const json report = merged_json();

  EXPECT_EQ(report["kept"], 1);
  ASSERT_EQ(report["deleted"].size(), 2U);
  EXPECT_EQ(report["deleted"][1]["name"], "Copy");
}

TEST_F(MergeTool, AnEntryThatResolvedToNothingIsDroppedAndNamed) {
  channel_file file = own_list();
  file.entry(VIEW_USER, {.service_id = 9}, 77);
  write_list(file);

  const program_result result = merge();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "list.dat: dropped, resolves to no service: the USER view, position 0: number 77 "
                        "(net 1, network 1, ts 100, 11000000 H, service 9)\n");
  ASSERT_EQ(load_named("out.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(list.user_vnumber, 0);
}

// A list with a number of radio services, and the same services in a new list.
struct radio_list {
  channel_file file;
  std::vector<service_data> services;

  explicit radio_list(int size) {
    for (int id = 1; id <= size; ++id) {
      services.push_back({.service_id = static_cast<std::uint16_t>(id), .service_type = SERVICE_TYPE_RADIO});
      file.service(services.back()).entry(VIEW_ALL, services.back(), id).entry(VIEW_RADIO, services.back(), id);
    }
  }

  // One more service in the new list.
  [[nodiscard]] channel_file scan_with(const service_data &more) const {
    std::vector<service_data> all = services;
    all.push_back(more);
    return scan_of(all);
  }
};

const service_data one_more_radio = {.service_id = 3000, .service_type = SERVICE_TYPE_RADIO, .name = "More"};

TEST_F(MergeTool, AServiceWithoutAnEntryInAFullViewIsAFinding) {
  const radio_list full(MAX_RADIO_CHANNEL);
  write_list(full.file);
  write_scan(full.scan_with(one_more_radio));

  const program_result result = merge();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "scan.dat: the radio view is full: it holds 1000, 1 service added without an entry there\n");
  EXPECT_TRUE(has_line(result.out, "    1       1   100   11000000   H    3000    2  ALL 3000: \"More\""))
      << result.out;
  EXPECT_EQ(merged_json()["findings"]["full_views"],
            json::parse(R"([{"view": "radio", "capacity": 1000, "services_left_out": 1}])"));
}

TEST_F(MergeTool, TheLastEntryOfAViewIsNoFinding) {
  const radio_list nearly_full(MAX_RADIO_CHANNEL - 1);
  write_list(nearly_full.file);
  write_scan(nearly_full.scan_with(one_more_radio));

  EXPECT_EQ(merge().exit_code, 0);
}

TEST_F(MergeTool, AFullViewOfOtherServicesIsNoFinding) {
  const radio_list full(MAX_RADIO_CHANNEL);
  write_list(full.file);
  write_scan(full.scan_with({.service_id = 3000}));

  EXPECT_EQ(merge().exit_code, 0);
}

TEST_F(MergeTool, AFullViewWhoseServicesAllGoIsAFindingStill) {
  write_list(radio_list(MAX_RADIO_CHANNEL).file);
  write_scan(scan_of({one_more_radio}));

  EXPECT_EQ(merge().exit_code, 1);
}

TEST_F(MergeTool, AFullPromotionViewIsAFinding) {
  std::vector<service_data> promoted;
  for (std::uint16_t network = 1; network <= MAX_PROMO_CHANNEL + 1; ++network) {
    promoted.push_back({.network_id = network, .service_id = 200});
  }
  write_scan(scan_of(promoted));

  EXPECT_EQ(merged_json()["findings"]["full_views"],
            json::parse(R"([{"view": "promotion", "capacity": 10, "services_left_out": 1}])"));
}

TEST_F(MergeTool, OnlyTheCurrentVersionIsMerged) {
  channel_file other = own_list();
  for (const auto &[version, hint] : {std::pair{6, ""},
                                      {7, ": `chlist convert` makes one of it"},
                                      {9, ": `chlist convert` makes one of it"},
                                      {11, ""}}) {
    other.set(0, 2, static_cast<std::uint16_t>(version));
    write_file(path("other.dat"), other.data);
    const std::string error = "other.dat: is of version " + std::to_string(version) + ", not 10" + hint;

    expect_refused({"other.dat", "scan.dat", "-o", "out.dat"}, error);
    expect_refused({"list.dat", "other.dat", "-o", "out.dat"}, error);
  }
}

TEST_F(MergeTool, ShortFilesAreRefused) {
  for (const std::string name : {"list.dat", "scan.dat"}) {
    const std::string whole = read_file(path(name));

    write_file(path(name), whole.substr(0, whole.size() - 1));
    expect_refused({"list.dat", "scan.dat", "-o", "out.dat"},
                   name + ": ends too early for a channel file of its version");
    write_file(path(name), whole.substr(0, test_support::list_size - 1));
    expect_refused({"list.dat", "scan.dat", "-o", "out.dat"},
                   name + ": ends too early for a channel file of its version");
    write_file(path(name), whole.substr(0, 1));
    expect_refused({"list.dat", "scan.dat", "-o", "out.dat"}, name + ": too short for a channel file");

    write_file(path(name), whole);
  }
}

TEST_F(MergeTool, InputThatIsNoFileIsRefused) {
  fs::create_directory(path("folder"));

  expect_refused({"missing.dat", "scan.dat", "-o", "out.dat"}, "missing.dat: No such file or directory");
  expect_refused({"list.dat", "missing.dat", "-o", "out.dat"}, "missing.dat: No such file or directory");
  expect_refused({"folder", "scan.dat", "-o", "out.dat"}, "folder: not a regular file");
  expect_refused({"list.dat", "folder", "--dry-run"}, "folder: not a regular file");
  expect_refused({"list.dat", "/dev/full", "--dry-run"}, "/dev/full: not a regular file");
}

TEST_F(MergeTool, OutputThatCannotBeWrittenIsRefused) {
  fs::create_directory(path("folder"));

  expect_refused({"list.dat", "scan.dat", "-o", "/dev/full"}, "/dev/full: not a regular file");
  expect_refused({"list.dat", "scan.dat", "-o", path("folder")}, path("folder") + ": not a regular file");
  EXPECT_EQ(run({"list.dat", "scan.dat", "-o", "missing/out.dat"}).exit_code, 2);
}

TEST_F(MergeTool, AFailedWriteLeavesTheListAndNoOtherFile) {
  const program_result result = run_program(
      {"/bin/sh", "-c", "trap '' XFSZ; ulimit -f 100; exec " CHLIST_PROGRAM " merge list.dat scan.dat -o list.dat"},
      dir.path());

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: list.dat: the channel file could not be written\n");
  EXPECT_EQ(read_file(path("list.dat")), own_list().data);
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "scan.dat"}));
}

TEST_F(MergeTool, PathsMayBeLong) {
  const std::string deep = path(std::string(100, 'a') + "/" + std::string(100, 'b') + "/");
  fs::create_directories(deep);
  fs::rename(path("list.dat"), deep + "list.dat");
  fs::rename(path("scan.dat"), deep + "scan.dat");

  EXPECT_EQ(run({deep + "list.dat", deep + "scan.dat", "-o", "out.dat"}).exit_code, 0);

  ASSERT_EQ(load_named("out.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(list.vnumber, 2);
}

// The groups of a list are its own; a receiver fills empty tables when it loads the list.
TEST_F(MergeTool, SideFilesBesideTheListAreNotTakenIn) {
  write_file(path("genre.dat"), test_support::side_file(MAX_GENRE, 3, "genre"));

  EXPECT_EQ(merge().exit_code, 0);

  fs::remove(path("genre.dat"));
  ASSERT_EQ(load_named("out.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(list.genre_num, 0);
}

TEST_F(MergeTool, AReportThatCannotBeWrittenIsAFailure) {
  const program_result result = run_program(
      {"/bin/sh", "-c", "exec " CHLIST_PROGRAM " merge list.dat scan.dat --dry-run >/dev/full"}, dir.path());

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: standard output: No space left on device\n");
}

TEST_F(MergeTool, BadUsageIsRefused) {
  EXPECT_EQ(run({}).exit_code, 2);
  EXPECT_EQ(run({"list.dat", "-o", "out.dat"}).exit_code, 2);
  EXPECT_EQ(run({"list.dat", "scan.dat", "more", "-o", "out.dat"}).exit_code, 2);
  EXPECT_EQ(run({"list.dat", "scan.dat", "-o"}).exit_code, 2);
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "scan.dat"}));
}

TEST_F(MergeTool, WithoutOutputOnlyADryRunIsPossible) {
  const program_result result = run({"list.dat", "scan.dat"});

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(lines_of(result.err).front(), "--output (or --dry-run) is required");
}

TEST_F(MergeTool, HelpNamesTheExitCodesAndAnExample) {
  const program_result result = run({"--help"});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_TRUE(has_line(result.out, "  0  merged (or, with --dry-run, could be)")) << result.out;
  EXPECT_TRUE(has_line(result.out, "  chlist merge channels.dat scan.dat --dry-run")) << result.out;
}

TEST_F(MergeTool, TheLogLevelLetsTheLibrarySpeak) {
  const program_result result = run_program(
      {CHLIST_PROGRAM, "--log-level", "2", "merge", "list.dat", "scan.dat", "--dry-run", "--json"}, dir.path());

  EXPECT_NE(result.err.find("add_count 1 , delete_count 1"), std::string::npos) << result.err;
  EXPECT_TRUE(json::accept(result.out)) << result.out;
}

}  // namespace
