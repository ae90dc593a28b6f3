// A table for people: columns as wide as their widest cell, numbers to the right. Characters of East Asian scripts take
// two places. On a terminal that is too narrow texts are shortened, numbers never; where that does not do, columns at
// the right are left out, and a last line tells which.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace chlist {

class text_table {
 public:
  struct column {
    std::string title;
    bool is_number = false;
    bool is_name = false;  // keeps most of its width when others give theirs away
  };

  explicit text_table(std::vector<column> columns) : columns_(std::move(columns)) {}

  // A row has as many cells as there are columns.
  void add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }

  // Each row is a line; the titles, painted on a terminal, are the first. No line ends in blanks.
  [[nodiscard]] std::string text() const;
  // As wide as it has to be, or not wider than this. The first column is there however wide it is.
  [[nodiscard]] std::string text(std::optional<std::size_t> most_columns) const;

 private:
  [[nodiscard]] std::vector<std::size_t> widths() const;
  // Of as many columns as there is room for.
  [[nodiscard]] std::vector<std::size_t> fitting_widths(std::size_t most_columns) const;
  void shorten(std::vector<std::size_t> &widths, std::size_t most_columns) const;
  [[nodiscard]] std::string left_out(std::size_t first, std::size_t most_columns) const;

  std::vector<column> columns_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace chlist
