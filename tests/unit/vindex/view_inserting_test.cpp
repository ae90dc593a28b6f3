// Inserting an entry before a position of a view.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

// What a host passes: the entry's words, and a pointer word that must not matter.
int insert(const virtual_channel_st &entry, int vindex, std::int8_t type, std::uint32_t pointer_word = 0) {
  std::array<std::uint32_t, 5> words = {};
  std::memcpy(words.data(), &entry, sizeof words);
  return insert_vch_vindex_type(words[0], words[1], words[2], words[3], words[4], pointer_word,
                                static_cast<std::int16_t>(vindex), type);
}

class EntryInserting : public store_test {};

TEST_F(EntryInserting, MovesTheEntriesFromThePositionOnUp) {
  for (const auto &[vindex, expected] :
       std::vector<std::pair<int, std::vector<int>>>{{0, {99, 1, 2, 3}}, {1, {1, 99, 2, 3}}, {2, {1, 2, 99, 3}}}) {
    fill_unfiled(VIEW_TV, 3);

    EXPECT_EQ(insert(unfiled_entry(99), vindex, VIEW_TV), 0);

    EXPECT_EQ(service_ids(VIEW_TV), expected);
    EXPECT_TRUE(slots_behind_count_are_zero(VIEW_TV, 4000));
  }
}

TEST_F(EntryInserting, MovesWholeEntries) {
  fill_unfiled(VIEW_TV, 2);
  virtual_channel_st &moved = list.tv_vch[1];
  moved.vch_tag = -7;
  moved.favorite_id = 200;
  moved.reserved_7 = 1;
  moved.reserved_13 = 2;
  moved.rch = file_service({});
  const virtual_channel_st before = moved;

  insert(unfiled_entry(99), 0, VIEW_TV);

  EXPECT_EQ(std::memcmp(&list.tv_vch[2], &before, sizeof before), 0);
}

TEST_F(EntryInserting, WorksOnEveryView) {
  for (const view_case &each : every_view()) {
    fill_unfiled(each.code, 2);

    EXPECT_EQ(insert(unfiled_entry(99), 1, each.code), 0) << int{each.code};

    EXPECT_EQ(service_ids(each.code), (std::vector<int>{1, 99, 2})) << int{each.code};
  }
}

TEST_F(EntryInserting, TakesEveryFieldFromTheWords) {
  fill_unfiled(VIEW_USER, 1);

  insert_vch_vindex_type(0x8765'43F0, 0xCD0B'FFFE, 0xFEDC'BA98, 0x4321'A501, 0xBEEF'CAFE, 0, 0, VIEW_USER);

  const virtual_channel_st &entry = list.user_vch[0];
  EXPECT_EQ(entry.vch_tag, -16);
  EXPECT_EQ(entry.favorite_id, 0x43);
  EXPECT_EQ(static_cast<std::uint16_t>(entry.major_ch_num), 0x8765);
  EXPECT_EQ(entry.minor_ch_num, -2);
  EXPECT_EQ(entry.net_index, 0x0B);
  EXPECT_EQ(entry.reserved_7, 0xCD);
  EXPECT_EQ(entry.frequency, 0xFEDC'BA98);
  EXPECT_EQ(entry.polarisation, 1);
  EXPECT_EQ(entry.reserved_13, 0xA5);
  EXPECT_EQ(entry.service_id, 0x4321);
  EXPECT_EQ(entry.network_id, 0xCAFE);
  EXPECT_EQ(entry.ts_id, 0xBEEF);
}

TEST_F(EntryInserting, ResolvesTheChannelFromTheIdentityAndIgnoresThePointerWord) {
  channel_st *service = file_service({});
  fill_unfiled(VIEW_USER, 1);

  EXPECT_EQ(insert(entry_of(*service, 4), 0, VIEW_USER, 0xDEADBEEF), 0);

  EXPECT_EQ(list.user_vch[0].rch, service);
}

TEST_F(EntryInserting, AnEntryThatDoesNotResolveIsInsertedWithoutChannel) {
  file_service({});
  fill_unfiled(VIEW_USER, 1);

  EXPECT_EQ(insert(unfiled_entry(99), 0, VIEW_USER, 0xDEADBEEF), 0);

  EXPECT_EQ(list.user_vch[0].rch, nullptr);
}

TEST_F(EntryInserting, FrequencyZeroResolvesByTransportStream) {
  channel_st *service = file_service({});
  virtual_channel_st entry = entry_of(*service, 4);
  entry.frequency = 0;
  entry.polarisation = 1;
  fill_unfiled(VIEW_USER, 1);

  insert(entry, 0, VIEW_USER);

  EXPECT_EQ(list.user_vch[0].rch, service);
}

TEST_F(EntryInserting, RefusesToAppend) {
  fill_unfiled(VIEW_TV, 3);
  for (const int vindex : {3, 4, 4000, 32767}) {
    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(insert(unfiled_entry(99), vindex, VIEW_TV), -1); }),
              lines{"ERROR: insert_vch_vindex_type:# vindex is so big " + std::to_string(vindex) + " total 3\n"});
    EXPECT_EQ(writes_at(-1, [&] { return insert(unfiled_entry(99), vindex, VIEW_TV); }), lines{});
  }
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1, 2, 3}));
  EXPECT_TRUE(slots_behind_count_are_zero(VIEW_TV, 4000));
}

