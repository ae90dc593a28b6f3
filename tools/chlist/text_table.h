// A table for people: columns as wide as their widest cell, numbers to the right. Characters of East Asian scripts take
// two places.
#pragma once

#include <cstddef>
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
  };

  explicit text_table(std::vector<column> columns) : columns_(std::move(columns)) {}

  // As many cells as there are columns.
  void add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }

  // Each row is a line; the titles, painted on a terminal, are the first. No line ends in blanks.
  [[nodiscard]] std::string text() const;

 private:
  std::vector<column> columns_;
  std::vector<std::vector<std::string>> rows_;
};

}  // namespace chlist
