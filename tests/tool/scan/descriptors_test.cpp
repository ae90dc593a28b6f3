// Descriptors, beside what libdvbpsi makes of the same values.
#include "chlist/scan/descriptors.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "chlist/scan/broadcast_time.h"
#include "support/transport_streams.h"

namespace {

using chlist::tuning_parameter;

chlist::descriptor_loop loop(const broadcast::descriptors &all) {
  chlist::descriptor_loop made;
  for (const broadcast::descriptor &each : all) {
    made.push_back({each.tag, each.data});
  }
  return made;
}

chlist::delivery_facts delivery(const broadcast::descriptors &all) {
  const auto made = chlist::delivery_in(loop(all));
  EXPECT_TRUE(made);
  return made.value_or(chlist::delivery_facts{});
}

std::vector<std::string> told(const chlist::tuning &tuned) {
  std::vector<std::string> texts;
  for (const auto &[parameter, value] : tuned) {
    EXPECT_TRUE(chlist::is_value_of(parameter, value)) << value;
    texts.push_back(std::string(chlist::words_of(parameter).name) + '=' + value);
  }
  return texts;
}

TEST(ScanDescriptors, SatellitesTellTheirPositionAndTheirSignal) {
  const auto made = delivery({broadcast::delivery(broadcast::satellite{})});
  EXPECT_EQ(made.frequency_khz, 11'493'750U);
  EXPECT_EQ(chlist::source_of(made.from), "S19.2E");
  EXPECT_FALSE(made.is_vertical);
  EXPECT_EQ(told(made.tuned), (std::vector<std::string>{"system=DVB-S", "polarisation=horizontal",
                                                        "symbol_rate=22000000", "modulation=QPSK", "inner_fec=5/6"}));
}

TEST(ScanDescriptors, SatellitesOfTheSecondGenerationTellMore) {
  broadcast::satellite by = {.position = 0x0300, .is_east = false, .polarisation = 3, .is_s2 = true, .roll_off = 2};
  by.modulation = 2;
  by.fec = 9;
  const auto made = delivery({broadcast::delivery(by), {0x79, std::string("\x40\x05", 2)}});
  EXPECT_EQ(chlist::source_of(made.from), "S30.0W");
  EXPECT_TRUE(made.is_vertical);
  EXPECT_EQ(told(made.tuned),
            (std::vector<std::string>{"system=DVB-S2", "polarisation=right", "symbol_rate=22000000", "modulation=8PSK",
                                      "inner_fec=9/10", "roll_off=0.20", "stream_id=5"}));
}

TEST(ScanDescriptors, CablesTellTheirFrequencyIn100Hz) {
  const auto made = delivery({broadcast::delivery(broadcast::cable{})});
  EXPECT_EQ(made.frequency_khz, 346'000U);
  EXPECT_EQ(chlist::source_of(made.from), "C");
  EXPECT_EQ(told(made.tuned), (std::vector<std::string>{"system=DVB-C", "symbol_rate=6900000", "modulation=256QAM"}));
}

TEST(ScanDescriptors, AntennasTellTheirFrequencyIn10Hz) {
  const auto made = delivery({broadcast::delivery(broadcast::terrestrial{})});
  EXPECT_EQ(made.frequency_khz, 506'000U);
  EXPECT_EQ(chlist::source_of(made.from), "T");
  EXPECT_EQ(told(made.tuned),
            (std::vector<std::string>{"system=DVB-T", "modulation=64QAM", "inner_fec=1/2", "bandwidth=8000000",
                                      "transmission_mode=8k", "guard_interval=1/32", "hierarchy=none"}));
}

TEST(ScanDescriptors, T2TellsThePipeAndTheFirstCell) {
  const std::string data("\x04\x01\x00\x2A\x47\x0E\x00\x07\x03\x19\x75\x00\x00", 13);
  const auto made = delivery({{0x7F, data}});
  EXPECT_EQ(made.frequency_khz, 520'000U);
  EXPECT_EQ(told(made.tuned),
            (std::vector<std::string>{"system=DVB-T2", "bandwidth=7000000", "transmission_mode=1k",
                                      "guard_interval=1/32", "stream_id=1", "t2_system_id=42", "antennas=MISO"}));
}

TEST(ScanDescriptors, T2ComesBeforeTheOlderSystemWhenThatIsAnywhere) {
  const std::string data("\x04\x01\x00\x2A", 4);
  const auto made = delivery({{0x7F, data}, broadcast::delivery(broadcast::terrestrial{})});
  EXPECT_EQ(made.frequency_khz, 506'000U);
}

const std::string c2_data("\x0D\x05\x01\x14\x9F\x8A\x80\x00", 8);

TEST(ScanDescriptors, C2TellsThePipeAndTheFrequencyInHz) {
  const auto made = delivery({{0x7F, c2_data}});
  EXPECT_EQ(made.frequency_khz, 346'000U);
  EXPECT_EQ(chlist::source_of(made.from), "C");
  EXPECT_EQ(told(made.tuned), (std::vector<std::string>{"system=DVB-C2", "stream_id=5"}));
}

TEST(ScanDescriptors, C2ThatIsCutTellsNothing) {
  for (std::size_t size = 0; size < c2_data.size(); ++size) {
    EXPECT_FALSE(chlist::delivery_in(loop({{0x7F, c2_data.substr(0, size)}}))) << size;
  }
}

TEST(ScanDescriptors, SeveralFrequenciesAreNone) {
  EXPECT_EQ(delivery({broadcast::delivery(broadcast::terrestrial{.frequency = 0xFFFFFFFF})}).frequency_khz, 0U);
}

TEST(ScanDescriptors, ADescriptorThatIsCutTellsNothing) {
  for (const auto &whole : {broadcast::delivery(broadcast::satellite{}), broadcast::delivery(broadcast::cable{})}) {
    for (std::size_t size = 0; size < whole.data.size(); ++size) {
      EXPECT_FALSE(chlist::delivery_in(loop({{whole.tag, whole.data.substr(0, size)}}))) << size;
    }
  }
}

TEST(ScanDescriptors, ServicesTellTypeProviderAndName) {
  const auto made = chlist::service_in(loop({broadcast::service_name(0x19, "ARD",
                                                                     "\x05"
                                                                     "Das Erste")}));
  EXPECT_EQ(made.type, 0x19);
  EXPECT_EQ(made.provider, "ARD");
  EXPECT_EQ(made.name, "\x05"
                       "Das Erste");
  EXPECT_EQ(made.short_name, "");
}

TEST(ScanDescriptors, WhatIsMarkedIsTheShortName) {
  const auto short_name = [](const std::string &name) {
    return chlist::service_in(loop({broadcast::service_name(1, "", name)})).short_name;
  };
  EXPECT_EQ(short_name("\x86"
                       "Das\x87 Erste \x86"
                       "HD\x87"),
            "DasHD");
  EXPECT_EQ(short_name(std::string("\x10\0\x02", 3) + "\x86"
                                                      "Pol\x87sat"),
            std::string("\x10\0\x02", 3) + "Pol");
  EXPECT_EQ(short_name("\x15\xC2\x86"
                       "K\xC3\xB6\xC2\x87ln"),
            "\x15K\xC3\xB6");
  EXPECT_EQ(short_name("\x86"
                       "open"),
            "open");
  EXPECT_EQ(short_name("\x1F\x01\x86"
                       "K\x87oln"),
            "\x1F\x01K");
  EXPECT_EQ(short_name("none"), "");
}

TEST(ScanDescriptors, FurtherLanguagesBringAnotherName) {
  const std::string names = std::string("\x66\x69\x6E\x01P\x04Yksi", 10) + "swe" +
                            std::string("\x00\x03"
                                        "Ett",
                                        5);
  const auto made = chlist::service_in(loop({broadcast::service_name(1, "P", "Yksi"), {0x5D, names}}));
  EXPECT_EQ(made.name_elsewise, "Ett");
}

TEST(ScanDescriptors, ChannelNumbersOfTheUsualProfiles) {
  const auto numbers = [](const broadcast::descriptors &all) {
    std::vector<std::pair<int, int>> made;
    for (const chlist::logical_channel &each : chlist::logical_channels_in(loop(all))) {
      made.emplace_back(each.service_id, each.is_simulcast ? -each.number : each.number);
    }
    return made;
  };
  const broadcast::descriptor usual = broadcast::channel_numbers({{101, 1}, {102, 1000}});
  using pairs = std::vector<std::pair<int, int>>;
  const std::string eacem("\0\0\0\x28", 4);
  const std::string nordig("\0\0\0\x29", 4);
  EXPECT_EQ(numbers({usual}), (pairs{{101, 1}, {102, 1000}}));
  EXPECT_EQ(numbers({{0x5F, eacem}, usual}), (pairs{{101, 1}, {102, 1000}}));
  EXPECT_EQ(numbers({{0x5F, std::string("\0\0\x23\x3A", 4)}, usual}), (pairs{{101, 1}, {102, 1000}}));
  EXPECT_EQ(numbers({{0x5F, nordig}, {0x83, std::string("\0\x65\x93\x88", 4)}}), (pairs{{101, 5000}}));
  EXPECT_EQ(numbers({{0x5F, nordig}, {0x87, std::string("\x01\x02NDnor\x04\0\x65\xFC\x07", 12)}}), (pairs{{101, 7}}));
  EXPECT_EQ(numbers({{0x5F, eacem}, {0x88, std::string("\0\x65\xFC\x02", 4)}}), (pairs{{101, -2}}));
  EXPECT_EQ(numbers({{0x5F, std::string("\0\0\x12\x34", 4)}, usual}), pairs{});
}

TEST(ScanDescriptors, HiddenServicesAreTold) {
  const auto made = chlist::logical_channels_in(loop({{0x83, std::string("\0\x65\x7C\x05", 4)}}));
  ASSERT_EQ(made.size(), 1U);
  EXPECT_FALSE(made[0].is_visible);
  EXPECT_EQ(made[0].number, 5);
}

TEST(ScanDescriptors, StreamsAreWhatTheirTypesOrDescriptorsSay) {
  const auto stream = [](std::uint8_t type, const broadcast::descriptors &about) {
    const chlist::elementary_stream made = chlist::stream_of({type, 0x200, loop(about)});
    return std::string(chlist::name_of_stream(made.kind)) + ' ' + std::to_string(made.type) + ' ' + made.language;
  };
  EXPECT_EQ(stream(0x1B, {}), "video 27 ");
  EXPECT_EQ(stream(0x24, {}), "video 36 ");
  EXPECT_EQ(stream(0x04, {broadcast::language("deu")}), "audio 4 deu");
  EXPECT_EQ(stream(0x81, {}), "dolby 129 ");
  EXPECT_EQ(stream(0x06, {{0x6A, "\x00"}, broadcast::language("eng")}), "dolby 106 eng");
  EXPECT_EQ(stream(0x06, {{0x7A, "\x00"}}), "dolby 122 ");
  EXPECT_EQ(stream(0x06, {{0x7C, "\x58"}}), "audio 124 ");
  EXPECT_EQ(stream(0x06, {{0x7F, "\x15\x01"}}), "dolby 127 ");
  EXPECT_EQ(stream(0x06, {broadcast::teletext("deu")}), "teletext 86 deu");
  EXPECT_EQ(stream(0x06, {broadcast::subtitling("fra")}), "subtitles 89 fra");
  EXPECT_EQ(stream(0x06, {{0x05, "AC-3"}}), "dolby 6 ");
  EXPECT_EQ(stream(0x05, {}), "other 5 ");
}

TEST(ScanDescriptors, TwoLanguagesAreJoined) {
  const chlist::elementary_stream made =
      chlist::stream_of({0x04, 1, loop({{0x0A, std::string("deu\0fra\0deu\0", 12)}})});
  EXPECT_EQ(made.language, "deu+fra");
}

TEST(ScanDescriptors, ConditionalAccessTellsSystemAndPid) {
  const auto made = chlist::conditional_access_in(loop({broadcast::ca_system(0x1830, 0x1201), {0x09, "\x01"}}));
  ASSERT_EQ(made.size(), 1U);
  EXPECT_EQ(made[0].system_id, 0x1830);
  EXPECT_EQ(made[0].pid, 0x1201);
}

// The example of EN 300 468, annex C: 1993-10-13 12:45:00.
TEST(ScanDescriptors, TheTimeIsThatOfTheStandardsExample) {
  EXPECT_EQ(chlist::broadcast_time_text(0xC079124500), "1993-10-13 12:45:00 UTC");
  EXPECT_EQ(chlist::broadcast_time_text(0xC079FF4500), std::nullopt);
}

}  // namespace