TEST_F(EntryInserting, RefusesAnEmptyView) {
  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(insert(unfiled_entry(99), 0, VIEW_PROMOTION), -1); }),
            lines{"ERROR: insert_vch_vindex_type:# vindex is so big 0 total 0\n"});
}

TEST_F(EntryInserting, RefusesAPositionBelowZero) {
  fill_unfiled(VIEW_TV, 3);
  for (const int vindex : {-1, -32768}) {
    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(insert(unfiled_entry(99), vindex, VIEW_TV), -1); }),
              lines{"ERROR: insert_vch_vindex_type:# vindex is small than zero\n"});
    EXPECT_EQ(writes_at(-1, [&] { return insert(unfiled_entry(99), vindex, VIEW_TV); }), lines{});
  }
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1, 2, 3}));
}

TEST_F(EntryInserting, RefusesAnUnknownView) {
  for (const std::int8_t code : unknown_codes) {
    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(insert(unfiled_entry(99), 0, code), -1); }),
              lines{"ERROR: insert_vch_vindex_type:# Fail to find vch\n"});
    EXPECT_EQ(writes_at(-1, [&] { return insert(unfiled_entry(99), 0, code); }), lines{});
  }
}

TEST_F(EntryInserting, AnUnknownViewIsNoticedAtItsArrayBeforeThePosition) {
  EXPECT_EQ(writes_at(1, [] { return insert(unfiled_entry(99), -1, 30); }),
            (lines{"WARNING: get_virtual_channel_st:# unknown vch_type=30\n",
                   "ERROR: insert_vch_vindex_type:# Fail to find vch\n"}));
}

TEST_F(EntryInserting, FillsAViewToItsLastSlotAndNoFurther) {
  for (const view_case &each : every_view()) {
    fill_unfiled(each.code, each.capacity - 1);

    EXPECT_EQ(insert(unfiled_entry(7777), each.capacity - 2, each.code), 0) << int{each.code};
    EXPECT_EQ(*get_virtual_channel_vnumber(each.code), each.capacity) << int{each.code};
    EXPECT_EQ(get_virtual_channel_st(each.code)[each.capacity - 1].service_id, each.capacity - 1) << int{each.code};

    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(insert(unfiled_entry(8888), 0, each.code), -1); }),
              lines{"ERROR: insert_vch_vindex_type:# view is full, " + std::to_string(each.capacity) + " entries\n"});
    EXPECT_EQ(*get_virtual_channel_vnumber(each.code), each.capacity) << int{each.code};
    EXPECT_EQ(get_virtual_channel_st(each.code)[0].service_id, 1) << int{each.code};
  }
}

TEST_F(EntryInserting, AFullGroupDoesNotSpillIntoTheNext) {
  fill_unfiled(10, 40);
  fill_unfiled(11, 1);

  EXPECT_EQ(insert(unfiled_entry(99), 39, 10), -1);

  EXPECT_EQ(list.favorite_vch[0][39].service_id, 40);
  EXPECT_EQ(list.favorite_vch[1][0].service_id, 1);
}

TEST_F(EntryInserting, ACountOutsideTheArrayIsReadAsTheNearestInside) {
  fill_unfiled(10, 40);
  fill_unfiled(11, 1);
  for (const int count : {41, 32767}) {
    list.favorite_vnumber[0] = static_cast<std::int16_t>(count);
    EXPECT_EQ(insert(unfiled_entry(99), 0, 10), -1) << count;
    EXPECT_EQ(insert(unfiled_entry(99), 40, 10), -1) << count;
  }
  list.favorite_vnumber[0] = -1;
  EXPECT_EQ(insert(unfiled_entry(99), 0, 10), -1);

  EXPECT_EQ(list.favorite_vch[0][0].service_id, 1);
  EXPECT_EQ(list.favorite_vch[1][0].service_id, 1);
}

TEST_F(EntryInserting, IsSilentOnceInserted) {
  channel_st *service = file_service({});
  fill_unfiled(VIEW_TV, 1);

  EXPECT_EQ(writes_at(5, [&] { return insert(entry_of(*service, 1), 0, VIEW_TV); }), lines{});
}

}  // namespace
