// Services and views by what somebody types.
#include "chlist/line_up/selection.h"

#include <base/verbosity.h>
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "channel/store/hierarchy.h"
#include "chlist/line_up/list_contents.h"
#include "chlist/line_up/list_line_up.h"
#include "support/providers.h"
#include "support/store_builder.h"

namespace {

using chlist::label_of;
using chlist::line_up_in_memory;
using test_support::append_entry;
using test_support::entry_of;
using test_support::file_service;
using test_support::named_group;

// Places in the line-up are those of the records in the list.
std::vector<channel_st *> records() {
  std::vector<channel_st *> records;
  for (const channel::filed_service &filed : channel::all_services_of(get_channel_list()->network_list)) {
    records.push_back(&filed.service);
  }
  return records;
}

std::vector<channel_st *> services_named(std::string_view text, std::int8_t view = VIEW_ALL) {
  std::vector<channel_st *> named;
  for (const std::size_t place : chlist::services_named(line_up_in_memory(), text, view)) {
    named.push_back(records()[place]);
  }
  return named;
}

channel_st &service_named(std::string_view text) {
  return *records()[chlist::service_named(line_up_in_memory(), text)];
}

std::int8_t view_named(std::string_view text) { return chlist::view_named(line_up_in_memory(), text); }

template <class Action>
std::string error_of(const Action &action) {
  try {
    action();
  } catch (const std::runtime_error &error) {
    return error.what();
  }
  return "no error";
}

class Selection : public test_support::store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    verbosity_map[7] = -1;
    news = file_service({.service_id = 1, .name = "News"});
    news_hd = file_service({.service_id = 2, .name = "News HD"});
    films = file_service({.service_id = 3,
                          .name = "\x05"
                                  "Films"});
    five = file_service({.service_id = 5, .name = "5"});
    append_entry(VIEW_ALL, entry_of(*news, 7));
    append_entry(VIEW_ALL, entry_of(*news_hd, 7, 2));
    append_entry(VIEW_ALL, entry_of(*films, 9, 1));
    append_entry(VIEW_ALL, entry_of(*news, 9, 2));
    append_entry(VIEW_TV, entry_of(*films, 7));
  }

  using services = std::vector<channel_st *>;

  channel_st *news = nullptr;
  channel_st *news_hd = nullptr;
  channel_st *films = nullptr;
  channel_st *five = nullptr;
};

TEST_F(Selection, ANumberIsLookedUpInTheView) {
  EXPECT_EQ(services_named("7"), services{news});
  EXPECT_EQ(services_named("7-2"), services{news_hd});
  EXPECT_EQ(services_named("7", VIEW_TV), services{films});
  EXPECT_EQ(services_named("7-2", VIEW_TV), services{});
}

TEST_F(Selection, AMajorNumberAloneIsEveryMinorWhenThereIsNoZero) {
  EXPECT_EQ(services_named("9"), (services{films, news}));
}

TEST_F(Selection, ANumberThatTheViewLacksIsAName) { EXPECT_EQ(services_named("5"), services{five}); }

TEST_F(Selection, ANumberThatTheViewLacksIsNoPartOfAName) {
  file_service({.service_id = 6, .name = "News 24"});

  EXPECT_TRUE(services_named("24").empty());
}

TEST_F(Selection, ANumberThatTwoServicesHaveIsBoth) {
  append_entry(VIEW_ALL, entry_of(*five, 7));

  EXPECT_EQ(services_named("7"), (services{news, five}));
}

TEST_F(Selection, AWholeNameGoesBeforeAPart) {
  EXPECT_EQ(services_named("news"), services{news});
  EXPECT_EQ(services_named("NEWS H"), services{news_hd});
  EXPECT_EQ(services_named("ew"), (services{news, news_hd}));
  EXPECT_EQ(services_named("films"), services{films});
}

TEST_F(Selection, AFavouriteGroupThatAListLacksHasNoEntries) {
  const chlist::line_up without_groups;
  EXPECT_TRUE(chlist::entries_of(without_groups, VIEW_FAVOURITE).empty());
}

