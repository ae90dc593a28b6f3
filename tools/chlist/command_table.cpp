// The table, and the command that shows it.
#include "chlist/command_table.h"

#include <algorithm>
#include <functional>
#include <memory>

#include "chlist/command_line.h"
#include "chlist/commands.h"
#include "chlist/edit/edits.h"
#include "chlist/exchange/formats.h"
#include "chlist/files/channel_file.h"
#include "chlist/pager.h"

namespace chlist {
namespace {

using make_command = command (*)();

template <edit_row (*Make)()>
command edit() {
  return edit_command(Make());
}

struct topic {
  const char *title;
  std::vector<make_command> commands;
};

std::vector<topic> topics() {
  return {{"To look at a list", {info_command, list_command, show_command, diff_command, report_command}},
          {"To mend it and to bring it up to date", {check_command, salvage_command, convert_command, merge_command}},
          {"To make it of what is broadcast", {scan_command}},
          {"To exchange it", {import_command, export_command}},
          {"To edit it",
           {editor_command,   edit<rename_edit>, edit<renumber_edit>, edit<lock_edit>,       edit<unlock_edit>,
            edit<skip_edit>,  edit<unskip_edit>, fav_command,         edit<remove_edit>,     edit<keep_edit>,
            edit<move_edit>,  edit<sort_edit>,   edit<order_edit>,    edit<duplicates_edit>, edit<set_edit>,
            edit<apply_edit>, undo_command,      redo_command,        history_command,       restore_command}},
          {"To learn more", {help_command}}};
}

// A list of another format that is given to a command of channel files is told for what it is.
std::function<int()> telling_formats(const std::function<int()> &run) {
  return [run] {
    try {
      return run();
    } catch (const foreign_file &refused) {
      must_be_no_other_list(refused.path());
      throw;
    }
  };
}

void tell_formats(command &row) {
  if (row.run) {
    row.run = telling_formats(row.run);
  }
  std::ranges::for_each(row.commands, tell_formats);
}

}  // namespace

command help_command() {
  auto words = std::make_shared<std::vector<std::string>>();
  return {
      .name = "help",
      .summary = "Show the help of a command",
      .details = {"The same as COMMAND --help; without COMMAND, the commands that there are, each with what it does."},
      .exit_codes = {{"0", "shown"}, {"2", "there is no such command, or its help could not be written"}},
      .examples = {"chlist help", "chlist help list", "chlist help fav new"},
      .options = {{.names = "COMMAND", .target = words.get(), .about = "the command, of two words below fav"}},
      .run = [words] {
        int log_level = 0;
        return show_help(whole_program(log_level), *words);
      }};
}

command whole_program(int &log_level) {
  command program = {
      .name = "chlist",
      .summary = "Works on the channel files of a digital television receiver",
      .details = {"`chlist help COMMAND` tells what a command does and takes. A channel file is never changed but as a "
                  "whole."},
      .exit_codes = {{"0", "done"},
                     {"1", "done, with something to report"},
                     {"2", "nothing was done, or only its report could not be written"}},
      .examples = {"chlist import channels.conf -o channels.dat", "chlist merge channels.dat scan.dat --dry-run"},
      .options = {{.names = "--log-level",
                   .target = &log_level,
                   .about = "print the library's log lines up to this level (0 errors .. 5), default none",
                   .least_and_most = std::pair(-1, 5)},
                  {.names = "--no-pager",
                   .target = &is_without_pager(),
                   .about = "print on a terminal without $PAGER, however long it gets"}},
      .version = CHANNEL_VERSION};
  for (const topic &each : topics()) {
    for (const make_command make : each.commands) {
      program.commands.push_back(make());
      program.commands.back().topic = each.title;
      tell_formats(program.commands.back());
    }
  }
  return program;
}

}  // namespace chlist
