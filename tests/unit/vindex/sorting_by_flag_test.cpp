// Partitioning a view by a flag into the USER view: the order, entries without channel, what becomes current.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "sorting_by_flag_test.h"

namespace {

using namespace test_support;

class SortingByFlag : public sorting_by_flag_test {};

TEST_F(SortingByFlag, ChannelsWithTheFlagComeLastInTheOrderOfTheView) {
  fill_flags(VIEW_TV, {locked, 0, locked, 0});

  EXPECT_EQ(sort_vindex_by_flag(1, 5), 0);

  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{2, 4, 1, 3}));
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(get_vindex_type(), VIEW_USER);
  EXPECT_EQ(list.cur_vch, list.user_vch);
  EXPECT_EQ(list.cur_vnumber, &list.user_vnumber);
}

TEST_F(SortingByFlag, EachTypeLooksAtItsOwnBit) {
  const std::vector<std::uint8_t> flags = {locked, fta, 0xFF, 0, 0xF9, fta | locked};
  fill_flags(VIEW_ALL, flags);

  EXPECT_EQ(sort_vindex_by_flag(VIEW_ALL, SORT_LOCK), 0);
  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{2, 4, 5, 1, 3, 6}));

  EXPECT_EQ(sort_vindex_by_flag(VIEW_ALL, SORT_FTA), 0);
  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{1, 4, 5, 2, 3, 6}));
}

TEST_F(SortingByFlag, PartsMayBeEmpty) {
  const std::vector<channel_st *> services = fill_flags(VIEW_TV, {locked, locked, locked});
  sort_vindex_by_flag(VIEW_TV, SORT_LOCK);
  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{1, 2, 3}));

  for (channel_st *each : services) {
    each->flag = 0;
  }
  sort_vindex_by_flag(VIEW_TV, SORT_LOCK);
  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{1, 2, 3}));
}

TEST_F(SortingByFlag, ThePartitionIsStable) {
  std::vector<std::uint8_t> flags(500);
  std::vector<int> expected;
  for (const std::uint8_t wanted : {std::uint8_t{0}, fta}) {
    for (std::size_t i = 0; i < flags.size(); ++i) {
      flags[i] = i * 7919 % 10 < 4 ? fta : 0;
      if (flags[i] == wanted) {
        expected.push_back(static_cast<int>(i + 1));
      }
    }
  }
  fill_flags(VIEW_RADIO, flags);

  EXPECT_EQ(sort_vindex_by_flag(VIEW_RADIO, SORT_FTA), 0);

  EXPECT_EQ(service_ids(VIEW_USER), expected);
}

TEST_F(SortingByFlag, EntriesAreCopiedWhole) {
  fill_flags(VIEW_TV, {locked, 0});
  list.tv_vch[0].vch_tag = -5;
  list.tv_vch[0].favorite_id = 200;
  list.tv_vch[0].reserved_7 = 1;
  list.tv_vch[0].reserved_13 = 2;

  sort_vindex_by_flag(VIEW_TV, SORT_LOCK);

  EXPECT_EQ(std::memcmp(&list.user_vch[1], &list.tv_vch[0], sizeof(virtual_channel_st)), 0);
  EXPECT_EQ(std::memcmp(&list.user_vch[0], &list.tv_vch[1], sizeof(virtual_channel_st)), 0);
}

TEST_F(SortingByFlag, EveryViewMayBeTheSource) {
  const std::vector<channel_st *> services = fill_flags(VIEW_ALL, {locked, 0, locked});
  for (const view_case &each : every_view()) {
    init_vindex(each.code);
    for (channel_st *service : services) {
      append_entry(each.code, entry_of(*service, 1));
    }
    if (each.code != VIEW_USER) {
      fill_unfiled(VIEW_USER, 1);
    }

    EXPECT_EQ(sort_vindex_by_flag(each.code, SORT_LOCK), 0) << int{each.code};

    EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{2, 1, 3})) << int{each.code};
    EXPECT_EQ(service_ids(each.code), (each.code == VIEW_USER ? std::vector<int>{2, 1, 3} : std::vector<int>{1, 2, 3}));
  }
}

TEST_F(SortingByFlag, TheUserViewIsPartitionedInPlace) {
  fill_flags(VIEW_USER, {locked, 0, locked, 0, 0});

  EXPECT_EQ(sort_vindex_by_flag(VIEW_USER, SORT_LOCK), 0);

  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{2, 4, 5, 1, 3}));
  EXPECT_EQ(get_vindex_type(), VIEW_USER);
}

