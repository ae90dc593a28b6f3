// What a rescan changes and a user does not want to lose: sources that are numbered otherwise, services that moved, the
// names of groups, numbers.
#include <gtest/gtest.h>

#include <ctime>
#include <string>
#include <utility>
#include <vector>

#include "chlist/json/json.h"
#include "tool/merge/merge_host.h"

namespace {

using namespace merge_test;

constexpr std::uint32_t other_frequency = 12'000'000;

service_data at(service_data service, std::uint16_t ts_id, std::uint32_t frequency) {
  service.ts_id = ts_id;
  service.frequency = frequency;
  return service;
}

service_data in_network(service_data service, int net_index, int network_id = 1) {
  service.net_index = static_cast<std::uint8_t>(net_index);
  service.network_id = static_cast<std::uint16_t>(network_id);
  return service;
}

class Rescan : public MergeTool {
 protected:
  void set(const channel_file &own, const channel_file &scan) const {
    write_list(own);
    write_scan(scan);
  }

  static std::vector<std::string> names_in(const json &services) {
    std::vector<std::string> names;
    for (const json &service : services.elements()) {
      names.push_back(service["name"].as_string());
    }
    return names;
  }

  static channel_file with_provider(channel_file file, std::int16_t id) {
    return file.set_last(test_support::record_kind::service, service_field::provider_id, 2,
                         static_cast<std::uint64_t>(id));
  }

  void load_merged() {
    reset_channel_list();
    ASSERT_EQ(load_named("out.dat"), CHANNEL_LIST_VERSION);
  }

  [[nodiscard]] json provider_of(const std::string &service) const {
    return json::parse(run({"show", "out.dat", service, "--json"}).out)["service"]["provider"];
  }
};

using names = std::vector<std::string>;

TEST_F(Rescan, AddedServicesAreInTheGroupsOfTheirNames) {
  channel_file own = own_list().group(GROUP_PROVIDER, 0, "Arbor").group(GROUP_PROVIDER, 1, "Meridian");
  channel_file scan;
  scan.group(GROUP_PROVIDER, 0, "Meridian").group(GROUP_PROVIDER, 1, "Quayside").service(news).service(films);
  with_provider(scan.service(music), 0);
  scan = with_provider(scan, 0);
  scan = with_provider(scan.service(data), 1);
  set(own, scan);

  EXPECT_EQ(merge().exit_code, 0);

  EXPECT_EQ(provider_of("Music"), "Meridian");
  EXPECT_EQ(provider_of("Data"), "Quayside");
}

TEST_F(Rescan, GroupsThatTheListHasNoRoomForAreTold) {
  channel_file own = own_list();
  for (int id = 0; id < MAX_PROVIDER; ++id) {
    own.group(GROUP_PROVIDER, id, "Provider " + std::to_string(id));
  }
  channel_file scan;
  scan.group(GROUP_PROVIDER, 0, "One more").service(news).service(films);
  set(own, with_provider(scan.service(music), 0));

  const program_result result = merge();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: merge: scan.dat: the list of providers is full: it holds 500, 1 more are left out\n");
}

TEST_F(Rescan, SourcesInAnotherOrderArePairedByTheirNames) {
  channel_file own;
  own.network(1, 1, "S19.2E").service(news).network(2, 1, "S13.0E").service(in_network(films, 2));
  own.entry(VIEW_ALL, news, 101).entry(VIEW_ALL, in_network(films, 2), 102);
  channel_file scan;
  scan.network(1, 1, "Hotbird 13\u00B0E")
      .service(films)
      .network(2, 1, "Astra 19.2\u00B0E")
      .service(in_network(news, 2));
  set(own, scan);

  const program_result result = merge();

  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_TRUE(has_line(result.out, "out.dat: 0 services added, 0 deleted, 2 kept")) << result.out;
  EXPECT_TRUE(has_line(result.out, "Network index 1 (\"Hotbird 13\u00B0E\") is 2 in the other list")) << result.out;
  load_merged();
  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{101, 102}));
}

TEST_F(Rescan, ASourceThatTheListLacksGetsAFreeIndex) {
  channel_file own;
  own.network(1, 1, "S19.2E").service(news).entry(VIEW_ALL, news, 101);
  channel_file scan;
  scan.network(1, 1, "S13.0E").service(films).network(2, 1, "S19.2E").service(in_network(news, 2));
  set(own, scan);

  const json report = merged_json();

  EXPECT_EQ(report["kept"], 1);
  EXPECT_EQ(report["added"][0]["net_index"], 2);
}

