// A line-up as a channels.conf: the lines as they are, and what reading them gives.

#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "chlist/exchange/vdr/vdr.h"
#include "tool/exchange/line_ups.h"

namespace {

using chlist::channel_number;
using chlist::line_up;
using chlist::line_up_service;
using tool_test::line_up_of;
using tool_test::line_up_source;
using tool_test::losses;
using tool_test::row_list;

class VdrWriter : public tool_test::line_up_test {
 protected:
  static std::string text_of(const line_up &made) { return write_vdr(made, {}).files.at(0).text; }
  static std::string text_of(const line_up_service &service) { return text_of(line_up_of({service})); }

  // The list that an import of the line-up's lines makes.
  line_up read_back(const line_up &given) {
    chlist::loss_counts of_reading;
    const line_up read = line_up_of(chlist::parse_vdr_channels_conf(text_of(given)), of_reading);
    EXPECT_TRUE(fill_list(read, of_reading).is_whole());
    return tool_test::taken(list);
  }

  static line_up line_up_of(chlist::vdr_line_up parsed, chlist::loss_counts &lost) {
    return chlist::line_up_of(std::move(parsed), lost);
  }
  // What an export of the services loses beside their tuning.
  static row_list losses_of(const line_up &given) {
    row_list rows = losses(tool_test::export_of(given, "vdr").lost);
    std::erase_if(rows, [](const std::string &row) { return row.starts_with("symbol rate and modulation: "); });
    return rows;
  }

