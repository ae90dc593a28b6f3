// A line-up fills the list in memory, and is taken from it again.
#include "chlist/exchange/line_up.h"

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "channel/store/hierarchy.h"
#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/list_line_up.h"
#include "tool/exchange/line_ups.h"

namespace {

using chlist::channel_number;
using chlist::favourite_group;
using chlist::filled_list;
using chlist::line_up;
using chlist::line_up_service;
using chlist::loss_counts;
using test_support::majors;
using test_support::service_ids;
using tool_test::line_up_of;
using tool_test::losses;
using tool_test::random_line_up;
using tool_test::service_named;

using LineUp = tool_test::line_up_test;
using row_list = std::vector<std::string>;

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
  EXPECT_EQ(take_line_up(lost), given);
  EXPECT_EQ(losses(lost), row_list{});
}

TEST_F(LineUp, AServiceInNoViewStaysInNone) {
  line_up_service hidden = service_named("Hidden", 2);
  hidden.is_listed = false;
  const line_up given = line_up_of({service_named("Shown", 1), hidden});

  fill_list(given, lost);

  EXPECT_EQ(service_ids(VIEW_ALL), (std::vector<int>{1}));
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1}));
  const line_up taken = take_line_up(lost);
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
    EXPECT_EQ(take_line_up(lost).services.at(0).number, (channel_number{number, number}));
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
  EXPECT_EQ(take_line_up(lost).favourites, given.favourites);
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

