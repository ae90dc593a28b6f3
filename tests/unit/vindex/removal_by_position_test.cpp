// Removing one entry of a view by its position: the entries behind it move down and the last slot is zeroed.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "support/removal_test.h"

namespace {

using namespace test_support;

class RemovalByPosition : public removal_test {};

int remove_at(int vindex, std::int8_t view) { return vtype_remove_by_vindex(static_cast<std::int16_t>(vindex), view); }

std::string too_big(int vindex, int total) {
  return "ERROR: vtype_remove_by_vindex:# vindex is so big " + std::to_string(vindex) + " total " +
         std::to_string(total) + "\n";
}

TEST_F(RemovalByPosition, ClosesTheGap) {
  for (const auto &[vindex, expected] :
       std::vector<std::pair<int, std::vector<int>>>{{0, {2, 3}}, {1, {1, 3}}, {2, {1, 2}}}) {
    fill_unfiled(VIEW_TV, 3);

    EXPECT_EQ(remove_at(vindex, VIEW_TV), 0);

    EXPECT_EQ(service_ids(VIEW_TV), expected);
    EXPECT_TRUE(slots_behind_count_are_zero(VIEW_TV, 4000));
  }
}

TEST_F(RemovalByPosition, MovesWholeEntriesAndKeepsTheirNumbers) {
  fill_unfiled(VIEW_TV, 2);
  list.tv_vch[1].rch = file(2);
  const virtual_channel_st before = mark_whole(list.tv_vch[1]);

  remove_at(0, VIEW_TV);

  EXPECT_EQ(std::memcmp(&list.tv_vch[0], &before, sizeof before), 0);
  EXPECT_EQ(majors(VIEW_TV), (std::vector<int>{2}));
}

TEST_F(RemovalByPosition, TheOnlyEntryLeavesAnEmptyViewWithAZeroSlot) {
  fill_unfiled(VIEW_TV, 1);
  const virtual_channel_st zero = {};

  EXPECT_EQ(remove_at(0, VIEW_TV), 0);

  EXPECT_EQ(count_of(VIEW_TV), 0);
  EXPECT_EQ(std::memcmp(&list.tv_vch[0], &zero, sizeof zero), 0);
}

TEST_F(RemovalByPosition, ThePositionBehindTheOnlyEntryIsTooBig) {
  fill_unfiled(VIEW_TV, 1);

  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(remove_at(1, VIEW_TV), -1); }), lines{too_big(1, 1)});

  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1}));
}

TEST_F(RemovalByPosition, WorksOnEveryViewUpToItsLastSlot) {
  for (const view_case &each : every_view()) {
    for (const int vindex : {0, 1, each.capacity - 1}) {
      fill_unfiled(each.code, each.capacity);

      EXPECT_EQ(remove_at(vindex, each.code), 0) << int{each.code};

      EXPECT_EQ(count_of(each.code), each.capacity - 1) << int{each.code};
      std::vector<int> expected;
      for (int id = 1; id <= each.capacity; ++id) {
        if (id != vindex + 1) {
          expected.push_back(id);
        }
      }
      EXPECT_EQ(service_ids(each.code), expected) << int{each.code} << " position " << vindex;
      EXPECT_TRUE(slots_behind_count_are_zero(each.code, each.capacity)) << int{each.code};
    }
  }
}

TEST_F(RemovalByPosition, RefusesPositionsAtAndBehindTheCount) {
  for (const view_case &each : every_view()) {
    fill_unfiled(each.code, each.capacity);
    for (const int vindex : {each.capacity, each.capacity + 1, 32767}) {
      EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(remove_at(vindex, each.code), -1); }),
                lines{too_big(vindex, each.capacity)});
      EXPECT_EQ(writes_at(-1, [&] { return remove_at(vindex, each.code); }), lines{});
    }
    EXPECT_EQ(count_of(each.code), each.capacity) << int{each.code};
    EXPECT_EQ(get_virtual_channel_st(each.code)[each.capacity - 1].service_id, each.capacity) << int{each.code};
  }
}

TEST_F(RemovalByPosition, RefusesAnEmptyView) {
  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(remove_at(0, VIEW_RADIO), -1); }), lines{too_big(0, 0)});
}

