// One line for each kind of loss.
#include "chlist/exchange/exchange_report.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/command.h"
#include "chlist/files/standard_streams.h"
#include "chlist/first_of_a_kind.h"
#include "chlist/messages.h"
#include "chlist/report.h"
#include "chlist/text/shown.h"

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
    json object = {{"what", row.what}, {"count", row.count}};
    if (!row.note.empty()) {
      object["note"] = row.note;
    }
    array.push_back(std::move(object));
  }
  return array;
}

// A reason without what differs from line to line: "has N fields instead of N", "SID '' is not a number".
std::string kind_of(std::string_view reason) {
  std::string kind;
  char quote = 0;
  for (const char c : reason) {
    const bool is_digit = c >= '0' && c <= '9';
    const bool ends_quotation = quote != 0 && c == quote;
    if (quote == 0 || ends_quotation) {
      if (!is_digit || !kind.ends_with('N')) {
        kind += is_digit ? 'N' : c;
      }
    }
    if (c == '\'' || c == '"') {
      quote = ends_quotation ? '\0' : quote != 0 ? quote : c;
    }
  }
  return kind;
}

}  // namespace

void report_skipped(const std::filesystem::path &input, const std::vector<skipped_line> &skipped, bool shows_all) {
  first_of_a_kind printed(shows_all);
  std::map<std::string, std::string_view> first;  // reason of each kind
  for (const skipped_line &each : skipped) {
    const std::string kind = kind_of(each.reason);
    first.try_emplace(kind, each.reason);
    if (printed.takes(kind)) {
      const std::string line = each.line != 0 ? fmt::format(":{}", each.line) : "";
      print_message(fmt::format("{}{}: skipped: {}", input.string(), line, each.reason));
    }
  }
  for (const auto &[kind, count] : printed.left_out()) {
    print_message(fmt::format("{}: and {} more like: {} (--all)", input.string(), count, first.at(kind)));
  }
}

void report_left_out(const std::filesystem::path &input, const loss_counts &lost) {
  for (const loss_counts::row &row : rows_of(lost, true)) {
    const std::string note = row.note.empty() ? "" : fmt::format(" ({})", row.note);
    print_message(fmt::format("{}: left out: {}: {}{}", input.string(), row.what, row.count, note));
  }
}

void report_full_tables(const std::filesystem::path &input, const filled_list &filled, bool shows_all) {
  for (const std::string &text : filled.left_out) {
    print_message(fmt::format("{}: {}", input.string(), text));
  }
  first_of_a_kind printed(shows_all);
  for (const group_left_out &group : filled.groups_left_out) {
    if (printed.takes(group.is_cut ? "favourites of groups that are too long" : "favourite groups")) {
      const std::string what = group.is_cut
                                   ? fmt::format("{} of {}", group.left_out, counted(group.services, "service"))
                                   : counted(group.services, "service");
      print_message(fmt::format("{}: left out: favourite group {}: {}", input.string(), shown(group.name), what));
    }
  }
  for (const auto &[kind, count] : printed.left_out()) {
    print_message(fmt::format("{}: and {} more: {} (--all)", input.string(), count, kind));
  }
}

std::string losses_text(const loss_counts &lost, std::string_view title) {
  const auto rows = rows_of(lost, false);
  std::string text = rows.empty() ? "" : fmt::format("{}\n", title);
  constexpr std::size_t usual_width = 34;
  std::size_t width = usual_width;
  for (const loss_counts::row &row : rows) {
    width = std::max(width, row.what.size());
  }
  for (const loss_counts::row &row : rows) {
    text += fmt::format("  {:<{}}{:>5}{}{}\n", row.what, width, row.count, row.note.empty() ? "" : "  ", row.note);
  }
  return text;
}

std::string text_of(const list_counts &counts) {
  return fmt::format("{} ({} TV, {} radio, {} other) of {} on {} of {}", counted(counts.services, "service"), counts.tv,
                     counts.radio, counts.services - counts.tv - counts.radio, counted(counts.providers, "provider"),
                     counted(counts.transponders, "transponder"), counted(counts.sources, "source"));
}

void print_summary(const std::filesystem::path &output, std::string_view text) {
  if (is_standard_stream(output)) {
    fmt::print(stderr, "{}", text);
  } else {
    print_report([text] { fmt::print("{}", text); });
  }
}

void must_leave_room_for_report(const std::filesystem::path &output, bool as_json) {
  if (is_standard_stream(output) && as_json) {
    throw usage_error("--json: standard output takes the list already");
  }
}

json json_of(const list_counts &counts) {
  return {{"services", counts.services},
          {"tv", counts.tv},
          {"radio", counts.radio},
          {"providers", counts.providers},
          {"transponders", counts.transponders},
          {"sources", counts.sources},
          {"favourite_groups", counts.favourite_groups}};
}

json json_of_remains(const filled_list &filled, const loss_counts &lost) {
  return {{"skipped_lines", json_of_skipped(filled.skipped)},
          {"notes", filled.left_out},
          {"groups_left_out", json_of_groups_left_out(filled.groups_left_out)},
          {"left_out", json_of_left_out(lost)},
          {"not_carried", json_of_losses(lost)}};
}

json json_of_skipped(const std::vector<skipped_line> &skipped) {
  json array = json::array();
  for (const skipped_line &each : skipped) {
    array.push_back({{"line", each.line}, {"message", each.reason}});
  }
  return array;
}

json json_of_groups_left_out(const std::vector<group_left_out> &groups) {
  json array = json::array();
  for (const group_left_out &group : groups) {
    array.push_back({{"group_name", group.name}, {"services", group.services}, {"count", group.left_out}});
  }
  return array;
}

json json_of_losses(const loss_counts &lost) { return json_of_rows(rows_of(lost, false)); }
json json_of_left_out(const loss_counts &lost) { return json_of_rows(rows_of(lost, true)); }

}  // namespace chlist
