// An edit changes the file as little as it can: a list that is as it was is not saved, and what a load changes on
// purpose is put back before anything is edited.
#include "chlist/edit/edit_session.h"

#include <channel/views.h>
#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <memory>
#include <optional>
#include <stdexcept>

#include "chlist/common_options.h"
#include "chlist/compare/difference.h"
#include "chlist/edit/edit_line.h"
#include "chlist/exit_codes.h"
#include "chlist/files/backup.h"
#include "chlist/files/channel_file.h"
#include "chlist/files/edit_lock.h"
#include "chlist/files/faithful_load.h"
#include "chlist/files/kept_in_step.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/messages.h"
#include "chlist/report.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

// What every edit is asked besides its own.
struct edit_options {
  fs::path file;
  fs::path output;  // empty: the file itself
  bool is_dry_run = false;
  bool is_sure = false;
  bool as_json = false;
  bool leaves_no_backup = false;
  bool prints_edits = false;

  [[nodiscard]] const fs::path &target() const { return output.empty() ? file : output; }
};

// What all edits have in common stands behind an edit's own.
std::vector<std::string> with_common_details(std::vector<std::string> details) {
  details.insert(
      details.end(),
      {"FILE is of version 10; `chlist convert` makes one of an earlier version. It is replaced as a whole or not at "
       "all, and only when something changes; what it was before is kept as FILE.bak, which replaces an earlier one, "
       "and in FILE.history, for `chlist undo`. What stands beside it in FILE.more.json follows in the same way. A "
       "symbolic link stays one: the file that it points to is replaced, and kept beside itself. Nothing changes but "
       "what is asked for and what is said to follow; --dry-run and the report show all of it.",
       "A SERVICE is named by its number in ALL (\"7\", \"7-2\"), by its name or a part of it, or by its identity "
       "(\"1:2:3:11727480H:5\"). What could be several services is refused. More than one that --where chooses are "
       "shown with all that would change, and changed when that is answered with yes, or with --yes."});
  return details;
}

std::vector<term> exit_codes_of_edits() {
  return {{"0", "done (or, with --dry-run, could be), or there is nothing to change"},
          {"1",
           "the same, with notes (in JSON, or on standard error): something was done in part or otherwise than asked "
           "for, or FILE holds what cannot be saved again"},
          {"2",
           "nothing was written: bad usage, a service or group that is not there or could be several, a value out of "
           "its range, a full list, an input that cannot be read, an output that cannot be written; or only the report "
           "could not be written"}};
}

struct edit_result {
  edit_notes notes;
  std::vector<edit_table> tables;
  std::vector<std::string> lines;  // that stand for what was done
  std::optional<std::size_t> chosen;
  std::vector<change> changes;
  std::vector<changed_identity> identities;
  bool is_changed = false;
  bool is_saved = false;
};

edit_result edit_in_memory(const channel_file &input, const list_edit &apply) {
  input.must_be_current();
  edit_result result;
  edited_list list;
  list.notes = load_faithfully(input);
  const std::string before = image_of(*get_channel_list());
  const line_up list_before = line_up_in_memory();
  apply(list);
  result.notes = std::move(list.notes);
  result.tables = std::move(list.tables);
  result.lines = std::move(list.lines);
  result.chosen = list.chosen();
  result.identities = list.identities();
  result.changes = differences(list_before, line_up_in_memory());
  result.is_changed = image_of(*get_channel_list()) != before;
  return result;
}

// Another output is written even when it becomes a copy.
bool is_to_be_saved(const edit_options &options, const edit_result &result) {
  return !options.is_dry_run && (result.is_changed || !options.output.empty());
}

json json_of_tables(const std::vector<edit_table> &tables) {
  json array = json::array();
  for (const edit_table &each : tables) {
    array.push_back(each.as_json);
  }
  return array;
}

json json_of_result(const edit_options &options, const edit_result &result) {
  return {{"file", options.file.string()},
          {"output", result.is_saved ? json(options.target().string()) : json()},
          {"dry_run", options.is_dry_run},
          {"chosen", result.chosen ? json(*result.chosen) : json()},
          {"is_changed", result.is_changed},
          {"tables", json_of_tables(result.tables)},
          {"differences", json_of_differences(result.changes)},
          {"notes", result.notes}};
}

