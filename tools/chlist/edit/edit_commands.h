// The subcommands that edit a channel file. Each adds itself to the tool; running one sets the exit code.
#pragma once

#include <CLI/CLI.hpp>

namespace chlist {

void add_rename(CLI::App &app, int &exit_code);
void add_renumber(CLI::App &app, int &exit_code);
void add_lock(CLI::App &app, int &exit_code);
void add_unlock(CLI::App &app, int &exit_code);
void add_skip(CLI::App &app, int &exit_code);
void add_unskip(CLI::App &app, int &exit_code);
void add_fav(CLI::App &app, int &exit_code);
void add_remove(CLI::App &app, int &exit_code);
void add_move(CLI::App &app, int &exit_code);
void add_sort(CLI::App &app, int &exit_code);
void add_set(CLI::App &app, int &exit_code);

}  // namespace chlist
