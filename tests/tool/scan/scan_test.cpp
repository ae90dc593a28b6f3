// `chlist scan` as it is run: what it writes, loaded through the library, and what it says.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tool/scan/scan_host.h"

namespace {

using namespace scan_test;
using tool_test::has_line;
using tool_test::json;
using tool_test::program_result;

using Scan = scan_test::scan_host;

// Private descriptors of EACEM.
const descriptor eacem = {0x5F, std::string("\0\0\0\x28", 4)};

TEST_F(Scan, OfATransponderThatTellsAllComesThroughWhole) {
  write_capture("a.ts", astra{}.capture());

  const program_result result = scan();

  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.out, "a.ts: 11493750 kHz H of S19.2E, transport stream 1019 of network 1 (\"ASTRA 1\")\n"
                        "list.dat: 3 services (2 TV, 1 radio, 0 other) of 1 provider on 1 transponder of 1 source\n");
  load();
  EXPECT_EQ(names(), (std::vector<std::string>{"Das Erste", "arte HD", "Bayern 3"}));
  EXPECT_EQ(test_support::service_ids(VIEW_TV), (std::vector<int>{101, 102}));
  EXPECT_EQ(test_support::service_ids(VIEW_RADIO), (std::vector<int>{103}));
}

TEST_F(Scan, RecordsHoldWhatTheTablesSay) {
  write_capture("a.ts", astra{}.capture());
  scan();
  load();

  const channel_st &first = service_at(1);
  EXPECT_EQ(first.network_id, 1);
  EXPECT_EQ(first.ts_id, 1019);
  EXPECT_EQ(first.service_id, 101);
  EXPECT_EQ(first.frequency, 11'493'750);
  EXPECT_EQ(first.polarisation, 0);
  EXPECT_EQ(first.service_type, SERVICE_TYPE_TV);
  EXPECT_EQ(first.source_type, 1);
  EXPECT_EQ(first.pmt_pid, 0x100);
  EXPECT_EQ(first.pcr_pid, 0x200);
  EXPECT_EQ(first.video_pid, 0x200);
  EXPECT_EQ(first.video_tag, 1);
  EXPECT_EQ(first.video_ecm_pid, 0xFFFF);
  EXPECT_EQ(first.audio_pid, 0x201);
  EXPECT_EQ(first.audio_tag, 2);
  EXPECT_EQ(first.flag, 0);
  EXPECT_EQ(provider_of(1), "ARD");
  const channel_st &scrambled = service_at(2);
  EXPECT_EQ(scrambled.service_type, SERVICE_TYPE_TV);
  EXPECT_EQ(scrambled.video_ecm_pid, 0x600);
  EXPECT_EQ(scrambled.flag, CHANNEL_FLAG_FTA);
  const channel_st &radio = service_at(3);
  EXPECT_EQ(radio.video_pid, 0xFFFF);
  EXPECT_EQ(radio.audio_pid, 0x221);
}

TEST_F(Scan, WhatTheListCannotHoldStandsBesideIt) {
  write_capture("a.ts", astra{}.capture());
  scan();

  const json beside = json::parse(tool_test::read_file(path("list.dat.more.json")))["services"][1];

  EXPECT_EQ(beside["tuning"]["system"].as_string(), "DVB-S");
  EXPECT_EQ(beside["tuning"]["symbol_rate"].as_integer(), 22'000'000);
  EXPECT_EQ(beside["streams"][0]["kind"].as_string(), "video");
  EXPECT_EQ(beside["streams"][0]["type"].as_integer(), 0x1B);
  EXPECT_EQ(beside["streams"][1]["language"].as_string(), "deu");
  EXPECT_LT(run({"export", "list.dat", "-o", "list.conf"}).exit_code, 2);
  EXPECT_TRUE(has_line(tool_test::read_file(path("list.conf")),
                       "arte HD;ARD:11493:HC56M2S0:S19.2E:22000:528=27:529=deu@3:0:1830:102:1:1019:0"))
      << tool_test::read_file(path("list.conf"));
}

TEST_F(Scan, PacketsOfAllSizesAreRead) {
  for (const auto &[in_front, behind] : {std::pair(4U, 0U), std::pair(0U, 16U)}) {
    tool_test::write_file(path("a.ts"), astra{}.capture().bytes(in_front, behind));
    EXPECT_EQ(scan().exit_code, 0);
  }
}

TEST_F(Scan, StandardInputIsACapture) {
  write_capture("a.ts", astra{}.capture());
  const program_result result =
      tool_test::run_program({"/bin/sh", "-c", CHLIST_PROGRAM " scan - -o list.dat < a.ts"}, dir.path());
  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_TRUE(result.out.starts_with("standard input: 11493750 kHz H")) << result.out;
}

