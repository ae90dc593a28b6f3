// Making the list of a group's services current: the selection that is recorded and the switch to the USER view.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "support/grouped_services.h"
#include "support/log_capture.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;
using ids = std::vector<int>;

int select(int kind, int id, std::int8_t source = VIEW_TV, std::uint8_t current = make_current) {
  return create_service_by_group_list_id(static_cast<std::int8_t>(kind), static_cast<std::int16_t>(id), source,
                                         current);
}

lines writes_of_selecting(int level, int kind, int id, std::int8_t source = VIEW_TV) {
  return writes_at(level, [=] { return select(kind, id, source); });
}

const std::string user_view_refused = "WARNING: change_vindex_type:# channel_list.user_vnumber 0 \n";

class ServiceListsSelection : public store_test {};

TEST_F(ServiceListsSelection, TheListGoesToTheUserViewAndBecomesCurrent) {
  show({.service_id = 1, .genre = 1}, {VIEW_TV});
  show({.service_id = 2, .genre = 2}, {VIEW_TV});
  change_vindex_type(VIEW_TV);

  EXPECT_EQ(select(GROUP_GENRE, 2), 0);

  EXPECT_EQ(service_ids(VIEW_USER), (ids{2}));
  EXPECT_EQ(get_vindex_type(), VIEW_USER);
  EXPECT_EQ(list.cur_vch, list.user_vch);
  EXPECT_EQ(list.cur_vnumber, &list.user_vnumber);
  EXPECT_EQ(*get_virtual_channel_vnumber(VIEW_WORK), 0);
}

TEST_F(ServiceListsSelection, TheWorkViewIsLeftAlone) {
  fill_unfiled(VIEW_WORK, 2);
  show({.service_id = 1, .genre = 1}, {VIEW_TV});

  select(GROUP_GENRE, 1);

  EXPECT_EQ(service_ids(VIEW_WORK), (ids{1, 2}));
}

TEST_F(ServiceListsSelection, EveryOtherValueThan0MakesTheListCurrent) {
  for (const std::uint8_t value : std::to_array<std::uint8_t>({1, 2, 128, 255})) {
    reset_channel_list();
    show({.service_id = 1, .genre = 1}, {VIEW_TV});

    select(GROUP_GENRE, 1, VIEW_TV, value);

    EXPECT_EQ(get_vindex_type(), VIEW_USER) << int{value};
  }
}

TEST_F(ServiceListsSelection, KindGroupAndSourceAreRecorded) {
  const std::vector<std::int8_t> sources = {VIEW_ALL, VIEW_TV, VIEW_RADIO, VIEW_WORK, VIEW_PROMOTION, 10, 29};
  for (const std::int8_t source : sources) {
    for (const int kind : ids{GROUP_ALL, GROUP_GENRE, GROUP_PROVIDER, GROUP_COUNTRY, GROUP_FTACAS, GROUP_FAV, 7, -1}) {
      reset_channel_list();
      init_vindex(VIEW_WORK);
      show({.service_id = 1, .genre = 1, .provider = 1, .country = 1, .flag = 0x04}, {source});

      EXPECT_EQ(select(kind, 1, source), 0);

      EXPECT_EQ(get_use_group_list(), kind);
      EXPECT_EQ(get_current_sub_group_id(), 1);
      EXPECT_EQ(get_current_service_type(), source);
      EXPECT_EQ(get_channel_list_net_index(), -1) << "only satellites are kept there";
    }
  }
}

TEST_F(ServiceListsSelection, ASatelliteIsRecordedAsTheNetworkIndex) {
  show({.service_id = 1, .net_index = 9}, {VIEW_RADIO});
  list.sub_group_id = 55;

  EXPECT_EQ(select(GROUP_SATELLITE, 9, VIEW_RADIO), 0);

  EXPECT_EQ(get_use_group_list(), GROUP_SATELLITE);
  EXPECT_EQ(get_channel_list_net_index(), 9);
  EXPECT_EQ(get_current_sub_group_id(), 55);
  EXPECT_EQ(get_current_service_type(), VIEW_RADIO);
}

