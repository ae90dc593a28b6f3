// Lists of services as the source of a favourite group.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include "support/grouped_services.h"
#include "support/groups.h"
#include "support/log_capture.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;
using ids = std::vector<int>;

int add_group(int fav_id, int kind, int kind_id, std::int8_t source = VIEW_TV) {
  return add_fav_ch_group(static_cast<std::int16_t>(fav_id), source, static_cast<std::int8_t>(kind),
                          static_cast<std::int16_t>(kind_id));
}

class ListsAsFavourites : public store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    add_fav_group_info(named_group("Ant"));
    add_fav_group_info(named_group("Bee"));
  }
  // TV services with these ids, all of the provider 7.
  static void show_services(int first, int last) {
    for (int id = first; id <= last; ++id) {
      show({.service_id = id, .provider = 7}, {VIEW_TV});
    }
  }
  static ids numbers(int first, int last) {
    ids found(static_cast<std::size_t>(last - first + 1));
    std::iota(found.begin(), found.end(), first);
    return found;
  }
};

TEST_F(ListsAsFavourites, TheServicesOfTheGroupAreAddedInTheirOrder) {
  show_services(5, 6);
  show({.service_id = 1, .provider = 8}, {VIEW_TV});
  show_services(3, 3);

  EXPECT_EQ(add_group(1, GROUP_PROVIDER, 7), 1);

  EXPECT_EQ(service_ids(second_favourites), (ids{5, 6, 3}));
  EXPECT_EQ(majors(second_favourites), (ids{50, 60, 30}));
  EXPECT_EQ(favourite_ids(second_favourites), (ids{0, 1, 2}));
  EXPECT_EQ(list.favorite_vnumber[0], 0);
  EXPECT_EQ(service_ids(VIEW_WORK), (ids{5, 6, 3}));
}

TEST_F(ListsAsFavourites, EachAdditionIsTraced) {
  show_services(5, 6);

  EXPECT_EQ(writes_at(2, [] { return add_group(1, GROUP_PROVIDER, 7); }),
            (lines{"ChannelAPI add_fav_virtual_channel:# ADD FAV 1 , vnumber 0 , major 50, favorite id : 0\n",
                   "ChannelAPI add_fav_virtual_channel:# ADD FAV 1 , vnumber 1 , major 60, favorite id : 1\n"}));
  remove_fav_virtual_channel(1, 0);
  EXPECT_EQ(writes_at(1, [] { return add_group(1, GROUP_PROVIDER, 7); }), lines{});
}

TEST_F(ListsAsFavourites, TheSelectionAndTheViewsStay) {
  show_services(5, 6);
  fill_unfiled(VIEW_USER, 3);
  change_vindex_type(VIEW_TV);

  add_group(0, GROUP_PROVIDER, 7);

  EXPECT_EQ(service_ids(VIEW_USER), (ids{1, 2, 3}));
  EXPECT_EQ(get_vindex_type(), VIEW_TV);
  EXPECT_EQ(get_use_group_list(), 0);
  EXPECT_EQ(get_current_sub_group_id(), -1);
}

TEST_F(ListsAsFavourites, AGroupWithoutServicesIsToldApart) {
  show_services(5, 6);
  fill_unfiled(VIEW_WORK, 3);

  EXPECT_EQ(add_group(0, GROUP_PROVIDER, 8), -2);

  EXPECT_EQ(list.favorite_vnumber[0], 0);
  EXPECT_EQ(writes_at(2, [] { return add_group(0, GROUP_PROVIDER, 8); }),
            lines{"ERROR: create_service_by_group_list_id:# Can not find 'id 0008' 'service_type 1 \n"});
}

TEST_F(ListsAsFavourites, AnEmptySourceAndAnEmptyWorkViewGiveNothing) {
  EXPECT_EQ(add_group(0, GROUP_PROVIDER, 7), -2);
  EXPECT_EQ(add_group(0, GROUP_PROVIDER, 7, 30), -2);
  EXPECT_EQ(add_group(19, GROUP_PROVIDER, 7), -2);

  EXPECT_EQ(list.favorite_vnumber[0], 0);
}

