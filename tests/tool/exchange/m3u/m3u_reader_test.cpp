// An M3U playlist as a line-up.
#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "chlist/exchange/m3u/m3u.h"
#include "tool/exchange/import_host.h"
#include "tool/exchange/line_ups.h"

namespace {

using chlist::channel_number;
using chlist::line_up;
using chlist::line_up_service;
using chlist::loss_counts;
using tool_test::losses;
using tool_test::program_result;
using tool_test::row_list;
using tool_test::write_file;

class M3uReader : public ::testing::Test {
 protected:
  line_up read(const std::string &text, const std::string &url = "") {
    chlist::list_source source = chlist::source_of({{"", text}}, false);
    source.url = url;
    return read_m3u(source, lost);
  }

  // "network.ts.service" of the only service; nothing when there is none.
  std::optional<std::string> ids_in(const std::string &address, const std::string &url = "") {
    const line_up made = read("#EXTM3U\n#EXTINF:-1,News\n" + address + "\n", url);
    if (made.services.size() != 1) {
      return std::nullopt;
    }
    const channel_st &fields = made.services.front().fields;
    return std::to_string(fields.network_id) + "." + std::to_string(fields.ts_id) + "." +
           std::to_string(fields.service_id);
  }

  std::string refusal(const std::string &url) {
    try {
      read("", url);
    } catch (const std::runtime_error &error) {
      return error.what();
    }
    return "";
  }

