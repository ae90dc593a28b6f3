// The reader of VDR's channels.conf: whole lines, whole files and group separators.
#include "chlist/exchange/vdr/vdr_channels_conf.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "tool/exchange/vdr/read_line.h"
#include "tool/exchange/vdr/service_line.h"

namespace {

using chlist::parse_vdr_channels_conf;
using chlist::vdr_line_up;
using chlist::vdr_service;
using tool_test::pid_list;
using tool_test::pids;
using tool_test::read;
using tool_test::refusal;
using tool_test::refusal_of_text;
using tool_test::service_line;

TEST(VdrLine, AllFieldsOfATelevisionServiceAreRead) {
  const vdr_service service = read({.name = "Northlight One,Nl1;Northlight",
                                    .frequency = "11306",
                                    .parameters = "VC23M5O35P0S1",
                                    .source = "S13.5E",
                                    .symbol_rate = "22000",
                                    .video = "401+400=27",
                                    .audio = "402=eng@3,403=mul@4;404=eng@106",
                                    .teletext = "405;406=eng",
                                    .ca_ids = "B21,b22",
                                    .service_id = "3001",
                                    .network_id = "158",
                                    .transport_id = "2010",
                                    .radio_id = "7"});

  EXPECT_EQ(service.line, 1U);
  EXPECT_EQ(service.lowest_number, 1);
  EXPECT_EQ(service.name, "Northlight One");
  EXPECT_EQ(service.short_name, "Nl1");
  EXPECT_EQ(service.provider, "Northlight");
  EXPECT_EQ(service.frequency_khz, 11'306'000U);
  EXPECT_TRUE(service.is_vertical);
  EXPECT_EQ(service.modulation, "C23M5O35P0S1");
  EXPECT_EQ(service.source, "S13.5E");
  EXPECT_EQ(service.symbol_rate, 22000U);
  EXPECT_EQ(service.video_pid, 401);
  EXPECT_EQ(service.pcr_pid, 400);
  EXPECT_EQ(service.video_type, 27);
  EXPECT_EQ(pids(service.audio), (pid_list{402, 403}));
  EXPECT_EQ(service.audio.front().language, "eng");
  EXPECT_EQ(service.audio.front().type, 3);
  EXPECT_EQ(service.audio.back().language, "mul");
  EXPECT_EQ(service.audio.back().type, 4);
  EXPECT_EQ(pids(service.dolby), (pid_list{404}));
  EXPECT_EQ(service.dolby.front().type, 106);
  EXPECT_EQ(service.teletext_pid, 405);
  EXPECT_EQ(pids(service.subtitles), (pid_list{406}));
  EXPECT_EQ(service.ca_ids, (pid_list{0xB21, 0xB22}));
  EXPECT_EQ(service.service_id, 3001);
  EXPECT_EQ(service.network_id, 158);
  EXPECT_EQ(service.transport_id, 2010);
  EXPECT_EQ(service.radio_id, 7);
}

TEST(VdrLine, TheNumberOfFieldsMustBe9AtLeast) {
  const std::string right = service_line().text();

  EXPECT_EQ(refusal_of_text("no service at all"), "has 1 field instead of 9 to 13");
  EXPECT_EQ(refusal_of_text("A:B:C:D:E:F:G:H"), "has 8 fields instead of 9 to 13");
  EXPECT_EQ(refusal_of_text("Name:" + right), "source 'HC34M2S0' is unknown");
}

TEST(VdrLine, ANulByteIsRefused) {
  std::string line = service_line().text();
  line[2] = '\0';

  EXPECT_EQ(refusal_of_text(line), "holds a NUL byte");
  EXPECT_EQ(refusal_of_text(std::string_view(":gr\0up", 6)), "holds a NUL byte");
}

TEST(VdrLine, AReasonQuotesLittleAndNothingThatMovesTheCursor) {
  EXPECT_EQ(refusal({.symbol_rate = "\x1B[2J\xC3\xA4x"}), "symbol rate '?[2J\xC3\xA4x' is not a number");
  EXPECT_EQ(refusal({.symbol_rate = std::string(32, 'x')}),
            "symbol rate '" + std::string(32, 'x') + "' is not a number");
  EXPECT_EQ(refusal({.symbol_rate = std::string(33, 'x')}),
            "symbol rate '" + std::string(31, 'x') + "\u2026' is not a number");
}

TEST(VdrFile, AnEmptyFileHasNothing) {
  const vdr_line_up line_up = parse_vdr_channels_conf("");

  EXPECT_TRUE(line_up.services.empty());
  EXPECT_TRUE(line_up.skipped.empty());
  EXPECT_EQ(line_up.groups.size(), 0U);
}

TEST(VdrFile, ABadLineEndsNothing) {
  const vdr_line_up line_up =
      parse_vdr_channels_conf(service_line{.name = "A"}.text() + "bad\n" + service_line{.name = "B"}.text());

  ASSERT_EQ(line_up.services.size(), 2U);
  EXPECT_EQ(line_up.services[1].name, "B");
  EXPECT_EQ(line_up.services[1].line, 3U);
  ASSERT_EQ(line_up.skipped.size(), 1U);
  EXPECT_EQ(line_up.skipped[0].line, 2U);
}

TEST(VdrFile, BlankLinesCountAsLinesAndNothingElse) {
  const vdr_line_up line_up = parse_vdr_channels_conf("\n \t\n\r\n" + service_line().text() + "\n\n");

  ASSERT_EQ(line_up.services.size(), 1U);
  EXPECT_EQ(line_up.services[0].line, 4U);
  EXPECT_TRUE(line_up.skipped.empty());
}

TEST(VdrFile, TheLastLineMayLackItsEnd) {
  std::string text = service_line{.radio_id = "5"}.text();
  text.pop_back();

  const vdr_line_up line_up = parse_vdr_channels_conf(text);

  ASSERT_EQ(line_up.services.size(), 1U);
  EXPECT_EQ(line_up.services[0].radio_id, 5);
}

TEST(VdrFile, LinesMayEndInCrLf) {
  std::string text = service_line().text() + ":@50 Group\n" + service_line().text();
  for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 2) {
    text.insert(at, "\r");
  }

