// `chlist apply`: many edits as one, all or none.
#include <fmt/format.h>

#include "chlist/edit/edit_line.h"
#include "chlist/json/json.h"
#include "tool/edit/edit_host.h"

namespace {

using namespace edit_test;

using chlist::line_of_words;
using chlist::words_of_edit;

class Apply : public edit_host {
 protected:
  [[nodiscard]] program_result apply(const std::string &edits, const std::vector<std::string> &more = {}) const {
    write_file(path("a.edits"), edits);
    return run({"apply", "list.dat", "a.edits"}, more);
  }

  // The file that commands make, one after another.
  [[nodiscard]] bytes edited_by(const std::vector<std::vector<std::string>> &commands) const {
    write_file(path("one.dat"), before.data);
    for (std::vector<std::string> command : commands) {
      command.insert(command.begin() + (command.front() == "fav" ? 2 : 1), path("one.dat"));
      EXPECT_EQ(run(command, {"--no-backup"}).exit_code, 0) << command.front();
    }
    return read_file(path("one.dat"));
  }

  void expect_nothing_done(const program_result &result, const std::string &error) const {
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_EQ(result.err, "chlist: apply: " + error + "\n");
    expect_bytes(before.data);
  }
};

TEST_F(Apply, DoesWhatTheCommandsDoOneAfterAnother) {
  const bytes expected = edited_by({{"rename", "News", "News 24"},
                                    {"lock", "News 24", "2"},
                                    {"renumber", "Sport", "77"},
                                    {"skip", "77"},
                                    {"fav", "new", "Late ones"},
                                    {"fav", "add", "Late ones", "77", "Music"},
                                    {"fav", "rename", "Kids", "Little ones"},
                                    {"fav", "delete", "Little ones"},
                                    {"move", "Music", "--to", "1"},
                                    {"set", "Music", "frequency=12345000", "video_pid=5"},
                                    {"unlock", "News"},
                                    {"renumber", "--from", "10"},
                                    {"lock", "10"},
                                    {"sort", "--by", "name", "--view", "tv"},
                                    {"remove", "Films"}});

  const program_result result = apply("# an evening's work\n"
                                      "rename News \"News 24\"\n"
                                      "\n"
                                      "  lock 'News 24' 2  # two of them\n"
                                      "renumber Sport 77\r\n"
                                      "skip 77\n"
                                      "fav new Late\\ ones\n"
                                      "fav add \"Late ones\" 77 Music\n"
                                      "fav rename Kids 'Little ones'\n"
                                      "fav delete 'little ones'\n"
                                      "move Music --to 1\n"
                                      "set Music frequency=12345000 video_pid=5\n"
                                      "unlock News\n"
                                      "renumber --from 10\n"
                                      "lock 10\n"
                                      "sort --by name --view tv\n"
                                      "remove Films");

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.err, "");
  expect_bytes(expected);
}

TEST_F(Apply, FindsNamesNumbersAndServicesAsTheLinesBeforeLeftThem) {
  EXPECT_EQ(apply("rename News Other\nlock Other\nrenumber Other 30\nskip 30\nset 30 service_id=44\nunskip Other\n"
                  "remove Films\nfav new Films\n")
                .exit_code,
            0);
  const program_result listed =
      run({"list", "list.dat", "--filter", "name=Other", "--format", "csv", "--columns", "number,service_id,skipped"});
  EXPECT_NE(listed.out.find("30,44,no"), std::string::npos) << listed.out;
}

TEST_F(Apply, WritesNothingWhenALineCannotBeDone) {
  expect_nothing_done(apply("lock News\n\nlock Opera\n"),
                      "a.edits:3: no service has the number, the name or the identity \"Opera\"");
  expect_nothing_done(apply("rename News Other\nlock News\n"),
                      "a.edits:2: no service has the number, the name or the identity \"News\"");
  expect_nothing_done(apply("remove News\nlock News\n"),
                      "a.edits:2: no service has the number, the name or the identity \"News\"");
}

TEST_F(Apply, WritesNothingWhenALineCannotBeRead) {
  expect_nothing_done(apply("lock News\nrename News 'News 24\n"), "a.edits:2: a ' is not closed");
  expect_nothing_done(apply("lock News --offf\n"), "a.edits:1: no option \"--offf\": did you mean \"--off\"?");
  expect_nothing_done(apply("lock\n"), "a.edits:1: SERVICE or --where is required");
  expect_nothing_done(apply("fav new\n"), "a.edits:1: NAME is required: see `chlist help fav new`");
  expect_nothing_done(apply("rename News News24 --dry-run\n"),
                      "a.edits:1: no option \"--dry-run\": see `chlist help rename`");
  const program_result unknown = apply("renam News X\n");
  EXPECT_TRUE(
      unknown.err.starts_with("chlist: apply: a.edits:1: no edit \"renam\": did you mean \"rename\"? There are "))
      << unknown.err;
  const program_result half = apply("fav\n");
  EXPECT_TRUE(half.err.starts_with("chlist: apply: a.edits:1: no edit \"fav\"")) << half.err;
}

TEST_F(Apply, TellsNotesWithTheirLines) {
  const program_result result = apply("\nrename News " + std::string(97, 'N') + "\n");

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: apply: list.dat: a.edits:2: the name is cut to 96 of its 97 bytes\n");
}

