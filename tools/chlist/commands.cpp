// The table of commands.
#include "chlist/commands.h"

namespace chlist {
namespace {

using make_command = command (*)();

constexpr make_command commands[] = {info_command,   list_command,    show_command,     diff_command,   report_command,
                                     check_command,  salvage_command, convert_command,  merge_command,  import_command,
                                     export_command, rename_command,  renumber_command, lock_command,   unlock_command,
                                     skip_command,   unskip_command,  fav_command,      remove_command, move_command,
                                     sort_command,   set_command};

constexpr const char *details =
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

command whole_program(int &log_level) {
  command program = {
      .name = "chlist",
      .summary = "Works on the channel files of a digital television receiver.",
      .details = details,
      .options = {{.names = "--log-level",
                   .target = &log_level,
                   .about = "print the library's log lines up to this level (0 errors .. 5), default none",
                   .least_and_most = std::pair(-1, 5)}},
      .version = CHANNEL_VERSION};
  for (const make_command make : commands) {
    program.commands.push_back(make());
  }
  return program;
}

}  // namespace chlist
