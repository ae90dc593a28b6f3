// Edits change exactly the bytes that they should: files are compared byte by byte.
#include "chlist/json/json.h"
#include "tool/edit/edit_host.h"

namespace {

using namespace edit_test;

class Edits : public edit_host {};

void set_name(bytes &file, std::size_t text_at, const std::string &name) {
  file.replace(text_at, 96, name + bytes(96 - name.size(), '\0'));
  put(file, text_at + service_field::name_len - service_field::name, 2, name.size());
}

TEST_F(Edits, RenameAService) {
  bytes expected = before.data;
  set_name(expected, service_at(before, 1) + service_field::name, "Movies");

  expect_edit({"rename", "list.dat", "Films", "Movies"}, expected);
}

TEST_F(Edits, RenameAServicesShortName) {
  bytes expected = before.data;
  set_name(expected, service_at(before, 1) + service_field::name + sizeof(name_slot_st), "Mov");

  expect_edit({"rename", "list.dat", "2", "Mov", "--short"}, expected);
}

TEST_F(Edits, NamesFillTheirFieldAndAreCutInFrontOfACharacter) {
  struct {
    std::string given;
    std::string stored;
  } const names[] = {{"N", "N"},
                     {std::string(95, 'N'), std::string(95, 'N')},
                     {std::string(96, 'N'), std::string(96, 'N')},
                     {std::string(97, 'N'), std::string(96, 'N')},
                     {std::string(95, 'N') + "\xC3\xA9", std::string(95, 'N')},
                     {std::string(94, 'N') + "\xC3\xA9", std::string(94, 'N') + "\xC3\xA9"},
                     {std::string(94, 'N') + "\xE2\x82\xAC", std::string(94, 'N')}};
  for (const auto &name : names) {
    write_file(path(), before.data);
    const bool is_cut = name.given.size() > name.stored.size();

    const auto result = run({"rename", "list.dat", "Films", name.given});

    EXPECT_EQ(result.exit_code, is_cut ? 1 : 0);
    EXPECT_EQ(result.err, is_cut
                              ? "chlist: rename: list.dat: the name is cut to " + std::to_string(name.stored.size()) +
                                    " of its " + std::to_string(name.given.size()) + " bytes\n"
                              : "");
    bytes expected = before.data;
    set_name(expected, service_at(before, 1) + service_field::name, name.stored);
    expect_bytes(expected);
  }
}

TEST_F(Edits, LockAndSkipServices) {
  struct {
    std::vector<std::string> command;
    int flag;
    int expected;
  } const flags[] = {{{"lock"}, 0x40, 0x42},   {{"lock", "--off"}, 0x42, 0x40},    {{"unlock"}, 0x4A, 0x48},
                     {{"skip"}, 0x40, 0x48},   {{"skip", "--off"}, 0x4A, 0x42},    {{"unskip"}, 0x08, 0x00},
                     {{"unlock"}, 0x48, 0x48}, {{"lock", "--dry-run"}, 0x40, 0x40}};
  for (const auto &flag : flags) {
    const std::size_t at = service_at(before, 3) + service_field::flag;
    write_file(path(), with(at, 1, static_cast<std::uint64_t>(flag.flag)));
    std::vector<std::string> arguments = flag.command;
    arguments.insert(arguments.begin() + 1, {"list.dat", "Sport"});

    expect_edit(arguments, with(at, 1, static_cast<std::uint64_t>(flag.expected)));
  }
}

TEST_F(Edits, LockSeveralServicesAtOnce) {
  bytes expected = with(service_at(before, 0) + service_field::flag, 1, 2);
  put(expected, service_at(before, 3) + service_field::flag, 1, 0x42);

  expect_edit({"lock", "list.dat", "News", "4"}, expected);
}

TEST_F(Edits, AServiceThatIsNamedTwiceIsTakenOnce) {
  const auto result = run({"remove", "list.dat", "News", "1"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: remove: list.dat: \"News\" is named twice: taken once\n");
}

TEST_F(Edits, RemoveAServiceWithItsEntriesAndNothingElse) {
  bytes expected = before.data;
  expected.erase(service_at(before, 0), test_support::service_size);
  put(expected, before.records[2].offset + transponder_field::rch_num, 2, 2);
  for (const auto &[view, position] :
       {std::pair{+VIEW_ALL, 0}, {+VIEW_TV, 0}, {+VIEW_USER, 1}, {+VIEW_PROMOTION, 0}, {best, 1}}) {
    remove_entry(expected, view, static_cast<std::size_t>(position));
  }

  expect_edit({"remove", "list.dat", "News"}, expected);
}

TEST_F(Edits, RemoveEveryService) {
  EXPECT_EQ(run({"remove", "list.dat", "News", "Films", "Music", "Sport"}).exit_code, 0);

  const bytes written = read_file(path());
  EXPECT_EQ(written.size(), test_support::list_size + test_support::network_size + 2 * test_support::transponder_size);
  EXPECT_EQ(get(written, view_place(VIEW_ALL).count, 2), 1U);
  EXPECT_EQ(get(written, view_place(VIEW_TV).count, 2), 0U);
}

TEST_F(Edits, MoveServicesInOneView) {
  struct {
    std::vector<std::string> arguments;
    std::vector<std::size_t> order;
  } const moves[] = {{{"News", "--to", "5"}, {1, 2, 3, 4, 0}},
                     {{"Sport", "--to", "1"}, {3, 0, 1, 2, 4}},
                     {{"Sport", "--before", "Films"}, {0, 3, 1, 2, 4}},
                     {{"News", "--after", "Films"}, {1, 0, 2, 3, 4}},
                     {{"Music", "News", "--after", "Sport"}, {1, 3, 2, 0, 4}},
                     {{"News", "Films", "--to", "4"}, {2, 3, 4, 0, 1}},
                     {{"Sport", "News", "--to", "2"}, {1, 3, 0, 2, 4}},
                     {{"Sport", "News", "--before", "Films"}, {3, 0, 1, 2, 4}},
                     {{"News", "--to", "1"}, {0, 1, 2, 3, 4}}};
  for (const auto &move : moves) {
    SCOPED_TRACE(move.arguments[0] + move.arguments[1] + move.arguments[2]);
    write_file(path(), before.data);
    std::vector<std::string> arguments = {"move", "list.dat"};
    arguments.insert(arguments.end(), move.arguments.begin(), move.arguments.end());
    bytes expected = before.data;
    reorder(expected, VIEW_ALL, move.order);

    expect_edit(arguments, expected);
  }
}

TEST_F(Edits, MoveInEveryKindOfView) {
  struct {
    std::string view;
    int code;
    std::string service;
    std::vector<std::size_t> order;
  } const moves[] = {{"tv", VIEW_TV, "Sport", {2, 0, 1}},
                     {"user", VIEW_USER, "News", {1, 0}},
                     {"fav:Best", best, "Sport", {2, 0, 1}},
                     {"radio", VIEW_RADIO, "Music", {0}},
                     {"promo", VIEW_PROMOTION, "News", {0}}};
  for (const auto &move : moves) {
    write_file(path(), before.data);
    bytes expected = before.data;
    reorder(expected, move.code, move.order);

    expect_edit({"move", "list.dat", move.service, "--to", "1", "--view", move.view}, expected);
  }
}

TEST_F(Edits, SortViews) {
  bytes expected = before.data;
  reorder(expected, VIEW_TV, {1, 0, 2});
  expect_edit({"sort", "list.dat", "--by", "name", "--view", "tv"}, expected);

  write_file(path(), before.data);
  expected = before.data;
  reorder(expected, best, {1, 0, 2});
  reorder(expected, VIEW_USER, {1, 0});
  expect_edit({"sort", "list.dat", "--by", "number", "--view", "fav:1", "--view", "user"}, expected);

  write_file(path(), before.data);
  expected = before.data;
  reorder(expected, VIEW_ALL, {0, 1, 3, 2, 4});
  reorder(expected, VIEW_USER, {1, 0});
  expect_edit({"sort", "list.dat", "--by", "service_id"}, expected);
}

TEST_F(Edits, SortWhatIsChosenAmongItsPositions) {
  bytes expected = before.data;
  reorder(expected, VIEW_TV, {1, 0, 2});
  expect_edit({"sort", "list.dat", "--by", "name", "--view", "tv", "--where", "name=News or name=Films", "--yes"},
              expected);

  write_file(path(), before.data);
  EXPECT_EQ(run({"sort", "list.dat", "--by", "name", "--where", "name=News"}).out,
            "list.dat: 1 service chosen, nothing to change\n");
  expect_bytes(before.data);
}

TEST_F(Edits, ChosenServicesAreSortedInAllViewsButFavourites) {
  const service_data jazz = {.ts_id = 200,
                             .frequency = 12'000'000,
                             .service_id = 7,
                             .polarisation = 1,
                             .service_type = SERVICE_TYPE_RADIO,
                             .name = "Jazz"};
  before.service(jazz).entry(VIEW_ALL, jazz, 6).entry(VIEW_RADIO, jazz, 6).entry(VIEW_USER, jazz, 6);
  before.entry(VIEW_PROMOTION, films, 2).entry(kids, films, 2);
  write_file(path(), before.data);

  EXPECT_EQ(run({"sort", "list.dat", "--by", "name", "--where", "service_id>0", "--yes"}).exit_code, 0);

  const std::pair<const char *, const char *> sorted[] = {{"all", "Films Jazz Music News  Sport "},
                                                          {"tv", "Films News Sport "},
                                                          {"radio", "Jazz Music "},
                                                          {"user", "Films Jazz News "},
                                                          {"promo", "Films News "},
                                                          {"fav:Kids", "Sport Films "}};
  for (const auto &[view, names] : sorted) {
    std::string shown = run({"list", "list.dat", "--view", view, "--columns", "name"}).out;
    std::ranges::replace(shown, '\n', ' ');
    EXPECT_EQ(shown, std::string("name ") + names) << view;
  }
}

TEST_F(Edits, SortByTransponderAndByTheUsersKeys) {
  write_file(path(), with(service_at(before, 0) + service_field::user_order_key, 2, 7));
  bytes expected = read_file(path());
  reorder(expected, VIEW_TV, {1, 2, 0});
  expect_edit({"sort", "list.dat", "--by", "order_key", "--view", "tv"}, expected);

  reorder(expected, VIEW_TV, {2, 0, 1});
  expect_edit({"sort", "list.dat", "--by", "transponder", "--view", "tv"}, expected);
}

TEST_F(Edits, AnEditThatChangesNothingLeavesTheFile) {
  for (const std::vector<std::string> &arguments : std::vector<std::vector<std::string>>{
           {"rename", "list.dat", "News", "News"},
           {"renumber", "list.dat", "News", "1"},
           {"unlock", "list.dat", "News"},
           {"move", "list.dat", "News", "--to", "1"},
           {"sort", "list.dat", "--by", "number", "--view", "all"},
           {"set", "list.dat", "News", "frequency=11000000", "country=77", "pmt_pid=0"},
           {"fav", "rename", "list.dat", "Best", "Best"},
           {"fav", "move", "list.dat", "Best", "--to", "1"}}) {
    const auto written = std::filesystem::last_write_time(path());

    const auto result = run(arguments);

    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_EQ(result.out, "list.dat: nothing to change\n");
    expect_bytes(before.data);
    EXPECT_EQ(std::filesystem::last_write_time(path()), written);
    EXPECT_EQ(files(), (std::vector<std::string>{"list.dat"}));
  }
}

TEST_F(Edits, ADryRunWritesNothingAndShowsTheSame) {
  const auto dry = run({"rename", "list.dat", "News", "Today", "--dry-run"});

  EXPECT_EQ(dry.exit_code, 0);
  EXPECT_TRUE(dry.out.starts_with("dry run: changed\n")) << dry.out;
  expect_bytes(before.data);
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat"}));
  const auto done = run({"rename", "list.dat", "News", "Today"});
  EXPECT_EQ(done.out.substr(done.out.find('\n')), dry.out.substr(dry.out.find('\n')));
  EXPECT_TRUE(done.out.starts_with("list.dat: changed\n")) << done.out;
  EXPECT_NE(done.out.find("Today"), std::string::npos);
}

TEST_F(Edits, TheJsonReportSaysTheSame) {
  const auto result = run({"rename", "list.dat", "News", std::string(97, 'N'), "--json"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "");
  const auto report = chlist::json::parse(result.out);
  EXPECT_EQ(report["file"], "list.dat");
  EXPECT_EQ(report["output"], "list.dat");
  EXPECT_EQ(report["dry_run"], false);
  EXPECT_EQ(report["is_changed"], true);
  EXPECT_EQ(report["notes"], chlist::json::array({"the name is cut to 96 of its 97 bytes"}));
  EXPECT_EQ(report["differences"]["changed"].size(), 1U);
}

TEST_F(Edits, AnotherOutputLeavesTheFile) {
  EXPECT_EQ(run({"lock", "list.dat", "News", "-o", "out.dat"}).exit_code, 0);
  expect_bytes(before.data);
  expect_bytes(with(service_at(before, 0) + service_field::flag, 1, 2), "out.dat");

  EXPECT_EQ(run({"unlock", "list.dat", "News", "-o", "copy.dat"}).exit_code, 0);
  expect_bytes(before.data, "copy.dat");
  EXPECT_EQ(files(), (std::vector<std::string>{"copy.dat", "list.dat", "out.dat"}));
}

TEST_F(Edits, WhatCannotBeSavedAgainIsTold) {
  bytes damaged = with(view_place(VIEW_PROMOTION).count, 2, 11);
  put(damaged, test_support::group_place(GROUP_GENRE).count, 2, 51);
  write_file(path(), damaged + "tail");

  const auto result = run({"lock", "list.dat", "News"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: lock: list.dat: the promotion view counts 11 entries: saved as 10\n"
                        "chlist: lock: list.dat: the table of genres counts 51: saved as 50\n"
                        "chlist: lock: list.dat: 4 bytes behind the last record: not saved\n");
  put(damaged, view_place(VIEW_PROMOTION).count, 2, 10);
  put(damaged, test_support::group_place(GROUP_GENRE).count, 2, 50);
  put(damaged, service_at(before, 0) + service_field::flag, 1, 2);
  expect_bytes(damaged);
}

}  // namespace