TEST_F(Apply, ChosenServicesAreShownFirst) {
  EXPECT_EQ(apply("lock --where type=TV\n").exit_code, 2);
  expect_bytes(before.data);
  EXPECT_EQ(apply("lock --where 'type=TV ts_id<200'\nunlock --where locked=yes\n", {"--dry-run"}).exit_code, 0);
  expect_bytes(before.data);
  EXPECT_EQ(apply("lock --where type=TV\n", {"--yes"}).exit_code, 0);
}

TEST_F(Apply, ReadsNoEditsFromAnEmptyStandardInput) {
  const program_result result = run({"apply", "list.dat", "-"});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.out, "list.dat: nothing to change\n");
}

TEST_F(Apply, TakesTheLineThatAnEditCommandPrints) {
  const std::vector<std::vector<std::string>> commands = {
      {"rename", "News", "-News \"24\" #1", "--short"},
      {"rename", "--where", "name~'s$'", "--replace", "/s$/ HD/"},
      {"renumber", "Sport", "77", "--swap", "--view", "tv", "--view", "fav:Best"},
      {"lock", "Sport", "Music", "--off"},
      {"move", "Music", "--after", "Sport", "--view", "all"},
      {"fav", "move", "Kids", "--to", "1"},
      {"set", "Sport", "video_pid=none", "provider=Sky North"},
  };
  std::string edits;
  for (std::vector<std::string> command : commands) {
    command.insert(command.begin() + (command.front() == "fav" ? 2 : 1), "none.dat");
    const auto dashed = std::ranges::find_if(command, [](const auto &word) { return word.starts_with("-N"); });
    if (dashed != command.end()) {
      std::rotate(dashed, dashed + 1, command.end());
      command.insert(command.end() - 1, {"--print-edits", "--"});
    } else {
      command.emplace_back("--print-edits");
    }
    const program_result printed = run(command);
    EXPECT_EQ(printed.exit_code, 0) << printed.err;
    edits += printed.out;
  }
  EXPECT_EQ(tool_test::lines_of(edits),
            (std::vector<std::string>{"rename --short -- News \"-News \\\"24\\\" #1\"",
                                      "rename --where \"name~'s$'\" --replace \"/s$/ HD/\"",
                                      "renumber Sport 77 --swap --view tv --view fav:Best", "lock Sport Music --off",
                                      "move Music --view all --after Sport", "fav move Kids --to 1",
                                      "set Sport video_pid=none \"provider=Sky North\""}));
  EXPECT_EQ(apply(edits, {"--yes"}).exit_code, 0);
}

TEST(EditLine, SplitsWordsAsAShellDoes) {
  using words = std::vector<std::string>;
  EXPECT_EQ(words_of_edit("a  b\tc"), (words{"a", "b", "c"}));
  EXPECT_EQ(words_of_edit("'a b' \"c d\" e\\ f"), (words{"a b", "c d", "e f"}));
  EXPECT_EQ(words_of_edit("x='a \"b\"' \"'\" '' \"\""), (words{"x=a \"b\"", "'", "", ""}));
  EXPECT_EQ(words_of_edit("\"a\\\"b\\\\c\\d\" 'a\\b' \\\\"), (words{"a\"b\\c\\d", "a\\b", "\\"}));
  EXPECT_EQ(words_of_edit("a#b # c d"), (words{"a#b"}));
  EXPECT_EQ(words_of_edit("\\# a"), (words{"#", "a"}));
  EXPECT_EQ(words_of_edit(""), words());
}

TEST(EditLine, QuotesWordsSoThatTheyAreReadAgain) {
  const std::vector<std::string> words = {"rename", "",         "it's", "\"x\"", "a\\b",
                                          "#1",     "Žiga\tTV", "a b",  "$HOME", "7-2"};

  EXPECT_EQ(words_of_edit(line_of_words(words)), words);
  EXPECT_EQ(line_of_words({"rename", "News", "News 24"}), "rename News \"News 24\"");
}

TEST_F(Apply, MergesAScanAmongOtherLines) {
  channel_file scan;
  scan.service(edit_test::news)
      .service({.service_id = 7, .name = "Nature"})
      .service(edit_test::music)
      .service(edit_test::sport);
  write_file(path("scan.dat"), scan.data);
  write_file(path("steps"), "lock Sport\nmerge scan.dat\nrename Nature Wild\n");

  const program_result result = run({"apply", "list.dat", "steps", "--yes"});

  EXPECT_EQ(result.exit_code, 1) << result.err;
  EXPECT_NE(result.out.find("scan.dat: 1 service added, 1 deleted, 3 kept"), std::string::npos) << result.out;
  EXPECT_EQ(result.err,
            message({"apply"}, "list.dat: steps:2: the list: dropped, resolves to no service: the ALL view, position "
                               "5: number 50 (net 1, network 1, ts 100, 11000000 H, service 99)"));
  EXPECT_NE(run({"list", "list.dat"}).out.find("Wild"), std::string::npos);
}

TEST_F(Apply, TakesWhatIsLeftOfADamagedFile) {
  write_file(path("damaged.dat"), before.data.substr(0, before.data.size() - 100));
  write_file(path("steps"), "salvage damaged.dat\n");

  const program_result result = run({"apply", "list.dat", "steps", "--yes"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, message({"apply"}, "list.dat: steps:1: damaged.dat: something of it is lost, or in doubt"));
  EXPECT_NE(result.out.find("the list: 3 services"), std::string::npos) << result.out;
  EXPECT_EQ(run({"check", "list.dat"}).exit_code, 0);
}

}  // namespace
