// Removing the services of a group from the whole channel list.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/grouped_services.h"
#include "support/hierarchy_walk.h"
#include "support/log_capture.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;
using ids = std::vector<int>;

int remove_group(int kind, int id, std::int8_t view_type = VIEW_TV) {
  return remove_service_by_group_list_id(static_cast<std::int8_t>(kind), static_cast<std::int16_t>(id), view_type);
}

lines writes_of_removing(int level, int kind, int id, std::int8_t view_type = VIEW_TV) {
  return writes_at(level, [=] { return remove_group(kind, id, view_type); });
}

std::string trace_of(const std::string &view_name, int id) {
  return "ChannelAPI remove_service_by_group_list_id:#  type :  " + view_name + " provider_id  " + std::to_string(id) +
         " \n";
}

const std::string sweep = "ChannelAPI remove_invalid_virtual_channel:# \n";

// The ids of all real channels, in the order of the hierarchy.
ids filed() {
  ids found;
  for (const network_ch_st *network : networks()) {
    for (const tp_ch_st *transponder : transponders(*network)) {
      for (const channel_st *service : services(*transponder)) {
        found.push_back(service->service_id);
      }
    }
  }
  return found;
}

class ServiceListsRemoving : public store_test {
 protected:
  // Services 1 to 4 in the ALL and TV views; the second and the fourth have the ids 7 and the flag of the others not.
  static void show_services() {
    for (int id = 1; id <= 4; ++id) {
      const int group = id % 2 == 0 ? 7 : 3;
      show({.service_id = id, .genre = group, .provider = group, .country = group, .flag = group == 7 ? 0x44 : 0},
           {VIEW_ALL, VIEW_TV});
    }
  }
};

TEST_F(ServiceListsRemoving, TheServicesLeaveTheWholeChannelList) {
  show_services();

  EXPECT_EQ(remove_group(GROUP_PROVIDER, 7), 0);

  EXPECT_EQ(filed(), (ids{1, 3}));
  EXPECT_TRUE(counts_match_lists());
  EXPECT_EQ(service_ids(VIEW_TV), (ids{1, 3}));
  EXPECT_EQ(service_ids(VIEW_ALL), (ids{1, 3}));
}

// A broadcaster that changes its transport stream id leaves services on a transponder of another one.
TEST_F(ServiceListsRemoving, ServicesOfAnotherTransportStreamAreCountedDownAsWell) {
  show_services();
  list.tv_vch[1].rch->ts_id = 200;
  list.tv_vch[3].rch->ts_id = 300;

  EXPECT_EQ(remove_group(GROUP_PROVIDER, 7), 0);

  EXPECT_EQ(filed(), (ids{1, 3}));
  EXPECT_TRUE(counts_match_lists());
}

TEST_F(ServiceListsRemoving, EveryKindTellsItsGroups) {
  struct kind_case {
    int kind;
    int id;
    ids left;
  };
  for (const kind_case &tested : std::vector<kind_case>{{GROUP_GENRE, 7, {1, 3}},
                                                        {GROUP_GENRE, 3, {2, 4}},
                                                        {GROUP_PROVIDER, 3, {2, 4}},
                                                        {GROUP_COUNTRY, 7, {1, 3}},
                                                        {GROUP_COUNTRY, 300, {1, 2, 3, 4}},
                                                        {GROUP_FTACAS, 0, {2, 4}},
                                                        {GROUP_FTACAS, 1, {1, 3}},
                                                        {GROUP_FTACAS, 2, {1, 3}},
                                                        {GROUP_FTACAS, 3, {1, 2, 3, 4}},
                                                        {GROUP_FTACAS, -1, {1, 2, 3, 4}},
                                                        {GROUP_SATELLITE, 1, {}},
                                                        {GROUP_SATELLITE, 257, {1, 2, 3, 4}},
                                                        {GROUP_SATELLITE, -255, {1, 2, 3, 4}}}) {
    reset_channel_list();
    show_services();

    EXPECT_EQ(remove_group(tested.kind, tested.id), 0);

    EXPECT_EQ(filed(), tested.left) << tested.kind << " " << tested.id;
    EXPECT_EQ(service_ids(VIEW_ALL), tested.left) << tested.kind << " " << tested.id;
    EXPECT_TRUE(counts_match_lists());
  }
}

TEST_F(ServiceListsRemoving, SatellitesAreToldByTheEntry) {
  show({.service_id = 1, .net_index = 1}, {VIEW_TV});
  show({.service_id = 2, .net_index = 2}, {VIEW_TV});
  list.tv_vch[0].net_index = 2;

  EXPECT_EQ(remove_group(GROUP_SATELLITE, 2), 0);

  EXPECT_EQ(filed(), ids{});
}

