// Group files whose n-th call to the file system fails: what is said, what goes on all the same, and when the file
// system is synced.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "internal/persist/stand_in_door.h"
#include "support/group_file_test.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

class GroupFileFaults : public group_file_test {
 protected:
  [[nodiscard]] lines steps_of_a_save() const {
    return {"open " + saved_path() + " w+", "write 2", "write " + std::to_string(GetParam().table_size()), "close",
            "sync"};
  }
  [[nodiscard]] lines steps_of_a_load() const {
    return {"open " + loaded_path() + " r", "read 2", "read " + std::to_string(GetParam().table_size()), "close"};
  }
};

TEST_P(GroupFileFaults, AreNotThereWhenCountAndTableAreWrittenInOneCallEach) {
  const stand_in_door door;
  fill();

  EXPECT_EQ(save(), 1);

  EXPECT_EQ(door.events(), steps_of_a_save());
}

TEST_P(GroupFileFaults, OfEachWriteAreReportedAndTheSaveGoesOn) {
  for (const int n : {1, 2}) {
    for (const bool is_short : {false, true}) {
      stand_in_door door;
      is_short ? door.write_short_at(n) : door.fail_at(door_call::write, n);
      fill();
      const log_capture log(0);

      EXPECT_EQ(save(), 0) << n;

      EXPECT_EQ(log.writes(), lines{failed_write()}) << n;
      EXPECT_EQ(door.events(), steps_of_a_save()) << n;
      EXPECT_EQ(door.open_files(), 0);
    }
  }
}

TEST_P(GroupFileFaults, ThatShowWhenTheFileIsClosedAreFailuresAfterASync) {
  stand_in_door door;
  door.fail_at(door_call::close, 1);
  fill();
  const log_capture log(0);

  EXPECT_EQ(save(), 0);

  EXPECT_EQ(log.writes(), lines{failed_write()});
  EXPECT_EQ(door.events(), steps_of_a_save());
}

TEST_P(GroupFileFaults, OfOpeningForWritingLeaveTheDiskAlone) {
  stand_in_door door;
  door.fail_at(door_call::open, 1);
  fill();
  const log_capture silence(-1);

  EXPECT_EQ(save(), 0);

  EXPECT_EQ(door.events(), lines{steps_of_a_save()[0]});
}

TEST_P(GroupFileFaults, AreNotThereForAnEmptyTableWhichTouchesNoFile) {
  const stand_in_door door;
  const log_capture silence(-1);

  EXPECT_EQ(save(), 1);

  EXPECT_EQ(door.events(), lines{});
}

TEST_P(GroupFileFaults, AreNotThereWhenCountAndTableAreReadInOneCallEach) {
  write_file(loaded_path(), file_of(3, image()));
  const stand_in_door door;

  EXPECT_EQ(load(), 0);

  EXPECT_EQ(door.events(), steps_of_a_load());
  EXPECT_EQ(door.open_files(), 0);
}

TEST_P(GroupFileFaults, OfEachReadEmptyTheTableAndCloseTheFile) {
  write_file(loaded_path(), file_of(3, image()));
  for (const int n : {1, 2}) {
    stand_in_door door;
    door.fail_at(door_call::read, n);
    fill();
    const log_capture log(0);

    EXPECT_EQ(load(), -1) << n;

    EXPECT_EQ(log.writes(), lines{short_read(n == 1 ? 2 : GetParam().table_size())}) << n;
    EXPECT_EQ(door.events(), steps_of_a_load()) << n;
    EXPECT_EQ(door.open_files(), 0) << n;
    expect_empty_table();
  }
}

TEST_P(GroupFileFaults, OfOpeningForReadingLeaveTheTableAsItWas) {
  stand_in_door door;
  door.fail_at(door_call::open, 1);
  fill();
  const log_capture silence(-1);

  EXPECT_EQ(load(), 0);

  EXPECT_EQ(door.events(), lines{steps_of_a_load()[0]});
  EXPECT_EQ(*GetParam().count, 3);
}

TEST_P(GroupFileFaults, DoNotKeepAReplacedTableFromBeingReplaced) {
  stand_in_door door;
  door.fail_at(door_call::write, 1);
  const auto groups = image();
  const log_capture log(0);

  EXPECT_EQ(set_group_list(GetParam().kind, groups.data(), 3), 1);

  EXPECT_EQ(log.writes(), lines{failed_write()});
  EXPECT_EQ(*GetParam().count, 3);
}

INSTANTIATE_TEST_SUITE_P(OfThe, GroupFileFaults, ::testing::Values(genres(), countries()), name_of_table);

}  // namespace
