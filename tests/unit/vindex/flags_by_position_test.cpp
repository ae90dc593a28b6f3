// The flag byte of the channel at a position, and whether zapping skips it.
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

class FlagsByPosition : public store_test {};

TEST_F(FlagsByPosition, BitsOfTheCurrentViewAreSetAndCleared) {
  const std::vector<channel_st *> services = fill_view(VIEW_ALL, 2, {.flag = 0x81});

  EXPECT_EQ(set_channel_flag_by_vindex(1, 0x0A, 1), 0);
  EXPECT_EQ(services[1]->flag, 0x8B);
  EXPECT_EQ(set_channel_flag_by_vindex(1, 0x01, 0), 0);
  EXPECT_EQ(services[1]->flag, 0x8A);
  EXPECT_EQ(set_channel_flag_by_vindex(1, 0x01, -5), 0);
  EXPECT_EQ(get_channel_flag_by_vindex(1), 0x8B);
  EXPECT_EQ(get_channel_flag_by_vindex(0), 0x81);
}

TEST_F(FlagsByPosition, BitsOfANamedViewAreSetAndCleared) {
  channel_st *service = file_service({.flag = 0x81});
  for (const view_case &each : every_view()) {
    service->flag = 0x81;
    append_entry(each.code, entry_of(*service, 1));

    EXPECT_EQ(vtype_set_channel_flag_by_vindex(0, 0x0A, 1, each.code), 0) << int{each.code};
    EXPECT_EQ(vtype_get_channel_flag_by_vindex(0, each.code), 0x8B) << int{each.code};
    EXPECT_EQ(vtype_set_channel_flag_by_vindex(0, 0x83, 0, each.code), 0) << int{each.code};
    EXPECT_EQ(service->flag, 0x08) << int{each.code};
    EXPECT_EQ(vtype_set_channel_flag_by_vindex(0, 0x01, -5, each.code), 0) << int{each.code};
    EXPECT_EQ(service->flag, 0x09) << int{each.code};
  }
}

TEST_F(FlagsByPosition, TheChannelIsResolvedFromTheIdentity) {
  const std::vector<channel_st *> services = fill_view(VIEW_ALL, 2);
  list.vch[0].rch = services[1];

  set_channel_flag_by_vindex(0, 0x02, 1);
  vtype_set_channel_flag_by_vindex(0, 0x08, 1, VIEW_ALL);

  EXPECT_EQ(services[0]->flag, 0x0A);
  EXPECT_EQ(services[1]->flag, 0);
  EXPECT_EQ(get_channel_flag_by_vindex(0), 0x0A);
  EXPECT_EQ(vtype_get_channel_flag_by_vindex(0, VIEW_ALL), 0x0A);
  EXPECT_EQ(check_skip_channel_index(0), 1);
}

TEST_F(FlagsByPosition, PositionsOutsideTheCurrentCountHoldNoChannel) {
  const std::vector<channel_st *> services = fill_view(VIEW_ALL, 2);
  list.vch[2] = list.vch[0];
  for (const int position : {-32768, -1, 2, 3, 5000, 32767}) {
    const auto vindex = static_cast<std::int16_t>(position);
    EXPECT_EQ(set_channel_flag_by_vindex(vindex, 0x08, 1), -1) << position;
    EXPECT_EQ(get_channel_flag_by_vindex(vindex), 255) << position;
    EXPECT_EQ(check_skip_channel_index(vindex), 0) << position;
  }
  EXPECT_EQ(services[0]->flag, 0);
}

TEST_F(FlagsByPosition, EmptySlotsOfANamedViewHoldNoChannel) {
  fill_view(VIEW_TV, 2);

  EXPECT_EQ(vtype_set_channel_flag_by_vindex(2, 0x08, 1, VIEW_TV), -1);
  EXPECT_EQ(vtype_get_channel_flag_by_vindex(2, VIEW_TV), 255);
}

