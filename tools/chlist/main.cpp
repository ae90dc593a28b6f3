// chlist: works on the channel files of a receiver. The subcommands stand in one table; each adds its own options.
#include <base/verbosity.h>

#include <CLI/CLI.hpp>
#include <exception>
#include <fmt/format.h>

#include "chlist/convert.h"
#include "chlist/exit_codes.h"
#include "chlist/import.h"
#include "chlist/merge.h"

namespace {

using add_subcommand = void (*)(CLI::App &app, int &exit_code);

constexpr add_subcommand subcommands[] = {
    chlist::add_import,
    chlist::add_convert,
    chlist::add_merge,
};

constexpr int channel_list_module = 7;

int run(int argc, char **argv) {
  CLI::App app("Works on the channel files of a digital television receiver.", "chlist");
  app.require_subcommand(1);
  int &log_level = verbosity_map[channel_list_module];
  log_level = -1;
  app.add_option("--log-level", log_level,
                 "print the library's log lines up to this level (0 errors .. 5), default none")
      ->check(CLI::Range(-1, 5));
  int exit_code = chlist::exit_done;
  for (const add_subcommand add : subcommands) {
    add(app, exit_code);
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError &error) {
    return app.exit(error) == 0 ? chlist::exit_done : chlist::exit_failed;
  }
  return exit_code;
}

}  // namespace

int main(int argc, char **argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception &error) {
    fmt::print(stderr, "chlist: {}\n", error.what());
    return chlist::exit_failed;
  }
}