TEST_F(Scan, NamesStandAsTheyAreBroadcast) {
  astra from;
  from.all = {{101,
               {service_name(1, "\x05T\xFCrk",
                             "\x05G\xFCn \x86"
                             "TV\x87")}},
              {102,
               {service_name(1, "P", "Yksi"),
                {0x5D, "swe" + std::string("\0\3"
                                           "Ett",
                                           5)}}}};
  write_capture("a.ts", from.capture());

  EXPECT_EQ(scan().exit_code, 0);

  load();
  EXPECT_STREQ(service_at(1).name[0].text, "\x05G\xFCn \x86"
                                           "TV\x87");
  EXPECT_EQ(service_at(1).name[0].name_len, 9);
  EXPECT_STREQ(service_at(1).name[1].text, "\x05TV");
  EXPECT_STREQ(service_at(2).name[1].text, "Ett");
  EXPECT_EQ(provider_of(1), "T\xC3\xBCrk");
  EXPECT_TRUE(has_line(run({"list", "list.dat", "--columns", "name"}).out, "G\xC3\xBCn TV"));
}

TEST_F(Scan, NamesAreCutAtTheEndOfACharacter) {
  astra from;
  const std::string wide = "\x11" + std::string(100, '\x30');
  const std::string accents = std::string(95, 'a') + "\xC2"
                                                     "e";
  from.all = {{101, {service_name(1, "P", wide)}}, {102, {service_name(1, "P", accents)}}};
  write_capture("a.ts", from.capture());

  const program_result result = scan();

  EXPECT_TRUE(has_line(result.out, "  names beyond 96 bytes                 2")) << result.out;
  load();
  EXPECT_EQ(service_at(1).name[0].name_len, 95);
  EXPECT_EQ(service_at(2).name[0].name_len, 95);
}

TEST_F(Scan, ANetworkThatCallsTheOriginDifferentlyTellsTheFrequencyAllTheSame) {
  astra from;
  transport_stream stream = from.capture();
  from.network_id = 40;
  stream.add(0x11, services(from.ts_id, from.network_id, from.all, true, 1));
  write_capture("a.ts", stream);
  const program_result result = scan();
  EXPECT_EQ(result.exit_code, 0) << result.err;
  load();
  EXPECT_EQ(service_at(1).frequency, 11'493'750);
}

TEST_F(Scan, TheTunedFrequencyCountsBeforeThatOfTheNetwork) {
  write_capture("a.ts", astra{}.capture());
  EXPECT_EQ(scan({"--tuned", "10773.25V"}).exit_code, 0);
  load();
  EXPECT_EQ(service_at(1).frequency, 10'773'250);
  EXPECT_EQ(service_at(1).polarisation, 1);
}

transport_stream without_network() {
  const astra from;
  transport_stream stream;
  stream.add(0x00, program_association(from.ts_id, {{101, pmt_pid}})).add(pmt_pid, astra::map_of(from.all[0]));
  return stream.add(0x11, services(from.ts_id, from.network_id, {from.all[0]})).add_pictures(0x200, 5);
}

TEST_F(Scan, ACaptureThatTellsNoFrequencyIsTold) {
  write_capture("a.ts", without_network());

  const program_result result = scan();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err,
            "chlist: scan: a.ts: the network does not tell the frequency: its services have none (--tuned tells it)\n");
  load();
  EXPECT_EQ(service_at(1).frequency, 0);
}

TEST_F(Scan, TheFrequencyAndTheSourceMayBeSaid) {
  write_capture("a.ts", without_network());

  const program_result result = scan({"--tuned", "11493.75H", "--source", "S19.2E"});

  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_TRUE(has_line(result.out, "a.ts: 11493750 kHz H of S19.2E, transport stream 1019 of network 1"));
}

// The first transponder of a network that comes by a cable or over an antenna.
transport_stream brought_by(const descriptor &delivery) {
  const astra from;
  const transport tells = {from.ts_id, from.network_id, {delivery}};
  return without_network().add(0x10, network(1, {network_name("Town")}, {tells}));
}

TEST_F(Scan, CablesAndAntennasComeWithAllThatATunerNeeds) {
  struct case_of_delivery {
    descriptor tells;
    std::string received;
    std::string tuned;  // in a channels.conf
  };
  const descriptor t2 = {0x7F, std::string("\x04\x01\x00\x2A\x47\x0E\x00\x07\x03\x19\x75\x00\x00", 13)};
  for (const case_of_delivery &each :
       {case_of_delivery{delivery(cable{}), "346000 kHz of C", "346000:M256S0:C:6900"},
        case_of_delivery{delivery(terrestrial{}), "506000 kHz of T", "506000:B8C12G32M64S0T8Y0:T:0"},
        case_of_delivery{t2, "520000 kHz of T", "520000:B7G32P1Q42S1T1X1:T:0"}}) {
    SCOPED_TRACE(each.received);
    write_capture("a.ts", brought_by(each.tells));

    const program_result result = scan({"--no-backup"});

    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_TRUE(has_line(result.out, "a.ts: " + each.received + ", transport stream 1019 of network 1 (\"Town\")"))
        << result.out;
    EXPECT_LT(run({"export", "list.dat", "-o", "list.conf"}).exit_code, 2);
    EXPECT_EQ(tool_test::read_file(path("list.conf")),
              "Das Erste;ARD:" + each.tuned + ":512=27:513=deu@3:0:0:101:1:1019:0\n");
  }
}

