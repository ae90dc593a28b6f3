// `chlist fav`: favourite groups change, and nothing else.
#include "chlist/json/json.h"
#include "tool/edit/edit_host.h"

namespace {

using namespace edit_test;
using test_support::group_place;
using test_support::group_size;

class Favourites : public edit_host {
 protected:
  static std::size_t group_at(std::size_t index) { return group_place(GROUP_FAV).array + index * group_size; }
  static std::size_t entries_at(std::size_t index) { return entry_at(static_cast<int>(best + index), 0); }
  static std::size_t count_at(std::size_t index) { return view_place(static_cast<int>(best + index)).count; }

  // A group of the file as it was, with its entries and their count, at another index.
  void put_group(bytes &file, std::size_t to, std::size_t from) const {
    constexpr std::size_t entries_size = 40 * test_support::entry_size;
    file.replace(group_at(to), group_size, before.data.substr(group_at(from), group_size));
    file.replace(entries_at(to), entries_size, before.data.substr(entries_at(from), entries_size));
    put(file, count_at(to), 2, get(before.data, count_at(from), 2));
  }
};

TEST_F(Favourites, ANewGroupIsEmptyAndTheLast) {
  bytes expected = before.data;
  put(expected, group_place(GROUP_FAV).count, 2, 3);
  put(expected, group_at(2) + group_field::id, 2, 2);
  put(expected, group_at(2) + group_field::name_len, 2, 5);
  expected.replace(group_at(2) + group_field::name, 5, "Films");

  expect_edit({"fav", "new", "list.dat", "Films"}, expected);
}

TEST_F(Favourites, AreAddedAtTheEndWithTheirNumbersInAll) {
  bytes expected = before.data;
  expected.replace(entry_at(kids, 1), test_support::entry_size,
                   before.data.substr(entry_at(VIEW_ALL, 2), test_support::entry_size));
  put(expected, entry_at(kids, 1) + entry_field::favorite_id, 1, 1);
  expected.replace(entry_at(kids, 2), test_support::entry_size,
                   before.data.substr(entry_at(VIEW_ALL, 0), test_support::entry_size));
  put(expected, entry_at(kids, 2) + entry_field::favorite_id, 1, 2);
  put(expected, view_place(kids).count, 2, 3);

  expect_edit({"fav", "add", "list.dat", "kids", "Music", "1"}, expected);
}

TEST_F(Favourites, OneThatIsThereStaysWithANote) {
  const auto result = run({"fav", "add", "list.dat", "1", "Films"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: fav add: list.dat: \"Films\" is in the favourites 1 \"Best\" view already\n");
  expect_bytes(before.data);
}

TEST_F(Favourites, AreRemovedAndTheOthersStayAsTheyAre) {
  bytes expected = before.data;
  remove_entry(expected, best, 1);

  expect_edit({"fav", "remove", "list.dat", "Best", "News"}, expected);
}

TEST_F(Favourites, TheGapIsClosedOnRequest) {
  bytes expected = before.data;
  remove_entry(expected, best, 1);
  put(expected, number_at(best, 0), 2, 1);
  put(expected, number_at(best, 1), 2, 3);
  put(expected, entry_at(best, 1) + entry_field::favorite_id, 1, 8);

  expect_edit({"fav", "remove", "list.dat", "Best", "News", "--close-gaps"}, expected);
}

TEST_F(Favourites, MoveInTheirGroup) {
  bytes expected = before.data;
  reorder(expected, best, {2, 0, 1});
  expect_edit({"fav", "move", "list.dat", "Best", "Sport", "--before", "Films"}, expected);

  expected = read_file(path());
  reorder(expected, best, {1, 2, 0});
  expect_edit({"fav", "move", "list.dat", "Best", "Sport", "--to", "3"}, expected);
}

TEST_F(Favourites, AGroupMovesAndStaysTheCurrentOne) {
  bytes expected = before.data;
  put_group(expected, 0, 1);
  put_group(expected, 1, 0);
  put(expected, list_field::ch_type, 1, kids);
  put(expected, list_field::vch_type, 2, kids);

  expect_edit({"fav", "move", "list.dat", "Kids", "--to", "1"}, expected);
}

TEST_F(Favourites, AGroupGetsAnotherName) {
  bytes expected = before.data;
  expected.replace(group_at(1) + group_field::name, 96, "Boys" + bytes(92, '\0'));
  expect_edit({"fav", "rename", "list.dat", "Kids", "Boys"}, expected);

  put(expected, group_at(1) + group_field::name_len, 2, 4);
  expected.replace(group_at(1) + group_field::name, 4, "BOYS");
  expect_edit({"fav", "rename", "list.dat", "2", "BOYS"}, expected);
}

TEST_F(Favourites, AGroupThatIsDeletedGoesWhole) {
  bytes expected = before.data;
  expected.replace(group_at(1), group_size, group_size, '\0');
  expected.replace(entries_at(1), 40 * test_support::entry_size, 40 * test_support::entry_size, '\0');
  put(expected, count_at(1), 2, 0);
  put(expected, group_place(GROUP_FAV).count, 2, 1);

  expect_edit({"fav", "delete", "list.dat", "Kids"}, expected);
}

TEST_F(Favourites, AfterTheCurrentGroupIsDeletedAllIsCurrent) {
  bytes expected = before.data;
  put_group(expected, 0, 1);
  expected.replace(group_at(1), group_size, group_size, '\0');
  expected.replace(entries_at(1), 40 * test_support::entry_size, 40 * test_support::entry_size, '\0');
  put(expected, count_at(1), 2, 0);
  put(expected, group_place(GROUP_FAV).count, 2, 1);
  put(expected, list_field::ch_type, 1, 0);
  put(expected, list_field::use_group_list, 1, 0);
  put(expected, list_field::vch_type, 2, 0);

  expect_edit({"fav", "delete", "list.dat", "Best"}, expected);
}

TEST_F(Favourites, NamesOfGroupsAreCutInFrontOfACharacter) {
  for (const auto &[given, stored] : {std::pair{std::string(95, 'N'), std::string(95, 'N')},
                                      {std::string(96, 'N'), std::string(95, 'N')},
                                      {std::string(94, 'N') + "\xC3\xA9", std::string(94, 'N')}}) {
    write_file(path(), before.data);

    const auto result = run({"fav", "rename", "list.dat", "Kids", given});

    EXPECT_EQ(result.exit_code, given == stored ? 0 : 1);
    EXPECT_EQ(result.err, given == stored ? ""
                                          : "chlist: fav rename: list.dat: the name is cut to " +
                                                std::to_string(stored.size()) + " of its 96 bytes\n");
    bytes expected = before.data;
    expected.replace(group_at(1) + group_field::name, 96, stored + bytes(96 - stored.size(), '\0'));
    put(expected, group_at(1) + group_field::name_len, 2, stored.size());
    expect_bytes(expected);
  }
}

TEST_F(Favourites, ATableOfGroupsThatIsFullTakesNoMore) {
  for (int id = 2; id < MAX_FAV; ++id) {
    before.group(GROUP_FAV, id, "Group " + std::to_string(id));
  }
  write_file(path(), before.data);

  expect_refused({"fav", "new", "list.dat", "One more"},
                 "no favourite group can be added: there are 20, the most that a list holds");
  EXPECT_EQ(run({"fav", "move", "list.dat", "Best", "--to", "20"}).exit_code, 0);
  EXPECT_EQ(run({"fav", "delete", "list.dat", "Group 19"}).exit_code, 0);
  EXPECT_EQ(run({"fav", "new", "list.dat", "One more"}).exit_code, 0);
}

TEST_F(Favourites, AGroupThatIsFullTakesNoMore) {
  for (std::uint16_t id = 10; id < 50; ++id) {
    const service_data service = {
        .ts_id = 200, .frequency = 12'000'000, .service_id = id, .polarisation = 1, .name = "S" + std::to_string(id)};
    before.service(service).entry(VIEW_ALL, service, 100 + id);
    if (id < 48) {
      before.entry(kids, service, 100 + id);
    }
  }
  write_file(path(), before.data);

  expect_refused({"fav", "add", "list.dat", "Kids", "S48", "S49"},
                 "\"S49\" cannot be added: the favourites 2 \"Kids\" view is full, it holds 40");
  EXPECT_EQ(run({"fav", "add", "list.dat", "Kids", "S48"}).exit_code, 0);
  EXPECT_EQ(get(read_file(path()), view_place(kids).count, 2), 40U);
  EXPECT_EQ(run({"fav", "move", "list.dat", "Kids", "S48", "--to", "1"}).exit_code, 0);
  EXPECT_EQ(get(read_file(path()), number_at(kids, 0), 2), 148U);
}

TEST_F(Favourites, AreListed) {
  EXPECT_EQ(run({"fav", "list", "list.dat"}).out, "group  id  name  entries\n"
                                                  "    1   0  Best        3\n"
                                                  "    2   1  Kids        1\n");
  EXPECT_EQ(json::parse(run({"fav", "list", "list.dat", "--json"}).out)["groups"],
            chlist::json::parse(R"([{"group": 1, "id": 0, "name": "Best", "count": 3},
                                      {"group": 2, "id": 1, "name": "Kids", "count": 1}])"));
  EXPECT_EQ(json::parse(run({"fav", "list", "list.dat", "Kids", "--json"}).out)["entries"],
            chlist::json::parse(R"([{"position": 1, "number": 9, "minor": 0, "name": "Sport", "net_index": 1,
                                       "network_id": 1, "ts_id": 200, "frequency": 12000000, "polarisation": "V",
                                       "service_id": 3}])"));
  expect_bytes(before.data);
}

TEST_F(Favourites, AreListedWithoutTheSelectorsOfTheirNames) {
  before.group(GROUP_FAV, 2,
               "\x05"
               "Docs");
  write_file(path(), before.data);

  expect_refused({"fav", "new", "list.dat", "docs"}, "there is a favourite group \"Docs\" already");
  EXPECT_EQ(json::parse(run({"fav", "list", "list.dat", "--json"}).out)["groups"][2],
            chlist::json::parse(R"({"group": 3, "id": 2, "name": "Docs", "count": 0})"));
}

TEST_F(Favourites, OfOneIdAreListedButNotEdited) {
  before.group(GROUP_FAV, 1, "Twin");
  write_file(path(), before.data);

  EXPECT_EQ(run({"fav", "list", "list.dat", "Twin"}).exit_code, 0);
  expect_refused({"fav", "add", "list.dat", "Twin", "News"},
                 "favourite group \"Twin\" cannot be edited: another one has its id 1");
}

TEST_F(Favourites, RefuseWhatIsNotThere) {
  expect_refused({"fav", "add", "list.dat", "3", "News"}, "no favourite group \"3\": there are Best, Kids");
  expect_refused({"fav", "remove", "list.dat", "Kids", "News"},
                 "\"News\" has no entry in the favourites 2 \"Kids\" view");
  expect_refused({"fav", "new", "list.dat", "BEST"}, "there is a favourite group \"Best\" already");
  expect_refused({"fav", "rename", "list.dat", "Kids", "best"}, "there is a favourite group \"Best\" already");
  expect_refused({"fav", "new", "list.dat", ""}, "a name has one byte at least");
  expect_refused({"fav", "rename", "list.dat", "Kids", ""}, "a name has one byte at least");
  expect_refused({"fav", "move", "list.dat", "Kids", "--to", "3"},
                 "position 3 is not there: it can be 1 to 2 among the favourite groups");
  expect_refused({"fav", "move", "list.dat", "Kids", "--to", "0"},
                 "position 0 is not there: it can be 1 to 2 among the favourite groups");
  expect_refused({"fav", "move", "list.dat", "Kids", "--before", "News"},
                 "a group moves --to a position among the groups");
  put(before.data, group_at(1) + group_field::id, 2, 0);
  write_file(path(), before.data);
  expect_refused({"fav", "delete", "list.dat", "Kids"},
                 "favourite group \"Kids\" cannot be edited: another one has its id 0");
}

}  // namespace
