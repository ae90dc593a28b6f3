// CSV: its text by RFC 4180, its columns, and the way through a file and back.
#include "chlist/exchange/csv/csv.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "chlist/exchange/csv/csv_line_up.h"
#include "chlist/exchange/list_builder.h"
#include "chlist/exchange/list_line_up.h"
#include "tool/exchange/line_ups.h"

namespace {

using chlist::channel_number;
using chlist::csv_line;
using chlist::csv_row;
using chlist::line_up;
using chlist::line_up_service;
using chlist::parse_csv;
using tool_test::line_up_of;
using tool_test::line_up_source;
using tool_test::losses;
using tool_test::random_line_up;
using tool_test::service_named;
using row_list = std::vector<std::string>;

using cells = std::vector<std::string>;

std::vector<cells> cells_of(std::string_view text) {
  std::vector<cells> rows;
  for (const csv_row &row : parse_csv(text)) {
    rows.push_back(row.cells);
  }
  return rows;
}

TEST(Csv, CellsArePartedByCommasAndRowsByLineEnds) {
  const std::vector<cells> expected = {{"a", "b"}, {"", "c"}};

  EXPECT_EQ(cells_of("a,b\n,c\n"), expected);
  EXPECT_EQ(cells_of("a,b\r\n,c\r\n"), expected);
  EXPECT_EQ(cells_of("a,b\r,c"), expected);
  EXPECT_EQ(cells_of("\xEF\xBB\xBF"
                     "a,b\n,c"),
            expected);
  EXPECT_EQ(cells_of("\na,b\n\n\r\n,c\n\n"), expected);
}

TEST(Csv, QuotesTakeInWhatPartsCells) {
  EXPECT_EQ(cells_of("\"a,b\",\"c\"\"d\",\"\"\n"), (std::vector<cells>{{"a,b", "c\"d", ""}}));
  EXPECT_EQ(cells_of("\"a\r\nb\nc\",d\n"), (std::vector<cells>{{"a\r\nb\nc", "d"}}));
  EXPECT_EQ(cells_of("a\"b,\"c\"d\n"), (std::vector<cells>{{"a\"b", "cd"}}));
}

TEST(Csv, RowsKnowTheirLines) {
  const std::vector<csv_row> rows = parse_csv("a\n\"b\n\nc\",d\r\n\ne\n");

  ASSERT_EQ(rows.size(), 3U);
  EXPECT_EQ(rows[0].line, 1U);
  EXPECT_EQ(rows[1].line, 2U);
  EXPECT_EQ(rows[2].line, 6U);
}

TEST(Csv, AQuoteHasToEnd) {
  for (const char *text : {"a\nb,\"c", "a\n\"", "a\n\"\"\""}) {
    try {
      parse_csv(text);
      FAIL() << text;
    } catch (const std::runtime_error &error) {
      EXPECT_STREQ(error.what(), "line 2: a quote is not closed");
    }
  }
}

TEST(Csv, ALineIsInQuotesWhereItMustBe) {
  EXPECT_EQ(csv_line({"a", "", "b c"}), "a,,b c\r\n");
  EXPECT_EQ(csv_line({"a,b", "c\"d", "e\nf", "g\rh"}), "\"a,b\",\"c\"\"d\",\"e\nf\",\"g\rh\"\r\n");
  EXPECT_EQ(csv_line({""}), "\"\"\r\n");
}

TEST(Csv, AnyCellsComeBack) {
  line_up_source source(1);
  for (int n = 0; n < 500; ++n) {
    cells row;
    for (int left = 1 + source.below(4); left > 0; --left) {
      row.push_back(source.text());
    }
    const bool is_blank = row == cells{""};
    EXPECT_EQ(cells_of(csv_line(row)), is_blank ? std::vector<cells>{} : std::vector<cells>{row});
  }
}

class CsvLineUp : public tool_test::line_up_test {
 protected:
  line_up read(const std::string &text) { return chlist::line_up_of_csv(text, lost); }

  // The line-up through the list in memory and a file.
  line_up through_a_file(const line_up &given, const std::string &columns = "") {
    EXPECT_TRUE(fill_list(given, lost).is_whole());
    const line_up taken = take_line_up(lost);
    const std::string text = write_csv(taken, {.columns = columns, .url = "", .is_by_favourites = false}, lost)[0].text;
    EXPECT_TRUE(fill_list(read(text), lost).is_whole());
    return take_line_up(lost);
  }

  // What the chosen columns do not carry of a list.
  row_list losses_of_columns(const line_up &given, const std::string &columns) {
    chlist::loss_counts of_writing;
    fill_list(given, lost);
    write_csv(take_line_up(lost), {.columns = columns, .url = "", .is_by_favourites = false}, of_writing);
    return losses(of_writing);
  }

