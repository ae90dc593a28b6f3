// The two sorts that compare entries byte by byte. They are named after numbers but do not sort by them.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

// The bytes of an entry in front of its pointer.
constexpr std::size_t identity_bytes = 20;

// An entry with one value in the byte at an offset and another in every byte behind it.
virtual_channel_st entry_of_bytes(std::size_t offset, unsigned char at, unsigned char behind) {
  virtual_channel_st entry = {};
  unsigned char bytes[identity_bytes] = {};
  bytes[offset] = at;
  for (std::size_t i = offset + 1; i < identity_bytes; ++i) {
    bytes[i] = behind;
  }
  std::memcpy(static_cast<void *>(&entry), bytes, sizeof bytes);
  return entry;
}

class SortingByBytes : public store_test {
 protected:
  // Makes a view hold two entries.
  static void hold(std::int8_t code, const virtual_channel_st &first, const virtual_channel_st &second) {
    init_vindex(code);
    append_entry(code, first);
    append_entry(code, second);
  }

  // Two entries whose majors are out of byte order, 1 before 256.
  static void hold_unsorted(std::int8_t code) { hold(code, unfiled_entry(1), unfiled_entry(256)); }

  static bool is_sorted(std::int8_t code) { return majors(code) == std::vector<int>{256, 1}; }
};

TEST_F(SortingByBytes, TheLowByteOfANumberComesFirst) {
  hold(VIEW_ALL, unfiled_entry(1), unfiled_entry(256));

  EXPECT_EQ(sort_vindex_by_number(VIEW_ALL), 0);

  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{256, 1}));
}

TEST_F(SortingByBytes, EveryByteDecidesBeforeThoseBehindIt) {
  for (std::size_t offset = 0; offset < identity_bytes; ++offset) {
    const virtual_channel_st greater = entry_of_bytes(offset, 2, 0x00);
    const virtual_channel_st smaller = entry_of_bytes(offset, 1, 0xFF);
    hold(VIEW_ALL, greater, smaller);

    EXPECT_EQ(sort_vindex_by_number(VIEW_ALL), 0);

    EXPECT_EQ(std::memcmp(&list.vch[0], &smaller, identity_bytes), 0) << offset;
    EXPECT_EQ(std::memcmp(&list.vch[1], &greater, identity_bytes), 0) << offset;
  }
}

TEST_F(SortingByBytes, BytesAreUnsigned) {
  for (std::size_t offset = 0; offset < identity_bytes; ++offset) {
    const virtual_channel_st greater = entry_of_bytes(offset, 0x80, 0x00);
    const virtual_channel_st smaller = entry_of_bytes(offset, 0x7F, 0xFF);
    hold(VIEW_ALL, greater, smaller);

    sort_vindex_by_number(VIEW_ALL);

    EXPECT_EQ(std::memcmp(&list.vch[0], &smaller, identity_bytes), 0) << offset;
  }
}

TEST_F(SortingByBytes, TheTagComesBeforeTheFavouriteIdAndTheNumber) {
  fill_unfiled(VIEW_ALL, 4);
  list.vch[0].vch_tag = -1;
  list.vch[1].vch_tag = 1;
  list.vch[1].favorite_id = 9;
  list.vch[2].vch_tag = 1;
  list.vch[2].favorite_id = 3;
  list.vch[3].vch_tag = 127;

  sort_vindex_by_number(VIEW_ALL);

  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{3, 2, 4, 1}));
}

TEST_F(SortingByBytes, ThePointerDecidesLast) {
  channel_st *service = file_service({});
  virtual_channel_st with = entry_of(*service, 5);
  virtual_channel_st without = with;
  without.rch = nullptr;
  hold(VIEW_ALL, with, without);

  sort_vindex_by_number(VIEW_ALL);
  EXPECT_EQ(list.vch[0].rch, nullptr);
  EXPECT_EQ(list.vch[1].rch, service);

  with.vch_tag = 0;
  without.vch_tag = 1;
  hold(VIEW_ALL, without, with);
  sort_vindex_by_number(VIEW_ALL);
  EXPECT_EQ(list.vch[0].rch, service);
}

