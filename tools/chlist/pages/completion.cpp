// Writes the functions that the shells call when a line of the tool is to be completed.
#include "chlist/pages/completion.h"

#include <fmt/format.h>

#include <algorithm>

namespace chlist {
namespace {

std::string joined(const std::vector<std::string> &words, const char *separator) {
  return fmt::format("{}", fmt::join(words, separator));
}

std::vector<option> named_options(const command &row) {
  std::vector<option> options = row.all_options();
  std::erase_if(options, [](const option &each) { return each.is_argument(); });
  return options;
}

std::vector<std::string> option_names(const command &row) {
  std::vector<std::string> names;
  for (const option &each : named_options(row)) {
    for (const std::string &name : each.each_name()) {
      names.push_back(name);
    }
  }
  return names;
}

std::vector<std::string> command_names(const command &row) {
  std::vector<std::string> names;
  for (const command &each : row.commands) {
    names.push_back(each.name);
  }
  return names;
}

// "merge" or "fav/new": the words behind the program's name.
std::string path_of(const called_command &called) {
  const std::size_t first = called.line.find(' ');
  std::string path = first == std::string::npos ? "" : called.line.substr(first + 1);
  std::ranges::replace(path, ' ', '/');
  return path;
}

// The branches of a case over the command so far and the next word: where that names a command, it is one deeper.
std::string bash_steps(const command &program) {
  std::string branches;
  for (const called_command &called : every_command(program)) {
    const std::string path = path_of(called);
    for (const std::string &name : command_names(*called.row)) {
      branches += fmt::format("      '{} {}') command='{}' ;;\n", path, name, path.empty() ? name : path + '/' + name);
    }
  }
  return branches;
}

// The branches of a case over the option in front of the word and the command that it belongs to.
std::string bash_values(const command &program) {
  std::string branches;
  for (const called_command &called : every_command(program)) {
    for (const option &each : named_options(*called.row)) {
      if (!each.choices.empty()) {
        branches += fmt::format("    '{} {}') words='{}' ;;\n", path_of(called),
                                joined(each.each_name(), fmt::format("' | '{} ", path_of(called)).c_str()),
                                joined(each.choices, " "));
      }
    }
  }
  return branches;
}

std::string bash_words(const command &program) {
  std::string branches;
  for (const called_command &called : every_command(program)) {
    branches += fmt::format("    '{}')\n      words='{}'\n      options='{}'\n      ;;\n", path_of(called),
                            joined(command_names(*called.row), " "), joined(option_names(*called.row), " "));
  }
  return branches;
}

// In single quotes, as zsh has them for _arguments: brackets and colons end its parts.
std::string zsh_quoted(const std::string &text) {
  std::string quoted;
  for (const char c : text) {
    if (c == '\'') {
      quoted += "'\\''";
    } else if (c == '[' || c == ']' || c == ':' || c == '\\') {
      quoted += std::string("\\") + c;
    } else {
      quoted += c;
    }
  }
  return quoted;
}

std::string zsh_value(const option &shown) {
  if (shown.is_flag()) {
    return "";
  }
  const std::string how = shown.choices.empty() ? "_files" : fmt::format("({})", joined(shown.choices, " "));
  return fmt::format(":{}:{}", zsh_quoted(shown.value_name()), how);
}

std::string zsh_function_name(std::string line) {
  std::ranges::replace(line, ' ', '_');
  return '_' + line;
}

// Names of one option exclude each other, unless it may be given again: "*" says so.
std::string zsh_names(const option &shown) {
  const std::vector<std::string> names = shown.each_name();
  const std::string exclusion = shown.takes_several() ? "*"
                                : names.size() == 1   ? ""
                                                      : fmt::format("({})", joined(names, " "));
  return exclusion + (names.size() == 1 ? names.front() : fmt::format("'{{{}}}'", joined(names, ",")));
}

std::string zsh_options(const command &row) {
  std::string described;
  for (const option &each : named_options(row)) {
    described += fmt::format(" \\\n    '{}[{}]{}'", zsh_names(each), zsh_quoted(each.about), zsh_value(each));
  }
  return described;
}

std::string zsh_leaf(const called_command &called) {
  return fmt::format("{}() {{\n  _arguments{} \\\n    '*:file:_files'\n}}\n\n", zsh_function_name(called.line),
                     zsh_options(*called.row));
}

std::string zsh_branch(const called_command &called) {
  std::string described;
  std::string calls;
  for (const command &each : called.row->commands) {
    described += fmt::format("    '{}:{}'\n", each.name, zsh_quoted(each.summary));
    calls += fmt::format("        {}) {} ;;\n", each.name, zsh_function_name(called.line + ' ' + each.name));
  }
  return fmt::format("{}() {{\n  local context state line\n  local -a commands=(\n{}  )\n  _arguments -C{} \\\n"
                     "    '1:command:->command' '*::argument:->argument'\n  case $state in\n"
                     "    command) _describe command commands ;;\n    argument)\n      case $line[1] in\n{}      "
                     "esac\n      ;;\n  esac\n}}\n\n",
                     zsh_function_name(called.line), described, zsh_options(*called.row), calls);
}

}  // namespace

std::string bash_completion(const command &program) {
  return fmt::format(R"(# bash completion for {0}
_{0}() {{
  local current=${{COMP_WORDS[COMP_CWORD]}} previous=${{COMP_WORDS[COMP_CWORD-1]}}
  local command='' words='' options='' word
  for word in "${{COMP_WORDS[@]:1:COMP_CWORD-1}}"; do
    case "$command $word" in
{1}    esac
  done
  case "$command $previous" in
{2}  esac
  if [[ -z $words ]]; then
    case $command in
{3}    esac
    [[ $current != -* ]] || words=$options
  fi
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}}
complete -o default -F _{0} {0}
)",
                     program.name, bash_steps(program), bash_values(program), bash_words(program));
}

std::string zsh_completion(const command &program) {
  std::string text = fmt::format("#compdef {}\n\n", program.name);
  for (const called_command &called : every_command(program)) {
    text += called.row->commands.empty() ? zsh_leaf(called) : zsh_branch(called);
  }
  return text + fmt::format("{} \"$@\"\n", zsh_function_name(program.name));
}

}  // namespace chlist
