// Building the TV and the radio view from the ALL view.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

class ViewBuilding : public store_test {
 protected:
  // A service of a type, filed, and its entry in the ALL view.
  virtual_channel_st &add(int id, std::uint8_t service_type, std::int8_t tag = 0) {
    service_data data;
    data.service_id = static_cast<std::uint16_t>(id);
    data.service_type = service_type;
    return append_entry(VIEW_ALL, entry_of(*file_service(data), static_cast<std::int16_t>(1000 - id), 7, tag));
  }

  // A new list whose ALL view holds n entries that all show one service.
  void fill_all(int n, std::uint8_t service_type) {
    reset_channel_list();
    service_data data;
    data.service_type = service_type;
    channel_st *service = file_service(data);
    for (int i = 0; i < n; ++i) {
      list.vch[i] = entry_of(*service, static_cast<std::int16_t>(i + 1));
    }
    list.vnumber = static_cast<std::int16_t>(n);
  }
};

TEST_F(ViewBuilding, TakesTheServicesOfItsTypeInTheOrderOfTheAllView) {
  add(9, 1);
  add(3, 2);
  add(7, 0);
  add(1, 1);
  add(4, 2);
  add(5, 3);
  add(6, 255);
  add(2, 1);

  EXPECT_EQ(create_vindex_type(VIEW_TV, -1), 0);
  EXPECT_EQ(create_vindex_type(VIEW_RADIO, -1), 0);

  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{9, 1, 2}));
  EXPECT_EQ(service_ids(VIEW_RADIO), (std::vector<int>{3, 4}));
}

TEST_F(ViewBuilding, CopiesEntriesWhole) {
  virtual_channel_st &entry = add(1, 2, 5);
  entry.favorite_id = 77;
  entry.reserved_7 = 0xAB;
  entry.reserved_13 = 0xCD;

  create_vindex_type(VIEW_RADIO, -1);

  EXPECT_EQ(std::memcmp(&list.radio_vch[0], &list.vch[0], sizeof(virtual_channel_st)), 0);
  EXPECT_EQ(list.radio_vch[0].major_ch_num, 999);
  EXPECT_EQ(list.radio_vch[0].minor_ch_num, 7);
  EXPECT_NE(list.radio_vch[0].rch, nullptr);
}

TEST_F(ViewBuilding, AFilterTakesTheEntriesWithItsTag) {
  add(1, 2, 3);
  add(2, 2, 4);
  add(3, 1, 3);
  add(4, 2, 3);
  add(5, 2, -1);

  EXPECT_EQ(create_vindex_type(VIEW_RADIO, 3), 0);

  EXPECT_EQ(service_ids(VIEW_RADIO), (std::vector<int>{1, 4}));
}

TEST_F(ViewBuilding, TheFilterMinusOneTakesEveryTag) {
  add(1, 1, -128);
  add(2, 1, -1);
  add(3, 1, 0);
  add(4, 1, 127);

  EXPECT_EQ(create_vindex_type(VIEW_TV, -1), 0);

  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1, 2, 3, 4}));
}

TEST_F(ViewBuilding, EveryOtherFilterIsExact) {
  add(1, 1, -128);
  add(2, 1, -2);
  add(3, 1, 0);
  add(4, 1, 127);

  for (const auto &[filter, id] : std::vector<std::pair<int, int>>{{-128, 1}, {-2, 2}, {0, 3}, {127, 4}}) {
    EXPECT_EQ(create_vindex_type(VIEW_TV, static_cast<std::int8_t>(filter)), 0);
    EXPECT_EQ(service_ids(VIEW_TV), std::vector<int>{id}) << filter;
  }
}

TEST_F(ViewBuilding, ReplacesWhatTheViewHeld) {
  add(1, 1);
  fill_unfiled(VIEW_TV, 50);

  create_vindex_type(VIEW_TV, -1);

  EXPECT_EQ(service_ids(VIEW_TV), std::vector<int>{1});
  EXPECT_TRUE(slots_behind_count_are_zero(VIEW_TV, 4000));
}

