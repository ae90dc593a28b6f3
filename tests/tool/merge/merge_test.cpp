// `chlist merge` as it is run: what it writes, loaded through the library, and what it shows.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "chlist/json/json.h"
#include "tool/merge/merge_host.h"

namespace {

using namespace merge_test;

TEST_F(MergeTool, AddsDeletesAndKeeps) {
  const program_result result = merge();

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.err, "");
  ASSERT_EQ(load_named("out.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{1, 5}));
  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{101, 102}));
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1}));
  EXPECT_EQ(service_ids(VIEW_RADIO), (std::vector<int>{5}));
  EXPECT_EQ(service_ids(VIEW_FAVOURITE), (std::vector<int>{}));
}

TEST_F(MergeTool, ShowsWhatIsAddedAndDeletedWithNumbersAndFavourites) {
  EXPECT_EQ(merge().out, "out.dat: 1 service added, 1 deleted, 1 kept\n"
                         "Added:\n"
                         "net  network   ts  frequency  pol  service  type  name   entries\n"
                         "  1        1  100   11000000  H          5     2  Music  ALL 102, radio 102\n"
                         "Deleted, and with them 1 favourite:\n"
                         "net  network   ts  frequency  pol  service  type  name   entries\n"
                         "  1        1  100   11000000  H          2     1  Films  ALL 102, TV 102, favourites 1 "
                         "\"Best\" 102\n");
}

TEST_F(MergeTool, TheJsonReportSaysTheSame) {
  const program_result result = merge({"--json"});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(json::parse(result.out), json::parse(R"({
      "schema": 1, "file": "list.dat", "scan": "scan.dat", "output": "out.dat", "dry_run": false, "kept": 1,
      "added": [{"name": "Music", "net_index": 1, "network_id": 1, "ts_id": 100, "frequency": 11000000,
                 "polarisation": "H", "service_id": 5, "service_type": 2,
                 "entries": [{"view": "ALL", "number": 102}, {"view": "radio", "number": 102}]}],
      "removed": [{"name": "Films", "net_index": 1, "network_id": 1, "ts_id": 100, "frequency": 11000000,
                   "polarisation": "H", "service_id": 2, "service_type": 1,
                   "entries": [{"view": "ALL", "number": 102}, {"view": "TV", "number": 102},
                               {"view": "favourites", "group": 1, "group_name": "Best", "number": 102}]}],
      "missing": [], "moved": [], "renamed": [], "doubtful": [], "removed_transponders": [], "renumbered_sources": [],
      "dropped_entries": [], "duplicate_services": [], "full_views": [], "notes": []})"));
}

TEST_F(MergeTool, ADryRunShowsTheSameAndWritesNothing) {
  const json merged = merged_json();
  fs::remove(path("out.dat"));

  const program_result result = run({"merge", "list.dat", "scan.dat", "--dry-run", "--json"});

  EXPECT_EQ(result.exit_code, 0);
  const json report = json::parse(result.out);
  EXPECT_EQ(report["dry_run"], true);
  EXPECT_EQ(report["output"], nullptr);
  EXPECT_EQ(report["added"], merged["added"]);
  EXPECT_EQ(report["removed"], merged["removed"]);
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
  EXPECT_EQ(run({"merge", "list.dat", "list.dat", "-o", "out.dat"}).out,
            "out.dat: 0 services added, 0 deleted, 2 kept\n");

  ASSERT_EQ(load_named("out.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(majors(VIEW_TV), (std::vector<int>{101, 102}));
  EXPECT_EQ(majors(VIEW_FAVOURITE), (std::vector<int>{102}));
}

// Countries, settings and position keys are such as a load changes.
TEST_F(MergeTool, WhatStaysIsAsItWasByteByByte) {
  channel_file own = own_list();
  own.set_last(test_support::record_kind::service, service_field::country_id, 2, 77)
      .group(GROUP_COUNTRY, 77, "Elbonia");
  own.entry(VIEW_FAVOURITE, news, 101, 9)
      .set(list_field::ch_type, 1, VIEW_FAVOURITE)
      .set(list_field::use_group_list, 1, GROUP_FAV)
      .set(list_field::service_type, 1, VIEW_RADIO);
  own.set(list_field::net_index, 1, 3).set(list_field::sub_group_id, 2, 7).set(list_field::vch_type, 2, VIEW_FAVOURITE);
  write_list(own);

  EXPECT_EQ(run({"merge", "list.dat", "list.dat", "-o", "out.dat"}).exit_code, 0);

  EXPECT_TRUE(read_file(path("out.dat")) == own.data);
}

TEST_F(MergeTool, AnAddedServiceHasNoCountry) {
  channel_file scan = scan_of({news, films, music});
  scan.set_last(test_support::record_kind::service, service_field::country_id, 2, 77);
  write_scan(scan);

  EXPECT_EQ(merge().exit_code, 0);

  const test_support::bytes merged = read_file(path("out.dat"));
  EXPECT_EQ(test_support::get(merged, merged.size() - test_support::service_size + service_field::country_id, 2), 0U);
}

TEST_F(MergeTool, TheInputsStayAsTheyAre) {
  EXPECT_EQ(merge().exit_code, 0);

  EXPECT_EQ(read_file(path("list.dat")), own_list().data);
  EXPECT_EQ(read_file(path("scan.dat")), scan_of({news, music}).data);
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "out.dat", "scan.dat"}));
}