TEST_F(Rescan, ASourceWithAnotherNameIsPairedByItsIndexAndTold) {
  channel_file own;
  own.network(1, 1, "Home").service(news).entry(VIEW_ALL, news, 101);
  channel_file scan;
  scan.network(1, 1, "Cable").service(news);
  set(own, scan);

  const program_result result = merge();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: merge: scan.dat: network index 1 has another name: \"Cable\"\n");
  EXPECT_TRUE(has_line(result.out, "out.dat: 0 services added, 0 deleted, 1 kept")) << result.out;
}

TEST_F(Rescan, AScanThatKeepsNothingIsRefusedUnlessItIsForced) {
  write_scan(scan_of({data}));

  const program_result refused = merge();

  EXPECT_EQ(refused.exit_code, 2);
  EXPECT_EQ(refused.err,
            "chlist: merge: the new list has none of 2 services: nothing would stay; --force merges it nevertheless\n");
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "scan.dat"}));
  EXPECT_EQ(merge({"--force"}).exit_code, 0);
}

// A user's number, lock, name and favourite.
TEST_F(Rescan, AServiceThatMovedKeepsWhatTheUserMadeOfIt) {
  service_data mine = films;
  mine.name = "films";
  mine.flag = CHANNEL_FLAG_LOCKED;
  channel_file own;
  own.service(news).service(mine).group(GROUP_FAV, 0, "Best");
  own.entry(VIEW_ALL, news, 101).entry(VIEW_ALL, mine, 102).entry(VIEW_TV, news, 101).entry(VIEW_TV, mine, 102);
  own.entry(VIEW_FAVOURITE, mine, 102);
  channel_file scan = scan_of({news});
  scan.service(at(films, 200, other_frequency))
      .set_last(test_support::record_kind::service, service_field::video_pid, 2, 777);
  set(own, scan);

  const program_result result = merge();

  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_TRUE(has_line(result.out, "out.dat: 0 services added, 0 deleted, 2 kept, 1 of them moved")) << result.out;
  EXPECT_TRUE(has_line(result.out,
                       "  \"films\" (net 1, network 1, ts 100, 11000000 H, service 2) -> \"films\" (net 1, network 1, "
                       "ts 200, 12000000 H, service 2), found by name: ALL 102, TV 102, favourites 1 \"Best\" 102"))
      << result.out;
  EXPECT_TRUE(has_line(result.out,
                       "  \"films\" (net 1, network 1, ts 100, 11000000 H, service 2) -> \"Films\": ALL 102, TV 102, "
                       "favourites 1 \"Best\" 102"))
      << result.out;
  load_merged();
  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{101, 102}));
  EXPECT_EQ(majors(VIEW_FAVOURITE), (std::vector<int>{102}));
  const channel_st &moved = *list.favorite_vch[0][0].rch;
  EXPECT_EQ(moved.ts_id, 200);
  EXPECT_EQ(moved.frequency, other_frequency);
  EXPECT_EQ(moved.flag, CHANNEL_FLAG_LOCKED);
  EXPECT_EQ(moved.video_pid, 777);
  EXPECT_STREQ(moved.name[0].text, "films");
}

TEST_F(Rescan, AServiceUnderOtherIdsIsFoundByItsNameAndType) {
  service_data renumbered = films;
  renumbered.service_id = 77;
  renumbered.name = "FILMS";
  write_scan(scan_of({news, renumbered}));

  const json report = merged_json();

  EXPECT_EQ(report["kept"], 2);
  EXPECT_EQ(report["moved"][0]["found_by"], "name");
  EXPECT_EQ(report["moved"][0]["before"]["service_id"], 2);
  EXPECT_EQ(report["moved"][0]["service_id"], 77);
  EXPECT_EQ(report["renamed"][0]["new_name"], "FILMS");
}

TEST_F(Rescan, ANameOfAnotherTypeIsAnotherService) {
  service_data radio = films;
  radio.service_id = 77;
  radio.service_type = SERVICE_TYPE_RADIO;
  write_scan(scan_of({news, radio}));

  EXPECT_EQ(names_in(merged_json()["removed"]), names{"Films"});
}

TEST_F(Rescan, ANamelessServiceIsNotFoundByItsName) {
  service_data nameless = films;
  nameless.name = "";
  channel_file own;
  own.service(news).service(nameless).entry(VIEW_ALL, news, 1).entry(VIEW_ALL, nameless, 2);
  nameless.service_id = 77;
  set(own, scan_of({news, nameless}));

  EXPECT_EQ(merged_json()["moved"].size(), 0U);
}

