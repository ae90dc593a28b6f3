// `chlist import`: makes a channel file from a VDR channels.conf.
#pragma once

#include <CLI/CLI.hpp>

namespace chlist {

// Adds the subcommand; running it sets the exit code.
void add_import(CLI::App &app, int &exit_code);

}  // namespace chlist
