// Favourite groups of the example host: a user makes, fills, orders and drops them, and the file keeps what was saved.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tool/zapper/zapper_host.h"

namespace {

using test_support::majors;
using tool_test::begins_with;
using tool_test::viewer;

class ZapperFavourites : public tool_test::zapper_test {
 protected:
  // The groups that the file holds, each with the numbers of its channels.
  std::vector<std::pair<std::string, std::vector<int>>> saved_groups() {
    load();
    std::vector<std::pair<std::string, std::vector<int>>> groups;
    for (std::int16_t index = 0; index < get_fav_group_number(); ++index) {
      groups.emplace_back(get_fav_group_info(index)->name, majors(static_cast<std::int8_t>(VIEW_FAVOURITE + index)));
    }
    return groups;
  }

  // Evening with 2, 4 and 6; Sport with 4; Empty. Channel 6 is on the screen in the ALL view.
  static void make_three_groups(viewer &user) {
    user.type_all({"fav new Evening", "2", "fav add", "4", "fav add", "6", "fav add", "fav new Sport", "4", "fav add",
                   "fav new Empty", "6"});
  }
};

using groups = std::vector<std::pair<std::string, std::vector<int>>>;

TEST_F(ZapperFavourites, AListWithoutGroupsSaysHowToMakeOne) {
  viewer user(interactive());
  const std::string hint = "There is no favourite group yet; fav new NAME makes one.\nALL 1> ";

  EXPECT_EQ(user.answer("fav"), hint);
  EXPECT_EQ(user.answer("fav add"), hint);
  EXPECT_EQ(user.answer("fav del"), hint);
  EXPECT_EQ(user.answer("fav rename Name"), hint);
}

TEST_F(ZapperFavourites, ANewGroupTakesTheChannelsThatAreAdded) {
  viewer user(interactive());

  EXPECT_EQ(user.answer("fav new My evening"),
            "My evening is favourite group 1; fav add puts the channel on the screen there.\nALL 1> ");
  EXPECT_EQ(user.answer("fav add"), "Northlight One HD is now in My evening.\nALL 1> ");
  EXPECT_EQ(user.answer("fav add"), "Northlight One HD is already in My evening.\nALL 1> ");
  user.type_all({"903", "fav add", "save"});

  EXPECT_EQ(saved_groups(), (groups{{"My evening", {1, 903}}}));
}

TEST_F(ZapperFavourites, ChannelsGoToTheGroupThatIsNamed) {
  viewer user(interactive());
  user.type_all({"fav new Evening", "fav new 3rd"});

  EXPECT_EQ(user.answer("fav add evening"), "Northlight One HD is now in Evening.\nALL 1> ");
  EXPECT_EQ(user.answer("fav  add  2"), "Northlight One HD is now in 3rd.\nALL 1> ");
  EXPECT_EQ(user.answer("fav add 3rd"), "Northlight One HD is already in 3rd.\nALL 1> ");
  EXPECT_EQ(user.answer("fav add 3"), "There is no favourite group 3; fav lists them.\nALL 1> ");
  EXPECT_EQ(user.answer("fav add 0"), "There is no favourite group 0; fav lists them.\nALL 1> ");
}

TEST_F(ZapperFavourites, TheListMarksTheCurrentGroup) {
  viewer user(interactive());
  make_three_groups(user);

  EXPECT_EQ(user.answer("fav"), "      1  Evening                        3 channels\n"
                                "      2  Sport                          1 channel\n"
                                ">     3  Empty                          0 channels\n"
                                "ALL 6> ");
  user.answer("fav 1");
  EXPECT_TRUE(begins_with(user.answer("fav"), ">     1  Evening "));
}

TEST_F(ZapperFavourites, AGroupIsAViewByNumberAndByName) {
  viewer user(interactive());
  make_three_groups(user);

  EXPECT_TRUE(begins_with(user.answer("fav 2"), ">     4  Citt\xC3\xA0 Viva"));
  EXPECT_EQ(user.answer("6"), "There is no channel 6 in the FAV 2 view.\nFAV 2 4> ");
  EXPECT_EQ(user.answer("fav EVENING"), "FAV 1 4> ");
  EXPECT_TRUE(begins_with(user.answer("+"), ">     6  "));
  EXPECT_TRUE(begins_with(user.answer("+"), ">     2  "));
}

TEST_F(ZapperFavourites, AnEmptyOrUnknownGroupIsNoView) {
  viewer user(interactive());
  make_three_groups(user);

  EXPECT_EQ(user.answer("fav 3"), "The FAV 3 view is empty.\nALL 6> ");
  EXPECT_EQ(user.answer("fav 4"), "There is no favourite group 4; fav lists them.\nALL 6> ");
  EXPECT_TRUE(begins_with(user.answer("fav 99999999999999999999"), "There is no favourite group 9"));
  EXPECT_EQ(user.answer("fav Weather"), "There is no favourite group Weather; fav lists them.\nALL 6> ");
}

TEST_F(ZapperFavourites, AChannelLeavesTheGroupAndNumbersStay) {
  viewer user(interactive());
  make_three_groups(user);
  user.type_all({"fav 1", "4"});

  EXPECT_TRUE(
      begins_with(user.answer("fav del"), "Citt\xC3\xA0 Viva is no longer in Evening.\n>     6  T\xC3\xA9l\xC3\xA9"));
  user.type_all({"save"});

  EXPECT_EQ(saved_groups(), (groups{{"Evening", {2, 6}}, {"Sport", {4}}, {"Empty", {}}}));
}

TEST_F(ZapperFavourites, TheLastPlaceIsFollowedByTheFirst) {
  viewer user(interactive());
  make_three_groups(user);
  user.type_all({"fav 1", "6"});

  EXPECT_NE(user.answer("fav del").find("\n>     2  Northlight Two HD "), std::string::npos);
}

TEST_F(ZapperFavourites, AnEmptiedGroupGivesWayToAllAndTheChannelStays) {
  viewer user(interactive());
  make_three_groups(user);
  user.answer("fav 2");

  EXPECT_EQ(user.answer("fav del"), "Citt\xC3\xA0 Viva is no longer in Sport.\nThe FAV 2 view is empty now.\nALL 4> ");
}

TEST_F(ZapperFavourites, AChannelLeavesTheCurrentGroupFromAnotherView) {
  viewer user(interactive());
  make_three_groups(user);
  user.type_all({"fav 1", "tv"});

  EXPECT_EQ(user.answer("fav del"), "T\xC3\xA9l\xC3\xA9 Belv\xC3\xA9"
                                    "d\xC3\xA8re is no longer in Evening.\nTV 6> ");
  EXPECT_EQ(user.answer("fav del"), "T\xC3\xA9l\xC3\xA9 Belv\xC3\xA9"
                                    "d\xC3\xA8re is not in Evening.\nTV 6> ");
}

// Fills a group with 20 channels twice: under a tag, and under the tag behind it.
void fill_group(int tag) {
  const test_support::log_capture quiet(-1);
  group_st full = {0, 0, 4, "Full"};
  add_fav_group_info(full);
  for (int n = 0; n < MAX_FAV_NUM; ++n) {
    virtual_channel_st entry = get_channel_list()->vch[n % 20];
    entry.vch_tag = static_cast<std::int8_t>(n / 20 + tag);
    ASSERT_EQ(add_fav_virtual_channel(0, &entry), 0);
  }
}

TEST_F(ZapperFavourites, AGroupHoldsItsMost) {
  load();
  fill_group(1);
  save();
  viewer user(interactive());

  EXPECT_EQ(user.answer("fav add Full"), "Full is full; 40 channels are the most.\nALL 1> ");
}

TEST_F(ZapperFavourites, AMemberOfAFullGroupIsThereAlready) {
  load();
  fill_group(0);
  save();
  viewer user(interactive());

  EXPECT_EQ(user.answer("fav add Full"), "Northlight One HD is already in Full.\nALL 1> ");
}

TEST_F(ZapperFavourites, ThereIsRoomForTwentyGroups) {
  viewer user(interactive());
  for (int n = 1; n < MAX_FAV; ++n) {
    user.answer("fav new Group " + std::to_string(n));
  }

  EXPECT_TRUE(begins_with(user.answer("fav new Group 20"), "Group 20 is favourite group 20;"));
  EXPECT_EQ(user.answer("fav new Group 21"), "There is no room for another favourite group; 20 are the most.\nALL 1> ");
  user.type_all({"fav add 20", "fav move 20 1", "save"});

  const groups saved = saved_groups();
  ASSERT_EQ(saved.size(), 20U);
  EXPECT_EQ(saved.front(), (groups::value_type{"Group 20", {1}}));
  EXPECT_EQ(saved.back().first, "Group 19");
}

TEST_F(ZapperFavourites, ANameIsGivenOnce) {
  viewer user(interactive());
  user.type_all({"fav new Evening", "fav new Sport"});

  EXPECT_EQ(user.answer("fav new EVENING"), "There is a favourite group EVENING already.\nALL 1> ");
  EXPECT_EQ(user.answer("fav rename evening"), "There is a favourite group evening already.\nALL 1> ");
  EXPECT_EQ(user.answer("fav new"), "What name? fav new NAME\nALL 1> ");
  EXPECT_EQ(user.answer("fav rename"), "To what? fav rename NAME\nALL 1> ");
}

TEST_F(ZapperFavourites, TheCurrentGroupIsRenamed) {
  viewer user(interactive());
  make_three_groups(user);
  user.answer("fav 1");

  EXPECT_EQ(user.answer("fav rename Late"), "Favourite group 1 is now Late.\nFAV 1 6> ");
  user.answer("save");

  EXPECT_EQ(saved_groups().front(), (groups::value_type{"Late", {2, 4, 6}}));
  EXPECT_EQ(get_fav_group_info(0)->name_len, 4);
}

TEST_F(ZapperFavourites, ALongNameIsCutBeforeACharacter) {
  viewer user(interactive());

  user.type_all({"fav new " + std::string(95, 'n') + "\xC3\xBC", "fav new Short",
                 "fav rename " + std::string(96, 'm') + "more", "save"});

  const groups saved = saved_groups();
  ASSERT_EQ(saved.size(), 2U);
  EXPECT_EQ(saved[0].first, std::string(95, 'n'));
  EXPECT_EQ(saved[1].first, std::string(96, 'm'));
  EXPECT_EQ(get_fav_group_info(1)->name_len, 96);
}

TEST_F(ZapperFavourites, GroupsMoveWithTheirChannels) {
  viewer user(interactive());
  make_three_groups(user);

  EXPECT_EQ(user.answer("fav move 1 3"), "      1  Sport                          1 channel\n"
                                         ">     2  Empty                          0 channels\n"
                                         "      3  Evening                        3 channels\n"
                                         "ALL 6> ");
  user.answer("save");

  EXPECT_EQ(saved_groups(), (groups{{"Sport", {4}}, {"Empty", {}}, {"Evening", {2, 4, 6}}}));
}

TEST_F(ZapperFavourites, TheGroupOnTheScreenStaysThereWhenGroupsMove) {
  viewer user(interactive());
  make_three_groups(user);
  user.answer("fav 1");

  EXPECT_NE(user.answer("fav move 2 1").find("\n>     2  Evening "), std::string::npos);
  EXPECT_EQ(user.answer(""), "FAV 2 6> ");
  EXPECT_NE(user.answer("fav drop Sport").find("FAV 1 6> "), std::string::npos);
  EXPECT_EQ(tool_test::lines_of(user.answer("list")).size(), 4U);
}

TEST_F(ZapperFavourites, PlacesOutsideTheTableAreNoMove) {
  viewer user(interactive());
  make_three_groups(user);
  const std::string hint = "Which group, and where to? fav move FROM TO, with the numbers that fav shows\nALL 6> ";

  for (const char *places : {"", "1", "0 1", "1 0", "4 1", "1 4", "1 2 3", "one two", "-1 2"}) {
    EXPECT_EQ(user.answer(std::string("fav move ") + places), hint) << places;
  }
}

TEST_F(ZapperFavourites, ADroppedGroupLeavesItsChannels) {
  viewer user(interactive());
  make_three_groups(user);
  user.answer("fav 1");

  EXPECT_EQ(user.answer("fav drop 1"), "The favourite group Evening is dropped; its channels stay.\nALL 6> ");
  EXPECT_EQ(user.answer("fav add"), "Which group? fav lists them.\nALL 6> ");
  EXPECT_EQ(user.answer("fav drop"), "Which group? fav drop GROUP\nALL 6> ");
  EXPECT_EQ(user.answer("fav drop Evening"), "There is no favourite group Evening; fav lists them.\nALL 6> ");
  user.answer("save");

  EXPECT_EQ(saved_groups(), (groups{{"Sport", {4}}, {"Empty", {}}}));
  EXPECT_EQ(list.vnumber, 24);
}

TEST_F(ZapperFavourites, ANewGroupIsNotTheDroppedOne) {
  viewer user(interactive());
  user.type_all({"fav new Old", "fav add", "fav drop Old", "fav new New"});

  EXPECT_EQ(user.answer("fav"), ">     1  New                            0 channels\nALL 1> ");
}

TEST_F(ZapperFavourites, AChannelMovesWithinItsGroupAlone) {
  viewer user(interactive());
  make_three_groups(user);
  user.answer("fav 1");

  EXPECT_EQ(user.answer("move 1"), "T\xC3\xA9l\xC3\xA9 Belv\xC3\xA9"
                                   "d\xC3\xA8re is at place 1 of 3 in the FAV 1 view.\nFAV 1 6> ");
  user.answer("save");

  EXPECT_EQ(saved_groups().front().second, (std::vector<int>{6, 2, 4}));
  EXPECT_EQ(majors(VIEW_TV), (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 50, 51, 52, 53, 54, 55, 56, 57, 58}));
}

TEST_F(ZapperFavourites, ALoadForgetsUnsavedGroups) {
  viewer user(interactive());
  user.type_all({"fav new Evening", "fav add", "load"});

  EXPECT_EQ(user.answer("fav"), "There is no favourite group yet; fav new NAME makes one.\nALL 1> ");
}

}  // namespace
