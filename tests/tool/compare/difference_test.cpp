// Line-ups of the list in memory and what differs between them: for every field that is compared, a change is seen.
#include "chlist/compare/difference.h"

#include <channel/channel.h>
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <vector>

#include "chlist/compare/pairing.h"
#include "chlist/line_up/list_line_up.h"
#include "support/full_list.h"
#include "support/providers.h"
#include "support/random_store.h"
#include "support/store_builder.h"

namespace {

using chlist::change;
using chlist::change_kind;
using chlist::differences;
using chlist::line_up;
using chlist::line_up_in_memory;
using test_support::append_entry;
using test_support::entry_of;
using test_support::file_service;

class Difference : public test_support::store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    news = file_service({.service_id = 1, .name = "News"});
    films = file_service({.service_id = 2, .name = "Films"});
    append_entry(VIEW_ALL, entry_of(*news, 1));
    append_entry(VIEW_ALL, entry_of(*films, 2));
  }

  // The names of the fields that an edit of the list changes, of all that differs.
  static std::vector<std::string> fields_after(const std::function<void()> &edit) {
    const line_up before = line_up_in_memory();
    edit();
    std::vector<std::string> names;
    for (const change &each : differences(before, line_up_in_memory())) {
      for (const chlist::field_change &field : each.fields) {
        names.emplace_back(field.name);
      }
    }
    return names;
  }

  // The one thing that an edit changes: what it is, its name, what says which it is in JSON, and its fields.
  static std::string changed_by(const std::function<void()> &edit) {
    const line_up before = line_up_in_memory();
    edit();
    const std::vector<change> changes = differences(before, line_up_in_memory());
    EXPECT_EQ(changes.size(), 1U);
    std::string text;
    for (const change &each : changes) {
      text += std::string(each.what) + ", " + each.name + ", " + each.subject.dump();
      for (const chlist::field_change &field : each.fields) {
        text += fmt::format(", {} ({}): {} -> {}", field.name, field.title, field.before.dump(), field.after.dump());
      }
    }
    return text;
  }

  channel_st *news = nullptr;
  channel_st *films = nullptr;
};

using names = std::vector<std::string>;

TEST_F(Difference, EveryFieldOfAServiceIsCompared) {
  EXPECT_EQ(fields_after([this] { test_support::set_name(*news, "News 24"); }), names{"name"});
  EXPECT_EQ(fields_after([this] { news->name[1].text[0] = 'N'; }), names{"short_name"});
  EXPECT_EQ(fields_after([this] { news->service_type = 25; }), names{"type"});
  EXPECT_EQ(fields_after([this] { ++news->source_type; }), names{"source_type"});
  EXPECT_EQ(fields_after([this] { ++news->ts_id; }), names{"ts_id"});
  EXPECT_EQ(fields_after([this] { ++news->frequency; }), names{"frequency"});
  EXPECT_EQ(fields_after([this] { ++news->pmt_pid; }), names{"pmt_pid"});
  EXPECT_EQ(fields_after([this] { ++news->pcr_pid; }), names{"pcr_pid"});
  EXPECT_EQ(fields_after([this] { ++news->video_pid; }), names{"video_pid"});
  EXPECT_EQ(fields_after([this] { ++news->video_tag; }), names{"video_tag"});
  EXPECT_EQ(fields_after([this] { ++news->video_ecm_pid; }), names{"video_ecm_pid"});
  EXPECT_EQ(fields_after([this] { ++news->audio_pid; }), names{"audio_pid"});
  EXPECT_EQ(fields_after([this] { ++news->audio_tag; }), names{"audio_tag"});
  EXPECT_EQ(fields_after([this] { ++news->provider_id; }), names{"provider_id"});
  EXPECT_EQ(fields_after([this] { ++news->genre_id; }), names{"genre_id"});
  EXPECT_EQ(fields_after([this] { ++news->country_id; }), names{"country_id"});
  EXPECT_EQ(fields_after([this] { ++news->user_order_key; }), names{"order_key"});
  EXPECT_EQ(fields_after([this] { news->flag ^= CHANNEL_FLAG_LOCKED; }), (names{"locked", "flags"}));
  EXPECT_EQ(fields_after([this] { news->flag ^= CHANNEL_FLAG_SKIP; }), (names{"skipped", "flags"}));
  EXPECT_EQ(fields_after([this] { news->flag ^= CHANNEL_FLAG_FTA; }), (names{"scrambled", "flags"}));
  EXPECT_EQ(fields_after([this] { news->flag ^= CHANNEL_FLAG_DSMCC; }), (names{"data", "flags"}));
  EXPECT_EQ(fields_after([this] { news->flag ^= 0x80; }), names{"flags"});
}

