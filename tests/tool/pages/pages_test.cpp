// Manual pages as man shows them, and completions as the shells run them.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "chlist/commands.h"
#include "chlist/pages/command_help.h"
#include "chlist/pages/completion.h"
#include "chlist/pages/manual_page.h"
#include "support/temp_dir.h"
#include "tool/program.h"

namespace {

using chlist::command_help;
using chlist::option_help;
using tool_test::program_result;
using tool_test::run_program;

command_help program_with_commands() {
  command_help program = {.name = "tool", .summary = "Works on lists."};
  command_help copy = {.name = "tool copy", .summary = "Copy a list"};
  copy.arguments = {{.names = {"FROM"}, .about = "what to read", .is_required = true},
                    {.names = {"TO"}, .about = "what to write", .is_repeatable = true}};
  copy.options = {
      {.names = {"-o", "--order"}, .value = "ORDER", .choices = {"name", "number"}, .about = "it's the order"},
      {.names = {"--dry-run"}, .about = "write [nothing]: none"},
      {.names = {"-x", "--except"}, .value = "NAME", .about = "not this one", .is_repeatable = true},
      {.names = {"--tag"}, .value = "TAG", .about = "with a tag", .is_repeatable = true},
      {.names = {"-q", "--queue"}, .value = "QUEUE", .about = "where to", .is_required = true}};
  copy.sections = chlist::sections_of(".first line\n\nExit codes:\n  0  done\n\nExamples:\n  tool copy 'a b' c\\d\n");
  command_help all = {.name = "tool copy all", .summary = "Copy everything"};
  program.options = {{.names = {"--help"}, .about = "this text"}};
  program.commands = {copy};
  program.commands[0].commands = {all};
  return program;
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

  // What bash offers for the last of the words.
  std::string offered(const std::vector<std::string> &words) const {
    std::string line;
    for (const std::string &word : words) {
      line += " '" + word + "'";
    }
    const std::string script = "source " + written("completion", chlist::bash_completion(program_with_commands())) +
                               "\nCOMP_WORDS=(" + line + ")\nCOMP_CWORD=$((${#COMP_WORDS[@]} - 1))\n_tool\n" +
                               "echo \"${COMPREPLY[*]}\"";
    const program_result result = run_program({"/bin/bash", "-c", script});
    EXPECT_EQ(result.err, "");
    return result.out;
  }

  test_support::temp_dir dir;
};

TEST_F(Pages, ManualPageIsCleanRoffInTheOrderOfManualPages) {
  if (!has("groff")) {
    GTEST_SKIP() << "groff is not installed";
  }
  const std::string page = written("page.1", chlist::manual_page(program_with_commands().commands[0], "1.2.3"));

  const program_result result = run_program({"/bin/sh", "-c", "groff -man -ww -Tascii -P-cbou " + page});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.err, "");
  std::size_t at = 0;
  for (const char *text : {"NAME", "tool-copy - Copy a list", "SYNOPSIS", "tool copy [options] -q QUEUE FROM [TO]...",
                           "DESCRIPTION", ".first line", "COMMANDS", "tool-copy-all(1)", "OPTIONS", "-o, --order ORDER",
                           "it's the order; one of name, number", "--dry-run", "EXIT STATUS", "done", "EXAMPLES",
                           "tool copy 'a b' c\\d", "SEE ALSO", "tool(1)", "channel 1.2.3"}) {
    at = result.out.find(text, at);
    ASSERT_NE(at, std::string::npos) << text << "\n" << result.out;
  }
}

TEST_F(Pages, BashOffersCommandsOptionsAndValues) {
  EXPECT_EQ(offered({"tool", ""}), "copy\n");
  EXPECT_EQ(offered({"tool", "--"}), "--help\n");
  EXPECT_EQ(offered({"tool", "copy", ""}), "all\n");
  EXPECT_EQ(offered({"tool", "copy", "--d"}), "--dry-run\n");
  EXPECT_EQ(offered({"tool", "copy", "--order", ""}), "name number\n");
  EXPECT_EQ(offered({"tool", "copy", "x", "-o", "nu"}), "number\n");
}

TEST_F(Pages, BashLeavesFilesToItself) {
  EXPECT_EQ(offered({"tool", "copy", "file"}), "\n");
  EXPECT_EQ(offered({"tool", "copy", "all", ""}), "\n");
}

TEST_F(Pages, ZshTakesItsCompletion) {
  if (!has("zsh")) {
    GTEST_SKIP() << "zsh is not installed";
  }
  const std::string file = written("_tool", chlist::zsh_completion(program_with_commands()));

  const program_result result = run_program({"/bin/sh", "-c", "zsh -n " + file});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.err, "");
}

TEST_F(Pages, ZshQuotesWhatEndsAPart) {
  const std::string text = chlist::zsh_completion(program_with_commands());

  EXPECT_NE(text.find("'--dry-run[write \\[nothing\\]\\: none]'"), std::string::npos) << text;
  EXPECT_NE(text.find("'(-o --order)'{-o,--order}'[it'\\''s the order]:ORDER:(name number)'"), std::string::npos)
      << text;
}

TEST_F(Pages, ZshOffersAgainWhatMayBeGivenAgain) {
  const std::string text = chlist::zsh_completion(program_with_commands());

  EXPECT_NE(text.find("'*'{-x,--except}'[not this one]:NAME:_files'"), std::string::npos) << text;
  EXPECT_NE(text.find("'*--tag[with a tag]:TAG:_files'"), std::string::npos) << text;
}

// The help of every command and of those below it.
std::vector<command_help> all_commands() {
  int log_level = 0;
  std::vector<command_help> all = {chlist::help_of(chlist::whole_program(log_level))};
  for (std::size_t i = 0; i < all.size(); ++i) {
    const std::vector<command_help> below = all[i].commands;
    all.insert(all.end(), below.begin(), below.end());
  }
  return all;
}

TEST_F(Pages, OfEveryCommandOfTheToolAreCleanAndComplete) {
  if (!has("groff")) {
    GTEST_SKIP() << "groff is not installed";
  }
  const std::vector<command_help> commands = all_commands();
  EXPECT_EQ(commands.size(), 30U);
  for (const command_help &command : commands) {
    const std::string page = written("page.1", chlist::manual_page(command, "1.2.3"));

    const program_result result = run_program({"/bin/sh", "-c", "groff -man -ww -Tascii -P-cbou " + page});

    SCOPED_TRACE(command.name);
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.err, "");
    for (const char *section : {"SYNOPSIS", "OPTIONS", "EXIT STATUS", "EXAMPLES"}) {
      const bool is_group = !command.commands.empty() && command.name != "chlist";
      EXPECT_TRUE(is_group || result.out.find(section) != std::string::npos) << section;
    }
  }
}

TEST_F(Pages, OfTheToolAreTakenByBothShells) {
  int log_level = 0;
  const command_help program = chlist::help_of(chlist::whole_program(log_level));
  const std::string bash = written("bash", chlist::bash_completion(program));
  const std::string zsh = written("_chlist", chlist::zsh_completion(program));

  EXPECT_EQ(run_program({"/bin/bash", "-n", bash}).err, "");
  EXPECT_EQ(run_program({"/bin/bash", "-n", bash}).exit_code, 0);
  if (has("zsh")) {
    EXPECT_EQ(run_program({"/bin/sh", "-c", "zsh -n " + zsh}).err, "");
    EXPECT_EQ(run_program({"/bin/sh", "-c", "zsh -n " + zsh}).exit_code, 0);
  }
}

}  // namespace
