// A save whose n-th call to the file system fails, for every n: what it says, and when the file system is synced.
#include "stand_in_door.h"
#include "support/channel_file.h"
#include "support/log_capture.h"

namespace {

using test_support::door_call;
using test_support::file_service;
using test_support::file_test;
using test_support::log_capture;
using test_support::stand_in_door;
using test_support::write_file;
using lines = std::vector<std::string>;

class SaveFaults : public file_test {
 protected:
  // Two networks, three transponders, four services.
  void SetUp() override {
    file_test::SetUp();
    file_service({.service_id = 1});
    file_service({.service_id = 2});
    file_service({.frequency = 12'000'000, .service_id = 3});
    file_service({.network_id = 2, .service_id = 4});
  }

  [[nodiscard]] std::string fails_to_write(const std::string &what) const {
    return "ERROR: save_channel_internal:# Fail to write the " + what + " to '" + path() + "'\n";
  }

  // What is said when the write of a record of this size fails.
  [[nodiscard]] std::string complaint(const std::string &write) const {
    if (write == "write 460032") {
      return fails_to_write("channel_list");
    }
    return fails_to_write(write == "write 312" ? "rch_info" : "tp_ch_info");
  }

  [[nodiscard]] lines steps_of_a_whole_save() const {
    return {"open " + path() + " w+",
            "write 460032",
            "write 416",
            "write 336",
            "write 312",
            "write 312",
            "write 336",
            "write 312",
            "write 416",
            "write 336",
            "write 312",
            "flush",
            "close",
            "sync"};
  }
};

TEST_F(SaveFaults, AreNotThereWhenEveryRecordIsWrittenInOneCall) {
  const stand_in_door door;

  EXPECT_EQ(save_channel("list.dat"), 1);

  EXPECT_EQ(door.events(), steps_of_a_whole_save());
}

TEST_F(SaveFaults, OfOpeningLeaveTheDiskAlone) {
  stand_in_door door;
  door.fail_at(door_call::open, 1);
  const log_capture log(0);

  EXPECT_EQ(save_channel("list.dat"), 0);

  EXPECT_EQ(log.writes(), (lines{"ERROR: save_channel_internal:# Fail to open '" + path() + "'\n"}));
  EXPECT_EQ(door.events(), (lines{"open " + path() + " w+"}));
}

TEST_F(SaveFaults, OfAPathThatIsTooLongDoNotEvenOpen) {
  const stand_in_door door;

  EXPECT_EQ(save_channel(std::string(64, 'n').c_str()), 0);

  EXPECT_EQ(door.events(), lines{});
}

TEST_F(SaveFaults, OfWritingEndTheSaveAtOnce) {
  const lines steps = steps_of_a_whole_save();
  for (int n = 1; n <= 10; ++n) {
    for (const bool is_short : {false, true}) {
      stand_in_door door;
      is_short ? door.write_short_at(n) : door.fail_at(door_call::write, n);
      const log_capture log(0);

      EXPECT_EQ(save_channel("list.dat"), 0) << n;

      lines expected(steps.begin(), steps.begin() + n + 1);
      expected.insert(expected.end(), {"close", "sync"});
      EXPECT_EQ(door.events(), expected);
      EXPECT_EQ(log.writes(), lines{complaint(steps[static_cast<std::size_t>(n)])}) << n;
    }
  }
}

TEST_F(SaveFaults, LeaveTheFileTruncatedAndPartlyWritten) {
  write_file(path(), test_support::bytes(600'000, 'x'));
  stand_in_door door;
  door.fail_at(door_call::write, 3);

  save_channel("list.dat");

  EXPECT_EQ(test_support::read_file(path()).size(), 460'032U + 416);
}

TEST_F(SaveFaults, OfWritingPrintNoStatus) {
  stand_in_door door;
  door.fail_at(door_call::write, 2);
  const log_capture log(2);

  save_channel("list.dat");

  const lines all = log.writes();
  ASSERT_EQ(all.size(), 6U);
  EXPECT_EQ(all.at(4), "ChannelAPI save_channel_internal:#  sizeof(struct channel_list_st) 460032 \n");
  EXPECT_EQ(all.at(5), fails_to_write("tp_ch_info"));
}

TEST_F(SaveFaults, OfTheLastBytesAreFailures) {
  for (const door_call kind : {door_call::flush, door_call::close}) {
    stand_in_door door;
    door.fail_at(kind, 1);
    const log_capture log(0);

    EXPECT_EQ(save_channel("list.dat"), 0);

    EXPECT_EQ(log.writes(), lines{fails_to_write("channel_list")});
    EXPECT_EQ(door.events(), steps_of_a_whole_save());
  }
}

TEST_F(SaveFaults, AreSilentBelowLevelZero) {
  stand_in_door door;
  door.fail_at(door_call::write, 1);
  const log_capture log(-1);

  EXPECT_EQ(save_channel("list.dat"), 0);

  EXPECT_EQ(log.writes(), lines{});
}

TEST_F(SaveFaults, LeaveTheListAlone) {
  const auto before = test_support::list_in_memory();
  for (int n = 1; n <= 10; ++n) {
    stand_in_door door;
    door.fail_at(door_call::write, n);
    save_channel("list.dat");
    EXPECT_EQ(test_support::list_in_memory(), before);
  }
  EXPECT_NE(get_channel_st(1, 2, 100, 11'000'000, 4, 0), nullptr);
}

TEST_F(SaveFaults, AreForgottenByTheNextSave) {
  {
    stand_in_door door;
    door.fail_at(door_call::write, 4);
    save_channel("list.dat");
  }
  const stand_in_door door;

  EXPECT_EQ(save_channel("list.dat"), 1);

  reset_channel_list();
  EXPECT_EQ(load_named("list.dat"), 10);
  EXPECT_NE(get_channel_st(1, 2, 100, 11'000'000, 4, 0), nullptr);
}

}  // namespace
