// What help, manual pages and completions ask of the rows.
#include "chlist/command.h"

#include <fmt/format.h>

#include <algorithm>
#include <sstream>

#include "chlist/text/shown.h"

namespace chlist {
namespace {

void add_every(const command &row, const std::string &line, std::vector<called_command> &all) {
  all.push_back({line, &row});
  for (const command &below : row.commands) {
    add_every(below, line + ' ' + below.name, all);
  }
}

}  // namespace

bool option::is_number() const {
  return std::holds_alternative<int *>(target) || std::holds_alternative<std::optional<int> *>(target);
}

std::vector<std::string> option::each_name() const {
  std::vector<std::string> each;
  std::istringstream list(names);
  for (std::string name; std::getline(list, name, ',');) {
    each.push_back(name);
  }
  return each;
}

std::string option::value_name() const {
  if (is_flag() || !value.empty()) {
    return value;
  }
  return is_argument() ? names : is_number() ? "INT" : "TEXT";
}

std::string option::explanation() const {
  return choices.empty() ? about : fmt::format("{}: {}", about, joined(choices, ", "));
}

std::vector<option> command::all_options() const {
  std::vector<option> all = {{.names = "-h,--help", .target = {}, .about = "show this help"}};
  if (!version.empty()) {
    all.push_back({.names = "--version", .target = {}, .about = "show the version"});
  }
  all.insert(all.end(), options.begin(), options.end());
  for (const option_group &group : groups) {
    all.insert(all.end(), group.options.begin(), group.options.end());
  }
  return all;
}

const command *command::find(const std::string &below) const {
  const auto found = std::ranges::find(commands, below, &command::name);
  return found == commands.end() ? nullptr : &*found;
}

std::vector<called_command> every_command(const command &program) {
  std::vector<called_command> all;
  add_every(program, program.name, all);
  return all;
}

}  // namespace chlist
