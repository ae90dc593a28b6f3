// A command as data: its options and arguments, what it is for, and what runs. The program parses by it; help, manual
// pages and completions are made of it.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "chlist/text/term.h"

namespace chlist {

// Thrown by a command that runs with options that do not go together: nothing was done, and its help is worth a look.
struct usage_error : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Where the value goes; nowhere when the parser itself sees to it. A bool belongs to a flag; a vector takes several: of
// an argument as many as are given, of an option one each time.
using option_target = std::variant<std::monostate, bool *, int *, std::string *, std::filesystem::path *,
                                   std::optional<int> *, std::optional<std::string> *, std::vector<std::string> *>;

struct option {
  std::string names;  // "-o,--output"; of an argument its name alone, "FILE"
  option_target target;
  std::string about;
  std::string value = {};  // what it takes, "OUT"; "TEXT" or "INT" unless it is said
  bool is_required = false;
  std::vector<std::string> choices = {};                   // the values that it takes, when they are few
  std::optional<std::pair<int, int>> least_and_most = {};  // of a number
  std::vector<std::string> excluded = {};                  // names of others that it does not go with

  [[nodiscard]] bool is_argument() const { return !names.starts_with('-'); }
  [[nodiscard]] bool is_flag() const {
    return std::holds_alternative<bool *>(target) || std::holds_alternative<std::monostate>(target);
  }
  [[nodiscard]] bool is_number() const;
  [[nodiscard]] bool takes_several() const { return std::holds_alternative<std::vector<std::string> *>(target); }

  // "-o" and "--output".
  [[nodiscard]] std::vector<std::string> each_name() const;
  // What it takes, as the help has it; empty for a flag.
  [[nodiscard]] std::string value_name() const;
  // What it is for, and its choices.
  [[nodiscard]] std::string explanation() const;
};

// Options of which one is to be given, and only one.
struct option_group {
  std::string name;
  std::vector<option> options;
};

// Either runs, which gives the exit code, or has commands below it, of which one is to be given. Texts are in one line,
// however long: whoever shows them breaks them where it has to.
struct command {
  std::string name;
  std::string summary = {};
  std::string topic = {};                   // what the commands of a program are listed under
  std::vector<std::string> details = {};    // paragraphs
  std::vector<term_section> sections = {};  // what its words mean
  std::vector<term> exit_codes = {};
  std::vector<std::string> examples = {};  // lines to type
  std::vector<option> options = {};
  std::vector<option_group> groups = {};
  std::vector<command> commands = {};
  std::function<int()> run = {};
  std::string version = {};  // of a program, which tells it with --version

  // Every option and argument of its line: --help, --version, its own, and those of its groups.
  [[nodiscard]] std::vector<option> all_options() const;
  // Null when there is none of that name.
  [[nodiscard]] const command *find(const std::string &below) const;
};

// A command, and what is typed to call it: "chlist fav new".
struct called_command {
  std::string line;
  const command *row = nullptr;
};

// A program with all commands below it, each before its own.
std::vector<called_command> every_command(const command &program);

}  // namespace chlist