TEST_F(ServiceListsRemoving, OtherKindsRemoveNothingButTheViewsAreSwept) {
  for (const int kind : {0, 6, 7, -1, 127, -128}) {
    reset_channel_list();
    show_services();
    show_without_channel(VIEW_RADIO);
    show_without_channel(VIEW_TV);

    EXPECT_EQ(remove_group(kind, 7), 0);

    EXPECT_EQ(filed(), (ids{1, 2, 3, 4})) << kind;
    EXPECT_EQ(service_ids(VIEW_TV), (ids{1, 2, 3, 4})) << kind;
    EXPECT_EQ(list.radio_vnumber, 0) << kind;
  }
}

TEST_F(ServiceListsRemoving, EveryViewButTheWorkViewLosesTheEntries) {
  channel_st &removed = file_grouped({.service_id = 1, .provider = 7});
  channel_st &kept = file_grouped({.service_id = 2});
  for (const view_case &view : every_view()) {
    append_entry(view.code, entry_of(removed, 1));
    append_entry(view.code, entry_of(kept, 2));
  }

  EXPECT_EQ(remove_group(GROUP_PROVIDER, 7), 0);

  for (const view_case &view : every_view()) {
    const bool is_swept = view.code != VIEW_WORK;
    EXPECT_EQ(service_ids(view.code), (is_swept ? ids{2} : ids{1, 2})) << int{view.code};
    EXPECT_TRUE(slots_behind_count_are_zero(view.code, view.capacity)) << int{view.code};
    EXPECT_EQ(get_virtual_channel_st(view.code)[is_swept ? 0 : 1].rch, &kept) << int{view.code};
  }
  EXPECT_EQ(get_virtual_channel_st(VIEW_WORK)[0].rch, nullptr);
}

TEST_F(ServiceListsRemoving, OnlyServicesThatTheViewShowsGo) {
  show({.service_id = 1, .provider = 7}, {VIEW_ALL, VIEW_TV});
  show({.service_id = 2, .provider = 7}, {VIEW_ALL, VIEW_RADIO});
  file_grouped({.service_id = 3, .provider = 7});

  EXPECT_EQ(remove_group(GROUP_PROVIDER, 7), 0);

  EXPECT_EQ(filed(), (ids{2, 3}));
  EXPECT_EQ(service_ids(VIEW_ALL), (ids{2}));
  EXPECT_EQ(service_ids(VIEW_RADIO), (ids{2}));
}

TEST_F(ServiceListsRemoving, EveryViewTellsWhatGoes) {
  for (const view_case &view : every_view()) {
    reset_channel_list();
    init_vindex(VIEW_WORK);
    show({.service_id = 1, .genre = 5}, {view.code});
    show({.service_id = 2, .genre = 6}, {view.code});

    EXPECT_EQ(remove_group(GROUP_GENRE, 5, view.code), 0);

    EXPECT_EQ(filed(), (ids{2})) << int{view.code};
  }
}

TEST_F(ServiceListsRemoving, AChannelThatTheViewShowsSeveralTimesIsReleasedOnce) {
  channel_st &removed = file_grouped({.service_id = 1, .provider = 7});
  channel_st &kept = file_grouped({.service_id = 2});
  for (channel_st *shown : {&removed, &kept, &removed, &removed}) {
    append_entry(VIEW_TV, entry_of(*shown, 1));
  }

  EXPECT_EQ(writes_of_removing(0, GROUP_PROVIDER, 7), lines{});

  EXPECT_EQ(service_ids(VIEW_TV), (ids{2}));
  EXPECT_EQ(filed(), (ids{2}));
  EXPECT_TRUE(counts_match_lists());
}

TEST_F(ServiceListsRemoving, AnEmptiedTransponderAndItsNetworkStay) {
  show({.service_id = 1, .provider = 7, .net_index = 1}, {VIEW_TV});
  show({.service_id = 2, .provider = 8, .net_index = 2}, {VIEW_TV});

  remove_group(GROUP_PROVIDER, 7);

  ASSERT_EQ(networks().size(), 2U);
  ASSERT_EQ(transponders(*networks()[0]).size(), 1U);
  EXPECT_EQ(transponders(*networks()[0])[0]->rch_num, 0);
  EXPECT_EQ(transponders(*networks()[1])[0]->rch_num, 1);
  EXPECT_TRUE(counts_match_lists());
}

TEST_F(ServiceListsRemoving, AWholeViewCanGoAndStaysCurrent) {
  show_services();
  change_vindex_type(VIEW_TV);

  EXPECT_EQ(remove_group(GROUP_SATELLITE, 1), 0);

  EXPECT_EQ(list.tv_vnumber, 0);
  EXPECT_TRUE(slots_behind_count_are_zero(VIEW_TV, MAX_TV_CHANNEL));
  EXPECT_EQ(get_vindex_type(), VIEW_TV);
  EXPECT_EQ(list.network_num, 1);
}

