// What shells offer for a word: from the commands' rows, and from the file on the line.
#include "chlist/complete.h"

#include <algorithm>
#include <string>
#include <vector>

#include "chlist/command_table.h"
#include "tool/chlist_host.h"

namespace {

using chlist::completions;
using chlist::term;
using chlist::words_of;
using chlist::words_of_line;
using tool_test::program_result;

class Complete : public tool_test::chlist_test {
 protected:
  void SetUp() override {
    chlist_test::SetUp();
    const tool_test::service_data news = {.service_id = 1, .name = "News HD"};
    const tool_test::service_data films = {.service_id = 2, .name = "Films"};
    const tool_test::service_data twin = {.service_id = 3, .name = "Films"};
    tool_test::channel_file file;
    file.service(news).service(films).service(twin).entry(VIEW_ALL, news, 1).entry(VIEW_FAVOURITE, news, 1);
    file.group(GROUP_FAV, 0, "Best").group(GROUP_FAV, 1, "Kids");
    tool_test::write_file(path("list.dat"), file.data);
  }

  std::vector<std::string> offered(std::vector<std::string> words) {
    for (std::string &word : words) {
      word = word == "list.dat" ? path("list.dat") : word;
    }
    return words_of(completions(program, words));
  }

  int log_level = 0;
  const chlist::command program = chlist::whole_program(log_level);
};

using words = std::vector<std::string>;

TEST_F(Complete, CommandsByTheirBeginning) {
  EXPECT_EQ(offered({"re"}), (words{"report", "rename", "renumber", "remove", "redo", "restore"}));
  EXPECT_EQ(offered({"fav", "re"}), (words{"remove", "rename"}));
  EXPECT_EQ(offered({"help", "li"}), words{"list"});
  EXPECT_EQ(offered({"help", "fav", "n"}), words{"new"});
  EXPECT_EQ(offered({""}).size(), program.commands.size());
  EXPECT_EQ(offered({}), words{});
}

TEST_F(Complete, OptionsOfTheCommandAndOfTheProgram) {
  EXPECT_EQ(offered({"list", "--f"}), (words{"--filter", "--format"}));
  EXPECT_EQ(offered({"list", "list.dat", "--lo"}), words{"--log-level"});
  EXPECT_EQ(offered({"--v"}), words{"--version"});
  EXPECT_EQ(offered({"fav", "move", "list.dat", "--be"}), words{"--before"});
}

TEST_F(Complete, WordsThatAnOptionTakes) {
  EXPECT_EQ(offered({"list", "--format", ""}), (words{"table", "csv", "json"}));
  EXPECT_EQ(offered({"list", "--sort", "n"}), (words{"number", "name"}));
  EXPECT_EQ(offered({"sort", "list.dat", "--by", "t"}), words{"transponder"});
  EXPECT_EQ(offered({"import", "--from", "lamedb"}), (words{"lamedb4", "lamedb5", "lamedb3"}));
  EXPECT_EQ(offered({"export", "list.dat", "--to", "m"}), words{"m3u"});
}

TEST_F(Complete, ColumnsFiltersAndFields) {
  EXPECT_EQ(offered({"list", "--columns", "video_p"}), words{"video_pid"});
  EXPECT_EQ(offered({"list", "--columns", "number,video_p"}), words{"number,video_pid"});
  EXPECT_EQ(offered({"list", "--filter", "loc"}), words{"locked="});
  EXPECT_EQ(offered({"set", "list.dat", "Films", "video_p"}), words{"video_pid="});
  EXPECT_EQ(offered({"set", "list.dat", "Films", "video_pid=7", "pcr"}), words{"pcr_pid="});
}

TEST_F(Complete, ValuesOfFieldsByTheirWords) {
  EXPECT_EQ(offered({"list", "--filter", "locked="}), (words{"locked=yes", "locked=no"}));
  EXPECT_EQ(
      offered({"list", "--filter", "type=H"}),
      (words{"type=HD TV", "type=HD NVOD time-shifted", "type=HD NVOD reference", "type=HEVC TV", "type=HEVC UHD TV"}));
  EXPECT_EQ(offered({"set", "list.dat", "Films", "polarisation="}), (words{"polarisation=H", "polarisation=V"}));
  EXPECT_EQ(offered({"set", "list.dat", "Films", "video_pid="}), words{"video_pid=none"});
  EXPECT_EQ(offered({"set", "list.dat", "Films", "name="}), words{});
  EXPECT_EQ(offered({"set", "list.dat", "Films", "nothing="}), words{});
}

TEST_F(Complete, ConditionsOfWhichTheLastIsBeingTyped) {
  EXPECT_EQ(offered({"list", "--where", "loc"}), words{"locked="});
  EXPECT_EQ(offered({"keep", "list.dat", "--where", "locked="}), (words{"locked=yes", "locked=no"}));
  EXPECT_EQ(offered({"list", "--where", "locked!=y"}), words{"locked!=yes"});
  EXPECT_EQ(offered({"list", "--where", "type=TV loc"}), words{"type=TV locked="});
  EXPECT_EQ(offered({"list", "--where", "not (type=TV or locked=n"}), words{"not (type=TV or locked=no"});
}

TEST_F(Complete, ValuesWithBlanksStandInQuotesInAConditionOnly) {
  EXPECT_EQ(offered({"list", "--where", "type=\"HD T"}), words{"type=\"HD TV\""});
  EXPECT_EQ(offered({"list", "--where", "type='HD T"}), words{"type='HD TV'"});
  EXPECT_EQ(offered({"list", "--where", "type='ra"}), words{"type='radio'"});
  EXPECT_EQ(offered({"list", "--where", "type=\"HD TV\" loc"}), words{"type=\"HD TV\" locked="});
  const words types = offered({"list", "--where", "type="});
  EXPECT_NE(std::ranges::find(types, "type=TV"), types.end());
  EXPECT_NE(std::ranges::find(types, "type=\"HD TV\""), types.end());
}

TEST_F(Complete, ViewsGroupsAndServicesOfTheFileOnTheLine) {
  EXPECT_EQ(offered({"list", "list.dat", "--view", ""}),
            (words{"all", "tv", "radio", "user", "promo", "fav:Best", "fav:Kids"}));
  EXPECT_EQ(offered({"list", "--view", ""}), (words{"all", "tv", "radio", "user", "promo"}));
  EXPECT_EQ(offered({"fav", "list", "list.dat", ""}), (words{"Best", "Kids"}));
  EXPECT_EQ(offered({"fav", "add", "list.dat", "Best", "N"}), words{"News HD"});
  EXPECT_EQ(offered({"show", "list.dat", ""}), (words{"News HD", "Films"}));
  EXPECT_EQ(offered({"lock", "list.dat", "Films", "N"}), words{"News HD"});
  EXPECT_EQ(offered({"move", "list.dat", "Films", "--before", "N"}), words{"News HD"});
}

TEST_F(Complete, NothingWhereAFileIsMeant) {
  EXPECT_EQ(offered({"list", ""}), words{});
  EXPECT_EQ(offered({"import", "x", "-o", ""}), words{});
  EXPECT_EQ(offered({"info", "list.dat", ""}), words{});
}

TEST_F(Complete, BehindTheEndOfOptionsThereAreArguments) {
  EXPECT_EQ(offered({"show", "--", "list.dat", "-"}), words{});
  EXPECT_EQ(offered({"show", "--", "list.dat", "N"}), words{"News HD"});
}

TEST_F(Complete, IsQuietAboutWhatIsWrong) {
  EXPECT_EQ(offered({"show", "none.dat", ""}), words{});
  EXPECT_EQ(offered({"nonsense", "x", ""}), words{});
  const program_result result = run({"complete", "show", "none.dat", ""});
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.out + result.err, "");
}

TEST_F(Complete, PrintsWordsWithTheirMeanings) {
  const program_result result = run({"complete", "--line", "chlist show list.dat New"});
  EXPECT_EQ(result.out, "News HD\tTV, 1:1:100:11000000H:1\n");
  EXPECT_EQ(result.err, "");
}

TEST_F(Complete, IsNotInTheHelp) {
  const program_result help = run({"help"});
  EXPECT_EQ(help.out.find("complete"), std::string::npos) << help.out;
}

TEST(WordsOfALine, AreTakenApartAsAShellDoes) {
  EXPECT_EQ(words_of_line("chlist  list a"), (words{"chlist", "list", "a"}));
  EXPECT_EQ(words_of_line("chlist "), (words{"chlist", ""}));
  EXPECT_EQ(words_of_line("a\\ b 'c d' \"e \\\" f\""), (words{"a b", "c d", "e \" f"}));
  EXPECT_EQ(words_of_line("x 'open one"), (words{"x", "open one"}));
  EXPECT_EQ(words_of_line("x ''"), (words{"x", ""}));
  EXPECT_EQ(words_of_line(""), words{""});
}

}  // namespace
