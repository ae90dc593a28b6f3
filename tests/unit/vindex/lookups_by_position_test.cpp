// Lookups by position: the current view itself, its entries and their numbers.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/missing_current_view.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

std::string no_view(const std::string &function) { return "ERROR: " + function + ":#  channel_list NULL !! "; }

class LookupsByPosition : public store_test {};

TEST_F(LookupsByPosition, TheArrayAndTheCountOfTheCurrentView) {
  for (const view_case &each : every_view()) {
    if (each.code == VIEW_WORK) {
      continue;
    }
    fill_unfiled(each.code, each.capacity);
    change_vindex_type(each.code);

    EXPECT_EQ(get_channel_list_vch(), get_virtual_channel_st(each.code)) << int{each.code};
    EXPECT_EQ(get_channel_list_number(), each.capacity) << int{each.code};
    EXPECT_EQ(find_max_channel_number(), each.capacity) << int{each.code};
  }
}

TEST_F(LookupsByPosition, AnEmptyViewHasAnArrayAndNoEntries) {
  EXPECT_EQ(writes_at(5,
                      [this] {
                        EXPECT_EQ(get_channel_list_vch(), list.vch);
                        EXPECT_EQ(get_channel_list_number(), 0);
                        EXPECT_EQ(find_max_channel_number(), 0);
                      }),
            lines{});
}

TEST_F(LookupsByPosition, TheLargestNumberIsTheNumberOfEntries) {
  fill_unfiled(VIEW_ALL, 12);
  for (int i = 0; i < 12; ++i) {
    list.vch[i].major_ch_num = static_cast<std::int16_t>(i == 11 ? 40 : i * 3 + 1);
  }

  EXPECT_EQ(find_max_channel_number(), 12);
}

TEST_F(LookupsByPosition, WithoutACurrentViewThereIsNoArrayAndNoCount) {
  without_current_view([] {
    EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(get_channel_list_vch(), nullptr); }), lines{no_view("get_channel_list_vch")});
    EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(get_channel_list_number(), 0); }), lines{no_view("get_channel_list_number")});
    EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(find_max_channel_number(), 0); }), lines{no_view("find_max_channel_number")});
  });
}

TEST_F(LookupsByPosition, WithoutACurrentViewThereIsNoEntry) {
  without_current_view([] {
    EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(get_vchannel_by_vindex(0), nullptr); }),
              lines{no_view("get_vchannel_by_vindex")});
    EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(get_channel_number(0), -1); }), lines{no_view("get_channel_number")});
    EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(get_channel_minor_number(0), -1); }),
              lines{no_view("get_channel_minor_number")});
  });
}

TEST_F(LookupsByPosition, WithoutACurrentViewThereIsNoChannel) {
  fill_view(VIEW_ALL, 1);
  without_current_view([] {
    EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(get_channel(0), nullptr); }), lines{no_view("get_channel")});
    EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(get_channel_by_vindex(0), nullptr); }),
              lines{no_view("get_channel_by_vindex")});
  });
}

TEST_F(LookupsByPosition, TheMissingViewIsNotReportedBelowLevelZero) {
  without_current_view([] {
    EXPECT_EQ(writes_at(-1,
                        [] {
                          get_channel_list_vch();
                          get_channel_list_number();
                          find_max_channel_number();
                          get_vchannel_by_vindex(0);
                          vtype_get_vchannel_by_vindex(0, 30);
                          get_channel_number(0);
                          get_channel_minor_number(0);
                          get_channel(0);
                          get_channel_by_vindex(0);
                        }),
              lines{});
  });
}

TEST_F(LookupsByPosition, EntriesOfTheCurrentView) {
  fill_unfiled(VIEW_ALL, 2);
  fill_unfiled(VIEW_TV, 2);
  change_vindex_type(VIEW_TV);
  list.tv_vch[1].major_ch_num = -32768;
  list.tv_vch[1].minor_ch_num = 32767;

  EXPECT_EQ(get_vchannel_by_vindex(0), &list.tv_vch[0]);
  EXPECT_EQ(get_vchannel_by_vindex(1), &list.tv_vch[1]);
  EXPECT_EQ(get_channel_number(1), -32768);
  EXPECT_EQ(get_channel_minor_number(1), 32767);
}

TEST_F(LookupsByPosition, SlotsBehindTheCountAreReadable) {
  fill_unfiled(VIEW_ALL, 2);
  list.vch[4999].major_ch_num = 77;
  list.vch[4999].minor_ch_num = 8;

  EXPECT_EQ(get_vchannel_by_vindex(2), &list.vch[2]);
  EXPECT_EQ(get_channel_number(2), 0);
  EXPECT_EQ(get_channel_minor_number(2), 0);
  EXPECT_EQ(get_vchannel_by_vindex(4999), &list.vch[4999]);
  EXPECT_EQ(get_channel_number(4999), 77);
  EXPECT_EQ(get_channel_minor_number(4999), 8);
  EXPECT_EQ(vtype_get_vchannel_by_vindex(4999, VIEW_ALL), &list.vch[4999]);
}