TEST_F(ServiceListsSelection, IdsAreRecordedInTheWidthOfTheirField) {
  show({.service_id = 1, .genre = -2, .net_index = 200}, {VIEW_TV});

  select(GROUP_GENRE, -2);
  EXPECT_EQ(get_current_sub_group_id(), -2);
  select(GROUP_PROVIDER, 32767);
  EXPECT_EQ(get_current_sub_group_id(), 32767);

  select(GROUP_SATELLITE, 200);
  EXPECT_EQ(get_channel_list_net_index(), static_cast<std::int8_t>(200));
  select(GROUP_SATELLITE, 300);
  EXPECT_EQ(get_channel_list_net_index(), 44);
}

TEST_F(ServiceListsSelection, TheSwitchIsTracedAfterTheSelectionIsRecorded) {
  show({.service_id = 1, .genre = 1}, {VIEW_RADIO});
  const std::string banner = "+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=\n";

  EXPECT_EQ(writes_of_selecting(2, GROUP_GENRE, 1, VIEW_RADIO),
            (lines{banner, "ChannelAPI change_vindex_type:# \t USE LIST CHANGE CHANNEL LIST : 2  type('USER CH') \n",
                   banner}));
  EXPECT_EQ(writes_of_selecting(1, GROUP_GENRE, 1, VIEW_RADIO), lines{});
}

TEST_F(ServiceListsSelection, AnEmptyListIsRecordedAndTheUserViewRefused) {
  show({.service_id = 1, .genre = 1}, {VIEW_TV});
  fill_unfiled(VIEW_USER, 4);
  change_vindex_type(VIEW_TV);

  EXPECT_EQ(select(GROUP_GENRE, 0x63), 0);

  EXPECT_EQ(list.user_vnumber, 0);
  EXPECT_TRUE(slots_behind_count_are_zero(VIEW_USER, MAX_CHANNEL));
  EXPECT_EQ(get_vindex_type(), VIEW_TV);
  EXPECT_EQ(list.cur_vch, list.tv_vch);
  EXPECT_EQ(get_use_group_list(), GROUP_GENRE);
  EXPECT_EQ(get_current_sub_group_id(), 0x63);
  EXPECT_EQ(get_current_service_type(), VIEW_TV);
}

TEST_F(ServiceListsSelection, AnEmptyListIsReportedBeforeTheSwitchIsRefused) {
  show({.service_id = 1, .genre = 1}, {VIEW_TV});

  EXPECT_EQ(writes_of_selecting(1, GROUP_GENRE, 0x63), (lines{nothing_found("0063", VIEW_TV), user_view_refused}));
  EXPECT_EQ(writes_of_selecting(0, GROUP_GENRE, 0x63), lines{nothing_found("0063", VIEW_TV)});
}

TEST_F(ServiceListsSelection, TheUserViewBuiltFromItselfIsEmpty) {
  show({.service_id = 1, .genre = 1}, {VIEW_USER});
  change_vindex_type(VIEW_USER);

  EXPECT_EQ(
      writes_of_selecting(1, GROUP_GENRE, 1, VIEW_USER),
      (lines{"ERROR: create_service_by_group_list_id:# Can not find 'id 0001' 'service_type 3 \n", user_view_refused}));

  EXPECT_EQ(list.user_vnumber, 0);
  EXPECT_EQ(get_vindex_type(), VIEW_USER);
  EXPECT_EQ(get_use_group_list(), GROUP_GENRE);
  EXPECT_EQ(get_current_service_type(), VIEW_USER);
}

TEST_F(ServiceListsSelection, TheUserViewIsASourceForTheWorkView) {
  show({.service_id = 1, .genre = 1}, {VIEW_USER});
  show({.service_id = 2, .genre = 2}, {VIEW_USER});

  EXPECT_EQ(select(GROUP_GENRE, 2, VIEW_USER, 0), 0);

  EXPECT_EQ(service_ids(VIEW_WORK), (ids{2}));
  EXPECT_EQ(service_ids(VIEW_USER), (ids{1, 2}));
}

}  // namespace
