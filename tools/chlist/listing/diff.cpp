// `chlist diff`: reads two files and holds them against each other.
#include "chlist/commands.h"

#include <fmt/format.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "chlist/common_options.h"
#include "chlist/compare/difference.h"
#include "chlist/compare/sources.h"
#include "chlist/edit/edits_between.h"
#include "chlist/exchange/text_lines.h"
#include "chlist/exit_codes.h"
#include "chlist/files/file_line_up.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/listing/scan_difference.h"
#include "chlist/messages.h"
#include "chlist/report.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

struct diff_options {
  fs::path before;
  fs::path after;
  bool is_of_scans = false;
  bool as_edits = false;
  bool as_json = false;
};

struct comparison {
  std::vector<change> changes;
  bool is_renumbered = false;      // the sources, which are compared as if they were not
  std::vector<std::string> notes;  // what a file holds that no list has, and sources that are numbered otherwise
};

line_up line_up_to_compare(const channel_file &input, std::vector<std::string> &notes) {
  const file_records records(input.bytes());
  must_be_whole(input, records);
  for (const std::string &note : not_saved_again(records)) {
    notes.push_back(fmt::format("{}: {}", input.path().string(), note));
  }
  return line_up_of(records.list());
}

json json_of_files(const diff_options &options, bool is_changed) {
  return {{"before_file", options.before.string()}, {"after_file", options.after.string()}, {"is_changed", is_changed}};
}

line_up numbered_alike(const line_up &was, line_up is, const fs::path &path, comparison &found) {
  const std::vector<paired_source> sources = pair_sources(was, is);
  found.is_renumbered = is_any_renumbered(sources);
  for (const paired_source &source : sources) {
    if (source.is_renumbered()) {
      found.notes.push_back(fmt::format("{}: network index {}", path.string(), text_of(source)));
    }
  }
  renumber_sources(is, sources);
  return is;
}

json json_of_diff(const diff_options &options, const comparison &found) {
  json document = json_of_files(options, !found.changes.empty() || found.is_renumbered);
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
  print_report([&] {
    if (found.changes.empty() && found.is_renumbered) {
      fmt::print("no differences but in the numbers of sources\n");
    } else {
      fmt::print("{}", text_of_differences(found.changes));
    }
  });
}

int compare_scans(const diff_options &options, const line_up &was, const line_up &is,
                  const std::vector<std::string> &notes) {
  const scan_difference found = difference_of_scans(was, is);
  if (options.as_json) {
    json document = json_of_files(options, !found.is_empty());
    put_scan_difference(document, found);
    document["notes"] = notes;
    print_report([&] { print_json(document); });
  } else {
    std::ranges::for_each(notes, print_message);
    print_report([&] { print_scan_difference(found); });
  }
  return found.is_empty() ? exit_done : exit_findings;
}

std::string comments(const std::string &text) {
  std::string made;
  text_lines lines(text);
  while (const std::optional<std::string_view> line = lines.next()) {
    made += fmt::format("# {}\n", *line);
  }
  return made;
}

// What no edit does is told behind the edits, and that sources are numbered otherwise, too.
int print_edits(const channel_file &before, const line_up &wanted, const comparison &found) {
  const edit_script script = edits_between(before, wanted);
  std::ranges::for_each(found.notes, print_message);
  print_report([&] {
    for (const std::string &line : script.lines) {
      fmt::print("{}\n", line);
    }
    if (!script.left.empty()) {
      fmt::print("# No edit does this:\n{}", comments(text_of_differences(script.left)));
    }
  });
  return script.left.empty() && !found.is_renumbered ? exit_done : exit_findings;
}

int run_diff(const diff_options &options) {
  const channel_file before(options.before);
  const channel_file after(options.after);
  before.must_be_current();
  after.must_be_current();
  comparison found;
  const line_up was = line_up_to_compare(before, found.notes);
  const line_up is = numbered_alike(was, line_up_to_compare(after, found.notes), options.after, found);
  if (options.is_of_scans) {
    return compare_scans(options, was, is, found.notes);
  }
  if (options.as_edits) {
    return print_edits(before, is, found);
  }
  found.changes = differences(was, is);
  report(options, found);
  return found.changes.empty() && !found.is_renumbered ? exit_done : exit_findings;
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
               "tables and settings. Reserved bytes are not compared. Sources that the files number differently are "
               "paired by their names or orbital positions, which is said. Both files are of version 10 and are only "
               "read.",
               "--scan tells what became of the services alone: those that are new or gone, those that moved to "
               "another transponder or other ids and are found again by their network and service id or by their name "
               "and type, those with another name, and those of which several could be it.",
               "--as-edits prints edits, one a line, which `chlist apply` takes: AFTER, or what is as near to it as "
               "edits come. Services are named by their identities. What no edit does, as a service that AFTER has "
               "and BEFORE lacks, comes behind them in comments, and the exit code is 1."},
          .exit_codes = {{"0", "the same; with --as-edits, the edits make AFTER of BEFORE"},
                         {"1", "there are differences; with --as-edits, some that no edit does"},
                         {"2", "bad usage, a file that cannot be read, is short or is of another version; or the "
                               "report could not be written"}},
          .examples = {"chlist diff yesterday.dat channels.dat",
                       "chlist diff --as-edits channels.dat edited.dat > family.edits",
                       "chlist diff --json yesterday.dat channels.dat | jq '.differences.added[].name'"},
          .options = {{.names = "BEFORE",
                       .target = &options->before,
                       .about = "the channel file to start from",
                       .is_required = true},
                      {.names = "AFTER",
                       .target = &options->after,
                       .about = "the channel file to compare with it",
                       .is_required = true},
                      {.names = "--scan",
                       .target = &options->is_of_scans,
                       .about = "compare what two scans found, whatever their views and numbers"},
                      {.names = "--as-edits",
                       .target = &options->as_edits,
                       .about = "print the lines of `chlist apply` that make AFTER of BEFORE",
                       .excluded = {"--scan", "--json"}},
                      json_option(options->as_json)},
          .run = [options] { return run_diff(*options); }};
}

}  // namespace chlist
