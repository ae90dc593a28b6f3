// Quoting of cells.
#include "chlist/service/csv.h"

#include <string_view>

namespace chlist {
namespace {

void append_cell(std::string &line, std::string_view cell) {
  if (cell.find_first_of(",\"\r\n") == std::string_view::npos) {
    line += cell;
    return;
  }
  line += '"';
  for (const char letter : cell) {
    line.append(letter == '"' ? 2 : 1, letter);
  }
  line += '"';
}

}  // namespace

std::string csv_line(std::span<const std::string> cells) {
  std::string line;
  for (const std::string &cell : cells) {
    line += &cell == cells.data() ? "" : ",";
    append_cell(line, cell);
  }
  return line + "\r\n";
}

}  // namespace chlist