TEST_F(ViewBuilding, LooksAtTheEntrysOwnChannel) {
  virtual_channel_st &entry = add(1, 2);
  channel_st *shown = make_service({});
  shown->service_type = 1;
  entry.rch = shown;

  EXPECT_EQ(create_vindex_type(VIEW_TV, -1), 0);
  EXPECT_EQ(create_vindex_type(VIEW_RADIO, -1), -1);

  EXPECT_EQ(service_ids(VIEW_TV), std::vector<int>{1});
  init_vindex(VIEW_ALL);
  init_vindex(VIEW_TV);
  std::free(shown);
}

TEST_F(ViewBuilding, PassesOverEntriesWithoutChannel) {
  add(1, 1).rch = nullptr;
  add(2, 1);

  EXPECT_EQ(create_vindex_type(VIEW_TV, -1), 0);

  EXPECT_EQ(service_ids(VIEW_TV), std::vector<int>{2});
}

TEST_F(ViewBuilding, AnEmptyAllViewFailsSilentlyAndLeavesTheView) {
  fill_unfiled(VIEW_TV, 2);

  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(create_vindex_type(VIEW_TV, -1), -1); }), lines{});

  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1, 2}));
}

TEST_F(ViewBuilding, AnEmptyAllViewIsNoticedBeforeTheType) {
  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(create_vindex_type(9, -1), -1); }), lines{});
}

TEST_F(ViewBuilding, RefusesEveryOtherType) {
  add(1, 1);
  add(2, 2);
  const auto before = std::make_unique<channel_list_st>(list);

  for (const int type : {-128, -1, 0, 3, 4, 5, 6, 10, 29, 30, 127}) {
    const auto code = static_cast<std::int8_t>(type);
    EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(create_vindex_type(code, -1), -1); }),
              lines{"ERROR: create_vindex_type:# Can't find service_type " + std::to_string(type) + " \n"});
    EXPECT_EQ(writes_at(-1, [&] { return create_vindex_type(code, -1); }), lines{});
  }
  EXPECT_EQ(std::memcmp(&list, before.get(), sizeof list), 0);
}

TEST_F(ViewBuilding, ReportsThatNothingWasTaken) {
  add(1, 1);
  fill_unfiled(VIEW_RADIO, 3);

  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(create_vindex_type(VIEW_RADIO, -1), -1); }),
            lines{"ERROR: create_vindex_type:# Can not find 'service_type 2 \n"});
  EXPECT_EQ(writes_at(-1, [] { return create_vindex_type(VIEW_RADIO, -1); }), lines{});

  EXPECT_EQ(list.radio_vnumber, 0);
  EXPECT_TRUE(slots_behind_count_are_zero(VIEW_RADIO, 1000));
}

TEST_F(ViewBuilding, AFilterThatNoEntryPassesTakesNothing) {
  add(1, 1, 2);

  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(create_vindex_type(VIEW_TV, 3), -1); }),
            lines{"ERROR: create_vindex_type:# Can not find 'service_type 1 \n"});
}

TEST_F(ViewBuilding, TracesTheNumberOfEntriesAtLevelTwo) {
  add(1, 1);
  add(2, 1);
  add(3, 2);

  EXPECT_EQ(writes_at(2, [] { return create_vindex_type(VIEW_TV, -1); }),
            lines{"ChannelAPI create_vindex_type:#  create des_vnumber 2 \n"});
  EXPECT_EQ(writes_at(1, [] { return create_vindex_type(VIEW_TV, -1); }), lines{});
}

TEST_F(ViewBuilding, LeavesTheCurrentViewAndTheSettings) {
  add(1, 1);
  list.service_type = 2;
  list.use_group_list = 3;

  create_vindex_type(VIEW_TV, -1);

  EXPECT_EQ(list.cur_vch, list.vch);
  EXPECT_EQ(list.vch_type, 0);
  EXPECT_EQ(list.service_type, 2);
  EXPECT_EQ(list.use_group_list, 3);
}

