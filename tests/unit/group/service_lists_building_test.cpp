// Building the list of a group's services: who belongs, where the list goes and what becomes current.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/grouped_services.h"
#include "support/log_capture.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;
using ids = std::vector<int>;

int build(int kind, int id, std::int8_t source = VIEW_TV, std::uint8_t current = to_work_view) {
  return create_service_by_group_list_id(static_cast<std::int8_t>(kind), static_cast<std::int16_t>(id), source,
                                         current);
}

lines writes_of_building(int level, int kind, int id, std::int8_t source = VIEW_TV,
                         std::uint8_t current = to_work_view) {
  return writes_at(level, [=] { return build(kind, id, source, current); });
}

// The services of the list that a build leaves in the work view.
ids built(int kind, int id, std::int8_t source = VIEW_TV) {
  EXPECT_EQ(build(kind, id, source), 0);
  EXPECT_TRUE(slots_behind_count_are_zero(VIEW_WORK, MAX_CHANNEL));
  return service_ids(VIEW_WORK);
}

class ServiceListsBuilding : public store_test {
 protected:
  [[nodiscard]] std::string whole_list() const { return {reinterpret_cast<const char *>(&list), sizeof list}; }

  // Six services in the TV view, every group of every kind between them.
  static void show_services() {
    show({.service_id = 1, .genre = 1, .provider = 7, .country = 3, .net_index = 1, .flag = 0x00}, {VIEW_TV});
    show({.service_id = 2, .genre = 2, .provider = 7, .country = -1, .net_index = 2, .flag = 0x04}, {VIEW_TV});
    show({.service_id = 3, .genre = 1, .provider = 8, .country = 3, .net_index = 255, .flag = 0x40}, {VIEW_TV});
    show({.service_id = 4, .genre = 300, .provider = 9, .country = 2, .net_index = 44, .flag = 0x44}, {VIEW_TV});
    show({.service_id = 5, .genre = 0, .provider = 0, .country = 0, .net_index = 0, .flag = 0xBB}, {VIEW_TV});
    show({.service_id = 6, .genre = -1, .provider = -1, .country = 300, .net_index = 1, .flag = 0xFF}, {VIEW_TV});
  }
};

TEST_F(ServiceListsBuilding, SatellitesAreToldByTheNetworkIndex) {
  show_services();

  EXPECT_EQ(built(GROUP_SATELLITE, 1), (ids{1, 6}));
  EXPECT_EQ(built(GROUP_SATELLITE, 2), (ids{2}));
  EXPECT_EQ(built(GROUP_SATELLITE, 0), (ids{5}));
  EXPECT_EQ(built(GROUP_SATELLITE, 255), (ids{3}));
}

TEST_F(ServiceListsBuilding, ASatelliteIdOutsideAByteNeverMatches) {
  show_services();

  // 300 is 44 and -1 is 255 to anyone who cuts them to a byte.
  for (const int id : {300, 256, -1, -256, 32767, -32768}) {
    EXPECT_EQ(built(GROUP_SATELLITE, id), ids{}) << id;
  }
}

TEST_F(ServiceListsBuilding, TheSatelliteIsTheEntrysOwnNotThatOfItsChannel) {
  show({.service_id = 1, .net_index = 1}, {VIEW_TV});
  list.tv_vch[0].net_index = 9;

  EXPECT_EQ(built(GROUP_SATELLITE, 9), (ids{1}));
  EXPECT_EQ(built(GROUP_SATELLITE, 1), ids{});
}

TEST_F(ServiceListsBuilding, GenresProvidersAndCountriesAreThoseOfTheRealChannel) {
  show_services();

  EXPECT_EQ(built(GROUP_GENRE, 1), (ids{1, 3}));
  EXPECT_EQ(built(GROUP_GENRE, 300), (ids{4}));
  EXPECT_EQ(built(GROUP_GENRE, 0), (ids{5}));
  EXPECT_EQ(built(GROUP_GENRE, -1), (ids{6}));
  EXPECT_EQ(built(GROUP_GENRE, 44), ids{});
  EXPECT_EQ(built(GROUP_PROVIDER, 7), (ids{1, 2}));
  EXPECT_EQ(built(GROUP_PROVIDER, 0), (ids{5}));
  EXPECT_EQ(built(GROUP_PROVIDER, -1), (ids{6}));
  EXPECT_EQ(built(GROUP_PROVIDER, 300), ids{});
  EXPECT_EQ(built(GROUP_COUNTRY, 3), (ids{1, 3}));
  EXPECT_EQ(built(GROUP_COUNTRY, 300), (ids{6}));
  EXPECT_EQ(built(GROUP_COUNTRY, -1), (ids{2}));
  EXPECT_EQ(built(GROUP_COUNTRY, 0), (ids{5}));
}

