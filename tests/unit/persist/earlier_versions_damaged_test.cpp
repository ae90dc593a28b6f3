// Files of earlier versions that are missing, end early or claim too much: no list, one line, and nothing else.
#include <filesystem>

#include "support/channel_file.h"
#include "support/log_capture.h"
#include "support/old_channel_file.h"

namespace {

using test_support::channel_file;
using test_support::in_version;
using test_support::list_in_memory;
using test_support::log_capture;
using test_support::name_of_version;
using test_support::old_file;
using test_support::old_version;
using test_support::old_version_of;
using test_support::read_old;
using test_support::record_kind;
using test_support::record_place;
using test_support::write_file;
using lines = std::vector<std::string>;

class DamagedEarlierFile : public test_support::file_test, public ::testing::WithParamInterface<old_version> {
 protected:
  static channel_file small_file() {
    channel_file file;
    file.service({.service_id = 1}).service({.service_id = 2}).transponder(7, 12'000'000, 0);
    file.service({.ts_id = 7, .frequency = 12'000'000, .service_id = 3});
    return file.service({.net_index = 2, .service_id = 4});
  }

  [[nodiscard]] std::string complaint(record_kind kind) const {
    const std::string begin = "ERROR: " + GetParam().reader + ":# Fail to read ";
    switch (kind) {
      case record_kind::list:
        return begin + "the old_channel_list to '" + path() + "' size " + std::to_string(GetParam().size_of(kind)) +
               " \n";
      case record_kind::network:
        return begin + "the old_channel_list to '" + path() + "'\n";
      case record_kind::transponder:
        return begin + "the old_channel_list->to '" + path() + "'\n";
      default:
        return begin + "'" + path() + "'\n";
    }
  }

  [[nodiscard]] std::string unopened(const std::string &file) const {
    return "ERROR: " + GetParam().reader + ":# Fail to open '" + file + "'\n";
  }

  void expect_short_in(const std::string &contents, record_kind kind) {
    write_file(path(), contents);
    const log_capture log(0);

    EXPECT_EQ(read_old(GetParam(), path()), nullptr) << contents.size();

    EXPECT_EQ(log.writes(), lines{complaint(kind)}) << contents.size();
  }
};

TEST_P(DamagedEarlierFile, IsShortAtEveryBoundary) {
  const old_file file = in_version(GetParam(), small_file());
  for (const record_place &record : file.records) {
    const std::size_t end = record.offset + record.size;
    for (const std::size_t size : {record.offset, record.offset + 1, record.offset + record.size / 2, end - 1}) {
      expect_short_in(file.data.substr(0, size), record.kind);
    }
  }
}

TEST_P(DamagedEarlierFile, IsWholeAtItsLastByte) {
  const old_file file = in_version(GetParam(), small_file());
  write_file(path(), file.data);

  EXPECT_NE(read_old(GetParam(), path()), nullptr);
}

TEST_P(DamagedEarlierFile, IsSilentBelowLevelZero) {
  write_file(path(), in_version(GetParam(), small_file()).data.substr(0, 460'500));
  const log_capture log(-1);

  EXPECT_EQ(read_old(GetParam(), path()), nullptr);
  EXPECT_EQ(read_old(GetParam(), path("missing.dat")), nullptr);

  EXPECT_EQ(log.writes(), lines{});
}

TEST_P(DamagedEarlierFile, TellsWhatItReadBeforeTheFailure) {
  const old_file file = in_version(GetParam(), small_file());
  write_file(path(), file.data.substr(0, file.records[3].offset));
  const log_capture log(3);

  EXPECT_EQ(read_old(GetParam(), path()), nullptr);

  const std::string trace = "ChannelAPI " + GetParam().reader + ":# ";
  EXPECT_EQ(log.writes(), (lines{trace + "(" + path() + ")\n", trace + "old_channel_list->network_num 2\n",
                                 trace + "net_index 1 tp_num 2 , network_name : Network \n",
                                 trace + "tp_ch_info->rch_num 2\n", complaint(record_kind::service)}));
}

TEST_P(DamagedEarlierFile, CannotBeOpenedWhenItIsMissing) {
  const log_capture log(0);

  EXPECT_EQ(read_old(GetParam(), path("missing.dat")), nullptr);
  EXPECT_EQ(read_old(GetParam(), ""), nullptr);

  EXPECT_EQ(log.writes(), (lines{unopened(path("missing.dat")), unopened("")}));
}

TEST_P(DamagedEarlierFile, IsShortWhenItIsADirectory) {
  std::filesystem::create_directory(path());
  const log_capture log(0);

  EXPECT_EQ(read_old(GetParam(), path()), nullptr);

  EXPECT_EQ(log.writes(), lines{complaint(record_kind::list)});
}

TEST_P(DamagedEarlierFile, IsShortWhenItCountsMoreThanItHolds) {
  const old_file file = in_version(GetParam(), channel_file().service({.service_id = 1}));
  const std::tuple<record_kind, std::size_t, record_kind> counts[] = {
      {record_kind::list, 459'610, record_kind::network},
      {record_kind::network, 76, record_kind::transponder},
      {record_kind::transponder, 18, record_kind::service}};
  for (const auto &[kind, at, missing] : counts) {
    for (const std::uint64_t count : {2U, 65'535U}) {
      std::string contents = file.data;
      test_support::put(contents, file.records[static_cast<std::size_t>(kind)].offset + at, 2, count);
      expect_short_in(contents, missing);
    }
  }
}

TEST_P(DamagedEarlierFile, LeavesTheListInMemoryAlone) {
  test_support::fill_view(VIEW_ALL, 3);
  const test_support::bytes before = list_in_memory();
  const old_file file = in_version(GetParam(), small_file());

  for (const record_place &record : file.records) {
    write_file(path(), file.data.substr(0, record.offset + 1));
    EXPECT_EQ(read_old(GetParam(), path()), nullptr);
  }

  EXPECT_EQ(list_in_memory(), before);
}

TEST_P(DamagedEarlierFile, DoesNotDisturbTheNextRead) {
  const old_file file = in_version(GetParam(), small_file());
  expect_short_in(file.data.substr(0, file.data.size() - 1), record_kind::service);
  write_file(path(), file.data);

  EXPECT_NE(read_old(GetParam(), path()), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Readers, DamagedEarlierFile, ::testing::ValuesIn(test_support::old_versions()),
                         name_of_version);

class EarlierReaders : public test_support::file_test {};

// A list without networks in today's records lacks the 168 bytes that the older readers want.
TEST_F(EarlierReaders, OfLongRecordsFindAHeaderOfTodayShort) {
  for (const int version : {8, 7}) {
    const old_version &reader = old_version_of(version);
    for (const std::size_t size : {460'032U, 460'199U}) {
      write_file(path(), channel_file().data + std::string(size - 460'032, '\0'));
      const log_capture log(0);

      EXPECT_EQ(read_old(reader, path()), nullptr);

      EXPECT_EQ(log.writes(), lines{"ERROR: " + reader.reader + ":# Fail to read the old_channel_list to '" + path() +
                                    "' size 460200 \n"});
    }
  }
}

TEST_F(EarlierReaders, OfShortRecordsReadAHeaderThatIsTooLong) {
  write_file(path(), channel_file().data + std::string(168, '\0'));

  EXPECT_NE(read_old(old_version_of(9), path()), nullptr);
}

}  // namespace
