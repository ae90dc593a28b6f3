// The files of `chlist import`: the output as a whole or not at all, and how it fails.
#include <channel/channel.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tool/exchange/import_host.h"
#include "tool/exchange/vdr/service_line.h"

namespace {

namespace fs = std::filesystem;

using test_support::read_file;
using test_support::write_file;
using tool_test::program_result;
using tool_test::run_program;
using tool_test::sample;
using tool_test::service_line;

using ImportFiles = tool_test::import_test;

TEST_F(ImportFiles, TheSameInputGivesTheSameBytes) {
  run({"import", sample, "-o", "first.dat"});
  run({"import", sample, "-o", "second.dat"});

  EXPECT_FALSE(read_file(dir.path() + "first.dat").empty());
  EXPECT_EQ(read_file(dir.path() + "first.dat"), read_file(dir.path() + "second.dat"));
}

TEST_F(ImportFiles, TheOutputMayLieDeep) {
  const std::string deep = dir.path() + std::string(60, 'a') + "/" + std::string(60, 'b') + "/";
  fs::create_directories(deep);

  EXPECT_EQ(run({"import", sample, "-o", deep + std::string(80, 'c')}).exit_code, 0);

  fs::rename(deep + std::string(80, 'c'), dir.path() + "list.dat");
  load();
  EXPECT_EQ(list.vnumber, 24);
}

TEST_F(ImportFiles, ANewOutputHasTheModeOfNewFilesAndStandsAlone) {
  EXPECT_EQ(run({"import", sample, "-o", "list.dat"}).exit_code, 0);

  const mode_t mask = ::umask(0);
  ::umask(mask);
  struct stat found = {};
  ASSERT_EQ(::stat((dir.path() + "list.dat").c_str(), &found), 0);
  EXPECT_EQ(found.st_mode & 0777U, 0666U & ~mask);
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "list.dat.more.json"}));
}

TEST_F(ImportFiles, AnOldOutputIsReplacedAndKeepsItsMode) {
  write_file(dir.path() + "list.dat", "old");
  ::chmod((dir.path() + "list.dat").c_str(), 0640);

  EXPECT_EQ(run({"import", sample, "-o", "list.dat"}).exit_code, 0);

  struct stat found = {};
  ASSERT_EQ(::stat((dir.path() + "list.dat").c_str(), &found), 0);
  EXPECT_EQ(found.st_mode & 0777U, 0640U);
  load();
  EXPECT_EQ(list.vnumber, 24);
}

TEST_F(ImportFiles, ASymbolicLinkStaysOne) {
  write_file(dir.path() + "real.dat", "old");
  fs::create_symlink("real.dat", dir.path() + "list.dat");

  EXPECT_EQ(run({"import", sample, "-o", "list.dat"}).exit_code, 0);

  EXPECT_TRUE(fs::is_symlink(dir.path() + "list.dat"));
  load("real.dat");
  EXPECT_EQ(list.vnumber, 24);
}

TEST_F(ImportFiles, WithoutAServiceNothingIsWritten) {
  write_file(dir.path() + "list.dat", "old");

  const program_result result = import("broken\n");

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: import: channels.conf:1: skipped: has 1 field instead of 9 to 13\n"
                        "chlist: import: channels.conf: no service to import\n");
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(read_file(dir.path() + "list.dat"), "old");
}

TEST_F(ImportFiles, AnEmptyInputIsRefused) {
  EXPECT_EQ(import("").exit_code, 2);
  EXPECT_EQ(files(), (std::vector<std::string>{"channels.conf"}));
}

TEST_F(ImportFiles, AFailedWriteLeavesTheOldOutputAndNoOther) {
  write_file(dir.path() + "list.dat", "old");
  const std::string limited = "trap '' XFSZ; ulimit -f 100; exec " CHLIST_PROGRAM " import " + sample + " -o list.dat";

  const program_result result = run_program({"/bin/sh", "-c", limited}, dir.path());

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: import: list.dat: the channel file could not be written\n");
  EXPECT_EQ(read_file(dir.path() + "list.dat"), "old");
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat"}));
}

TEST_F(ImportFiles, InputThatCannotBeReadIsRefused) {
  EXPECT_EQ(run({"import", "missing.conf", "-o", "list.dat"}).err,
            "chlist: import: missing.conf: No such file or directory\n");
  EXPECT_EQ(run({"import", "missing.conf", "-o", "list.dat"}).exit_code, 2);
  EXPECT_EQ(run({"import", "/tmp", "-o", "list.dat"}).err,
            "chlist: import: /tmp: is a folder without a lamedb or a lamedb5, no list\n");
  EXPECT_TRUE(files().empty());
}

TEST_F(ImportFiles, OutputThatCannotBeWrittenIsRefused) {
  EXPECT_EQ(run({"import", sample, "-o", "missing/list.dat"}).exit_code, 2);
  EXPECT_EQ(run({"import", sample, "-o", dir.path()}).exit_code, 2);
  EXPECT_EQ(run({"import", sample, "-o", "/dev/null"}).err, "chlist: import: /dev/null: not a regular file\n");
  EXPECT_TRUE(files().empty());
}

TEST_F(ImportFiles, TheInputIsNotOverwritten) {
  const std::string text = service_line().text();

  const program_result result = import(text, "./channels.conf");

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: import: ./channels.conf: is the input itself\n");
  EXPECT_EQ(read_file(dir.path() + "channels.conf"), text);
}

}  // namespace