struct build_limit {
  std::int8_t type;
  int channels;
  int result;
  int taken;
};

TEST_F(ViewBuilding, TakesAsManyServicesAsTheViewHolds) {
  for (const build_limit &each : std::vector<build_limit>{{VIEW_TV, 1, 0, 1},
                                                          {VIEW_TV, 3999, 0, 3999},
                                                          {VIEW_TV, 4000, 0, 4000},
                                                          {VIEW_TV, 4001, -1, 4000},
                                                          {VIEW_TV, 5000, -1, 4000},
                                                          {VIEW_RADIO, 1, 0, 1},
                                                          {VIEW_RADIO, 999, 0, 999},
                                                          {VIEW_RADIO, 1000, 0, 1000},
                                                          {VIEW_RADIO, 1001, -1, 1000},
                                                          {VIEW_RADIO, 5000, -1, 1000}}) {
    fill_all(each.channels, static_cast<std::uint8_t>(each.type));

    EXPECT_EQ(writes_at(-1, [&] { EXPECT_EQ(create_vindex_type(each.type, -1), each.result); }), lines{});

    const std::vector<int> numbers = majors(each.type);
    ASSERT_EQ(numbers.size(), static_cast<std::size_t>(each.taken)) << each.channels;
    EXPECT_EQ(numbers.front(), 1);
    EXPECT_EQ(numbers.back(), each.taken);
  }
}

TEST_F(ViewBuilding, OneServiceTooManyIsRefusedAndNothingBehindTheArrayIsWritten) {
  fill_all(4001, SERVICE_TYPE_TV);
  fill_unfiled(VIEW_RADIO, 1000);

  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(create_vindex_type(VIEW_TV, -1), -1); }),
            lines{"ERROR: create_vindex_type:# view is full, 4000 entries\n"});

  EXPECT_EQ(list.tv_vnumber, 4000);
  EXPECT_EQ(list.reserved_296118[0], 0);
  EXPECT_EQ(list.radio_vnumber, 1000);
  EXPECT_EQ(list.radio_vch[0].service_id, 1);
}

TEST_F(ViewBuilding, SplitsAFullList) {
  fill_all(5000, SERVICE_TYPE_TV);
  service_data data;
  data.service_id = 2;
  data.service_type = SERVICE_TYPE_RADIO;
  channel_st *radio = file_service(data);
  for (int i = 4; i < 5000; i += 5) {
    list.vch[i].rch = radio;
  }

  EXPECT_EQ(create_vindex_type(VIEW_TV, -1), 0);
  EXPECT_EQ(create_vindex_type(VIEW_RADIO, -1), 0);

  EXPECT_EQ(list.tv_vnumber, 4000);
  EXPECT_EQ(list.radio_vnumber, 1000);
  EXPECT_EQ(list.radio_vch[999].major_ch_num, 5000);
}

TEST_F(ViewBuilding, ACountOutsideTheAllViewIsReadAsTheNearestInside) {
  fill_all(5000, SERVICE_TYPE_TV);
  for (int i = 10; i < 5000; ++i) {
    list.vch[i].rch = nullptr;
  }
  list.vch[4999].rch = list.vch[0].rch;

  list.vnumber = 32767;
  EXPECT_EQ(create_vindex_type(VIEW_TV, -1), 0);
  EXPECT_EQ(list.tv_vnumber, 11);

  list.vnumber = -1;
  EXPECT_EQ(create_vindex_type(VIEW_TV, -1), -1);
  EXPECT_EQ(list.tv_vnumber, 11);
}

TEST_F(ViewBuilding, FailsOnADestroyedList) {
  destroy_channel_list();

  EXPECT_EQ(create_vindex_type(VIEW_TV, -1), -1);
}

}  // namespace
