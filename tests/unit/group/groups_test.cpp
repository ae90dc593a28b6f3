// Group lists: kinds with and without a table, and the group ids that services carry.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>

#include "support/log_capture.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

class Groups : public store_test {};

TEST_F(Groups, GenresAndCountriesAreFoundByFunctionsOfTheirOwn) {
  list.genre[1].id = list.country[2].id = -7;
  list.genre_num = list.country_num = 3;

  EXPECT_EQ(find_genre_id(-7), &list.genre[1]);
  EXPECT_EQ(find_country_id(-7), &list.country[2]);
  EXPECT_EQ(find_genre_id(1), nullptr);
  EXPECT_EQ(find_country_id(1), nullptr);
}

TEST_F(Groups, GenresAndCountriesAreNotSoughtInEmptyTables) {
  EXPECT_EQ(find_genre_id(0), nullptr);
  EXPECT_EQ(find_country_id(0), nullptr);
  list.genre_num = list.country_num = -1;
  EXPECT_EQ(find_genre_id(0), nullptr);
  EXPECT_EQ(find_country_id(0), nullptr);
}

TEST_F(Groups, SatellitesHaveNoTableAndLeaveTheHostsNumberUntouched) {
  std::uint16_t count = 777;

  EXPECT_EQ(get_group_list(GROUP_SATELLITE, &count), nullptr);

  EXPECT_EQ(count, 777);
}

TEST_F(Groups, KindsWithoutATableCountNothing) {
  fill_everything();
  for (const int kind : {0, 5, 6, 7, -1, 127, -128}) {
    std::uint16_t count = 777;

    EXPECT_EQ(get_group_list(static_cast<std::int8_t>(kind), &count), nullptr) << kind;
    EXPECT_EQ(count, 0) << kind;
  }
}

TEST_F(Groups, KindsWithoutATableHaveNoGroup) {
  fill_everything();
  for (const int kind : {0, 1, 5, 6, 7, -1, 127, -128}) {
    EXPECT_EQ(get_group_st_by_id(static_cast<std::int8_t>(kind), 0), nullptr) << kind;
  }
}

TEST_F(Groups, AListWithoutAPlaceForItsCountIsRefused) {
  list.genre_num = 1;

  EXPECT_EQ(get_group_list(GROUP_GENRE, nullptr), nullptr);
  EXPECT_EQ(writes_at(0, [] { return get_group_list(GROUP_GENRE, nullptr); }),
            lines{"ERROR: get_group_list:# count is null\n"});
}

TEST_F(Groups, EveryKindHasItsOwnIdInAService) {
  channel_st *service = file_service({.net_index = 200});
  service->genre_id = -1000;
  service->provider_id = 32767;
  service->country_id = -32768;
  const virtual_channel_st entry = entry_of(*service, 1);

  EXPECT_EQ(get_group_id(GROUP_SATELLITE, &entry), 200);
  EXPECT_EQ(get_group_id(GROUP_GENRE, &entry), -1000);
  EXPECT_EQ(get_group_id(GROUP_PROVIDER, &entry), 32767);
  EXPECT_EQ(get_group_id(GROUP_COUNTRY, &entry), -32768);
}

TEST_F(Groups, TheIdIsThatOfTheRealChannelAndNotOfTheEntry) {
  virtual_channel_st entry = entry_of(*file_service({.net_index = 200}), 1);
  entry.net_index = 3;

  EXPECT_EQ(get_group_id(GROUP_SATELLITE, &entry), 200);
  EXPECT_EQ(set_group_id(GROUP_SATELLITE, &entry, 9), 9);
  EXPECT_EQ(entry.net_index, 3);
  EXPECT_EQ(entry.rch->net_index, 9);
}

TEST_F(Groups, AServiceHasNoIdOfOtherKinds) {
  virtual_channel_st entry = entry_of(*file_service({}), 1);
  const channel_st before = *entry.rch;

  for (const int kind : {0, 5, 6, 7, -1, 127, -128}) {
    EXPECT_EQ(get_group_id(static_cast<std::int8_t>(kind), &entry), -1) << kind;
    EXPECT_EQ(set_group_id(static_cast<std::int8_t>(kind), &entry, 5), -1) << kind;
  }
  EXPECT_EQ(std::memcmp(entry.rch, &before, sizeof before), 0);
}