TEST_F(LookupsByPosition, PositionsOutsideTheArrayAreRefused) {
  for (const view_case &each : every_view()) {
    if (each.code == VIEW_WORK) {
      continue;
    }
    fill_unfiled(each.code, 1);
    change_vindex_type(each.code);
    EXPECT_NE(get_vchannel_by_vindex(static_cast<std::int16_t>(each.capacity - 1)), nullptr) << int{each.code};

    for (const int position : {-32768, -1, each.capacity, 32767}) {
      const auto vindex = static_cast<std::int16_t>(position);
      EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(get_vchannel_by_vindex(vindex), nullptr); }),
                lines{outside("get_vchannel_by_vindex", position)});
      EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(get_channel_number(vindex), -1); }),
                lines{outside("get_channel_number", position)});
      EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(get_channel_minor_number(vindex), -1); }),
                lines{outside("get_channel_minor_number", position)});
    }
  }
}

TEST_F(LookupsByPosition, EntriesOfANamedView) {
  for (const view_case &each : every_view()) {
    const auto last = static_cast<std::int16_t>(each.capacity - 1);
    EXPECT_EQ(vtype_get_vchannel_by_vindex(0, each.code), get_virtual_channel_st(each.code)) << int{each.code};
    EXPECT_EQ(vtype_get_vchannel_by_vindex(last, each.code), get_virtual_channel_st(each.code) + last)
        << int{each.code};

    for (const int position : {-32768, -1, each.capacity, 32767}) {
      EXPECT_EQ(writes_at(0,
                          [&] {
                            EXPECT_EQ(vtype_get_vchannel_by_vindex(static_cast<std::int16_t>(position), each.code),
                                      nullptr);
                          }),
                lines{outside("vtype_get_vchannel_by_vindex", position)});
    }
  }
}

TEST_F(LookupsByPosition, AnUnknownViewHasNoEntries) {
  for (const std::int8_t code : unknown_codes) {
    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(vtype_get_vchannel_by_vindex(0, code), nullptr); }),
              lines{no_view("vtype_get_vchannel_by_vindex")});
  }
  EXPECT_EQ(
      writes_at(1, [] { return vtype_get_vchannel_by_vindex(0, 30); }),
      (lines{"WARNING: get_virtual_channel_st:# unknown vch_type=30\n",
             "WARNING: get_virtual_channel_vnumber:# unknown vch_type=30\n", no_view("vtype_get_vchannel_by_vindex")}));
}

TEST_F(LookupsByPosition, HitsByPositionAreSilent) {
  fill_unfiled(VIEW_ALL, 1);

  EXPECT_EQ(writes_at(5,
                      [] {
                        get_channel_list_vch();
                        get_channel_list_number();
                        find_max_channel_number();
                        get_vchannel_by_vindex(0);
                        vtype_get_vchannel_by_vindex(0, VIEW_ALL);
                        get_channel_number(0);
                        get_channel_minor_number(0);
                      }),
            lines{});
}

TEST_F(LookupsByPosition, ACountOutsideTheArrayIsReadAsTheNearestInside) {
  fill_view(10, 1);
  fill_view(11, 1, {.ts_id = 7, .frequency = 12'000'000});
  change_vindex_type(10);

  list.favorite_vnumber[0] = 32767;
  EXPECT_EQ(get_channel_list_number(), 40);
  EXPECT_EQ(find_max_channel_number(), 40);
  EXPECT_EQ(get_channel(40), nullptr);
  EXPECT_EQ(vtype_get_channel_by_vindex(40, 10), nullptr);

  list.favorite_vnumber[0] = -1;
  EXPECT_EQ(get_channel_list_number(), 0);
  EXPECT_EQ(find_max_channel_number(), 0);
  EXPECT_EQ(get_channel(0), nullptr);
}

TEST_F(LookupsByPosition, LookupsChangeNothing) {
  fill_view(VIEW_ALL, 3);
  const auto before = std::make_unique<channel_list_st>(list);

  for (const std::int8_t type : {std::int8_t{VIEW_ALL}, std::int8_t{30}}) {
    for (const std::int16_t vindex : {std::int16_t{-1}, std::int16_t{0}, std::int16_t{3}, std::int16_t{5000}}) {
      writes_at(5, [&] {
        get_channel_list_vch();
        get_channel_list_number();
        find_max_channel_number();
        get_vchannel_by_vindex(vindex);
        vtype_get_vchannel_by_vindex(vindex, type);
        get_channel_number(vindex);
        get_channel_minor_number(vindex);
        get_channel_index(vindex);
        get_channel_index_by_number(vindex, 0);
        vtype_get_vindex_by_number(vindex, 0, type);
        vtype_get_vch_by_number(vindex, 0, type);
        get_vch_index_by_service_id(1);
        get_vch_index_by_ts_info(0, 1, 1, 100, 0, 1, 0);
        vtype_get_vch_by_ts_info(0, 1, 1, 100, 0, 1, 0, type);
        vtype_get_vch_index_by_ts_info(0, 1, 1, 100, 0, 1, 0, type);
        vtype_get_vch_by_frequency(0, 1, 11'000'000, 0, type);
        get_channel(vindex);
        get_channel_by_vindex(vindex);
        vtype_get_channel_by_vindex(vindex, type);
      });
    }
  }

  EXPECT_EQ(std::memcmp(&list, before.get(), sizeof list), 0);
}

}  // namespace
