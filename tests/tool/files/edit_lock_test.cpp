// Edits of one file at the same time, and files that change under an edit.
#include "chlist/files/edit_lock.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>

#include <fstream>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "chlist/files/channel_file.h"
#include "tool/chlist_host.h"
#include "tool/faults/failing_call.h"

namespace {

using namespace tool_test;

class ParallelEdits : public chlist_test {
 protected:
  static constexpr int edits = 12;

  void SetUp() override {
    chlist_test::SetUp();
    channel_file file;
    for (std::uint16_t id = 1; id <= edits; ++id) {
      file.service({.service_id = id, .name = "Service " + std::to_string(id)});
    }
    write_file(path("list.dat"), file.data);
  }
};

TEST_F(ParallelEdits, AllSurvive) {
  std::vector<std::thread> running;
  for (int id = 1; id <= edits; ++id) {
    running.emplace_back([this, id] {
      const std::string number = std::to_string(id);
      const program_result result =
          run({"rename", "list.dat", "1:1:100:11000000H:" + number, "Mine " + number, "--no-backup"});
      EXPECT_EQ(result.exit_code, 0) << result.err;
    });
  }
  for (std::thread &each : running) {
    each.join();
  }

  ASSERT_EQ(load_named("list.dat"), CHANNEL_LIST_VERSION);
  for (std::uint16_t id = 1; id <= edits; ++id) {
    EXPECT_EQ(get_channel_st(1, 1, 100, 11'000'000, id, 0)->name[0].text, "Mine " + std::to_string(id));
  }
}

TEST_F(ParallelEdits, ASecondOneWaitsForTheFirst) {
  std::thread later;
  {
    const chlist::edit_lock lock(path("list.dat"));
    later = std::thread([this] { EXPECT_EQ(run({"rename", "list.dat", "Service 2", "Mine"}).exit_code, 0); });
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_EQ(files(), std::vector<std::string>{"list.dat"});
  }
  later.join();
  EXPECT_EQ(files(), (std::vector<std::string>{"list.dat", "list.dat.bak", "list.dat.history"}));
}

TEST_F(ParallelEdits, ADryRunAndAReadingWaitForNobody) {
  const chlist::edit_lock lock(path("list.dat"));

  EXPECT_EQ(run({"rename", "list.dat", "Service 2", "Mine", "--dry-run"}).exit_code, 0);
  EXPECT_EQ(run({"list", "list.dat"}).exit_code, 0);
}

TEST_F(ParallelEdits, AFileThatSomebodyElseWroteIsNotTheOneThatWasRead) {
  const chlist::channel_file input(path("list.dat"));
  EXPECT_NO_THROW(input.must_be_unchanged());

  write_file(path("list.dat"), channel_file().data);

  EXPECT_THROW(input.must_be_unchanged(), std::runtime_error);
}

TEST_F(ParallelEdits, AFileInItsPlaceIsNotTheOneThatWasRead) {
  const chlist::channel_file input(path("list.dat"));
  std::filesystem::copy_file(path("list.dat"), path("other.dat"));
  std::filesystem::rename(path("other.dat"), path("list.dat"));

  EXPECT_THROW(input.must_be_unchanged(), std::runtime_error);
  std::filesystem::remove(path("list.dat"));
  EXPECT_THROW(input.must_be_unchanged(), std::runtime_error);
}

TEST_F(ParallelEdits, NoneIsMadeWhenTheSystemFailsToLock) {
  const std::string before = read_file(path("list.dat"));
  const test_support::temp_dir told;
  for (int n = 1;; ++n) {
    const failing_call failing(n, told.path() + "call");
    const program_result result = run({"rename", "list.dat", "Service 1", "Mine", "--no-backup"});
    ASSERT_FALSE(failing.name().empty());
    if (failing.name() == "flock") {
      EXPECT_EQ(result.exit_code, 2);
      EXPECT_NE(result.err.find(": Input/output error\n"), std::string::npos) << result.err;
      EXPECT_EQ(read_file(path("list.dat")), before);
      return;
    }
    write_file(path("list.dat"), before);
  }
}

}  // namespace