TEST_F(ServiceListsBuilding, AccessIsToldByTheFlags) {
  show_services();

  EXPECT_EQ(built(GROUP_FTACAS, 0), (ids{1, 3, 5}));
  EXPECT_EQ(built(GROUP_FTACAS, 1), (ids{2, 4, 6}));
  EXPECT_EQ(built(GROUP_FTACAS, 2), (ids{3, 4, 6}));
}

TEST_F(ServiceListsBuilding, OtherAccessIdsNeverMatch) {
  show_services();

  for (const int id : {3, 4, 64, 256, 257, 300, -1, -256, 32767, -32768}) {
    EXPECT_EQ(built(GROUP_FTACAS, id), ids{}) << id;
  }
}

TEST_F(ServiceListsBuilding, OtherKindsNeverMatch) {
  show_services();

  for (const int kind : {0, 6, 7, -1, 127, -128}) {
    for (const int id : {0, 1, 7, -1}) {
      EXPECT_EQ(built(kind, id), ids{}) << kind << " " << id;
    }
  }
}

TEST_F(ServiceListsBuilding, EntriesAreCopiedWholeInTheSourcesOrder) {
  for (const int id : {30, 10, 20}) {
    show({.service_id = id, .genre = id == 10 ? 2 : 1}, {VIEW_RADIO});
  }
  virtual_channel_st &last = list.radio_vch[2];
  last.vch_tag = -3;
  last.favorite_id = 200;
  last.minor_ch_num = 9;
  last.reserved_7 = 0xA5;
  last.reserved_13 = 0x5A;

  build(GROUP_GENRE, 1, VIEW_RADIO);

  const virtual_channel_st *work = get_virtual_channel_st(VIEW_WORK);
  ASSERT_EQ(*get_virtual_channel_vnumber(VIEW_WORK), 2);
  EXPECT_EQ(std::memcmp(&work[0], &list.radio_vch[0], sizeof *work), 0);
  EXPECT_EQ(std::memcmp(&work[1], &list.radio_vch[2], sizeof *work), 0);
  EXPECT_EQ(majors(VIEW_WORK), (ids{300, 200}));
}

TEST_F(ServiceListsBuilding, EveryViewIsASource) {
  for (const view_case &view : every_view()) {
    if (view.code == VIEW_WORK) {
      continue;
    }
    reset_channel_list();
    show({.service_id = 1, .genre = 1}, {view.code});
    show({.service_id = 2, .genre = 2}, {view.code});

    EXPECT_EQ(built(GROUP_GENRE, 2, view.code), (ids{2})) << int{view.code};
  }
}

TEST_F(ServiceListsBuilding, TheWorkViewIsASourceForTheUserView) {
  show({.service_id = 1, .genre = 1}, {VIEW_WORK});
  show({.service_id = 2, .genre = 2}, {VIEW_WORK});

  EXPECT_EQ(build(GROUP_GENRE, 2, VIEW_WORK, make_current), 0);

  EXPECT_EQ(service_ids(VIEW_USER), (ids{2}));
  EXPECT_EQ(service_ids(VIEW_WORK), (ids{1, 2}));
}

TEST_F(ServiceListsBuilding, TheTargetIsEmptiedFirst) {
  fill_unfiled(VIEW_WORK, MAX_CHANNEL);
  show({.service_id = 1, .genre = 1}, {VIEW_TV});

  EXPECT_EQ(built(GROUP_GENRE, 1), (ids{1}));

  fill_unfiled(VIEW_USER, MAX_CHANNEL);
  build(GROUP_GENRE, 1, VIEW_TV, make_current);
  EXPECT_EQ(service_ids(VIEW_USER), (ids{1}));
  EXPECT_TRUE(slots_behind_count_are_zero(VIEW_USER, MAX_CHANNEL));
}

TEST_F(ServiceListsBuilding, AFullSourceFits) {
  channel_st &service = file_grouped({.service_id = 1, .genre = 1});
  for (const int count : {4999, 5000}) {
    repeat_entry(VIEW_ALL, service, count);
    for (const std::uint8_t current : {to_work_view, make_current}) {
      EXPECT_EQ(build(GROUP_GENRE, 1, VIEW_ALL, current), 0);
      EXPECT_EQ(*get_virtual_channel_vnumber(current == to_work_view ? VIEW_WORK : VIEW_USER), count);
    }
  }
  EXPECT_EQ(majors(VIEW_WORK), majors(VIEW_ALL));
  EXPECT_EQ(majors(VIEW_USER), majors(VIEW_ALL));
}