TEST_F(Groups, AnEntryWithoutARealChannelHasNoId) {
  virtual_channel_st entry = {};

  for (const int kind : {1, 2, 3, 4}) {
    const auto code = static_cast<std::int8_t>(kind);
    EXPECT_EQ(get_group_id(code, nullptr), -1) << kind;
    EXPECT_EQ(get_group_id(code, &entry), -1) << kind;
    EXPECT_EQ(set_group_id(code, nullptr, 5), -1) << kind;
    EXPECT_EQ(set_group_id(code, &entry, 5), -1) << kind;
  }
}

TEST_F(Groups, IdsAreStoredAndReturnedWithTheirSign) {
  channel_st *service = file_service({});
  virtual_channel_st entry = entry_of(*service, 1);

  EXPECT_EQ(set_group_id(GROUP_PROVIDER, &entry, -2), -2);
  EXPECT_EQ(service->provider_id, -2);
  EXPECT_EQ(set_group_id(GROUP_GENRE, &entry, -32768), -32768);
  EXPECT_EQ(service->genre_id, -32768);
  EXPECT_EQ(set_group_id(GROUP_COUNTRY, &entry, 32767), 32767);
  EXPECT_EQ(service->country_id, 32767);
}

TEST_F(Groups, ASatelliteTakesTheLowByteOfAnId) {
  channel_st *service = file_service({});
  virtual_channel_st entry = entry_of(*service, 1);
  const struct {
    int id;
    int stored;
  } cases[] = {{0x1FF, 0xFF}, {0x100, 0}, {-1, 255}, {-128, 128}, {0, 0}, {255, 255}};
  for (const auto &each : cases) {
    EXPECT_EQ(set_group_id(GROUP_SATELLITE, &entry, static_cast<std::int16_t>(each.id)), each.stored) << each.id;
    EXPECT_EQ(service->net_index, each.stored) << each.id;
  }
}

TEST_F(Groups, StoringAnIdChangesItsFieldAlone) {
  channel_st *service = file_service({});
  virtual_channel_st entry = entry_of(*service, 1);
  channel_st expected = *service;
  expected.genre_id = 0x5555;

  set_group_id(GROUP_GENRE, &entry, 0x5555);

  EXPECT_EQ(std::memcmp(service, &expected, sizeof expected), 0);
}

TEST_F(Groups, StoringAGenreIsLoggedAtLevel2AndStoringOthersIsNot) {
  virtual_channel_st entry = entry_of(*file_service({}), 1);
  const auto store = [&entry](int kind) { return set_group_id(static_cast<std::int8_t>(kind), &entry, -3); };

  EXPECT_EQ(writes_at(2, [&] { return store(GROUP_GENRE); }), lines{"ChannelAPI set_group_id:# id ----- -3 \n"});
  EXPECT_EQ(writes_at(1, [&] { return store(GROUP_GENRE); }), lines{});
  for (const int kind : {1, 3, 4, 5}) {
    EXPECT_EQ(writes_at(9, [&] { return store(kind); }), lines{}) << kind;
  }
}

TEST_F(Groups, IdsByServiceTypeAreAlwaysZero) {
  fill_everything();
  for (int view = -128; view <= 127; ++view) {
    const log_capture silence(-1);
    EXPECT_EQ(get_country_id_by_service_type(static_cast<std::int8_t>(view)), 0) << view;
    EXPECT_EQ(get_genre_id_by_service_type(static_cast<std::int8_t>(view)), 0) << view;
  }
}

TEST_F(Groups, IdsByServiceTypeLookTheViewUp) {
  const lines warnings = {"WARNING: get_virtual_channel_st:# unknown vch_type=6\n",
                          "WARNING: get_virtual_channel_vnumber:# unknown vch_type=6\n"};

  EXPECT_EQ(writes_at(1, [] { return get_country_id_by_service_type(6); }), warnings);
  EXPECT_EQ(writes_at(1, [] { return get_genre_id_by_service_type(6); }), warnings);
  EXPECT_EQ(writes_at(0, [] { return get_genre_id_by_service_type(6); }), lines{});
  EXPECT_EQ(writes_at(9, [] { return get_country_id_by_service_type(VIEW_TV); }), lines{});
}

}  // namespace
