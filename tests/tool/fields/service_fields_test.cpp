// What the table of fields says of services and entries, and which values it takes.
#include "chlist/fields/service_fields.h"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "chlist/fields/service_types.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/line_up/selection.h"
#include "support/providers.h"
#include "support/store_builder.h"

namespace {

using chlist::field;
using chlist::field_named;
using chlist::fields_named;
using chlist::json;
using chlist::line_up;
using chlist::line_up_in_memory;
using chlist::line_up_service;
using chlist::service_fields;
using chlist::service_row;
using chlist::text_of_value;
using test_support::append_entry;
using test_support::entry_of;
using test_support::file_service;
using test_support::named_group;

class ServiceFields : public test_support::store_test {
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

  // Of the one service, and of its first entry in the radio view.
  [[nodiscard]] static json value(std::string_view name) {
    const line_up taken = line_up_in_memory();
    return field_named(name).get(rows_of(taken, VIEW_RADIO).at(0));
  }

  channel_st *service = nullptr;
  virtual_channel_st *entry = nullptr;
};

// Names stand in documents and on command lines, titles above columns.
TEST_F(ServiceFields, HaveTheNamesAndTitlesThatReadersKnow) {
  const std::vector<std::pair<std::string_view, std::string_view>> known = {
      {"position", "position"},
      {"number", "number"},
      {"minor", "minor"},
      {"name", "name"},
      {"short_name", "short name"},
      {"name_table", "name table"},
      {"short_name_table", "short name table"},
      {"type", "type"},
      {"provider", "provider"},
      {"genre", "genre"},
      {"country", "country"},
      {"favourites", "favourites"},
      {"network_name", "network name"},
      {"net_index", "net"},
      {"network_id", "network"},
      {"ts_id", "ts"},
      {"frequency", "frequency"},
      {"polarisation", "pol"},
      {"service_id", "service"},
      {"pmt_pid", "PMT PID"},
      {"pcr_pid", "PCR PID"},
      {"video_pid", "video PID"},
      {"video_tag", "video tag"},
      {"video_ecm_pid", "ECM PID"},
      {"audio_pid", "audio PID"},
      {"audio_tag", "audio tag"},
      {"locked", "locked"},
      {"skipped", "skipped"},
      {"scrambled", "scrambled"},
      {"data", "data"},
      {"flags", "flags"},
      {"service_type", "type id"},
      {"source_type", "source"},
      {"provider_id", "provider id"},
      {"genre_id", "genre id"},
      {"country_id", "country id"},
      {"order_key", "order key"},
      {"tag", "tag"},
      {"favourite_key", "favourite key"},
  };
  std::vector<std::pair<std::string_view, std::string_view>> told;
  for (const field &each : service_fields()) {
    told.emplace_back(each.name, each.title);
    EXPECT_FALSE(each.about.empty()) << each.name;
  }
  EXPECT_EQ(told, known);
}

TEST_F(ServiceFields, TellTheFieldsOfServiceAndEntry) {
  entry->favorite_id = 9;
  service->user_order_key = -3;
  service->video_pid = 0;
  service->video_tag = 0;
  EXPECT_EQ(value("position"), 1);
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

TEST_F(ServiceFields, PidsAndTagsThatAreNotSetAreNull) {
  for (const char *name : {"pmt_pid", "pcr_pid", "video_pid", "video_tag", "video_ecm_pid", "audio_pid", "audio_tag"}) {
    service->pmt_pid = service->pcr_pid = service->video_pid = service->video_ecm_pid = service->audio_pid = 0xFFFF;
    service->video_tag = service->audio_tag = 0xFF;
    EXPECT_EQ(value(name), nullptr) << name;
    service->pmt_pid = service->pcr_pid = service->video_pid = service->video_ecm_pid = service->audio_pid = 0xFFFE;
    service->video_tag = service->audio_tag = 0xFE;
    EXPECT_NE(value(name), nullptr) << name;
  }
}

TEST_F(ServiceFields, NamesOfGroupsAreLookedUpByTheirIds) {
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

TEST_F(ServiceFields, FavouritesAreTheGroupsThatHoldTheService) {
  EXPECT_EQ(value("favourites"), json::array());
  list.favorite_group[0] = named_group("Films", 0);
  list.favorite_group_num = 1;
  append_entry(VIEW_FAVOURITE, entry_of(*service, 1));
  append_entry(VIEW_FAVOURITE_LAST, entry_of(*service, 1));
  EXPECT_EQ(value("favourites"), json::array({"Films", "20"}));
}

TEST_F(ServiceFields, AnEntryWithoutAServiceHasItsIdentityOnly) {
  const line_up taken = line_up_in_memory();
  service_row row = rows_of(taken, VIEW_RADIO).at(0);
  row.service = nullptr;
  std::set<std::string_view> told;
  for (const field &each : service_fields()) {
    if (const json value = each.get(row); !value.is_null() && value != json::array()) {
      told.insert(each.name);
    }
  }
  EXPECT_EQ(told, (std::set<std::string_view>{"position", "number", "minor", "tag", "favourite_key", "net_index",
                                              "network_id", "ts_id", "frequency", "polarisation", "service_id"}));
}

TEST_F(ServiceFields, NothingIsToldOfNothing) {
  for (const field &each : service_fields()) {
    EXPECT_EQ(text_of_value(each.get({})), "") << each.name;
  }
}

TEST_F(ServiceFields, AreFoundByName) {
  const auto found = fields_named("name,number,name");
  ASSERT_EQ(found.size(), 3U);
  EXPECT_EQ(found[0], &field_named("name"));
  EXPECT_EQ(found[1], &field_named("number"));
  EXPECT_EQ(found[2], found[0]);
}

TEST_F(ServiceFields, AnUnknownNameIsRefusedWithThoseThatThereAre) {
  for (const char *names : {"", "name,", ",name", "name, number", "Name"}) {
    try {
      fields_named(names);
      FAIL() << names;
    } catch (const std::runtime_error &error) {
      const std::string what = error.what();
      EXPECT_TRUE(what.starts_with("no column \"")) << what;
      EXPECT_NE(what.find("here are position, number, minor, name, "), std::string::npos) << what;
    }
  }
}

TEST_F(ServiceFields, AViewIsListedInItsOrder) {
  append_entry(VIEW_RADIO, {});
  const line_up taken = line_up_in_memory();
  const auto rows = rows_of(taken, VIEW_RADIO);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0].service, &taken.services[0]);
  EXPECT_EQ(rows[1].service, nullptr);
  EXPECT_EQ(rows[1].index, 1U);
  EXPECT_TRUE(rows_of(taken, VIEW_TV).empty());
}

// What a field is set to comes back by the same spelling.
std::string set_and_told(std::string_view name, std::string_view text) {
  line_up list;
  list.services.emplace_back();
  try {
    set_field(list.services[0], field_named(name), text);
  } catch (const std::runtime_error &error) {
    return error.what();
  }
  return text_of_value(field_named(name).get({&list, list.services.data()}));
}

TEST(FieldValues, AreSpelledInOneWayEverywhere) {
  EXPECT_EQ(set_and_told("video_pid", "0"), "0");
  EXPECT_EQ(set_and_told("video_pid", "8191"), "8191");
  EXPECT_EQ(set_and_told("video_pid", "none"), "");
  EXPECT_EQ(set_and_told("audio_tag", "255"), "");
  EXPECT_EQ(set_and_told("type", "tv"), "TV");
  EXPECT_EQ(set_and_told("type", "25"), "HD TV");
  EXPECT_EQ(set_and_told("type", "type 200"), "type 200");
  EXPECT_EQ(set_and_told("service_type", "HD TV"), "25");
  EXPECT_EQ(set_and_told("polarisation", "l"), "H");
  EXPECT_EQ(set_and_told("polarisation", "R"), "V");
  EXPECT_EQ(set_and_told("polarisation", "2"), "2");
  EXPECT_EQ(set_and_told("locked", "true"), "yes");
  EXPECT_EQ(set_and_told("locked", "0"), "no");
  EXPECT_EQ(set_and_told("frequency", "4294967295"), "4294967295");
  EXPECT_EQ(set_and_told("order_key", "-32768"), "-32768");
  EXPECT_EQ(set_and_told("name", "Łódź"), "Łódź");
}

TEST(FieldValues, OutOfRangeAreRefusedWithTheFieldTheValueAndTheRange) {
  EXPECT_EQ(set_and_told("video_pid", "8192"), "video_pid=\"8192\": VALUE is 0 to 8191, or none");
  EXPECT_EQ(set_and_told("video_pid", "-1"), "video_pid=\"-1\": VALUE is 0 to 8191, or none");
  EXPECT_EQ(set_and_told("video_pid", ""), "video_pid=\"\": VALUE is 0 to 8191, or none");
  EXPECT_EQ(set_and_told("audio_tag", "256"), "audio_tag=\"256\": VALUE is 0 to 255, or none");
  EXPECT_EQ(set_and_told("type", "type 256"), "type=\"type 256\": VALUE is a name as TV, radio or HD TV, or 0 to 255");
  EXPECT_EQ(set_and_told("polarisation", "HV"), "polarisation=\"HV\": VALUE is H, V or 0 to 255");
  EXPECT_EQ(set_and_told("locked", "maybe"), "locked=\"maybe\": VALUE is yes or no");
  EXPECT_EQ(set_and_told("frequency", "0"), "frequency=\"0\": VALUE is 1 to 4294967295");
  EXPECT_EQ(set_and_told("network_id", "65536"), "network_id=\"65536\": VALUE is 0 to 65535");
  EXPECT_EQ(set_and_told("frequency", "4294967296"), "frequency=\"4294967296\": VALUE is 1 to 4294967295");
  EXPECT_EQ(set_and_told("order_key", "32768"), "order_key=\"32768\": VALUE is -32768 to 32767");
}

TEST(FieldValues, AsText) {
  EXPECT_EQ(text_of_value(nullptr), "");
  EXPECT_EQ(text_of_value(true), "yes");
  EXPECT_EQ(text_of_value(false), "no");
  EXPECT_EQ(text_of_value(-7), "-7");
  EXPECT_EQ(text_of_value("a \"b\""), "a \"b\"");
  EXPECT_EQ(text_of_value(json::array({"a", 1})), "a, 1");
  EXPECT_EQ(text_of_value(json::array()), "");
}

TEST(ServiceTypes, AreNamedAsInTheStandard) {
  const std::pair<int, std::string_view> names[] = {{0x01, "TV"},
                                                    {0x02, "radio"},
                                                    {0x03, "teletext"},
                                                    {0x04, "NVOD reference"},
                                                    {0x05, "NVOD time-shifted"},
                                                    {0x06, "mosaic"},
                                                    {0x07, "FM radio"},
                                                    {0x0A, "advanced codec radio"},
                                                    {0x0B, "advanced codec mosaic"},
                                                    {0x0C, "data"},
                                                    {0x10, "DVB MHP"},
                                                    {0x11, "MPEG-2 HD TV"},
                                                    {0x16, "advanced codec SD TV"},
                                                    {0x17, "advanced codec SD NVOD time-shifted"},
                                                    {0x18, "advanced codec SD NVOD reference"},
                                                    {0x19, "HD TV"},
                                                    {0x1A, "HD NVOD time-shifted"},
                                                    {0x1B, "HD NVOD reference"},
                                                    {0x1C, "3D HD TV"},
                                                    {0x1D, "3D HD NVOD time-shifted"},
                                                    {0x1E, "3D HD NVOD reference"},
                                                    {0x1F, "HEVC TV"},
                                                    {0x20, "HEVC UHD TV"},
                                                    {0x21, "VVC TV"},
                                                    {0x22, "AVS3 TV"}};
  for (const auto &[type, name] : names) {
    EXPECT_EQ(chlist::service_type_name(static_cast<std::uint8_t>(type)), name);
  }
}

TEST(ServiceTypes, OfTelevisionAndRadioAreBasicallyTheOldOnes) {
  for (const int type : {0x01, 0x11, 0x16, 0x19, 0x1C, 0x1F, 0x20, 0x21, 0x22}) {
    EXPECT_EQ(chlist::basic_service_type(static_cast<std::uint8_t>(type)), SERVICE_TYPE_TV) << type;
  }
  for (const int type : {0x02, 0x07, 0x0A}) {
    EXPECT_EQ(chlist::basic_service_type(static_cast<std::uint8_t>(type)), SERVICE_TYPE_RADIO) << type;
  }
  for (const int type : {0x00, 0x03, 0x06, 0x0C, 0x17, 0x1A, 0x1D, 0x23, 0xFF}) {
    EXPECT_EQ(chlist::basic_service_type(static_cast<std::uint8_t>(type)), type);
  }
}

TEST(ServiceTypes, HaveNamesOrNumbers) {
  EXPECT_EQ(chlist::service_type_name(1), "TV");
  EXPECT_EQ(chlist::service_type_name(2), "radio");
  EXPECT_EQ(chlist::service_type_name(12), "data");
  EXPECT_EQ(chlist::service_type_name(0), "type 0");
  EXPECT_EQ(chlist::service_type_name(255), "type 255");
}

}  // namespace
