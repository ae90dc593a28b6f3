// The example host as it is run: its own session, what that leaves in the file, and a user at a terminal.
#include <channel/channel.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/temp_dir.h"
#include "tool/program.h"

namespace {

using test_support::read_file;
using test_support::write_file;
using tool_test::has_line;
using tool_test::program_result;
using tool_test::run_program;
using tool_test::terminal;

class Zapper : public test_support::store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    ASSERT_EQ(run_program({CHLIST_PROGRAM, "import", CHANNEL_SAMPLES_DIR "/channels.conf", "-o", file}).exit_code, 0);
  }

  program_result play(const std::string &name = "list.dat") const {
    return run_program({ZAPPER_PROGRAM, dir.path(), name});
  }

  std::vector<std::string> interactive() const { return {ZAPPER_PROGRAM, dir.path(), "list.dat"}; }

  void load() const {
    const test_support::log_capture quiet(-1);
    const test_support::fd_capture out(STDOUT_FILENO);
    set_target_dir(dir.path().c_str());
    ASSERT_EQ(load_channel("list.dat", 255), CHANNEL_LIST_VERSION);
  }

  test_support::temp_dir dir;
  std::string file = dir.path() + "list.dat";
};

using ZapperSession = Zapper;
using ZapperTerminal = Zapper;

TEST_F(ZapperSession, ShowsWhatIsTypedAndWhatComesOfIt) {
  const program_result result = play();

  EXPECT_EQ(result.exit_code, 0) << result.out << result.err;
  EXPECT_EQ(result.err, "");
  for (const char *line :
       {"list.dat: 24 channels, 18 TV, 5 radio", "ALL 1> radio",
        ">   900  Radio Lantern               S13.5E     11662 MHz H  V    -  A  812  PCR    -", "RADIO 900> all",
        "ALL 900> tv", "TV 1> list 10",
        "      8  Ticker:Europe               S13.5E     11623 MHz V  V  621  A  622  PCR  621",
        "     50  Silverscreen Premi\xC3\xA8re HD    S13.5E     12111 MHz V  V  701  A  702  PCR  701  scrambled",
        "TV 3> 99999", "There is no channel 99999 in the TV view.",
        "Unknown command 'colour'. Type help for the commands.",
        ">     3  Edited by zapper            S13.5E     11345 MHz V  V  501  A  502  PCR  501  locked  skipped",
        "TV 2> +", ">     4  Citt\xC3\xA0 Viva                  S13.5E     11345 MHz V  V  511  A  512  PCR  511",
        "         Locked: here a receiver asks for the PIN.", "The TV view is sorted by name.", "list.dat is saved.",
        "The edits survived."}) {
    EXPECT_TRUE(has_line(result.out, line)) << line << "\nis missing in\n" << result.out;
  }
}

TEST_F(ZapperSession, LeavesItsEditsInTheFile) {
  play();

  load();
  const channel_st *edited = get_channel(get_channel_index(3));
  ASSERT_NE(edited, nullptr);
  EXPECT_STREQ(edited->name[0].text, "Edited by zapper");
  EXPECT_EQ(edited->name[0].name_len, 16);
  EXPECT_EQ(edited->flag, CHANNEL_FLAG_LOCKED | CHANNEL_FLAG_SKIP);
  EXPECT_EQ(get_vindex_type(), VIEW_TV);
  EXPECT_STREQ(get_channel(0)->name[0].text, "Arena Extra HD");
  EXPECT_STREQ(get_channel(1)->name[0].text, "Arena Live HD");
}

TEST_F(ZapperSession, CanBePlayedAgain) {
  EXPECT_EQ(play().exit_code, 0);
  EXPECT_EQ(play().exit_code, 0);
}

TEST_F(ZapperSession, AMissingFileEndsIt) {
  const program_result result = play("missing.dat");

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_TRUE(has_line(result.out, "missing.dat cannot be opened.")) << result.out;
  EXPECT_EQ(result.err, "");
}

