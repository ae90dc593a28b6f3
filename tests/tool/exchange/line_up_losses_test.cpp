// What is lost between a line-up and the list in memory: every loss is counted, by its kind.
#include "chlist/exchange/loss_counts.h"

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "channel/store/hierarchy.h"
#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/list_exchange.h"
#include "tool/exchange/line_ups.h"

namespace {

using chlist::line_up;
using chlist::loss_counts;
using tool_test::line_up_of;
using tool_test::losses;
using tool_test::row_list;
using tool_test::service_named;

using LineUp = tool_test::line_up_test;

TEST_F(LineUp, WhatFavouritesLoseIsCounted) {
  line_up given = line_up_of({service_named("A", 1)});
  given.favourites = {{"Films", {{0, {}}, {0, {}}}}, {"films", {}}, {std::string(98, 'x'), {}}};

  fill_list(given, lost);

  EXPECT_EQ(losses(lost), (row_list{"services that are twice in a favourite group: 1",
                                    "favourite groups that are joined to one of the same name: 1",
                                    "favourite group names beyond 97 bytes: 1"}));
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

  const line_up taken = take_line_up(list, lost);

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

    take_line_up(list, of_taking);

    EXPECT_EQ(losses(of_taking), (row_list{std::string(each.what) + ": 1"}));
  }
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