TEST_F(SortingByFlag, TheFlagIsThatOfTheEntrysOwnChannel) {
  const std::vector<channel_st *> services = fill_flags(VIEW_TV, {locked, 0});
  list.tv_vch[0].rch = services[1];
  list.tv_vch[1].rch = services[0];

  sort_vindex_by_flag(VIEW_TV, SORT_LOCK);

  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{1, 2}));
}

TEST_F(SortingByFlag, EntriesWithoutChannelAreErrorsAndLeaveTheLastSlotsAsCopied) {
  fill_flags(VIEW_TV, {locked, 0, 0, locked, 0});
  list.tv_vch[1].rch = nullptr;
  list.tv_vch[3].rch = nullptr;

  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(sort_vindex_by_flag(VIEW_TV, SORT_LOCK), 0); }),
            lines(2, "ERROR: sort_vindex_by_flag:# r_ch == NULL\n"));
  EXPECT_EQ(writes_at(-1, [] { return sort_vindex_by_flag(VIEW_TV, SORT_LOCK); }), lines{});

  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{3, 5, 1, 4, 5}));
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1, 2, 3, 4, 5}));
}

TEST_F(SortingByFlag, AViewWithoutAnyChannelIsCopied) {
  fill_unfiled(VIEW_TV, 3);

  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(sort_vindex_by_flag(VIEW_TV, SORT_FTA), 0); }),
            lines(3, "ERROR: sort_vindex_by_flag:# r_ch == NULL\n"));

  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{1, 2, 3}));
}

TEST_F(SortingByFlag, TheUserViewItselfMayHoldEntriesWithoutChannel) {
  fill_flags(VIEW_USER, {locked, 0, 0});
  list.user_vch[1].rch = nullptr;

  EXPECT_EQ(writes_at(-1, [] { EXPECT_EQ(sort_vindex_by_flag(VIEW_USER, SORT_LOCK), 0); }), lines{});

  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{3, 1, 3}));
}

TEST_F(SortingByFlag, ASlotOfTheUserViewBehindTheNewCountStays) {
  fill_unfiled(VIEW_USER, 4);
  fill_flags(VIEW_TV, {0, 0});

  sort_vindex_by_flag(VIEW_TV, SORT_LOCK);

  EXPECT_EQ(list.user_vnumber, 2);
  EXPECT_EQ(list.user_vch[2].service_id, 3);
  EXPECT_EQ(list.user_vch[3].service_id, 4);
}

TEST_F(SortingByFlag, OneEntryIsCopied) {
  fill_flags(VIEW_TV, {locked});

  EXPECT_EQ(sort_vindex_by_flag(VIEW_TV, SORT_LOCK), 0);

  EXPECT_EQ(service_ids(VIEW_USER), std::vector<int>{1});
}

TEST_F(SortingByFlag, AFullViewIsPartitioned) {
  channel_st *clear = file_service({.service_id = 1});
  channel_st *set = file_service({.service_id = 2, .flag = fta});
  fill_unfiled(VIEW_WORK, 5000);
  for (int i = 0; i < 5000; ++i) {
    get_virtual_channel_st(VIEW_WORK)[i].rch = i % 2 == 0 ? set : clear;
  }

  EXPECT_EQ(sort_vindex_by_flag(VIEW_WORK, SORT_FTA), 0);

  const std::vector<int> numbers = majors(VIEW_USER);
  ASSERT_EQ(numbers.size(), 5000U);
  EXPECT_EQ(numbers[0], 2);
  EXPECT_EQ(numbers[2499], 5000);
  EXPECT_EQ(numbers[2500], 1);
  EXPECT_EQ(numbers[4999], 4999);
  EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.begin() + 2500));
  EXPECT_TRUE(std::is_sorted(numbers.begin() + 2500, numbers.end()));
  EXPECT_EQ(list.reserved_459366[0], 0);
}

TEST_F(SortingByFlag, ACountOutsideTheSourceIsReadAsTheNearestInside) {
  std::vector<std::uint8_t> flags(40, locked);
  flags[38] = flags[39] = 0;
  fill_flags(10, flags);
  fill_unfiled(11, 1);
  std::vector<int> expected = {39, 40};
  for (int id = 1; id <= 38; ++id) {
    expected.push_back(id);
  }

  list.favorite_vnumber[0] = 32767;
  EXPECT_EQ(sort_vindex_by_flag(10, SORT_LOCK), 0);
  EXPECT_EQ(service_ids(VIEW_USER), expected);

  list.favorite_vnumber[0] = -1;
  EXPECT_EQ(sort_vindex_by_flag(10, SORT_LOCK), 0);
  EXPECT_EQ(list.user_vnumber, 0);
}

}  // namespace
