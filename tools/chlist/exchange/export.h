// `chlist export`: makes the list of another program or receiver from a channel file.
#pragma once

#include <CLI/CLI.hpp>

namespace chlist {

// Adds the subcommand; running it sets the exit code.
void add_export(CLI::App &app, int &exit_code);

}  // namespace chlist
