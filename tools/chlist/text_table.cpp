// Widths and alignment of tables.
#include "chlist/text_table.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <numeric>

#include "chlist/terminal.h"
#include "chlist/text/shown.h"
#include "chlist/text/utf8.h"
#include "chlist/text/wrapping.h"

namespace chlist {
namespace {

constexpr std::string_view gap = "  ";

// What a text gives way to, one after the other: others than names become short, then names, then all of them shorter.
struct least_widths {
  std::size_t of_names;
  std::size_t of_others;
};

constexpr std::size_t no_less = static_cast<std::size_t>(-1);
constexpr least_widths steps[] = {{no_less, 8}, {16, 8}, {8, 4}, {4, 2}};

std::size_t total_of(const std::vector<std::size_t> &widths) {
  const std::size_t gaps = widths.empty() ? 0 : gap.size() * (widths.size() - 1);
  return std::accumulate(widths.begin(), widths.end(), gaps);
}

void append_cell(std::string &line, std::string_view cell, std::size_t columns, bool is_number) {
  const std::string fitting = shortened(cell, columns);
  const std::size_t blanks = columns - std::min(width_of(fitting), columns);
  line.append(is_number ? blanks : 0, ' ').append(fitting).append(is_number ? 0 : blanks, ' ');
}

}  // namespace

std::vector<std::size_t> text_table::widths() const {
  std::vector<std::size_t> widths;
  for (std::size_t c = 0; c < columns_.size(); ++c) {
    std::size_t width = width_of(columns_[c].title);
    for (const auto &row : rows_) {
      width = std::max(width, width_of(row[c]));
    }
    widths.push_back(width);
  }
  return widths;
}

std::vector<std::size_t> text_table::fitting_widths(std::size_t most_columns) const {
  std::vector<std::size_t> whole = widths();
  std::vector<std::size_t> fitting = whole;
  for (shorten(fitting, most_columns); total_of(fitting) > most_columns && fitting.size() > 1;
       shorten(fitting, most_columns)) {
    whole.pop_back();
    fitting = whole;
  }
  return fitting;
}

// The widest gives way first.
void text_table::shorten(std::vector<std::size_t> &widths, std::size_t most_columns) const {
  for (const least_widths &least : steps) {
    while (total_of(widths) > most_columns) {
      std::size_t *widest = nullptr;
      for (std::size_t c = 0; c < widths.size(); ++c) {
        const bool gives =
            !columns_[c].is_number && widths[c] > (columns_[c].is_name ? least.of_names : least.of_others);
        widest = gives && (widest == nullptr || widths[c] > *widest) ? &widths[c] : widest;
      }
      if (widest == nullptr) {
        break;
      }
      --*widest;
    }
  }
}

std::string text_table::left_out(std::size_t first, std::size_t most_columns) const {
  std::vector<std::string> titles;
  std::transform(columns_.begin() + static_cast<std::ptrdiff_t>(first), columns_.end(), std::back_inserter(titles),
                 [](const column &each) { return each.title; });
  return wrapped(fmt::format("{} left out: {}", counted(titles.size(), "column"), joined(titles, ", ")), 0,
                 most_columns) +
         '\n';
}

std::string text_table::text() const { return text(columns_of_screen()); }

std::string text_table::text(std::optional<std::size_t> most_columns) const {
  const std::vector<std::size_t> places = most_columns ? fitting_widths(*most_columns) : widths();
  const auto line_of = [&](const auto &cell_at) {
    std::string line;
    for (std::size_t c = 0; c < places.size(); ++c) {
      line += c == 0 ? "" : gap;
      append_cell(line, cell_at(c), places[c], columns_[c].is_number);
    }
    return line.erase(line.find_last_not_of(' ') + 1);
  };
  std::string text =
      painted(line_of([&](std::size_t c) -> const std::string & { return columns_[c].title; }), style::bold) + '\n';
  for (const auto &row : rows_) {
    text += line_of([&](std::size_t c) -> const std::string & { return row[c]; }) + '\n';
  }
  return places.size() < columns_.size() ? text + left_out(places.size(), *most_columns) : text;
}

}  // namespace chlist
