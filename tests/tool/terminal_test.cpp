// Reports on a terminal: tables that fit it, and the pager for what is longer.
#include <string>
#include <vector>

#include "chlist/text/utf8.h"
#include "tool/chlist_host.h"

namespace {

using tool_test::lines_of;
using tool_test::terminal;

constexpr int services = 30;

class OnATerminal : public tool_test::chlist_test {
 protected:
  void SetUp() override {
    chlist_test::SetUp();
    tool_test::channel_file file;
    for (std::uint16_t id = 1; id <= services; ++id) {
      const tool_test::service_data service = {.service_id = id, .name = "A service with a rather long name"};
      file.service(service).entry(VIEW_ALL, service, id);
    }
    tool_test::write_file(path("list.dat"), file.data);
  }

  struct shown {
    std::string text;
    int exit_code = 0;
  };

  // What a command line prints on a terminal. Variables come in front: "PAGER=cat".
  shown on_terminal(const std::string &variables, const std::string &arguments, std::uint16_t rows,
                    std::uint16_t columns) const {
    const std::string line = "unset PAGER COLUMNS LINES LESS; cd " + dir.path() + "; TERM=xterm NO_COLOR=1 " +
                             variables + " exec " CHLIST_PROGRAM " " + arguments;
    terminal screen({"/bin/sh", "-c", line}, rows, columns);
    const int exit_code = screen.exit_code();
    return {screen.unread(), exit_code};
  }

  static void expect_fits(const std::string &text, std::size_t columns) {
    const std::vector<std::string> lines = lines_of(text);
    EXPECT_FALSE(lines.empty());
    for (const std::string &line : lines) {
      EXPECT_LE(chlist::width_of(line), columns) << line;
      EXPECT_FALSE(line.ends_with(' ')) << line;
    }
  }
};

TEST_F(OnATerminal, ATableFits) {
  const shown narrow = on_terminal("PAGER=cat", "list list.dat --columns number,name,type,frequency", 0, 40);

  EXPECT_EQ(narrow.exit_code, 0);
  EXPECT_EQ(lines_of(narrow.text).size(), services + 1U);
  expect_fits(narrow.text, 40);
  EXPECT_NE(narrow.text.find("…"), std::string::npos) << narrow.text;
  EXPECT_NE(narrow.text.find("11000000\n"), std::string::npos) << narrow.text;
}

TEST_F(OnATerminal, ColumnsOfTheEnvironmentCountMore) {
  expect_fits(on_terminal("PAGER=cat COLUMNS=40", "list list.dat --columns number,name", 0, 200).text, 40);
}

TEST_F(OnATerminal, ATableIsWideWhereTheWidthIsNotKnown) {
  const shown unknown = on_terminal("PAGER=cat", "list list.dat", 0, 0);

  EXPECT_EQ(unknown.text, run({"list", "list.dat"}).out);
}

TEST_F(OnATerminal, TheUsualColumnsOfAListFit) {
  for (const std::uint16_t columns : std::vector<std::uint16_t>{70, 60, 40}) {
    expect_fits(on_terminal("PAGER=cat", "list list.dat", 0, columns).text, columns);
  }
}

TEST_F(OnATerminal, WhatAListHoldsFits) {
  const std::string long_name(40, 'n');
  tool_test::channel_file file;
  file.group(GROUP_FAV, 0, long_name).group(GROUP_PROVIDER, 0, long_name).group(GROUP_PROVIDER, 1, long_name);
  tool_test::write_file(path("groups.dat"), file.data);

  expect_fits(on_terminal("PAGER=cat", "info groups.dat", 0, 70).text, 70);
}

TEST_F(OnATerminal, HelpFits) {
  expect_fits(on_terminal("PAGER=cat", "help info", 0, 50).text, 50);
  expect_fits(on_terminal("PAGER=cat", "help list", 0, 60).text, 60);
  expect_fits(on_terminal("PAGER=cat", "", 0, 50).text, 50);
}

constexpr const char *marking = "PAGER='sed s/^/paged:/'";

TEST_F(OnATerminal, WhatIsLongerGoesThroughThePager) {
  const shown paged = on_terminal(marking, "list list.dat", services + 1, 200);

  ASSERT_EQ(lines_of(paged.text).size(), services + 1U) << paged.text;
  for (const std::string &line : lines_of(paged.text)) {
    EXPECT_TRUE(line.starts_with("paged:")) << line;
  }
}

TEST_F(OnATerminal, WhatFitsDoesNot) {
  const shown whole = on_terminal(marking, "list list.dat", services + 2, 200);

  EXPECT_EQ(lines_of(whole.text).size(), services + 1U);
  EXPECT_EQ(whole.text.find("paged:"), std::string::npos) << whole.text;
}

TEST_F(OnATerminal, NoPagerRunsWhenNoneIsWanted) {
  const std::string whole = on_terminal("PAGER=cat", "list list.dat", 5, 200).text;

  EXPECT_EQ(lines_of(whole).size(), services + 1U);
  EXPECT_EQ(on_terminal("PAGER=", "list list.dat", 5, 200).text, whole);
  EXPECT_EQ(on_terminal(marking, "list list.dat --no-pager", 5, 200).text, whole);
  EXPECT_EQ(on_terminal(marking, "--no-pager list list.dat", 5, 200).text, whole);
  EXPECT_EQ(on_terminal("TERM=dumb " + std::string(marking), "list list.dat", 5, 200).text, whole);
}

TEST_F(OnATerminal, APagerThatIsNotThereIsDoneWithout) {
  const shown whole = on_terminal("PAGER='none-of-that-name 2>/dev/null'", "list list.dat", 5, 200);

  EXPECT_EQ(whole.exit_code, 0);
  EXPECT_EQ(lines_of(whole.text).size(), services + 1U) << whole.text;
}

TEST_F(OnATerminal, ThePagerChangesNoExitCode) {
  const shown early = on_terminal("PAGER='head -n 1; exit 3'", "list list.dat", 5, 200);
  EXPECT_EQ(early.exit_code, 0);
  EXPECT_EQ(lines_of(early.text).size(), 1U) << early.text;

  tool_test::write_file(path("cut.dat"), tool_test::read_file(path("list.dat")).substr(0, 461'000));
  EXPECT_EQ(on_terminal("PAGER='head -n 1'", "check cut.dat", 5, 200).exit_code, 1);
}

// It ends at a key; where it is not installed nobody waits for one.
TEST_F(OnATerminal, TheUsualPagerIsLess) {
  if (tool_test::run_program({"/bin/sh", "-c", "command -v less"}).exit_code != 0) {
    EXPECT_EQ(lines_of(on_terminal("", "list list.dat", 5, 200).text).size(), services + 1U);
    return;
  }
  terminal screen({"/bin/sh", "-c", "unset PAGER LESS; TERM=xterm exec " CHLIST_PROGRAM " list " + path("list.dat")}, 5,
                  200);
  screen.wait_for(":");
  screen.type("q");
  EXPECT_EQ(screen.exit_code(), 0);
}

}  // namespace
