// Channel files that end early or claim more records than they hold.
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "support/channel_file.h"
#include "support/log_capture.h"

namespace {

namespace list_field = test_support::list_field;
namespace network_field = test_support::network_field;
namespace transponder_field = test_support::transponder_field;
using test_support::channel_file;
using test_support::fd_capture;
using test_support::file_test;
using test_support::log_capture;
using test_support::no_countries;
using test_support::no_genres;
using test_support::record_kind;
using test_support::record_place;
using test_support::write_file;
using lines = std::vector<std::string>;

class DamagedFile : public file_test {
 protected:
  // Two networks; transponders with two, no and one services, and a network that ends in an empty transponder.
  static channel_file whole_file() {
    channel_file file;
    file.network(1, 1, "First").transponder(1, 11'000'000, 0).service({.service_id = 1}).service({.service_id = 2});
    file.transponder(2, 12'000'000, 0);
    file.network(2, 2, "Second").transponder(3, 13'000'000, 0);
    file.service({.net_index = 2, .network_id = 2, .frequency = 13'000'000, .service_id = 3});
    file.transponder(4, 14'000'000, 1).entry(VIEW_ALL, {.service_id = 1}, 1).group(GROUP_GENRE, 1, "News");
    return file.group(GROUP_COUNTRY, 1, "Malta");
  }

  [[nodiscard]] std::string complaint(record_kind kind) const {
    const std::string prefix = "ERROR: load_channel_internal:# Fail to read ";
    switch (kind) {
      case record_kind::list:
        return prefix + "the channel_list to '" + path() + "' size 460032 \n";
      case record_kind::network:
      case record_kind::transponder:
        return prefix + "the channel_list to '" + path() + "'\n";
      default:
        return prefix + "'" + path() + "'\n";
    }
  }

  void expect_refused(const test_support::bytes &contents, record_kind cut, const std::string &what) {
    const log_capture log(0);
    EXPECT_EQ(load(contents), -1) << what;
    EXPECT_EQ(log.writes(), (lines{complaint(cut), no_genres, no_countries})) << what;
    EXPECT_EQ(test_support::list_in_memory(), empty) << what;
  }

  const test_support::bytes empty = test_support::initialised_list();
};

TEST_F(DamagedFile, IsRefusedWhereverARecordIsCut) {
  const channel_file file = whole_file();
  for (const record_place &record : file.records) {
    const std::size_t end = record.offset + record.size;
    for (const std::size_t length : {record.offset, record.offset + 1, record.offset + record.size / 2, end - 1}) {
      expect_refused(file.data.substr(0, length), record.kind, "cut to " + std::to_string(length));
    }
  }
}

TEST_F(DamagedFile, IsTakenWhenNothingIsMissing) {
  const log_capture log(0);

  EXPECT_EQ(load(whole_file().data), 10);

  EXPECT_EQ(log.writes(), lines{});
  EXPECT_EQ(list.network_num, 2);
  EXPECT_NE(get_channel_st(2, 2, 0, 13'000'000, 3, 0), nullptr);
}

TEST_F(DamagedFile, IsRefusedSilentlyBelowLevelZero) {
  const log_capture log(-1);

  EXPECT_EQ(load(whole_file().data.substr(0, 461'000)), -1);

  EXPECT_EQ(log.writes(), lines{});
}

// The note of the failing read stays inside: it is neither printed nor run.
TEST_F(DamagedFile, LeavesNoMarkerBehind) {
  write_file(path(), "short");
  const log_capture log(5);
  const fd_capture standard_output(STDOUT_FILENO);

  load_channel("list.dat", 255);

  EXPECT_EQ(log.raw().find("touch"), std::string::npos);
  EXPECT_EQ(standard_output.text().find("touch"), std::string::npos);
  EXPECT_TRUE(std::ranges::none_of(std::filesystem::directory_iterator(dir.path()),
                                   [](const auto &found) { return found.path().filename() != "list.dat"; }));
}

TEST_F(DamagedFile, TellsWhatItReadBeforeTheFailureAtLevelTwo) {
  const channel_file file = whole_file();
  const log_capture log(2);

  load(file.data.substr(0, file.data.size() - 1));

  const lines all = log.writes();
  ASSERT_GE(all.size(), 10U);
  EXPECT_EQ(lines(all.begin() + 7, all.end()),
            (lines{"ChannelAPI load_channel_internal:# channel_list.network_num 2\n",
                   "ChannelAPI load_channel_internal:# net_index 1 tp_num 2 , network_name : First \n",
                   "ChannelAPI load_channel_internal:# tp_ch_info->rch_num 2\n",
                   "ChannelAPI load_channel_internal:# tp_ch_info->rch_num 0\n",
                   "ChannelAPI load_channel_internal:# net_index 2 tp_num 2 , network_name : Second \n",
                   "ChannelAPI load_channel_internal:# tp_ch_info->rch_num 1\n", complaint(record_kind::transponder),
                   no_genres, no_countries}));
}

TEST_F(DamagedFile, IsForgottenByTheNextLoad) {
  load(whole_file().data.substr(0, 461'000));

  EXPECT_EQ(load(whole_file().data), 10);
  EXPECT_EQ(list.network_num, 2);
  EXPECT_EQ(list.vnumber, 1);
  EXPECT_NE(list.vch[0].rch, nullptr);
}

TEST_F(DamagedFile, MayClaimMoreRecordsThanItHolds) {
  for (const unsigned claim : {3U, 255U, 0xFFFFU}) {
    expect_refused(whole_file().set(list_field::network_num, 2, claim).data, record_kind::network, "network_num");
    expect_refused(whole_file().set_last(record_kind::network, network_field::tp_num, 2, claim).data,
                   record_kind::transponder, "tp_num");
    expect_refused(whole_file().set_last(record_kind::transponder, transponder_field::rch_num, 2, claim).data,
                   record_kind::service, "rch_num");
  }
}

// Records out of frame are read as whatever their bytes say: a claim in the middle swallows the records behind it.
TEST_F(DamagedFile, MayClaimMoreServicesInTheMiddle) {
  channel_file file = whole_file();
  file.set(file.records[2].offset + transponder_field::rch_num, 2, 0xFFFF);

  expect_refused(file.data, record_kind::service, "rch_num of the first transponder");
}

}  // namespace