  static line_up line_up_of(std::vector<line_up_service> services) {
    return tool_test::line_up_of(std::move(services));
  }
};

// A service of which a channels.conf says everything.
line_up_service carried_service(const std::string &name, int service_id, int number) {
  line_up_service service = tool_test::service_named(name, service_id);
  service.number = channel_number{number, 0};
  service.fields.net_index = 1;
  service.fields.video_pid = 101;
  service.fields.pcr_pid = 101;
  service.fields.audio_pid = 102;
  return service;
}

TEST_F(VdrWriter, ALineSaysWhatAServiceIs) {
  line_up_service service = carried_service("News", 7, 1);
  service.short_name = "N";
  service.provider = "Meridian: one";
  service.fields.polarisation = 1;
  service.fields.pcr_pid = 100;
  service.set_flag(CHANNEL_FLAG_FTA, true);

  EXPECT_EQ(text_of(service), "News,N;Meridian| one:11345:V:S13.5E:0:101+100:102:0:100:7:158:2010:0\n");
  EXPECT_EQ(losses_of(line_up_of({service})), row_list{});
}

TEST_F(VdrWriter, NumbersLeapWithSeparatorsAndTheirOrderIsTheFiles) {
  const line_up given =
      line_up_of({carried_service("C", 3, 40), carried_service("A", 1, 2), carried_service("B", 2, 3)});

  const std::string text = text_of(given);

  EXPECT_EQ(text.find(":@2\nA:"), 0U) << text;
  EXPECT_NE(text.find("\nB:"), std::string::npos) << text;
  EXPECT_NE(text.find("\n:@40\nC:"), std::string::npos) << text;
  EXPECT_EQ(losses_of(given), (row_list{"places in the ALL view: 1", "places in the TV view: 1"}));
}

TEST_F(VdrWriter, NumbersThatAreTwiceOrBelowOneRise) {
  line_up_service unnumbered = carried_service("D", 4, 0);
  const line_up given = line_up_of({unnumbered, carried_service("A", 1, 5), carried_service("B", 2, 5)});
  const line_up taken = read_back(given);

  EXPECT_EQ(taken.services[0].number, (channel_number{1, 0}));
  EXPECT_EQ(taken.services[1].number, (channel_number{5, 0}));
  EXPECT_EQ(taken.services[2].number, (channel_number{6, 0}));
  EXPECT_EQ(losses_of(given), row_list{"number: 2"});
}

TEST_F(VdrWriter, NamesMayBeAnything) {
  EXPECT_EQ(text_of(carried_service("A, B", 1, 1)).substr(0, 6), "A, B,:");
  EXPECT_EQ(text_of(carried_service("", 1, 1)).substr(0, 2), ",:");
  EXPECT_EQ(text_of(carried_service("A:B", 1, 1)).substr(0, 4), "A|B:");
  EXPECT_EQ(text_of(carried_service("A;B|C\nD", 1, 1)).substr(0, 8), "A.B|C D:");

  for (const char *name : {"A, B", "", "A:B"}) {
    EXPECT_EQ(losses_of(line_up_of({carried_service(name, 1, 1)})), row_list{}) << name;
  }
  for (const char *name : {"A;B", "A|B"}) {
    EXPECT_EQ(losses_of(line_up_of({carried_service(name, 1, 1)})), row_list{"name: 1"}) << name;
  }
}

TEST_F(VdrWriter, ANameThatIsNoSourceIsSaidToBeReplaced) {
  line_up_service service = carried_service("A", 1, 1);
  service.source = "Meridian 1";

  EXPECT_EQ(text_of(service), "A:11345:H:S0.0E:0:101:102:0:0:1:158:2010:0\n");
  EXPECT_EQ(losses_of(line_up_of({service})), row_list{"name of a network: 1"});
}

TEST_F(VdrWriter, CableAndTerrestrialFrequenciesAreReadAgain) {
  for (const std::int64_t khz : {1'000, 474'000, 999'999, 1'000'000, 4'294'967}) {
    line_up_service service = carried_service("A", 1, 1);
    service.source = "T";
    service.fields.frequency = khz;
    const line_up given = line_up_of({service});
    EXPECT_EQ(read_back(given), given) << khz;
    EXPECT_EQ(losses_of(given), row_list{}) << khz;
  }
}

TEST_F(VdrWriter, FrequenciesThatVdrCannotReadAreLeftOut) {
  for (const auto &[source, khz] : std::vector<std::pair<std::string, std::int64_t>>{
           {"T", 999}, {"T", 4'294'968}, {"S1E", 999}, {"S1E", 20'001'000}, {"C", 0}, {"C", -1}}) {
    line_up_service service = carried_service("A", 1, 1);
    service.source = source;
    service.fields.frequency = khz;
    EXPECT_EQ(text_of(service), "") << source << khz;
    EXPECT_EQ(tool_test::left_out(tool_test::export_of(line_up_of({service}), "vdr").lost),
              row_list{"services whose frequency VDR cannot read: 1"});
  }
}

TEST_F(VdrWriter, WhatALineHasNoPlaceForIsCounted) {
  line_up_service service = carried_service("A", 1, 1);
  service.number->minor = 2;
  service.genre = "Films";
  service.country = "Atlantis";
  service.fields.flag = 0xFF;
  service.fields.source_type = 5;
  service.fields.pmt_pid = 100;
  service.fields.video_ecm_pid = 99;
  service.fields.video_tag = 1;
  service.fields.user_order_key = 1;
  service.fields.service_type = 22;
  service.fields.audio_pid = 9000;
  service.fields.pcr_pid = 0xFFFF;
  service.fields.polarisation = 2;
  service.fields.frequency += 1;
  service.fields.net_index = 3;
  service.fields.reserved_300[0] = 1;
  line_up_service hidden = carried_service("B", 2, 0);
  hidden.is_listed = false;
  hidden.number.reset();
  line_up made = line_up_of({service, hidden});
  made.favourites = {{"Films", {{0, {}}}}};

  const chlist::loss_counts counted = tool_test::export_of(made, "vdr").lost;

  EXPECT_EQ(losses(counted), (row_list{"services that the ALL view does not show: 1",
                                       "symbol rate and modulation: 1",
                                       "type: 1",
                                       "genre: 1",
                                       "country: 1",
                                       "net_index: 1",
                                       "frequency: 1",
                                       "polarisation: 1",
                                       "pmt_pid: 1",
                                       "pcr_pid: 1",
                                       "video_tag: 1",
                                       "video_ecm_pid: 1",
                                       "audio_pid: 1",
                                       "locked: 1",
                                       "skipped: 1",
                                       "data: 1",
                                       "flags: 1",
                                       "source_type: 1",
                                       "order_key: 1",
                                       "entries that come up in the TV view: 1",
                                       "entries of favourite groups: 1",
                                       "minor: 1",
                                       "network: 1",
                                       "transponder: 1",
                                       "frequency of a transponder: 1",
                                       "genre group: 1",
                                       "country group: 1",
                                       "favourite group: 1",
                                       "records with values that only the receiver knows: 1"}));
  EXPECT_TRUE(counted.has_left_out());
}

TEST_F(VdrWriter, AServiceIdOf0IsLeftOut) {
  EXPECT_EQ(text_of(carried_service("A", 0, 1)), "");
  EXPECT_EQ(tool_test::left_out(tool_test::export_of(line_up_of({carried_service("A", 0, 1)}), "vdr").lost),
            row_list{"services with the service id 0, which VDR refuses: 1"});
}

// VDR tells such services apart by their frequency.
TEST_F(VdrWriter, NetworkAndTransportMayBothBe0) {
  line_up_service service = carried_service("A", 1, 1);
  service.fields.network_id = 0;
  service.fields.ts_id = 0;
  const line_up given = line_up_of({service});

  EXPECT_EQ(read_back(given), given);
  EXPECT_EQ(losses_of(given), row_list{});
}

TEST_F(VdrWriter, WhatALineSaysAndAListDoesNotKeepIsCounted) {
  const auto read = [&](const char *parameters, const char *ca_ids) {
    line_up_of(chlist::parse_vdr_channels_conf("A:11345:" + std::string(parameters) + ":S13.5E:0:101:102:0:" + ca_ids +
                                               ":1:158:2010:0\n"),
               lost);
  };
  read("H", "0");
  EXPECT_EQ(losses(lost), row_list{});

  read("L", "F");

  EXPECT_EQ(losses(lost), (row_list{"circular polarisations (left as horizontal, right as vertical): 1",
                                    "CA ids below 100, which choose a device: 1"}));
}

// How a service may be received, with its frequencies in kHz.
struct way {
  const char *source;
  int lowest;
  int step;
};

constexpr way ways[] = {{"S13.5E", 10'700'000, 40'000},
                        {"S5W", 11'700'000, 40'000},
                        {"C", 114'000, 8'000},
                        {"T", 474'000, 8'000},
                        {"T52.0E", 177'500, 7'000}};

// Anything that a channels.conf can say, at random.
line_up carried_line_up(unsigned seed) {
  line_up_source source(seed);
  line_up made;
  std::map<std::string, std::size_t> indexes;  // of the sources, as an import gives them
  int number = 0;
  for (int n = 0; n < 30; ++n) {
    number += 1 + (source.below(4) == 0 ? source.below(100) : 0);
    line_up_service service = carried_service(source.text(), n + 1, number);
    const way &by = ways[source.below(std::size(ways))];
    service.source = by.source;
    service.fields.net_index =
        static_cast<std::uint8_t>(indexes.try_emplace(by.source, indexes.size() + 1).first->second);
    service.short_name = source.text();
    service.provider = source.text();
    for (std::string *text : {&service.name, &service.short_name, &service.provider}) {
      std::erase_if(*text, [](char c) { return c == ';' || c == '|' || c == ',' || c == '\n'; });
    }
    service.fields.polarisation = static_cast<std::uint8_t>(source.below(2));
    service.fields.frequency = by.lowest + by.step * source.below(20);
    service.set_flag(CHANNEL_FLAG_FTA, source.below(2) == 0);
    if (source.below(3) == 0) {
      service.fields.video_pid = 0xFFFF;
      service.fields.pcr_pid = source.below(2) == 0 ? 0xFFFF : 33;
      service.fields.service_type = SERVICE_TYPE_RADIO;
    }
    made.services.push_back(service);
  }
  return made;
}

TEST_F(VdrWriter, ReadingItBackGivesTheSameLineUp) {
  for (unsigned seed = 0; seed < 50; ++seed) {
    const line_up given = carried_line_up(seed);
    EXPECT_EQ(read_back(given), given) << seed;
    EXPECT_EQ(losses_of(given), row_list{}) << seed;
  }
}

}  // namespace
