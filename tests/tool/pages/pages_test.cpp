// Manual pages as man shows them, and completions as the shells run them.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "chlist/commands.h"
#include "chlist/pages/completion.h"
#include "chlist/pages/manual_page.h"
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

TEST_F(Pages, OfEveryCommandOfTheToolAreCleanAndComplete) {
  if (!has("groff")) {
    GTEST_SKIP() << "groff is not installed";
  }
  int log_level = 0;
  const command program = chlist::whole_program(log_level);
  const std::vector<called_command> commands = chlist::every_command(program);
  EXPECT_EQ(commands.size(), 31U);
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

TEST_F(Pages, OfTheToolAreTakenByBothShells) {
  int log_level = 0;
  const command program = chlist::whole_program(log_level);
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
