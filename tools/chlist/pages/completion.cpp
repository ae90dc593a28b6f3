// Writes the functions that the shells call when a line of the tool is to be completed.
#include "chlist/pages/completion.h"

#include <fmt/format.h>

#include <algorithm>

namespace chlist {
namespace {

std::string joined(const std::vector<std::string> &words, const char *separator) {
  return fmt::format("{}", fmt::join(words, separator));
}

std::vector<std::string> option_names(const command_help &command) {
  std::vector<std::string> names;
  for (const option_help &option : command.options) {
    names.insert(names.end(), option.names.begin(), option.names.end());
  }
  return names;
}

std::vector<std::string> command_names(const command_help &command) {
  std::vector<std::string> names;
  for (const command_help &each : command.commands) {
    names.push_back(each.name.substr(each.name.rfind(' ') + 1));
  }
  return names;
}

// "merge" or "fav/new": the words behind the program's name.
std::string path_of(const command_help &command) {
  const std::size_t first = command.name.find(' ');
  std::string path = first == std::string::npos ? "" : command.name.substr(first + 1);
  std::ranges::replace(path, ' ', '/');
  return path;
}

template <class Action>
void for_each_command(const command_help &command, const Action &action) {
  action(command);
  for (const command_help &each : command.commands) {
    for_each_command(each, action);
  }
}

// The branches of a case over the command so far and the next word: where that names a command, it is one deeper.
std::string bash_steps(const command_help &program) {
  std::string branches;
  for_each_command(program, [&branches](const command_help &command) {
    for (const command_help &each : command.commands) {
      const std::string path = path_of(each);
      branches +=
          fmt::format("      '{} {}') command='{}' ;;\n", path_of(command), path.substr(path.rfind('/') + 1), path);
    }
  });
  return branches;
}

// The branches of a case over the option in front of the word and the command that it belongs to.
std::string bash_values(const command_help &program) {
  std::string branches;
  for_each_command(program, [&branches](const command_help &command) {
    for (const option_help &option : command.options) {
      if (!option.choices.empty()) {
        branches += fmt::format("    '{} {}') words='{}' ;;\n", path_of(command),
                                joined(option.names, fmt::format("' | '{} ", path_of(command)).c_str()),
                                joined(option.choices, " "));
      }
    }
  });
  return branches;
}

std::string bash_words(const command_help &program) {
  std::string branches;
  for_each_command(program, [&branches](const command_help &command) {
    std::vector<std::string> words = command_names(command);
    const std::vector<std::string> options = option_names(command);
    branches += fmt::format("    '{}')\n      words='{}'\n      options='{}'\n      ;;\n", path_of(command),
                            joined(words, " "), joined(options, " "));
  });
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

std::string zsh_value(const option_help &option) {
  if (option.value.empty()) {
    return "";
  }
  const std::string how = option.choices.empty() ? "_files" : fmt::format("({})", joined(option.choices, " "));
  return fmt::format(":{}:{}", zsh_quoted(option.value), how);
}

std::string zsh_function_name(const command_help &command) {
  std::string name = '_' + command.page_name();
  std::ranges::replace(name, '-', '_');
  return name;
}

// Names of one option exclude each other, unless it may be given again: "*" says so.
std::string zsh_names(const option_help &option) {
  const std::string exclusion = option.is_repeatable       ? "*"
                                : option.names.size() == 1 ? ""
                                                           : fmt::format("({})", joined(option.names, " "));
  return exclusion +
         (option.names.size() == 1 ? option.names.front() : fmt::format("'{{{}}}'", joined(option.names, ",")));
}

std::string zsh_options(const command_help &command) {
  std::string described;
  for (const option_help &option : command.options) {
    described += fmt::format(" \\\n    '{}[{}]{}'", zsh_names(option), zsh_quoted(option.about), zsh_value(option));
  }
  return described;
}

std::string zsh_leaf(const command_help &command) {
  return fmt::format("{}() {{\n  _arguments{} \\\n    '*:file:_files'\n}}\n\n", zsh_function_name(command),
                     zsh_options(command));
}

std::string zsh_branch(const command_help &command) {
  std::string described;
  std::string calls;
  for (const command_help &each : command.commands) {
    const std::string name = each.name.substr(each.name.rfind(' ') + 1);
    described += fmt::format("    '{}:{}'\n", name, zsh_quoted(each.summary));
    calls += fmt::format("        {}) {} ;;\n", name, zsh_function_name(each));
  }
  return fmt::format("{}() {{\n  local context state line\n  local -a commands=(\n{}  )\n  _arguments -C{} \\\n"
                     "    '1:command:->command' '*::argument:->argument'\n  case $state in\n"
                     "    command) _describe command commands ;;\n    argument)\n      case $line[1] in\n{}      "
                     "esac\n      ;;\n  esac\n}}\n\n",
                     zsh_function_name(command), described, zsh_options(command), calls);
}

}  // namespace

std::string bash_completion(const command_help &program) {
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

std::string zsh_completion(const command_help &program) {
  std::string text = fmt::format("#compdef {}\n\n", program.name);
  for_each_command(program, [&text](const command_help &command) {
    text += command.commands.empty() ? zsh_leaf(command) : zsh_branch(command);
  });
  return text + fmt::format("{} \"$@\"\n", zsh_function_name(program));
}

}  // namespace chlist
