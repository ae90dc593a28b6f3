// CSV that is written: the columns that are named, what they do not carry, and what comes back of a line-up.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "tool/exchange/csv/csv_host.h"

namespace {

using namespace tool_test::csv;

TEST_F(CsvLineUp, AServiceInNoViewIsMarked) {
  line_up_service hidden = service_named("Hidden", 2);
  hidden.is_listed = false;
  hidden.fields.net_index = 1;
  line_up_service shown = service_named("Shown", 1);
  shown.fields.net_index = 1;
  shown.number = channel_number{1, 0};
  const line_up given = line_up_of({shown, hidden});

  EXPECT_EQ(through_a_file(given), given);
}

TEST_F(CsvLineUp, OnlyTheColumnsThatAreNamedAreWritten) {
  line_up_service service = service_named("A, \"B\"", 1);
  service.provider = "Meridian";
  fill_list(line_up_of({service}), lost);

  const line_up taken = take_line_up(list, lost);
  const std::string text =
      write_csv(taken, {.columns = "service_id,name,locked", .url = "", .is_by_favourites = false}, lost)[0].text;

  EXPECT_EQ(text, "service_id,name,locked\r\n1,\"A, \"\"B\"\"\",no\r\n");
  EXPECT_EQ(losses(lost), (row_list{"network ids: 1", "transport stream ids: 1", "frequencies: 1", "channel numbers: 1",
                                    "providers: 1", "network names: 1", "service types: 1", "network indexes: 1"}));
}

TEST_F(CsvLineUp, AServiceInNoViewIsCountedWhereNoColumnMarksIt) {
  line_up_service hidden = service_named("Hidden", 2);
  hidden.is_listed = false;

  EXPECT_EQ(
      losses_of_columns(line_up_of({hidden}), "network_id,ts_id,frequency,service_id,net_index,network_name,type"),
      (row_list{"services outside the ALL view: 1", "names: 1"}));
}

TEST_F(CsvLineUp, AMinorNumberIsNothingWithoutItsMajorOne) {
  line_up_service service = service_named("", 1);
  service.number = channel_number{7, 2};
  const std::string identity = "network_id,ts_id,frequency,service_id,net_index,network_name,type,";

  EXPECT_EQ(losses_of_columns(line_up_of({service}), identity + "minor,number"), row_list{});
  EXPECT_EQ(losses_of_columns(line_up_of({service}), identity + "minor"),
            (row_list{"channel numbers: 1", "minor numbers: 1"}));

  read("network_id,ts_id,frequency,service_id,number,minor\n1,2,3,4,,2\n1,2,3,5,-,-1\n1,2,3,6,,0\n1,2,3,7,7,2\n");

  EXPECT_EQ(losses(lost), (row_list{"minor numbers without a channel number: 2"}));
}

TEST_F(CsvLineUp, EachComponentTagHasAColumnOfItsOwn) {
  line_up_service service = service_named("", 1);
  service.fields.video_tag = 1;
  service.fields.audio_tag = 2;
  const std::string identity = "network_id,ts_id,frequency,service_id,net_index,network_name,type,";

  EXPECT_EQ(losses_of_columns(line_up_of({service}), identity + "number,video_tag"),
            (row_list{"component tags of audio: 1"}));
  EXPECT_EQ(losses_of_columns(line_up_of({service}), identity + "number,audio_tag"),
            (row_list{"component tags of video: 1"}));
}

TEST_F(CsvLineUp, FrequenciesBeyondTheColumnAreCounted) {
  for (const auto &[frequency, count] :
       std::vector<std::pair<std::int64_t, std::size_t>>{{-1, 1}, {1, 0}, {4'294'967'295, 0}, {4'294'967'297, 1}}) {
    line_up_service service = service_named("", 1);
    service.fields.frequency = frequency;
    service.fields.net_index = 1;
    chlist::loss_counts of_writing;

    fill_list(line_up_of({service_named("", 1)}), lost);
    write_csv(line_up_of({service}), {}, of_writing);

    const row_list expected(count, "frequencies outside 0..4294967295: 1");
    EXPECT_EQ(losses(of_writing), expected) << frequency;
  }
}

// Whatever an import refuses in a column that is written leaves its service out.
TEST_F(CsvLineUp, ServicesThatAnImportRefusesAreLeftOut) {
  const struct {
    void (*change)(line_up_service &service);
    bool is_refused;
  } cases[] = {
      {[](line_up_service &s) { s.fields.frequency = 0; }, true},
      {[](line_up_service &s) { s.fields.frequency = 1; }, false},
      {[](line_up_service &s) { s.fields.video_pid = 8191; }, false},
      {[](line_up_service &s) { s.fields.video_pid = 8192; }, true},
      {[](line_up_service &s) { s.fields.pmt_pid = 0xFFFE; }, true},
      {[](line_up_service &s) { s.fields.audio_pid = 0xFFFF; }, false},
  };
  for (const auto &each : cases) {
    line_up_service service = service_named("A", 1);
    service.fields.net_index = 1;
    each.change(service);
    chlist::loss_counts of_writing;

    const std::string text = write_csv(line_up_of({service}), {}, of_writing).at(0).text;

    EXPECT_EQ(of_writing.has_left_out(), each.is_refused);
    EXPECT_EQ(read(text).services.empty(), each.is_refused);
  }
}

TEST_F(CsvLineUp, GroupsOfOneNameAreCounted) {
  line_up given = line_up_of({service_named("", 1)});
  given.services[0].fields.net_index = 1;
  given.favourites = {{"Films", {{0, {}}}}, {"Films", {{0, {}}}}, {"News", {{0, {}}}}};
  fill_list(line_up_of({service_named("", 1)}), lost);

  write_csv(given, {}, lost);

  EXPECT_EQ(losses(lost), (row_list{"favourite groups of one name, which become one: 1"}));
}

// Numbers of favourites, which no column carries, are the services' own; groups come up in order.
line_up carried_line_up(unsigned seed) {
  line_up made = tool_test::line_up_source(seed).list(40);
  for (chlist::favourite_group &group : made.favourites) {
    for (auto &entry : group.entries) {
      entry.number = *made.services[entry.service].number;
    }
  }
  const auto first = [](const auto &group) { return group.entries.front().service; };
  std::erase_if(made.favourites, [](const auto &group) { return group.entries.empty(); });
  std::ranges::stable_sort(made.favourites, {}, first);
  return made;
}

TEST_F(CsvLineUp, ReadingItBackGivesTheSameLineUp) {
  for (unsigned seed = 0; seed < 50; ++seed) {
    const line_up given = carried_line_up(seed);
    EXPECT_EQ(through_a_file(given), given) << seed;
  }
  EXPECT_EQ(losses(lost), row_list{});
}

}  // namespace
