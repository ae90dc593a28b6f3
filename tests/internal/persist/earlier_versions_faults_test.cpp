// Reading a file of an earlier version when its n-th call to the file system fails, for every n: what is said, that the
// file is closed, and that the next read works. A build with the address sanitizer finds what is not released.
#include "stand_in_door.h"
#include "support/channel_file.h"
#include "support/log_capture.h"
#include "support/old_channel_file.h"

namespace {

using test_support::channel_file;
using test_support::door_call;
using test_support::in_version;
using test_support::list_in_memory;
using test_support::log_capture;
using test_support::name_of_version;
using test_support::old_file;
using test_support::old_version;
using test_support::read_old;
using test_support::record_kind;
using test_support::record_place;
using test_support::stand_in_door;
using test_support::write_file;
using lines = std::vector<std::string>;

class EarlierVersionFaults : public test_support::file_test, public ::testing::WithParamInterface<old_version> {
 protected:
  void SetUp() override {
    file_test::SetUp();
    channel_file made;
    made.service({.service_id = 1}).service({.service_id = 2}).transponder(7, 12'000'000, 0);
    file = in_version(GetParam(), made.service({.net_index = 2, .service_id = 3}));
    write_file(path(), file.data);
  }

  [[nodiscard]] std::string complaint(record_kind kind) const {
    const std::string list_name =
        kind == record_kind::transponder ? "the old_channel_list->to " : "the old_channel_list to ";
    const std::string size = kind == record_kind::list ? " size " + std::to_string(GetParam().size_of(kind)) + " " : "";
    return "ERROR: " + GetParam().reader + ":# Fail to read " + (kind == record_kind::service ? "" : list_name) + "'" +
           path() + "'" + size + "\n";
  }

  void expect_next_read_works() {
    const log_capture log(0);
    EXPECT_NE(read_old(GetParam(), path()), nullptr);
    EXPECT_EQ(log.writes(), lines{});
  }

  old_file file;
};

TEST_P(EarlierVersionFaults, AreNotThereWhenAllIsWell) {
  const stand_in_door door;
  lines expected = {"open " + path() + " r"};
  for (const record_place &record : file.records) {
    expected.push_back("read " + std::to_string(GetParam().size_of(record.kind)));
  }
  expected.emplace_back("close");

  EXPECT_NE(read_old(GetParam(), path()), nullptr);

  EXPECT_EQ(door.events(), expected);
}

TEST_P(EarlierVersionFaults, OfAnyReadGiveNoList) {
  const test_support::bytes before = list_in_memory();
  for (std::size_t n = 0; n < file.records.size(); ++n) {
    stand_in_door door;
    door.fail_at(door_call::read, static_cast<int>(n + 1));
    const log_capture log(0);

    EXPECT_EQ(read_old(GetParam(), path()), nullptr) << n;

    EXPECT_EQ(log.writes(), lines{complaint(file.records[n].kind)});
    EXPECT_EQ(door.calls(door_call::read), static_cast<int>(n + 1)) << "nothing is read behind a failure";
    EXPECT_EQ(door.events().back(), "close");
    EXPECT_EQ(door.open_files(), 0);
    EXPECT_EQ(list_in_memory(), before);
    expect_next_read_works();
  }
}

TEST_P(EarlierVersionFaults, OfTheOpenAreAMissingFile) {
  stand_in_door door;
  door.fail_at(door_call::open, 1);
  const log_capture log(0);

  EXPECT_EQ(read_old(GetParam(), path()), nullptr);

  EXPECT_EQ(log.writes(), lines{"ERROR: " + GetParam().reader + ":# Fail to open '" + path() + "'\n"});
  EXPECT_EQ(door.events(), lines{"open " + path() + " r"});
  expect_next_read_works();
}

TEST_P(EarlierVersionFaults, OfClosingDoNotMatter) {
  stand_in_door door;
  door.fail_at(door_call::close, 1);
  const log_capture log(0);

  EXPECT_NE(read_old(GetParam(), path()), nullptr);

  EXPECT_EQ(log.writes(), lines{});
  EXPECT_EQ(door.open_files(), 0);
}

TEST_P(EarlierVersionFaults, OfANullPathReachNoFile) {
  const stand_in_door door;

  EXPECT_EQ(GetParam().read(nullptr), nullptr);

  EXPECT_EQ(door.events(), lines{});
}

INSTANTIATE_TEST_SUITE_P(Readers, EarlierVersionFaults, ::testing::ValuesIn(test_support::old_versions()),
                         name_of_version);

}  // namespace
