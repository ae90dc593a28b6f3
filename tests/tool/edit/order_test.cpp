// `chlist order`: which services of two lists are the same, and what of the one the other gets.
#include "tool/edit/edit_host.h"

namespace {

using namespace edit_test;

class Order : public edit_host {
 protected:
  // A list of these services, numbered from 100 in this order, as ref.dat.
  void write_reference(const std::vector<service_data> &services) const {
    write_file(path("ref.dat"), listed(services).data);
  }

  static channel_file listed(const std::vector<service_data> &services) {
    channel_file file;
    std::uint16_t number = 100;
    for (const service_data &service : services) {
      file.service(service);
    }
    for (const service_data &service : services) {
      file.entry(VIEW_ALL, service, number++);
    }
    return file;
  }

  [[nodiscard]] bytes ordered(const std::vector<std::size_t> &all, const std::vector<std::size_t> &tv) const {
    bytes expected = before.data;
    reorder(expected, VIEW_ALL, all);
    reorder(expected, VIEW_TV, tv);
    return expected;
  }

  [[nodiscard]] json report_of(const std::vector<std::string> &options) const {
    std::vector<std::string> arguments = {"order", "list.dat", "--yes", "--like", "ref.dat", "--json"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return json::parse(run(arguments).out);
  }

  // A service under another name, service id and transponder.
  static service_data other(service_data service, const std::string &name, std::uint16_t service_id) {
    service.name = name;
    service.service_id = service_id;
    service.ts_id = 300;
    service.frequency = 11'500'000;
    return service;
  }
};

TEST_F(Order, AllHasTheOrderOfTheReferenceAndTvAndRadioFollow) {
  write_reference({edit_test::sport, edit_test::music, edit_test::films, edit_test::news});

  expect_edit({"order", "list.dat", "--yes", "--like", "ref.dat"}, ordered({3, 2, 1, 0, 4}, {2, 1, 0}));
}

TEST_F(Order, ADryRunWritesNothing) {
  write_reference({edit_test::sport, edit_test::music, edit_test::films, edit_test::news});

  const auto result = run({"order", "list.dat", "--like", "ref.dat", "--dry-run"});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_TRUE(result.out.starts_with("ref.dat: 4 of 4 services paired, 4 by identity; 0 could be several, 0 only in "
                                     "REF, 0 only in FILE\n"))
      << result.out;
  expect_bytes(before.data);
}

TEST_F(Order, WhatTheReferenceLacksComesBehindOrStays) {
  write_reference({edit_test::sport, edit_test::news});
  expect_edit({"order", "list.dat", "--yes", "--like", "ref.dat"}, ordered({3, 0, 1, 2, 4}, {2, 0, 1}));

  write_file(path(), before.data);
  expect_edit({"order", "list.dat", "--yes", "--like", "ref.dat", "--rest", "keep"},
              ordered({3, 1, 2, 0, 4}, {2, 1, 0}));
}

TEST_F(Order, WhatTheReferenceLacksIsPassedOver) {
  write_reference({edit_test::sport, edit_test::music, edit_test::news});
  bytes expected = ordered({3, 2, 0, 1, 4}, {2, 0, 1});
  put(expected, service_at(before, 1) + service_field::flag, 1, CHANNEL_FLAG_SKIP);

  expect_edit({"order", "list.dat", "--yes", "--like", "ref.dat", "--rest", "hide"}, expected);
}

TEST_F(Order, WhatTheReferenceLacksGoes) {
  write_reference({edit_test::news, edit_test::music, edit_test::sport});
  ASSERT_EQ(run({"remove", "list.dat", "Films", "-o", "expected.dat"}).exit_code, 0);

  expect_edit({"order", "list.dat", "--yes", "--like", "ref.dat", "--rest", "remove"}, read_file(path("expected.dat")));
}

TEST_F(Order, ServicesAreFoundByIdsAndByName) {
  service_data moved = edit_test::sport;
  moved.frequency = 12'500'000;
  write_reference({other(edit_test::films, "FILMS", 77), moved, edit_test::music, edit_test::news});

  const json report = report_of({});

  std::vector<std::string> ways;
  for (const json &pair : report["tables"].elements().front()["paired"].elements()) {
    ways.push_back(pair["name"].as_string() + " " + pair["found_by"].as_string());
  }
  EXPECT_EQ(ways, (std::vector<std::string>{"News identity", "Films name", "Music identity", "Sport name"}));
  expect_bytes(ordered({1, 3, 2, 0, 4}, {1, 2, 0}));
}

TEST_F(Order, QualityIsPassedOverOnWish) {
  write_reference({other(edit_test::films, "Films HD", 77), edit_test::music, edit_test::news, edit_test::sport});
  EXPECT_EQ(report_of({"--dry-run"})["tables"].elements().front()["only_in_list"].elements().size(), 1U);

  expect_edit({"order", "list.dat", "--yes", "--like", "ref.dat", "--any-quality"},
              ordered({1, 2, 0, 3, 4}, {1, 0, 2}));
}

TEST_F(Order, WhatCouldBeSeveralIsToldAndLeftAsItIs) {
  before.service({.ts_id = 200, .frequency = 12'000'000, .service_id = 8, .polarisation = 1, .name = "Films"});
  write_file(path(), before.data);
  write_reference({other(edit_test::films, "Films", 77), edit_test::sport, edit_test::music, edit_test::news});

  const auto result = run({"order", "list.dat", "--yes", "--like", "ref.dat", "--rest", "remove"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err,
            "chlist: order: list.dat: 1 service of ref.dat could be another one, or any of several: not ordered\n");
  EXPECT_NE(result.out.find("several possible  Films 1:1:100:11000000H:2, Films 1:1:200:12000000V:8"),
            std::string::npos)
      << result.out;
  expect_bytes(ordered({3, 2, 0, 1, 4}, {2, 0, 1}));
}

TEST_F(Order, AConditionLeavesTheOthersWhereTheyAre) {
  write_reference({edit_test::sport, edit_test::music, edit_test::news});

  expect_edit({"order", "list.dat", "--yes", "--like", "ref.dat", "--where", "type=TV"},
              ordered({3, 0, 2, 1, 4}, {2, 0, 1}));
  EXPECT_EQ(
      run({"order", "list.dat", "--like", "ref.dat", "--where", "type=TV", "--rest", "remove", "--yes"}).exit_code, 0);
  EXPECT_NE(run({"list", "list.dat"}).out.find("Music"), std::string::npos);
  EXPECT_EQ(run({"list", "list.dat"}).out.find("Films"), std::string::npos);
}

TEST_F(Order, IsShownFirst) {
  write_reference({edit_test::sport, edit_test::music, edit_test::news});

  const auto result = run({"order", "list.dat", "--like", "ref.dat", "--rest", "remove"});

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_NE(result.out.find("preview: 4 services chosen, changed\n"), std::string::npos) << result.out;
  EXPECT_EQ(result.err, "chlist: order: list.dat: 4 services are chosen, and none is changed without --yes\n");
  expect_bytes(before.data);
}

TEST_F(Order, IsALineOfApplyWhateverItsReferenceIs) {
  write_file(path("ref.conf"), "Sport;P:12000:V:S19.2E:22000:1:2:0:0:3:1:200:0\n"
                               "News;P:11000:H:S19.2E:22000:1:2:0:0:1:1:100:0\n");
  const std::string line = run({"order", "none.dat", "--like", "ref.conf", "--numbers", "--print-edits"}).out;
  EXPECT_EQ(line, "order --like ref.conf --numbers --rest append\n");
  ASSERT_EQ(run({"rename", "list.dat", "Films", "Movies", "-o", "expected.dat"}).exit_code, 0);
  ASSERT_EQ(run({"order", "expected.dat", "--like", "ref.conf", "--numbers", "--yes"}).exit_code, 0);
  write_file(path("a.edits"), "rename Films Movies\n" + line);

  expect_edit({"apply", "list.dat", "a.edits", "--yes"}, read_file(path("expected.dat")));
}

TEST_F(Order, NumbersOfTheReferenceDisplaceOthers) {
  channel_file file;
  file.service(edit_test::news)
      .service(edit_test::films)
      .entry(VIEW_ALL, edit_test::films, 1)
      .entry(VIEW_ALL, edit_test::news, 4);
  write_file(path("ref.dat"), file.data);

  const auto result = run({"order", "list.dat", "--yes", "--like", "ref.dat", "--numbers"});

  EXPECT_EQ(result.exit_code, 0) << result.err;
  bytes expected = ordered({1, 0, 2, 3, 4}, {1, 0, 2});
  const struct {
    int view;
    std::size_t position;
    std::uint64_t number;
  } numbers[] = {{VIEW_ALL, 0, 1}, {VIEW_ALL, 1, 4}, {VIEW_ALL, 3, 51}, {VIEW_TV, 0, 1},
                 {VIEW_TV, 1, 4},  {VIEW_TV, 2, 51}, {VIEW_USER, 1, 4}, {VIEW_PROMOTION, 0, 4},
                 {best, 0, 1},     {best, 1, 4},     {best, 2, 51}};
  for (const auto &each : numbers) {
    put(expected, number_at(each.view, each.position), 2, each.number);
  }
  expect_bytes(expected);
}

TEST_F(Order, NamesAndLocksOfTheReference) {
  service_data renamed = edit_test::films;
  renamed.name = "Movies";
  renamed.flag = CHANNEL_FLAG_LOCKED;
  write_reference({edit_test::news, renamed, edit_test::music, edit_test::sport});
  ASSERT_EQ(run({"rename", "list.dat", "Films", "Movies", "-o", "expected.dat"}).exit_code, 0);
  ASSERT_EQ(run({"lock", "expected.dat", "Movies"}).exit_code, 0);

  expect_edit({"order", "list.dat", "--yes", "--like", "ref.dat", "--names", "--locks"},
              read_file(path("expected.dat")));
}

TEST_F(Order, FavouritesOfTheReference) {
  channel_file file = listed({edit_test::news, edit_test::films, edit_test::music, edit_test::sport});
  file.group(GROUP_FAV, 0, "KIDS").entry(best, edit_test::news, 1).entry(best, edit_test::sport, 2);
  file.group(GROUP_FAV, 1, "Evening").entry(kids, edit_test::music, 1);
  write_file(path("ref.dat"), file.data);
  ASSERT_EQ(run({"fav", "add", "list.dat", "Kids", "News", "-o", "expected.dat"}).exit_code, 0);
  ASSERT_EQ(run({"fav", "move", "expected.dat", "Kids", "News", "--to", "1"}).exit_code, 0);
  ASSERT_EQ(run({"fav", "new", "expected.dat", "Evening"}).exit_code, 0);
  ASSERT_EQ(run({"fav", "add", "expected.dat", "Evening", "Music"}).exit_code, 0);

  expect_edit({"order", "list.dat", "--yes", "--like", "ref.dat", "--favourites"}, read_file(path("expected.dat")));
}

TEST_F(Order, FavouritesLeaveOutWhatNoViewShows) {
  const service_data hidden = {
      .ts_id = 200, .frequency = 12'000'000, .service_id = 8, .polarisation = 1, .name = "Hidden"};
  before.service(hidden);
  write_file(path(), before.data);
  channel_file file = listed({edit_test::news, hidden});
  file.group(GROUP_FAV, 0, "Kids").entry(best, hidden, 1).entry(best, edit_test::news, 2);
  write_file(path("ref.dat"), file.data);
  ASSERT_EQ(run({"fav", "add", "list.dat", "Kids", "News", "-o", "expected.dat"}).exit_code, 0);
  ASSERT_EQ(run({"fav", "move", "expected.dat", "Kids", "News", "--to", "1"}).exit_code, 0);

  expect_edit({"order", "list.dat", "--yes", "--like", "ref.dat", "--favourites"}, read_file(path("expected.dat")));
}

TEST_F(Order, TheReferenceMayBeOfAnotherFormat) {
  write_file(path("ref.conf"), "broken\nSport;P:12000:V:S19.2E:22000:1:2:0:0:3:1:200:0\n"
                               "News;P:11000:H:S19.2E:22000:1:2:0:0:1:1:100:0\n");

  const auto result = run({"order", "list.dat", "--yes", "--like", "ref.conf"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: order: list.dat: ref.conf: 1 line skipped\n");
  expect_bytes(ordered({3, 0, 1, 2, 4}, {2, 0, 1}));
}

TEST_F(Order, RefusesAReferenceThatIsNoList) {
  write_file(path("empty.conf"), "# nothing\n");

  expect_refused({"order", "list.dat", "--like", "none.dat"}, "none.dat: No such file or directory");
  expect_refused({"order", "list.dat", "--like", "empty.conf"}, "empty.conf: there is no service in it");
}

}  // namespace