TEST_F(MergeTool, TheOutputMayBeTheList) {
  EXPECT_EQ(run({"merge", "list.dat", "scan.dat", "-o", "list.dat"}).exit_code, 0);

  ASSERT_EQ(load_named("list.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{1, 5}));
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "list.dat.bak", "list.dat.history", "scan.dat"}));
}

TEST_F(MergeTool, ANewListWithoutServicesDeletesAll) {
  write_scan(scan_of({}));

  const json report = merged_json({"--force"});

  EXPECT_EQ(report["kept"], 0);
  EXPECT_EQ(report["removed"].size(), 2U);
  ASSERT_EQ(load_named("out.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(list.vnumber, 0);
}

// The allocator gives added services the places in memory of those that went.
TEST_F(MergeTool, ServicesInThePlacesOfDeletedOnesAreAdded) {
  channel_file own;
  channel_file scan;
  for (std::uint16_t id = 1; id <= 20; ++id) {
    const service_data gone = {.service_id = id, .name = "Gone"};
    own.service(gone).entry(VIEW_ALL, gone, id).entry(VIEW_TV, gone, id);
    scan.service({.ts_id = 200, .frequency = 12'000'000, .service_id = static_cast<std::uint16_t>(100 + id)});
  }
  write_list(own);
  write_scan(scan);

  const json report = merged_json({"--force"});

  EXPECT_EQ(report["kept"], 0);
  EXPECT_EQ(report["added"].size(), 20U);
  EXPECT_EQ(report["removed"].size(), 20U);
}

TEST_F(MergeTool, AListWithoutServicesTakesAll) {
  write_list(channel_file());

  const json report = merged_json();

  EXPECT_EQ(report["kept"], 0);
  EXPECT_EQ(report["added"].size(), 2U);
  EXPECT_EQ(report["removed"].size(), 0U);
}

TEST_F(MergeTool, PathsMayBeLong) {
  const std::string deep = path(std::string(100, 'a') + "/" + std::string(100, 'b') + "/");
  fs::create_directories(deep);
  fs::rename(path("list.dat"), deep + "list.dat");
  fs::rename(path("scan.dat"), deep + "scan.dat");

  EXPECT_EQ(run({"merge", deep + "list.dat", deep + "scan.dat", "-o", "out.dat"}).exit_code, 0);

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

TEST_F(MergeTool, HelpNamesTheExitCodesAndAnExample) {
  const program_result result = run({"merge", "--help"});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_TRUE(has_line(result.out, "  0  merged (or, with --dry-run, could be)")) << result.out;
  EXPECT_TRUE(has_line(result.out, "  chlist merge channels.dat scan.dat --dry-run")) << result.out;
}

TEST_F(MergeTool, TheLogLevelLetsTheLibrarySpeak) {
  const program_result result = run_program(
      {CHLIST_PROGRAM, "--log-level", "2", "merge", "list.dat", "scan.dat", "--dry-run", "--json"}, dir.path());

  EXPECT_NE(result.err.find("add_count 0 , delete_count 1"), std::string::npos) << result.err;
  EXPECT_NO_THROW(static_cast<void>(json::parse(result.out))) << result.out;
}

}  // namespace
