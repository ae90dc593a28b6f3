// The groups that occur in a view, for a user to choose from.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "support/grouped_services.h"
#include "support/log_capture.h"
#include "support/providers.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;
using ids = std::vector<int>;

const std::string no_view = "ERROR: get_group_id_by_service_type:# \n";

// The groups listed, in an array of just the size that the kind's table asks for.
std::vector<group_st> groups_of(int kind, std::int8_t view_type = VIEW_TV, std::size_t room = MAX_PROVIDER) {
  std::vector<group_st> out(room);
  out.resize(
      static_cast<std::size_t>(get_group_id_by_service_type(static_cast<std::int8_t>(kind), view_type, out.data())));
  return out;
}

ids ids_of(const std::vector<group_st> &groups) {
  ids found(groups.size());
  std::transform(groups.begin(), groups.end(), found.begin(), [](const group_st &group) { return group.id; });
  return found;
}

lines writes_of_listing(int level, int kind, std::int8_t view_type = VIEW_TV) {
  return writes_at(level, [=] { return static_cast<int>(groups_of(kind, view_type).size()); });
}

struct table_kind {
  std::int8_t kind;
  group_st *groups;
  std::int16_t *count;
  int capacity;
  std::int16_t channel_st::*field;
};

class ServiceListsGroups : public store_test {
 protected:
  [[nodiscard]] std::vector<table_kind> kinds_with_a_table() const {
    return {{GROUP_GENRE, list.genre, &list.genre_num, MAX_GENRE, &channel_st::genre_id},
            {GROUP_PROVIDER, list.provider, &list.provider_num, MAX_PROVIDER, &channel_st::provider_id},
            {GROUP_COUNTRY, list.country, &list.country_num, MAX_COUNTRY, &channel_st::country_id}};
  }
  static void put(const table_kind &table, const group_st &group) { table.groups[(*table.count)++] = group; }
  void put_genre(const std::string &name, int id) { put(kinds_with_a_table()[0], named_group(name, id)); }
  // TV services with these genres.
  static void show_genres(const ids &genres) {
    for (std::size_t i = 0; i < genres.size(); ++i) {
      show({.service_id = static_cast<int>(i) + 1, .genre = genres[i]}, {VIEW_TV});
    }
  }
};

TEST_F(ServiceListsGroups, EveryGroupIsListedOnceSortedByName) {
  for (const table_kind &table : kinds_with_a_table()) {
    reset_channel_list();
    put(table, named_group("news", 4));
    put(table, named_group("Music", 2));
    put(table, named_group("Film", 9));
    put(table, named_group("arts", 5));
    for (const int id : {2, 9, 4, 2, 9}) {
      channel_st &service = show({.service_id = 10 + list.tv_vnumber}, {VIEW_TV});
      service.*table.field = static_cast<std::int16_t>(id);
    }

    EXPECT_EQ(ids_of(groups_of(table.kind)), (ids{9, 2, 4})) << int{table.kind};
  }
}

TEST_F(ServiceListsGroups, RecordsAreCopiedWhole) {
  group_st record = named_group("Film", 9);
  record.reserved_0 = 0xA55A;
  record.name_len = -7;
  record.name[97] = 'z';
  put(kinds_with_a_table()[0], record);
  show_genres({9});

  const std::vector<group_st> found = groups_of(GROUP_GENRE);

  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(image_of(found[0]), image_of(record));
}

TEST_F(ServiceListsGroups, Id0IsNeverListedForAnyKind) {
  for (const table_kind &table : kinds_with_a_table()) {
    reset_channel_list();
    put(table, named_group("none", 0));
    show({.service_id = 1}, {VIEW_TV});
    show({.service_id = 2}, {VIEW_TV});

    EXPECT_EQ(ids_of(groups_of(table.kind)), ids{}) << int{table.kind};
  }
}

TEST_F(ServiceListsGroups, NegativeIdsAreListed) {
  put_genre("none", -1);
  put_genre("low", -32768);
  put_genre("high", 32767);
  show_genres({-1, 32767, -32768});

  EXPECT_EQ(ids_of(groups_of(GROUP_GENRE)), (ids{32767, -32768, -1}));
}

TEST_F(ServiceListsGroups, IdsWithoutARecordArePassedOverWithoutAWord) {
  put_genre("Film", 9);
  show_genres({8, 9, 10, -1});

  EXPECT_EQ(ids_of(groups_of(GROUP_GENRE)), (ids{9}));
  EXPECT_EQ(writes_of_listing(5, GROUP_GENRE), lines{});
}

TEST_F(ServiceListsGroups, AnEmptyTableGivesNoGroups) {
  show_genres({1, 2});

  EXPECT_EQ(ids_of(groups_of(GROUP_GENRE)), ids{});
}

TEST_F(ServiceListsGroups, GroupsOfEqualNamesAreAllListed) {
  put_genre("film", 1);
  put_genre("FILM", 2);
  put_genre("film", 3);
  put_genre("arts", 4);
  show_genres({3, 1, 2, 4, 3});

  const ids found = ids_of(groups_of(GROUP_GENRE));

  ASSERT_EQ(found.size(), 4U);
  EXPECT_EQ(found[0], 4);
  EXPECT_EQ((std::set<int>{found.begin() + 1, found.end()}), (std::set<int>{1, 2, 3}));
}

TEST_F(ServiceListsGroups, OfTwoRecordsWithOneIdTheFirstIsListed) {
  put_genre("Film", 9);
  put_genre("Arts", 9);
  show_genres({9, 9});

  const std::vector<group_st> found = groups_of(GROUP_GENRE);

  ASSERT_EQ(found.size(), 1U);
  EXPECT_STREQ(found[0].name, "Film");
}

