// Partitioning a view by a flag: what is refused, what is logged, and what the list is left with.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>

#include "sorting_by_flag_test.h"

namespace {

using namespace test_support;

class SortingByFlagResults : public sorting_by_flag_test {};

TEST_F(SortingByFlagResults, OtherTypesAreErrorsAndChangeNothing) {
  fill_flags(VIEW_TV, {locked, 0});
  fill_unfiled(VIEW_USER, 3);
  const auto before = std::make_unique<channel_list_st>(list);

  for (const int type : {-128, -1, 0, 1, 2, 3, 6, 7, 8, 9, 10, 11, 12, 127}) {
    const auto sort_type = static_cast<std::int8_t>(type);
    EXPECT_EQ(writes_at(5, [&] { EXPECT_EQ(sort_vindex_by_flag(VIEW_TV, sort_type), -1) << type; }),
              lines{"ERROR: sort_vindex_by_flag:# Unknown sort_type\n"});
    EXPECT_EQ(writes_at(-1, [&] { return sort_vindex_by_flag(VIEW_TV, sort_type); }), lines{});
  }

  EXPECT_EQ(std::memcmp(&list, before.get(), sizeof list), 0);
}

TEST_F(SortingByFlagResults, AnUnknownViewFailsAndChangesNothing) {
  fill_unfiled(VIEW_USER, 3);
  const auto before = std::make_unique<channel_list_st>(list);

  for (const std::int8_t code : unknown_codes) {
    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(sort_vindex_by_flag(code, SORT_LOCK), -1); }), lines{});
  }
  EXPECT_EQ(writes_at(2, [] { return sort_vindex_by_flag(30, 9); }),
            (lines{"WARNING: get_virtual_channel_st:# unknown vch_type=30\n",
                   "WARNING: get_virtual_channel_vnumber:# unknown vch_type=30\n"}));

  EXPECT_EQ(std::memcmp(&list, before.get(), sizeof list), 0);
}

TEST_F(SortingByFlagResults, TheTypeAndTheCountAreTracedAtLevelTwo) {
  fill_flags(VIEW_TV, {0, locked, 0});

  const lines lock = writes_at(2, [] { return sort_vindex_by_flag(VIEW_TV, SORT_LOCK); });
  ASSERT_GE(lock.size(), 2U);
  EXPECT_EQ(lock[0], "SORT_LOCK\n");
  EXPECT_EQ(lock[1], "vch_number 3 \n");
  const lines free = writes_at(2, [] { return sort_vindex_by_flag(VIEW_TV, SORT_FTA); });
  ASSERT_GE(free.size(), 2U);
  EXPECT_EQ(free[0], "SORT_FTA\n");
  EXPECT_EQ(free[1], "vch_number 3 \n");
  EXPECT_EQ(writes_at(1, [] { return sort_vindex_by_flag(VIEW_TV, SORT_LOCK); }), lines{});
}

TEST_F(SortingByFlagResults, TheSwitchToTheUserViewIsTracedBehindTheErrors) {
  fill_flags(VIEW_TV, {0, locked});
  list.tv_vch[0].rch = nullptr;
  lines expected = {"SORT_LOCK\n", "vch_number 2 \n", "ERROR: sort_vindex_by_flag:# r_ch == NULL\n"};
  const lines sorting = writes_at(2, [] { return sort_vindex_by_flag(VIEW_TV, SORT_LOCK); });

  for (const std::string &line : writes_at(2, [] { return change_vindex_type(VIEW_USER); })) {
    expected.push_back(line);
  }

  EXPECT_EQ(sorting, expected);
}

TEST_F(SortingByFlagResults, TheSettingsOfTheListStay) {
  fill_flags(VIEW_TV, {0, locked});
  list.use_group_list = 3;
  list.service_type = 2;
  list.net_index = 9;
  list.ch_type = 77;
  list.sub_group_id = 42;

  sort_vindex_by_flag(VIEW_TV, SORT_LOCK);

  EXPECT_EQ(list.use_group_list, 3);
  EXPECT_EQ(list.service_type, 2);
  EXPECT_EQ(list.net_index, 9);
  EXPECT_EQ(list.ch_type, 77);
  EXPECT_EQ(list.sub_group_id, 42);
}

TEST_F(SortingByFlagResults, AnEmptySourceEmptiesTheUserViewWhichIsThenRefused) {
  fill_unfiled(VIEW_USER, 3);
  fill_unfiled(VIEW_RADIO, 1);
  change_vindex_type(VIEW_RADIO);

  EXPECT_EQ(writes_at(1, [] { EXPECT_EQ(sort_vindex_by_flag(VIEW_TV, SORT_LOCK), 0); }),
            lines{"WARNING: change_vindex_type:# channel_list.user_vnumber 0 \n"});

  EXPECT_EQ(list.user_vnumber, 0);
  EXPECT_EQ(get_vindex_type(), VIEW_RADIO);
}

}  // namespace
