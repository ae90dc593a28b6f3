// Reading a new list: one that cannot be read whole changes nothing, and the file is closed either way.
#include "faults/stand_in_door.h"
#include "merge_test.h"

namespace {

namespace list_field = test_support::list_field;
namespace network_field = test_support::network_field;
namespace transponder_field = test_support::transponder_field;
using channel::persist::merge_new_list;
using test_support::append_entry;
using test_support::bytes;
using test_support::channel_file;
using test_support::door_call;
using test_support::entry_of;
using test_support::file_service;
using test_support::lines;
using test_support::log_capture;
using test_support::record_kind;
using test_support::record_place;
using test_support::stand_in_door;
using test_support::three_networks;

class MergeReading : public test_support::merge_test {
 protected:
  void SetUp() override {
    merge_test::SetUp();
    channel_st *service = file_service({.service_id = 1});
    append_entry(VIEW_ALL, entry_of(*service, 1));
    append_entry(VIEW_USER, entry_of(*service, 9));
  }

  [[nodiscard]] std::string complaint(record_kind kind) const {
    const std::string prefix = "ERROR: new_load_channel:# Fail to read ";
    switch (kind) {
      case record_kind::list:
        return prefix + "the new_channel_list to '" + new_path() + "' size 460032 \n";
      case record_kind::network:
        return prefix + "the new_channel_list to '" + new_path() + "'\n";
      case record_kind::transponder:
        return prefix + "the new_channel_list->to '" + new_path() + "'\n";
      default:
        return prefix + "'" + new_path() + "'\n";
    }
  }

  [[nodiscard]] std::string unopened(const std::string &file) const {
    return "ERROR: new_load_channel:# Fail to open '" + file + "'\n";
  }

  // Expects a merge that fails with one line, and the list as it was.
  template <class Merge>
  void expect_untouched(const Merge &merge_it, const std::string &line, const std::string &what) {
    const bytes list_before = test_support::list_in_memory();
    const bytes saved_before = save();
    {
      const log_capture log(1);
      EXPECT_EQ(merge_it(), 0) << what;
      EXPECT_EQ(log.writes(), lines{line}) << what;
    }
    EXPECT_TRUE(test_support::list_in_memory() == list_before) << what;
    EXPECT_TRUE(save() == saved_before) << what;
    EXPECT_EQ(find({.service_id = 1})->country_id, 0) << what;
  }

