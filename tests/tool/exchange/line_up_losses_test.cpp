// What is lost between a line-up and the list in memory: every loss is counted, by its kind.
#include "chlist/exchange/loss_counts.h"

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "channel/store/hierarchy.h"
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

// Whatever a list says and CSV does not bring back.
TEST_F(LineUp, WhatDoesNotComeBackIsCounted) {
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

  EXPECT_EQ(losses(tool_test::export_of(list, "csv").lost),
            (row_list{"number: 1", "entries of the promotion view: 1", "entries of the USER view: 1",
                      "entries of favourite groups: 1", "minor: 1", "tag: 1", "favourite_key: 1",
                      "entries without a service: 2", "provider group: 1", "favourite group: 1", "setting: tuner: 1"}));
}

network_ch_st &network_in(const channel_list_st &list) {
  return *get_network_ch_info(list.vch[0].net_index, list.vch[0].network_id);
}

TEST_F(LineUp, WhatRecordsSayBesideTheirServicesIsCounted) {
  constexpr const char *only_the_receiver = "records with values that only the receiver knows";
  constexpr const char *length = "lengths that are not those of their texts";
  constexpr const char *identity = "entries, transponders and networks that name a service otherwise than it does";
  const struct {
    const char *what;
    void (*change)(channel_list_st &list);
  } cases[] = {
      {"setting: tuner", [](channel_list_st &l) { l.use_tuner = 0; }},
      {"setting: bouquet id", [](channel_list_st &l) { l.bouquet_id = 0; }},
      {"setting: channel type", [](channel_list_st &l) { l.ch_type = 1; }},
      {"setting: group kind in use", [](channel_list_st &l) { l.use_group_list = GROUP_GENRE; }},
      {"setting: service type in use", [](channel_list_st &l) { l.service_type = 2; }},
      {"setting: network index in use", [](channel_list_st &l) { l.net_index = 1; }},
      {"setting: group id in use", [](channel_list_st &l) { l.sub_group_id = 0; }},
      {"setting: current view", [](channel_list_st &l) { l.vch_type = VIEW_TV; }},
      {only_the_receiver, [](channel_list_st &l) { l.reserved_459728[303] = 1; }},
      {only_the_receiver, [](channel_list_st &l) { l.provider[0].reserved_0 = 1; }},
      {"id of a favourite group", [](channel_list_st &l) { l.favorite_group[0].id = 7; }},
      {length, [](channel_list_st &l) { l.provider[0].name_len = 9; }},
      {length, [](channel_list_st &l) { l.vch[0].rch->name[1].name_len = 9; }},
      {"id of a provider group", [](channel_list_st &l) { l.provider[0].id = l.vch[0].rch->provider_id = 5; }},
      {"genre_id", [](channel_list_st &l) { l.vch[0].rch->genre_id = 5; }},
      {only_the_receiver, [](channel_list_st &l) { l.vch[0].reserved_7 = 1; }},
      {only_the_receiver, [](channel_list_st &l) { l.favorite_vch[0][0].reserved_13 = 1; }},
      {"favourite_key", [](channel_list_st &l) { l.favorite_vch[0][0].favorite_id = 3; }},
      {identity, [](channel_list_st &l) { l.vch[0].frequency += 9; }},
      {only_the_receiver, [](channel_list_st &l) { l.vch[0].rch->name[0].reserved_97 = 1; }},
      {only_the_receiver, [](channel_list_st &l) { l.vch[0].rch->reserved_300[0] = 1; }},
      {only_the_receiver, [](channel_list_st &l) { l.vch[0].rch->reserved_pid = 1; }},
      {only_the_receiver, [](channel_list_st &l) { network_in(l).reserved_88[327] = 1; }},
      {only_the_receiver,
       [](channel_list_st &l) { (*channel::transponders_of(network_in(l)).begin()).reserved_32[303] = 1; }},
  };
  line_up given = line_up_of({service_named("A", 1)});
  given.services[0].provider = "Meridian";
  given.favourites = {{"Films", {{0, {}}}}};

  for (const auto &each : cases) {
    fill_list(given, lost);
    each.change(list);

    EXPECT_EQ(losses(tool_test::export_of(list, "csv").lost), (row_list{std::string(each.what) + ": 1"}));
  }
}

TEST_F(LineUp, ATransponderThatIsNotTheServicesIsCounted) {
  fill_list(line_up_of({service_named("A", 1)}), lost);
  (*channel::transponders_of(network_in(list)).begin()).frequency += 9;

  EXPECT_EQ(losses(tool_test::export_of(list, "csv").lost),
            (row_list{"frequency of a transponder: 1",
                      "entries, transponders and networks that name a service otherwise than it does: 1"}));
}

TEST_F(LineUp, TextsInOtherTablesComeBackInUtf8AndThatIsCounted) {
  fill_list(line_up_of({service_named("News", 1)}), lost);
  channel_st &service = *list.vch[0].rch;
  std::ranges::copy(std::string_view("\x10\0\x02\xA3\xF3"
                                     "d\xBC",
                                     7),
                    service.name[0].text);
  std::ranges::copy(std::string_view("\x05\xE7\x80"), service.name[1].text);

  const line_up given = tool_test::taken(list);

  EXPECT_EQ(given.services.at(0).name, "Łódź");
  EXPECT_EQ(given.services.at(0).short_name, "ç");
  EXPECT_EQ(losses(tool_test::export_of(list, "csv").lost),
            (row_list{"name_table: 1", "short_name_table: 1", "lengths that are not those of their texts: 2"}));
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
