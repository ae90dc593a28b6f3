// `chlist undo`, `redo`, `restore` and `history`: a file as it was before its edits. Bytes are put back, whatever they
// are: nothing is edited here.
#include <fmt/format.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>

#include "chlist/commands.h"
#include "chlist/common_options.h"
#include "chlist/compare/difference.h"
#include "chlist/exit_codes.h"
#include "chlist/files/channel_file.h"
#include "chlist/files/edit_lock.h"
#include "chlist/files/file_line_up.h"
#include "chlist/files/history.h"
#include "chlist/messages.h"
#include "chlist/report.h"
#include "chlist/text/shown.h"
#include "chlist/text_table.h"

namespace chlist {
namespace {

namespace fs = std::filesystem;

struct undo_options {
  fs::path file;
  int state = 0;  // of restore
  bool is_dry_run = false;
  bool as_json = false;
};

// A history and what the file is now.
struct opened_history {
  explicit opened_history(const fs::path &file) : kept(file), now(contents_on_disk(file)) {
    if (now.empty()) {
      throw std::runtime_error(file.string() + ": No such file or directory");
    }
    if (kept.size() == 0) {
      throw std::runtime_error(file.string() + ": has no history; edits begin one");
    }
    was_changed_elsewhere = !kept.find_place(now);
  }

  [[nodiscard]] std::vector<std::string> notes() const {
    return was_changed_elsewhere
               ? std::vector{fmt::format("was changed by something else than edits; that is state {} now",
                                         kept.at(kept.size() - 1).number)}
               : std::vector<std::string>();
  }

