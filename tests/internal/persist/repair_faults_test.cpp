// A repair whose n-th call to the file system fails, for every n: an empty list, and nothing lost.
#include "stand_in_door.h"
#include "support/log_capture.h"
#include "support/repair_test.h"

namespace {

using test_support::bytes;
using test_support::channel_file;
using test_support::door_call;
using test_support::log_capture;
using test_support::stand_in_door;
using test_support::write_file;
using lines = std::vector<std::string>;

class RepairFaults : public test_support::repair_test {
 protected:
  void SetUp() override {
    file_test::SetUp();
    const channel_file file = channel_file().service({.service_id = 1}).service({.service_id = 2});
    write_file(path(), in_version(file));
  }

  int repair_file() { return repair_channel(GetParam().number, path().c_str()); }

  static void expect_initialised() {
    const bytes found = test_support::list_in_memory();
    EXPECT_EQ(found, test_support::initialised_list());
  }

  void expect_next_repair_works() {
    EXPECT_EQ(repair_file(), 0);
    EXPECT_EQ(every_service().size(), 2U);
    reset_channel_list();
  }
};

TEST_P(RepairFaults, OfAnyReadLeaveAnEmptyList) {
  constexpr int records = 5;
  for (int n = 1; n <= records; ++n) {
    stand_in_door door;
    door.fail_at(door_call::read, n);
    const log_capture log(0);

    EXPECT_EQ(repair_file(), -1) << n;

    EXPECT_EQ(log.writes().size(), 1U);
    EXPECT_EQ(log.writes_with("ERROR: " + GetParam().reader + ":# Fail to read ").size(), 1U);
    EXPECT_EQ(door.open_files(), 0);
    expect_initialised();
    expect_next_repair_works();
  }
}

TEST_P(RepairFaults, OfTheOpenLeaveAnEmptyList) {
  stand_in_door door;
  door.fail_at(door_call::open, 1);
  const log_capture log(0);

  EXPECT_EQ(repair_file(), -1);

  EXPECT_EQ(log.writes(), lines{"ERROR: " + GetParam().reader + ":# Fail to open '" + path() + "'\n"});
  expect_initialised();
  expect_next_repair_works();
}

TEST_P(RepairFaults, OfClosingDoNotMatter) {
  stand_in_door door;
  door.fail_at(door_call::close, 1);

  EXPECT_EQ(repair_file(), 0);

  EXPECT_EQ(door.open_files(), 0);
}

TEST_P(RepairFaults, NeverWriteOrSync) {
  const stand_in_door door;

  EXPECT_EQ(repair_file(), 0);

  EXPECT_EQ(door.calls(door_call::open), 1);
  EXPECT_EQ(door.calls(door_call::write), 0);
  EXPECT_EQ(door.calls(door_call::sync), 0);
}

TEST_P(RepairFaults, OfRefusedVersionsReachNoFile) {
  const stand_in_door door;

  for (const int version : {6, 10, 11}) {
    EXPECT_EQ(repair_channel(version, path().c_str()), -1);
  }

  EXPECT_EQ(door.events(), lines{});
}

REPAIRED_FROM_EVERY_VERSION(RepairFaults);

}  // namespace