  std::string refusal(const std::string &text) {
    try {
      read(text);
    } catch (const std::runtime_error &error) {
      return error.what();
    }
    return "";
  }

  // Why the row of these columns, besides the identity, is skipped.
  std::string skipped(const std::string &column, const std::string &cell) {
    const line_up made = read("network_id,ts_id,frequency,service_id," + column + "\n1,2,3000000,4," + cell + "\n");
    EXPECT_EQ(made.services.size() + made.skipped.size(), 1U);
    return made.skipped.empty() ? "" : made.skipped[0].reason;
  }
};

TEST_F(CsvLineUp, TheIdentityIsEnough) {
  const line_up made = read("service_id,frequency,ts_id,network_id\r\n4,11000000,2,1\r\n");

  ASSERT_EQ(made.services.size(), 1U);
  const line_up_service &service = made.services[0];
  EXPECT_EQ(service.line, 2U);
  EXPECT_EQ(service.fields.service_id, 4);
  EXPECT_EQ(service.fields.frequency, 11'000'000);
  EXPECT_EQ(service.fields.ts_id, 2);
  EXPECT_EQ(service.fields.network_id, 1);
  EXPECT_EQ(service.fields.service_type, SERVICE_TYPE_TV);
  EXPECT_EQ(service.fields.source_type, 1);
  EXPECT_EQ(service.fields.video_pid, 0xFFFF);
  EXPECT_FALSE(service.number);
  EXPECT_TRUE(service.is_listed);
}

TEST_F(CsvLineUp, TheIdentityIsNeeded) {
  const std::string why = "; network_id, ts_id, frequency and service_id are what a service is known by";
  EXPECT_EQ(refusal("ts_id,frequency,service_id\n"), "line 1: has no column network_id" + why);
  EXPECT_EQ(refusal("network_id,frequency,service_id\n"), "line 1: has no column ts_id" + why);
  EXPECT_EQ(refusal("network_id,ts_id,service_id\n"), "line 1: has no column frequency" + why);
  EXPECT_EQ(refusal("network_id,ts_id,frequency\n"), "line 1: has no column service_id" + why);
  EXPECT_EQ(refusal("network_id,ts_id,frequency,service_id,name,name\n"), "line 1: has two columns 'name'");
  EXPECT_EQ(read("").services.size(), 0U);
}

TEST_F(CsvLineUp, UnknownColumnsAreCounted) {
  const line_up made = read("network_id,ts_id,frequency,service_id,Remark\n1,2,3,4,x\n1,2,3,5,\n1,2,3,6,y\n");

  EXPECT_EQ(made.services.size(), 3U);
  EXPECT_EQ(losses(lost), (row_list{"cells of the column 'Remark': 2"}));
}

TEST_F(CsvLineUp, ARowThatCannotBeReadIsSkipped) {
  const line_up made = read("network_id,ts_id,frequency,service_id\n1,2,3\n1,2,3,4\n1,2,,5\n1,2,3,4,5\n");

  EXPECT_EQ(made.services.size(), 1U);
  ASSERT_EQ(made.skipped.size(), 3U);
  EXPECT_EQ(made.skipped[0].line, 2U);
  EXPECT_EQ(made.skipped[0].reason, "has 3 cells instead of 4");
  EXPECT_EQ(made.skipped[1].line, 4U);
  EXPECT_EQ(made.skipped[1].reason, "has no frequency");
  EXPECT_EQ(made.skipped[2].reason, "has 5 cells instead of 4");
}

TEST_F(CsvLineUp, CellsThatCannotBeReadSayWhy) {
  EXPECT_EQ(skipped("number", "x"), "number 'x' is not a number");
  EXPECT_EQ(skipped("number", "32768"), "number '32768' is not within 0..32767");
  EXPECT_EQ(skipped("number", "32767"), "");
  EXPECT_EQ(skipped("number", "-32768"), "");
  EXPECT_EQ(skipped("number", "-32769"), "number '32769' is not within 0..32768");
  EXPECT_EQ(skipped("net_index", "256"), "net_index '256' is not within 0..255");
  EXPECT_EQ(skipped("net_index", "255"), "");
  EXPECT_EQ(skipped("video_pid", "65536"), "video_pid '65536' is not within 0..65535");
  EXPECT_EQ(skipped("video_pid", "65535"), "");
  EXPECT_EQ(skipped("polarisation", "X"), "polarisation 'X' is none of H, V, L and R");
  EXPECT_EQ(skipped("polarisation", "HV"), "polarisation 'HV' is none of H, V, L and R");
  EXPECT_EQ(skipped("locked", "maybe"), "locked 'maybe' is neither yes nor no");
  EXPECT_EQ(skipped("type", "Televison"), "type 'Televison' is unknown");
  EXPECT_EQ(skipped("name", std::string("a\0b", 3)), "holds a NUL byte");
}

TEST_F(CsvLineUp, WordsAndLettersAreUnderstood) {
  const line_up made = read("network_id,ts_id,frequency,service_id,polarisation,locked,skipped,type,audio_pid\n"
                            "1,2,3,4,v,yes,0,radio,\n"
                            "1,2,3,5,L,false,1,,7\n"
                            "1,2,3,6,R,no,true,TV,7\n");

  ASSERT_EQ(made.services.size(), 3U) << made.skipped[0].reason;
  EXPECT_EQ(made.services[0].fields.polarisation, 1);
  EXPECT_EQ(made.services[1].fields.polarisation, 0);
  EXPECT_EQ(made.services[2].fields.polarisation, 1);
  EXPECT_EQ(made.services[0].fields.flag, CHANNEL_FLAG_LOCKED);
  EXPECT_EQ(made.services[1].fields.flag, CHANNEL_FLAG_SKIP);
  EXPECT_EQ(made.services[2].fields.flag, CHANNEL_FLAG_SKIP);
  EXPECT_EQ(made.services[0].fields.service_type, SERVICE_TYPE_RADIO);
  EXPECT_EQ(made.services[1].fields.service_type, SERVICE_TYPE_RADIO);
  EXPECT_EQ(made.services[2].fields.service_type, SERVICE_TYPE_TV);
}

TEST_F(CsvLineUp, FavouritesComeFromTheirColumn) {
  const line_up made = read("favourites,network_id,ts_id,frequency,service_id\n"
                            "Films;News,1,2,3,4\n"
                            ",1,2,3,5\n"
                            "bad,1,2,3,x\n"
                            "News,1,2,3,6\n");

  const std::vector<chlist::favourite_group> expected = {{"Films", {{0, {}}}}, {"News", {{0, {}}, {2, {}}}}};
  EXPECT_EQ(made.favourites, expected);
}

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

