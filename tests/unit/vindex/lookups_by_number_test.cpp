// Lookups by displayed number: the first entry wins, numbers compare exactly, misses are errors.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/missing_current_view.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

class LookupsByNumber : public store_test {
 protected:
  struct number {
    int major;
    int minor;
  };

  static void fill(std::int8_t code, const std::vector<number> &numbers) {
    fill_unfiled(code, static_cast<int>(numbers.size()));
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      get_virtual_channel_st(code)[i].major_ch_num = static_cast<std::int16_t>(numbers[i].major);
      get_virtual_channel_st(code)[i].minor_ch_num = static_cast<std::int16_t>(numbers[i].minor);
    }
  }
};

TEST_F(LookupsByNumber, TheLowestIndexOfAMajorNumberWins) {
  fill(VIEW_ALL, {{5, 1}, {7, 0}, {5, 0}});

  EXPECT_EQ(get_channel_index(5), 0);
  EXPECT_EQ(get_channel_index(7), 1);
}

TEST_F(LookupsByNumber, AMajorNumberThatIsNotThereIsAnError) {
  fill(VIEW_ALL, {{5, 0}, {7, 0}, {5, 0}});

  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(get_channel_index(6), -1); }),
            lines{"ERROR: get_channel_index:# Fail to find channel number 6\n"});
  EXPECT_EQ(writes_at(-1, [] { return get_channel_index(6); }), lines{});
}

TEST_F(LookupsByNumber, MajorAndMinorMustBothMatch) {
  fill(VIEW_ALL, {{5, 1}, {7, 2}, {5, 2}, {5, 2}});

  EXPECT_EQ(get_channel_index_by_number(5, 1), 0);
  EXPECT_EQ(get_channel_index_by_number(7, 2), 1);
  EXPECT_EQ(get_channel_index_by_number(5, 2), 2);
}

TEST_F(LookupsByNumber, APairThatIsNotThereIsAnError) {
  fill(VIEW_ALL, {{5, 1}, {7, 2}});

  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(get_channel_index_by_number(5, 2), -1); }),
            lines{"ERROR: get_channel_index_by_number:# Fail to find channel number 5-2\n"});
  EXPECT_EQ(writes_at(-1, [] { return get_channel_index_by_number(5, 2); }), lines{});
}

TEST_F(LookupsByNumber, NumbersAreSignedSixteenBitValues) {
  fill(VIEW_ALL, {{-32768, 32767}, {32767, -32768}, {-1, -1}, {0, 0}});

  EXPECT_EQ(get_channel_index(-32768), 0);
  EXPECT_EQ(get_channel_index(32767), 1);
  EXPECT_EQ(get_channel_index(-1), 2);
  EXPECT_EQ(get_channel_index(0), 3);
  EXPECT_EQ(get_channel_index_by_number(-32768, 32767), 0);
  EXPECT_EQ(get_channel_index_by_number(32767, -32768), 1);
  EXPECT_EQ(get_channel_index_by_number(-1, -1), 2);
  EXPECT_EQ(get_channel_index_by_number(0, 0), 3);
}

TEST_F(LookupsByNumber, ErrorsPrintNegativeNumbersSigned) {
  EXPECT_EQ(writes_at(0, [] { return get_channel_index(-32768); }),
            lines{"ERROR: get_channel_index:# Fail to find channel number -32768\n"});
  EXPECT_EQ(writes_at(0, [] { return get_channel_index_by_number(-1, -2); }),
            lines{"ERROR: get_channel_index_by_number:# Fail to find channel number -1--2\n"});
}

TEST_F(LookupsByNumber, TheCurrentViewIsSearched) {
  fill(VIEW_ALL, {{1, 0}, {2, 0}});
  fill(VIEW_TV, {{2, 0}});
  change_vindex_type(VIEW_TV);

  EXPECT_EQ(get_channel_index(2), 0);
  EXPECT_EQ(get_channel_index_by_number(2, 0), 0);
  EXPECT_EQ(get_channel_index(1), -1);
  EXPECT_EQ(get_channel_index_by_number(1, 0), -1);
}

TEST_F(LookupsByNumber, EntriesBehindTheCountAreNotFound) {
  fill(VIEW_ALL, {{1, 0}, {2, 0}});
  list.vnumber = 1;

  EXPECT_EQ(get_channel_index(2), -1);
  EXPECT_EQ(get_channel_index_by_number(2, 0), -1);
  EXPECT_EQ(vtype_get_vindex_by_number(2, 0, VIEW_ALL), -1);
  EXPECT_EQ(vtype_get_vch_by_number(2, 0, VIEW_ALL), nullptr);
}

TEST_F(LookupsByNumber, EveryNamedViewIsSearched) {
  for (const view_case &each : every_view()) {
    fill(each.code, {{5, 1}, {5, 2}, {5, 2}});

    EXPECT_EQ(vtype_get_vindex_by_number(5, 1, each.code), 0) << int{each.code};
    EXPECT_EQ(vtype_get_vindex_by_number(5, 2, each.code), 1) << int{each.code};
    EXPECT_EQ(vtype_get_vch_by_number(5, 2, each.code), &get_virtual_channel_st(each.code)[1]) << int{each.code};

    init_vindex(each.code);
  }
}

