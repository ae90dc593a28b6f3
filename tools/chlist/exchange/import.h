// `chlist import`: makes a channel file from the list of another program or receiver.
#pragma once

#include <CLI/CLI.hpp>

namespace chlist {

// Adds the subcommand; running it sets the exit code.
void add_import(CLI::App &app, int &exit_code);

}  // namespace chlist
