// CSV into a line-up, through the list in memory and a file, and what is lost on the way.
#pragma once

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "chlist/exchange/csv/csv_line_up.h"
#include "tool/exchange/line_ups.h"

namespace tool_test::csv {

using chlist::channel_number;
using chlist::line_up;
using chlist::line_up_service;
using tool_test::line_up_of;
using tool_test::losses;
using tool_test::row_list;
using tool_test::service_named;

class CsvLineUp : public tool_test::line_up_test {
 protected:
  line_up read(const std::string &text) { return chlist::line_up_of_csv(text, lost); }

  // The line-up through the list in memory and a file.
  line_up through_a_file(const line_up &given, const std::string &columns = "") {
    EXPECT_TRUE(fill_list(given, lost).is_whole());
    const std::string text = text_of(tool_test::taken(list), columns);
    EXPECT_TRUE(fill_list(read(text), lost).is_whole());
    return tool_test::taken(list);
  }

  static std::string text_of(const line_up &given, const std::string &columns = "") {
    return write_csv(given, {.columns = columns, .url = "", .is_by_favourites = false}).files.at(0).text;
  }

  // What the chosen columns do not carry of a list.
  static row_list losses_of_columns(const line_up &given, const std::string &columns) {
    return losses(tool_test::export_of(given, "csv", {.columns = columns, .url = "", .is_by_favourites = false}).lost);
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

}  // namespace tool_test::csv