TEST_F(Scan, WhatDoesNotComeIsTold) {
  write_capture("a.ts",
                transport_stream().add(0x00, program_association(7, {{101, 0x100}, {5, 0x12}})).add_pictures(1, 9));

  const program_result result = scan();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err,
            "chlist: scan: a.ts: service 5 left out: its map is said to be on PID 18, where other tables are\n"
            "chlist: scan: a.ts: service 101 has no PIDs: its map did not come\n"
            "chlist: scan: a.ts: the table of services (SDT) did not come\n"
            "chlist: scan: a.ts: no table tells the original network id: it is 0\n"
            "chlist: scan: a.ts: the network does not tell the frequency: its services have none (--tuned tells it)\n"
            "chlist: scan: list.dat: left out: names, which the tables do not tell: 1\n");
}

TEST_F(Scan, NothingIsWrittenWithoutAService) {
  tool_test::write_file(path("a.ts"), std::string(100'000, 'x'));
  const program_result result = scan();
  EXPECT_EQ(result.exit_code, 2);
  EXPECT_EQ(result.err, "chlist: scan: a.ts: no transport stream is in it\n"
                        "chlist: scan: a.ts: 100000 bytes that belong to no packet\n"
                        "chlist: scan: no service was found\n");
  EXPECT_EQ(files(), std::vector<std::string>{"a.ts"});
}

TEST_F(Scan, TwoCapturesOfATransponderAreOne) {
  astra later;
  later.all[1].about = {service_name(0x19, "ARTE", "arte in HD")};
  later.all.push_back({104, {service_name(0x01, "ARD", "new")}});
  write_capture("a.ts", astra{}.capture());
  write_capture("b.ts", later.capture());

  const program_result result = run({"scan", "a.ts", "b.ts", "-o", "list.dat"});

  EXPECT_EQ(result.exit_code, 0) << result.err;
  EXPECT_TRUE(has_line(result.out,
                       "list.dat: 4 services (3 TV, 1 radio, 0 other) of 2 providers on 1 transponder of 1 source"));
  load();
  EXPECT_EQ(names(), (std::vector<std::string>{"Das Erste", "arte in HD", "Bayern 3", "new"}));
}

TEST_F(Scan, ServicesOfOtherTranspondersComeWithoutPids) {
  astra from;
  broadcast::satellite by = {.frequency = 0x01183650, .polarisation = 1};
  from.others = {{1101, 1, {delivery(by)}}};
  transport_stream stream = from.capture();
  stream.add(0x11, services(1101, 1, {{501, {service_name(1, "ZDF", "ZDF")}}}, false));
  stream.add(0x11, services(1102, 1, {{601, {service_name(1, "X", "nowhere")}}}, false));
  write_capture("a.ts", stream);

  const program_result result = scan();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(
      result.err,
      "chlist: scan: a.ts: left out: 1 service of other transponders, whose frequency the network does not tell\n");
  load();
  EXPECT_EQ(names(), (std::vector<std::string>{"Das Erste", "arte HD", "Bayern 3", "ZDF"}));
  EXPECT_EQ(service_at(4).frequency, 11'836'500);
  EXPECT_EQ(service_at(4).polarisation, 1);
  EXPECT_EQ(service_at(4).pmt_pid, 0xFFFF);
  EXPECT_EQ(scan({"--captured-only"}).exit_code, 0);
  load();
  EXPECT_EQ(names().size(), 3U);
}

TEST_F(Scan, NumbersAreThoseOfTheNetwork) {
  astra from;
  from.about_network = {eacem, channel_numbers({{101, 7}, {102, 507}, {103, 7}}), {0x88, word(102) + "\xFC\x07"}};
  write_capture("a.ts", from.capture());

  const program_result result = scan();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: scan: list.dat: left out: numbers that another service has, so that they are others "
                        "now: 1\n");
  load();
  EXPECT_EQ(names(), (std::vector<std::string>{"arte HD", "Das Erste", "Bayern 3"}));
  EXPECT_EQ(test_support::majors(VIEW_ALL), (std::vector<int>{7, 507, 800}));
}

TEST_F(Scan, ServicesThatTheNetworkHidesAreSkipped) {
  astra from;
  from.about_network = {eacem, {0x83, word(102) + word(0x7C05)}};
  write_capture("a.ts", from.capture());
  scan();
  load();
  EXPECT_EQ(service_at(5).flag & CHANNEL_FLAG_SKIP, CHANNEL_FLAG_SKIP);
  EXPECT_EQ(names(), (std::vector<std::string>{"arte HD", "Das Erste", "Bayern 3"}));
}

TEST_F(Scan, BouquetsBecomeGenresOrFavourites) {
  transport_stream stream = astra{}.capture();
  stream.add(0x11, bouquet(77, {bouquet_name("Culture")}, {{1019, 1, {service_list({{102, 0x19}, {103, 2}})}}}));
  write_capture("a.ts", stream);

  EXPECT_EQ(scan().err, "");
  load();
  const group_st *genre = find_genre_id(service_at(2).genre_id);
  ASSERT_NE(genre, nullptr);
  EXPECT_STREQ(genre->name, "Culture");
  EXPECT_EQ(get_fav_group_number(), 0);
  EXPECT_EQ(scan({"--groups", "favourites"}).exit_code, 0);
  load();
  EXPECT_EQ(get_fav_group_number(), 1);
  EXPECT_EQ(get_fav_vch_number(0), 2);
}

TEST_F(Scan, AtscAndIsdbAreToldAsNotRead) {
  transport_stream stream = astra{}.capture();
  stream.add(0x1FFB, {section(0xC8, 1, "\x01")});
  stream.add(0x10, network(9, {}, {{5, 5, {{0xFA, std::string(4, '\1')}}}}, false));
  write_capture("a.ts", stream);

  const program_result result = scan();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: scan: a.ts: it has the tables of ATSC (PSIP), which are not read\n"
                        "chlist: scan: a.ts: it has the tables of ISDB, which are not read\n");
}