TEST_F(SortingByBytes, EveryViewIsSortedAlone) {
  for (const view_case &sorted : every_view()) {
    for (const view_case &each : every_view()) {
      hold_unsorted(each.code);
    }

    EXPECT_EQ(sort_vindex_by_number(sorted.code), 0);

    for (const view_case &each : every_view()) {
      EXPECT_EQ(is_sorted(each.code), each.code == sorted.code) << int{each.code} << " for " << int{sorted.code};
    }
  }
}

TEST_F(SortingByBytes, AnUnknownViewFails) {
  for (const std::int8_t code : unknown_codes) {
    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(sort_vindex_by_number(code), -1); }), lines{});
  }
  EXPECT_EQ(writes_at(1, [] { return sort_vindex_by_number(30); }),
            (lines{"WARNING: get_virtual_channel_st:# unknown vch_type=30\n",
                   "WARNING: get_virtual_channel_vnumber:# unknown vch_type=30\n"}));
}

TEST_F(SortingByBytes, AllPromotionTvAndRadioAreSortedTogether) {
  for (const view_case &each : every_view()) {
    hold_unsorted(each.code);
  }

  EXPECT_EQ(sort_vindex(), 0);

  for (const view_case &each : every_view()) {
    const bool expected =
        each.code == VIEW_ALL || each.code == VIEW_PROMOTION || each.code == VIEW_TV || each.code == VIEW_RADIO;
    EXPECT_EQ(is_sorted(each.code), expected) << int{each.code};
  }
}

TEST_F(SortingByBytes, BothAreSilent) {
  hold_unsorted(VIEW_ALL);

  EXPECT_EQ(writes_at(5, [] { return sort_vindex_by_number(VIEW_ALL); }), lines{});
  EXPECT_EQ(writes_at(5, [] { return sort_vindex(); }), lines{});
}

TEST_F(SortingByBytes, EmptyViewsAreSorted) {
  for (const view_case &each : every_view()) {
    EXPECT_EQ(sort_vindex_by_number(each.code), 0) << int{each.code};
  }
  EXPECT_EQ(sort_vindex(), 0);
}

TEST_F(SortingByBytes, EntriesMoveWholeAndKeepTheirNumbers) {
  hold_unsorted(VIEW_TV);
  list.tv_vch[0].rch = file_service({});
  const virtual_channel_st first = list.tv_vch[0];
  const virtual_channel_st second = list.tv_vch[1];

  sort_vindex_by_number(VIEW_TV);

  EXPECT_EQ(std::memcmp(&list.tv_vch[0], &second, sizeof second), 0);
  EXPECT_EQ(std::memcmp(&list.tv_vch[1], &first, sizeof first), 0);
  EXPECT_TRUE(slots_behind_count_are_zero(VIEW_TV, 4000));
}

TEST_F(SortingByBytes, AFullViewIsSortedToItsLastEntry) {
  fill_unfiled(VIEW_ALL, 5000);
  for (int i = 0; i < 5000; ++i) {
    list.vch[i].vch_tag = static_cast<std::int8_t>((4999 - i) / 20);
  }

  sort_vindex();

  for (int i = 1; i < 5000; ++i) {
    ASSERT_LE(std::memcmp(&list.vch[i - 1], &list.vch[i], identity_bytes), 0) << i;
  }
  EXPECT_EQ(static_cast<std::uint8_t>(list.vch[4999].vch_tag), 4999 / 20);
  EXPECT_EQ(list.vnumber, 5000);
}

TEST_F(SortingByBytes, ACountOutsideTheArrayIsReadAsTheNearestInside) {
  fill_unfiled(10, 40);
  hold_unsorted(11);
  list.favorite_vch[0][0].vch_tag = 9;
  list.favorite_vch[1][0].vch_tag = -1;

  list.favorite_vnumber[0] = 32767;
  EXPECT_EQ(sort_vindex_by_number(10), 0);
  EXPECT_EQ(list.favorite_vch[0][39].vch_tag, 9);
  EXPECT_EQ(list.favorite_vch[1][0].vch_tag, -1);

  list.favorite_vch[0][0].vch_tag = 10;
  list.favorite_vnumber[0] = -1;
  EXPECT_EQ(sort_vindex_by_number(10), 0);
  EXPECT_EQ(list.favorite_vch[0][0].vch_tag, 10);
}

}  // namespace