  loss_counts lost;
};

TEST_F(M3uReader, AnEntryIsAServiceWithItsNumberNameProviderAndGroups) {
  const line_up made = read(
      "#EXTM3U\n"
      "#EXTINF:-1 tvg-chno=\"7.2\" tvg-name=\"Other\" provider=\"Meridian\" group-title=\"News, all;Mine\",News, 24\n"
      "dvb://9e.7da.1f\n");

  ASSERT_EQ(made.services.size(), 1U);
  const line_up_service &service = made.services.front();
  EXPECT_EQ(service.line, 2U);
  EXPECT_EQ(service.name, "News, 24");
  EXPECT_EQ(service.provider, "Meridian");
  EXPECT_EQ(service.number, (channel_number{7, 2}));
  EXPECT_EQ(service.fields.service_type, SERVICE_TYPE_TV);
  EXPECT_EQ(service.fields.network_id, 0x9E);
  EXPECT_EQ(service.fields.ts_id, 0x7DA);
  EXPECT_EQ(service.fields.service_id, 0x1F);
  ASSERT_EQ(made.favourites.size(), 2U);
  EXPECT_EQ(made.favourites[0].name, "News, all");
  EXPECT_EQ(made.favourites[1].name, "Mine");
  EXPECT_EQ(made.favourites[1].entries.front().service, 0U);
  EXPECT_EQ(losses(lost), row_list{});
}

TEST_F(M3uReader, ATitleThatIsTheProvidersNameIsNoGroup) {
  EXPECT_TRUE(read("#EXTINF:-1 provider=\"P\" group-title=\"P\",A\ndvb://1.2.3\n").favourites.empty());
}

TEST_F(M3uReader, TheGroupMayStandOnALineOfItsOwnAndTheNameInAnAttribute) {
  const line_up made = read("#EXTINF:-1 tvg-name=\"A\" radio=\"true\"\n#EXTGRP: Best \ndvb://1.2.3\n");

  EXPECT_EQ(made.services.at(0).name, "A");
  EXPECT_EQ(made.services.at(0).fields.service_type, SERVICE_TYPE_RADIO);
  EXPECT_EQ(made.favourites.at(0).name, "Best");
}

TEST_F(M3uReader, AnAddressWithoutInformationIsAServiceWithoutAName) {
  const line_up made = read("dvb://1.2.3\n\ndvb://1.2.4");

  ASSERT_EQ(made.services.size(), 2U);
  EXPECT_EQ(made.services[0].name, "");
  EXPECT_EQ(made.services[1].line, 3U);
}

TEST_F(M3uReader, UsualAddressesOfPlayersAndReceiversHoldIds) {
  EXPECT_EQ(ids_in("dvb://9e.7da.1f"), "158.2010.31");
  EXPECT_EQ(ids_in("http://my-box:8001/1:0:19:283D:3FB:1:C00000:0:0:0:"), "1.1019.10301");
  EXPECT_EQ(ids_in("http://box:3000/S19.2E-1-1079-28006"), "1.1079.28006");
  EXPECT_EQ(ids_in("http://my-box:3000/TS/S19.2E-1-1079-28006"), "1.1079.28006");
  EXPECT_EQ(ids_in("http://host/stream/5"), std::nullopt);
  EXPECT_EQ(ids_in("dvb://1.2"), std::nullopt);
  EXPECT_EQ(ids_in("dvb://1.2.10000"), std::nullopt);
  EXPECT_EQ(ids_in("dvb://1..3"), std::nullopt);
  EXPECT_EQ(ids_in("dvb://-1.2.3"), std::nullopt);
}

TEST_F(M3uReader, ATemplateSaysWhereAnAddressHoldsWhat) {
  const std::string url = "{}/{network_id}:{ts_id:x}:{service_id}?f={frequency}{polarisation}";
  const line_up made =
      read("http://a:1/7:ff:9?f=11494000V\n", "http://a:1/{network_id}:{ts_id:x}:{service_id}?f={frequency}V");

  EXPECT_EQ(made.services.at(0).fields.frequency, 11494000U);
  EXPECT_EQ(ids_in("http://a:1/7:ff:9", "{}/{network_id}:{ts_id:x}:{service_id}"), "7.255.9");
  EXPECT_EQ(ids_in("dvb://9e.7da.1f", "x://{network_id}:{ts_id:x}:{service_id}"), std::nullopt);
  EXPECT_EQ(ids_in("http://a:1/7:ff:9?f=", url), std::nullopt);
}

TEST_F(M3uReader, ATextInAnAddressIsDecoded) {
  const line_up made = read("x://1/2/3/A%2FB%20%C3%A9%\n", "x://{network_id}/{ts_id}/{service_id}/{short_name}");

  EXPECT_EQ(made.services.at(0).short_name, "A/B \xC3\xA9%");
}

TEST_F(M3uReader, ATemplateThatIsNoneIsRefused) {
  EXPECT_EQ(refusal("x://{network_id}/{ts_id}"),
            "--url: says no service_id: a service is known by network_id, ts_id and service_id");
  EXPECT_EQ(refusal("{}{}{}{network_id}/{ts_id}/{service_id}"), "--url: {} stands more than twice");
  EXPECT_TRUE(refusal("{host}").starts_with("--url: no field \"host\""));
}

TEST_F(M3uReader, WhatAChannelListHasNoPlaceForIsCounted) {
  const line_up made =
      read("#EXTM3U url-tvg=\"x\"\n"
           "#EXTINF:-1 tvg-id=\"a\" tvg-logo=\"http://l\" tvg-chno=\"x\" tvg-rec=\"\",A\n#EXTVLCOPT:http-user-agent=x\n"
           "dvb://1.2.3\n");

  EXPECT_EQ(made.services.size(), 1U);
  EXPECT_EQ(losses(lost), (row_list{"attribute tvg-id: 1", "attribute tvg-logo: 1", "channel numbers that are none: 1",
                                    "lines of players: 1"}));
}

TEST_F(M3uReader, AnAddressWithoutIdsIsSkippedAndShown) {
  const line_up made = read("#EXTM3U\n#EXTINF:-1,A\nhttp://x/1.ts\n#EXTINF:-1,B\ndvb://1.2.3\n");

  ASSERT_EQ(made.skipped.size(), 1U);
  EXPECT_EQ(made.skipped.front().line, 2U);
  EXPECT_EQ(made.skipped.front().reason, "its address says no ids: 'http://x/1.ts'");
  EXPECT_EQ(made.services.size(), 1U);
}

TEST_F(M3uReader, InformationThatIsCutAnywhereIsRead) {
  const std::string whole = "#EXTINF:-1 tvg-chno=\"7\" tvg-logo=x group-title=\"A;B\",Name";
  for (std::size_t size = 0; size <= whole.size(); ++size) {
    EXPECT_EQ(read(whole.substr(0, size) + "\ndvb://1.2.3\n").services.size(), 1U) << size;
  }
}

class M3uImport : public tool_test::import_test {
 protected:
  void SetUp() override {
    import_test::SetUp();
    ASSERT_EQ(run({"import", tool_test::sample, "-o", "known.dat", "--groups", "none"}).exit_code, 0);
  }

