// The settings of a list: their names, and what is told of values that stand for something.
#include "chlist/fields/record_fields.h"

#include <channel/records.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>
#include <tuple>
#include <vector>

namespace {

using chlist::json;
using chlist::line_up_settings;
using chlist::setting_fields;

using setting = chlist::record_field<line_up_settings>;

json value_of(std::string_view name, const line_up_settings &settings) {
  const auto found = std::ranges::find(setting_fields(), name, &setting::name);
  return found != setting_fields().end() ? found->get(settings) : json("no such setting");
}

TEST(Settings, AreToldUnderTheirNames) {
  line_up_settings settings;
  settings.use_tuner = 1;
  settings.ch_type = 2;
  settings.bouquet_id = 3;
  settings.current_view = VIEW_RADIO;
  settings.group_kind = GROUP_GENRE;
  settings.group_id = 5;
  settings.net_index = 6;
  settings.service_type = 7;

  std::vector<std::tuple<std::string_view, std::string_view, std::string>> told;
  for (const setting &each : setting_fields()) {
    told.emplace_back(each.name, each.title, each.get(settings).dump());
  }

  EXPECT_EQ(told, (std::vector<std::tuple<std::string_view, std::string_view, std::string>>{
                      {"use_tuner", "tuner", "1"},
                      {"ch_type", "channel type", "2"},
                      {"bouquet_id", "bouquet id", "3"},
                      {"current_view", "current view", R"("radio")"},
                      {"group_kind", "group kind in use", R"("genre")"},
                      {"group_id", "group id in use", "5"},
                      {"net_index", "network index in use", "6"},
                      {"service_type", "service type in use", "7"}}));
}

TEST(Settings, ThatAreNotSetAreNull) {
  line_up_settings settings;
  settings.use_tuner = settings.group_id = settings.net_index = -1;
  settings.bouquet_id = 0xFFFF;

  for (const char *name : {"use_tuner", "group_id", "net_index", "bouquet_id"}) {
    EXPECT_TRUE(value_of(name, settings).is_null()) << name;
  }
}

TEST(Settings, KindsOfGroupsHaveNamesOrNumbers) {
  const char *names[] = {"all", "satellite", "genre", "provider", "country", "scrambling", "favourites"};
  line_up_settings settings;
  for (int kind = 0; kind < 7; ++kind) {
    settings.group_kind = kind;
    EXPECT_EQ(value_of("group_kind", settings), names[kind]);
  }
  for (const int kind : {-1, 7}) {
    settings.group_kind = kind;
    EXPECT_EQ(value_of("group_kind", settings), "kind " + std::to_string(kind));
  }
}

TEST(Settings, ViewsHaveNamesOrNumbers) {
  line_up_settings settings;
  for (const int view : {-1, VIEW_FAVOURITE_LAST + 1, VIEW_RADIO + 256}) {
    settings.current_view = view;
    EXPECT_EQ(value_of("current_view", settings), "view " + std::to_string(view));
  }
  settings.current_view = VIEW_FAVOURITE;
  EXPECT_EQ(value_of("current_view", settings), "favourites 1");
}

}  // namespace
