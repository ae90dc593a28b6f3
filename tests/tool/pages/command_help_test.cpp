// The help of commands as data: names, arguments, options with their values, and the sections of the footer.
#include "chlist/pages/command_help.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "chlist/commands.h"

namespace {

using chlist::command;
using chlist::command_help;
using chlist::help_block;
using chlist::help_of;
using chlist::help_section;
using chlist::option_help;
using chlist::sections_of;

using kind = help_block::kind;

class CommandHelp : public testing::Test {
 protected:
  command_help copy_help() const { return help_of(program).commands.at(0); }

  std::string text;
  std::vector<std::string> many;
  bool flag = false;
  command copy = {.name = "copy",
                  .summary = "Copy a list",
                  .options = {{.names = "FROM", .target = &text, .about = "what to read", .is_required = true},
                              {.names = "TO", .target = &many, .about = "what to write"},
                              {.names = "-o,--order",
                               .target = &text,
                               .about = "the order",
                               .value = "ORDER",
                               .choices = {"name", "number"}},
                              {.names = "--dry-run", .target = &flag, .about = "write nothing"}},
                  .commands = {{.name = "all", .summary = "Copy everything"}}};
  command program = {.name = "tool", .summary = "Works on lists.", .commands = {copy}};
};

TEST_F(CommandHelp, NamesACommandByItsWholePath) {
  const command_help help = help_of(program);

  EXPECT_EQ(help.name, "tool");
  EXPECT_EQ(help.summary, "Works on lists.");
  EXPECT_EQ(help.commands.at(0).name, "tool copy");
  EXPECT_EQ(help.commands.at(0).commands.at(0).name, "tool copy all");
  EXPECT_EQ(help.commands.at(0).commands.at(0).page_name(), "tool-copy-all");
}

TEST_F(CommandHelp, TellsArgumentsFromOptions) {
  const command_help help = copy_help();

  ASSERT_EQ(help.arguments.size(), 2U);
  EXPECT_EQ(help.arguments[0].names, std::vector<std::string>{"FROM"});
  EXPECT_TRUE(help.arguments[0].is_required);
  EXPECT_FALSE(help.arguments[0].is_repeatable);
  EXPECT_EQ(help.arguments[1].names, std::vector<std::string>{"TO"});
  EXPECT_FALSE(help.arguments[1].is_required);
  EXPECT_TRUE(help.arguments[1].is_repeatable);
}

TEST_F(CommandHelp, KnowsWhatAnOptionTakes) {
  const command_help help = copy_help();

  ASSERT_EQ(help.options.size(), 3U);
  EXPECT_EQ(help.options[1].names, (std::vector<std::string>{"-o", "--order"}));
  EXPECT_EQ(help.options[1].value, "ORDER");
  EXPECT_EQ(help.options[1].choices, (std::vector<std::string>{"name", "number"}));
  EXPECT_EQ(help.options[2].names, std::vector<std::string>{"--dry-run"});
  EXPECT_EQ(help.options[2].value, "");
  EXPECT_TRUE(help.options[2].choices.empty());
}

TEST_F(CommandHelp, TakesTheOptionsOfGroupsForTheCommand) {
  program.commands[0].groups = {{.name = "place",
                                 .about = "where to",
                                 .options = {{.names = "--here", .target = &flag, .about = "in this place"}}}};

  const command_help help = copy_help();

  EXPECT_EQ(help.options.back().names, std::vector<std::string>{"--here"});
  EXPECT_EQ(help.commands.size(), 1U);
}

TEST(FooterSections, JoinTheLinesOfAParagraph) {
  const std::vector<help_section> sections = sections_of("One\ntwo.\n\nThree.");

  ASSERT_EQ(sections.size(), 1U);
  EXPECT_EQ(sections[0].title, "");
  ASSERT_EQ(sections[0].blocks.size(), 2U);
  EXPECT_EQ(sections[0].blocks[0].text, "One two.");
  EXPECT_EQ(sections[0].blocks[1].text, "Three.");
}

TEST(FooterSections, TakeTermsWithWhatTheyMean) {
  const std::vector<help_section> sections = sections_of("Exit codes:\n  0  done\n  1  done, but\n     not all\n");

  ASSERT_EQ(sections.size(), 1U);
  EXPECT_EQ(sections[0].title, "Exit codes");
  ASSERT_EQ(sections[0].blocks.size(), 2U);
  EXPECT_EQ(sections[0].blocks[1].what, kind::term);
  EXPECT_EQ(sections[0].blocks[1].term, "1");
  EXPECT_EQ(sections[0].blocks[1].text, "done, but not all");
}

TEST(FooterSections, KeepLinesToTypeAsTheyStand) {
  const std::vector<help_section> sections = sections_of("Examples:\n  tool copy a b\n  tool copy c d \\\n    -o name");

  ASSERT_EQ(sections.size(), 1U);
  ASSERT_EQ(sections[0].blocks.size(), 1U);
  EXPECT_EQ(sections[0].blocks[0].what, kind::literal);
  EXPECT_EQ(sections[0].blocks[0].text, "tool copy a b\ntool copy c d \\\n-o name");
}

TEST(FooterSections, OfNothingAreNone) { EXPECT_TRUE(sections_of("").empty()); }

// Readers of a page expect each of these.
void expect_complete(const command_help &help) {
  SCOPED_TRACE(help.name);
  EXPECT_FALSE(help.summary.empty());
  for (const auto *list : {&help.arguments, &help.options}) {
    for (const option_help &option : *list) {
      EXPECT_FALSE(option.about.empty()) << option.names.front();
    }
  }
  std::vector<std::string> titles;
  for (const help_section &section : help.sections) {
    titles.push_back(section.title);
  }
  for (const char *title : {"Exit codes", "Examples"}) {
    EXPECT_NE(std::ranges::find(titles, title), titles.end()) << title;
  }
  for (const command_help &command : help.commands) {
    expect_complete(command);
  }
}

TEST(CommandPages, HaveExitCodesAndExamplesForEveryCommand) {
  int log_level = 0;

  expect_complete(help_of(chlist::whole_program(log_level)));
}

}  // namespace