TEST_F(Rescan, WhatCouldBeSeveralServicesIsInDoubtAndNotGuessed) {
  service_data one = films;
  one.service_id = 77;
  service_data other = films;
  other.service_id = 78;
  write_scan(scan_of({news, one, other}));

  const program_result result = merge();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err,
            "chlist: merge: scan.dat: in doubt: \"Films\" (net 1, network 1, ts 100, 11000000 H, service 2) "
            "may have become \"Films\" (net 1, network 1, ts 100, 11000000 H, service 77), or one of 1 "
            "other; it stays: ALL 102, TV 102, favourites 1 \"Best\" 102\n");
  EXPECT_TRUE(has_line(result.out, "out.dat: 2 services added, 0 deleted, 2 kept, 1 of them missing in the new list"))
      << result.out;
  EXPECT_TRUE(has_line(merge({"--force"}).out, "out.dat: 2 services added, 1 deleted, 1 kept"));
}

TEST_F(Rescan, IdsOnAnotherTransponderAreTheServiceUnderAnotherName) {
  service_data other = at(films, 200, other_frequency);
  other.name = "Films HD";
  write_scan(scan_of({news, other}));

  const json report = merged_json();

  EXPECT_EQ(report["moved"][0]["found_by"], "ids");
  EXPECT_EQ(report["renamed"][0]["new_name"], "Films HD");
  EXPECT_EQ(report["renamed"][0]["entries"].size(), 3U);
  EXPECT_EQ(report["removed"].size(), 0U);
}

// Names tell which service it is when the ids were given anew.
TEST_F(Rescan, ServicesMayChangeTheirIds) {
  service_data one = news;
  service_data other = films;
  std::swap(one.service_id, other.service_id);
  write_scan(scan_of({one, other}));

  const json report = merged_json();

  EXPECT_EQ(report["moved"].size(), 2U);
  EXPECT_EQ(report["renamed"].size(), 0U);
  load_merged();
  EXPECT_STREQ(list.favorite_vch[0][0].rch->name[0].text, "Films");
  EXPECT_EQ(list.favorite_vch[0][0].rch->service_id, 1);
  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{101, 102}));
}

// Another one is still called as it was: what has its ids has not moved for that.
TEST_F(Rescan, OneOfTwoServicesOfANameMayBeRenamed) {
  service_data twin = films;
  twin.service_id = 3;
  channel_file own = own_list();
  write_list(own.service(twin).entry(VIEW_ALL, twin, 103));
  service_data renamed = films;
  renamed.name = "Films Extra";
  write_scan(scan_of({news, renamed, twin}));

  const json report = merged_json();

  EXPECT_EQ(report["moved"].size(), 0U);
  EXPECT_EQ(names_in(report["renamed"]), names{"Films"});
  EXPECT_EQ(report["kept"], 3);
}

TEST_F(Rescan, AServiceMayTakeTheIdsOfOneThatGoes) {
  service_data shifted = films;
  shifted.service_id = news.service_id;
  write_scan(scan_of({shifted}));

  const json report = merged_json();

  EXPECT_EQ(names_in(report["moved"]), names{"Films"});
  EXPECT_EQ(names_in(report["removed"]), names{"News"});
  EXPECT_EQ(report["removed"][0]["service_id"], news.service_id);
  load_merged();
  EXPECT_EQ(majors(VIEW_ALL), std::vector<int>{102});
  EXPECT_EQ(majors(VIEW_FAVOURITE), std::vector<int>{102});
}

// The new place of one service is within the tolerance of another that stays.
TEST_F(Rescan, AServiceThatStaysIsNotMovedOutOfTheWay) {
  const service_data stays = at({.service_id = 4, .name = "B"}, 4, 11'006'000);
  const service_data moves = at({.service_id = 4, .name = "A"}, 2, 11'003'000);
  channel_file own;
  own.service(stays).service(moves).entry(VIEW_ALL, stays, 1).entry(VIEW_ALL, moves, 2);
  set(own, scan_of({at(stays, 4, 11'008'000), at(moves, 2, 11'005'000)}));

  const json report = merged_json();

  EXPECT_EQ(report["removed"].size(), 0U);
  load_merged();
  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{1, 2}));
  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{4, 4}));
}

