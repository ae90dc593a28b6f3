// A line-up fills the list in memory, and is taken from it again.
#include "chlist/exchange/loss_counts.h"

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "tool/exchange/line_ups.h"

namespace {

using chlist::channel_number;
using chlist::favourite_group;
using chlist::filled_list;
using chlist::line_up;
using chlist::line_up_service;
using test_support::majors;
using test_support::service_ids;
using tool_test::line_up_of;
using tool_test::losses;
using tool_test::row_list;
using tool_test::service_named;

using LineUp = tool_test::line_up_test;

TEST_F(LineUp, EverythingThatAServiceHasComesBack) {
  line_up_service service = service_named("News", 1);
  service.short_name = "N";
  service.provider = "Meridian";
  service.genre = "Current affairs";
  service.country = "Atlantis";
  service.fields.flag = 0xFF;
  service.fields.net_index = 7;
  service.fields.user_order_key = -3;
  service.fields.reserved_262[23] = 9;
  service.number = channel_number{12, 3};
  const line_up given = line_up_of({service});

  const filled_list filled = fill_list(given, lost);

  EXPECT_TRUE(filled.is_whole());
  EXPECT_EQ(tool_test::taken(list), given);
  EXPECT_EQ(losses(lost), row_list{});
}

TEST_F(LineUp, AServiceInNoViewStaysInNone) {
  line_up_service hidden = service_named("Hidden", 2);
  hidden.is_listed = false;
  const line_up given = line_up_of({service_named("Shown", 1), hidden});

  fill_list(given, lost);

  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{1}));
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1}));
  const line_up taken = tool_test::taken(list);
  ASSERT_EQ(taken.services.size(), 2U);
  EXPECT_FALSE(taken.services[1].is_listed);
  EXPECT_FALSE(taken.services[1].number);
}

TEST_F(LineUp, NumbersGoOnBehindTheLargest) {
  line_up_service second = service_named("Second", 2);
  second.number = channel_number{40, 1};
  line_up_service third = service_named("Third", 3);
  third.number = channel_number{7, 0};

  fill_list(line_up_of({service_named("First", 1), second, third, service_named("Fourth", 4)}), lost);

  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{1, 40, 7, 41}));
  EXPECT_EQ(list.vch[1].minor_ch_num, 1);
}

TEST_F(LineUp, ANumberBeyondTheEntrysIsRefused) {
  for (const int number : {-32768, 0, 32767}) {
    line_up_service service = service_named("A", 1);
    service.number = channel_number{number, number};
    EXPECT_TRUE(fill_list(line_up_of({service}), lost).is_whole()) << number;
    EXPECT_EQ(tool_test::taken(list).services.at(0).number, (channel_number{number, number}));
  }
  for (const int number : {-32769, 32768}) {
    line_up_service service = service_named("A", 1);
    service.number = channel_number{number, 0};
    const filled_list filled = fill_list(line_up_of({service}), lost);
    ASSERT_EQ(filled.skipped.size(), 1U);
    EXPECT_EQ(filled.skipped[0].reason, "channel number " + std::to_string(number) + "-0 is beyond 32767");
  }
}

TEST_F(LineUp, FavouritesKeepTheirOrderAndNumbers) {
  line_up given = line_up_of({service_named("A", 1), service_named("B", 2), service_named("C", 3)});
  given.favourites = {{"Films", {{2, {30, 1}}, {0, {10, 0}}}}, {"Empty", {}}};

  fill_list(given, lost);

  EXPECT_EQ(service_ids(VIEW_FAVOURITE), (std::vector<int>{3, 1}));
  EXPECT_EQ(majors(VIEW_FAVOURITE), (std::vector<int>{30, 10}));
  EXPECT_EQ(list.favorite_vch[0][1].favorite_id, 1);
  EXPECT_EQ(tool_test::taken(list).favourites, given.favourites);
  EXPECT_EQ(losses(lost), row_list{});
}

TEST_F(LineUp, AFavouriteWithoutNumberShowsTheServices) {
  line_up given = line_up_of({service_named("A", 1)});
  given.services[0].number = channel_number{55, 5};
  given.favourites = {{"Films", {{0, {}}}}};

  fill_list(given, lost);

  EXPECT_EQ(list.favorite_vch[0][0].major_ch_num, 55);
  EXPECT_EQ(list.favorite_vch[0][0].minor_ch_num, 5);
}

