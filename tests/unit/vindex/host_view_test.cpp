// A current view that is none of the library's: a host may point the list at an array and a count of its own.
#include <algorithm>
#include <array>
#include <numeric>
#include <vector>

#include "support/log_capture.h"
#include "support/moving_test.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;

class HostView : public store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    for (std::int16_t i = 0; i < 3; ++i) {
      entries_[static_cast<std::size_t>(i)] =
          entry_of(*file_service({.service_id = static_cast<std::uint16_t>(i + 1)}), static_cast<std::int16_t>(10 + i));
    }
    list.cur_vch = entries_.data();
    list.cur_vnumber = &count_;
  }

  std::array<virtual_channel_st, 4> entries_ = {};
  std::int16_t count_ = 3;
};

TEST_F(HostView, IsReadAsFarAsItsCount) {
  EXPECT_EQ(get_channel_list_vch(), entries_.data());
  EXPECT_EQ(get_channel_list_number(), 3);
  EXPECT_EQ(get_channel_index(12), 2);
  EXPECT_EQ(get_channel(2), entries_[2].rch);
  EXPECT_EQ(get_vchannel_by_vindex(2), &entries_[2]);
  EXPECT_EQ(get_vchannel_by_vindex(3), nullptr);
}

TEST_F(HostView, IsEmptyWithANegativeCount) {
  count_ = -1;

  EXPECT_EQ(get_channel_list_number(), 0);
  EXPECT_EQ(get_channel_index(10), -1);
  EXPECT_EQ(get_channel(0), nullptr);
  EXPECT_EQ(get_vchannel_by_vindex(0), nullptr);
}

TEST_F(HostView, IsMovedWithinItsCount) {
  const std::int16_t source = 0;

  EXPECT_EQ(move_channel(2, 1, &source), 1);

  EXPECT_EQ(entries_[0].major_ch_num, 11);
  EXPECT_EQ(entries_[1].major_ch_num, 12);
  EXPECT_EQ(entries_[2].major_ch_num, 10);
  EXPECT_EQ(entries_[3].major_ch_num, 0);
}

// As many entries as the host likes: services 1..n, all on one transponder, of which only the last one is filed.
class LongHostView : public store_test, public ::testing::WithParamInterface<int> {
 protected:
  void SetUp() override {
    store_test::SetUp();
    const auto last_id = static_cast<std::uint16_t>(GetParam());
    last_ = file_service({.service_id = last_id, .flag = CHANNEL_FLAG_DSMCC});
    for (int id = 1; id <= GetParam(); ++id) {
      virtual_channel_st entry = entry_of(*last_, static_cast<std::int16_t>(id));
      entry.service_id = static_cast<std::uint16_t>(id);
      entries_.push_back(entry);
    }
    // What an operation writes behind the view would show here.
    entries_.push_back(behind_);
    list.cur_vch = entries_.data();
    list.cur_vnumber = &count_;
  }
  void TearDown() override {
    EXPECT_EQ(count_, GetParam());
    EXPECT_EQ(entries_.back().service_id, behind_.service_id);
    EXPECT_EQ(entries_.back().rch, nullptr);
    store_test::TearDown();
  }

  [[nodiscard]] std::vector<int> ids() const {
    std::vector<int> ids;
    std::for_each(entries_.begin(), entries_.end() - 1, [&](const auto &entry) { ids.push_back(entry.service_id); });
    return ids;
  }
  [[nodiscard]] std::int16_t last_position() const { return static_cast<std::int16_t>(GetParam() - 1); }

  const virtual_channel_st behind_ = unfiled_entry(0xABCD);
  std::vector<virtual_channel_st> entries_;
  std::int16_t count_ = static_cast<std::int16_t>(GetParam());
  channel_st *last_ = nullptr;
};

TEST_P(LongHostView, MovesItsLastEntryToTheFront) {
  std::vector<int> expected = ids();
  std::rotate(expected.begin(), expected.end() - 1, expected.end());

  EXPECT_EQ(move_to(0, {last_position()}), 1);

  EXPECT_EQ(ids(), expected);
}

TEST_P(LongHostView, MovesItsLastEntriesBehindItsFirst) {
  std::vector<int> expected = ids();
  std::rotate(expected.begin() + 1, expected.end() - 2, expected.end());
  std::swap(expected[1], expected[2]);

  EXPECT_EQ(move_to(0, {last_position(), static_cast<std::int16_t>(last_position() - 1)}), 1);

  EXPECT_EQ(ids(), expected);
}

TEST_P(LongHostView, IsTurnedRoundWhole) {
  positions sources(static_cast<std::size_t>(GetParam()));
  std::iota(sources.rbegin(), sources.rend(), std::int16_t{0});
  std::vector<int> expected = ids();
  std::ranges::reverse(expected);

  EXPECT_EQ(move_to(last_position(), sources), 1);

  EXPECT_EQ(ids(), expected);
}

TEST_P(LongHostView, RefusesTheSameSourceTwiceAndPositionsOutside) {
  const std::vector<int> before = ids();
  const std::vector<std::string> refused = {"ERROR: move_channel:# positions outside the view or given twice\n"};

  EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(move_to(0, {last_position(), 0, last_position()}), -1); }), refused);
  EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(move_to(0, {-1}), -1); }), refused);
  if (GetParam() < INT16_MAX) {
    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(move_to(0, {1, static_cast<std::int16_t>(GetParam())}), -1); }), refused);
  }

  EXPECT_EQ(ids(), before);
}

TEST_P(LongHostView, IsReadToItsLastEntry) {
  const virtual_channel_st &entry = entries_[static_cast<std::size_t>(last_position())];

  EXPECT_EQ(get_channel_index(entry.major_ch_num), last_position());
  EXPECT_EQ(get_vch_index_by_service_id(entry.service_id), last_position());
  EXPECT_EQ(get_vchannel_by_vindex(last_position()), &entry);
  EXPECT_EQ(get_channel(last_position()), last_);
  EXPECT_EQ(get_channel_flag_by_vindex(last_position()), CHANNEL_FLAG_DSMCC);
  EXPECT_EQ(check_available_channel(last_position()), 1);
  EXPECT_EQ(get_dsmcc_channel(), last_position());
}

TEST_P(LongHostView, IsWatchedAtItsLastEntry) {
  add_return_channel(0, 1, 1, 100, 11'000'000, static_cast<std::uint16_t>(GetParam()), 0);

  ASSERT_EQ(get_return_channel_num(), 1);
  EXPECT_EQ(get_return_channel()->vindex, last_position());
}

TEST_P(LongHostView, IsFlaggedAsFarAsTheAllViewCounts) {
  list.vnumber = MAX_CHANNEL;

  set_channel_flag_by_bit(CHANNEL_FLAG_SKIP);

  EXPECT_EQ(check_skip_channel_index(last_position()), GetParam() <= MAX_CHANNEL ? 1 : 0);
  list.vnumber = 0;
}

INSTANTIATE_TEST_SUITE_P(Of, LongHostView, ::testing::Values(4999, 5000, 5001, 32766, 32767));

}  // namespace