TEST_F(Difference, EveryFieldOfAnEntryIsCompared) {
  EXPECT_EQ(fields_after([this] { list.vch[0].major_ch_num = 9; }), names{"number"});
  EXPECT_EQ(fields_after([this] { list.vch[0].minor_ch_num = 9; }), names{"minor"});
  EXPECT_EQ(fields_after([this] { list.vch[0].vch_tag = 9; }), names{"tag"});
  EXPECT_EQ(fields_after([this] { list.vch[0].favorite_id = 9; }), names{"favourite_key"});
  EXPECT_EQ(fields_after([this] { std::swap(list.vch[0], list.vch[1]); }), names{"moved"});
  EXPECT_EQ(fields_after([this] { append_entry(VIEW_ALL, entry_of(*news, 3)); }),
            (names{"number", "minor", "tag", "favourite_key"}));
  EXPECT_EQ(fields_after([this] { list.vch[0].service_id = 99; }), (names{"number", "unresolved"}));
}

TEST_F(Difference, OfAnEntryThatComesOrGoesTheNumberAloneIsTold) {
  EXPECT_EQ(fields_after([this] { append_entry(VIEW_USER, entry_of(*news, 7)); }), names{"number"});
  EXPECT_EQ(fields_after([this] { list.user_vnumber = 0; }), names{"number"});
}

TEST_F(Difference, EverySettingIsCompared) {
  EXPECT_EQ(fields_after([this] { ++list.use_tuner; }), names{"value"});
  EXPECT_EQ(fields_after([this] { ++list.ch_type; }), names{"value"});
  EXPECT_EQ(fields_after([this] { ++list.bouquet_id; }), names{"value"});
  EXPECT_EQ(fields_after([this] { ++list.use_group_list; }), names{"value"});
  EXPECT_EQ(fields_after([this] { ++list.service_type; }), names{"value"});
  EXPECT_EQ(fields_after([this] { ++list.net_index; }), names{"value"});
  EXPECT_EQ(fields_after([this] { ++list.sub_group_id; }), names{"value"});
  EXPECT_EQ(fields_after([this] { ++list.vch_type; }), names{"value"});
}

TEST_F(Difference, WhatIsAroundServicesIsToldWithWhatItIsKnownBy) {
  network_ch_st *network = get_network_ch_info(1, 1);
  tp_ch_st *transponder = get_tp_ch_info_by_network_ch(network, 100, 11'000'000, 0);
  test_support::put_provider("BBC", 4);

  EXPECT_EQ(changed_by([=] { network->network_name[0] = 'C'; }),
            R"(network, network 1:1, {"net_index":1,"network_id":1}, name (name): "Network" -> "Cetwork")");
  EXPECT_EQ(changed_by([=] { ++transponder->frequency; }),
            R"(transponder, transponder 1:1:100:11000001H, )"
            R"({"net_index":1,"network_id":1,"ts_id":100,"frequency":11000001,"polarisation":"H"}, )"
            R"(frequency (frequency): 11000000 -> 11000001)");
  EXPECT_EQ(changed_by([=] { ++transponder->ts_id; }),
            R"(transponder, transponder 1:1:101:11000001H, )"
            R"({"net_index":1,"network_id":1,"ts_id":101,"frequency":11000001,"polarisation":"H"}, )"
            R"(ts_id (ts): 100 -> 101)");
  EXPECT_EQ(changed_by([this] { list.provider[0].name[0] = 'C'; }),
            R"(group, provider 4, {"table":"provider","number":4}, name (name): "BBC" -> "CBC")");
  EXPECT_EQ(changed_by([this] { list.provider_num = 0; }),
            R"(group, provider 4, {"table":"provider","number":4}, name (name): "CBC" -> null)");
  EXPECT_EQ(changed_by([this] { std::swap(list.vch[0], list.vch[1]); }),
            R"(view, ALL view, {"view":"ALL"}, moved (): [] -> ["Films"])");
  EXPECT_EQ(changed_by([this] { list.bouquet_id = 7; }),
            R"(setting, bouquet id, {"setting":"bouquet_id"}, value (): null -> 7)");
}

