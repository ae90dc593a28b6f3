// Channels that a user of the example host deletes and moves, and what the file keeps of it.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tool/zapper/zapper_host.h"

namespace {

using test_support::majors;
using tool_test::begins_with;
using tool_test::lines_of;
using tool_test::viewer;

class ZapperEdits : public tool_test::zapper_test {
 protected:
  // A list of one service, without a view but ALL and TV.
  void import_one_service() const {
    test_support::write_file(dir.path() + "one", "Only:12000:H:S1E:0:101:0:0:0:1:1:1:0\n");
    ASSERT_EQ(tool_test::run_program({CHLIST_PROGRAM, "import", dir.path() + "one", "-o", file}).exit_code, 0);
  }
};

TEST_F(ZapperEdits, ADeletedChannelIsGoneEverywhere) {
  viewer user(interactive());
  user.type_all({"tv", "fav new Evening", "5", "fav add", "6", "fav add", "5"});

  EXPECT_TRUE(begins_with(user.answer("delete"), "Harbour 7 is deleted.\n>     6  "));
  EXPECT_EQ(user.answer("5"), "There is no channel 5 in the TV view.\nTV 6> ");
  user.answer("save");

  load();
  for (const std::int8_t view : {VIEW_ALL, VIEW_TV}) {
    const std::vector<int> numbers = majors(view);
    EXPECT_EQ(std::count(numbers.begin(), numbers.end(), 5), 0);
  }
  EXPECT_EQ(list.vnumber, 23);
  EXPECT_EQ(list.tv_vnumber, 17);
  EXPECT_EQ(majors(VIEW_FAVOURITE), (std::vector<int>{6}));
  EXPECT_EQ(get_channel_st(1, 158, 2012, 11'345'000, 3103, 1), nullptr);
}

TEST_F(ZapperEdits, TheHistoryForgetsADeletedChannel) {
  viewer user(interactive());
  user.type_all({"5", "7", "delete"});

  EXPECT_EQ(user.answer("history").find("(no service)"), std::string::npos);
  EXPECT_TRUE(begins_with(user.answer("back"), ">     5  "));
}

TEST_F(ZapperEdits, TheLastChannelIsFollowedByTheFirst) {
  viewer user(interactive());
  user.type_all({"radio", "904"});

  EXPECT_TRUE(begins_with(user.answer("delete"), "Delta Members Radio is deleted.\n>   900  "));
}

TEST_F(ZapperEdits, ASkippedChannelDoesNotFollow) {
  viewer user(interactive());
  user.type_all({"6", "skip", "5"});

  EXPECT_NE(user.answer("delete").find("\n>     7  "), std::string::npos);
}

TEST_F(ZapperEdits, AViewThatIsDeletedEmptyGivesWayToAll) {
  viewer user(interactive());
  user.type_all({"fav new Evening", "5", "fav add", "fav 1"});

  EXPECT_TRUE(begins_with(user.answer("delete"), "Harbour 7 is deleted.\nThe FAV 1 view is empty now.\n>     1  "));
}

TEST_F(ZapperEdits, TheOnlyChannelLeavesAnEmptyList) {
  import_one_service();
  viewer user(interactive());

  EXPECT_EQ(user.answer("delete"), "Only is deleted.\nThe ALL view is empty now.\n"
                                   "The ALL view has no channel to stop at.\nALL> ");
  for (const char *line : {"delete", "info", "lock", "move 1", "fav add", "fav del"}) {
    EXPECT_EQ(user.answer(line), "There is no channel on the screen.\nALL> ") << line;
  }
  EXPECT_EQ(user.answer("history"), "No channel was watched yet.\nALL> ");
  EXPECT_EQ(user.answer("provider"), "The TV view has no providers.\nALL> ");
  EXPECT_EQ(user.answer("free"), "The TV view has no channel that is free.\nALL> ");
  user.answer("save");

  load();
  EXPECT_EQ(list.vnumber, 0);
}

TEST_F(ZapperEdits, AListOfOneServiceEndsTheSessionWell) {
  import_one_service();

  const tool_test::program_result result = play();

  EXPECT_EQ(result.exit_code, 0) << result.out;
  EXPECT_EQ(result.out.find(" is deleted."), std::string::npos);
}

TEST_F(ZapperEdits, AChannelMovesInItsViewAndKeepsItsNumber) {
  viewer user(interactive());
  user.type_all({"radio", "903"});

  EXPECT_EQ(user.answer("move 1"), "Polarstern H\xC3\xB6rspiel is at place 1 of 5 in the RADIO view.\nRADIO 903> ");
  EXPECT_EQ(user.answer("move 5"), "Polarstern H\xC3\xB6rspiel is at place 5 of 5 in the RADIO view.\nRADIO 903> ");
  EXPECT_EQ(user.answer("move 2"), "Polarstern H\xC3\xB6rspiel is at place 2 of 5 in the RADIO view.\nRADIO 903> ");
  user.answer("save");

  load();
  EXPECT_EQ(majors(VIEW_RADIO), (std::vector<int>{900, 903, 901, 902, 904}));
  const std::vector<int> all = majors(VIEW_ALL);
  EXPECT_TRUE(std::is_sorted(all.begin(), all.end()));
}

TEST_F(ZapperEdits, AMoveNeedsAPlaceInTheView) {
  viewer user(interactive());
  user.answer("radio");

  for (const char *place : {"", " 0", " 6", " -1", " two", " 1 2", " 99999999999999999999"}) {
    EXPECT_EQ(user.answer(std::string("move") + place), "Where to? move 1 to move 5\nRADIO 900> ") << place;
  }
}

TEST_F(ZapperEdits, AGroupListKeepsTheOrderOfItsView) {
  viewer user(interactive());
  user.answer("provider Silverscreen");

  EXPECT_EQ(user.answer("move 3"), "The list of a group has the order of its view; type tv, radio or all and move the "
                                   "channel there.\nUSER 50> ");
  user.answer("save");

  load();
  EXPECT_EQ(majors(VIEW_USER), (std::vector<int>{50, 51, 52, 53}));
  EXPECT_EQ(majors(VIEW_TV), (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 50, 51, 52, 53, 54, 55, 56, 57, 58}));
}

TEST_F(ZapperEdits, InfoNamesTheProvider) {
  viewer user(interactive());

  EXPECT_NE(user.answer("info").find("\n         provider Northlight Media\n"), std::string::npos);
}

TEST_F(ZapperEdits, WordsMayStandApart) {
  viewer user(interactive());

  EXPECT_EQ(user.answer("  FAV \t New   A  b "),
            "A  b is favourite group 1; fav add puts the channel on the screen there.\nALL 1> ");
  EXPECT_EQ(user.answer("fav newer"), "There is no favourite group newer; fav lists them.\nALL 1> ");
  EXPECT_EQ(user.answer("favourite"), "Unknown command 'favourite'. Type help for the commands.\nALL 1> ");
}

}  // namespace