TEST_F(LineUp, FavouriteGroupsEndAtTheirTable) {
  line_up given = line_up_of({service_named("A", 1)});
  for (int n = 0; n < MAX_FAV; ++n) {
    given.favourites.push_back({"Group " + std::to_string(n), {{0, {}}}});
  }
  EXPECT_TRUE(fill_list(given, lost).is_whole());

  given.favourites.push_back({"One more", {{0, {}}}});

  EXPECT_EQ(fill_list(given, lost).left_out,
            (row_list{"the list of favourite groups is full: it holds 20, 1 more are left out"}));
  EXPECT_EQ(list.favorite_group_num, MAX_FAV);
}

TEST_F(LineUp, AFavouriteGroupEndsAtItsView) {
  std::vector<line_up_service> services;
  favourite_group group = {"Films", {}};
  for (int n = 0; n < MAX_FAV_NUM; ++n) {
    services.push_back(service_named("A", n));
    group.entries.push_back({static_cast<std::size_t>(n), {}});
  }
  services.push_back(service_named("A", MAX_FAV_NUM));
  line_up given = line_up_of(services);
  given.favourites = {group};
  EXPECT_TRUE(fill_list(given, lost).is_whole());

  given.favourites[0].entries.push_back({MAX_FAV_NUM, {}});

  EXPECT_EQ(fill_list(given, lost).left_out,
            (row_list{"favourite groups are full: each holds 40, 1 more favourites are left out"}));
  EXPECT_EQ(list.favorite_vnumber[0], MAX_FAV_NUM);
}

TEST_F(LineUp, AFavouriteOfADuplicateShowsTheFirst) {
  line_up given = line_up_of({service_named("A", 1), service_named("B", 2), service_named("A", 1)});
  given.favourites = {{"Films", {{2, {}}}}};

  fill_list(given, lost);

  EXPECT_EQ(service_ids(VIEW_FAVOURITE), (std::vector<int>{1}));
}

TEST_F(LineUp, GenresAndCountriesEndAtTheirTables) {
  std::vector<line_up_service> services;
  for (int n = 0; n <= MAX_COUNTRY; ++n) {
    line_up_service service = service_named("A", n);
    service.genre = "Genre " + std::to_string(n % (MAX_GENRE + 2));
    service.country = "Country " + std::to_string(n);
    services.push_back(service);
  }

  const filled_list filled = fill_list(line_up_of(services), lost);

  EXPECT_EQ(filled.left_out, (row_list{"the list of genres is full: it holds 50, 2 more are left out",
                                       "the list of countries is full: it holds 200, 1 more are left out"}));
  EXPECT_EQ(tool_test::taken(list).services[0].genre, "Genre 0");
  EXPECT_EQ(tool_test::taken(list).services[MAX_COUNTRY - 1].country, "Country 199");
  EXPECT_EQ(tool_test::taken(list).services[MAX_COUNTRY].country, "");
}

TEST_F(LineUp, SourcesAvoidIndexesThatAreGiven) {
  line_up_service given = service_named("A", 1);
  given.source = "S13.5E";
  given.fields.net_index = 1;
  line_up_service numbered = service_named("B", 2);
  numbered.source = "S31.0E";
  line_up_service same = service_named("C", 3);
  same.source = "S13.5E";

  fill_list(line_up_of({given, numbered, same}), lost);

  EXPECT_EQ(list.vch[0].net_index, 1);
  EXPECT_EQ(list.vch[1].net_index, 2);
  EXPECT_EQ(list.vch[2].net_index, 1);
}

TEST_F(LineUp, ARandomOneComesBack) {
  for (unsigned seed = 0; seed < 50; ++seed) {
    const line_up given = tool_test::line_up_source(seed).list(40);
    ASSERT_TRUE(fill_list(given, lost).is_whole()) << seed;
    EXPECT_EQ(tool_test::taken(list), given) << seed;
  }
  EXPECT_EQ(losses(lost), row_list{});
}

}  // namespace
