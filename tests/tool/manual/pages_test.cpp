// Manual pages as man shows them, and completions as the shells run them.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "chlist/command_table.h"
#include "chlist/manual/completion.h"
#include "chlist/manual/manual_page.h"
#include "support/channel_file.h"
#include "support/temp_dir.h"
#include "tool/program.h"

namespace {

using chlist::called_command;
using chlist::command;
using tool_test::program_result;
using tool_test::run_program;

bool a_flag;
std::string a_text;
std::vector<std::string> texts;

command program_with_commands() {
  command copy = {
      .name = "copy",
      .summary = "Copy a list",
      .details = {".first line"},
      .exit_codes = {{"0", "done"}},
      .examples = {"tool copy 'a b' c\\d"},
      .options =
          {{.names = "FROM", .target = &a_text, .about = "what to read", .is_required = true},
           {.names = "TO", .target = &texts, .about = "what to write"},
           {.names = "-o,--order",
            .target = &a_text,
            .about = "it's the order",
            .value = "ORDER",
            .choices = {"name", "number"}},
           {.names = "--dry-run", .target = &a_flag, .about = "write [nothing]: none"},
           {.names = "-x,--except", .target = &texts, .about = "not this one", .value = "NAME"},
           {.names = "--tag", .target = &texts, .about = "with a tag", .value = "TAG"},
           {.names = "-q,--queue", .target = &a_text, .about = "where to", .value = "QUEUE", .is_required = true}},
      .commands = {{.name = "all", .summary = "Copy everything"}}};
  return {.name = "tool", .summary = "Works on lists", .commands = {copy}};
}

class Pages : public testing::Test {
 protected:
  std::string written(const std::string &name, const std::string &text) const {
    test_support::write_file(dir.path() + name, text);
    return dir.path() + name;
  }

  static bool has(const std::string &program) {
    return run_program({"/bin/sh", "-c", "command -v " + program}).exit_code == 0;
  }

  // What bash offers at the end of a line that begins with the program.
  std::string offered(const std::string &line) const {
    const std::string script = "source " + written("completion", chlist::bash_completion("chlist")) + "\nCOMP_LINE='" +
                               line + "'\nCOMP_POINT=${#COMP_LINE}\n_chlist " CHLIST_PROGRAM "\n" +
                               "printf '%s\\n' \"${COMPREPLY[@]}\"";
    const program_result result = run_program({"/bin/bash", "-c", script}, dir.path());
    EXPECT_EQ(result.err, "");
    return result.out;
  }

  test_support::temp_dir dir;
};

TEST_F(Pages, ManualPageIsCleanRoffInTheOrderOfManualPages) {
  if (!has("groff")) {
    GTEST_SKIP() << "groff is not installed";
  }
  const command copy = program_with_commands().commands[0];
  const std::string page = written("page.1", chlist::manual_page({"tool copy", &copy}, "1.2.3"));

  const program_result result = run_program({"/bin/sh", "-c", "groff -man -ww -Tascii -P-cbou " + page});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.err, "");
  std::size_t at = 0;
  for (const char *text : {"NAME", "tool-copy - Copy a list", "SYNOPSIS", "tool copy [options] FROM [TO]... -q QUEUE",
                           "DESCRIPTION", ".first line", "COMMANDS", "tool-copy-all(1)", "OPTIONS", "-o, --order ORDER",
                           "it's the order: name, number", "--dry-run", "EXIT STATUS", "done", "EXAMPLES",
                           "tool copy 'a b' c\\d", "SEE ALSO", "tool(1)", "channel 1.2.3"}) {
    at = result.out.find(text, at);
    ASSERT_NE(at, std::string::npos) << text << "\n" << result.out;
  }
}

TEST_F(Pages, BashOffersWhatTheProgramKnows) {
  EXPECT_EQ(offered("chlist in"), "info\n");
  EXPECT_EQ(offered("chlist list --fo"), "--format\n");
  EXPECT_EQ(offered("chlist list --sort n"), "number\nname\n");
}

