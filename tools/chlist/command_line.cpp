#include "chlist/command_line.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <sstream>
#include <string_view>

#include "chlist/exit_codes.h"
#include "chlist/report.h"

namespace chlist {
namespace {

CLI::Option *add_to(CLI::App &app, const option &added, bool *flag) {
  return app.add_flag(added.names, *flag, added.about);
}

template <class Target>
CLI::Option *add_to(CLI::App &app, const option &added, Target *target) {
  return app.add_option(added.names, *target, added.about);
}

void add(CLI::App &app, const option &added) {
  CLI::Option *parsed = std::visit([&](auto *target) { return add_to(app, added, target); }, added.target);
  parsed->required(added.is_required);
  if (!added.value.empty()) {
    parsed->type_name(added.value);
  }
  if (added.takes_several() && !added.is_argument()) {
    parsed->allow_extra_args(false);
  }
  if (!added.choices.empty()) {
    parsed->check(CLI::IsMember(added.choices));
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
  CLI::Option_group *parsed = app.add_option_group(group.name, group.about);
  for (const option &each : group.options) {
    add(*parsed, each);
  }
  parsed->require_option(1);
}

// The details come last: the commands below would take them over.
void fill(CLI::App &app, const command &filled, int &exit_code) {
  app.set_help_flag(help_names, help_about);
  if (!filled.version.empty()) {
    app.set_version_flag(version_names, filled.name + ' ' + filled.version, version_about);
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
  for (const command &each : filled.commands) {
    fill(*app.add_subcommand(each.name, each.summary), each, exit_code);
  }
  if (filled.run) {
    app.callback([&filled, &exit_code] { exit_code = filled.run(); });
  } else {
    app.require_subcommand(1);
  }
  app.footer(filled.details);
}

// The help that was asked for is a report like any other; what is wrong with a command line goes to standard error.
int explain(const CLI::App &app, const CLI::ParseError &error) {
  std::ostringstream help;
  if (app.exit(error, help, std::cerr) != 0) {
    return exit_failed;
  }
  print_report([&help] { fmt::print("{}", help.str()); });
  return exit_done;
}

}  // namespace

bool option::is_number() const {
  return std::holds_alternative<int *>(target) || std::holds_alternative<std::optional<int> *>(target);
}

int run_command_line(const command &program, int argc, const char *const *argv) {
  CLI::App app(program.summary, program.name);
  int exit_code = exit_done;
  fill(app, program, exit_code);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError &error) {
    return explain(app, error);
  } catch (const usage_error &error) {
    std::cerr << error.what() << "\nRun with --help for more information.\n";
    return exit_failed;
  }
  return exit_code;
}

}  // namespace chlist
