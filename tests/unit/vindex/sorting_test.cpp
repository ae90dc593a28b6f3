// The view sort: the views it takes, what it logs, and what it leaves alone.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "support/log_capture.h"
#include "support/sort_cases.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

bool is_sortable(int view) { return view != VIEW_WORK && view != VIEW_PROMOTION; }

class Sorting : public store_test {};

TEST_F(Sorting, EntriesWithoutChannelStayInTheView) {
  for (const std::int8_t type : {std::int8_t{SORT_CH_NAME}, std::int8_t{SORT_USER_TYPE}}) {
    const std::vector<channel_st *> services = fill_view(VIEW_ALL, 6);
    list.vch[1].rch = nullptr;
    list.vch[4].rch = nullptr;

    EXPECT_EQ(sort_vch_type(type, VIEW_ALL), 0);

    std::vector<int> ids = service_ids(VIEW_ALL);
    std::sort(ids.begin(), ids.end());
    EXPECT_EQ(ids, (std::vector<int>{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(std::count_if(list.vch, list.vch + 6, [](const auto &entry) { return entry.rch == nullptr; }), 2);
    reset_channel_list();
  }
}

// What a key of the real channel would order keeps its order; every other key orders it.
TEST_F(Sorting, AViewWithoutAnyChannelIsSorted) {
  std::vector<int> ascending(100);
  std::iota(ascending.begin(), ascending.end(), 1);
  const std::vector<int> descending(ascending.rbegin(), ascending.rend());
  for (const std::int8_t type : sort_types) {
    fill_unfiled(VIEW_ALL, 100);
    std::reverse(list.vch, list.vch + 100);

    EXPECT_EQ(sort_vch_type(type, VIEW_ALL), 0);

    const bool is_of_the_channel = type == SORT_CH_NAME || type == SORT_USER_TYPE;
    EXPECT_EQ(service_ids(VIEW_ALL), is_of_the_channel ? descending : ascending) << int{type};
  }
}

TEST_F(Sorting, NumbersStayWithTheirChannels) {
  const std::vector<channel_st *> services = fill_view(VIEW_ALL, 3);
  set_name(*services[0], "c");
  set_name(*services[1], "a");
  set_name(*services[2], "b");

  sort_vch_type(SORT_CH_NAME, VIEW_ALL);

  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{2, 3, 1}));
  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{2, 3, 1}));
}

TEST_F(Sorting, EntriesMoveWhole) {
  fill_unfiled(VIEW_ALL, 2);
  list.vch[0].major_ch_num = 9;
  list.vch[0].vch_tag = -3;
  list.vch[0].favorite_id = 7;
  list.vch[0].reserved_7 = 0xAA;
  list.vch[0].reserved_13 = 0xBB;
  list.vch[0].rch = file_service({});
  const virtual_channel_st before = list.vch[0];

  sort_vch_type(SORT_NUMBER, VIEW_ALL);

  EXPECT_EQ(std::memcmp(&list.vch[1], &before, sizeof before), 0);
}

TEST_F(Sorting, EveryTypeSortsEverySortableView) {
  for (const view_case &each : every_view()) {
    if (!is_sortable(each.code)) {
      continue;
    }
    const std::vector<channel_st *> services = fill_view(each.code, 3);
    for (const std::int8_t type : sort_types) {
      for (int i = 0; i < 3; ++i) {
        // Descending on every key.
        channel_st &service = *services[static_cast<std::size_t>(i)];
        service.user_order_key = static_cast<std::int16_t>(3 - i);
        set_name(service, std::string(1, static_cast<char>('c' - i)));
        virtual_channel_st &entry = get_virtual_channel_st(each.code)[i];
        entry = entry_of(service, static_cast<std::int16_t>(3 - i));
        entry.favorite_id = static_cast<std::uint8_t>(3 - i);
        entry.frequency = static_cast<std::uint32_t>(3 - i);
        entry.service_id = static_cast<std::uint16_t>(3 - i);
      }

      EXPECT_EQ(sort_vch_type(type, each.code), 0);

      EXPECT_EQ(majors(each.code), (std::vector<int>{1, 2, 3})) << int{type} << " on " << int{each.code};
      EXPECT_TRUE(slots_behind_count_are_zero(each.code, each.capacity)) << int{each.code};
    }
    init_vindex(each.code);
    reset_channel_list();
  }
}

TEST_F(Sorting, OnlyTheNamedViewIsSorted) {
  for (const view_case &each : every_view()) {
    fill_unfiled(each.code, 2);
    get_virtual_channel_st(each.code)[0].major_ch_num = 9;
  }

  sort_vch_type(SORT_NUMBER, VIEW_RADIO);

  for (const view_case &each : every_view()) {
    EXPECT_EQ(majors(each.code), (each.code == VIEW_RADIO ? std::vector<int>{2, 9} : std::vector<int>{9, 2}));
  }
}

TEST_F(Sorting, TheCurrentViewAndTheSettingsStay) {
  fill_unfiled(VIEW_TV, 2);
  const auto before = std::make_unique<channel_list_st>(list);

  sort_vch_type(SORT_SERVICE_ID, VIEW_TV);

  EXPECT_EQ(std::memcmp(&list, before.get(), sizeof list), 0);
}

TEST_F(Sorting, IsTracedAtLevelTwo) {
  fill_unfiled(29, 2);
  for (const std::int8_t type : sort_types) {
    EXPECT_EQ(writes_at(2, [&] { return sort_vch_type(type, 29); }),
              lines{"ChannelAPI sort_vch_type:# sort_type " + std::to_string(type) + " : vch_type 29 \n"} +
                  sort_trace(type, 2));
    EXPECT_EQ(writes_at(1, [&] { return sort_vch_type(type, 29); }), lines{});
  }
}

