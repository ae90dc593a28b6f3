// The text of CSV by RFC 4180: cells, rows, quotes and line ends.
#include "chlist/exchange/csv/csv.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "tool/exchange/line_ups.h"

namespace {

using chlist::csv_line;
using chlist::csv_row;
using chlist::parse_csv;
using tool_test::line_up_source;

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

}  // namespace
