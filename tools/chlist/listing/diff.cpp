// `chlist diff`: reads two files and holds them against each other.
#include "chlist/commands.h"

#include <fmt/format.h>

#include <filesystem>
#include <memory>

#include "chlist/exit_codes.h"
#include "chlist/files/file_line_up.h"
#include "chlist/line_up/difference.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/messages.h"
#include "chlist/report.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

struct diff_options {
  fs::path before;
  fs::path after;
  bool as_json = false;
};

struct comparison {
  std::vector<change> changes;
  std::vector<std::string> notes;  // what a file holds that no list has
};

line_up line_up_to_compare(const channel_file &input, std::vector<std::string> &notes) {
  const file_records records(input.bytes());
  must_be_whole(input, records);
  for (const std::string &note : not_saved_again(records)) {
    notes.push_back(fmt::format("{}: {}", input.path().string(), note));
  }
  return line_up_of(records.list());
}

json json_of_diff(const diff_options &options, const comparison &found) {
  json document = {{"before_file", options.before.string()},
                   {"after_file", options.after.string()},
                   {"is_changed", !found.changes.empty()}};
  document["differences"] = json_of_differences(found.changes);
  document["notes"] = found.notes;
  return document;
}

void report(const diff_options &options, const comparison &found) {
  if (options.as_json) {
    print_report([&] { print_json(json_of_diff(options, found)); });
    return;
  }
  std::ranges::for_each(found.notes, print_message);
  print_report([&] { print_differences(found.changes); });
}

int run_diff(const diff_options &options) {
  const channel_file before(options.before);
  const channel_file after(options.after);
  before.must_be_current();
  after.must_be_current();
  comparison found;
  const line_up was = line_up_to_compare(before, found.notes);
  found.changes = differences(was, line_up_to_compare(after, found.notes));
  report(options, found);
  return found.changes.empty() ? exit_done : exit_findings;
}

}  // namespace

command diff_command() {
  auto options = std::make_shared<diff_options>();
  return {.name = "diff",
          .summary = "Show what differs between two channel files",
          .details =
              {"Services are paired by their identity as the receiver does it: a frequency that differs by less than "
               "2500 is the same. Of a service every column is compared (chlist list --columns help), its number in "
               "every view and favourite group included; then the order of the views, networks, transponders, group "
               "tables and settings. Reserved bytes are not compared. Both files are of version 10 and are only read."},
          .exit_codes = {{"0", "the same"},
                         {"1", "there are differences"},
                         {"2", "bad usage, a file that cannot be read, is short or is of another version; or the "
                               "report could not be written"}},
          .examples = {"chlist diff yesterday.dat channels.dat",
                       "chlist diff --json yesterday.dat channels.dat | jq '.differences.added[].name'"},
          .options = {{.names = "BEFORE",
                       .target = &options->before,
                       .about = "the channel file to start from",
                       .is_required = true},
                      {.names = "AFTER",
                       .target = &options->after,
                       .about = "the channel file to compare with it",
                       .is_required = true},
                      {.names = "--json", .target = &options->as_json, .about = "report as JSON"}},
          .run = [options] { return run_diff(*options); }};
}

}  // namespace chlist