TEST_F(Rescan, WhatGoesMakesRoomForWhatComes) {
  channel_file own;
  channel_file scan;
  for (std::uint16_t id = 0; id < MAX_RADIO_CHANNEL; ++id) {
    const service_data gone = {.service_id = static_cast<std::uint16_t>(1000 + id),
                               .service_type = SERVICE_TYPE_RADIO,
                               .name = "Old " + std::to_string(id)};
    own.service(gone).entry(VIEW_ALL, gone, id + 1).entry(VIEW_RADIO, gone, id + 1);
    scan.service({.service_id = static_cast<std::uint16_t>(3000 + id),
                  .service_type = SERVICE_TYPE_RADIO,
                  .name = "New " + std::to_string(id)});
  }
  set(own.service(news).entry(VIEW_ALL, news, 4000), scan.service(news));

  EXPECT_EQ(merge().exit_code, 0);

  load_merged();
  EXPECT_EQ(list.radio_vnumber, MAX_RADIO_CHANNEL);
  EXPECT_EQ(list.vnumber, MAX_RADIO_CHANNEL + 1);
}

TEST_F(Rescan, ASourceOfWhichTheScanHasNothingIsTold) {
  const service_data far = in_network(films, 2, 5);
  channel_file own;
  own.network(1, 1, "S19.2E").service(news).network(2, 5, "S13.0E").service(far);
  own.entry(VIEW_ALL, news, 101).entry(VIEW_ALL, far, 102);
  channel_file scan;
  scan.network(1, 1, "S19.2E").service(news);
  set(own, scan);

  const program_result result = merge();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: merge: scan.dat: has no service of network index 2 of the list: 1 go; "
                        "--keep-missing keeps them\n");
}

TEST_F(Rescan, ASourceIsKnownByTheNamesOfAllItsNetworks) {
  channel_file own;
  own.network(1, 1, "ASTRA").service(news).network(1, 133, "SKY").service(in_network(music, 1, 133));
  own.network(2, 7, "HOTBIRD").service(in_network(films, 2, 7));
  channel_file scan;
  scan.network(1, 7, "HOTBIRD").service(in_network(films, 1, 7)).network(2, 133, "SKY");
  scan.service(in_network(music, 2, 133)).network(2, 1, "ASTRA").service(in_network(news, 2));
  set(own, scan);

  EXPECT_EQ(merged_json()["kept"], 3);
}

TEST_F(Rescan, SourcesAtOnePositionAreToldApartByTheirNames) {
  channel_file own;
  own.network(1, 1, "Dish A 19.2E").service(news).network(2, 1, "Dish B 19.2E").service(in_network(films, 2));
  channel_file scan;
  scan.network(1, 1, "Dish B 19.2E").service(films).network(2, 1, "Dish A 19.2E").service(in_network(news, 2));
  set(own, scan);

  EXPECT_EQ(merged_json()["kept"], 2);
}

TEST_F(Rescan, NamelessSourcesArePairedByTheirNetworkIds) {
  channel_file own;
  own.network(1, 1, "").service(news).network(2, 5, "").service(in_network(films, 2, 5));
  channel_file scan;
  scan.network(1, 5, "").service(in_network(films, 1, 5)).network(2, 1, "").service(in_network(news, 2));
  set(own, scan);

  EXPECT_EQ(merged_json()["kept"], 2);
}

TEST_F(Rescan, AForeignSatelliteIsNoneOfTheLists) {
  channel_file own;
  own.network(1, 1, "Astra").service(news).network(2, 5, "Hotbird").service(in_network(films, 2, 5));
  channel_file scan;
  scan.network(1, 9, "Turksat").service(in_network(music, 1, 9)).network(2, 5, "Hotbird");
  scan.service(in_network(films, 2, 5));
  set(own, scan);

  const json report = merged_json({"--keep-missing"});

  EXPECT_EQ(report["added"][0]["net_index"], 3);
  EXPECT_EQ(names_in(report["missing"]), names{"News"});
}

TEST_F(Rescan, PositionsAreReadInEverySpelling) {
  for (const char *name : {"S19.2E", "Astra 19.2E", "19,2E", "19.2 East", "19.2\u00B0 e", "Astra 19.2\u00B0Ost"}) {
    channel_file own;
    own.network(1, 1, "S19.2E").service(news).network(2, 1, "S13.0E").service(in_network(films, 2));
    channel_file scan;
    scan.network(1, 1, "Hotbird").service(films).network(2, 1, name).service(in_network(news, 2));
    set(own, scan);

    EXPECT_EQ(merged_json()["kept"], 2) << name;
  }
}