  void expect_refused(const bytes &contents, record_kind cut, const std::string &what) {
    expect_untouched([&] { return merge(contents); }, complaint(cut), what);
  }
};

TEST_F(MergeReading, TakesThePathAsItStands) {
  set_target_dir("/nowhere/");

  EXPECT_EQ(merge(channel_file().service({.service_id = 1}).service({.service_id = 2})), 1);
}

TEST_F(MergeReading, OfAMissingFileChangesNothing) {
  expect_untouched([this] { return merge_new_list(new_path().c_str()); }, unopened(new_path()), "missing");
}

TEST_F(MergeReading, OfADirectoryChangesNothing) {
  std::filesystem::create_directory(new_path());

  expect_untouched([this] { return merge_new_list(new_path().c_str()); }, complaint(record_kind::list), "directory");
}

TEST_F(MergeReading, OfANullPathChangesNothing) {
  expect_untouched([] { return merge_new_list(nullptr); }, unopened("(null)"), "null");
}

TEST_F(MergeReading, OfAnEmptyPathChangesNothing) {
  expect_untouched([] { return merge_new_list(""); }, unopened(""), "empty path");
}

TEST_F(MergeReading, OfAShortFileChangesNothing) {
  const channel_file file = three_networks();
  for (const record_place &record : file.records) {
    const std::size_t end = record.offset + record.size;
    for (const std::size_t length : {record.offset, record.offset + 1, end - 1}) {
      expect_refused(file.data.substr(0, length), record.kind, "cut to " + std::to_string(length));
    }
  }
}

TEST_F(MergeReading, OfAWholeFileIsDone) { EXPECT_EQ(merge(three_networks()), 2); }

TEST_F(MergeReading, PassesOverBytesBehindTheLastRecord) {
  EXPECT_EQ(merge(three_networks().data + std::string(1000, '\xFF')), 2);

  EXPECT_TRUE(test_support::counts_match_lists());
}

TEST_F(MergeReading, OfClaimedRecordsThatAreMissingChangesNothing) {
  for (const unsigned claim : {4U, 255U, 0xFFFFU}) {
    expect_refused(three_networks().set(list_field::network_num, 2, claim).data, record_kind::network, "network_num");
    expect_refused(three_networks().set_last(record_kind::network, network_field::tp_num, 2, claim).data,
                   record_kind::transponder, "tp_num");
    channel_file file = three_networks();
    file.set(file.records[2].offset + transponder_field::rch_num, 2, claim * 1000 & 0xFFFF);
    expect_refused(file.data, record_kind::service, "rch_num");
  }
}

TEST_F(MergeReading, ComplainsAtLevelZeroAndNotBelow) {
  const bytes half = three_networks().data.substr(0, 1000);

  EXPECT_EQ(test_support::writes_at(0, [&] { return merge(half); }), lines{complaint(record_kind::list)});
  EXPECT_EQ(test_support::writes_at(-1, [&] { return merge(half); }), lines{});
}

TEST_F(MergeReading, ReadsRecordByRecordAndCloses) {
  const stand_in_door door;

  merge(three_networks());

  EXPECT_EQ(door.events(),
            (lines{"open " + new_path() + " r", "read 460032", "read 416", "read 336", "read 312", "read 312",
                   "read 336", "read 416", "read 336", "read 312", "read 336", "read 416", "close"}));
}

TEST_F(MergeReading, ThatFailsAtAnyReadChangesNothingAndCloses) {
  const channel_file file = three_networks();
  for (std::size_t n = 1; n <= file.records.size(); ++n) {
    int open_files = -1;
    expect_untouched(
        [&] {
          stand_in_door door;
          door.fail_at(door_call::read, static_cast<int>(n));
          const int result = merge(file);
          open_files = door.open_files();
          EXPECT_EQ(door.events().back(), "close");
          return result;
        },
        complaint(file.records[n - 1].kind), "read " + std::to_string(n));
    EXPECT_EQ(open_files, 0);
  }
}

TEST_F(MergeReading, ThatCannotOpenChangesNothing) {
  expect_untouched(
      [&] {
        stand_in_door door;
        door.fail_at(door_call::open, 1);
        const int result = merge(three_networks());
        EXPECT_EQ(door.events().size(), 1U);
        return result;
      },
      unopened(new_path()), "open");
}

TEST_F(MergeReading, IsNotHurtByAFailedClose) {
  stand_in_door door;
  door.fail_at(door_call::close, 1);

  EXPECT_EQ(merge(three_networks()), 2);

  EXPECT_EQ(door.open_files(), 0);
}

TEST_F(MergeReading, WorksAfterOneThatFailed) {
  merge(three_networks().data.substr(0, 461'000));

  EXPECT_EQ(merge(three_networks()), 2);
}

TEST_F(MergeReading, ReadsNoPointerFromTheFile) {
  channel_file file = three_networks();
  test_support::fill_pointer_slots(file.data, file.records, '\xA5');

  EXPECT_EQ(merge(file), 2);

  EXPECT_TRUE(test_support::counts_match_lists());
}

TEST_F(MergeReading, OfNoiseStaysInsideItsRecords) {
  for (int byte = 0; byte < 256; ++byte) {
    merge(bytes(470'000, static_cast<char>(byte)));
  }

  EXPECT_TRUE(test_support::counts_match_lists());
}

}  // namespace
