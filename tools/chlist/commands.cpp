// The table of subcommands.
#include "chlist/commands.h"

#include "chlist/check/check.h"
#include "chlist/convert/convert.h"
#include "chlist/edit/edit_commands.h"
#include "chlist/exchange/export.h"
#include "chlist/exchange/import.h"
#include "chlist/html/html_report.h"
#include "chlist/merge/merge.h"
#include "chlist/salvage/salvage.h"
#include "chlist/see/diff.h"
#include "chlist/see/info.h"
#include "chlist/see/list.h"
#include "chlist/see/show.h"

namespace chlist {
namespace {

using add_subcommand = void (*)(CLI::App &app, int &exit_code);

constexpr add_subcommand subcommands[] = {
    // To look at a list.
    add_info, add_list, add_show, add_diff, add_report,
    // To mend it and to bring it up to date.
    add_check, add_salvage, add_convert, add_merge,
    // To exchange it.
    add_import, add_export,
    // To edit it.
    add_rename, add_renumber, add_lock, add_unlock, add_skip, add_unskip, add_fav, add_remove, add_move, add_sort,
    add_set};

constexpr const char *footer =
    "Every command tells its own options: 'chlist COMMAND --help'. A channel file is never changed but as a whole.\n"
    "\n"
    "Exit codes:\n"
    "  0  done\n"
    "  1  done, with something to report\n"
    "  2  nothing was done, or only its report could not be written\n"
    "\n"
    "Examples:\n"
    "  chlist import channels.conf -o channels.dat\n"
    "  chlist merge channels.dat scan.dat --dry-run";

}  // namespace

std::unique_ptr<CLI::App> command_line(int &exit_code, int &log_level) {
  auto app = std::make_unique<CLI::App>("Works on the channel files of a digital television receiver.", "chlist");
  app->require_subcommand(1);
  app->set_version_flag("--version", "chlist " CHANNEL_VERSION);
  app->add_option("--log-level", log_level,
                  "print the library's log lines up to this level (0 errors .. 5), default none")
      ->check(CLI::Range(-1, 5));
  for (const add_subcommand add : subcommands) {
    add(*app, exit_code);
  }
  // Subcommands would take it over if it came before them.
  app->footer(footer);
  return app;
}

}  // namespace chlist
