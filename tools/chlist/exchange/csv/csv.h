// Text of RFC 4180: cells parted by commas, in quotes where they hold commas, quotes or line ends; what is read may
// have semicolons or tabs in place of the commas, as spreadsheets write them where the comma is in numbers.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace chlist {

struct csv_row {
  std::size_t line = 0;  // where it begins
  std::vector<std::string> cells;
};

// Every row of a text; blank lines are passed over, and so are a byte order mark and a first line "sep=;". What parts
// the cells is what the first row has most of. Lines may end in LF, CRLF or CR. A quote within a cell that does not
// begin with one stands for itself. Throws std::runtime_error when a cell in quotes does not end.
std::vector<csv_row> parse_csv(std::string_view text);

// A row with its line end.
std::string csv_line(const std::vector<std::string> &cells);

}  // namespace chlist
