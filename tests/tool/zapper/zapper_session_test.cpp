// The example host when nobody is at a terminal: the session that it plays, what that leaves in the file, and its end
// when something is wrong.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tool/zapper/zapper_host.h"

namespace {

using test_support::majors;
using test_support::read_file;
using test_support::write_file;
using tool_test::has_line;
using tool_test::program_result;
using tool_test::run_program;

using ZapperSession = tool_test::zapper_test;

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
        "         Locked: here a receiver asks for the PIN.", "The TV view is sorted by name.", "list.dat is saved."}) {
    EXPECT_TRUE(has_line(result.out, line)) << line << "\nis missing in\n" << result.out;
  }
}

TEST_F(ZapperSession, ShowsGroupsHistoryFavouritesAndTheEndOfAChannel) {
  const program_result result = play();

  for (const char *line :
       {"      2  S31.0E                         5 channels", "USER 2> provider 1",
        "Belv\xC3\xA9\x64\xC3\xA8re: 1 of 18 channels of the TV view", "The TV view has no genres.",
        "free: 13 of 18 channels of the TV view", "scrambled: 5 of 18 channels of the TV view", "RADIO 900> back",
        "USER 51> history", "Evening is favourite group 1; fav add puts the channel on the screen there.",
        "Arena Live HD is now in Evening.", "Favourite group 2 is now Sunday.",
        "The favourite group Spare is dropped; its channels stay.", "      1  Sunday                         1 channel",
        "      2  Evening                        3 channels", "Arena Extra HD is at place 1 of 3 in the FAV 2 view.",
        "Silverscreen Classics is no longer in Evening.", "Harbour 7 is deleted.",
        "Kleine Wolke is at place 1 of 17 in the TV view."}) {
    EXPECT_TRUE(has_line(result.out, line)) << line << "\nis missing in\n" << result.out;
  }
}

TEST_F(ZapperSession, EndsWithTheProofThatItsEditsSurvived) {
  const std::vector<std::string> lines = tool_test::lines_of(play().out);

  ASSERT_GE(lines.size(), 4U);
  EXPECT_EQ(std::vector<std::string>(lines.end() - 4, lines.end()),
            (std::vector<std::string>{"The edited channel survived.", "The order of the TV view survived.",
                                      "The favourites survived.", "The deletion survived."}));
}

TEST_F(ZapperSession, LeavesItsEditsInTheFile) {
  ASSERT_EQ(play().exit_code, 0);

  load();
  const channel_st *edited = get_channel(get_channel_index(3));
  ASSERT_NE(edited, nullptr);
  EXPECT_STREQ(edited->name[0].text, "Edited by zapper");
  EXPECT_EQ(edited->name[0].name_len, 16);
  EXPECT_EQ(edited->flag, CHANNEL_FLAG_LOCKED | CHANNEL_FLAG_SKIP);
  EXPECT_EQ(get_vindex_type(), VIEW_TV);
  const std::vector<int> all = majors(VIEW_ALL);
  EXPECT_EQ(std::count(all.begin(), all.end(), 5), 0);
  EXPECT_EQ(all.size(), 23U);
  const std::vector<int> tv = majors(VIEW_TV);
  EXPECT_EQ(std::vector<int>(tv.begin(), tv.begin() + 4), (std::vector<int>{56, 53, 52, 4}));
  ASSERT_EQ(get_fav_group_number(), 2);
  EXPECT_STREQ(get_fav_group_info(0)->name, "Sunday");
  EXPECT_STREQ(get_fav_group_info(1)->name, "Evening");
  EXPECT_EQ(majors(VIEW_FAVOURITE), (std::vector<int>{53}));
  EXPECT_EQ(majors(VIEW_FAVOURITE + 1), (std::vector<int>{53, 52}));
}

TEST_F(ZapperSession, CanBePlayedAgain) {
  for (int time = 1; time <= 4; ++time) {
    const program_result result = play();
    EXPECT_EQ(result.exit_code, 0) << time << '\n' << result.out;
  }
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

}  // namespace