TEST_F(ServiceListsRemoving, AFullViewIsCleared) {
  fill_everything();

  EXPECT_EQ(remove_group(GROUP_FTACAS, 0, VIEW_ALL), 0);

  EXPECT_EQ(filed(), ids{});
  EXPECT_TRUE(counts_match_lists());
  EXPECT_EQ(list.vnumber, 0);
  EXPECT_TRUE(slots_behind_count_are_zero(VIEW_ALL, MAX_CHANNEL));
}

TEST_F(ServiceListsRemoving, TheChannelOfTheEntryGoesWhateverTheEntrySays) {
  show({.service_id = 1, .provider = 7}, {VIEW_TV});
  show({.service_id = 2, .provider = 8}, {VIEW_TV});
  list.tv_vch[1].rch = list.tv_vch[0].rch;

  EXPECT_EQ(remove_group(GROUP_PROVIDER, 7), 0);

  // The second entry still resolves by its identity; the pointer that it kept is gone.
  EXPECT_EQ(filed(), (ids{2}));
  EXPECT_EQ(service_ids(VIEW_TV), (ids{2}));
  EXPECT_EQ(list.tv_vch[0].rch, nullptr);
}

TEST_F(ServiceListsRemoving, TheHistoryForgetsTheChannel) {
  show_services();
  add_return_channel(0, 1, 1, 100, 11'000'000, 2, 0);
  ASSERT_NE(get_return_channel()[0].vch.rch, nullptr);

  remove_group(GROUP_PROVIDER, 7);

  EXPECT_EQ(get_return_channel()[0].vch.rch, nullptr);
}

TEST_F(ServiceListsRemoving, AnEmptyOrUnknownViewChangesNothing) {
  show({.service_id = 1, .provider = 7}, {VIEW_ALL});
  show_without_channel(VIEW_RADIO);
  std::vector<std::int8_t> codes(unknown_codes.begin(), unknown_codes.end());
  codes.push_back(VIEW_TV);
  for (const std::int8_t code : codes) {
    EXPECT_EQ(remove_group(GROUP_PROVIDER, 7, code), -1) << int{code};
  }
  list.tv_vnumber = -1;
  EXPECT_EQ(remove_group(GROUP_PROVIDER, 7), -1);
  list.tv_vnumber = 0;

  EXPECT_EQ(filed(), (ids{1}));
  EXPECT_EQ(list.radio_vnumber, 1) << "the views are not swept";
  EXPECT_EQ(writes_of_removing(5, GROUP_PROVIDER, 7), lines{});
  EXPECT_EQ(writes_of_removing(1, GROUP_PROVIDER, 7, 30),
            (lines{"WARNING: get_virtual_channel_st:# unknown vch_type=30\n",
                   "WARNING: get_virtual_channel_vnumber:# unknown vch_type=30\n"}));
}

TEST_F(ServiceListsRemoving, EntriesWithoutAChannelAreReportedAndSweptUnlessTheyResolve) {
  show_services();
  list.tv_vch[1].rch = nullptr;
  show_without_channel(VIEW_TV);
  const std::string report = "ERROR: remove_service_by_group_list_id:#  r_ch NULL......\n";

  EXPECT_EQ(writes_of_removing(0, GROUP_PROVIDER, 7), (lines{report, report}));

  EXPECT_EQ(service_ids(VIEW_TV), (ids{1, 2, 3}));
  EXPECT_EQ(filed(), (ids{1, 2, 3}));
}

TEST_F(ServiceListsRemoving, TheViewAndTheIdAreTracedAtLevel2WhateverTheKind) {
  for (const view_case &view : every_view()) {
    reset_channel_list();
    init_vindex(VIEW_WORK);
    show({.service_id = 1}, {view.code});
    const bool is_plain = view.code <= VIEW_USER;
    const std::string name = is_plain
                                 ? lines{"ALL CH", "TV CH", "RADIO CH", "USER CH"}[static_cast<std::size_t>(view.code)]
                             : view.code >= VIEW_FAVOURITE ? "FAV CH"
                                                           : "NONE";

    EXPECT_EQ(writes_of_removing(2, GROUP_GENRE, 17, view.code), (lines{trace_of(name, 17), sweep})) << int{view.code};
    EXPECT_EQ(writes_of_removing(1, GROUP_GENRE, 17, view.code), lines{});
  }
  show({.service_id = 2}, {VIEW_TV});
  EXPECT_EQ(writes_of_removing(2, GROUP_FAV, -3), (lines{trace_of("TV CH", -3), sweep}));
}

TEST_F(ServiceListsRemoving, ReleasedServicesAreNotTracedOneByOne) {
  show_services();

  EXPECT_EQ(writes_of_removing(3, GROUP_PROVIDER, 7), (lines{trace_of("TV CH", 7), sweep}));
}

}  // namespace