void print_result(const std::string &what, const edit_result &result) {
  for (const edit_table &each : result.tables) {
    fmt::print("{}", each.text);
  }
  const char *unchanged = result.is_saved ? "a copy, nothing to change" : "nothing to change";
  const std::string chosen = result.chosen ? counted(*result.chosen, "service") + " chosen, " : "";
  fmt::print("{}: {}{}\n", what, chosen, result.is_changed ? "changed" : unchanged);
  if (result.is_changed) {
    fmt::print("{}", text_of_differences(result.changes));
  }
}

void report(const edit_options &options, const edit_result &result) {
  if (options.as_json) {
    print_report([&] { print_json(json_of_result(options, result)); });
    return;
  }
  for (const std::string &note : result.notes) {
    print_message(fmt::format("{}: {}", options.file.string(), note));
  }
  print_report([&] { print_result(options.is_dry_run ? "dry run" : harmless(options.target().string()), result); });
}

bool is_to_be_asked(const edit_options &options, const edit_result &result) {
  return !options.is_dry_run && !options.is_sure && result.is_changed && result.chosen.value_or(0) > 1;
}

// Only somebody at a terminal can say yes.
bool says_yes(const std::string &question) {
  std::cerr << question << " [y/N] " << std::flush;
  std::string answer;
  return std::getline(std::cin, answer) && (answer.starts_with('y') || answer.starts_with('Y'));
}

// Somebody who chooses services by a condition sees which they are before they change.
void must_be_wanted(const edit_options &options, const edit_result &result) {
  if (!is_to_be_asked(options, result)) {
    return;
  }
  if (!options.as_json) {
    print_report([&] { print_result("preview", result); });
    if (::isatty(STDIN_FILENO) == 1 && says_yes("Change " + options.target().string() + "?")) {
      return;
    }
  }
  throw std::runtime_error(fmt::format("{}: {} services are chosen, and none is changed without --yes",
                                       options.file.string(), *result.chosen));
}

// Returns the exit code.
int run_edit(const edit_options &options, const std::string &line, const list_edit &apply) {
  std::optional<edit_lock> lock;
  if (!options.is_dry_run) {
    lock.emplace(options.target());
  }
  const channel_file input(options.file);
  const edited_companion beside(options.file);
  edit_result result = edit_in_memory(input, apply);
  if (!beside.note().empty()) {
    result.notes.push_back(beside.note());
  }
  if (is_to_be_saved(options, result)) {
    must_be_wanted(options, result);
    input.must_be_unchanged();
    save_edited_list(options.file, options.target(), options.leaves_no_backup,
                     {beside.beside(options.target(), result.identities, line_up_in_memory()),
                      result.lines.empty() ? std::vector{line} : result.lines});
    result.is_saved = true;
  }
  report(options, result);
  return result.notes.empty() ? exit_done : exit_findings;
}

std::vector<option> common_options(edit_options &options) {
  return {{.names = "-o,--output",
           .target = &options.output,
           .about = "the channel file to write instead of FILE",
           .value = "OUT"},
          {.names = "--dry-run", .target = &options.is_dry_run, .about = "show what would change; write nothing"},
          {.names = "--yes", .target = &options.is_sure, .about = "change several chosen services without a question"},
          {.names = "--no-backup",
           .target = &options.leaves_no_backup,
           .about = "do not keep the previous file as FILE.bak, nor in FILE.history"},
          json_option(options.as_json)};
}

// The line that does for `chlist apply` what the command does.
int print_line(const edit_row &row) {
  const std::string line = line_of(row);
  row.take();  // refuses what does not go together
  print_report([&] { fmt::print("{}\n", line); });
  return exit_done;
}

int run_command(const edit_options &options, const edit_row &row) {
  if (options.prints_edits) {
    return print_line(row);
  }
  const std::string line = line_of(row);
  return run_edit(options, line, row.take());
}

}  // namespace

command edit_command(const edit_row &row) {
  auto options = std::make_shared<edit_options>();
  std::vector<option> all = {
      {.names = "FILE", .target = &options->file, .about = "the channel file", .is_required = true}};
  all.insert(all.end(), row.options.begin(), row.options.end());
  std::ranges::move(common_options(*options), std::back_inserter(all));
  if (row.is_line) {
    all.push_back({.names = "--print-edits",
                   .target = &options->prints_edits,
                   .about = "print the line of this edit for `chlist apply`; neither read nor write FILE"});
  }
  return {.name = row.name,
          .summary = row.summary,
          .details = with_common_details(row.details),
          .sections = row.sections,
          .exit_codes = exit_codes_of_edits(),
          .examples = row.examples,
          .options = all,
          .groups = row.groups,
          .run = [options, row] { return run_command(*options, row); }};
}

}  // namespace chlist