TEST_F(Difference, RenamingAProviderChangesTheProviderAlone) {
  test_support::put_provider("BBC", 0);
  const line_up before = line_up_in_memory();
  list.provider[0].name[0] = 'C';
  const std::vector<change> changes = differences(before, line_up_in_memory());
  ASSERT_EQ(changes.size(), 1U);
  EXPECT_EQ(changes[0].name, "provider 0");
}

TEST_F(Difference, AFavouriteGroupIsKnownByItsPlace) {
  list.favorite_group[0] = test_support::named_group("Best", 4);
  list.favorite_group_num = 1;
  EXPECT_EQ(fields_after([this] { list.favorite_group[0].id = 5; }), names{"id"});
  EXPECT_EQ(fields_after([this] { list.favorite_group[0] = test_support::named_group("Worst", 5); }), names{"name"});
}

TEST_F(Difference, EntriesWithoutAServiceAreTheSameByWhatTheySay) {
  for (int i = 0; i < 2; ++i) {
    append_entry(VIEW_ALL, entry_of(*films, 3));
    list.vch[list.vnumber - 1].service_id = 99;
  }
  EXPECT_EQ(fields_after([this] { std::swap(list.vch[2], list.vch[3]); }), names{});
  EXPECT_EQ(fields_after([this] { std::rotate(list.vch, list.vch + 2, list.vch + 3); }), names{"unresolved_moved"});
  EXPECT_EQ(fields_after([this] { std::rotate(list.vch + 1, list.vch + 2, list.vch + 4); }), names{"moved"});
}

TEST_F(Difference, ASnapshotStaysAsItIs) {
  const line_up before = line_up_in_memory();
  remove_channel_st(1, 1, 100, 11'000'000, 2, 0);
  remove_invalid_virtual_channel();
  const std::vector<change> changes = differences(before, line_up_in_memory());
  ASSERT_EQ(changes.size(), 1U);
  EXPECT_EQ(changes[0].kind, change_kind::removed);
  EXPECT_EQ(changes[0].name, "\"Films\" (1:1:100:11000000H:2)");
  ASSERT_EQ(changes[0].fields.size(), 1U);
  EXPECT_EQ(changes[0].fields[0].before, 2);
}

TEST_F(Difference, AServiceOfNoTransponderIsAnotherOneInAnotherNetwork) {
  news->frequency = 9'000'000;
  const line_up before = line_up_in_memory();
  news->network_id = 77;
  std::vector<change_kind> kinds;
  for (const change &each : differences(before, line_up_in_memory())) {
    if (each.what == "service") {
      kinds.push_back(each.kind);
    }
  }
  EXPECT_EQ(kinds, (std::vector{change_kind::added, change_kind::removed}));
}

TEST_F(Difference, GroupsThatStandForEachOtherMakeNoDifferenceOfTheirServices) {
  const auto give_groups = [this](std::int16_t id) {
    list.provider[0] = test_support::named_group("Sky", id);
    list.genre[0] = test_support::named_group("Sport", id);
    list.country[0] = test_support::named_group("France", id);
    list.provider_num = list.genre_num = list.country_num = 1;
    news->provider_id = news->genre_id = news->country_id = id;
    return line_up_in_memory();
  };
  const line_up before = give_groups(6);
  const line_up after = give_groups(7);
  std::vector<std::string> told;
  for (const change &each : differences(before, after, pair_around(pair_services(before, after), before, after))) {
    told.push_back(each.name + ", " + std::string(each.fields.front().name));
  }
  EXPECT_EQ(told, (names{"provider 7, id", "genre 7, id", "country 7, id"}));
}

TEST_F(Difference, AnyListIsEqualToItself) {
  for (unsigned seed = 0; seed < 40; ++seed) {
    reset_channel_list();
    test_support::random_store store(seed);
    store.build_hierarchy();
    store.fill_views();
    EXPECT_TRUE(differences(line_up_in_memory(), line_up_in_memory()).empty()) << "seed " << seed;
  }
}

TEST_F(Difference, TheLargestListIsEqualToItself) {
  reset_channel_list();
  test_support::fill_everything();
  EXPECT_TRUE(differences(line_up_in_memory(), line_up_in_memory()).empty());
}

}  // namespace
