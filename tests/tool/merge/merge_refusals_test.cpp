// What `chlist merge` refuses or fails at: files of other versions, files that are cut or none, outputs that cannot be
// written, and bad usage. The files beside it stay as they are.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "tool/merge/merge_host.h"

namespace {

using namespace merge_test;

TEST_F(MergeTool, TheOutputIsNotTheNewList) {
  expect_refused({"merge", "list.dat", "scan.dat", "-o", "./scan.dat"}, "./scan.dat: is the input itself");
}

TEST_F(MergeTool, OnlyTheCurrentVersionIsMerged) {
  channel_file other = own_list();
  for (const auto &[version, hint] : {std::pair{6, ""},
                                      {7, ": `chlist convert` makes one of it"},
                                      {9, ": `chlist convert` makes one of it"},
                                      {11, ""}}) {
    other.set(list_field::version, 2, static_cast<std::uint16_t>(version));
    write_file(path("other.dat"), other.data);
    const std::string error = "other.dat: is of version " + std::to_string(version) + ", not 10" + hint;

    expect_refused({"merge", "other.dat", "scan.dat", "-o", "out.dat"}, error);
    expect_refused({"merge", "list.dat", "other.dat", "-o", "out.dat"}, error);
  }
}

TEST_F(MergeTool, ShortFilesAreRefused) {
  for (const std::string name : {"list.dat", "scan.dat"}) {
    const std::string whole = read_file(path(name));

    write_file(path(name), whole.substr(0, whole.size() - 1));
    expect_refused({"merge", "list.dat", "scan.dat", "-o", "out.dat"},
                   name + ": ends too early for a channel file of version 10");
    write_file(path(name), whole.substr(0, test_support::list_size - 1));
    expect_refused({"merge", "list.dat", "scan.dat", "-o", "out.dat"},
                   name + ": ends too early for a channel file of version 10");
    write_file(path(name), whole.substr(0, 1));
    expect_refused({"merge", "list.dat", "scan.dat", "-o", "out.dat"}, name + ": too short for a channel file");

    write_file(path(name), whole);
  }
}

// A promotion view full of entries reaches where the heads of a header's lists stand in memory.
TEST_F(MergeTool, FilesThatEndInTheirHeaderAreRefusedWhateverTheirBytesAre) {
  channel_file promoted = own_list();
  for (int number = 1; number <= MAX_PROMO_CHANNEL; ++number) {
    promoted.entry(VIEW_PROMOTION, {}, number);
  }
  for (const std::string name : {"list.dat", "scan.dat"}) {
    const std::string whole = read_file(path(name));
    for (const std::size_t size : {459'593U, 459'600U, 459'618U, 460'031U}) {
      write_file(path(name), promoted.data.substr(0, size));
      expect_refused({"merge", "list.dat", "scan.dat", "-o", "out.dat"},
                     name + ": ends too early for a channel file of version 10");
    }
    write_file(path(name), whole);
  }
}

TEST_F(MergeTool, InputThatIsNoFileIsRefused) {
  fs::create_directory(path("folder"));

  expect_refused({"merge", "missing.dat", "scan.dat", "-o", "out.dat"}, "missing.dat: No such file or directory");
  expect_refused({"merge", "list.dat", "missing.dat", "-o", "out.dat"}, "missing.dat: No such file or directory");
  expect_refused({"merge", "folder", "scan.dat", "-o", "out.dat"}, "folder: not a regular file");
  expect_refused({"merge", "list.dat", "folder", "--dry-run"}, "folder: not a regular file");
  expect_refused({"merge", "list.dat", "/dev/full", "--dry-run"}, "/dev/full: not a regular file");
}

TEST_F(MergeTool, OutputThatCannotBeWrittenIsRefused) {
  fs::create_directory(path("folder"));

  expect_refused({"merge", "list.dat", "scan.dat", "-o", "/dev/full"}, "/dev/full: not a regular file");
  expect_refused({"merge", "list.dat", "scan.dat", "-o", path("folder")}, path("folder") + ": not a regular file");
  EXPECT_EQ(run({"merge", "list.dat", "scan.dat", "-o", "missing/out.dat"}).exit_code, 2);
}

TEST_F(MergeTool, AFailedWriteLeavesTheListAndNoOtherFile) {
  const program_result result = run_program({"/bin/sh", "-c",
                                             "trap '' XFSZ; ulimit -f 100; exec " CHLIST_PROGRAM
                                             " merge list.dat scan.dat -o list.dat --no-backup"},
                                            dir.path());

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: merge: list.dat: the channel file could not be written\n");
  EXPECT_EQ(read_file(path("list.dat")), own_list().data);
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "scan.dat"}));
}

TEST_F(MergeTool, AReportThatCannotBeWrittenIsAFailure) {
  const program_result result = run_program(
      {"/bin/sh", "-c", "exec " CHLIST_PROGRAM " merge list.dat scan.dat --dry-run >/dev/full"}, dir.path());

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: merge: standard output: No space left on device\n");
}

TEST_F(MergeTool, BadUsageIsRefused) {
  EXPECT_EQ(run({"merge"}).err, "chlist: merge: LIST is required: see `chlist help merge`\n");
  EXPECT_EQ(run({"merge", "list.dat", "-o", "out.dat"}).exit_code, 2);
  EXPECT_EQ(run({"merge", "list.dat", "scan.dat", "more", "-o", "out.dat"}).exit_code, 2);
  EXPECT_EQ(run({"merge", "list.dat", "scan.dat", "-o"}).exit_code, 2);
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "scan.dat"}));
}

TEST_F(MergeTool, WithoutOutputOnlyADryRunIsPossible) {
  const program_result result = run({"merge", "list.dat", "scan.dat"});

  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: merge: --output (or --dry-run) is required: see `chlist help merge`\n");
}

}  // namespace
