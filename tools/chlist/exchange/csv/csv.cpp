// The cells are read one by one, since a line end may stand within one.
#include "chlist/exchange/csv/csv.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "chlist/text/utf8.h"

namespace chlist {
namespace {

constexpr std::string_view special = ",;\t\"\r\n";
constexpr std::string_view cell_separators = ",;\t";
constexpr std::string_view separator_line = "sep=";

// How often a character stands in the first line, outside quotes.
std::ptrdiff_t count_in_header(std::string_view text, char wanted) {
  bool is_quoted = false;
  std::ptrdiff_t count = 0;
  for (const char c : text.substr(0, text.find_first_of("\r\n"))) {
    is_quoted = is_quoted != (c == '"');
    count += c == wanted && !is_quoted ? 1 : 0;
  }
  return count;
}

char separator_of(std::string_view text) {
  return *std::ranges::max_element(cell_separators, {}, [text](char each) { return count_in_header(text, each); });
}

class csv_parser {
 public:
  explicit csv_parser(std::string_view text) : text_(without_byte_order_mark(text)), separator_(separator_of(text_)) {
    const std::string_view first = text_.substr(0, text_.find_first_of("\r\n"));
    if (first.size() == separator_line.size() + 1 && first.starts_with(separator_line) &&
        cell_separators.find(first.back()) != std::string_view::npos) {
      separator_ = first.back();
      at_ = first.size();
      pass_line_end();
    }
    ends_ = {separator_, '\r', '\n'};
  }

  std::vector<csv_row> read() {
    while (at_ < text_.size()) {
      csv_row row = read_row();
      if (row.cells.size() > 1 || !row.cells.front().empty()) {
        rows_.push_back(std::move(row));
      }
    }
    return std::move(rows_);
  }

 private:
  [[nodiscard]] bool is_at(char c) const { return at_ < text_.size() && text_[at_] == c; }

  csv_row read_row() {
    csv_row row = {line_, {}};
    row.cells.push_back(read_cell());
    while (is_at(separator_)) {
      ++at_;
      row.cells.push_back(read_cell());
    }
    pass_line_end();
    return row;
  }

  // Text behind a closing quote belongs to the cell as it stands.
  std::string read_cell() {
    std::string cell = is_at('"') ? read_quoted() : "";
    const std::size_t end = std::min(text_.find_first_of(ends_, at_), text_.size());
    cell += text_.substr(at_, end - at_);
    at_ = end;
    return cell;
  }

  std::string read_quoted() {
    const std::size_t begin = line_;
    std::string cell;
    for (++at_; at_ < text_.size(); ++at_) {
      if (text_[at_] == '"') {
        ++at_;
        if (!is_at('"')) {
          return cell;
        }
      }
      line_ += text_[at_] == '\n' ? 1 : 0;
      cell += text_[at_];
    }
    throw std::runtime_error(fmt::format("line {}: a quote is not closed", begin));
  }

  void pass_line_end() {
    const bool is_return = is_at('\r');
    at_ += is_return ? 1 : 0;
    const bool is_feed = is_at('\n');
    at_ += is_feed ? 1 : 0;
    line_ += is_return || is_feed ? 1 : 0;
  }

  std::string_view text_;
  char separator_;
  std::string ends_;  // of a cell
  std::size_t at_ = 0;
  std::size_t line_ = 1;
  std::vector<csv_row> rows_;
};

std::string cell_text(std::string_view cell) {
  if (cell.find_first_of(special) == std::string_view::npos && !cell.starts_with(byte_order_mark)) {
    return std::string(cell);
  }
  std::string quoted = "\"";
  for (const char c : cell) {
    quoted += c == '"' ? "\"\"" : std::string(1, c);
  }
  return quoted + '"';
}

}  // namespace

std::vector<csv_row> parse_csv(std::string_view text) { return csv_parser(text).read(); }

// A row of one empty cell would be a blank line.
std::string csv_line(const std::vector<std::string> &cells) {
  std::string line;
  for (const std::string &cell : cells) {
    line += (&cell == cells.data() ? "" : ",") + cell_text(cell);
  }
  return (line.empty() ? "\"\"" : line) + "\r\n";
}

}  // namespace chlist