  history kept;
  file_contents now;
  bool was_changed_elsewhere = false;
};

// "rename News \"News 24\"", the first of several.
std::string text_of(const history::state &state) {
  if (state.what.empty()) {
    return state.number == 1 ? "as it was before the first edit" : "changed by something else";
  }
  const std::string first = harmless(state.what.front());
  return state.lines() == 1 ? first : fmt::format("{} and {} more", first, state.lines() - 1);
}

// Whose differences are not to be told when one of the states is no list that can be read.
std::optional<line_up> list_in(const fs::path &file, const file_contents &contents) {
  const auto found = contents.find("");
  if (found == contents.end()) {
    return std::nullopt;
  }
  try {
    const byte_span bytes = std::as_bytes(std::span(found->second));
    return line_up_in(channel_file(file, std::vector<std::byte>(bytes.begin(), bytes.end())));
  } catch (const std::runtime_error &) {
    return std::nullopt;
  }
}

std::optional<std::vector<change>> changes_between(const fs::path &file, const file_contents &before,
                                                   const file_contents &after) {
  const std::optional<line_up> was = list_in(file, before);
  const std::optional<line_up> is = list_in(file, after);
  return was && is ? std::optional(differences(*was, *is)) : std::nullopt;
}

void report(const undo_options &options, const opened_history &opened, const history::state &state,
            const std::string &said, const std::optional<std::vector<change>> &changes) {
  if (options.as_json) {
    const json document = {{"file", options.file.string()},
                           {"dry_run", options.is_dry_run},
                           {"state", state.number},
                           {"lines", state.what},
                           {"differences", changes ? json_of_differences(*changes) : json()},
                           {"notes", opened.notes()}};
    print_report([&] { print_json(document); });
    return;
  }
  for (const std::string &note : opened.notes()) {
    print_message(fmt::format("{}: {}", options.file.string(), note));
  }
  print_report([&] {
    fmt::print("{}: {}\n", options.is_dry_run ? "dry run" : harmless(options.file.string()), said);
    fmt::print("{}", changes ? text_of_differences(*changes) : "");
  });
}

// Where in the history the file goes, and what is said of it.
struct history_step {
  std::size_t index;
  std::string said;
};

using choose_step = std::function<history_step(const history &kept)>;

// The history first: the file is found in it whether it is replaced then or not.
int go(const undo_options &options, const choose_step &choose) {
  std::optional<edit_lock> lock;
  if (!options.is_dry_run) {
    lock.emplace(options.file);
  }
  opened_history opened(options.file);
  const history_step step = choose(opened.kept);
  const file_contents wanted = opened.kept.contents_of(step.index);
  const history::state state = opened.kept.at(step.index);
  if (!options.is_dry_run) {
    opened.kept.go_to(step.index);
    opened.kept.write();
    write_contents(options.file, wanted);
  }
  report(options, opened, state, step.said, changes_between(options.file, opened.now, wanted));
  return opened.was_changed_elsewhere ? exit_findings : exit_done;
}

history_step step_back(const history &kept) {
  if (kept.place() == 0) {
    throw std::runtime_error("there is nothing to undo");
  }
  return {kept.place() - 1, "undone: " + text_of(kept.at(kept.place()))};
}

history_step step_on(const history &kept) {
  if (kept.place() + 1 == kept.size()) {
    throw std::runtime_error("there is nothing to do again");
  }
  return {kept.place() + 1, "done again: " + text_of(kept.at(kept.place() + 1))};
}

history_step step_to(const history &kept, int number) {
  for (std::size_t index = 0; index < kept.size(); ++index) {
    if (kept.at(index).number == number) {
      return {index, fmt::format("state {} again: {}", number, text_of(kept.at(index)))};
    }
  }
  throw std::runtime_error(fmt::format("there is no state {}: there are {} to {}", number, kept.at(0).number,
                                       kept.at(kept.size() - 1).number));
}

json json_of_states(const history &kept) {
  json states = json::array();
  for (std::size_t index = 0; index < kept.size(); ++index) {
    const history::state &each = kept.at(index);
    states.push_back(
        {{"state", each.number}, {"when", each.when}, {"lines", each.what}, {"is_current", index == kept.place()}});
  }
  return states;
}

std::string table_of_states(const history &kept) {
  text_table table({{"state", true}, {""}, {"when"}, {"what", false, true}});
  for (std::size_t index = 0; index < kept.size(); ++index) {
    const history::state &each = kept.at(index);
    table.add({std::to_string(each.number), index == kept.place() ? "now" : "", each.when, text_of(each)});
  }
  return table.text();
}

int show_history(const undo_options &options) {
  const opened_history opened(options.file);
  print_report([&] {
    if (options.as_json) {
      print_json({{"file", options.file.string()}, {"states", json_of_states(opened.kept)}, {"notes", opened.notes()}});
    } else {
      fmt::print("{}", table_of_states(opened.kept));
    }
  });
  if (!options.as_json) {
    for (const std::string &note : opened.notes()) {
      print_message(fmt::format("{}: {}", options.file.string(), note));
    }
  }
  return opened.was_changed_elsewhere ? exit_findings : exit_done;
}

std::vector<term> exit_codes_of_steps() {
  return {{"0", "done (or, with --dry-run, could be)"},
          {"1", "the same; FILE was changed by something else than edits, which is kept as a state"},
          {"2", "nothing was written: no history or a damaged one, no such state, a file that cannot be read or "
                "written; or only the report could not be written"}};
}

const std::vector<std::string> &details_of_history() {
  static const std::vector<std::string> details = {
      "Edits and merges keep in FILE.history what FILE was, at most 100 states and 64 MiB of what differs between "
      "them; "
      "the oldest go first. FILE alone stays complete. It is known by its bytes: what something else made of it is no "
      "state, and becomes one before anything is put back. --no-backup keeps no state. A new edit drops what was "
      "undone. FILE.bak stays as the last edit left it."};
  return details;
}

command step_command(const std::string &name, const std::string &summary, const std::string &about,
                     const std::shared_ptr<undo_options> &options, const choose_step &choose) {
  std::vector<std::string> details = {about};
  details.insert(details.end(), details_of_history().begin(), details_of_history().end());
  return {.name = name,
          .summary = summary,
          .details = details,
          .exit_codes = exit_codes_of_steps(),
          .options = {{.names = "FILE", .target = &options->file, .about = "the channel file", .is_required = true},
                      {.names = "--dry-run",
                       .target = &options->is_dry_run,
                       .about = "show what would change; write nothing"},
                      json_option(options->as_json)},
          .run = [options, choose] { return go(*options, choose); }};
}

}  // namespace

command undo_command() {
  command undo =
      step_command("undo", "Take the last edit back",
                   "FILE is again what it was before the last edit, byte for byte; once more, and it is what "
                   "it was before that. `chlist redo` does it again.",
                   std::make_shared<undo_options>(), step_back);
  undo.examples = {"chlist undo channels.dat", "chlist undo channels.dat --dry-run"};
  return undo;
}

command redo_command() {
  command redo = step_command("redo", "Do again what was undone",
                              "FILE is again what it was before `chlist undo` took an edit back.",
                              std::make_shared<undo_options>(), step_on);
  redo.examples = {"chlist redo channels.dat"};
  return redo;
}

command restore_command() {
  auto options = std::make_shared<undo_options>();
  command restore = step_command("restore", "Go to a state of the history",
                                 "FILE is again what it was in the state, which `chlist history` numbers. The states "
                                 "behind it stay: `chlist redo` "
                                 "leads to the next one.",
                                 options, [options](const history &kept) { return step_to(kept, options->state); });
  restore.options.insert(restore.options.begin() + 1,
                         {.names = "STATE", .target = &options->state, .about = "its number", .is_required = true});
  restore.examples = {"chlist restore channels.dat 3"};
  return restore;
}

command history_command() {
  auto options = std::make_shared<undo_options>();
  return {.name = "history",
          .summary = "Show what a file was before its edits",
          .details = details_of_history(),
          .exit_codes = {{"0", "shown"},
                         {"1", "shown; FILE was changed by something else than edits"},
                         {"2", "no history or a damaged one, a file that cannot be read; or it could not be written"}},
          .examples = {"chlist history channels.dat"},
          .options = {{.names = "FILE", .target = &options->file, .about = "the channel file", .is_required = true},
                      json_option(options->as_json)},
          .run = [options] { return show_history(*options); }};
}

}  // namespace chlist