// It puts them behind the ':' or '=' at which it ends words.
TEST_F(Pages, BashGetsTheRestOfAWordBehindItsColon) {
  test_support::channel_file file;
  test_support::write_file(dir.path() + "list.dat", file.group(GROUP_FAV, 0, "Late Films").data);

  EXPECT_EQ(offered("chlist list list.dat --view fav:L"), "Late\\ Films\n");
  EXPECT_EQ(offered("chlist fav list list.dat L"), "Late\\ Films\n");
  EXPECT_EQ(offered("chlist fav list list.dat \"L"), "Late Films\n");
}

// What it is given takes the place of all that stands behind the quotation mark.
TEST_F(Pages, BashGetsTheWholeWordOfAnOpenQuotation) {
  test_support::channel_file file;
  test_support::write_file(dir.path() + "list.dat", file.group(GROUP_FAV, 0, "Late Films").data);

  EXPECT_EQ(offered("chlist fav list list.dat \"Late F"), "Late Films\n");
  EXPECT_EQ(offered("chlist list --where \"type=TV loc"), "type=TV locked=\n");
  EXPECT_EQ(offered("chlist list --where \"locked=n"), "locked=no\n");
  EXPECT_EQ(offered("chlist fav list \"list.dat\" L"), "Late\\ Films\n");
}

TEST_F(Pages, BashLeavesFilesToItself) { EXPECT_EQ(offered("chlist list fi"), "\n"); }

TEST_F(Pages, ZshOffersWhatTheProgramKnows) {
  if (!has("zsh")) {
    GTEST_SKIP() << "zsh is not installed";
  }
  const std::string file = written("_chlist", chlist::zsh_completion("chlist"));
  const std::string script = "_describe() { print -l -- \"${(@P)4}\" }; _files() { print files }\n"
                             "words=(" CHLIST_PROGRAM " list --sort n); CURRENT=4; source " +
                             file + "\n" + "words=(" CHLIST_PROGRAM " list x); CURRENT=3; _chlist";

  const program_result result = run_program({"/bin/sh", "-c", "zsh -f -c '" + script + "'"});

  EXPECT_EQ(result.out,
            "number:the channel number, then the minor one\nname:the name, without regard to case\nfiles\n");
  EXPECT_EQ(result.err, "");
}

TEST_F(Pages, FishAsksTheProgram) {
  const std::string text = chlist::fish_completion("chlist");

  EXPECT_NE(text.find("command $words[1] complete $words[2..-1] 2>/dev/null"), std::string::npos) << text;
  if (has("fish")) {
    EXPECT_EQ(run_program({"/bin/sh", "-c", "fish --no-execute " + written("chlist.fish", text)}).err, "");
  }
}

TEST_F(Pages, OfEveryCommandOfTheToolAreCleanAndComplete) {
  if (!has("groff")) {
    GTEST_SKIP() << "groff is not installed";
  }
  int log_level = 0;
  const command program = chlist::whole_program(log_level);
  const std::vector<called_command> commands = chlist::every_command(program);
  EXPECT_EQ(commands.size(), 41U);
  for (const called_command &called : commands) {
    const std::string page = written("page.1", chlist::manual_page(called, "1.2.3"));

    const program_result result = run_program({"/bin/sh", "-c", "groff -man -ww -Tascii -P-cbou " + page});

    SCOPED_TRACE(called.line);
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.err, "");
    for (const char *section : {"SYNOPSIS", "DESCRIPTION", "OPTIONS", "EXIT STATUS", "EXAMPLES"}) {
      EXPECT_NE(result.out.find(section), std::string::npos) << section;
    }
  }
}

TEST_F(Pages, CompletionsAreTakenByBothShells) {
  const std::string bash = written("bash", chlist::bash_completion("chlist"));
  const std::string zsh = written("_chlist", chlist::zsh_completion("chlist"));

  EXPECT_EQ(run_program({"/bin/bash", "-n", bash}).err, "");
  EXPECT_EQ(run_program({"/bin/bash", "-n", bash}).exit_code, 0);
  if (has("zsh")) {
    EXPECT_EQ(run_program({"/bin/sh", "-c", "zsh -n " + zsh}).err, "");
    EXPECT_EQ(run_program({"/bin/sh", "-c", "zsh -n " + zsh}).exit_code, 0);
  }
}

}  // namespace
