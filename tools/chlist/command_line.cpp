// Fills the parser from the rows; puts what it finds wrong into words of the tool.
#include "chlist/command_line.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iterator>
#include <span>
#include <stdexcept>
#include <string_view>

#include "chlist/closest.h"
#include "chlist/exit_codes.h"
#include "chlist/help.h"
#include "chlist/messages.h"
#include "chlist/report.h"
#include "chlist/terminal.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

CLI::Option *add_to(CLI::App & /*app*/, const option & /*added*/, std::monostate /*target*/) { return nullptr; }

CLI::Option *add_to(CLI::App &app, const option &added, bool *flag) {
  return app.add_flag(added.names, *flag, added.about);
}

template <class Target>
CLI::Option *add_to(CLI::App &app, const option &added, Target *target) {
  return app.add_option(added.names, *target, added.about);
}

// What is wrong with a value of few choices; nothing when it is one of them.
std::string refusal_of(const std::string &value, const std::vector<std::string> &choices) {
  if (std::ranges::find(choices, value) != choices.end()) {
    return "";
  }
  const std::string meant = did_you_mean(value, choices);
  return meant.empty() ? fmt::format("{} is none of {}", shown(value), joined(choices, ", ")) : shown(value) + meant;
}

void add(CLI::App &app, const option &added) {
  CLI::Option *parsed = std::visit([&](auto target) { return add_to(app, added, target); }, added.target);
  parsed->required(added.is_required);
  if (!added.value.empty()) {
    parsed->type_name(added.value);
  }
  if (added.takes_several() && !added.is_argument()) {
    parsed->allow_extra_args(false);
  }
  if (!added.choices.empty()) {
    parsed->check([&choices = added.choices](const std::string &value) { return refusal_of(value, choices); });
  }
  if (added.least_and_most) {
    parsed->check(CLI::Range(added.least_and_most->first, added.least_and_most->second));
  }
}

void exclude_each_other(CLI::App &app, const option &added) {
  for (const std::string &other : added.excluded) {
    app.get_option(added.names)->excludes(app.get_option(other));
  }
}

void add(CLI::App &app, const option_group &group) {
  CLI::Option_group *parsed = app.add_option_group(group.name, "");
  for (const option &each : group.options) {
    add(*parsed, each);
  }
  parsed->require_option(1);
}

// Options of the program are taken behind its commands, too.
void fill(CLI::App &app, const command &filled) {
  app.set_help_flag("-h,--help", "");
  app.fallthrough();
  app.require_subcommand(0, 1);
  if (!filled.version.empty()) {
    app.set_version_flag("--version", filled.name + ' ' + filled.version, "");
  }
  for (const option &each : filled.options) {
    add(app, each);
  }
  for (const option &each : filled.options) {
    exclude_each_other(app, each);
  }
  for (const option_group &each : filled.groups) {
    add(app, each);
  }
}

// A program with the commands below it. Of those that the line does not name the parser knows the names alone: filling
// in all of their options takes longer than most commands.
void fill(CLI::App &app, const command &filled, std::span<const char *const> words) {
  fill(app, filled);
  for (const command &each : filled.commands) {
    CLI::App *below = app.add_subcommand(each.name, each.summary);
    if (std::ranges::find(words, std::string_view(each.name)) != words.end()) {
      fill(*below, each, words);
    }
  }
}

// The command that the words lead to, as far as they name one.
called_command command_called(const CLI::App &parsed, const command &program) {
  called_command called = {program.name, &program};
  for (const CLI::App *below : parsed.get_subcommands()) {
    if (const command *row = program.find(below->get_name())) {
      called = command_called(*below, *row);
      called.line = program.name + ' ' + called.line;
    }
  }
  return called;
}

void print_help(const called_command &called) {
  print_report([&] { fmt::print("{}", help_text(called, width_of_prose())); });
}

std::vector<std::string> names_of_commands(const command &row) {
  std::vector<std::string> names;
  std::ranges::transform(row.commands, std::back_inserter(names), &command::name);
  return names;
}

std::vector<std::string> names_of_options(const command &row) {
  std::vector<std::string> names;
  for (const option &each : row.all_options()) {
    if (!each.is_argument()) {
      std::ranges::move(each.each_name(), std::back_inserter(names));
    }
  }
  return names;
}

std::string see_help(const std::string &line) {
  const std::size_t blank = line.find(' ');
  return blank == std::string::npos ? fmt::format(": see `{} help`", line)
                                    : fmt::format(": see `{} help{}`", line.substr(0, blank), line.substr(blank));
}