  const vdr_line_up line_up = parse_vdr_channels_conf(text);

  EXPECT_TRUE(line_up.skipped.empty());
  ASSERT_EQ(line_up.services.size(), 2U);
  EXPECT_EQ(line_up.services[1].lowest_number, 50);
}

TEST(VdrFile, AByteOrderMarkIsPassedOver) {
  const vdr_line_up line_up = parse_vdr_channels_conf("\xEF\xBB\xBF" + service_line{.name = "First"}.text());

  ASSERT_EQ(line_up.services.size(), 1U);
  EXPECT_EQ(line_up.services[0].name, "First");
}

TEST(VdrFile, LinesMayBeOfAnyLength) {
  const std::string name(3'000'000, 'n');

  EXPECT_EQ(read({.name = name}).name, name);
  EXPECT_EQ(refusal_of_text(name), "has 1 field instead of 9 to 13");
}

TEST(VdrSeparator, ANumberRaisesThoseOfTheServicesThatFollow) {
  const std::string service = service_line().text();

  const vdr_line_up line_up =
      parse_vdr_channels_conf(service + ":@100\n" + service + service + ":@1000 New\n" + service);

  ASSERT_EQ(line_up.services.size(), 4U);
  EXPECT_EQ(line_up.services[0].lowest_number, 1);
  EXPECT_EQ(line_up.services[1].lowest_number, 100);
  EXPECT_EQ(line_up.services[2].lowest_number, 100);
  EXPECT_EQ(line_up.services[3].lowest_number, 1000);
}

TEST(VdrSeparator, ANumberNeverLowers) {
  const vdr_line_up line_up = parse_vdr_channels_conf(":@100\n:@50\n" + service_line().text());

  ASSERT_EQ(line_up.services.size(), 1U);
  EXPECT_EQ(line_up.services[0].lowest_number, 100);
}

TEST(VdrSeparator, WithoutANumberItChangesNothing) {
  for (const char *separator : {":Group\n", ":@\n", ":@x\n", ":@0\n", ":\n", ":Group @7\n"}) {
    const vdr_line_up line_up = parse_vdr_channels_conf(separator + service_line().text());

    ASSERT_EQ(line_up.services.size(), 1U) << separator;
    EXPECT_EQ(line_up.services[0].lowest_number, 1) << separator;
    EXPECT_TRUE(line_up.skipped.empty()) << separator;
  }
}

TEST(VdrSeparator, GroupsWithANameAreCounted) {
  EXPECT_EQ(parse_vdr_channels_conf(":News\n:@100\n:@200 Films\n:\n:@300  \n").groups.size(), 2U);
}

TEST(VdrSeparator, AGroupNameMayHoldColons) {
  const vdr_line_up line_up = parse_vdr_channels_conf("::a:b:c:d:e:f:g:h:i:j:k:l\n");

  EXPECT_EQ(line_up.groups.size(), 1U);
  EXPECT_TRUE(line_up.skipped.empty());
}

TEST(VdrSeparator, NumbersEndAtTheLargestChannelNumber) {
  const std::string service = service_line().text();

  EXPECT_EQ(parse_vdr_channels_conf(":@32767\n" + service).services.at(0).lowest_number, 32767);
  EXPECT_EQ(refusal_of_text(":@32768 Group\n"), "channel number '32768' is not within 0..32767");
  EXPECT_EQ(refusal_of_text(":@99999999999\n"), "channel number '99999999999' is not within 0..32767");
  EXPECT_EQ(parse_vdr_channels_conf(":@32768\n" + service).services.at(0).lowest_number, 1);
}

}  // namespace
