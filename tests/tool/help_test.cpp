// The help of commands, as text and as it is asked for.
#include "chlist/help.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <string>
#include <vector>

#include "chlist/command_table.h"
#include "chlist/text/shown.h"
#include "chlist/text/utf8.h"
#include "tool/chlist_host.h"

namespace {

using chlist::called_command;
using chlist::command;
using chlist::help_text;
using chlist::joined;
using chlist::option;
using tool_test::program_result;

class HelpText : public testing::Test {
 protected:
  std::string text;
  std::vector<std::string> many;
  bool flag = false;
  command copy = {
      .name = "copy",
      .summary = "Copy a list",
      .details = {"One paragraph that is longer than a line has room for.", "Another."},
      .sections = {{"Orders", {{"name", "by the name, which is what most people look for"}, {"number", "by number"}}}},
      .exit_codes = {{"0", "copied"}},
      .examples = {"tool copy a b"},
      .options = {{.names = "FROM", .target = &text, .about = "what to read", .is_required = true},
                  {.names = "TO", .target = &many, .about = "what to write"},
                  {.names = "-o,--order",
                   .target = &text,
                   .about = "the order",
                   .value = "ORDER",
                   .is_required = true,
                   .choices = {"name", "number"}},
                  {.names = "--an-option-with-a-long-name", .target = &flag, .about = "on its own line"}}};
};

TEST_F(HelpText, HasEverythingOfTheRowWithinTheWidth) {
  EXPECT_EQ(help_text({"tool copy", &copy}, 40), "Usage: tool copy [OPTIONS] FROM\n"
                                                 "  [TO]... -o ORDER\n"
                                                 "\n"
                                                 "Copy a list.\n"
                                                 "\n"
                                                 "One paragraph that is longer than a line\n"
                                                 "has room for.\n"
                                                 "\n"
                                                 "Another.\n"
                                                 "\n"
                                                 "Arguments:\n"
                                                 "  FROM  what to read\n"
                                                 "  TO    what to write\n"
                                                 "\n"
                                                 "Options:\n"
                                                 "  -h, --help         show this help\n"
                                                 "  -o, --order ORDER  the order: name,\n"
                                                 "                     number\n"
                                                 "  --an-option-with-a-long-name\n"
                                                 "                     on its own line\n"
                                                 "\n"
                                                 "Orders:\n"
                                                 "  name    by the name, which is what\n"
                                                 "          most people look for\n"
                                                 "  number  by number\n"
                                                 "\n"
                                                 "Exit codes:\n"
                                                 "  0  copied\n"
                                                 "\n"
                                                 "Examples:\n"
                                                 "  tool copy a b\n");
}

TEST_F(HelpText, BreaksExamplesAsAShellTakesThem) {
  copy.examples = {"tool copy 'one name' and_another --order name"};

  const std::string help = help_text({"tool copy", &copy}, 30);

  EXPECT_NE(help.find("\n  tool copy 'one name' \\\n    and_another --order name\n"), std::string::npos) << help;
}

TEST_F(HelpText, ListsTheCommandsBelowUnderTheirTopics) {
  command program = {.name = "tool", .summary = "Works on lists", .commands = {copy, copy, copy}};
  program.commands[0].topic = program.commands[1].topic = "To begin with";
  program.commands[1].name = "move";
  program.commands[2] = {.name = "end", .summary = "End it", .topic = "To end"};

  EXPECT_EQ(help_text({"tool", &program}, 80),
            "Usage: tool [OPTIONS] COMMAND ...\n\nWorks on lists.\n\n"
            "To begin with:\n  copy  Copy a list\n  move  Copy a list\n\nTo end:\n  end  End it\n\n"
            "Options:\n  -h, --help  show this help\n");
}

TEST_F(HelpText, TakesTheOptionsOfGroupsForTheCommand) {
  copy.groups = {{.name = "place", .options = {{.names = "--here", .target = &flag, .about = "in this place"}}}};

  EXPECT_NE(help_text({"tool copy", &copy}, 80).find("  --here             in this place\n"), std::string::npos)
      << help_text({"tool copy", &copy}, 80);
}

class CommandRows : public testing::Test {
 protected:
  void SetUp() override { ASSERT_GT(rows.size(), 20U); }

