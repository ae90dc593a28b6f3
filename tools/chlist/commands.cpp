// The table of subcommands.
#include "chlist/commands.h"

#include "chlist/convert/convert.h"
#include "chlist/exchange/import.h"
#include "chlist/merge/merge.h"

namespace chlist {
namespace {

using add_subcommand = void (*)(CLI::App &app, int &exit_code);

constexpr add_subcommand subcommands[] = {
    add_import,
    add_convert,
    add_merge,
};

constexpr const char *footer =
    "Every command tells its own options: 'chlist COMMAND --help'. A channel file is never changed but as a whole.\n"
    "\n"
    "Exit codes:\n"
    "  0  done\n"
    "  1  done, with something to report\n"
    "  2  nothing was done\n"
    "\n"
    "Examples:\n"
    "  chlist import channels.conf -o channels.dat\n"
    "  chlist merge channels.dat scan.dat --dry-run";

}  // namespace

std::unique_ptr<CLI::App> command_line(int &exit_code, int &log_level) {
  auto app = std::make_unique<CLI::App>("Works on the channel files of a digital television receiver.", "chlist");
  app->require_subcommand(1);
  app->footer(footer);
  app->add_option("--log-level", log_level,
                  "print the library's log lines up to this level (0 errors .. 5), default none")
      ->check(CLI::Range(-1, 5));
  for (const add_subcommand add : subcommands) {
    add(*app, exit_code);
  }
  return app;
}

}  // namespace chlist
