// `chlist check` as it is run: exit codes, what it prints, JSON, and files that no reader takes.
#include <random>
#include <string>
#include <vector>

#include "support/full_list.h"
#include "tool/chlist_host.h"

namespace {

using namespace tool_test;

const service_data news = {.service_id = 1, .name = "News"};

class CheckTool : public chlist_test {
 protected:
  static channel_file sound_file() {
    channel_file file;
    file.service(news).entry(VIEW_ALL, news, 1);
    return file;
  }

  program_result check(const bytes &file, const std::vector<std::string> &options = {}) {
    write_file(path(), file);
    return run({"check", path()}, options);
  }
};

TEST_F(CheckTool, ASoundFileIsToldAndLeavesZero) {
  const program_result result = check(sound_file().data);

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(lines_of(result.out),
            (std::vector<std::string>{path() + ": 461096 bytes, version 10: 1 network, 1 transponder, 1 service",
                                      "Nothing is wrong."}));
  EXPECT_EQ(result.err, "");
}

TEST_F(CheckTool, FindingsAreGroupedBySeverityWithTheirConsequences) {
  channel_file file = sound_file();
  file.set(list_field::vch_type, 2, VIEW_TV)
      .set_last(test_support::record_kind::service, service_field::name_len, 2, 9);
  file.set(test_support::view_place(VIEW_RADIO).count, 2, 0xFFFF);
  file.data += "xy";

  const program_result result = check(file.data);

  EXPECT_EQ(result.exit_code, 1);
  const std::vector<std::string> lines = lines_of(result.out);
  ASSERT_GT(lines.size(), 4U);
  EXPECT_EQ(lines[0], path() + ": 461098 bytes, version 10: 1 network, 1 transponder, 1 service");
  EXPECT_EQ(lines[1].substr(lines[1].find(' ')), " error:");
  EXPECT_EQ(lines[2], "     320120  the radio view counts -1, its array holds 1000");
  EXPECT_EQ(lines[3], "             -> a load says so on an ERROR line and takes 0");
  const std::vector<std::string> last(lines.end() - 3, lines.end());
  EXPECT_EQ(last, (std::vector<std::string>{
                      "1 note:",
                      "     460793  the name of service \"News\" (net 1, network 1, ts 100, 11000000 H, service 1) has "
                      "4 bytes, its length says 9",
                      "             -> none: the name is shown up to its zero byte"}));
}

TEST_F(CheckTool, NotesAloneLeaveZero) {
  channel_file file = sound_file();
  file.set_last(test_support::record_kind::service, service_field::name_len, 2, 9);

  EXPECT_EQ(check(file.data).exit_code, 0);
}

TEST_F(CheckTool, OfEachKindTenAreShownUnlessAllAreAskedFor) {
  channel_file file = sound_file();
  for (std::uint16_t id = 2; id <= 13; ++id) {
    file.entry(VIEW_ALL, {.service_id = id}, id);
  }
  const auto shown = [](const std::string &text) {
    std::size_t count = 0;
    for (const std::string &line : lines_of(text)) {
      count += line.find("resolves to no service") != std::string::npos ? 1U : 0U;
    }
    return count;
  };

  const std::string some = check(file.data).out;
  EXPECT_EQ(shown(some), 10U);
  EXPECT_TRUE(tool_test::has_line(some, "        ...  and 2 more: unresolved-entry (--all)"));
  EXPECT_EQ(shown(check(file.data, {"--all"}).out), 12U);
}

TEST_F(CheckTool, JsonHasEveryFinding) {
  channel_file file = sound_file();
  const std::size_t end = file.data.size();
  file.data += "xy";

  const program_result result = check(file.data, {"--json"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(json::parse(result.out),
            (json{{"schema", 1},
                  {"file", path()},
                  {"bytes", end + 2},
                  {"version", 10},
                  {"networks", 1},
                  {"transponders", 1},
                  {"services", 1},
                  {"error_count", 0},
                  {"warning_count", 1},
                  {"note_count", 0},
                  {"findings",
                   json::array({json{{"offset", end},
                                     {"severity", "warning"},
                                     {"kind", "bytes-behind-end"},
                                     {"message", "2 bytes behind the last record that is counted"},
                                     {"consequence",
                                      "a load ignores them, the next save drops them; services among them are not on "
                                      "the receiver"}}})}}));
}

TEST_F(CheckTool, NamesAreHarmlessOnATerminal) {
  service_data odd = news;
  odd.name = "\033[2J\x9B";
  channel_file file;
  file.service(odd).entry(VIEW_ALL, odd, 1);

  const program_result result = check(file.data);

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.out.find('\033'), std::string::npos);
  EXPECT_EQ(result.out.find('\x9B'), std::string::npos);
}

TEST_F(CheckTool, ATerminalGetsColours) {
  write_file(path(), sound_file().data);
  tool_test::terminal terminal({CHLIST_PROGRAM, "check", path()});

  EXPECT_NE(terminal.wait_for("Nothing is wrong.").find("\033[32m"), std::string::npos);
  EXPECT_EQ(terminal.exit_code(), 0);
}

TEST_F(CheckTool, WhatIsNoFileCannotBeChecked) {
  const program_result missing = run({"check", path("none")});
  EXPECT_EQ(missing.exit_code, 2);
  EXPECT_EQ(missing.err, "chlist: check: " + path("none") + ": No such file or directory\n");

  const program_result folder = run({"check", dir.path()});
  EXPECT_EQ(folder.exit_code, 2);
  EXPECT_EQ(folder.err, "chlist: check: " + dir.path() + ": not a regular file\n");

  EXPECT_EQ(run({"check"}).exit_code, 2);
}

TEST_F(CheckTool, AFullListIsSound) {
  test_support::fill_everything();
  EXPECT_EQ(save_channel("full.dat"), 1);

  const program_result result = run({"check", path("full.dat"), "--json"});

  const json report = json::parse(result.out);
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(report["services"], 5000);
  EXPECT_EQ(report["findings"], json::array());
}

// Bytes of every kind behind a list's record: whatever they are, the walk ends and says so.
TEST_F(CheckTool, NoiseIsCheckedToItsEnd) {
  std::mt19937 random(7);
  for (int i = 0; i < 20; ++i) {
    bytes noise(i % 2 == 0 ? 470'000 : random() % 470'000, '\0');
    for (char &byte : noise) {
      byte = static_cast<char>(random());
    }

    const program_result result = check(noise, {"--json"});

    EXPECT_EQ(result.exit_code, 1);
    EXPECT_FALSE(json::parse(result.out)["findings"].empty());
  }
}

}  // namespace
