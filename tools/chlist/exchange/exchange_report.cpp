// One line for each kind of loss.
#include "chlist/exchange/exchange_report.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace chlist {
namespace {

std::vector<loss_counts::row> rows_of(const loss_counts &lost, bool is_left_out) {
  std::vector<loss_counts::row> rows;
  std::ranges::copy_if(lost.rows(), std::back_inserter(rows),
                       [=](const loss_counts::row &row) { return row.is_left_out == is_left_out; });
  return rows;
}

json json_of_rows(const std::vector<loss_counts::row> &rows) {
  json array = json::array();
  for (const loss_counts::row &row : rows) {
    array.push_back({{"what", row.what}, {"count", row.count}});
  }
  return array;
}

}  // namespace

void report_skipped(const std::filesystem::path &input, const std::vector<skipped_line> &skipped) {
  for (const skipped_line &each : skipped) {
    const std::string line = each.line != 0 ? fmt::format(":{}", each.line) : "";
    fmt::print(stderr, "{}{}: skipped: {}\n", input.string(), line, each.reason);
  }
}

void report_left_out(const std::filesystem::path &input, const loss_counts &lost) {
  for (const loss_counts::row &row : rows_of(lost, true)) {
    fmt::print(stderr, "{}: left out: {}: {}\n", input.string(), row.what, row.count);
  }
}

void print_losses(const loss_counts &lost, std::string_view title) {
  const auto rows = rows_of(lost, false);
  if (!rows.empty()) {
    fmt::print("{}\n", title);
  }
  constexpr std::size_t usual_width = 34;
  std::size_t width = usual_width;
  for (const loss_counts::row &row : rows) {
    width = std::max(width, row.what.size());
  }
  for (const loss_counts::row &row : rows) {
    fmt::print("  {:<{}}{:>5}\n", row.what, width, row.count);
  }
}

json json_of_skipped(const std::vector<skipped_line> &skipped) {
  json array = json::array();
  for (const skipped_line &each : skipped) {
    array.push_back({{"line", each.line}, {"reason", each.reason}});
  }
  return array;
}

json json_of_losses(const loss_counts &lost) { return json_of_rows(rows_of(lost, false)); }
json json_of_left_out(const loss_counts &lost) { return json_of_rows(rows_of(lost, true)); }

}  // namespace chlist
