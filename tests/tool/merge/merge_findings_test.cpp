// Findings of `chlist merge`: services that are there twice, entries that it drops, views that are full; and what looks
// like one and is none.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "chlist/json/json.h"
#include "tool/merge/merge_host.h"

namespace {

using namespace merge_test;

TEST_F(MergeTool, WhatCannotBeSavedAgainIsTold) {
  write_file(path("list.dat"), own_list().data + "tail");

  const program_result result = merge();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: merge: list.dat: 4 bytes behind the last record: not saved\n");
  EXPECT_EQ(merged_json()["notes"], json::array({"4 bytes behind the last record: not saved"}));
}

TEST_F(MergeTool, AServiceListedInNoViewIsNoFinding) {
  write_scan(scan_of({news, films, data}));

  const program_result result = merge();

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_TRUE(has_line(result.out, "  1        1  100   11000000  H          6    12  Data  no entry")) << result.out;
}

TEST_F(MergeTool, AServiceThatOccursTwiceInTheNewListIsTakenOnce) {
  write_scan(scan_of({news, films, music, {.service_id = 5, .name = "Copy"}}));

  const program_result result = merge();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: merge: scan.dat: taken once, occurs twice: \"Copy\" (net 1, network 1, ts 100, "
                        "11000000 H, service 5)\n");
  EXPECT_TRUE(has_line(result.out, "out.dat: 1 service added, 0 deleted, 2 kept")) << result.out;
  EXPECT_EQ(merged_json()["duplicate_services"][0]["name"], "Copy");
}

TEST_F(MergeTool, AServiceThatOccursTwiceInTheListIsDeletedOnce) {
  channel_file file = own_list();
  file.service({.service_id = 1, .name = "Copy"});
  write_list(file);

  const json report = merged_json();

  EXPECT_EQ(report["kept"], 1);
  ASSERT_EQ(report["removed"].size(), 2U);
  EXPECT_EQ(report["removed"][1]["name"], "Copy");
}

TEST_F(MergeTool, AnEntryThatResolvedToNothingIsDroppedAndNamed) {
  channel_file file = own_list();
  file.entry(VIEW_USER, {.service_id = 9}, 77);
  write_list(file);

  const program_result result = merge();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err,
            "chlist: merge: list.dat: dropped, resolves to no service: the USER view, position 1: number 77 "
            "(net 1, network 1, ts 100, 11000000 H, service 9)\n");
  ASSERT_EQ(load_named("out.dat"), CHANNEL_LIST_VERSION);
  EXPECT_EQ(list.user_vnumber, 0);
}

TEST_F(MergeTool, OfManyFindingsOfAKindTheFirstTenAreTold) {
  channel_file file = own_list();
  std::vector<service_data> scanned = {news, films, music};
  for (int i = 0; i < 12; ++i) {
    file.entry(VIEW_USER, {.service_id = 9}, 77 + i);
    scanned.push_back({.service_id = 5, .name = "Copy"});
  }
  write_list(file);
  write_scan(scan_of(scanned));

  const std::vector<std::string> first = lines_of(merge().err);
  ASSERT_EQ(first.size(), 22U);
  EXPECT_TRUE(first[9].starts_with("chlist: merge: list.dat: dropped, resolves to no service: the USER view,"));
  EXPECT_EQ(first[10], "chlist: merge: list.dat: and 2 more: dropped, resolves to no service (--all)");
  EXPECT_EQ(first[21], "chlist: merge: scan.dat: and 2 more: taken once, occurs twice (--all)");

  EXPECT_EQ(lines_of(merge({"--all"}).err).size(), 24U);
  EXPECT_EQ(merged_json()["dropped_entries"].size(), 12U);
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
  EXPECT_EQ(result.err,
            "chlist: merge: scan.dat: the radio view is full: it holds 1000, 1 service added without an entry there; "
            "`chlist remove` and `chlist keep` make room first\n");
  EXPECT_TRUE(has_line(result.out, "  1        1  100   11000000  H       3000     2  More  ALL 1001")) << result.out;
  EXPECT_EQ(merged_json()["full_views"],
            json::parse(R"([{"view": "radio", "capacity": 1000, "services_left_out": 1}])"));
}

TEST_F(MergeTool, AFullFavouriteGroupIsNoFindingSinceAMergeAddsNothingThere) {
  channel_file full;
  std::vector<service_data> scanned;
  for (std::uint16_t id = 1; id <= MAX_FAV_NUM; ++id) {
    scanned.push_back({.service_id = id});
    full.service(scanned.back()).entry(VIEW_ALL, scanned.back(), id).entry(VIEW_FAVOURITE, scanned.back(), id);
  }
  scanned.push_back({.service_id = 3000});
  write_list(full);
  write_scan(scan_of(scanned));

  EXPECT_EQ(merge().err, "");
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

TEST_F(MergeTool, AFullViewWhoseServicesAllGoHasRoom) {
  write_list(radio_list(MAX_RADIO_CHANNEL).file);
  write_scan(scan_of({one_more_radio}));

  EXPECT_EQ(merge({"--force"}).exit_code, 0);
}

TEST_F(MergeTool, AFullPromotionViewIsAFinding) {
  std::vector<service_data> promoted;
  for (std::uint16_t network = 1; network <= MAX_PROMO_CHANNEL + 1; ++network) {
    promoted.push_back({.network_id = network, .service_id = 200});
  }
  write_scan(scan_of(promoted));

  EXPECT_EQ(merged_json({"--force"})["full_views"],
            json::parse(R"([{"view": "promotion", "capacity": 10, "services_left_out": 1}])"));
}

}  // namespace