TEST_F(ZapperSession, AShortFileEndsIt) {
  std::string bytes = read_file(file);
  bytes.pop_back();
  write_file(file, bytes);

  const program_result result = play();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_TRUE(has_line(result.out, "list.dat is too short: damaged, or no channel file.")) << result.out;
}

TEST_F(ZapperSession, AnotherVersionEndsIt) {
  std::string bytes = read_file(file);
  bytes[0] = 9;
  write_file(file, bytes);

  const program_result result = play();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_TRUE(has_line(result.out, "list.dat is of another version and must be converted first.")) << result.out;
}

TEST_F(ZapperSession, AnEmptyListHasNothingToEdit) {
  {
    const test_support::log_capture quiet(-1);
    set_target_dir(dir.path().c_str());
    reset_channel_list();
    ASSERT_EQ(save_channel("list.dat"), 1);
  }

  const program_result result = play();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_TRUE(has_line(result.out, "The ALL view has no channel to stop at.")) << result.out;
  EXPECT_TRUE(has_line(result.out, "There is no channel on the screen.")) << result.out;
}

TEST_F(ZapperSession, AFileThatCannotBeWrittenIsReported) {
  const std::string limited = "trap '' XFSZ; ulimit -f 100; exec " ZAPPER_PROGRAM " " + dir.path() + " list.dat";

  const program_result result = run_program({"/bin/sh", "-c", limited});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_TRUE(has_line(result.out, "list.dat could not be saved.")) << result.out;
}

TEST_F(ZapperSession, UsageIsShownForOtherArguments) {
  EXPECT_EQ(run_program({ZAPPER_PROGRAM}).exit_code, 1);
  EXPECT_EQ(run_program({ZAPPER_PROGRAM, dir.path()}).err.substr(0, 6), "Usage:");
  EXPECT_EQ(run_program({ZAPPER_PROGRAM, "--quiet", "1", dir.path(), "list.dat"}).exit_code, 1);
}

TEST_F(ZapperSession, TheDirectoryMayLackItsSlash) {
  std::string without_slash = dir.path();
  without_slash.pop_back();

  EXPECT_EQ(run_program({ZAPPER_PROGRAM, without_slash, "list.dat"}).exit_code, 0);
}

TEST_F(ZapperSession, ADirectoryThatIsTooLongIsRefused) {
  const std::string longest = "/" + std::string(29, '/') + "/";

  EXPECT_EQ(run_program({ZAPPER_PROGRAM, longest, "none"}).err, "");
  EXPECT_EQ(run_program({ZAPPER_PROGRAM, longest + "/", "none"}).err,
            "zapper: the directory's name is too long; change into it and give ./\n");
  EXPECT_EQ(run_program({ZAPPER_PROGRAM, std::string(500, 'd'), "none"}).exit_code, 1);
}

TEST_F(ZapperSession, VerboseLetsTheLibrarySpeak) {
  const program_result result = run_program({ZAPPER_PROGRAM, "--verbose", "0", dir.path(), "list.dat"});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_NE(result.err.find("ERROR: "), std::string::npos) << result.err;
}

TEST_F(ZapperTerminal, GreetsWithTheFirstChannelAndAPrompt) {
  terminal user(interactive());

  const std::string start = user.wait_for("ALL 1> ");

  EXPECT_TRUE(has_line(start, ">     1  Northlight One HD           S13.5E     11306 MHz H  V  401  A  402  PCR  401"))
      << start;
  EXPECT_TRUE(has_line(start, "Type help for the commands.")) << start;
}

TEST_F(ZapperTerminal, ZapsByNumberAndByStepsAroundTheEnds) {
  terminal user(interactive());
  user.wait_for("ALL 1> ");

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
  terminal user(interactive());
  user.wait_for("ALL 1> ");
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
  terminal user(interactive());
  user.wait_for("ALL 1> ");

  EXPECT_NE(user.answer("rename   New name  here ").find(">     1  New name  here   "), std::string::npos);
  EXPECT_NE(user.answer("lock").find("  locked\n"), std::string::npos);
  EXPECT_EQ(user.answer("lock").find("  locked\n"), std::string::npos);
  EXPECT_NE(user.answer("load").find(">     1  Northlight One HD "), std::string::npos);
}

