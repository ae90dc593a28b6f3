// `chlist renumber`: numbers, and what happens to those that have them.
#include "tool/edit/edit_host.h"

namespace {

using namespace edit_test;

class Renumber : public edit_host {
 protected:
  // The file with other numbers: view, position, number.
  struct numbered {
    int view;
    std::size_t position;
    std::uint64_t number;
    std::uint64_t minor = 0;
  };
  [[nodiscard]] bytes with_numbers(const std::vector<numbered> &numbers) const {
    bytes changed = before.data;
    for (const numbered &each : numbers) {
      put(changed, number_at(each.view, each.position), 2, each.number);
      put(changed, entry_at(each.view, each.position) + entry_field::minor_ch_num, 2, each.minor);
    }
    return changed;
  }
};

TEST_F(Renumber, EveryEntryThatShowsTheServicesNumberInAllFollows) {
  expect_edit({"renumber", "list.dat", "Sport", "7"}, with_numbers({{VIEW_ALL, 3, 7}, {VIEW_TV, 2, 7}, {best, 2, 7}}));
}

TEST_F(Renumber, OneViewKeepsTheOthers) {
  expect_edit({"renumber", "list.dat", "9", "7-2", "--view", "fav:Kids"}, with_numbers({{kids, 0, 7, 2}}));
}

TEST_F(Renumber, SwapsWithWhatHasTheNumber) {
  expect_edit({"renumber", "list.dat", "News", "2", "--swap"}, with_numbers({{VIEW_ALL, 0, 2},
                                                                             {VIEW_ALL, 1, 1},
                                                                             {VIEW_TV, 0, 2},
                                                                             {VIEW_TV, 1, 1},
                                                                             {VIEW_USER, 1, 2},
                                                                             {VIEW_PROMOTION, 0, 2},
                                                                             {best, 0, 1},
                                                                             {best, 1, 2}}));
}

TEST_F(Renumber, ShiftsUpToTheFirstFreeNumber) {
  expect_edit({"renumber", "list.dat", "News", "2", "--shift", "--view", "tv"},
              with_numbers({{VIEW_TV, 0, 2}, {VIEW_TV, 1, 3}}));
}

TEST_F(Renumber, ShiftsOnlyAsFarAsTheServicesFormerNumber) {
  expect_edit({"renumber", "list.dat", "Music", "1", "--shift", "--view", "all"},
              with_numbers({{VIEW_ALL, 2, 1}, {VIEW_ALL, 0, 2}, {VIEW_ALL, 1, 3}}));
}

TEST_F(Renumber, ShiftsMinorNumbersWhenThereIsOne) {
  before.data = with_numbers({{VIEW_TV, 1, 5, 1}, {VIEW_TV, 2, 5, 2}});
  write_file(path(), before.data);

  expect_edit({"renumber", "list.dat", "News", "5-1", "--shift", "--view", "tv"},
              with_numbers({{VIEW_TV, 0, 5, 1}, {VIEW_TV, 1, 5, 2}, {VIEW_TV, 2, 5, 3}}));
}

TEST_F(Renumber, RefusesANumberThatIsTaken) {
  expect_refused({"renumber", "list.dat", "News", "2"},
                 "number 2 belongs to \"Films\" in the ALL view: --swap or --shift says what becomes of it");
  expect_refused({"renumber", "list.dat", "News", "50"},
                 "number 50 belongs to an entry without a service in the ALL view: --swap or --shift says what becomes "
                 "of it");
}

TEST_F(Renumber, TakesEveryNumberThatAListHolds) {
  for (const std::uint64_t number : {10U, 32'766U, 32'767U}) {
    write_file(path(), before.data);
    expect_edit({"renumber", "list.dat", "Music", std::to_string(number)},
                with_numbers({{VIEW_ALL, 2, number}, {VIEW_RADIO, 0, number}}));
  }
  write_file(path(), before.data);
  for (const std::string number : {"0", "32768", "1-32768", "1-", "x", "", "7x", "1--1", "99999999999"}) {
    expect_refused({"renumber", "list.dat", "Music", number},
                   '"' + number +
                       "\" is no channel number: NUMBER is 1 to 32767, or NUMBER-MINOR with a minor number of 0 to "
                       "32767");
  }
}

TEST_F(Renumber, RefusesToShiftPastTheLargestNumber) {
  before.data = with_numbers({{VIEW_TV, 1, 32'767}});
  write_file(path(), before.data);

  expect_refused({"renumber", "list.dat", "News", "32767", "--shift", "--view", "tv"},
                 "no number is free above 32767: the largest is 32767");
}

TEST_F(Renumber, NumbersAllAnewAndTheOthersFollow) {
  expect_edit({"renumber", "list.dat", "--from", "100"}, with_numbers({{VIEW_ALL, 0, 100},
                                                                       {VIEW_ALL, 1, 101},
                                                                       {VIEW_ALL, 2, 102},
                                                                       {VIEW_ALL, 3, 103},
                                                                       {VIEW_ALL, 4, 104},
                                                                       {VIEW_TV, 0, 100},
                                                                       {VIEW_TV, 1, 101},
                                                                       {VIEW_TV, 2, 103},
                                                                       {VIEW_RADIO, 0, 102},
                                                                       {VIEW_USER, 1, 100},
                                                                       {VIEW_PROMOTION, 0, 100},
                                                                       {best, 0, 101},
                                                                       {best, 1, 100},
                                                                       {best, 2, 103}}));
}

TEST_F(Renumber, TellsOfNumbersThatOccurTwiceByFollowing) {
  const auto result = run({"renumber", "list.dat", "--from", "20"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: renumber: list.dat: numbers that now occur more than once in the USER view, where "
                        "entries have numbers of their own: "
                        "1\n");
}

TEST_F(Renumber, NumbersThatOccurredTwiceBeforeAreNotToldOf) {
  before.entry(VIEW_USER, sport, 50).entry(VIEW_USER, sport, 50);
  write_file(path(), before.data);

  EXPECT_EQ(run({"renumber", "list.dat", "--from", "100"}).err, "");
  EXPECT_TRUE(run({"renumber", "list.dat", "--from", "20"}).err.ends_with(" numbers of their own: 1\n"));
}

TEST_F(Renumber, NumbersOneViewAnew) {
  expect_edit({"renumber", "list.dat", "--from", "32765", "--view", "tv"},
              with_numbers({{VIEW_TV, 0, 32'765}, {VIEW_TV, 1, 32'766}, {VIEW_TV, 2, 32'767}}));
}

TEST_F(Renumber, RefusesNumbersPastTheLargest) {
  expect_refused({"renumber", "list.dat", "--from", "32766", "--view", "tv"},
                 "the TV view has 3 entries: numbered from 32766 they would pass 32767");
  expect_refused({"renumber", "list.dat", "--from", "32764"},
                 "the ALL view has 5 entries: numbered from 32764 they would pass 32767");
  expect_refused({"renumber", "list.dat", "--from", "7-1"}, "--from takes a number without a minor one");
}

TEST_F(Renumber, NumbersAnEmptyListWithoutAChange) {
  write_file(path(), channel_file().data);

  EXPECT_EQ(run({"renumber", "list.dat", "--from", "1"}).out, "list.dat: nothing to change\n");
}

TEST_F(Renumber, AServiceInNoViewHasNoNumber) {
  before.service({.ts_id = 200, .frequency = 12'000'000, .service_id = 8, .polarisation = 1, .name = "Hidden"});
  write_file(path(), before.data);

  expect_refused({"renumber", "list.dat", "Hidden", "7"}, "\"Hidden\" has no entry in any view");
  expect_refused({"renumber", "list.dat", "Hidden", "7", "--view", "tv"}, "\"Hidden\" has no entry in the TV view");
  expect_refused({"fav", "add", "list.dat", "Kids", "Hidden"}, "\"Hidden\" has no entry in any view");
  expect_refused({"move", "list.dat", "Hidden", "--to", "1"}, "\"Hidden\" has no entry in the ALL view");
}

}  // namespace
