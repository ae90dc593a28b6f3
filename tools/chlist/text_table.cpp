// Widths and alignment of tables.
#include "chlist/text_table.h"

#include <algorithm>

#include "chlist/terminal.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

constexpr std::string_view gap = "  ";

}  // namespace

std::string text_table::text() const {
  std::vector<std::size_t> widths;
  for (std::size_t c = 0; c < columns_.size(); ++c) {
    std::size_t width = width_of(columns_[c].title);
    for (const auto &row : rows_) {
      width = std::max(width, width_of(row[c]));
    }
    widths.push_back(width);
  }
  const auto line_of = [&](const auto &cell_at) {
    std::string line;
    for (std::size_t c = 0; c < columns_.size(); ++c) {
      const std::string &cell = cell_at(c);
      const std::string padding(widths[c] - width_of(cell), ' ');
      line += (c == 0 ? "" : std::string(gap)) + (columns_[c].is_number ? padding + cell : cell + padding);
    }
    return line.erase(line.find_last_not_of(' ') + 1);
  };
  std::string text =
      painted(line_of([&](std::size_t c) -> const std::string & { return columns_[c].title; }), style::bold) + '\n';
  for (const auto &row : rows_) {
    text += line_of([&](std::size_t c) -> const std::string & { return row[c]; }) + '\n';
  }
  return text;
}

}  // namespace chlist
