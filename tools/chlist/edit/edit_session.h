// The road that every edit of a channel file takes: load, apply, compare, save, report.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "chlist/command.h"

namespace chlist {

struct edit_options {
  std::filesystem::path file;
  std::filesystem::path output;  // empty: the file itself
  bool is_dry_run = false;
  bool as_json = false;
  bool leaves_no_backup = false;

  [[nodiscard]] const std::filesystem::path &target() const { return output.empty() ? file : output; }
};

// What an edit did otherwise than it was asked to, one text for each: "the name is cut to 96 bytes".
using edit_notes = std::vector<std::string>;

// Changes the list in memory through the library's calls. Throws std::runtime_error when it cannot be done; nothing is
// saved then.
using list_edit = std::function<void(edit_notes &notes)>;

// What an edit has of its own.
struct edit_row {
  std::string name;
  std::string summary;
  std::vector<std::string> details;
  std::vector<term_section> sections = {};
  std::vector<std::string> examples;
  std::vector<option> options;
};

// Its command, which does not run yet: FILE comes first, what all edits have in common behind its own options. The help
// of every edit ends with the same exit codes, and with its own examples.
command edit_command(const edit_row &row, edit_options &options);

// Returns the exit code.
int run_edit(const edit_options &options, const list_edit &apply);

}  // namespace chlist
