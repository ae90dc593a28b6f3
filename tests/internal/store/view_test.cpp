// A view as one small value: its bounds, its appends, the table of views and the current view.
#include "channel/store/view.h"

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <iterator>
#include <set>

#include "support/log_capture.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;
using channel::view;

class ViewValues : public store_test {
 protected:
  // A view of three entries with a fourth behind it that nothing may touch.
  virtual_channel_st entries_[4] = {};
  std::int16_t count_ = 0;
  const view small_ = {entries_, &count_, 3};
};

virtual_channel_st numbered(std::int16_t major) {
  virtual_channel_st entry = {};
  entry.major_ch_num = major;
  return entry;
}

TEST_F(ViewValues, ACountIsReadAsTheNearestOneInsideTheArray) {
  const struct {
    int count;
    int size;
  } cases[] = {{-32768, 0}, {-1, 0}, {0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 3}, {32767, 3}};
  for (const auto &each : cases) {
    count_ = static_cast<std::int16_t>(each.count);

    EXPECT_EQ(small_.size(), each.size) << each.count;
    EXPECT_EQ(std::distance(small_.begin(), small_.end()), each.size) << each.count;
    EXPECT_EQ(small_.used().size(), static_cast<std::size_t>(each.size)) << each.count;
    EXPECT_EQ(small_.is_full(), each.size == 3) << each.count;
    EXPECT_EQ(count_, each.count);
  }
}

TEST_F(ViewValues, TheArrayIsTheWholeCapacity) {
  EXPECT_EQ(small_.array().size(), 3U);
  EXPECT_EQ(small_.array().data(), entries_);
}

TEST_F(ViewValues, SlotsAreReachedInsideTheArrayInUseOrNot) {
  EXPECT_EQ(small_.slot(0), &entries_[0]);
  EXPECT_EQ(small_.slot(2), &entries_[2]);
  for (const int outside : {-32768, -1, 3, 4, 32767}) {
    EXPECT_EQ(small_.slot(outside), nullptr) << outside;
  }
}

TEST_F(ViewValues, EntriesAreAppendedUntilTheArrayIsFull) {
  for (std::int16_t n = 1; n <= 3; ++n) {
    EXPECT_TRUE(small_.append(numbered(n)));
    EXPECT_EQ(count_, n);
    EXPECT_EQ(entries_[n - 1].major_ch_num, n);
  }

  EXPECT_FALSE(small_.append(numbered(4)));

  EXPECT_EQ(count_, 3);
  EXPECT_EQ(entries_[3].major_ch_num, 0);
}

TEST_F(ViewValues, AppendingBehindACountOutsideTheArrayStartsAtTheNearestInside) {
  count_ = -7;
  EXPECT_TRUE(small_.append(numbered(1)));
  EXPECT_EQ(count_, 1);
  EXPECT_EQ(entries_[0].major_ch_num, 1);

  count_ = 4;
  EXPECT_FALSE(small_.append(numbered(2)));

  EXPECT_EQ(count_, 4);
  EXPECT_EQ(entries_[3].major_ch_num, 0);
}

TEST_F(ViewValues, NoViewIsFalse) {
  EXPECT_FALSE(view{});
  EXPECT_FALSE((view{entries_, nullptr, 3}));
  EXPECT_FALSE((view{nullptr, &count_, 3}));
  EXPECT_TRUE(small_);
}

TEST_F(ViewValues, EveryCodeHasItsArrayItsCountAndItsCapacity) {
  const struct {
    int code;
    virtual_channel_st *entries;
    std::int16_t *count;
    int capacity;
  } cases[] = {{0, list.vch, &list.vnumber, 5000},
               {1, list.tv_vch, &list.tv_vnumber, 4000},
               {2, list.radio_vch, &list.radio_vnumber, 1000},
               {3, list.user_vch, &list.user_vnumber, 5000},
               {5, list.promo_vch, &list.promo_vnumber, 10},
               {10, list.favorite_vch[0], &list.favorite_vnumber[0], 40},
               {17, list.favorite_vch[7], &list.favorite_vnumber[7], 40},
               {29, list.favorite_vch[19], &list.favorite_vnumber[19], 40}};
  for (const auto &each : cases) {
    const view found = channel::find_view(each.code);

    EXPECT_EQ(found.entries, each.entries) << each.code;
    EXPECT_EQ(found.count, each.count) << each.code;
    EXPECT_EQ(found.capacity, each.capacity) << each.code;
  }
}

TEST_F(ViewValues, TheWorkViewHolds5000EntriesOutsideTheList) {
  const view work = channel::find_view(VIEW_WORK);

  ASSERT_TRUE(work);
  EXPECT_EQ(work.capacity, 5000);
  const auto *first = reinterpret_cast<const char *>(work.entries);
  const auto *list_begin = reinterpret_cast<const char *>(&list);
  EXPECT_TRUE(first + work.array().size_bytes() <= list_begin || first >= list_begin + sizeof list);
}

TEST_F(ViewValues, UnknownCodesHaveNoViewAndAreNotReported) {
  const auto find_unknown = [] {
    for (const int code : {-32768, -128, -1, 6, 7, 8, 9, 30, 31, 127, 32767}) {
      EXPECT_FALSE(channel::find_view(code)) << code;
    }
    return 0;
  };

  EXPECT_EQ(writes_at(9, find_unknown), lines{});
}

TEST_F(ViewValues, FetchingAnUnknownCodeIsWarnedOfByBothAccessors) {
  const auto fetch = [] {
    EXPECT_FALSE(channel::fetch_view(9));
    return 0;
  };

  EXPECT_EQ(writes_at(1, fetch), (lines{"WARNING: get_virtual_channel_st:# unknown vch_type=9\n",
                                        "WARNING: get_virtual_channel_vnumber:# unknown vch_type=9\n"}));
  EXPECT_EQ(channel::fetch_view(VIEW_FAVOURITE_LAST).entries, list.favorite_vch[19]);
}

TEST_F(ViewValues, AllViewsAre26DifferentOnes) {
  std::set<const virtual_channel_st *> arrays;
  for (const view &each : channel::all_views()) {
    EXPECT_TRUE(each);
    arrays.insert(each.entries);
  }

  EXPECT_EQ(channel::all_views().size(), 26U);
  EXPECT_EQ(arrays.size(), 26U);
}

TEST_F(ViewValues, TheCurrentViewHasTheCapacityOfItsArray) {
  append_entry(VIEW_PROMOTION, {});
  change_vindex_type(VIEW_PROMOTION);

  const view current = channel::current_view();

  EXPECT_EQ(current.entries, list.promo_vch);
  EXPECT_EQ(current.count, &list.promo_vnumber);
  EXPECT_EQ(current.capacity, 10);
}

TEST_F(ViewValues, WithoutAnArrayOrACountThereIsNoCurrentView) {
  list.cur_vch = nullptr;
  EXPECT_FALSE(channel::current_view());

  list.cur_vch = list.vch;
  list.cur_vnumber = nullptr;
  EXPECT_FALSE(channel::current_view());
}

TEST_F(ViewValues, AnArrayThatAHostMadeCurrentHoldsAsManyEntriesAsTheHostCounts) {
  list.cur_vch = entries_;
  list.cur_vnumber = &count_;
  count_ = 2;
  EXPECT_EQ(channel::current_view().capacity, 2);
  EXPECT_EQ(channel::current_view().size(), 2);

  count_ = -1;

  EXPECT_EQ(channel::current_view().capacity, 0);
  EXPECT_EQ(channel::current_view().size(), 0);
}

}  // namespace
