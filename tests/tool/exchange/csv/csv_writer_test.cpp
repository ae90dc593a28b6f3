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
  const line_up given = line_up_of({service});

  EXPECT_EQ(text_of(given, "service_id,name,locked"), "service_id,name,locked\r\n1,\"A, \"\"B\"\"\",no\r\n");
  EXPECT_EQ(losses_of_columns(given, "service_id,name,locked"),
            (row_list{"number: 1", "type: 1", "provider: 1", "network_name: 1", "net_index: 1", "network_id: 1",
                      "ts_id: 1", "frequency: 1"}));
}

TEST_F(CsvLineUp, AServiceInNoViewIsCountedWhereNoColumnMarksIt) {
  line_up_service hidden = service_named("Hidden", 2);
  hidden.is_listed = false;

  EXPECT_EQ(
      losses_of_columns(line_up_of({hidden}), "network_id,ts_id,frequency,service_id,net_index,network_name,type"),
      (row_list{"name: 1", "entries that come up in the ALL view: 1", "entries that come up in the TV view: 1"}));
}

TEST_F(CsvLineUp, AMinorNumberIsNothingWithoutItsMajorOne) {
  line_up_service service = service_named("", 1);
  service.number = channel_number{7, 2};
  const std::string identity = "network_id,ts_id,frequency,service_id,net_index,network_name,type,";

  EXPECT_EQ(losses_of_columns(line_up_of({service}), identity + "minor,number"), row_list{});
  EXPECT_EQ(losses_of_columns(line_up_of({service}), identity + "minor"), (row_list{"number: 1", "minor: 1"}));

  read("network_id,ts_id,frequency,service_id,number,minor\n1,2,3,4,,2\n1,2,3,5,-,1\n1,2,3,6,,0\n1,2,3,7,7,2\n");

  EXPECT_EQ(losses(lost), (row_list{"minor numbers without a channel number: 2"}));
}

TEST_F(CsvLineUp, EachComponentTagHasAColumnOfItsOwn) {
  line_up_service service = service_named("", 1);
  service.fields.video_tag = 1;
  service.fields.audio_tag = 2;
  const std::string identity = "network_id,ts_id,frequency,service_id,net_index,network_name,type,";

  EXPECT_EQ(losses_of_columns(line_up_of({service}), identity + "number,video_tag"), (row_list{"audio_tag: 1"}));
  EXPECT_EQ(losses_of_columns(line_up_of({service}), identity + "number,audio_tag"), (row_list{"video_tag: 1"}));
}

// Whatever an import refuses in a column that is written leaves its service out.
TEST_F(CsvLineUp, ServicesThatAnImportRefusesAreLeftOut) {
  const struct {
    void (*change)(channel_st &fields);
    bool is_refused;
  } cases[] = {
      {[](channel_st &s) { s.frequency = 0; }, true},
      {[](channel_st &s) { s.frequency = 1; }, false},
      {[](channel_st &s) { s.frequency = 4'294'967'295; }, false},
      {[](channel_st &s) { s.video_pid = 8191; }, false},
      {[](channel_st &s) { s.video_pid = 8192; }, true},
      {[](channel_st &s) { s.pmt_pid = 0xFFFE; }, true},
      {[](channel_st &s) { s.audio_pid = 0xFFFF; }, false},
  };
  for (const auto &each : cases) {
    fill_list(line_up_of({service_named("A", 1)}), lost);
    each.change(*list.vch[0].rch);
    list.vch[0].frequency = static_cast<std::uint32_t>(list.vch[0].rch->frequency);

    const chlist::exported_list made = tool_test::export_of(list, "csv");

    EXPECT_EQ(tool_test::left_out(made.lost),
              each.is_refused ? row_list{"services that an import refuses: 1"} : row_list{});
  }
}

TEST_F(CsvLineUp, GroupsOfOneNameBecomeOneAndThatIsCounted) {
  fill_list(line_up_of({service_named("", 1)}), lost);
  for (const char *name : {"Films", "Films", "News"}) {
    list.favorite_group[list.favorite_group_num] = chlist::group_named(name);
    list.favorite_group[list.favorite_group_num].id = list.favorite_group_num;
    test_support::append_entry(static_cast<std::int8_t>(VIEW_FAVOURITE + list.favorite_group_num), list.vch[0]);
    ++list.favorite_group_num;
  }

  EXPECT_EQ(losses(tool_test::export_of(list, "csv").lost),
            (row_list{"entries of favourite groups: 1", "favourite group: 1", "id of a favourite group: 1",
                      "position of a favourite group: 1"}));
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
    EXPECT_EQ(losses_of_columns(given, ""), row_list{}) << seed;
  }
  EXPECT_EQ(losses(lost), row_list{});
}

TEST_F(CsvLineUp, ANumberThatNoEntryShouldHaveIsWrittenAndToldWhenItIsRead) {
  line_up given = line_up_of({service_named("Below", 1), service_named("Sound", 2)});
  given.services[0].number = {-5, 0};
  given.services[1].number = {7, 2};

  const std::string text = text_of(given, "number,minor,name,network_id,ts_id,frequency,service_id");
  const line_up made = read(text);

  EXPECT_NE(text.find("\n-5,0,Below,"), std::string::npos) << text;
  ASSERT_EQ(made.skipped.size(), 1U);
  EXPECT_EQ(made.skipped[0].reason, "number=\"-5\": VALUE is 1 to 32767");
  ASSERT_EQ(made.services.size(), 1U);
  EXPECT_EQ(made.services[0].number, (channel_number{7, 2}));
}

}  // namespace