TEST_F(RemovalByPosition, RefusesAPositionBelowZero) {
  fill_unfiled(VIEW_TV, 3);
  for (const int vindex : {-1, -32768}) {
    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(remove_at(vindex, VIEW_TV), -1); }),
              lines{"ERROR: vtype_remove_by_vindex:# vindex is small than zero\n"});
    EXPECT_EQ(writes_at(-1, [&] { return remove_at(vindex, VIEW_TV); }), lines{});
  }
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1, 2, 3}));
}

TEST_F(RemovalByPosition, APositionBelowZeroIsNoticedBeforeAnUnknownView) {
  EXPECT_EQ(writes_at(5, [] { return remove_at(-1, 30); }),
            lines{"ERROR: vtype_remove_by_vindex:# vindex is small than zero\n"});
}

TEST_F(RemovalByPosition, AnUnknownViewFailsWithTheWarningsOfItsLookup) {
  for (const std::int8_t code : unknown_codes) {
    const std::string warning = ":# unknown vch_type=" + std::to_string(code) + "\n";
    EXPECT_EQ(writes_at(5, [&] { EXPECT_EQ(remove_at(0, code), -1); }),
              (lines{"WARNING: get_virtual_channel_st" + warning, "WARNING: get_virtual_channel_vnumber" + warning}));
    EXPECT_EQ(writes_at(0, [&] { return remove_at(0, code); }), lines{});
  }
}

TEST_F(RemovalByPosition, TracesThePositionAndTheEntriesThatMove) {
  const std::vector<std::pair<int, const char *>> traces = {{1, "vindex 1, vindex+1 2, cnt 2\n"},
                                                            {0, "vindex 0, vindex+1 1, cnt 2\n"},
                                                            {1, "vindex 1, vindex+1 2, cnt 0\n"},
                                                            {0, "vindex 0, vindex+1 1, cnt 0\n"}};
  fill_unfiled(VIEW_USER, 4);
  for (const auto &[vindex, trace] : traces) {
    EXPECT_EQ(writes_at(2, [&, vindex = vindex] { return remove_at(vindex, VIEW_USER); }),
              lines{std::string("ChannelAPI vtype_remove_by_vindex:# ") + trace});
  }
}

TEST_F(RemovalByPosition, TracesNothingBelowLevelTwo) {
  fill_unfiled(VIEW_USER, 1);

  EXPECT_EQ(writes_at(1, [] { return remove_at(0, VIEW_USER); }), lines{});
}

TEST_F(RemovalByPosition, TheRealChannelAndTheOtherViewsStay) {
  const channel_st *service = fill_view(VIEW_ALL, 1)[0];
  list.tv_vch[0] = list.vch[0];
  list.tv_vnumber = 1;

  remove_at(0, VIEW_TV);

  EXPECT_EQ(get_channel_st(1, 1, 100, 11'000'000, 1, 0), service);
  EXPECT_EQ(list.vch[0].rch, service);
  EXPECT_EQ(count_of(VIEW_ALL), 1);
}

TEST_F(RemovalByPosition, TheCurrentViewStaysCurrentWhenItsLastEntryGoes) {
  fill_unfiled(VIEW_TV, 1);
  change_vindex_type(VIEW_TV);

  remove_at(0, VIEW_TV);

  EXPECT_EQ(get_vindex_type(), VIEW_TV);
  EXPECT_EQ(list.cur_vch, list.tv_vch);
  EXPECT_EQ(list.cur_vnumber, &list.tv_vnumber);
  EXPECT_EQ(get_channel_list_number(), 0);
}

TEST_F(RemovalByPosition, ACountOutsideTheArrayIsReadAsTheNearestInsideAndPrintedAsItIsStored) {
  fill_unfiled(10, 40);
  fill_unfiled(11, 1);
  list.favorite_vnumber[0] = 32767;

  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(remove_at(40, 10), -1); }), lines{too_big(40, 32767)});
  EXPECT_EQ(remove_at(39, 10), 0);

  EXPECT_EQ(count_of(10), 39);
  EXPECT_EQ(service_ids(11), (std::vector<int>{1}));
  list.favorite_vnumber[1] = -1;
  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(remove_at(0, 11), -1); }), lines{too_big(0, -1)});
  EXPECT_EQ(list.favorite_vch[1][0].service_id, 1);
  list.favorite_vnumber[1] = 1;
}

}  // namespace