TEST_F(FlagsByPosition, ASlotBehindTheCountOfANamedViewIsResolved) {
  const channel_st *service = fill_view(VIEW_TV, 1)[0];
  list.tv_vch[3999] = list.tv_vch[0];

  EXPECT_EQ(vtype_set_channel_flag_by_vindex(3999, 0x08, 1, VIEW_TV), 0);
  EXPECT_EQ(vtype_get_channel_flag_by_vindex(3999, VIEW_TV), 0x08);
  EXPECT_EQ(service->flag, 0x08);
}

TEST_F(FlagsByPosition, PositionsBehindTheArrayOfANamedViewAreRefused) {
  for (const view_case &each : every_view()) {
    for (const int position : {each.capacity, 32767}) {
      const auto vindex = static_cast<std::int16_t>(position);
      const lines refusal = {"ERROR: vtype_get_channel_by_vindex:# vindex " + std::to_string(position) +
                             " outside the view\n"};
      EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(vtype_set_channel_flag_by_vindex(vindex, 8, 1, each.code), -1); }),
                refusal);
      EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(vtype_get_channel_flag_by_vindex(vindex, each.code), 255); }), refusal);
    }
    EXPECT_EQ(vtype_set_channel_flag_by_vindex(-1, 8, 1, each.code), -1);
    EXPECT_EQ(vtype_get_channel_flag_by_vindex(-1, each.code), 255);
    EXPECT_EQ(vtype_get_channel_flag_by_vindex(-32768, each.code), 255);
  }
}

TEST_F(FlagsByPosition, AnUnknownViewHoldsNoChannel) {
  fill_view(VIEW_ALL, 1);
  for (const std::int8_t code : unknown_codes) {
    EXPECT_EQ(vtype_set_channel_flag_by_vindex(0, 8, 1, code), -1) << int{code};
    EXPECT_EQ(vtype_get_channel_flag_by_vindex(0, code), 255) << int{code};
  }
}

TEST_F(FlagsByPosition, EveryBitSetReadsLikeNoChannel) {
  fill_view(VIEW_ALL, 1, {.flag = 0xFF});

  EXPECT_EQ(get_channel_flag_by_vindex(0), 255);
  EXPECT_EQ(vtype_get_channel_flag_by_vindex(0, VIEW_ALL), 255);
}

TEST_F(FlagsByPosition, MissesAreNoErrors) {
  fill_view(VIEW_ALL, 1);

  EXPECT_EQ(writes_at(2,
                      [] {
                        set_channel_flag_by_vindex(1, 8, 1);
                        get_channel_flag_by_vindex(-1);
                        check_skip_channel_index(1);
                        vtype_get_channel_flag_by_vindex(-1, VIEW_ALL);
                      }),
            lines{});
}

TEST_F(FlagsByPosition, WithoutACurrentViewThereIsNoChannel) {
  fill_view(VIEW_ALL, 1, {.flag = 0x08});
  const auto expect_misses = [] {
    const lines error = {"ERROR: get_channel_by_vindex:#  channel_list NULL !! "};
    EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(set_channel_flag_by_vindex(0, 8, 0), -1); }), error);
    EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(get_channel_flag_by_vindex(0), 255); }), error);
    EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(check_skip_channel_index(0), 0); }), error);
  };

  without_current_view(expect_misses);
}

TEST_F(FlagsByPosition, OnlyTheSkipBitSkips) {
  channel_st *service = fill_view(VIEW_ALL, 1)[0];
  for (int flag = 0; flag <= 255; ++flag) {
    service->flag = static_cast<std::uint8_t>(flag);
    EXPECT_EQ(check_skip_channel_index(0), (flag & 0x08) != 0 ? 1 : 0) << flag;
  }
}

TEST_F(FlagsByPosition, FlagsSurviveSortingAndNewNumbers) {
  const std::vector<channel_st *> services = fill_view(VIEW_ALL, 3);
  set_channel_flag_by_vindex(0, 0x08, 1);
  list.vch[0].major_ch_num = 9;

  sort_vch_type(SORT_NUMBER, VIEW_ALL);

  EXPECT_EQ(check_skip_channel_index(0), 0);
  EXPECT_EQ(check_skip_channel_index(2), 1);
  EXPECT_EQ(services[0]->flag, 0x08);
}

}  // namespace