  const line_up taken = take_line_up(lost);
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

TEST_F(CsvLineUp, FrequenciesThatAnImportRefusesAreCounted) {
  for (const auto &[frequency, count] :
       std::vector<std::pair<std::int64_t, std::size_t>>{{-1, 1}, {0, 0}, {4'294'967'295, 0}, {4'294'967'296, 1}}) {
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

TEST_F(CsvLineUp, GroupsOfOneNameAreCounted) {
  line_up given = line_up_of({service_named("", 1)});
  given.services[0].fields.net_index = 1;
  given.favourites = {{"Films", {{0, {}}}}, {"Films", {{0, {}}}}, {"News", {{0, {}}}}};
  fill_list(line_up_of({service_named("", 1)}), lost);

  write_csv(given, {}, lost);

  EXPECT_EQ(losses(lost), (row_list{"favourite groups of one name, which become one: 1"}));
}

TEST_F(CsvLineUp, CircularPolarisationsAreCounted) {
  read("network_id,ts_id,frequency,service_id,polarisation\n1,2,3,4,L\n1,2,3,5,r\n1,2,3,6,H\n1,2,3,7,v\n");

  EXPECT_EQ(losses(lost), (row_list{"circular polarisations (left as horizontal, right as vertical): 2"}));
}

// Each takes a second or more when every column, group or kind of loss is sought among all others.
TEST_F(CsvLineUp, HostileInputsTakeLittleTime) {
  constexpr int many = 50'000;
  std::string columns = "network_id,ts_id,frequency,service_id";
  std::string row = "1,2,3,4";
  std::string groups = "network_id,ts_id,frequency,service_id,favourites\n";
  for (int n = 0; n < many; ++n) {
    columns += ",column " + std::to_string(n);
    row += ",x";
    groups += "1,2,3," + std::to_string(n) + ",group " + std::to_string(n) + "\n";
  }
  const std::string short_rows = [] {
    std::string text;
    for (int n = 0; n < many; ++n) {
      text += "1\n";
    }
    return text;
  }();
  const std::clock_t begin = std::clock();

  EXPECT_EQ(read(columns + "\n" + row + "\n" + short_rows).skipped.size(), std::size_t{many});
  EXPECT_EQ(read(groups).favourites.size(), std::size_t{many});

  EXPECT_EQ(lost.rows().size(), std::size_t{many});
  EXPECT_LT(std::clock() - begin, 5 * CLOCKS_PER_SEC);
}

// Numbers of favourites, which no column carries, are the services' own; groups come up in order.
line_up carried_line_up(unsigned seed) {
  line_up made = random_line_up(seed, 40);
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
