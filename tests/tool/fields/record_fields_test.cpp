// What the tables say of networks, transponders and groups, and that one thing has one name in all of them.
#include "chlist/fields/record_fields.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <string_view>

#include "chlist/fields/described.h"
#include "chlist/fields/service_fields.h"

namespace {

using chlist::field_role;
using chlist::field_words;
using chlist::group_fields;
using chlist::identity_fields;
using chlist::identity_part;
using chlist::json;
using chlist::json_of_fields;
using chlist::json_of_transponder;
using chlist::line_up;
using chlist::network_fields;
using chlist::record_field;
using chlist::rows_of_groups;
using chlist::rows_of_networks;
using chlist::rows_of_transponders;
using chlist::setting_fields;
using chlist::text_of;
using chlist::transponder_fields;

// Two networks, the second one without transponders; a transponder with two services and one without.
line_up two_networks() {
  line_up list;
  list.networks = {{1, 100, "Astra"}, {2, 200, "Hotbird"}};
  list.transponders = {{0, 1000, 11'000'000, 0}, {0, 1001, 12'000'000, 1}};
  list.services.resize(2);
  list.services[0].transponder = 0;
  list.services[1].transponder = 0;
  return list;
}

TEST(RecordFields, OfANetworkCountWhatIsBelowIt) {
  const line_up list = two_networks();
  const auto rows = rows_of_networks(list);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(json_of_fields(network_fields(), rows[0]),
            (json{{"net_index", 1}, {"network_id", 100}, {"transponders", 2}, {"services", 2}, {"name", "Astra"}}));
  EXPECT_EQ(json_of_fields(network_fields(), rows[1]),
            (json{{"net_index", 2}, {"network_id", 200}, {"transponders", 0}, {"services", 0}, {"name", "Hotbird"}}));
}

TEST(RecordFields, OfATransponderCountItsServices) {
  const line_up list = two_networks();
  const auto rows = rows_of_transponders(list);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(json_of_fields(transponder_fields(), rows[0]),
            (json{{"ts_id", 1000}, {"frequency", 11'000'000}, {"polarisation", "H"}, {"services", 2}}));
  EXPECT_EQ(json_of_fields(transponder_fields(), rows[1]),
            (json{{"ts_id", 1001}, {"frequency", 12'000'000}, {"polarisation", "V"}, {"services", 0}}));
}

TEST(RecordFields, ServicesThatNoTransponderIsToldOfAreNotCounted) {
  line_up list = two_networks();
  list.services[1].transponder = chlist::nowhere;
  EXPECT_EQ(rows_of_transponders(list)[0].services, 1U);
  EXPECT_EQ(rows_of_networks(list)[0].services, 1U);
}

TEST(RecordFields, OfAGroupTellItsTableAndFavouritesTheirPositions) {
  line_up list;
  list.groups[static_cast<std::size_t>(chlist::group_kind::genre)].groups = {{7, "News"}};
  list.favourites = {{"Best", {}, 3}, {"", {}, 0, 0, false}, {"Films", {}, 4}};
  const auto rows = rows_of_groups(list);
  ASSERT_EQ(rows.size(), 3U);
  EXPECT_EQ(json_of_fields(group_fields(), rows[0]),
            (json{{"table", "genre"}, {"number", 7}, {"name", "News"}, {"id", 7}, {"position", nullptr}}));
  EXPECT_EQ(json_of_fields(group_fields(), rows[1]),
            (json{{"table", "favourite group"}, {"number", 1}, {"name", "Best"}, {"id", 3}, {"position", 1}}));
  EXPECT_EQ(json_of_fields(group_fields(), rows[2]),
            (json{{"table", "favourite group"}, {"number", 2}, {"name", "Films"}, {"id", 4}, {"position", 2}}));
}

TEST(IdentityFields, AreAsManyAsMakeTheRecordKnown) {
  channel::identity id = {};
  id.net_index = 1;
  id.network_id = 2;
  id.ts_id = 3;
  id.frequency = 11'727'480;
  id.polarisation = 1;
  id.service_id = 5;
  const json of_network = {{"net_index", 1}, {"network_id", 2}};
  json of_transponder = of_network;
  of_transponder.put({{"ts_id", 3}, {"frequency", 11'727'480}, {"polarisation", "V"}});
  json of_service = of_transponder;
  of_service.put({{"service_id", 5}});
  EXPECT_EQ(json_of_fields(identity_fields(identity_part::network), id), of_network);
  EXPECT_EQ(json_of_fields(identity_fields(identity_part::transponder), id), of_transponder);
  EXPECT_EQ(json_of_fields(identity_fields(), id), of_service);
  EXPECT_EQ(text_of(id, identity_part::network), "net 1, network 2");
  EXPECT_EQ(text_of(id, identity_part::transponder), "net 1, network 2, ts 3, 11727480 V");
  EXPECT_EQ(text_of(id), "net 1, network 2, ts 3, 11727480 V, service 5");
}

// A list may hold a polarisation that has no letter: whoever reads of it can tell it from both.
TEST(IdentityFields, APolarisationWithoutALetterIsANumber) {
  channel::identity id = {};
  id.polarisation = 2;
  EXPECT_EQ(json_of_transponder(id)["polarisation"], "2");
  EXPECT_EQ(text_of(id, identity_part::transponder), "net 0, network 0, ts 0, 0 2");
}

// Every field of every table, with what is said of it.
class all_fields {
 public:
  all_fields() {
    for (const chlist::field &each : chlist::service_fields()) {
      fields_.push_back(each);
    }
    add(network_fields());
    add(transponder_fields());
    add(identity_fields());
    add(group_fields());
    add(setting_fields());
  }

  [[nodiscard]] const std::vector<field_words> &all() const { return fields_; }

 private:
  template <class Row>
  void add(std::span<const record_field<Row>> fields) {
    fields_.insert(fields_.end(), fields.begin(), fields.end());
  }

  std::vector<field_words> fields_;
};

TEST(EveryField, IsExplained) {
  const all_fields every;
  for (const field_words &each : every.all()) {
    EXPECT_FALSE(each.title.empty() || each.about.empty()) << each.name;
    EXPECT_TRUE(each.values.kind == chlist::value_kind::texts || !each.values.text.empty()) << each.name;
  }
}

TEST(EveryField, OfAnIdentityIsSaidTheSameInEveryTable) {
  std::map<std::string_view, field_words> identities;
  for (const auto &each : identity_fields()) {
    identities.emplace(each.name, each);
  }
  const auto expect_the_same = [&](const field_words &each) {
    if (const auto known = identities.find(each.name); known != identities.end()) {
      EXPECT_EQ(each.title, known->second.title);
      EXPECT_EQ(each.about, known->second.about);
      EXPECT_EQ(each.values.text, known->second.values.text);
      return 1;
    }
    return 0;
  };
  int met = 0;
  for (const chlist::field &each : chlist::service_fields()) {
    met += expect_the_same(each);
  }
  for (const auto &each : network_fields()) {
    met += expect_the_same(each);
  }
  for (const auto &each : transponder_fields()) {
    met += expect_the_same(each);
  }
  EXPECT_EQ(met, 6 + 2 + 3);
}

}  // namespace