TEST_F(ZapperTerminal, SavedEditsAreInTheFile) {
  terminal user(interactive());
  user.wait_for("ALL 1> ");

  user.answer("RENAME Neuer Name \xC3\xBC");
  EXPECT_EQ(user.answer("save"), "list.dat is saved.\nALL 1> ");
  user.type("quit\n");

  EXPECT_EQ(user.exit_code(), 0);
  load();
  EXPECT_STREQ(get_channel(0)->name[0].text, "Neuer Name \xC3\xBC");
}

TEST_F(ZapperTerminal, ALongNameIsCutBeforeACharacter) {
  terminal user(interactive());
  user.wait_for("ALL 1> ");

  user.answer("rename " + std::string(95, 'n') + "\xC3\xBC");
  user.answer("save");

  load();
  EXPECT_EQ(get_channel(0)->name[0].name_len, 95);
  EXPECT_STREQ(get_channel(0)->name[0].text, std::string(95, 'n').c_str());
}

TEST_F(ZapperTerminal, StaysOnTheChannelWhenTheViewChangesOrIsSorted) {
  terminal user(interactive());
  user.wait_for("ALL 1> ");
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
  terminal user(interactive());
  user.wait_for("ALL 1> ");

  EXPECT_EQ(user.answer("user"), "The USER view is empty.\nALL 1> ");
  EXPECT_EQ(user.answer("fav 1"), "The FAV 1 view is empty.\nALL 1> ");
  EXPECT_EQ(user.answer("fav 20"), "The FAV 20 view is empty.\nALL 1> ");
}

TEST_F(ZapperTerminal, AFavouriteGroupIsAView) {
  {
    load();
    const test_support::log_capture quiet(-1);
    test_support::append_entry(VIEW_FAVOURITE + 1, list.vch[4]);
    ASSERT_EQ(save_channel("list.dat"), 1);
  }
  terminal user(interactive());
  user.wait_for("ALL 1> ");

  EXPECT_EQ(user.answer("fav 2").substr(0, 18), ">     5  Harbour 7");
}

TEST_F(ZapperTerminal, MistakesGetAHint) {
  terminal user(interactive());
  user.wait_for("ALL 1> ");

  EXPECT_EQ(user.answer("fav"), "Which group? fav 1 to fav 20\nALL 1> ");
  EXPECT_EQ(user.answer("fav 21"), "Which group? fav 1 to fav 20\nALL 1> ");
  EXPECT_EQ(user.answer("sort size"), "By what? sort name, sort number or sort transponder\nALL 1> ");
  EXPECT_EQ(user.answer("rename"), "To what? rename NAME\nALL 1> ");
  EXPECT_EQ(user.answer("12a"), "Unknown command '12a'. Type help for the commands.\nALL 1> ");
  EXPECT_EQ(user.answer("   "), "ALL 1> ");
}

TEST_F(ZapperTerminal, HelpListsEveryCommand) {
  terminal user(interactive());
  user.wait_for("ALL 1> ");

  const std::string help = user.answer("help");

  for (const char *word : {"NUMBER", "+", "-", "all", "tv", "radio", "user", "fav", "list", "info", "sort", "lock",
                           "skip", "rename", "save", "load", "help", "quit"}) {
    EXPECT_NE(help.find("  " + std::string(word) + " "), std::string::npos) << word;
  }
}

TEST_F(ZapperTerminal, ListShowsTheViewOrAPart) {
  terminal user(interactive());
  user.wait_for("ALL 1> ");
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
  terminal user(interactive());
  user.wait_for("ALL 1> ");

  EXPECT_EQ(user.answer(std::string(600, 'x')).substr(0, 17), "Unknown command '");
  EXPECT_EQ(user.answer("2").substr(0, 9), ">     2  ");
}

TEST_F(ZapperTerminal, TheEndOfInputEndsIt) {
  terminal user(interactive());
  user.wait_for("ALL 1> ");

  user.type("\x04");

  EXPECT_EQ(user.exit_code(), 0);
}

}  // namespace