  int log_level = 0;
  const command program = chlist::whole_program(log_level);
  const std::vector<called_command> rows = chlist::every_command(program);
};

// Whether a line begins with that command, or pipes something into it.
bool calls(const std::string &command_line, const std::string &line) {
  return ("| " + line + ' ').find("| " + command_line + ' ') != std::string::npos;
}

// Readers expect each of these.
TEST_F(CommandRows, AreComplete) {
  for (const called_command &called : rows) {
    SCOPED_TRACE(called.line);
    EXPECT_FALSE(called.row->summary.empty());
    EXPECT_FALSE(called.row->details.empty());
    EXPECT_GE(called.row->exit_codes.size(), 2U);
    EXPECT_FALSE(called.row->examples.empty());
    EXPECT_TRUE(
        std::ranges::any_of(called.row->examples, [&](const std::string &line) { return calls(called.line, line); }));
    EXPECT_TRUE(
        std::ranges::all_of(called.row->examples, [&](const std::string &line) { return calls(program.name, line); }));
    for (const option &each : called.row->all_options()) {
      EXPECT_FALSE(each.about.empty()) << each.names;
    }
  }
}

// Where lines break is for whoever shows the texts.
TEST_F(CommandRows, HaveTextsWithoutLineBreaks) {
  const auto expect_in_one_line = [](const std::string &text) {
    EXPECT_EQ(text.find_first_of("\n\t"), std::string::npos) << text;
    EXPECT_EQ(text.find("  "), std::string::npos) << text;
  };
  for (const called_command &called : rows) {
    std::ranges::for_each(called.row->details, expect_in_one_line);
    for (const chlist::term &each : called.row->exit_codes) {
      expect_in_one_line(each.meaning);
    }
    for (const option &each : called.row->all_options()) {
      expect_in_one_line(each.about);
    }
  }
}

TEST_F(CommandRows, HaveHelpOfEightyColumns) {
  for (const called_command &called : rows) {
    const std::vector<std::string> lines = tool_test::lines_of(help_text(called, 80));
    EXPECT_GT(lines.size(), 10U) << called.line;
    for (const std::string &line : lines) {
      EXPECT_LE(chlist::width_of(line), 80U) << line;
    }
  }
}

std::string words_in(const std::vector<chlist::term> &terms) { return joined(chlist::words_of(terms), ", "); }

std::string record_of(const option &each) {
  std::string record = "  " + joined(each.each_name(), ", ");
  record += each.is_flag() || each.is_argument() ? "" : ' ' + each.value_name();
  record += each.choices.empty() ? "" : ": " + joined(each.choices, ", ");
  if (each.least_and_most) {
    record += fmt::format(": {} to {}", each.least_and_most->first, each.least_and_most->second);
  }
  return record + (each.excluded.empty() ? "" : "; not with " + joined(each.excluded, ", ")) + '\n';
}

// Everything of a command but its prose.
std::string record_of(const called_command &called) {
  std::string record = fmt::format("{} {}\n", called.line, usage_of(*called.row));
  for (const option &each : called.row->all_options()) {
    record += record_of(each);
  }
  for (const chlist::term_section &each : called.row->sections) {
    record += fmt::format("  {}: {}\n", each.title, words_in(each.terms));
  }
  return record + fmt::format("  exit codes: {}\n", words_in(called.row->exit_codes));
}

// Scripts call them so. The records stand in the order of the commands, with an empty line between them.
TEST_F(CommandRows, TakeTheOptionsThatAreOnRecord) {
  const std::string file = CHANNEL_TESTS_DIR "/tool/command_lines.txt";
  std::vector<std::string> records;
  std::ranges::transform(rows, std::back_inserter(records), [](const called_command &each) { return record_of(each); });
  if (std::getenv("CHANNEL_UPDATE_TABLES") != nullptr) {
    test_support::write_file(file, joined(records, "\n"));
  }

  const std::string on_record = test_support::read_file(file);

  std::size_t at = 0;
  for (const std::string &record : records) {
    ASSERT_EQ(record, on_record.substr(std::min(at, on_record.size()), record.size()));
    at += record.size() + 1;
  }
  EXPECT_EQ(joined(records, "\n"), on_record) << "CHANNEL_UPDATE_TABLES=1 writes the records anew";
}

class Help : public tool_test::chlist_test {
 protected:
  std::string shown(const std::vector<std::string> &arguments) const {
    const program_result result = run(arguments);
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.err, "");
    return result.out;
  }
};

TEST_F(Help, OfTheProgramIsTheSameHoweverItIsAskedFor) {
  const std::string help = shown({"help"});

  EXPECT_TRUE(help.starts_with("Usage: chlist [OPTIONS] COMMAND ...\n")) << help;
  EXPECT_NE(help.find("\n  list    List the services of a channel file\n"), std::string::npos) << help;
  EXPECT_EQ(shown({"--help"}), help);
  EXPECT_EQ(shown({"-h"}), help);
}

TEST_F(Help, OfTheProgramAloneIsShortAndNamesEveryCommand) {
  const std::string help = shown({});

  EXPECT_LE(tool_test::lines_of(help).size(), 24U) << help;
  EXPECT_TRUE(help.starts_with("Usage: chlist [OPTIONS] COMMAND ...\n")) << help;
  EXPECT_NE(help.find("\nTo look at a list:\n  info, list, show, diff, report\n"), std::string::npos) << help;
  EXPECT_NE(help.find("`chlist help COMMAND`"), std::string::npos) << help;
  int log_level = 0;
  for (const command &each : chlist::whole_program(log_level).commands) {
    EXPECT_NE(help.find(' ' + each.name), std::string::npos) << each.name;
  }
}

TEST_F(Help, OfACommandIsTheSameHoweverItIsAskedFor) {
  const std::string help = shown({"list", "--help"});

  EXPECT_TRUE(help.starts_with("Usage: chlist list [OPTIONS] [FILE]\n")) << help;
  EXPECT_EQ(shown({"help", "list"}), help);
  EXPECT_EQ(shown({"list", "-h"}), help);
  EXPECT_EQ(shown({"--help", "list"}), help);
}

TEST_F(Help, OfCommandsOfTwoWordsIsTheSameHoweverItIsAskedFor) {
  EXPECT_EQ(shown({"help", "fav", "new"}), shown({"fav", "new", "--help"}));
  EXPECT_EQ(shown({"fav"}), shown({"help", "fav"}));
}

TEST_F(Help, OfNoCommandIsRefused) { expect_refused({"help", "lits"}, "no command \"lits\": did you mean \"list\"?"); }

TEST_F(Help, OfNoCommandSaysOnceWhereToLook) {
  expect_refused({"help", "watch"}, "no command \"watch\": see `chlist help`");
  expect_refused({"help", "fav", "watch"}, "no command \"watch\": see `chlist help fav`");
  expect_refused({"help", "list", "more"}, "\"more\" is an argument too many: see `chlist help list`");
}

TEST_F(Help, TellsTheVersion) { EXPECT_EQ(shown({"--version"}), "chlist " CHANNEL_VERSION "\n"); }

}  // namespace
