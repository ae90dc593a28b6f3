// A line-up as an M3U playlist.
#include "chlist/exchange/m3u/m3u.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "tool/exchange/line_ups.h"

namespace {

using chlist::channel_number;
using chlist::line_up;
using chlist::line_up_service;
using chlist::write_options;
using tool_test::line_up_of;
using tool_test::losses;
using tool_test::row_list;
using tool_test::service_named;

class M3uWriter : public tool_test::line_up_test {
 protected:
  static std::string text_of(const line_up &made, const std::string &url = "", bool is_by_favourites = false) {
    return write_m3u(made, {.columns = "", .url = url, .is_by_favourites = is_by_favourites}).files.at(0).text;
  }

  static row_list losses_of(const line_up &made, const std::string &url = "", bool is_by_favourites = false) {
    return losses(
        tool_test::export_of(made, "m3u", {.columns = "", .url = url, .is_by_favourites = is_by_favourites}).lost);
  }

  static std::string refusal(const std::string &url) {
    try {
      text_of({}, url);
    } catch (const std::runtime_error &error) {
      return error.what();
    }
    return "";
  }
};

TEST_F(M3uWriter, AnEntrySaysNumberNameAndProvider) {
  line_up_service service = service_named("News", 0x1F);
  service.number = channel_number{7, 0};
  service.provider = "Meridian";

  EXPECT_EQ(text_of(line_up_of({service})),
            "#EXTM3U\n"
            "#EXTINF:-1 tvg-chno=\"7\" tvg-name=\"News\" provider=\"Meridian\" group-title=\"Meridian\",News\n"
            "dvb://9e.7da.1f\n");
}

TEST_F(M3uWriter, WhatIsMissingIsNotSaid) {
  line_up_service radio = service_named("Jazz", 1);
  radio.is_listed = false;
  radio.fields.service_type = SERVICE_TYPE_RADIO;
  line_up_service minor = service_named("Two", 2);
  minor.number = channel_number{7, 2};

  EXPECT_EQ(text_of(line_up_of({radio, minor}), "x"), "#EXTM3U\n"
                                                      "#EXTINF:-1 tvg-name=\"Jazz\" radio=\"true\",Jazz\nx\n"
                                                      "#EXTINF:-1 tvg-chno=\"7.2\" tvg-name=\"Two\",Two\nx\n");
}

TEST_F(M3uWriter, GroupsMayBeTheFavourites) {
  line_up_service service = service_named("News", 1);
  service.provider = "Meridian";
  line_up made = line_up_of({service, service_named("Films", 2)});
  made.favourites = {{"Mine", {{0, {}}}}, {"Yours", {{0, {}}}}};

  EXPECT_EQ(text_of(made, "x", true),
            "#EXTM3U\n"
            "#EXTINF:-1 tvg-name=\"News\" provider=\"Meridian\" group-title=\"Mine;Yours\",News\nx\n"
            "#EXTINF:-1 tvg-name=\"Films\",Films\nx\n");
  EXPECT_EQ(losses_of(made, "x", true), (row_list{"type: 2", "network_name: 2", "net_index: 2", "network_id: 2",
                                                  "ts_id: 2", "frequency: 2", "service_id: 2"}));
}

TEST_F(M3uWriter, TheAddressFollowsItsTemplate) {
  line_up_service service = service_named("A/B \xC3\xA9", 0xABC);
  service.number = channel_number{12, 3};
  service.fields.net_index = 4;
  service.fields.polarisation = 1;

  const std::string text =
      text_of(line_up_of({service}), "{net_index}/{network_id:x}/{ts_id}/{frequency}{polarisation}/{service_id:x}/"
                                     "{number}.{minor}?name={name}&}");

  EXPECT_EQ(text.substr(text.rfind('\n', text.size() - 2) + 1), "4/9e/2010/11345000V/abc/12.3?name=A%2FB%20%C3%A9&}\n");
}

TEST_F(M3uWriter, WhatTheAddressSaysIsNoLoss) {
  line_up_service service = service_named("News", 1);
  service.fields.polarisation = 1;
  service.fields.net_index = 3;
  const line_up given = line_up_of({service});

  EXPECT_EQ(losses_of(given, "{network_id}{ts_id:x}{frequency}{service_id}{polarisation}{net_index}"),
            (row_list{"type: 1", "network_name: 1"}));
  EXPECT_EQ(losses_of(given),
            (row_list{"type: 1", "network_name: 1", "net_index: 1", "frequency: 1", "polarisation: 1"}));
}

TEST_F(M3uWriter, WhatIsInNoEntryIsCounted) {
  fill_list(line_up_of({service_named("News", 1)}), lost);
  test_support::append_entry(VIEW_USER, list.vch[0]);
  test_support::append_entry(VIEW_PROMOTION, list.vch[0]);
  list.use_tuner = 2;

  EXPECT_EQ(losses(tool_test::export_of(list, "m3u").lost),
            (row_list{"type: 1", "network_name: 1", "net_index: 1", "frequency: 1", "entries of the USER view: 1",
                      "entries of the promotion view: 1", "setting: tuner: 1"}));
}

TEST_F(M3uWriter, ATemplateOfUnknownFieldsIsRefused) {
  const std::string fields =
      "there are number, minor, name, short_name, name_table, short_name_table, type, provider, genre, country, "
      "favourites, network_name, net_index, network_id, ts_id, frequency, polarisation, service_id, pmt_pid, pcr_pid, "
      "video_pid, video_tag, video_ecm_pid, audio_pid, audio_tag, locked, skipped, scrambled, data, flags, "
      "service_type, "
      "source_type, provider_id, genre_id, country_id, order_key, and numbers with :x in hexadecimal digits";
  EXPECT_EQ(refusal("http://{host}/"), "--url: no field \"host\": " + fields);
  EXPECT_EQ(refusal("{}"), "--url: no field \"\": " + fields);
  EXPECT_EQ(refusal("{name:x}"), "--url: no field \"name:x\": " + fields);
  EXPECT_EQ(refusal("a{ts_id"), "--url: \"{ts_id\" is not closed");
}

TEST_F(M3uWriter, AnAddressTakesEveryFieldOfAService) {
  line_up_service service = service_named("A", 1);
  service.number = chlist::channel_number{7, 2};
  service.provider = "Sky/1";
  service.fields.video_pid = 0x1FF;

  const std::string text =
      text_of(line_up_of({service}), "x://{number}-{minor}/{provider}/{video_pid:x}/{audio_pid}/{type}/{locked}");

  EXPECT_TRUE(text.ends_with("\nx://7-2/Sky%2F1/1ff//TV/no\n")) << text;
}

TEST_F(M3uWriter, NamesCannotBreakAnEntry) {
  line_up_service service = service_named("A \"B\"\nC", 1);
  service.provider = "P\"\r";

  EXPECT_EQ(text_of(line_up_of({service}), "x"),
            "#EXTM3U\n#EXTINF:-1 tvg-name=\"A 'B' C\" provider=\"P' \" group-title=\"P' \",A 'B' C\nx\n");
}

}  // namespace
