// Lists of services by group in the example host, and the way back through the history.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "tool/zapper/zapper_host.h"

namespace {

using test_support::majors;
using tool_test::begins_with;
using tool_test::lines_of;
using tool_test::viewer;

class ZapperGroups : public tool_test::zapper_test {
 protected:
  // Genres "Sport" (id 4) for channels 52, 53 and 901, "News" (id 0, never listed) for the others.
  void give_genres() {
    load();
    const test_support::log_capture quiet(-1);
    list.genre[0] = {0, 0, 4, "News"};
    list.genre[1] = {0, 4, 5, "Sport"};
    list.genre_num = 2;
    for (const int major : {52, 53, 901}) {
      get_channel(get_channel_index(static_cast<std::int16_t>(major)))->genre_id = 4;
    }
    save();
  }
};

using ZapperHistory = ZapperGroups;

TEST_F(ZapperGroups, ProvidersOfTheTvViewAreListedWithNumbers) {
  viewer user(interactive());

  EXPECT_EQ(user.answer("provider"), "      1  Belv\xC3\xA9"
                                     "d\xC3\xA8re                      1 channel\n"
                                     "      2  Delta Vision                   2 channels\n"
                                     "      3  Fjordkast                      1 channel\n"
                                     "      4  Lanterna TV                    1 channel\n"
                                     "      5  Meridian                       3 channels\n"
                                     "      6  Northlight Media               2 channels\n"
                                     "      7  Polarstern                     3 channels\n"
                                     "      8  Quayside                       1 channel\n"
                                     "      9  Silverscreen                   4 channels\n"
                                     "ALL 1> ");
}

TEST_F(ZapperGroups, OneWhoListensToTheRadioGetsItsProviders) {
  viewer user(interactive());
  user.answer("901");

  EXPECT_EQ(lines_of(user.answer("provider")).size(), 5U);
  EXPECT_EQ(user.answer("provider quayside"), "Quayside: 2 of 5 channels of the RADIO view\nUSER 901> ");
  EXPECT_EQ(user.answer("provider Meridian"),
            "The RADIO view has no provider Meridian; provider lists them.\nUSER 901> ");
}

TEST_F(ZapperGroups, AGroupIsTheUserView) {
  viewer user(interactive());

  const std::string shown = user.answer("provider 9");
  EXPECT_TRUE(begins_with(shown, "Silverscreen: 4 of 18 channels of the TV view\n>    50  Silverscre"));
  EXPECT_TRUE(begins_with(user.answer("-"), ">    53  Arena Extra HD   "));
  EXPECT_NE(user.answer("provider").find("\n>     9  Silverscreen "), std::string::npos);
  EXPECT_EQ(user.answer("1"), "There is no channel 1 in the USER view.\nUSER 53> ");
  EXPECT_EQ(user.answer("tv"), "TV 53> ");
  EXPECT_EQ(user.answer("provider").find(">     9"), std::string::npos) << "no group is on the screen";
}

TEST_F(ZapperGroups, TheSelectionIsSavedWithTheList) {
  viewer user(interactive());

  user.type_all({"provider Silverscreen", "save"});

  load();
  EXPECT_EQ(get_vindex_type(), VIEW_USER);
  EXPECT_EQ(majors(VIEW_USER), (std::vector<int>{50, 51, 52, 53}));
  EXPECT_EQ(get_use_group_list(), GROUP_PROVIDER);
  EXPECT_EQ(get_current_service_type(), VIEW_TV);
  EXPECT_STREQ(find_provider_id(get_current_sub_group_id())->name, "Silverscreen");
}

TEST_F(ZapperGroups, NamesThatDifferInCaseAreTold) {
  tool_test::run_program({"/bin/sh", "-c",
                          "printf 'A;abc:12000:H:S1E:0:101:0:0:0:1:1:1:0\\nB;ABC:12000:H:S1E:0:101:0:0:0:2:1:1:0\\n' "
                          ">lines && " CHLIST_PROGRAM " import lines -o list.dat"},
                         dir.path());
  viewer user(interactive());

  EXPECT_NE(user.answer("provider ABC").find(">     2  B "), std::string::npos);
  EXPECT_NE(user.answer("provider abc").find(">     1  A "), std::string::npos);
  EXPECT_NE(user.answer("provider Abc").find("abc: 1 of 2 channels"), std::string::npos);
}

TEST_F(ZapperGroups, SatellitesAreListedByTheirNetworks) {
  viewer user(interactive());

  EXPECT_EQ(user.answer("satellite"), "      1  S13.5E                        13 channels\n"
                                      "      2  S31.0E                         5 channels\n"
                                      "ALL 1> ");
  EXPECT_TRUE(begins_with(user.answer("satellite 2"), "S31.0E: 5 of 18 channels of the TV view\n>    54  "));
  EXPECT_TRUE(begins_with(user.answer("satellite s13.5e"), "S13.5E: 13 of 18 channels of the TV view"));
  EXPECT_NE(user.answer("satellite").find(">     1  S13.5E "), std::string::npos);
}

TEST_F(ZapperGroups, GenresAreListedWhenThereAreAny) {
  {
    viewer user(interactive());
    EXPECT_EQ(user.answer("genre"), "The TV view has no genres.\nALL 1> ");
    EXPECT_EQ(user.answer("genre 1"), "The TV view has no genres.\nALL 1> ");
  }
  give_genres();
  viewer user(interactive());

  EXPECT_EQ(user.answer("genre"), "      1  Sport                          2 channels\nALL 1> ");
  EXPECT_TRUE(begins_with(user.answer("genre sport"), "Sport: 2 of 18 channels of the TV view\n>    52  "));
}

TEST_F(ZapperGroups, FreeAndScrambledChannelsAreTwoGroups) {
  viewer user(interactive());

  EXPECT_EQ(user.answer("free"), "free: 13 of 18 channels of the TV view\nUSER 1> ");
  EXPECT_TRUE(begins_with(user.answer("scrambled"), "scrambled: 5 of 18 channels of the TV view\n>    50  "));
  user.answer("904");
  EXPECT_EQ(user.answer("all"), "ALL 50> ");
  user.answer("904");
  EXPECT_EQ(user.answer("scrambled"), "scrambled: 1 of 5 channels of the RADIO view\nUSER 904> ");
}

TEST_F(ZapperGroups, AnEmptyGroupLeavesTheListOnTheScreen) {
  load();
  for (int n = 0; n < list.vnumber; ++n) {
    list.vch[n].rch->flag = 0;
  }
  save();
  viewer user(interactive());
  user.answer("provider Meridian");

  EXPECT_EQ(user.answer("scrambled"), "The TV view has no channel that is scrambled.\nUSER 7> ");
  EXPECT_EQ(lines_of(user.answer("list")).size(), 4U);
}

TEST_F(ZapperGroups, UnknownGroupsGetAHint) {
  viewer user(interactive());

  EXPECT_EQ(user.answer("provider 10"), "The TV view has no provider 10; provider lists them.\nALL 1> ");
  EXPECT_EQ(user.answer("provider 0"), "The TV view has no provider 0; provider lists them.\nALL 1> ");
  EXPECT_EQ(user.answer("satellite Moon"), "The TV view has no satellite Moon; satellite lists them.\nALL 1> ");
}

TEST_F(ZapperHistory, BackIsTheChannelBeforeAndThenThisOneAgain) {
  viewer user(interactive());
  EXPECT_EQ(user.answer("back"), "There is no channel to go back to.\nALL 1> ");
  user.answer("5");
  user.answer("7");

  EXPECT_TRUE(begins_with(user.answer("back"), ">     5  "));
  EXPECT_TRUE(begins_with(user.answer("back"), ">     7  "));
}

TEST_F(ZapperHistory, TheLatestChannelStandsFirst) {
  viewer user(interactive());
  user.type_all({"5", "7", "5"});

  const std::vector<std::string> lines = lines_of(user.answer("history"));

  ASSERT_EQ(lines.size(), 4U);
  EXPECT_TRUE(begins_with(lines[0], ">     5  "));
  EXPECT_TRUE(begins_with(lines[1], "      7  "));
  EXPECT_TRUE(begins_with(lines[2], "      1  "));
}

TEST_F(ZapperHistory, BackLeadsToTheGroupListOfTheChannel) {
  viewer user(interactive());
  user.type_all({"provider Silverscreen", "52", "radio"});

  EXPECT_NE(user.answer("back").find("\nUSER 52> "), std::string::npos);
  EXPECT_EQ(lines_of(user.answer("list")).size(), 5U);
  EXPECT_NE(user.answer("back").find("\nRADIO 900> "), std::string::npos);
}

TEST_F(ZapperHistory, BackLeadsToTheSatelliteOfTheChannel) {
  viewer user(interactive());
  user.type_all({"satellite 2", "56", "satellite 1", "3"});

  user.answer("back");
  EXPECT_NE(user.answer("back").find(">     3  "), std::string::npos);
  user.type_all({"all", "satellite 2", "radio"});

  EXPECT_NE(user.answer("back").find("\nUSER 54> "), std::string::npos);
  EXPECT_EQ(lines_of(user.answer("list")).size(), 6U);
}

TEST_F(ZapperHistory, BackLeadsToTheFavouriteGroupOfTheChannelWhereverItIsNow) {
  viewer user(interactive());
  user.type_all({"fav new Other", "3", "fav add", "fav new Evening", "5", "fav add", "fav 2", "radio", "fav move 2 1"});

  EXPECT_NE(user.answer("back").find("\nFAV 1 5> "), std::string::npos);
}

TEST_F(ZapperHistory, AListThatIsGoneGivesWay) {
  viewer user(interactive());
  user.type_all({"fav new Evening", "5", "fav add", "fav 1", "radio", "fav drop 1"});

  EXPECT_NE(user.answer("back").find("\nALL 5> "), std::string::npos);
}

TEST_F(ZapperHistory, BackFromAGroupListLeadsToTheTvOrRadioViewThatWasInUse) {
  viewer user(interactive());
  user.type_all({"radio", "tv", "3", "provider Silverscreen"});
  EXPECT_NE(user.answer("back").find("\nTV 3> "), std::string::npos);

  user.type_all({"radio", "901", "provider Polarstern"});
  EXPECT_NE(user.answer("back").find("\nRADIO 901> "), std::string::npos);
}

TEST_F(ZapperHistory, BackFromAGroupListLeadsToAllForAChannelThatIsNeitherTvNorRadio) {
  viewer user(interactive());
  user.type_all({"905", "provider Silverscreen"});

  EXPECT_NE(user.answer("back").find("\nALL 905> "), std::string::npos);
}

TEST_F(ZapperHistory, TheListOfAChannelIsTheOneItWasSeenInLast) {
  viewer user(interactive());
  user.type_all({"51", "provider Silverscreen", "radio"});

  EXPECT_NE(user.answer("back").find("\nUSER 51> "), std::string::npos);
}

TEST_F(ZapperHistory, AChannelThatNoViewHasLeadsNowhere) {
  load();
  {
    const test_support::log_capture quiet(-1);
    add_fav_group_info({0, 0, 4, "Only"});
    ASSERT_EQ(add_fav_virtual_channel(0, &list.vch[4]), 0);
    vtype_remove_by_vindex(4, VIEW_ALL);
    vtype_remove_by_vindex(4, VIEW_TV);
  }
  save();
  viewer user(interactive());
  user.type_all({"fav 1", "radio", "fav drop 1"});

  EXPECT_EQ(user.answer("back"), "That channel is no longer in the list.\nALL 900> ");
}

TEST_F(ZapperHistory, LockedChannelsAreNotWatched) {
  viewer user(interactive());
  user.type_all({"5", "lock", "7", "5"});

  EXPECT_TRUE(begins_with(user.answer("back"), ">     7  "));
}

TEST_F(ZapperHistory, ALoadBeginsItAnew) {
  viewer user(interactive());
  user.type_all({"5", "7", "load"});

  EXPECT_EQ(lines_of(user.answer("history")).size(), 2U);
}

}  // namespace