TEST_F(Scan, WhatIsWrongWithTheTablesIsCounted) {
  transport_stream stream = astra{}.capture();
  stream.add(0x11, {section(0x46, 9, "")});
  std::string wrong = section(0x46, 8, std::string("\0\1\xFF", 3));
  wrong.back() ^= 1;
  stream.add(0x11, {wrong}).add_pictures(0x200, 3);
  write_capture("a.ts", stream);

  const program_result result = scan();

  EXPECT_EQ(result.exit_code, 1);
  EXPECT_EQ(result.err, "chlist: scan: a.ts: 1 section left out, whose lengths lead beyond the end\n"
                        "chlist: scan: a.ts: 1 section with a wrong CRC\n");
}

TEST_F(Scan, TheReportIsJson) {
  transport_stream stream = astra{}.capture();
  stream.add(0x14, time_and_date(0xC079124500)).add(0x01, conditional_access({ca_system(0x1830, 0x91)}));
  write_capture("a.ts", stream);

  const json document = json::parse(scan({"--json"}).out);

  EXPECT_EQ(document["services"].as_integer(), 3);
  const json &capture = document["captures"][0];
  EXPECT_EQ(capture["file"].as_string(), "a.ts");
  EXPECT_EQ(capture["frequency"].as_integer(), 11'493'750);
  EXPECT_EQ(capture["source"].as_string(), "S19.2E");
  EXPECT_EQ(capture["network_name"].as_string(), "ASTRA 1");
  EXPECT_EQ(capture["time"].as_string(), "1993-10-13 12:45:00 UTC");
  EXPECT_EQ(capture["conditional_access"][0]["system_id"].as_integer(), 0x1830);
  EXPECT_EQ(capture["findings"].size(), 0U);
  EXPECT_TRUE(document["backup"].is_null());
}

TEST_F(Scan, IsRefusedWithoutAFrequencyForEachCapture) {
  write_capture("a.ts", astra{}.capture());
  for (const auto &more : std::vector<std::vector<std::string>>{
           {"--tuned", "11493H", "--tuned", "11494H"}, {"--tuned", "fast"}, {"--tuned", "0"}, {"--source", "?"}}) {
    const program_result result = scan(more);
    EXPECT_EQ(result.exit_code, 2) << result.err;
    EXPECT_EQ(files(), std::vector<std::string>{"a.ts"});
  }
}

TEST_F(Scan, ACaptureIsNotItsOwnOutput) {
  write_capture("a.ts", astra{}.capture());
  EXPECT_EQ(run({"scan", "a.ts", "-o", "a.ts"}).exit_code, 2);
  EXPECT_EQ(run({"scan", "b.ts", "-o", "list.dat"}).exit_code, 2);
  EXPECT_EQ(run({"scan", ".", "-o", "list.dat"}).exit_code, 2);
}

TEST_F(Scan, WhatTheFileWasIsKept) {
  write_capture("a.ts", astra{}.capture());
  scan();
  EXPECT_TRUE(has_line(scan().out, "list.dat: what it was is kept as list.dat.bak"));
}

}  // namespace
