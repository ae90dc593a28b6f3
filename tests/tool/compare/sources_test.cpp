// Which source of one list is which of another, told by names, orbital positions and original network ids.
#include "chlist/compare/sources.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using chlist::line_up;
using chlist::line_up_network;
using chlist::pair_sources;
using chlist::paired_source;

line_up of(std::vector<line_up_network> networks) {
  line_up list;
  list.networks = std::move(networks);
  return list;
}

// Whether two names tell one position: the networks have nothing else alike.
bool are_at_one_position(const std::string &first, const std::string &second) {
  return !pair_sources(of({{1, 10, first}}), of({{2, 20, second}})).at(0).is_new;
}

// Whether a name tells a position at all: a source elsewhere is another one, though its network id be the same.
bool tells_a_position(const std::string &name) {
  const std::string elsewhere = "S5.7E";
  return pair_sources(of({{1, 10, elsewhere}}), of({{2, 10, name}})).at(0).is_new;
}

TEST(Sources, APositionIsReadInEverySpelling) {
  for (const char *name : {"19.2E", "S19.2E", "Astra 19.2E", "Astra 1 19.2E", "S19,2E", "19.2 East", "19.2east",
                           "19.2\u00B0e", "19.2 \u00B0 E", "19.2Ost", "19.2 est", "19.2E (Astra)"}) {
    EXPECT_TRUE(are_at_one_position(name, "Dish at 19.2 E")) << name;
  }
  for (const char *name : {"0.8W", "S0.8w", "0,8 West", "Thor 0.8\u00B0Ouest"}) {
    EXPECT_TRUE(are_at_one_position(name, "Thor at 0.8 W")) << name;
  }
  EXPECT_TRUE(are_at_one_position("S13E", "Hotbird 13.0E"));
}

TEST(Sources, AnotherPositionIsAnotherSource) {
  for (const char *name : {"S19.3E", "S19.1E", "S18.2E", "S20.2E", "S9.2E", "S19.2W", "S119.2E"}) {
    EXPECT_FALSE(are_at_one_position("S19.2E", name)) << name;
    EXPECT_TRUE(tells_a_position(name)) << name;
  }
}

TEST(Sources, PositionsGoHalfAroundTheEarth) {
  for (const char *name : {"S0E", "S0.0W", "S179.9E", "S180E", "S180.0W"}) {
    EXPECT_TRUE(tells_a_position(name)) << name;
  }
  for (const char *name : {"S180.1E", "S180.9W", "S181E", "S360W", "S99999999999E"}) {
    EXPECT_FALSE(tells_a_position(name)) << name;
  }
}

TEST(Sources, ANumberWithoutADirectionIsNoPosition) {
  for (const char *name :
       {"", "Astra", "E", "Astra 19.2", "19.2 N", "19.2 Elsewhere", "19.2 Wide", "19.E", "19.25E", "19,25E"}) {
    EXPECT_FALSE(tells_a_position(name)) << name;
  }
}

TEST(Sources, NamesCountMoreThanPositionsAndThoseMoreThanIds) {
  const line_up first = of({{1, 10, "A 19.2E"}, {2, 20, "B 19.2E"}, {3, 30, ""}});
  const line_up second = of({{4, 10, ""}, {5, 10, "C 19.2E"}, {6, 10, "B 19.2E"}});

  const std::vector<paired_source> pairs = pair_sources(first, second);

  ASSERT_EQ(pairs.size(), 3U);
  EXPECT_EQ(pairs[2].other, 2);
  EXPECT_EQ(pairs[1].other, 1);
  EXPECT_TRUE(pairs[0].is_new);
}

TEST(Sources, OfSeveralThatAreAsLikeTheOneWithTheSameIndexIsTaken) {
  const line_up list = of({{1, 10, ""}, {2, 10, ""}});

  const std::vector<paired_source> pairs = pair_sources(list, of({{2, 10, ""}, {1, 10, ""}}));

  ASSERT_EQ(pairs.size(), 2U);
  EXPECT_FALSE(is_any_renumbered(pairs));
}

TEST(Sources, ANewOneKeepsItsIndexOrGetsTheFirstThatIsFree) {
  const line_up first = of({{1, 10, "A"}, {2, 20, "B"}});

  EXPECT_EQ(pair_sources(first, of({{7, 30, "C"}})).at(0).other, 7);
  EXPECT_EQ(pair_sources(first, of({{1, 30, "C"}})).at(0).other, 3);
}

TEST(Sources, AllIndexesButTheOneThatStandsForAllAreGiven) {
  std::vector<line_up_network> all;
  for (int index = 1; index <= 253; ++index) {
    all.push_back({static_cast<std::uint8_t>(index), 10, "S" + std::to_string(index)});
  }
  const line_up one_more = of({{1, 30, "A"}});
  EXPECT_EQ(pair_sources(of(all), one_more).at(0).other, 254);

  all.push_back({254, 10, "S254"});
  EXPECT_EQ(pair_sources(of(all), one_more).at(0).other, 1);
}

TEST(Sources, OnePairedByItsIdsAloneIsRenamedUnlessItsNameStays) {
  const auto is_renamed = [](const char *before, const char *after) {
    return pair_sources(of({{1, 10, before}}), of({{1, 10, after}})).at(0).is_renamed;
  };

  EXPECT_TRUE(is_renamed("Astra", "Turksat"));
  EXPECT_TRUE(is_renamed("Astra", ""));
  EXPECT_FALSE(is_renamed("Astra", "ASTRA"));
  EXPECT_FALSE(is_renamed("Astra 19.2E", "S19.2E"));
  EXPECT_FALSE(is_renamed("", ""));
}

TEST(Sources, WhatIsRenumberedIsEveryNetworkServiceAndEntry) {
  line_up list = of({{1, 10, "A"}, {2, 20, "B"}});
  list.services.resize(2);
  list.services[0].fields.net_index = 1;
  list.services[1].fields.net_index = 9;  // not among the pairs
  list.views[0].entries.resize(1);
  list.views[0].entries[0].id.net_index = 2;
  list.favourites.resize(1);
  list.favourites[0].entries.resize(1);
  list.favourites[0].entries[0].id.net_index = 1;

  renumber_sources(list, pair_sources(of({{2, 10, "A"}, {1, 20, "B"}}), list));

  EXPECT_EQ(list.networks[0].net_index, 2);
  EXPECT_EQ(list.networks[1].net_index, 1);
  EXPECT_EQ(list.services[0].fields.net_index, 2);
  EXPECT_EQ(list.services[1].fields.net_index, 9);
  EXPECT_EQ(list.views[0].entries[0].id.net_index, 1);
  EXPECT_EQ(list.favourites[0].entries[0].id.net_index, 2);
}

TEST(Sources, APairIsToldInWords) {
  EXPECT_EQ(text_of(paired_source{"S19.2E", 2, 1}), "2 (\"S19.2E\") is 1 in the other list");
  EXPECT_EQ(text_of(paired_source{"S19.2E", 2, 3, true}),
            "2 (\"S19.2E\") is 3 in the other list, which does not have it");
}

}  // namespace