TEST_F(LookupsByNumber, TheLastSlotOfEveryViewIsFound) {
  for (const view_case &each : every_view()) {
    fill_unfiled(each.code, each.capacity);
    const auto last = static_cast<std::int16_t>(each.capacity);

    EXPECT_EQ(vtype_get_vindex_by_number(last, 0, each.code), each.capacity - 1) << int{each.code};
    EXPECT_EQ(vtype_get_vch_by_number(last, 0, each.code), &get_virtual_channel_st(each.code)[each.capacity - 1]);

    init_vindex(each.code);
  }
}

TEST_F(LookupsByNumber, APairThatANamedViewLacksIsAnError) {
  fill(VIEW_ALL, {{5, 2}});

  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(vtype_get_vindex_by_number(5, 2, VIEW_TV), -1); }),
            lines{"ERROR: vtype_get_vindex_by_number:# Fail to find channel number 5-2\n"});
  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(vtype_get_vch_by_number(5, 2, VIEW_TV), nullptr); }),
            lines{"ERROR: vtype_get_vch_by_number:# Fail to find channel number 5-2\n"});
  EXPECT_EQ(writes_at(-1, [] { return vtype_get_vindex_by_number(5, 2, VIEW_TV); }), lines{});
  EXPECT_EQ(writes_at(-1, [] { return vtype_get_vch_by_number(5, 2, VIEW_TV); }), lines{});
}

TEST_F(LookupsByNumber, AnUnknownViewHoldsNoNumber) {
  fill(VIEW_ALL, {{5, 2}});
  for (const std::int8_t code : unknown_codes) {
    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(vtype_get_vindex_by_number(5, 2, code), -1); }),
              lines{"ERROR: vtype_get_vindex_by_number:# Fail to find channel number 5-2\n"});
    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(vtype_get_vch_by_number(5, 2, code), nullptr); }),
              lines{"ERROR: vtype_get_vch_by_number:# Fail to find channel number 5-2\n"});
  }
}

TEST_F(LookupsByNumber, BothAccessorsWarnOfAnUnknownView) {
  EXPECT_EQ(writes_at(1, [] { return vtype_get_vindex_by_number(5, 2, 30); }),
            (lines{"WARNING: get_virtual_channel_st:# unknown vch_type=30\n",
                   "WARNING: get_virtual_channel_vnumber:# unknown vch_type=30\n",
                   "ERROR: vtype_get_vindex_by_number:# Fail to find channel number 5-2\n"}));
  EXPECT_EQ(writes_at(1, [] { return vtype_get_vch_by_number(5, 2, 30); }),
            (lines{"WARNING: get_virtual_channel_st:# unknown vch_type=30\n",
                   "WARNING: get_virtual_channel_vnumber:# unknown vch_type=30\n",
                   "ERROR: vtype_get_vch_by_number:# Fail to find channel number 5-2\n"}));
}

TEST_F(LookupsByNumber, WithoutACurrentViewNothingIsFound) {
  fill(VIEW_ALL, {{5, 2}});
  const auto expect_misses = [] {
    EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(get_channel_index(5), -1); }),
              lines{"ERROR: get_channel_index:# Fail to find channel number 5\n"});
    EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(get_channel_index_by_number(5, 2), -1); }),
              lines{"ERROR: get_channel_index_by_number:# Fail to find channel number 5-2\n"});
  };

  without_current_view(expect_misses);
}

TEST_F(LookupsByNumber, ACountOutsideTheArrayIsReadAsTheNearestInside) {
  fill_unfiled(10, 40);
  fill(11, {{777, 0}});
  change_vindex_type(10);

  list.favorite_vnumber[0] = 32767;
  EXPECT_EQ(get_channel_index(40), 39);
  EXPECT_EQ(get_channel_index(777), -1);
  EXPECT_EQ(get_channel_index_by_number(777, 0), -1);
  EXPECT_EQ(vtype_get_vindex_by_number(777, 0, 10), -1);
  EXPECT_EQ(vtype_get_vch_by_number(777, 0, 10), nullptr);

  list.favorite_vnumber[0] = -1;
  EXPECT_EQ(get_channel_index(1), -1);
  EXPECT_EQ(vtype_get_vindex_by_number(1, 0, 10), -1);
}

TEST_F(LookupsByNumber, HitsAreSilent) {
  fill(VIEW_ALL, {{5, 2}});

  EXPECT_EQ(writes_at(5, [] { return get_channel_index(5); }), lines{});
  EXPECT_EQ(writes_at(5, [] { return get_channel_index_by_number(5, 2); }), lines{});
  EXPECT_EQ(writes_at(5, [] { return vtype_get_vindex_by_number(5, 2, VIEW_ALL); }), lines{});
  EXPECT_EQ(writes_at(5, [] { return vtype_get_vch_by_number(5, 2, VIEW_ALL); }), lines{});
}

}  // namespace