TEST_F(LineUp, WhatFavouritesLoseIsCounted) {
  line_up given = line_up_of({service_named("A", 1)});
  given.favourites = {{"Films", {{0, {}}, {0, {}}}}, {"films", {}}, {std::string(98, 'x'), {}}};

  fill_list(given, lost);

  EXPECT_EQ(losses(lost), (row_list{"services that are twice in a favourite group: 1",
                                    "favourite groups that are joined to one of the same name: 1",
                                    "favourite group names beyond 97 bytes: 1"}));
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
  EXPECT_EQ(take_line_up(lost).services[0].genre, "Genre 0");
  EXPECT_EQ(take_line_up(lost).services[MAX_COUNTRY - 1].country, "Country 199");
  EXPECT_EQ(take_line_up(lost).services[MAX_COUNTRY].country, "");
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

TEST_F(LineUp, WhatALineUpHasNoPlaceForIsCounted) {
  const test_support::service_data data = {.service_id = 1, .name = "A"};
  channel_st &service = *test_support::file_service(data);
  service.provider_id = -1;
  const virtual_channel_st entry = test_support::entry_of(service, 1);
  test_support::append_entry(VIEW_ALL, entry);
  test_support::append_entry(VIEW_ALL, test_support::entry_of(service, 2, 0, 5));
  test_support::append_entry(VIEW_ALL, {});
  test_support::append_entry(VIEW_USER, entry);
  test_support::append_entry(VIEW_PROMOTION, entry);
  test_support::append_entry(VIEW_TV, test_support::entry_of(service, 8));
  test_support::append_entry(VIEW_FAVOURITE, entry);
  add_provider_info(chlist::group_named("Nobody's"));
  list.use_tuner = 3;
  ASSERT_EQ(add_fav_group_info(chlist::group_named("Films")), 0);
  test_support::append_entry(VIEW_FAVOURITE, {});
  test_support::append_entry(VIEW_FAVOURITE + 1, entry);

  const line_up taken = take_line_up(lost);

  EXPECT_EQ(taken.services.size(), 1U);
  EXPECT_EQ(losses(lost),
            (row_list{"tags of entries: 1", "further entries of a service in the ALL view: 1",
                      "entries of the ALL view that show no service: 1", "favourites that show no service: 1",
                      "favourites of no group: 1", "entries of the TV view, which differs from the ALL view: 1",
                      "entries of the USER view: 1", "entries of the promotion view: 1",
                      "groups that no service is in: 1", "settings of the receiver: 1"}));
}

network_ch_st &network_in(const channel_list_st &list) {
  return *get_network_ch_info(list.vch[0].net_index, list.vch[0].network_id);
}

TEST_F(LineUp, WhatRecordsSayBesideTheirServicesIsCounted) {
  const struct {
    const char *what;
    void (*change)(channel_list_st &list);
  } cases[] = {
      {"settings of the receiver", [](channel_list_st &l) { l.use_tuner = 0; }},
      {"settings of the receiver", [](channel_list_st &l) { l.bouquet_id = 0; }},
      {"settings of the receiver", [](channel_list_st &l) { l.ch_type = 1; }},
      {"settings of the receiver", [](channel_list_st &l) { l.use_group_list = GROUP_GENRE; }},
      {"settings of the receiver", [](channel_list_st &l) { l.service_type = 2; }},
      {"settings of the receiver", [](channel_list_st &l) { l.net_index = 1; }},
      {"settings of the receiver", [](channel_list_st &l) { l.sub_group_id = 0; }},
      {"settings of the receiver", [](channel_list_st &l) { l.vch_type = VIEW_TV; }},
      {"reserved bytes of the list", [](channel_list_st &l) { l.reserved_459728[303] = 1; }},
      {"reserved bytes of groups", [](channel_list_st &l) { l.provider[0].reserved_0 = 1; }},
      {"ids of favourite groups", [](channel_list_st &l) { l.favorite_group[0].id = 7; }},
      {"lengths that are not those of their texts", [](channel_list_st &l) { l.provider[0].name_len = 9; }},
      {"lengths that are not those of their texts", [](channel_list_st &l) { l.vch[0].rch->name[1].name_len = 9; }},
      {"ids of groups of services", [](channel_list_st &l) { l.provider[0].id = l.vch[0].rch->provider_id = 5; }},
      {"ids of groups of services", [](channel_list_st &l) { l.vch[0].rch->genre_id = 5; }},
      {"reserved bytes of entries", [](channel_list_st &l) { l.vch[0].reserved_7 = 1; }},
      {"reserved bytes of entries", [](channel_list_st &l) { l.favorite_vch[0][0].reserved_13 = 1; }},
      {"position keys of entries", [](channel_list_st &l) { l.favorite_vch[0][0].favorite_id = 3; }},
      {"identities of entries that differ from their service's", [](channel_list_st &l) { l.vch[0].frequency += 9; }},
      {"reserved bytes of names", [](channel_list_st &l) { l.vch[0].rch->name[0].reserved_97 = 1; }},
      {"reserved bytes of networks", [](channel_list_st &l) { network_in(l).reserved_88[327] = 1; }},
      {"reserved bytes of transponders",
       [](channel_list_st &l) { (*channel::transponders_of(network_in(l)).begin()).reserved_32[303] = 1; }},
      {"identities of transponders and networks that differ from their service's",
       [](channel_list_st &l) { (*channel::transponders_of(network_in(l)).begin()).frequency += 9; }},
  };
  line_up given = line_up_of({service_named("A", 1)});
  given.services[0].provider = "Meridian";
  given.favourites = {{"Films", {{0, {}}}}};

  for (const auto &each : cases) {
    fill_list(given, lost);
    each.change(list);
    loss_counts of_taking;

    take_line_up(of_taking);

    EXPECT_EQ(losses(of_taking), (row_list{std::string(each.what) + ": 1"}));
  }
}

TEST_F(LineUp, ARandomOneComesBack) {
  for (unsigned seed = 0; seed < 50; ++seed) {
    const line_up given = random_line_up(seed, 40);
    ASSERT_TRUE(fill_list(given, lost).is_whole()) << seed;
    EXPECT_EQ(take_line_up(lost), given) << seed;
  }
  EXPECT_EQ(losses(lost), row_list{});
}

TEST(LossCounts, AreByKindInOrderOfAppearance) {
  loss_counts counts;
  counts.add("locks");
  counts.add("names", 0);
  counts.leave_out("locks", 2);
  counts.add("tags", 3);
  counts.add("locks");

  EXPECT_EQ(losses(counts), (row_list{"locks: 2", "locks: 2", "tags: 3"}));
  EXPECT_TRUE(counts.has_left_out());
  EXPECT_TRUE(counts.rows()[1].is_left_out);
}

}  // namespace