// A question is an answer by itself.
std::string with_help(const std::string &text, const std::string &line) {
  return text.ends_with('?') ? text : text + see_help(line);
}

// What cannot be placed: an option or a command that is not there, or an argument too many.
std::string unknown_word(const called_command &called, const std::string &word) {
  const bool is_option = word.starts_with('-');
  if (!is_option && called.row->commands.empty()) {
    return fmt::format("{} is an argument too many{}", shown(word), see_help(called.line));
  }
  const std::string name = word.substr(0, word.find('='));
  const std::vector<std::string> names = is_option ? names_of_options(*called.row) : names_of_commands(*called.row);
  // One letter is near every other.
  const std::string meant = is_option && name.size() <= 2 ? "" : did_you_mean(name, names);
  return with_help(fmt::format("no {} {}{}", is_option ? "option" : "command", shown(name), meant), called.line);
}

std::string explained(const CLI::App &parsed, const called_command &called, const CLI::ParseError &error) {
  const std::vector<std::string> unknown = parsed.remaining(true);
  return unknown.empty() ? with_help(error.what(), called.line) : unknown_word(called, unknown.front());
}

// Before it is parsed: a line that is wrong can ask for JSON, too.
bool asks_for_json(std::span<const char *const> words) {
  std::string_view before;
  for (const std::string_view word : words) {
    if (word == "--") {
      return false;
    }
    if (word == "--json" || word == "--format=json" || (before == "--format" && word == "json")) {
      return true;
    }
    before = word;
  }
  return false;
}

// The words that call a command, without the program's: "fav new".
std::string words_of(const called_command &called) {
  const std::size_t blank = called.line.find(' ');
  return blank == std::string::npos ? "" : called.line.substr(blank + 1);
}

// Whoever asked for JSON gets a document of what went wrong instead of a message.
int report_failure(const called_command &called, bool as_json, std::string_view kind, const std::string &text) {
  if (as_json) {
    const json error = {{"command", words_of(called)}, {"kind", kind}, {"message", text}};
    print_report([&] { print_json({{"error", error}}); });
  } else {
    print_message(text);
  }
  return exit_failed;
}

int run(const called_command &called, bool as_json) {
  try {
    return called.row->run();
  } catch (const report_lost &) {
    throw;
  } catch (const usage_error &error) {
    return report_failure(called, as_json, "usage", with_help(error.what(), called.line));
  } catch (const std::exception &error) {
    return report_failure(called, as_json, "failure", reason_of(error));
  }
}

}  // namespace

int show_help(const command &program, const std::vector<std::string> &words) {
  called_command called = {program.name, &program};
  for (const std::string &word : words) {
    const command *below = called.row->find(word);
    if (below == nullptr) {
      // No usage_error: that would be sent to the help of `help` as well.
      throw std::runtime_error(unknown_word(called, word));
    }
    called = {called.line + ' ' + word, below};
  }
  print_help(called);
  return exit_done;
}

int run_command_line(const command &program, int argc, const char *const *argv) {
  const std::span<const char *const> words(argv, static_cast<std::size_t>(argc));
  CLI::App parser;
  fill(parser, program, words);
  const bool as_json = asks_for_json(words);
  try {
    parser.parse(argc, argv);
  } catch (const CLI::CallForHelp &) {
    print_help(command_called(parser, program));
    return exit_done;
  } catch (const CLI::CallForVersion &) {
    print_report([&] { fmt::print("{} {}\n", program.name, program.version); });
    return exit_done;
  } catch (const CLI::ParseError &error) {
    const called_command called = command_called(parser, program);
    speak_as(called.line);
    return report_failure(called, as_json, "usage", explained(parser, called, error));
  }
  const called_command called = command_called(parser, program);
  if (called.row == &program) {
    print_report([&] { fmt::print("{}", short_help(program, width_of_prose())); });
    return exit_done;
  }
  if (!called.row->run) {
    print_help(called);
    return exit_done;
  }
  speak_as(called.line);
  return run(called, as_json);
}

struct line_parser::parts {
  explicit parts(command parsed) : row(std::move(parsed)) {
    fill(app, row);
    app.set_help_flag();
  }

  command row;  // before the parser, which points into it
  CLI::App app;
};

line_parser::line_parser(command row) : parts_(std::make_unique<parts>(std::move(row))) {}
line_parser::~line_parser() = default;

void line_parser::parse(std::vector<std::string> words) {
  std::ranges::reverse(words);
  try {
    parts_->app.parse(std::move(words));
  } catch (const CLI::ParseError &error) {
    throw std::runtime_error(explained(parts_->app, {"chlist " + parts_->row.name, &parts_->row}, error));
  }
}

}  // namespace chlist