TEST_F(Selection, WhatWasRemovedIsFoundNoMore) {
  const chlist::line_up searched = line_up_in_memory();
  chlist::service_finder finder(searched);
  const std::size_t place = finder.one_named("Films");
  finder.was_removed(place);

  for (const char *text : {"Films", "ilm", "1:1:100:11000000H:3"}) {
    EXPECT_TRUE(finder.named(text, VIEW_ALL).empty()) << text;
  }
}

TEST_F(Selection, AnIdentityIsFoundWithTheToleranceOfFrequencies) {
  EXPECT_EQ(services_named("1:1:100:11000000H:3"), services{films});
  EXPECT_EQ(services_named("1:1:100:11002499H:3"), services{films});
  EXPECT_EQ(services_named("1:1:100:11002500H:3"), services{});
  EXPECT_EQ(services_named("1:1:100:11000000V:3"), services{});
}

TEST_F(Selection, AnIdentityIsThatOfOneSourceNetworkAndService) {
  EXPECT_EQ(services_named("2:1:100:11000000H:3"), services{});
  EXPECT_EQ(services_named("1:2:100:11000000H:3"), services{});
  EXPECT_EQ(services_named("1:1:100:11000000H:4"), services{});
}

TEST_F(Selection, WithoutAFrequencyTheTransportStreamIdTells) {
  EXPECT_EQ(services_named("1:1:200:11000000H:3"), services{films});
  EXPECT_EQ(services_named("1:1:100:0V:3"), services{films});
  EXPECT_EQ(services_named("1:1:200:0H:3"), services{});
}

TEST_F(Selection, WhatIsRenamedIsFoundByItsNewNameInItsPlace) {
  chlist::line_up searched = line_up_in_memory();
  chlist::service_finder finder(searched);
  const std::size_t first = finder.one_named("News");
  const std::size_t second = finder.one_named("Films");
  searched.services[first].name = "Films";
  finder.was_renamed(first);

  EXPECT_EQ(finder.named("Films", VIEW_ALL), (std::vector{first, second}));
  EXPECT_EQ(finder.named("ilm", VIEW_ALL), (std::vector{first, second}));
  EXPECT_EQ(finder.one_named("News"), finder.one_named("News HD"));
}

TEST_F(Selection, NothingNamesNothing) {
  news->name[0] = {};
  EXPECT_EQ(services_named(""), services{});
  EXPECT_EQ(services_named("Sport"), services{});
  EXPECT_EQ(services_named("32768"), services{});
  EXPECT_EQ(services_named("-7"), services{});
  EXPECT_EQ(services_named("7-"), services{});
  EXPECT_EQ(services_named("7-2x"), services{});
}

TEST_F(Selection, TheOneServiceIsHandedOut) { EXPECT_EQ(&service_named("News"), news); }

TEST_F(Selection, NoServiceAndSeveralAreRefused) {
  EXPECT_EQ(error_of([] { service_named("Sport"); }), "no service has the number, the name or the identity \"Sport\"");
  EXPECT_EQ(error_of([] { service_named("ews"); }), "\"ews\" could be any of 2 services:\n"
                                                    "  7, 9-2  1:1:100:11000000H:1  \"News\"\n"
                                                    "     7-2  1:1:100:11000000H:2  \"News HD\"");
}

TEST_F(Selection, OfManyCandidatesTwentyAreListed) {
  for (std::uint16_t id = 100; id < 120; ++id) {
    file_service({.service_id = id, .name = "Other"});
  }
  const std::string twenty = error_of([] { service_named("Other"); });
  file_service({.service_id = 120, .name = "Other"});
  const std::string more = error_of([] { service_named("Other"); });

  EXPECT_EQ(std::ranges::count(twenty, '\n'), 20);
  EXPECT_EQ(twenty.find("more"), std::string::npos);
  EXPECT_EQ(std::ranges::count(more, '\n'), 21);
  EXPECT_TRUE(more.ends_with("\n  and 1 more")) << more;
}

