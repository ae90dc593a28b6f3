// `chlist undo`, `redo`, `restore` and `history`.
#include <stdlib.h>

#include "tool/edit/edit_host.h"

namespace {

namespace fs = std::filesystem;

using namespace edit_test;

class Undo : public edit_host {
 protected:
  void SetUp() override {
    ::setenv("SOURCE_DATE_EPOCH", "1000000000", 1);
    edit_host::SetUp();
    ASSERT_EQ(run({"lock", "list.dat", "News"}).exit_code, 0);
    locked = read_file(path());
    ASSERT_EQ(run({"rename", "list.dat", "Films", "Movies"}).exit_code, 0);
    renamed = read_file(path());
  }
  void TearDown() override {
    ::unsetenv("SOURCE_DATE_EPOCH");
    edit_host::TearDown();
  }

  bytes locked;
  bytes renamed;
};

TEST_F(Undo, TakesEditsBackAndDoesThemAgain) {
  const auto undone = run({"undo", "list.dat"});
  EXPECT_EQ(undone.exit_code, 0);
  EXPECT_EQ(undone.err, "");
  EXPECT_EQ(undone.out, "list.dat: undone: rename Films Movies\n"
                        "0 services added, 0 removed, 1 changed; 0 differences around the services\n"
                        "Changed:\n"
                        "  \"Films\" (1:1:100:11000000H:2)\n"
                        "    name: \"Movies\" -> \"Films\"\n");
  expect_bytes(locked);
  EXPECT_EQ(run({"undo", "list.dat"}).exit_code, 0);
  expect_bytes(before.data);
  EXPECT_TRUE(run({"redo", "list.dat"}).out.starts_with("list.dat: done again: lock News\n"));
  expect_bytes(locked);
  EXPECT_EQ(run({"redo", "list.dat"}).exit_code, 0);
  expect_bytes(renamed);
}

TEST_F(Undo, RefusesToGoBeyondTheEnds) {
  EXPECT_EQ(run({"redo", "list.dat"}).err, "chlist: redo: there is nothing to do again\n");
  ASSERT_EQ(run({"restore", "list.dat", "1"}).exit_code, 0);
  EXPECT_EQ(run({"undo", "list.dat"}).err, "chlist: undo: there is nothing to undo\n");
  expect_refused({"restore", "list.dat", "4"}, "there is no state 4: there are 1 to 3");
}

TEST_F(Undo, LeadsToAnyState) {
  const auto result = run({"restore", "list.dat", "1"});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_TRUE(result.out.starts_with("list.dat: state 1 again: as it was before the first edit\n")) << result.out;
  expect_bytes(before.data);
  ASSERT_EQ(run({"restore", "list.dat", "3"}).exit_code, 0);
  expect_bytes(renamed);
}

TEST_F(Undo, ADryRunWritesNothing) {
  const bytes kept = read_file(path("list.dat.history"));

  EXPECT_TRUE(run({"undo", "list.dat", "--dry-run"}).out.starts_with("dry run: undone: rename Films Movies\n"));
  expect_bytes(renamed);
  EXPECT_TRUE(read_file(path("list.dat.history")) == kept);
}

TEST_F(Undo, TellsTheHistory) {
  ASSERT_EQ(run({"undo", "list.dat"}).exit_code, 0);

  const auto result = run({"history", "list.dat"});

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.out, "state       when                  what\n"
                        "    1       2001-09-09T01:46:40Z  as it was before the first edit\n"
                        "    2  now  2001-09-09T01:46:40Z  lock News\n"
                        "    3       2001-09-09T01:46:40Z  rename Films Movies\n");
  const json document = json::parse(run({"history", "list.dat", "--json"}).out);
  EXPECT_EQ(document["states"][2]["lines"], json::array({"rename Films Movies"}));
  EXPECT_EQ(document["states"][1]["is_current"], json(true));
}

TEST_F(Undo, TheJsonReportTellsTheStateAndWhatDiffers) {
  const json document = json::parse(run({"undo", "list.dat", "--dry-run", "--json"}).out);
  EXPECT_EQ(document["file"], "list.dat");
  EXPECT_EQ(document["dry_run"], json(true));
  EXPECT_EQ(document["state"], 2);
  EXPECT_EQ(document["lines"], json::array({"lock News"}));
  EXPECT_EQ(document["differences"]["changed"][0]["fields"],
            json::array({json{{"field", "name"}, {"before", "Movies"}, {"after", "Films"}}}));
  EXPECT_EQ(document["notes"], json::array());
}

// Of which a history keeps the first alone.
TEST_F(Undo, TellsHowManyLinesWereApplied) {
  std::string lines;
  for (int number = 1; number <= 250; ++number) {
    lines += "rename Movies \"Films " + std::to_string(number) + "\"\nrename \"Films " + std::to_string(number) +
             "\" Movies\n";
  }
  lines += "unlock News\n";
  write_file(path("many.edits"), lines);
  ASSERT_EQ(run({"apply", "list.dat", "many.edits"}).exit_code, 0);

  EXPECT_TRUE(run({"history", "list.dat"}).out.ends_with("rename Movies \"Films 1\" and 500 more\n"));
  EXPECT_TRUE(run({"undo", "list.dat"}).out.starts_with("list.dat: undone: rename Movies \"Films 1\" and 500 more\n"));
}

