// A current view that is none of the library's: a host may point the list at an array and a count of its own.
#include <array>

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

}  // namespace
