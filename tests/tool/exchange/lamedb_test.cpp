// The lamedb of Enigma2 in its versions: what is read, what is written, and what of a line-up comes back.
#include "chlist/exchange/enigma2/lamedb.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "support/temp_dir.h"
#include "tool/exchange/lamedb_folder.h"
#include "tool/exchange/random_line_up.h"

namespace {

using namespace tool_test::enigma2;

constexpr std::string_view sample_services = "services\n"
                                             "0bb9:00870000:07da:009e:25:0\n"
                                             "Northlight One\n"
                                             "p:Northlight,c:000191,c:010192,c:030190,C:0b00,f:40\n"
                                             "0001:ffff0000:0001:0002:2:0\n"
                                             "Radio\n"
                                             "p:,c:040022\n"
                                             "0002:eeee0000:0003:0004:1:0\n"
                                             "Antenna\n"
                                             "p:Free\n"
                                             "end\n";

const std::string version_4 = std::string("eDVB services /4/\n"
                                          "transponders\n"
                                          "00870000:07da:009e\n"
                                          "\ts 11306000:22000000:1:9:135:2:0:1:2:0:2\n"
                                          "/\n"
                                          "ffff0000:0001:0002\n"
                                          "\tc 394000:6900000:2:3:0:0:0\n"
                                          "/\n"
                                          "eeee0000:0003:0004\n"
                                          "\tt 514000000:0:5:5:3:2:4:4:2:0:0:0\n"
                                          "/\n"
                                          "end\n")
                                  .append(sample_services)
                                  .append("Have a lot of bugs!\n");

// Version 3 knows neither DVB-S2 nor flags: the parameters of transponders end before them.
const std::string version_3 = std::string("eDVB services /3/\n"
                                          "transponders\n"
                                          "00870000:07da:009e\n"
                                          "\ts 11306000:22000000:1:9:135:2\n"
                                          "/\n"
                                          "ffff0000:0001:0002\n"
                                          "\tc 394000:6900000:2:3:0\n"
                                          "/\n"
                                          "eeee0000:0003:0004\n"
                                          "\tt 514000000:0:5:5:3:2:4:4:2\n"
                                          "/\n"
                                          "end\n")
                                  .append(sample_services);

constexpr std::string_view version_5 =
    "eDVB services /5/\n"
    "# Transponders: t:dvb_namespace:transport_stream_id:original_network_id,FEPARMS\n"
    "t:00870000:07da:009e,s:11306000:22000000:1:9:135:2:0:1:2:0:2\n"
    "t:ffff0000:0001:0002,c:394000:6900000:2:3:0:0:0\n"
    "t:eeee0000:0003:0004,t:514000000:0:5:5:3:2:4:4:2:0:0:0\n"
    "s:0bb9:00870000:07da:009e:25:0:0,\"Northlight One\",p:Northlight,c:000191,c:010192,c:030190,C:0b00,f:40\n"
    "s:0001:ffff0000:0001:0002:2:0:0,\"Radio\",p:,c:040022\n"
    "s:0002:eeee0000:0003:0004:1:0:0,\"Antenna\",p:Free\n";

line_up parse(std::string_view text) {
  loss_counts lost;
  return chlist::parse_lamedb(text, lost).list;
}

std::string replaced(std::string_view text, std::string_view what, std::string_view by) {
  std::string made(text);
  for (std::size_t at = 0; (at = made.find(what, at)) != std::string::npos; at += by.size()) {
    made.replace(at, what.size(), by);
  }
  return made;
}

// A version 4 with one satellite service of these options.
std::string with_options(const std::string &options) {
  return "eDVB services /4/\ntransponders\n00c00000:0001:0001\n\ts 11306000:22000000:0:0:192:2:0\n/\nend\nservices\n"
         "0001:00c00000:0001:0001:1:0\nA\n" +
         options + "\nend\n";
}

std::string error_of(std::string_view text) {
  try {
    parse(text);
  } catch (const std::runtime_error &error) {
    return error.what();
  }
  return "";
}

void expect_the_sample(const line_up &list) {
  EXPECT_EQ(skipped_in(list), texts{});
  ASSERT_EQ(list.services.size(), 3U);
  const line_up_service &first = list.services[0];
  EXPECT_EQ(first.name, "Northlight One");
  EXPECT_EQ(first.provider, "Northlight");
  EXPECT_EQ(first.source, "S13.5E");
  EXPECT_EQ(first.fields.service_id, 3001);
  EXPECT_EQ(first.fields.ts_id, 2010);
  EXPECT_EQ(first.fields.network_id, 158);
  EXPECT_EQ(first.fields.frequency, 11'306'000);
  EXPECT_EQ(first.fields.polarisation, 1);
  EXPECT_EQ(first.fields.service_type, SERVICE_TYPE_TV);
  EXPECT_EQ(first.fields.source_type, 1);
  EXPECT_EQ(first.fields.video_pid, 0x191);
  EXPECT_EQ(first.fields.audio_pid, 0x192);
  EXPECT_EQ(first.fields.pcr_pid, 0x190);
  EXPECT_EQ(first.fields.flag, CHANNEL_FLAG_FTA);
  EXPECT_EQ(list.services[1].source, "C");
  EXPECT_EQ(list.services[1].fields.frequency, 394'000);
  EXPECT_EQ(list.services[1].fields.audio_pid, 0x22);
  EXPECT_EQ(list.services[1].fields.service_type, SERVICE_TYPE_RADIO);
  EXPECT_EQ(list.services[1].fields.flag, 0);
  EXPECT_EQ(list.services[2].source, "T");
  EXPECT_EQ(list.services[2].fields.frequency, 514'000);
  EXPECT_EQ(list.services[2].fields.video_pid, 0xFFFF);
}

TEST(LamedbReader, EveryVersionIsReadAlike) {
  expect_the_sample(parse(version_4));
  expect_the_sample(parse(version_3));
  expect_the_sample(parse(version_5));
  EXPECT_EQ(parse(version_4).services[0].line, 14U);
  EXPECT_EQ(parse(version_5).services[0].line, 6U);
}

TEST(LamedbReader, LinesMayEndInCrLfAndAByteOrderMarkIsPassedOver) {
  expect_the_sample(parse("\xEF\xBB\xBF" + replaced(version_4, "\n", "\r\n")));
  expect_the_sample(parse("\xEF\xBB\xBF" + replaced(version_5, "\n", "\r\n")));
}

TEST(LamedbReader, WhatAListDoesNotKeepIsCounted) {
  loss_counts lost;

  chlist::parse_lamedb(version_4, lost);

  EXPECT_EQ(count_of(lost, "symbol rates and modulation"), 3U);
  EXPECT_EQ(count_of(lost, "service types of newer television and radio"), 1U);
  EXPECT_EQ(count_of(lost, "CA ids (but marked as scrambled)"), 1U);
  EXPECT_EQ(lost.rows().size(), 3U);
}

TEST(LamedbReader, OptionsThatAListDoesNotKeepAreCounted) {
  const struct {
    const char *options;
    const char *what;
  } cases[] = {{"p:,c:010021,c:040022", "further audio PIDs"},
               {"p:,c:020021", "PIDs of other streams, and kinds of streams"},
               {"p:,f:2", "flags of Enigma2"},
               {"p:,x:1", "other settings"}};

  for (const auto &each : cases) {
    loss_counts lost;

    EXPECT_EQ(chlist::parse_lamedb(with_options(each.options), lost).list.services.size(), 1U);

    EXPECT_EQ(count_of(lost, each.what), 1U) << each.options;
    EXPECT_EQ(lost.rows().size(), 2U) << each.options;
  }
}

TEST(LamedbReader, AnOptionThatCannotBeReadLeavesTheService) {
  const struct {
    const char *options;
    const char *reason;
  } cases[] = {
      {"p:,c:0x0021", "8: kind of a cached PID '0x' is not a number; the service is kept"},
      {"p:,c:00", "8: cached PID '' is not a number; the service is kept"},
      {"p:,c:", "8: kind of a cached PID '' is not a number; the service is kept"},
      {"p:,C:xyz", "8: CA id 'xyz' is not a number; the service is kept"},
      {"p:,c:00ffffffffff", "8: cached PID 'ffffffffff' is not within 0..4294967295; the service is kept"},
  };

  for (const auto &each : cases) {
    const line_up list = parse(with_options(each.options));

    EXPECT_EQ(skipped_in(list), texts{each.reason});
    EXPECT_EQ(list.services.size(), 1U);
  }
}

TEST(LamedbReader, PidsOutsideThoseOfStreamsAreNone) {
  EXPECT_EQ(parse(with_options("c:000000")).services.at(0).fields.video_pid, 0xFFFF);
  EXPECT_EQ(parse(with_options("c:000001")).services.at(0).fields.video_pid, 1);
  EXPECT_EQ(parse(with_options("c:001fff")).services.at(0).fields.video_pid, 0x1FFF);
  EXPECT_EQ(parse(with_options("c:002000")).services.at(0).fields.video_pid, 0xFFFF);
}

TEST(LamedbReader, AProviderMayHoldACommaAndACaIdOf0MarksOnly) {
  loss_counts lost;

  const line_up list = chlist::parse_lamedb(with_options("p:Northlight, Ltd,C:0000"), lost).list;

  EXPECT_EQ(list.services.at(0).provider, "Northlight, Ltd");
  EXPECT_EQ(list.services.at(0).fields.flag, CHANNEL_FLAG_FTA);
  EXPECT_EQ(count_of(lost, "CA ids (but marked as scrambled)"), 0U);
}

TEST(LamedbReader, PositionsAreEastOrWest) {
  const struct {
    const char *position;
    const char *source;
  } cases[] = {{"192", "S19.2E"},  {"0", "S0.0E"},      {"-300", "S30.0W"},
               {"3300", "S30.0W"}, {"1800", "S180.0E"}, {"1801", "S179.9W"}};

  for (const auto &each : cases) {
    const std::string text = replaced(with_options("p:"), ":192:", ":" + std::string(each.position) + ":");

    EXPECT_EQ(parse(text).services.at(0).source, each.source);
  }
}

TEST(LamedbReader, CircularPolarisationsAreCounted) {
  for (const auto &[code, polarisation] : {std::pair("2", 0), std::pair("3", 1)}) {
    loss_counts lost;

    const line_up list =
        chlist::parse_lamedb(replaced(with_options("p:"), ":22000000:0:", ":22000000:" + std::string(code) + ":"), lost)
            .list;

    EXPECT_EQ(list.services.at(0).fields.polarisation, polarisation);
    EXPECT_EQ(count_of(lost, "circular polarisations (left as horizontal, right as vertical)"), 1U);
  }
}

TEST(LamedbReader, WhatIsNoLamedbIsRefused) {
  EXPECT_EQ(error_of(""), "is no lamedb: the first line is not \"eDVB services /4/\"");
  EXPECT_EQ(error_of("[A]\n"), "is no lamedb: the first line is not \"eDVB services /4/\"");
  EXPECT_EQ(error_of("eDVB services /2/\n"), "lamedb of version '2': only 3, 4 and 5 are known");
  EXPECT_EQ(error_of("eDVB services /6/\n"), "lamedb of version '6': only 3, 4 and 5 are known");
  EXPECT_EQ(error_of("eDVB services /\x1B[2J"), "lamedb of version '?[2J': only 3, 4 and 5 are known");
}

TEST(LamedbReader, ABadTransponderTakesItsServicesWithIt) {
  const struct {
    const char *what;
    const char *by;
    const char *reason;
  } cases[] = {
      {"\ts 11", "\tx 11", "3: transponder '?x 11306000:22000000:0:0:192:2:0' is of no known kind (s, c, t or a)"},
      {"s 11306000", "s 4294967296", "3: frequency '4294967296' is not within 0..4294967295"},
      {"000:0:0:192", "000:4:0:192", "3: polarisation '4' is not within 0..3"},
      {":192:", ":3600:", "3: orbital position '3600' is not within 0..3599"},
      {":0:0:192:2:0", "", "3: a satellite's transponder has fewer than 6 fields"},
      {"\n00c00000:0001:0001\n", "\n1:1\n", "3: transponder '1:1' is not NAMESPACE:TSID:ONID"},
      {"\n00c00000:0001:0001\n", "\n1:10000:1\n", "3: TSID '10000' is not within 0..65535"},
  };

  for (const auto &each : cases) {
    const line_up list = parse(replaced(with_options("p:"), each.what, each.by));

    EXPECT_EQ(skipped_in(list), (texts{each.reason, "8: its transponder 00c00000:0001:0001 is not in the file"}));
    EXPECT_TRUE(list.services.empty());
  }
}

TEST(LamedbReader, ATransponderThatIsThereTwiceIsSkippedButForItsFirst) {
  const line_up sections =
      parse(replaced(version_4, "/\nend\nservices", "/\n00870000:07da:009e\n\ts 1:2:0:9:192:2:0\n/\nend\nservices"));
  const line_up lines = parse(replaced(version_5, "s:0bb9", "t:00870000:07da:009e,s:1:2:0:9:192:2:0\ns:0bb9"));

  EXPECT_EQ(skipped_in(sections), texts{"12: is the same transponder as line 3"});
  EXPECT_EQ(sections.services.at(0).fields.frequency, 11'306'000);
  EXPECT_EQ(skipped_in(lines), texts{"6: is the same transponder as line 3"});
  EXPECT_EQ(lines.services.at(0).fields.frequency, 11'306'000);
}

TEST(LamedbReader, ABadServiceIsSkippedWithItsNameAndOptions) {
  const struct {
    const char *line;
    const char *reason;
  } cases[] = {
      {"10000:00870000:07da:009e:1:0", "14: SID '10000' is not within 0..65535"},
      {"0001:00870000:07da:009e:256:0", "14: service type '256' is not within 0..255"},
      {"0001:00870000:07da:009e:1:x", "14: service number 'x' is not a number"},
      {"0001:00870000:07da:009e:1:0:0:0",
       "14: service '0001:00870000:07da:009e:1:0:0:0' is not SID:NAMESPACE:TSID:ONID:TYPE:NUMBER"},
  };

  for (const auto &each : cases) {
    const line_up list = parse(replaced(version_4, "0bb9:00870000:07da:009e:25:0", each.line));

    EXPECT_EQ(skipped_in(list), texts{each.reason});
    EXPECT_EQ(list.services.size(), 2U);
  }
}

TEST(LamedbReader, GarbageBetweenServicesIsPassedOver) {
  const line_up list = parse(replaced(version_4, "0001:ffff", "garbage\nmore\n0001:ffff"));

  EXPECT_EQ(skipped_in(list), (texts{"17: is no service", "18: is no service"}));
  EXPECT_EQ(list.services.size(), 3U);
}

TEST(LamedbReader, ServicesMayLackTheirOptions) {
  const line_up list = parse(replaced(version_4, "p:,c:040022\n", ""));

  EXPECT_EQ(skipped_in(list), texts{});
  EXPECT_EQ(list.services.size(), 3U);
}

TEST(LamedbReader, AServiceThatIsThereTwiceIsSkipped) {
  EXPECT_EQ(skipped_in(parse(replaced(version_4, "0bb9:0087", "0bb9:00870000:07da:009e:1:0\nB\np:\n0bb9:0087"))),
            texts{"17: is the same service as line 14"});
}

TEST(LamedbReader, ACutFileGivesWhatItHas) {
  const std::string text(version_4);

  EXPECT_EQ(skipped_in(parse(text.substr(0, text.find("end\nHave")))), texts{"22: the file ends within a section"});
  EXPECT_EQ(parse(text.substr(0, text.find("end\nHave"))).services.size(), 3U);
  EXPECT_EQ(skipped_in(parse(text.substr(0, text.find("services\n0bb9")))),
            texts{"12: the file ends before its services"});
  EXPECT_EQ(skipped_in(parse("eDVB services /4/\nx\n")),
            (texts{"2: stands in no section", "2: the file ends before its services"}));
}

TEST(LamedbReader, LinesOfVersion5ThatCannotBeReadAreSkipped) {
  const struct {
    const char *line;
    const char *reason;
  } cases[] = {
      {"x", "2: is neither a transponder nor a service"},
      {"s:1:2:3:4:5:6:7", "2: a service without a name in quotation marks"},
      {"s:1:2:3:4:5:6:7,\"A", "2: a service's name without the second quotation mark"},
      {"s:1:2:3:4:5:6:7,\"A\",p:", "2: its transponder 00000002:0003:0004 is not in the file"},
      {"t:1:2:3", "2: transponder '' is of no known kind (s, c, t or a)"},
      {"s:", "2: a service without a name in quotation marks"},
  };

  for (const auto &each : cases) {
    EXPECT_EQ(skipped_in(parse("eDVB services /5/\n" + std::string(each.line) + "\n")), texts{each.reason});
  }
}

TEST(LamedbReader, NamesOfVersion5MayHoldQuotationMarksAndCommas) {
  EXPECT_EQ(parse(replaced(version_5, "\"Radio\"", "\"The \"R\", they say\"")).services.at(1).name,
            "The \"R\", they say");
  EXPECT_EQ(parse(replaced(version_5, "\"Antenna\",p:Free", "\"\"")).services.at(2).name, "");
}

TEST(LamedbReader, NulBytesAreRefused) {
  EXPECT_EQ(skipped_in(parse(replaced(version_4, "Antenna", std::string_view("A\0B", 3)))),
            texts{"20: holds a NUL byte"});
}

TEST(LamedbWriter, Version4IsThreeLinesForAService) {
  line_up_service service = plain_service(0xBB9);
  service.provider = "P";
  service.fields.video_pid = 0x191;
  service.fields.audio_pid = 0x192;
  service.fields.pcr_pid = 0x190;
  service.fields.flag = CHANNEL_FLAG_FTA;

  EXPECT_EQ(written_folder(list_of({service}))["lamedb"], "eDVB services /4/\n"
                                                          "transponders\n"
                                                          "00c00000:07da:009e\n"
                                                          "\ts 11306000:27500000:0:0:192:2:0\n"
                                                          "/\n"
                                                          "end\n"
                                                          "services\n"
                                                          "0bb9:00c00000:07da:009e:1:0\n"
                                                          "A3001\n"
                                                          "p:P,c:000191,c:010192,c:030190,C:0000\n"
                                                          "end\n");
}

TEST(LamedbWriter, Version3HasNoFlagsOfTransponders) {
  const std::string text = written_folder(list_of({plain_service(1)}), 3)["lamedb"];

  EXPECT_EQ(text.substr(0, 18), "eDVB services /3/\n");
  EXPECT_NE(text.find("\ts 11306000:27500000:0:0:192:2\n"), std::string::npos);
}

TEST(LamedbWriter, Version5IsALineForAService) {
  EXPECT_EQ(written_folder(list_of({plain_service(1)}), 5)["lamedb5"],
            "eDVB services /5/\n"
            "t:00c00000:07da:009e,s:11306000:27500000:0:0:192:2:0\n"
            "s:0001:00c00000:07da:009e:1:0:0,\"A1\",p:\n");
}

TEST(LamedbWriter, FrequenciesAreInKhzButForTerrestrialOnes) {
  const struct {
    const char *source;
    std::int64_t khz;
    const char *line;
  } cases[] = {{"S30W", 11'306'000, "0ce40000:07da:009e\n\ts 11306000:27500000:0:0:-300:2:0\n"},
               {"C", 394'000, "ffff0000:07da:009e\n\tc 394000:6900000:2:0:0:0\n"},
               {"T", 514'000, "eeee0000:07da:009e\n\tt 514000000:0:5:5:3:2:4:4:2:0\n"},
               {"T", 4'294'967, "\tt 4294967000:"},
               {"T", 4'294'968, "\tt 0:"},
               {"S0.0E", 4'294'967'295, "\ts 4294967295:"},
               {"S0.0E", 4'294'967'296, "\ts 0:"},
               {"S0.0E", -1, "\ts 0:"}};

  for (const auto &each : cases) {
    line_up_service service = plain_service(1);
    service.source = each.source;
    service.fields.frequency = each.khz;

    EXPECT_NE(written_folder(list_of({service}))["lamedb"].find(each.line), std::string::npos) << each.line;
  }
}

TEST(LamedbWriter, SourcesWithoutAPositionGetFreeOnes) {
  line_up list = list_of({plain_service(1), plain_service(2), plain_service(3), plain_service(4), plain_service(5)});
  list.services[0].source = "Network";
  list.services[1].source = "S0.1E";
  list.services[2].source = "Other";
  list.services[3].source = "Network";
  list.services[4].source = "Other";
  list.services[4].fields.net_index = 7;
  loss_counts lost;

  chlist::write_lamedb(list, 4, lost);

  const line_up read = read_folder(written_folder(list));
  texts sources;
  std::ranges::transform(read.services, std::back_inserter(sources), &line_up_service::source);
  EXPECT_EQ(sources, (texts{"S0.2E", "S0.1E", "S0.3E", "S0.2E", "S0.4E"}));
  EXPECT_EQ(count_of(lost, "network names and positions"), 4U);
}

TEST(LamedbWriter, TranspondersOfTheSameIdsAreToldApartByTheirNamespace) {
  line_up list = list_of({plain_service(1), plain_service(1), plain_service(1), plain_service(2)});
  list.services[1].fields.frequency = 11'345'000;
  list.services[2].fields.polarisation = 1;

  const line_up read = read_folder(written_folder(list));

  ASSERT_EQ(read.services.size(), 4U);
  EXPECT_EQ(read.services[1].fields.frequency, 11'345'000);
  EXPECT_EQ(read.services[2].fields.polarisation, 1);
  EXPECT_NE(written_folder(list)["lamedb"].find("00c02c51:07da:009e\n"), std::string::npos);
}

TEST(LamedbWriter, ThereIsNothingToLoseOfAPlainServiceButWhatIsAssumed) {
  loss_counts lost;

  chlist::write_lamedb(list_of({plain_service(1)}), 5, lost);

  ASSERT_EQ(lost.rows().size(), 1U);
  EXPECT_EQ(lost.rows()[0].what, "symbol rates and the like (assumed: the list has none)");
}

TEST(LamedbWriter, EveryLossIsCounted) {
  const struct {
    const char *what;
    void (*change)(line_up_service &service);
  } cases[] = {
      {"second names", [](line_up_service &s) { s.short_name = "s"; }},
      {"skip marks", [](line_up_service &s) { s.fields.flag = CHANNEL_FLAG_SKIP; }},
      {"names with line ends", [](line_up_service &s) { s.name = "a\nb"; }},
      {"names with quotation marks", [](line_up_service &s) { s.name = "\"a\""; }},
      {"providers with commas or line ends", [](line_up_service &s) { s.provider = "a,b"; }},
      {"service types that are read as television or radio", [](line_up_service &s) { s.fields.service_type = 25; }},
      {"PIDs outside 1..8191", [](line_up_service &s) { s.fields.pcr_pid = 0; }},
      {"frequencies outside the format's range", [](line_up_service &s) { s.fields.frequency = -1; }},
      {"polarisations", [](line_up_service &s) { s.fields.polarisation = 2; }},
      {"network names and positions", [](line_up_service &s) { s.source = "S19E2"; }},
      {"network indexes", [](line_up_service &s) { s.fields.net_index = 2; }},
  };

  for (const auto &each : cases) {
    line_up_service service = plain_service(1);
    each.change(service);
    loss_counts lost;

    chlist::write_lamedb(list_of({service}), 5, lost);

    EXPECT_EQ(count_of(lost, each.what), 1U) << each.what;
    EXPECT_EQ(lost.rows().size(), 2U) << each.what;
  }
}

TEST(LamedbWriter, NamesInOtherTablesBecomeUtf8) {
  line_up list = list_of({plain_service(1)});
  list.services[0].name = "\x05\xC7"
                          "a";
  list.services[0].provider = "\x01\xB0";
  list.favourites = {{"\x0B"
                      "Films",
                      {}}};
  loss_counts lost;

  const line_up read = read_folder(tool_test::folder_of(chlist::write_lamedb(list, 4, lost)));

  EXPECT_EQ(read.services.at(0).name, "\xC3\x87"
                                      "a");
  EXPECT_EQ(read.services.at(0).provider, "\xD0\x90");
  EXPECT_EQ(read.favourites.at(0).name, "Films");
  EXPECT_EQ(count_of(lost, "character tables of names, which are written in UTF-8"), 3U);
}

TEST(LamedbFile, AFolderOrTheFileInItIsRead) {
  const test_support::temp_dir dir;
  for (const auto &[name, text] : written_folder(list_of({plain_service(1)}))) {
    test_support::write_file(dir.path() + name, text);
  }
  loss_counts lost;

  EXPECT_EQ(chlist::read_lamedb(dir.path(), lost).services.at(0).number, chlist::channel_number{1});
  EXPECT_EQ(chlist::read_lamedb(dir.path() + "lamedb", lost).services.at(0).number, chlist::channel_number{1});
  EXPECT_EQ(chlist::read_lamedb5(dir.path(), lost).services.size(), 1U);
  EXPECT_TRUE(chlist::is_like_lamedb4(dir.path(), ""));
  EXPECT_FALSE(chlist::is_like_lamedb5(dir.path(), ""));
  EXPECT_FALSE(chlist::is_like_lamedb3(dir.path(), ""));
  EXPECT_TRUE(chlist::is_like_lamedb3("x", "eDVB services /3/\nt"));
  EXPECT_TRUE(chlist::is_like_lamedb5("x", "eDVB services /5/\nt"));
  EXPECT_FALSE(chlist::is_like_lamedb4("x", ""));
}

TEST(LamedbFile, TheVersionDecidesWhichFileOfAFolderIsRead) {
  const test_support::temp_dir dir;
  test_support::write_file(dir.path() + "lamedb", written_folder(list_of({plain_service(4)}), 4)["lamedb"]);
  test_support::write_file(dir.path() + "lamedb5", written_folder(list_of({plain_service(5)}), 5)["lamedb5"]);
  loss_counts lost;

  EXPECT_EQ(chlist::read_lamedb(dir.path(), lost).services.at(0).name, "A4");
  EXPECT_EQ(chlist::read_lamedb5(dir.path(), lost).services.at(0).name, "A5");
}

TEST(LamedbFile, ErrorsNameTheFile) {
  const test_support::temp_dir dir;
  loss_counts lost;
  const auto error_of_path = [&](const std::string &path) {
    try {
      chlist::read_lamedb(path, lost);
    } catch (const std::runtime_error &error) {
      return std::string(error.what());
    }
    return std::string();
  };

  EXPECT_EQ(error_of_path(dir.path()), dir.path() + ": neither lamedb nor lamedb5 is in it");
  EXPECT_EQ(error_of_path(dir.path() + "lamedb"), dir.path() + "lamedb: cannot be read");
  test_support::write_file(dir.path() + "lamedb", "eDVB services /9/\n");
  EXPECT_EQ(error_of_path(dir.path()), dir.path() + "lamedb: lamedb of version '9': only 3, 4 and 5 are known");
}

TEST(LamedbReader, RandomBytesDoNoHarm) {
  std::mt19937 random(7);
  for (int run = 0; run < 300; ++run) {
    const auto seed = static_cast<unsigned>(random());
    folder files = written_folder(tool_test::random_line_up(seed).make(3, 2), run % 2 == 0 ? 4 : 5);
    for (auto &[name, text] : files) {
      // A lamedb of another version would be refused.
      const std::size_t kept = name.starts_with("lamedb") ? std::string_view("eDVB services /4/\n").size() : 0;
      for (std::size_t change = 0; change < 5; ++change) {
        text[kept + random() % (text.size() - kept)] = static_cast<char>(random());
      }
      text.resize(kept + random() % (text.size() - kept + 1));
    }

    EXPECT_LE(read_folder(files).services.size(), 10U);
  }
}

}  // namespace