TEST_F(Undo, ANewEditDropsWhatWasUndone) {
  ASSERT_EQ(run({"undo", "list.dat"}).exit_code, 0);
  write_file(path("a.edits"), "skip News  # at night\nskip Sport\n");
  ASSERT_EQ(run({"apply", "list.dat", "a.edits"}).exit_code, 0);

  EXPECT_EQ(run({"redo", "list.dat"}).exit_code, 2);
  EXPECT_TRUE(run({"history", "list.dat"}).out.ends_with("skip News  # at night and 1 more\n"));
}

TEST_F(Undo, WhatSomethingElseMadeIsToldAndComesBack) {
  bytes other = renamed;
  put(other, list_field::bouquet_id, 2, 5);
  write_file(path(), other);

  const auto result = run({"undo", "list.dat"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: undo: list.dat: was changed by something else than edits; that is state 4 now\n");
  expect_bytes(renamed);
  EXPECT_EQ(run({"redo", "list.dat"}).exit_code, 0);
  expect_bytes(other);
}

TEST_F(Undo, PutsBackWhatIsNoList) {
  write_file(path(), "no list");

  EXPECT_EQ(run({"undo", "list.dat"}).exit_code, 1);
  expect_bytes(renamed);
}

TEST_F(Undo, NeedsAHistoryThatIsOne) {
  const std::string history = fs::canonical(dir.path()).string() + "/list.dat.history";
  write_file(history, "something else");
  const std::string damaged = history + ": is damaged, or no history of a channel file; it is left as it is\n";
  EXPECT_EQ(run({"undo", "list.dat"}).err, "chlist: undo: " + damaged);
  EXPECT_EQ(run({"lock", "list.dat", "Sport"}).err, "chlist: lock: " + damaged);
  expect_bytes(renamed);
  EXPECT_EQ(run({"lock", "list.dat", "Sport", "--no-backup"}).exit_code, 0);

  fs::remove(history);
  EXPECT_EQ(run({"undo", "list.dat"}).err, "chlist: undo: list.dat: has no history; edits begin one\n");
  EXPECT_EQ(run({"undo", "none.dat"}).err, "chlist: undo: none.dat: No such file or directory\n");
}

TEST_F(Undo, WithoutABackupNoStateIsKept) {
  ASSERT_EQ(run({"lock", "list.dat", "Sport", "--no-backup"}).exit_code, 0);

  EXPECT_EQ(run({"history", "list.dat"}).exit_code, 1);
  EXPECT_EQ(run({"undo", "list.dat"}).exit_code, 1);
  expect_bytes(renamed);
}

TEST_F(Undo, AnotherOutputHasAHistoryOfItsOwn) {
  write_file(path("out.dat"), before.data);
  ASSERT_EQ(run({"lock", "list.dat", "Sport", "-o", "out.dat"}).exit_code, 0);

  ASSERT_EQ(run({"undo", "out.dat"}).exit_code, 0);

  expect_bytes(before.data, "out.dat");
  EXPECT_EQ(run({"history", "list.dat"}).out.find("Sport"), std::string::npos);
}

TEST_F(Undo, TakesTheCompanionAlong) {
  write_file(path("channels.conf"), "News;P:11000:H:S19.2E:22000:1=2:2:0:0:1:1:100:0\n");
  ASSERT_EQ(run({"import", "channels.conf", "-o", "own.dat"}).exit_code, 0);
  const std::string companion = read_file(path("own.dat.more.json"));
  ASSERT_EQ(run({"set", "own.dat", "News", "service_id=77"}).exit_code, 0);
  ASSERT_NE(read_file(path("own.dat.more.json")), companion);

  ASSERT_EQ(run({"undo", "own.dat"}).exit_code, 0);
  EXPECT_EQ(read_file(path("own.dat.more.json")), companion);
  ASSERT_EQ(run({"redo", "own.dat"}).exit_code, 0);
  EXPECT_NE(read_file(path("own.dat.more.json")), companion);
  EXPECT_EQ(run({"export", "own.dat", "-o", "out.conf"}).exit_code, 0);
  EXPECT_NE(read_file(path("out.conf")).find(":77:1:100:0"), std::string::npos);
}

TEST_F(Undo, TakesAMergeBack) {
  write_file(path("scan.dat"), channel_file().service(edit_test::news).data);
  ASSERT_NE(run({"merge", "list.dat", "scan.dat", "-o", "list.dat"}).exit_code, 2);

  EXPECT_TRUE(run({"undo", "list.dat"}).out.starts_with("list.dat: undone: merge list.dat scan.dat\n"));
  expect_bytes(renamed);
}

TEST_F(Undo, WhatStandsBesideTheListGoesWithIt) {
  write_file(path("channels.conf"), "News:11000:HC23M2S0:S19.2E:22000:101=2:102:0:0:1:1:100:0\n"
                                    "Films:11000:HC23M2S0:S19.2E:22000:201=2:202:0:0:2:1:100:0\n");
  ASSERT_EQ(run({"import", "channels.conf", "-o", "imported.dat"}).exit_code, 0);
  const auto imported = read_file(path("imported.dat"));
  const auto beside = read_file(path("imported.dat.more.json"));
  ASSERT_EQ(run({"remove", "imported.dat", "Films"}).exit_code, 0);
  const auto beside_one = read_file(path("imported.dat.more.json"));
  ASSERT_FALSE(beside_one == beside);

  EXPECT_EQ(run({"undo", "imported.dat"}).exit_code, 0);
  EXPECT_TRUE(read_file(path("imported.dat")) == imported);
  EXPECT_TRUE(read_file(path("imported.dat.more.json")) == beside);
  EXPECT_EQ(run({"redo", "imported.dat"}).exit_code, 0);
  EXPECT_TRUE(read_file(path("imported.dat.more.json")) == beside_one);
}

}  // namespace
