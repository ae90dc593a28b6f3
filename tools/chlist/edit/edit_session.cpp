// An edit changes the file as little as it can: a list that is as it was is not saved, and what a load changes on
// purpose is put back before anything is edited.
#include "chlist/edit/edit_session.h"

#include <channel/views.h>
#include <fmt/format.h>

#include <optional>

#include "chlist/exit_codes.h"
#include "chlist/files/backup.h"
#include "chlist/files/channel_file.h"
#include "chlist/files/edit_lock.h"
#include "chlist/files/faithful_load.h"
#include "chlist/line_up/difference.h"
#include "chlist/line_up/list_line_up.h"
#include "chlist/messages.h"
#include "chlist/report.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

// Behind an edit's own.
std::vector<std::string> with_common_details(std::vector<std::string> details) {
  details.insert(
      details.end(),
      {"FILE is of version 10; `chlist convert` makes one of an earlier version. It is replaced as a whole or not at "
       "all, and only when something changes; what it was before is kept as FILE.bak, which replaces an earlier one. A "
       "symbolic link stays one: the file that it points to is replaced, and kept beside itself. Nothing changes but "
       "what is asked for and what is said to follow; --dry-run and the report show all of it.",
       "A SERVICE is named by its number in ALL (\"7\", \"7-2\"), by its name or a part of it, or by its identity "
       "(\"1:2:3:11727480H:5\"). What could be several services is refused."});
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
  std::vector<change> changes;
  bool is_changed = false;
  bool is_saved = false;
};

edit_result edit_in_memory(const channel_file &input, const list_edit &apply) {
  input.must_be_current();
  edit_result result;
  result.notes = load_faithfully(input);
  const std::string before = image_of(*get_channel_list());
  const line_up list_before = line_up_in_memory();
  apply(result.notes);
  result.changes = differences(list_before, line_up_in_memory());
  result.is_changed = image_of(*get_channel_list()) != before;
  return result;
}

// Another output is written even when it becomes a copy.
bool is_to_be_saved(const edit_options &options, const edit_result &result) {
  return !options.is_dry_run && (result.is_changed || !options.output.empty());
}

json json_of_result(const edit_options &options, const edit_result &result) {
  return {{"file", options.file.string()},
          {"output", result.is_saved ? json(options.target().string()) : json()},
          {"dry_run", options.is_dry_run},
          {"is_changed", result.is_changed},
          {"differences", json_of_differences(result.changes)},
          {"notes", result.notes}};
}

void print_result(const edit_options &options, const edit_result &result) {
  const std::string what = options.is_dry_run ? "dry run" : options.target().string();
  const char *unchanged = result.is_saved ? "a copy, nothing to change" : "nothing to change";
  fmt::print("{}: {}\n", what, result.is_changed ? "changed" : unchanged);
  if (result.is_changed) {
    print_differences(result.changes);
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
  print_report([&] { print_result(options, result); });
}

}  // namespace

command edit_command(const edit_row &row, edit_options &options) {
  std::vector<option> all = {
      {.names = "FILE", .target = &options.file, .about = "the channel file", .is_required = true}};
  all.insert(all.end(), row.options.begin(), row.options.end());
  all.insert(all.end(),
             {{.names = "-o,--output",
               .target = &options.output,
               .about = "the channel file to write instead of FILE",
               .value = "OUT"},
              {.names = "--dry-run", .target = &options.is_dry_run, .about = "show what would change; write nothing"},
              {.names = "--no-backup",
               .target = &options.leaves_no_backup,
               .about = "do not keep the previous file as FILE.bak"},
              {.names = "--json", .target = &options.as_json, .about = "report as JSON, notes included"}});
  return {.name = row.name,
          .summary = row.summary,
          .details = with_common_details(row.details),
          .sections = row.sections,
          .exit_codes = exit_codes_of_edits(),
          .examples = row.examples,
          .options = all};
}

int run_edit(const edit_options &options, const list_edit &apply) {
  std::optional<edit_lock> lock;
  if (!options.is_dry_run) {
    lock.emplace(options.target());
  }
  const channel_file input(options.file);
  edit_result result = edit_in_memory(input, apply);
  if (is_to_be_saved(options, result)) {
    input.must_be_unchanged();
    save_edited_list(options.file, options.target(), options.leaves_no_backup);
    result.is_saved = true;
  }
  report(options, result);
  return result.notes.empty() ? exit_done : exit_findings;
}

}  // namespace chlist
