// What columns say of services and entries.
#include "chlist/service/columns.h"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <string>

#include "support/providers.h"
#include "support/store_builder.h"

namespace {

using chlist::all_columns;
using chlist::column_named;
using chlist::columns_named;
using chlist::json;
using chlist::listed_in;
using chlist::listed_service;
using chlist::text_of_value;
using test_support::append_entry;
using test_support::entry_of;
using test_support::file_service;
using test_support::named_group;

class Columns : public test_support::store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    service = file_service({.net_index = 2,
                            .network_id = 3,
                            .ts_id = 4,
                            .frequency = 11'727'480,
                            .service_id = 5,
                            .polarisation = 1,
                            .service_type = SERVICE_TYPE_RADIO,
                            .source_type = 8,
                            .name = "News",
                            .flag = CHANNEL_FLAG_LOCKED | 0x40});
    entry = &append_entry(VIEW_RADIO, entry_of(*service, 7, 2, 1));
  }

  [[nodiscard]] json value(std::string_view name) const { return column_named(name).value({entry, service, 0}); }

  channel_st *service = nullptr;
  virtual_channel_st *entry = nullptr;
};

TEST_F(Columns, HaveNamesOfTheirOwn) {
  std::set<std::string_view> names;
  for (const chlist::column &each : all_columns()) {
    EXPECT_TRUE(names.insert(each.name).second) << each.name;
    EXPECT_FALSE(each.title.empty());
    EXPECT_FALSE(each.about.empty());
  }
}

TEST_F(Columns, TellTheFieldsOfServiceAndEntry) {
  entry->favorite_id = 9;
  service->user_order_key = -3;
  service->video_pid = 0;
  service->video_tag = 0;
  EXPECT_EQ(value("position"), 0);
  EXPECT_EQ(value("number"), 7);
  EXPECT_EQ(value("minor"), 2);
  EXPECT_EQ(value("tag"), 1);
  EXPECT_EQ(value("favourite_key"), 9);
  EXPECT_EQ(value("name"), "News");
  EXPECT_EQ(value("type"), "radio");
  EXPECT_EQ(value("service_type"), 2);
  EXPECT_EQ(value("source_type"), 8);
  EXPECT_EQ(value("net_index"), 2);
  EXPECT_EQ(value("network_id"), 3);
  EXPECT_EQ(value("ts_id"), 4);
  EXPECT_EQ(value("frequency"), 11'727'480);
  EXPECT_EQ(value("polarisation"), "V");
  EXPECT_EQ(value("service_id"), 5);
  EXPECT_EQ(value("video_pid"), 0);
  EXPECT_EQ(value("video_tag"), 0);
  EXPECT_EQ(value("flags"), 0x42);
  EXPECT_EQ(value("locked"), true);
  EXPECT_EQ(value("skipped"), false);
  EXPECT_EQ(value("scrambled"), false);
  EXPECT_EQ(value("data"), false);
  EXPECT_EQ(value("order_key"), -3);
}

TEST_F(Columns, PidsAndTagsThatAreNotSetAreNull) {
  for (const char *name : {"pmt_pid", "pcr_pid", "video_pid", "video_tag", "video_ecm_pid", "audio_pid", "audio_tag"}) {
    service->pmt_pid = service->pcr_pid = service->video_pid = service->video_ecm_pid = service->audio_pid = 0xFFFF;
    service->video_tag = service->audio_tag = 0xFF;
    EXPECT_EQ(value(name), nullptr) << name;
    service->pmt_pid = service->pcr_pid = service->video_pid = service->video_ecm_pid = service->audio_pid = 0xFFFE;
    service->video_tag = service->audio_tag = 0xFE;
    EXPECT_NE(value(name), nullptr) << name;
  }
}

TEST_F(Columns, NamesOfGroupsAreLookedUpByTheirIds) {
  test_support::put_provider("Sky", 6);
  list.genre[0] = named_group("Sport", 7);
  list.genre_num = 1;
  list.country[0] = named_group("France", 8);
  list.country_num = 1;
  service->provider_id = 6;
  service->genre_id = 7;
  service->country_id = 8;
  EXPECT_EQ(value("provider"), "Sky");
  EXPECT_EQ(value("genre"), "Sport");
  EXPECT_EQ(value("country"), "France");
  service->provider_id = 7;
  EXPECT_EQ(value("provider"), nullptr);
  EXPECT_EQ(value("provider_id"), 7);
}

TEST_F(Columns, FavouritesAreTheGroupsThatHoldTheService) {
  EXPECT_EQ(value("favourites"), json::array());
  list.favorite_group[0] = named_group("Films", 0);
  list.favorite_group_num = 1;
  append_entry(VIEW_FAVOURITE, entry_of(*service, 1));
  append_entry(VIEW_FAVOURITE_LAST, entry_of(*service, 1));
  EXPECT_EQ(value("favourites"), json::array({"Films", "19"}));
}

TEST_F(Columns, AnEntryWithoutAServiceHasItsIdentityOnly) {
  const listed_service row = {entry, nullptr, 3};
  std::set<std::string_view> told;
  for (const chlist::column &each : all_columns()) {
    if (const json value = each.value(row); !value.is_null() && value != json::array()) {
      told.insert(each.name);
    }
  }
  EXPECT_EQ(told, (std::set<std::string_view>{"position", "number", "minor", "tag", "favourite_key", "net_index",
                                              "network_id", "ts_id", "frequency", "polarisation", "service_id"}));
}

TEST_F(Columns, NothingIsToldOfNothing) {
  for (const chlist::column &each : all_columns()) {
    EXPECT_EQ(text_of_value(each.value({nullptr, nullptr, 0})), "") << each.name;
  }
}

TEST_F(Columns, AreFoundByName) {
  const auto found = columns_named("name,number,name");
  ASSERT_EQ(found.size(), 3U);
  EXPECT_EQ(found[0], &column_named("name"));
  EXPECT_EQ(found[1], &column_named("number"));
  EXPECT_EQ(found[2], found[0]);
}

TEST_F(Columns, AnUnknownNameIsRefusedWithThoseThatThereAre) {
  for (const char *names : {"", "name,", ",name", "name, number", "Name"}) {
    try {
      columns_named(names);
      FAIL() << names;
    } catch (const std::runtime_error &error) {
      const std::string what = error.what();
      EXPECT_TRUE(what.starts_with("no column \"")) << what;
      EXPECT_NE(what.find("here are position, number, minor, name, "), std::string::npos) << what;
    }
  }
}

TEST_F(Columns, AViewIsListedInItsOrder) {
  channel_st *other = file_service({.service_id = 9});
  append_entry(VIEW_RADIO, entry_of(*other, 1)).rch = nullptr;
  const auto rows = listed_in(VIEW_RADIO);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0].service, service);
  EXPECT_EQ(rows[1].service, nullptr);
  EXPECT_EQ(rows[1].position, 1U);
  EXPECT_TRUE(listed_in(VIEW_TV).empty());
}

TEST(ColumnValues, AsText) {
  EXPECT_EQ(text_of_value(nullptr), "");
  EXPECT_EQ(text_of_value(true), "yes");
  EXPECT_EQ(text_of_value(false), "no");
  EXPECT_EQ(text_of_value(-7), "-7");
  EXPECT_EQ(text_of_value("a \"b\""), "a \"b\"");
  EXPECT_EQ(text_of_value(json::array({"a", 1})), "a, 1");
  EXPECT_EQ(text_of_value(json::array()), "");
}

}  // namespace
