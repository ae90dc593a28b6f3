// Repairing the list: what is accepted, what is said, and the empty list that every refusal and failure leaves.
#include "support/repair_test.h"

#include <climits>

#include "support/log_capture.h"
#include "support/view_cases.h"

namespace {

namespace list_field = test_support::list_field;
using test_support::bytes;
using test_support::channel_file;
using test_support::initialised_list;
using test_support::list_in_memory;
using test_support::log_capture;
using test_support::old_file;
using test_support::owned_list;
using test_support::record_place;
using test_support::write_file;
using lines = std::vector<std::string>;

// Two networks with a service each, and an entry for the first in the TV view.
channel_file small_file() {
  channel_file file;
  file.network(85, 0x102, "First").service({.net_index = 85, .network_id = 0x102, .service_id = 7, .name = "Seven"});
  file.network(2, 0x103, "Second").transponder(0x405, 12'000'000, 1);
  file.service({.net_index = 2,
                .network_id = 0x103,
                .ts_id = 0x405,
                .frequency = 12'000'000,
                .service_id = 8,
                .polarisation = 1,
                .service_type = 2,
                .source_type = 9,
                .name = "Eight"});
  return file.entry(VIEW_TV, {.net_index = 85, .network_id = 0x102, .service_id = 7}, 1);
}

void expect_initialised() {
  const bytes found = list_in_memory();
  EXPECT_EQ(found, initialised_list());
}

class RefusedRepair : public test_support::file_test {
 protected:
  void SetUp() override {
    file_test::SetUp();
    write_file(path(), small_file().data);
  }
};

constexpr int refused_versions[] = {INT_MIN, -1, 0, 6, 10, 11, 255, 263, INT_MAX};

TEST_F(RefusedRepair, IsEveryVersionButSevenEightAndNine) {
  for (const int version : refused_versions) {
    test_support::fill_view(VIEW_ALL, 3);
    const channel_list_st held = list;

    EXPECT_EQ(repair_channel(version, path().c_str()), -1) << version;

    expect_initialised();
    // What the list held is the host's to release.
    list.network_list = held.network_list;
    list.network_list.next->prev = list.network_list.prev->next = &list.network_list;
    list.network_num = held.network_num;
    reset_channel_list();
  }
}

TEST_F(RefusedRepair, IsTheCurrentVersionOfAReadableFile) {
  ASSERT_EQ(load_named("list.dat"), 10);
  reset_channel_list();

  EXPECT_EQ(repair_channel(10, path().c_str()), -1);

  expect_initialised();
}

TEST_F(RefusedRepair, SaysNoMoreThanItsNameAndPath) {
  for (const int version : refused_versions) {
    const log_capture log(5);

    repair_channel(version, path().c_str());

    EXPECT_EQ(log.writes(), lines{"ChannelAPI repair_channel:# (" + path() + ")\n"});
  }
}

TEST_F(RefusedRepair, SaysNothingBelowLevelTwo) {
  const log_capture log(1);

  repair_channel(10, path().c_str());

  EXPECT_EQ(log.writes(), lines{});
}

TEST_F(RefusedRepair, TakesANullPath) {
  const log_capture log(2);

  EXPECT_EQ(repair_channel(10, nullptr), -1);

  EXPECT_EQ(log.writes(), lines{"ChannelAPI repair_channel:# ((null))\n"});
}

class Repair : public test_support::repair_test {
 protected:
  int repair_missing() const { return repair_channel(GetParam().number, path("missing.dat").c_str()); }
};

TEST_P(Repair, RebuildsTheList) {
  EXPECT_EQ(repair(small_file()), 0);

  EXPECT_EQ(list.network_num, 2);
  EXPECT_EQ(list.tv_vnumber, 1);
  EXPECT_TRUE(test_support::counts_match_lists());
  EXPECT_EQ(every_service().size(), 2U);
}

TEST_P(Repair, TakesTheVersionFromItsCallerAndNotFromTheFile) {
  for (const int number : {6, 7, 8, 9, 10, -1}) {
    bytes file = in_version(small_file());
    test_support::put(file, list_field::version, 2, static_cast<std::uint64_t>(number));

    EXPECT_EQ(repair(file), 0);

    EXPECT_EQ(list.version, 10);
    EXPECT_EQ(every_service().size(), 2U);
  }
}

TEST_P(Repair, ForgetsWhatTheListHeldBefore) {
  list.genre_num = 50;
  list.user_vnumber = 10;
  list.user_vch[4].major_ch_num = 7;
  list.vch_type = VIEW_USER;

  // Nothing is linked, so nothing is lost by not resetting the list.
  write_file(path(), in_version(small_file()));
  ASSERT_EQ(repair_channel(GetParam().number, path().c_str()), 0);

  EXPECT_EQ(list.genre_num, 0);
  EXPECT_EQ(list.user_vnumber, 0);
  EXPECT_TRUE(test_support::slots_behind_count_are_zero(VIEW_USER, MAX_CHANNEL));
  EXPECT_EQ(list.vch_type, VIEW_ALL);
}

TEST_P(Repair, LeavesAnEmptyListWhenTheFileIsMissing) {
  list.genre_num = 3;
  const log_capture log(0);

  EXPECT_EQ(repair_missing(), -1);

  expect_initialised();
  EXPECT_EQ(log.writes(), lines{"ERROR: " + GetParam().reader + ":# Fail to open '" + path("missing.dat") + "'\n"});
}

TEST_P(Repair, LeavesAnEmptyListWhenThePathIsNull) {
  list.genre_num = 3;
  const log_capture log(2);

  EXPECT_EQ(repair_channel(GetParam().number, nullptr), -1);

  EXPECT_EQ(log.writes(),
            (lines{"ChannelAPI repair_channel:# ((null))\n", "ERROR: " + GetParam().reader + ":# path is null\n"}));
  expect_initialised();
}

TEST_P(Repair, LeavesAnEmptyListWhenTheFileIsShortAnywhere) {
  const old_file file = test_support::in_version(GetParam(), small_file());
  for (const record_place &record : file.records) {
    for (const std::size_t size : {record.offset, record.offset + 1, record.offset + record.size - 1}) {
      const log_capture log(0);

      EXPECT_EQ(repair(file.data.substr(0, size)), -1) << size;

      EXPECT_EQ(log.writes_with("ERROR: " + GetParam().reader + ":# Fail to read ").size(), 1U);
      EXPECT_EQ(log.writes().size(), 1U);
      expect_initialised();
    }
  }
}

TEST_P(Repair, WorksAgainAfterAFailure) {
  EXPECT_EQ(repair_missing(), -1);

  EXPECT_EQ(repair(small_file()), 0);

  EXPECT_EQ(list.network_num, 2);
}

TEST_P(Repair, IsSilentBelowLevelTwo) {
  const log_capture log(1);

  EXPECT_EQ(repair(small_file()), 0);

  EXPECT_EQ(log.writes(), lines{});
}

// The reader links the list in memory, which counts no network yet: no step of a lookup fails.
TEST_P(Repair, TellsAnEntryOfTheWorkViewAtNoOtherLevelThanZero) {
  test_support::append_entry(VIEW_WORK, test_support::unfiled_entry(1));
  const std::string entry = "ERROR: link...[4][0]-n_in 1, on 1, ts 100, freq 11000000, sid 1, polr 0\n";
  const log_capture log(5);

  EXPECT_EQ(repair(small_file()), 0);

  EXPECT_EQ(log.writes_with("link..."), lines{entry});
  EXPECT_EQ(log.writes_with("get_channel_st"), lines{});
}

TEST_P(Repair, TellsTheOldListAtLevelTwo) {
  channel_file file = small_file();
  file.set(list_field::use_tuner, 1, 0x81)
      .set(list_field::ch_type, 1, 0x82)
      .set(list_field::bouquet_id, 2, 0xFFFE)
      .set(list_field::vch_type, 2, 29);
  // The reader speaks for itself.
  write_file(path(), in_version(file));
  const lines of_reader =
      test_support::writes_at(2, [this] { return owned_list(GetParam().read(path().c_str())) != nullptr; });
  const std::int32_t first_word =
      static_cast<std::int32_t>(0x8281'0000U + static_cast<std::uint32_t>(GetParam().number));
  const std::string plus = std::string(74, '+') + "\n";
  lines expected = {"ChannelAPI repair_channel:# (" + path() + ")\n"};
  expected.insert(expected.end(), of_reader.begin(), of_reader.end());
  const lines rest = {
      "********************************   CHANNEL LIST    *****************************\n",
      "\t\t * version: " + std::to_string(first_word) + "\n",
      "\t\t * bouquet_id: 65534\n",
      "\t\t * vch_type: 'FAV CH'\n",
      "\t\t * network_num: 2\n",
      std::string(74, '*') + "\n",
      plus,
      "\t\t * net_index: 85\n",
      "\t\t * network_id: 258\n",
      "\t\t * network_name: First\n",
      "\t\t * tp_num: 1\n",
      plus,
      "ChannelAPI add_rch_info:# rch: s_id(0x7), n_id(0x102), ts_id(0x64), name(Seven), type(0x0101)\n",
      plus,
      "\t\t * net_index: 2\n",
      "\t\t * network_id: 259\n",
      "\t\t * network_name: Second\n",
      "\t\t * tp_num: 1\n",
      plus,
      "ChannelAPI add_rch_info:# rch: s_id(0x8), n_id(0x103), ts_id(0x405), name(Eight), type(0x0902)\n"};
  expected.insert(expected.end(), rest.begin(), rest.end());
  const log_capture log(2);

  repair_channel(GetParam().number, path().c_str());

  EXPECT_EQ(log.writes(), expected);
}

TEST_P(Repair, NamesTheOldView) {
  const std::pair<int, std::string> views[] = {{-1, "NONE"},   {0, "ALL CH"}, {1, "TV CH"}, {2, "RADIO CH"},
                                               {3, "USER CH"}, {4, "NONE"},   {9, "NONE"},  {10, "FAV CH"},
                                               {29, "FAV CH"}, {30, "NONE"}};
  for (const auto &[code, name] : views) {
    const bytes file = in_version(channel_file().set(list_field::vch_type, 2, static_cast<std::uint64_t>(code)));
    const log_capture log(2);

    repair(file);

    EXPECT_EQ(log.writes_with(" * vch_type"), lines{"\t\t * vch_type: '" + name + "'\n"});
  }
}

REPAIRED_FROM_EVERY_VERSION(Repair);

}  // namespace