TEST_F(ServiceListsGroups, KindsWithoutATableGiveNoGroups) {
  show({.service_id = 1, .genre = 1, .provider = 1, .country = 1}, {VIEW_TV});
  for (const table_kind &table : kinds_with_a_table()) {
    put(table, named_group("a", 1));
    put(table, named_group("b", -1));
  }

  for (const int kind : {0, 1, 5, 6, 7, -1, 127, -128}) {
    EXPECT_EQ(ids_of(groups_of(kind)), ids{}) << kind;
    EXPECT_EQ(writes_of_listing(5, kind), lines{}) << kind;
  }
}

TEST_F(ServiceListsGroups, EntriesWithoutAChannelAreReportedAndPassedOver) {
  put_genre("Film", 9);
  show_without_channel(VIEW_TV);
  show({.service_id = 1, .genre = 9}, {VIEW_TV});
  show_without_channel(VIEW_TV);
  const std::string report = "ERROR: get_group_id_by_service_type:# r_ch == NULL\n";

  EXPECT_EQ(ids_of(groups_of(GROUP_GENRE)), (ids{9}));
  EXPECT_EQ(writes_of_listing(0, GROUP_GENRE), (lines{report, report}));
  EXPECT_EQ(writes_of_listing(0, GROUP_SATELLITE), (lines{report, report}));
  EXPECT_EQ(writes_of_listing(-1, GROUP_GENRE), lines{});
}

TEST_F(ServiceListsGroups, AnEmptyViewIsReportedAndLeavesTheArrayAlone) {
  for (const int count : {0, -1}) {
    list.tv_vnumber = static_cast<std::int16_t>(count);
    group_st out = named_group("untouched", 5);

    EXPECT_EQ(get_group_id_by_service_type(GROUP_GENRE, VIEW_TV, &out), 0);

    EXPECT_EQ(image_of(out), image_of(named_group("untouched", 5)));
    EXPECT_EQ(writes_of_listing(5, GROUP_GENRE), lines{no_view});
    EXPECT_EQ(writes_of_listing(0, GROUP_GENRE), lines{no_view});
    EXPECT_EQ(writes_of_listing(-1, GROUP_GENRE), lines{});
  }
  list.tv_vnumber = 0;
}

TEST_F(ServiceListsGroups, AnUnknownViewIsWarnedOfByBothAccessorsAndReported) {
  for (const std::int8_t code : unknown_codes) {
    const std::string text = "unknown vch_type=" + std::to_string(code) + "\n";

    EXPECT_EQ(ids_of(groups_of(GROUP_GENRE, code)), ids{});

    EXPECT_EQ(writes_of_listing(1, GROUP_GENRE, code),
              (lines{"WARNING: get_virtual_channel_st:# " + text, "WARNING: get_virtual_channel_vnumber:# " + text,
                     no_view}));
    EXPECT_EQ(writes_of_listing(0, GROUP_GENRE, code), lines{no_view});
  }
}

TEST_F(ServiceListsGroups, EveryViewIsRead) {
  put_genre("Arts", 8);
  put_genre("Film", 9);
  for (const view_case &view : every_view()) {
    show({.service_id = view.code + 1, .genre = 9}, {view.code});

    EXPECT_EQ(ids_of(groups_of(GROUP_GENRE, view.code)), (ids{9})) << int{view.code};
  }
}

TEST_F(ServiceListsGroups, EntriesBehindTheCountDoNotCount) {
  put_genre("Arts", 8);
  put_genre("Film", 9);
  show_genres({8, 9});
  list.tv_vnumber = 1;

  EXPECT_EQ(ids_of(groups_of(GROUP_GENRE)), (ids{8}));
}

TEST_F(ServiceListsGroups, AllGroupsOfAFullTableFitAnArrayOfTheTablesSize) {
  for (const table_kind &table : kinds_with_a_table()) {
    reset_channel_list();
    ids expected;
    for (int id = 1; id <= table.capacity; ++id) {
      put(table, named_group("Group " + std::to_string(1000 + id), id));
      expected.push_back(id);
    }
    for (int id = table.capacity; id >= 1; --id) {
      channel_st &service = show({.service_id = id}, {VIEW_ALL});
      service.*table.field = static_cast<std::int16_t>(id);
    }

    const auto room = static_cast<std::size_t>(table.capacity);
    EXPECT_EQ(ids_of(groups_of(table.kind, VIEW_ALL, room)), expected) << int{table.kind};
  }
}

TEST_F(ServiceListsGroups, NamesThatFillTheirFieldCompareWithinIt) {
  const std::string front(97, 'x');
  put_genre(front + "b", 1);
  put_genre(front + "a", 2);
  put_genre("y", 3);
  for (group_st &genre : list.genre) {
    genre.reserved_0 = 0x7A7A;
  }
  show_genres({1, 2, 3});

  EXPECT_EQ(ids_of(groups_of(GROUP_GENRE)), (ids{2, 1, 3}));
}

TEST_F(ServiceListsGroups, ANullArrayIsRefused) {
  put_genre("Film", 9);
  show_genres({9});

  EXPECT_EQ(get_group_id_by_service_type(GROUP_GENRE, VIEW_TV, nullptr), 0);
  EXPECT_EQ(writes_at(0, [] { return get_group_id_by_service_type(GROUP_GENRE, VIEW_TV, nullptr); }),
            lines{"ERROR: get_group_id_by_service_type:# out is null\n"});
}

}  // namespace