  [[nodiscard]] std::string listed(const std::string &file) const {
    return run({"list", file, "--columns", "number,name,type,provider,network_name,frequency,polarisation,video_pid",
                "--format", "csv"})
        .out;
  }
};

TEST_F(M3uImport, APlaylistComesBackByTheListThatItWasMadeOf) {
  run({"export", "known.dat", "-o", "list.m3u"});

  const program_result result = run({"import", "list.m3u", "-o", "back.dat", "--like", "known.dat"});

  EXPECT_EQ(result.exit_code, 0) << result.err << result.out;
  EXPECT_EQ(listed("back.dat"), listed("known.dat"));
}

TEST_F(M3uImport, ServicesThatNobodyCanTuneToAreTold) {
  run({"export", "known.dat", "-o", "list.m3u"});

  const program_result result = run({"import", "list.m3u", "-o", "back.dat"});

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_NE(result.err.find("frequencies"), std::string::npos) << result.err << result.out;
}

TEST_F(M3uImport, FavouriteGroupsComeBack) {
  run({"fav", "new", "known.dat", "Best"});
  run({"fav", "add", "known.dat", "Best", "1", "3"});
  run({"export", "known.dat", "-o", "list.m3u", "--favourites"});

  run({"import", "list.m3u", "-o", "back.dat", "--like", "known.dat"});

  EXPECT_EQ(run({"fav", "list", "back.dat"}).out, run({"fav", "list", "known.dat"}).out);
}

const std::string somebodys_playlist =
    "\xEF\xBB\xBF#EXTM3U url-tvg=\"http://g\"\r\n"
    "#EXTINF:-1 tvg-id=\"a\" tvg-logo=http://l tvg-chno=\"5\" group-title=\"Mine\", News 24\r\n"
    "#EXTVLCOPT:x=y\r\nhttp://box:8001/1:0:1:BB9:7DA:9E:0:0:0:0:\r\n"
    "# a remark\r\n\r\n"
    "#EXTINF:-1,No ids\r\nhttp://x/1.ts\r\n"
    "#EXTINF:-1 radio=\"true\",Radio\r\nhttp://box:8001/1:0:2:C83:7EB:9E:0:0:0:0:";

class M3uWayBack : public M3uImport {
 protected:
  void SetUp() override {
    M3uImport::SetUp();
    write_file(path("own.m3u"), somebodys_playlist);
    ASSERT_EQ(run({"import", "own.m3u", "-o", "own.dat", "--like", "known.dat"}).exit_code, 1);
  }

  [[nodiscard]] std::string exported(const std::vector<std::string> &options = {}) const {
    run({"export", "own.dat", "-o", "back.m3u"}, options);
    return tool_test::read_file(path("back.m3u"));
  }

  static std::string with(std::string text, const std::string &from, const std::string &to) {
    return text.replace(text.find(from), from.size(), to);
  }
};

TEST_F(M3uWayBack, APlaylistThatNobodyEditedIsTheSameText) { EXPECT_EQ(exported(), somebodys_playlist); }

TEST_F(M3uWayBack, EditsChangeNothingButWhatTheyAreAbout) {
  run({"rename", "own.dat", "5", "News 25"});

  EXPECT_EQ(exported(), with(somebodys_playlist, ", News 24", ",News 25"));
}

TEST_F(M3uWayBack, NumbersAndGroupsAreWrittenIntoTheirAttributes) {
  run({"renumber", "own.dat", "5", "7"});
  run({"fav", "rename", "own.dat", "Mine", "Ours"});

  // The radio is number 6 as before, and no longer the one behind the service in front of it.
  const std::string renumbered =
      with(with(somebodys_playlist, "tvg-chno=\"5\"", "tvg-chno=\"7\""), "-1 radio", "-1 tvg-chno=\"6\" radio");
  EXPECT_EQ(exported(), with(renumbered, "group-title=\"Mine\"", "group-title=\"Ours\""));
}

TEST_F(M3uWayBack, WhatIsGoneIsLeftOutAndTheRestStays) {
  run({"remove", "own.dat", "5"});

  EXPECT_EQ(exported(), "\xEF\xBB\xBF#EXTM3U url-tvg=\"http://g\"\r\n# a remark\r\n\r\n"
                        "#EXTINF:-1,No ids\r\nhttp://x/1.ts\r\n"
                        "#EXTINF:-1 tvg-chno=\"6\" radio=\"true\",Radio\r\nhttp://box:8001/1:0:2:C83:7EB:9E:0:0:0:0:");
}

TEST_F(M3uWayBack, AddressesThatAreAskedForAreWrittenAnew) {
  EXPECT_TRUE(exported({"--url", "x://{service_id}"}).ends_with("x://3203\n"));
}

}  // namespace
