// Sorting the main views in one call, and views that are full.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "support/log_capture.h"
#include "support/sort_cases.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

class SortingSeveralViews : public store_test {
 protected:
  // A different number of entries in each of the main views, descending.
  void SetUp() override {
    store_test::SetUp();
    for (const view_case &each : every_view()) {
      fill_descending(each.code);
    }
  }

  static int size_of(std::int8_t code) { return std::min(code + 2, 40); }

  static void fill_descending(std::int8_t code) {
    const int count = size_of(code);
    fill_unfiled(code, count);
    for (int i = 0; i < count; ++i) {
      get_virtual_channel_st(code)[i].major_ch_num = static_cast<std::int16_t>(count - i);
    }
  }

  static bool is_ascending(std::int8_t code) {
    const std::vector<int> numbers = majors(code);
    return std::is_sorted(numbers.begin(), numbers.end());
  }
};

TEST_F(SortingSeveralViews, TheFiveMainViewsAreSortedAndNoOther) {
  EXPECT_EQ(sort_vindex_ex(SORT_NUMBER), 0);

  for (const view_case &each : every_view()) {
    const bool expected = each.code <= VIEW_PROMOTION && each.code != VIEW_WORK;
    EXPECT_EQ(is_ascending(each.code), expected) << int{each.code};
  }
}

TEST_F(SortingSeveralViews, TheOrderIsAllUserPromotionTvRadio) {
  lines expected;
  for (const std::int8_t code : {VIEW_ALL, VIEW_USER, VIEW_PROMOTION, VIEW_TV, VIEW_RADIO}) {
    expected = expected + sort_trace(SORT_NUMBER, size_of(code));
  }

  EXPECT_EQ(writes_at(2, [] { return sort_vindex_ex(SORT_NUMBER); }), expected);
  EXPECT_EQ(writes_at(1, [] { return sort_vindex_ex(SORT_NUMBER); }), lines{});
}

TEST_F(SortingSeveralViews, EveryTypeSucceeds) {
  for (const std::int8_t type : sort_types) {
    EXPECT_EQ(sort_vindex_ex(type), 0) << int{type};
  }
}

TEST_F(SortingSeveralViews, UnknownTypesFailOnceForEachView) {
  for (const std::int8_t type : unknown_types) {
    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(sort_vindex_ex(type), -1); }),
              lines(5, "ERROR: qsort_virtual_channel:# Unknown sort_type\n"));
  }
  EXPECT_EQ(writes_at(-1, [] { return sort_vindex_ex(9); }), lines{});
  EXPECT_FALSE(is_ascending(VIEW_ALL));
}

TEST_F(SortingSeveralViews, BouquetsFailOnceForEachView) {
  EXPECT_EQ(writes_at(2, [] { EXPECT_EQ(sort_vindex_ex(SORT_BOUQUET), -1); }), lines(5, "SORT_BOUQUET\n"));
  EXPECT_EQ(writes_at(1, [] { return sort_vindex_ex(SORT_BOUQUET); }), lines{});
  EXPECT_FALSE(is_ascending(VIEW_ALL));
}

TEST_F(SortingSeveralViews, EmptyViewsAreSorted) {
  init_channel_list();

  EXPECT_EQ(sort_vindex_ex(SORT_NUMBER), 0);
}

class SortingAFullView : public store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    fill_everything();
    for (int i = 0; i < MAX_CHANNEL; ++i) {
      virtual_channel_st &entry = list.vch[i];
      entry.major_ch_num = static_cast<std::int16_t>(i * 7919 % 97);
      entry.minor_ch_num = static_cast<std::int16_t>(i * 31 % 5000);
      entry.favorite_id = static_cast<std::uint8_t>(i * 13);
      entry.rch->user_order_key = static_cast<std::int16_t>(i * 7919);
    }
    std::reverse(list.vch, list.vch + MAX_CHANNEL);
  }

  template <class Less>
  void expect_sorted(std::int8_t type, Less less) {
    EXPECT_EQ(sort_vch_type(type, VIEW_ALL), 0);

    EXPECT_TRUE(std::is_sorted(list.vch, list.vch + MAX_CHANNEL, less)) << int{type};
    std::vector<int> ids = service_ids(VIEW_ALL);
    std::sort(ids.begin(), ids.end());
    EXPECT_EQ(std::adjacent_find(ids.begin(), ids.end()), ids.end());
    EXPECT_EQ(list.vnumber, MAX_CHANNEL);
  }
};

TEST_F(SortingAFullView, HoldsItsOrderForEveryType) {
  using entry = virtual_channel_st;
  expect_sorted(SORT_NUMBER, [](const entry &a, const entry &b) {
    return std::pair(a.major_ch_num, a.minor_ch_num) < std::pair(b.major_ch_num, b.minor_ch_num);
  });
  expect_sorted(SORT_TRANSPONDER, [](const entry &a, const entry &b) {
    return std::pair(a.frequency, a.service_id) < std::pair(b.frequency, b.service_id);
  });
  expect_sorted(SORT_SERVICE_ID, [](const entry &a, const entry &b) { return a.service_id < b.service_id; });
  expect_sorted(SORT_FAV_DEFAULT, [](const entry &a, const entry &b) {
    return std::pair(a.favorite_id, a.service_id) < std::pair(b.favorite_id, b.service_id);
  });
  expect_sorted(SORT_USER_TYPE,
                [](const entry &a, const entry &b) { return a.rch->user_order_key < b.rch->user_order_key; });
  expect_sorted(SORT_CH_NAME, [](const entry &a, const entry &b) {
    return std::strcmp(a.rch->name[0].text, b.rch->name[0].text) < 0;
  });
}

TEST_F(SortingSeveralViews, ADestroyedListIsSorted) {
  destroy_channel_list();

  EXPECT_EQ(sort_vindex_ex(SORT_NUMBER), 0);
  EXPECT_EQ(sort_vindex(), 0);
  for (const view_case &each : every_view()) {
    EXPECT_EQ(sort_vindex_by_number(each.code), 0) << int{each.code};
    EXPECT_EQ(writes_at(-1, [&] { return sort_vch_type(SORT_NUMBER, each.code); }), lines{});
  }
  EXPECT_EQ(writes_at(-1, [] { EXPECT_EQ(sort_vindex_by_flag(VIEW_TV, SORT_LOCK), 0); }), lines{});
}

}  // namespace