class ViewNames : public test_support::store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    list.favorite_group[0] = named_group("Films", 4);
    list.favorite_group[1] = named_group("7", 5);
    list.favorite_group_num = 2;
  }
};

TEST_F(ViewNames, EveryViewHasOne) {
  EXPECT_EQ(view_named("all"), VIEW_ALL);
  EXPECT_EQ(view_named("TV"), VIEW_TV);
  EXPECT_EQ(view_named("radio"), VIEW_RADIO);
  EXPECT_EQ(view_named("user"), VIEW_USER);
  EXPECT_EQ(view_named("promo"), VIEW_PROMOTION);
}

TEST_F(ViewNames, FavouriteGroupsGoByNameThenByPosition) {
  EXPECT_EQ(view_named("fav:films"), VIEW_FAVOURITE);
  EXPECT_EQ(view_named("fav:7"), VIEW_FAVOURITE + 1);
  EXPECT_EQ(view_named("fav:1"), VIEW_FAVOURITE);
  EXPECT_EQ(view_named("fav:20"), VIEW_FAVOURITE_LAST);
}

TEST_F(ViewNames, AGroupWhoseNameAnotherHasIsRefused) {
  list.favorite_group[0] = named_group("Twin", 1);
  list.favorite_group[1] = named_group("twin", 2);
  list.favorite_group_num = 2;

  EXPECT_EQ(error_of([] { static_cast<void>(view_named("fav:Twin")); }),
            "several favourite groups are named \"Twin\": name one by its position, fav:1");
  EXPECT_EQ(view_named("fav:2"), VIEW_FAVOURITE + 1);
}

TEST_F(ViewNames, AnUnknownOneIsRefusedWithThoseThatThereAre) {
  const std::string known = "here are all, tv, radio, user, promo, fav:1 to fav:20, fav:Films, fav:7";
  for (const char *name : {"", "work", "fav:00", "fav:21", "fav:-1", "fav"}) {
    EXPECT_EQ(error_of([name] { view_named(name); }), "no view \"" + std::string(name) + "\": t" + known);
  }
  EXPECT_EQ(error_of([] { view_named("fav:Film"); }), "no view \"fav:Film\": did you mean \"fav:Films\"? T" + known);
}

TEST_F(ViewNames, AreReadAsTheyAreWritten) {
  for (const int view : {+VIEW_ALL, +VIEW_TV, +VIEW_RADIO, +VIEW_USER, +VIEW_PROMOTION}) {
    EXPECT_EQ(view_named(label_of(*chlist::name_of_view(static_cast<std::int8_t>(view)))), view);
  }
}

TEST_F(ViewNames, AreThoseOfTheCodesThatViewsHave) {
  EXPECT_EQ(label_of(chlist::name_of_view(VIEW_FAVOURITE).value()), "favourites 1");
  EXPECT_EQ(label_of(chlist::name_of_view(VIEW_FAVOURITE_LAST).value()), "favourites 20");
  EXPECT_FALSE(chlist::name_of_view(VIEW_FAVOURITE_LAST + 1).has_value());
  EXPECT_FALSE(chlist::name_of_view(-1).has_value());
}

TEST_F(ViewNames, OfFavouriteGroupsOnlyThoseThatThereAreAreNamedAsGroups) {
  EXPECT_EQ(chlist::favourite_group_named(line_up_in_memory(), "films"), 0U);
  EXPECT_EQ(chlist::favourite_group_named(line_up_in_memory(), "2"), 1U);
  EXPECT_EQ(error_of([] { chlist::favourite_group_named(line_up_in_memory(), "3"); }),
            "no favourite group \"3\": there are Films, 7");
  EXPECT_EQ(error_of([] { chlist::favourite_group_named(line_up_in_memory(), "Film"); }),
            "no favourite group \"Film\": did you mean \"Films\"? There are Films, 7");
  EXPECT_EQ(error_of([] { chlist::favourite_group_named({}, "Films"); }),
            "no favourite group \"Films\": the list has none");
}

}  // namespace