TEST_F(Rescan, WhatTheOutputWasIsKeptUnlessNothingIsWanted) {
  const test_support::bytes own = own_list().data;
  EXPECT_EQ(run({"merge", "list.dat", "scan.dat", "-o", "list.dat"}).exit_code, 0);
  EXPECT_EQ(read_file(path("list.dat.bak")), own);

  fs::remove(path("list.dat.bak"));
  fs::remove(path("list.dat.history"));
  write_list(own_list());
  EXPECT_EQ(run({"merge", "list.dat", "scan.dat", "-o", "list.dat", "--no-backup"}).exit_code, 0);
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "scan.dat"}));
}

// Many services of one name and one service id, which a scan has elsewhere.
TEST_F(Rescan, ThousandsInDoubtTakeLittleTime) {
  channel_file own;
  channel_file scan;
  for (std::uint16_t n = 0; n < 2000; ++n) {
    const service_data regional = at({.service_id = 7, .name = "Regional"}, n, 10'700'000U + 5'000U * n);
    own.service(regional);
    scan.service(at(regional, static_cast<std::uint16_t>(n + 3000), 30'700'000U + 5'000U * n));
  }
  set(own.service(news), scan.service(news));
  const std::clock_t begin = std::clock();

  const json report = json::parse(run({"diff", "--scan", "list.dat", "scan.dat", "--json"}).out);

  EXPECT_EQ(report["doubtful"].size(), 2000U);
  EXPECT_EQ(report["doubtful"][0]["count"], 2000);
  EXPECT_EQ(report["doubtful"][0]["candidates"].size(), 10U);
  EXPECT_LT(std::clock() - begin, 5 * CLOCKS_PER_SEC);
}

TEST_F(Rescan, TwoServicesMayChangePlaces) {
  const service_data far = at(films, 200, other_frequency);
  channel_file own;
  own.service(news).service(far).entry(VIEW_ALL, news, 1).entry(VIEW_ALL, far, 2);
  set(own, scan_of({at(news, 200, other_frequency), films}));

  const json report = merged_json();

  EXPECT_EQ(report["moved"].size(), 2U);
  EXPECT_EQ(report["removed"].size(), 0U);
  load_merged();
  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{1, 2}));
}

TEST_F(Rescan, MissingServicesMayStay) {
  const program_result result = merge({"--keep-missing"});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_TRUE(has_line(result.out, "out.dat: 1 service added, 0 deleted, 2 kept, 1 of them missing in the new list"))
      << result.out;
  load_merged();
  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{1, 2, 5}));
  EXPECT_EQ(service_ids(VIEW_FAVOURITE), (std::vector<int>{2}));
  EXPECT_EQ(names_in(merged_json()["missing"]), names{});
}

TEST_F(Rescan, NewNumbersAreBehindTheOthersOrFromOneOnOrTheServiceIds) {
  const struct {
    const char *how;
    std::vector<int> numbers;
  } cases[] = {{"next", {101, 102, 103}},
               {"1", {101, 102, 1}},
               {"from 101", {101, 102, 103}},
               {"32767", {101, 102, 32767}},
               {"service-id", {101, 102, 5}}};
  write_scan(scan_of({news, films, music}));
  for (const auto &each : cases) {
    EXPECT_EQ(merge({"--new-numbers", each.how}).exit_code, 0) << each.how;
    load_merged();
    EXPECT_EQ(majors(VIEW_ALL), each.numbers) << each.how;
    EXPECT_EQ(majors(VIEW_RADIO), std::vector<int>{each.numbers.back()}) << each.how;
  }
  for (const char *how : {"0", "32768", "x", "from", ""}) {
    EXPECT_EQ(merge({"--new-numbers", how}).exit_code, 2) << how;
  }
}

TEST_F(Rescan, BehindTheLargestNumberComesTheFirstFreeOne) {
  channel_file own;
  own.service(news).service(films).entry(VIEW_ALL, news, 1).entry(VIEW_ALL, films, 32767);
  set(own, scan_of({news, films, music}));

  EXPECT_EQ(merge().exit_code, 0);

  load_merged();
  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{1, 32767, 2}));
}

TEST_F(Rescan, NumbersThatServiceIdsGiveTwiceAreTold) {
  service_data clash = music;
  clash.service_id = 16384 + 101;
  write_scan(scan_of({news, films, clash}));

  const program_result result = merge({"--new-numbers", "service-id"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: merge: scan.dat: 1 number more than once in a view since services were added by "
                        "their ids, 101 the first of them\n");
}

}  // namespace