TEST_F(ServiceListsBuilding, ASourceThatIsEmptyOrUnknownChangesNothing) {
  fill_unfiled(VIEW_WORK, 2);
  fill_unfiled(VIEW_USER, 3);
  std::vector<std::int8_t> sources(unknown_codes.begin(), unknown_codes.end());
  sources.push_back(VIEW_TV);
  for (const std::int8_t source : sources) {
    for (const std::uint8_t current : {to_work_view, make_current}) {
      EXPECT_EQ(build(GROUP_GENRE, 1, source, current), -1) << int{source};
    }
  }

  EXPECT_EQ(service_ids(VIEW_WORK), (ids{1, 2}));
  EXPECT_EQ(service_ids(VIEW_USER), (ids{1, 2, 3}));
  EXPECT_EQ(get_vindex_type(), VIEW_ALL);
  EXPECT_EQ(list.use_group_list, 0);
  EXPECT_EQ(list.sub_group_id, -1);
  EXPECT_EQ(list.service_type, 1);
}

TEST_F(ServiceListsBuilding, ANegativeCountIsAnEmptySource) {
  list.tv_vnumber = -1;

  EXPECT_EQ(build(GROUP_GENRE, 1), -1);
  list.tv_vnumber = 0;
}

TEST_F(ServiceListsBuilding, AnEmptySourceIsNotReportedAndAnUnknownOneIsByBothAccessors) {
  EXPECT_EQ(writes_of_building(5, GROUP_GENRE, 1), lines{});
  EXPECT_EQ(writes_of_building(1, GROUP_GENRE, 1, 6),
            (lines{"WARNING: get_virtual_channel_st:# unknown vch_type=6\n",
                   "WARNING: get_virtual_channel_vnumber:# unknown vch_type=6\n"}));
  EXPECT_EQ(writes_of_building(0, GROUP_GENRE, 1, 6), lines{});
}

TEST_F(ServiceListsBuilding, EntriesWithoutAChannelAreReportedAndPassedOver) {
  show_without_channel(VIEW_TV);
  show({.service_id = 1, .net_index = 1}, {VIEW_TV});
  show_without_channel(VIEW_TV);
  const std::string report = "ERROR: create_service_by_group_list_id:#  r_ch NULL......\n";

  // Also by satellite, which the entry itself would tell.
  for (const int kind : {GROUP_SATELLITE, GROUP_COUNTRY}) {
    const int id = kind == GROUP_SATELLITE ? 1 : 0;
    EXPECT_EQ(writes_of_building(0, kind, id), (lines{report, report})) << kind;
    EXPECT_EQ(service_ids(VIEW_WORK), (ids{1})) << kind;
  }
  EXPECT_EQ(writes_of_building(-1, GROUP_SATELLITE, 1), lines{});
  EXPECT_EQ(writes_of_building(0, GROUP_ALL, 0), (lines{report, report, nothing_found("0000", 1)}));
}

TEST_F(ServiceListsBuilding, AListIsBuiltWithoutAWord) {
  show_services();

  EXPECT_EQ(writes_of_building(5, GROUP_GENRE, 1), lines{});
}

TEST_F(ServiceListsBuilding, AnEmptyListIsReportedWithTheIdInHexadecimal) {
  show_services();

  EXPECT_EQ(writes_of_building(0, GROUP_PROVIDER, 0x12), lines{nothing_found("0012", 1)});
  EXPECT_EQ(writes_of_building(0, GROUP_PROVIDER, 0x7FFF), lines{nothing_found("7fff", 1)});
  EXPECT_EQ(writes_of_building(0, GROUP_ALL, 0), lines{nothing_found("0000", 1)});
  EXPECT_EQ(writes_of_building(0, GROUP_FTACAS, -2), lines{nothing_found("fffffffe", 1)});
  show({.service_id = 9}, {14});
  EXPECT_EQ(writes_of_building(0, GROUP_GENRE, 1, 14), lines{nothing_found("0001", 14)});
  EXPECT_EQ(writes_of_building(-1, GROUP_GENRE, 1, 14), lines{});
}

TEST_F(ServiceListsBuilding, AListForTheWorkViewTouchesNothingElse) {
  show_services();
  fill_unfiled(VIEW_USER, 3);
  change_vindex_type(VIEW_TV);
  const std::string before = whole_list();

  EXPECT_EQ(build(GROUP_SATELLITE, 2), 0);
  EXPECT_EQ(build(GROUP_PROVIDER, 7), 0);
  EXPECT_EQ(build(GROUP_PROVIDER, 500), 0);

  EXPECT_TRUE(whole_list() == before);
}

TEST_F(ServiceListsBuilding, TheWorkViewBuiltFromItselfIsEmpty) {
  show({.service_id = 1, .genre = 1}, {VIEW_WORK});

  EXPECT_EQ(writes_of_building(0, GROUP_GENRE, 1, VIEW_WORK), lines{nothing_found("0001", 4)});

  EXPECT_EQ(*get_virtual_channel_vnumber(VIEW_WORK), 0);
}

}  // namespace