TEST_F(Sorting, ThePromotionAndTheWorkViewAreUnknownHere) {
  for (const std::int8_t view : {std::int8_t{VIEW_PROMOTION}, std::int8_t{VIEW_WORK}}) {
    fill_unfiled(view, 2);
    get_virtual_channel_st(view)[0].major_ch_num = 9;
    const std::string error = "ERROR: sort_vch_type:# unknown vch_type=" + std::to_string(view) + "\n";

    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(sort_vch_type(SORT_NUMBER, view), 0); }), lines{error});
    EXPECT_EQ(writes_at(-1, [&] { return sort_vch_type(SORT_NUMBER, view); }), lines{});
    EXPECT_EQ(writes_at(2, [&] { return sort_vch_type(SORT_NUMBER, view); }),
              (lines{"ChannelAPI sort_vch_type:# sort_type 6 : vch_type " + std::to_string(view) + " \n", error} +
               sort_trace(SORT_NUMBER, 0)));

    EXPECT_EQ(majors(view), (std::vector<int>{9, 2}));
  }
}

TEST_F(Sorting, ByNameThePromotionViewIsNotTouched) {
  const std::vector<channel_st *> services = fill_view(VIEW_PROMOTION, 2);
  set_name(*services[0], "b");
  set_name(*services[1], "a");

  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(sort_vch_type(2, 5), 0); }),
            lines{"ERROR: sort_vch_type:# unknown vch_type=5\n"});

  EXPECT_EQ(service_ids(VIEW_PROMOTION), (std::vector<int>{1, 2}));
}

TEST_F(Sorting, UnknownViewsAreErrorsAndSucceed) {
  for (const std::int8_t code : unknown_codes) {
    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(sort_vch_type(SORT_NUMBER, code), 0); }),
              lines{"ERROR: sort_vch_type:# unknown vch_type=" + std::to_string(code) + "\n"});
  }
}

TEST_F(Sorting, UnknownTypesAreErrorsAndSucceedForOneView) {
  fill_unfiled(VIEW_ALL, 2);
  list.vch[0].major_ch_num = 9;
  for (const std::int8_t type : unknown_types) {
    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(sort_vch_type(type, VIEW_ALL), 0); }),
              lines{"ERROR: qsort_virtual_channel:# Unknown sort_type\n"});
    EXPECT_EQ(writes_at(-1, [&] { return sort_vch_type(type, VIEW_ALL); }), lines{});
    EXPECT_EQ(writes_at(2, [&] { return sort_vch_type(type, VIEW_ALL); }),
              (lines{"ChannelAPI sort_vch_type:# sort_type " + std::to_string(type) + " : vch_type 0 \n",
                     "ERROR: qsort_virtual_channel:# Unknown sort_type\n"}));
  }
  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{9, 2}));
}

TEST_F(Sorting, AnUnknownTypeIsReportedForAnUnknownViewToo) {
  EXPECT_EQ(
      writes_at(0, [] { EXPECT_EQ(sort_vch_type(9, VIEW_WORK), 0); }),
      (lines{"ERROR: sort_vch_type:# unknown vch_type=4\n", "ERROR: qsort_virtual_channel:# Unknown sort_type\n"}));
}

TEST_F(Sorting, BouquetsAreNotSortedAndStillSucceed) {
  fill_unfiled(VIEW_ALL, 3);
  list.vch[0].major_ch_num = 9;
  const auto before = std::make_unique<channel_list_st>(list);

  EXPECT_EQ(writes_at(2, [] { EXPECT_EQ(sort_vch_type(7, 0), 0); }),
            (lines{"ChannelAPI sort_vch_type:# sort_type 7 : vch_type 0 \n", "SORT_BOUQUET\n"}));
  EXPECT_EQ(writes_at(1, [] { return sort_vch_type(7, 0); }), lines{});

  EXPECT_EQ(std::memcmp(&list, before.get(), sizeof list), 0);
}

TEST_F(Sorting, ViewsOfNoneAndOneEntryAreSorted) {
  for (const std::int8_t type : sort_types) {
    init_vindex(VIEW_ALL);
    EXPECT_EQ(sort_vch_type(type, VIEW_ALL), 0);
    fill_unfiled(VIEW_ALL, 1);
    EXPECT_EQ(sort_vch_type(type, VIEW_ALL), 0);
    EXPECT_EQ(service_ids(VIEW_ALL), std::vector<int>{1});
  }
}

TEST_F(Sorting, ACountOutsideTheArrayIsReadAsTheNearestInside) {
  fill_unfiled(10, 40);
  fill_unfiled(11, 1);
  list.favorite_vch[0][0].major_ch_num = 777;
  list.favorite_vch[1][0].major_ch_num = -1;

  list.favorite_vnumber[0] = 32767;
  sort_vch_type(SORT_NUMBER, 10);
  EXPECT_EQ(list.favorite_vch[0][39].major_ch_num, 777);
  EXPECT_EQ(list.favorite_vch[1][0].major_ch_num, -1);

  std::swap(list.favorite_vch[0][0], list.favorite_vch[0][39]);
  list.favorite_vnumber[0] = -1;
  EXPECT_EQ(sort_vch_type(SORT_NUMBER, 10), 0);
  EXPECT_EQ(list.favorite_vch[0][0].major_ch_num, 777);
}

}  // namespace
