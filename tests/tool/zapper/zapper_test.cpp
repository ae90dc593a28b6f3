// The example host with a user at a terminal: zapping, views, edits of one channel, mistakes.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tool/zapper/zapper_host.h"

namespace {

using tool_test::has_line;
using tool_test::terminal;
using tool_test::viewer;

using ZapperTerminal = tool_test::zapper_test;

TEST_F(ZapperTerminal, GreetsWithTheFirstChannelAndAPrompt) {
  terminal user(interactive());

  const std::string start = user.wait_for("ALL 1> ");

  EXPECT_TRUE(has_line(start, ">     1  Northlight One HD           S13.5E     11306 MHz H  V  401  A  402  PCR  401"))
      << start;
  EXPECT_TRUE(has_line(start, "Type help for the commands.")) << start;
}

TEST_F(ZapperTerminal, ZapsByNumberAndByStepsAroundTheEnds) {
  viewer user(interactive());

  EXPECT_EQ(user.answer("radio"),
            ">   900  Radio Lantern               S13.5E     11662 MHz H  V    -  A  812  PCR    -\n"
            "RADIO 900> ");
  EXPECT_EQ(user.answer("-"), ">   904  Delta Members Radio         S31.0E     11054 MHz V  V    -  A  342  PCR    -"
                              "  scrambled\nRADIO 904> ");
  EXPECT_EQ(user.answer("+").substr(0, 25), ">   900  Radio Lantern   ");
  EXPECT_EQ(user.answer("902").substr(0, 25), ">   902  Jazz & Tides    ");
  EXPECT_EQ(user.answer("5"), "There is no channel 5 in the RADIO view.\nRADIO 902> ");
  EXPECT_EQ(user.answer("32768"), "There is no channel 32768 in the RADIO view.\nRADIO 902> ");
  EXPECT_EQ(user.answer("99999999999999999999").substr(0, 20), "There is no channel ");
}

TEST_F(ZapperTerminal, PassesOverSkippedChannelsAndEndsWhenAllAreSkipped) {
  viewer user(interactive());
  user.answer("radio");
  for (const char *number : {"901", "902"}) {
    user.answer(number);
    EXPECT_NE(user.answer("skip").find("  skipped\n"), std::string::npos);
  }

  user.answer("900");
  EXPECT_EQ(user.answer("+").substr(0, 9), ">   903  ");
  EXPECT_EQ(user.answer("-").substr(0, 9), ">   900  ");

  for (const char *number : {"900", "903", "904"}) {
    user.answer(number);
    user.answer("skip");
  }
  EXPECT_EQ(user.answer("+"), "The RADIO view has no channel to stop at.\nRADIO 904> ");
  EXPECT_EQ(user.answer("-"), "The RADIO view has no channel to stop at.\nRADIO 904> ");
}

TEST_F(ZapperTerminal, EditsThatAreNotSavedAreLost) {
  viewer user(interactive());

  EXPECT_NE(user.answer("rename   New name  here ").find(">     1  New name  here   "), std::string::npos);
  EXPECT_NE(user.answer("lock").find("  locked\n"), std::string::npos);
  EXPECT_EQ(user.answer("lock").find("  locked\n"), std::string::npos);
  EXPECT_NE(user.answer("load").find(">     1  Northlight One HD "), std::string::npos);
}

TEST_F(ZapperTerminal, SavedEditsAreInTheFile) {
  viewer user(interactive());

  user.answer("RENAME Neuer Name \xC3\xBC");
  EXPECT_EQ(user.answer("save"), "list.dat is saved.\nALL 1> ");
  user.type("quit\n");

  EXPECT_EQ(user.exit_code(), 0);
  load();
  EXPECT_STREQ(get_channel(0)->name[0].text, "Neuer Name \xC3\xBC");
}

TEST_F(ZapperTerminal, ALongNameIsCutBeforeACharacter) {
  viewer user(interactive());

  user.answer("rename " + std::string(95, 'n') + "\xC3\xBC");
  user.answer("save");

  load();
  EXPECT_EQ(get_channel(0)->name[0].name_len, 95);
  EXPECT_STREQ(get_channel(0)->name[0].text, std::string(95, 'n').c_str());
}

TEST_F(ZapperTerminal, StaysOnTheChannelWhenTheViewChangesOrIsSorted) {
  viewer user(interactive());
  user.answer("54");

  EXPECT_EQ(user.answer("tv"), "TV 54> ");
  EXPECT_EQ(user.answer("sort transponder"), "The TV view is sorted by transponder.\nTV 54> ");
  const std::string info = user.answer("info");
  EXPECT_NE(info.find(">    54  Polarstern TV "), std::string::npos) << info;
  EXPECT_NE(info.find("place 1 of 18 in the TV view"), std::string::npos) << info;
  EXPECT_EQ(user.answer("sort number"), "The TV view is sorted by number.\nTV 54> ");
  EXPECT_NE(user.answer("info").find("place 14 of 18 in the TV view"), std::string::npos);
}

TEST_F(ZapperTerminal, EmptyViewsAreRefused) {
  viewer user(interactive());

  EXPECT_EQ(user.answer("user"), "The USER view is empty.\nALL 1> ");
}

TEST_F(ZapperTerminal, MistakesGetAHint) {
  viewer user(interactive());

  EXPECT_EQ(user.answer("sort size"), "By what? sort name, sort number or sort transponder\nALL 1> ");
  EXPECT_EQ(user.answer("rename"), "To what? rename NAME\nALL 1> ");
  EXPECT_EQ(user.answer("12a"), "Unknown command '12a'. Type help for the commands.\nALL 1> ");
  EXPECT_EQ(user.answer("   "), "ALL 1> ");
}

TEST_F(ZapperTerminal, HelpListsEveryCommand) {
  viewer user(interactive());

  const std::string help = user.answer("help");

  for (const char *word :
       {"NUMBER",  "+",        "-",          "all",      "tv",     "radio", "user",      "fav",     "list",
        "info",    "sort",     "lock",       "skip",     "rename", "save",  "load",      "help",    "quit",
        "back",    "history",  "satellite",  "provider", "genre",  "free",  "scrambled", "fav new", "fav add",
        "fav del", "fav move", "fav rename", "fav drop", "move",   "delete"}) {
    EXPECT_NE(help.find("  " + std::string(word) + " "), std::string::npos) << word;
  }
}

TEST_F(ZapperTerminal, ListShowsTheViewOrAPart) {
  viewer user(interactive());
  user.answer("radio");
  user.answer("903");

  const std::string whole = user.answer("list");
  const std::string part = user.answer("list 1");

  EXPECT_EQ(tool_test::lines_of(whole).size(), 6U) << whole;
  EXPECT_NE(whole.find("\n>   903  Polarstern H\xC3\xB6rspiel "), std::string::npos) << whole;
  EXPECT_EQ(tool_test::lines_of(part).size(), 2U) << part;
  EXPECT_EQ(part.substr(0, 9), ">   903  ");
}

TEST_F(ZapperTerminal, ALineThatIsTooLongIsOneLine) {
  viewer user(interactive());

  EXPECT_EQ(user.answer(std::string(600, 'x')).substr(0, 17), "Unknown command '");
  EXPECT_EQ(user.answer("2").substr(0, 9), ">     2  ");
}

TEST_F(ZapperTerminal, TheEndOfInputEndsIt) {
  viewer user(interactive());

  user.type("\x04");

  EXPECT_EQ(user.exit_code(), 0);
}

}  // namespace
