// A command line as data: commands, the options and arguments of each, and what runs. The program parses by it, the
// manual pages and completions are made of it. Only command_line.cpp knows the library that parses.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace chlist {

// Thrown by a command that runs with options that do not go together: nothing was done, and its help is worth a look.
struct usage_error : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Where the value goes. A bool belongs to a flag; a vector takes several: of an argument as many as are given, of an
// option one each time.
using option_target = std::variant<bool *, int *, std::string *, std::filesystem::path *, std::optional<int> *,
                                   std::optional<std::string> *, std::vector<std::string> *>;

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
  [[nodiscard]] bool is_flag() const { return std::holds_alternative<bool *>(target); }
  [[nodiscard]] bool is_number() const;
  [[nodiscard]] bool takes_several() const { return std::holds_alternative<std::vector<std::string> *>(target); }
};

// Options of which one is to be given, and only one.
struct option_group {
  std::string name;
  std::string about;
  std::vector<option> options;
};

// Either runs, which gives the exit code, or has commands below it, of which one is to be given.
struct command {
  std::string name;
  std::string summary = {};  // in one line
  std::string details = {};  // behind the options in its help
  std::vector<option> options = {};
  std::vector<option_group> groups = {};
  std::vector<command> commands = {};
  std::function<int()> run = {};
  std::string version = {};  // of a program, which tells it with --version
};

// What every command has beside its own options, and a program with a version.
inline constexpr const char *help_names = "-h,--help";
inline constexpr const char *help_about = "Print this help message and exit";
inline constexpr const char *version_names = "--version";
inline constexpr const char *version_about = "Display program version information and exit";

// Parses, and runs the command that is named. Gives its exit code, or that of a command line that is wrong, which is
// explained on standard error.
int run_command_line(const command &program, int argc, const char *const *argv);

}  // namespace chlist