// Compatibility: a list that cannot be built leaves the work view as it was, and that is added; hosts add the list they
// show.
TEST_F(ListsAsFavourites, AnEmptySourceAddsWhatAnEarlierCallLeftInTheWorkView) {
  show_services(5, 6);
  create_service_by_group_list_id(GROUP_PROVIDER, 7, VIEW_TV, 0);

  EXPECT_EQ(add_group(0, GROUP_PROVIDER, 8, VIEW_RADIO), 0);
  EXPECT_EQ(add_group(1, GROUP_PROVIDER, 8, 6), 0);

  EXPECT_EQ(service_ids(first_favourites), (ids{5, 6}));
  EXPECT_EQ(service_ids(second_favourites), (ids{5, 6}));
}

TEST_F(ListsAsFavourites, AMissingFavouriteGroupIsReportedOnceAndTheListCounts) {
  show_services(5, 7);

  EXPECT_EQ(add_group(19, GROUP_PROVIDER, 7), 1);
  EXPECT_EQ(add_group(-1, GROUP_PROVIDER, 7), 1);
  EXPECT_EQ(add_group(19, GROUP_PROVIDER, 7, VIEW_RADIO), 0);

  EXPECT_EQ(writes_at(2, [] { return add_group(19, GROUP_PROVIDER, 7); }),
            lines{"ERROR: add_fav_virtual_channel:# fav_id 19 \n"});
}

TEST_F(ListsAsFavourites, AGroupIsFilledToItsLastPlace) {
  for (const int services : {39, 40, 41, 45}) {
    init_vindex(VIEW_TV);
    init_vindex(first_favourites);
    reset_channel_list();
    add_fav_group_info(named_group("Ant"));
    show_services(1, services);
    const lines full = {"ERROR: add_fav_virtual_channel:#  overflow MAX_FAV_NUM 40 \n"};

    EXPECT_EQ(writes_at(0, [] { return add_group(0, GROUP_PROVIDER, 7); }), services > 40 ? full : lines{}) << services;

    EXPECT_EQ(service_ids(first_favourites), numbers(1, std::min(services, 40))) << services;
    EXPECT_EQ(add_group(0, GROUP_PROVIDER, 7), 1) << "a full group is not told";
  }
}

TEST_F(ListsAsFavourites, WhatWasAddedBeforeTheGroupBecameFullStays) {
  show_services(1, 38);
  add_group(0, GROUP_PROVIDER, 7);
  init_vindex(VIEW_TV);
  show_services(51, 53);

  EXPECT_EQ(add_group(0, GROUP_PROVIDER, 7), 1);

  ids expected = numbers(1, 38);
  expected.insert(expected.end(), {51, 52});
  EXPECT_EQ(service_ids(first_favourites), expected);
  EXPECT_EQ(service_ids(second_favourites), ids{});
}

TEST_F(ListsAsFavourites, ServicesThatTheGroupHoldsAreNotAddedTwice) {
  show_services(1, 3);
  add_fav_virtual_channel(0, &list.tv_vch[1]);

  EXPECT_EQ(add_group(0, GROUP_PROVIDER, 7), 1);
  EXPECT_EQ(add_group(0, GROUP_PROVIDER, 7), 1);

  EXPECT_EQ(service_ids(first_favourites), (ids{2, 1, 3}));
  EXPECT_EQ(favourite_ids(first_favourites), (ids{0, 1, 2}));
}

TEST_F(ListsAsFavourites, AFavouriteGroupIsAddedToAnother) {
  show_services(1, 3);
  add_group(0, GROUP_PROVIDER, 7);

  EXPECT_EQ(add_group(1, GROUP_FAV, 0), 1);
  EXPECT_EQ(add_group(0, GROUP_FAV, 0), 1);

  EXPECT_EQ(service_ids(second_favourites), (ids{1, 2, 3}));
  EXPECT_EQ(service_ids(first_favourites), (ids{1, 2, 3}));
}

TEST_F(ListsAsFavourites, TheWorkViewIsNoSourceForItself) {
  show({.service_id = 1, .provider = 7}, {VIEW_WORK});

  EXPECT_EQ(add_group(0, GROUP_PROVIDER, 7, VIEW_WORK), -2);

  EXPECT_EQ(list.favorite_vnumber[0], 0);
}

}  // namespace
