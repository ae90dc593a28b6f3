// `chlist list`: the services of a view as a table, CSV or JSON.
#pragma once

#include <CLI/CLI.hpp>

namespace chlist {

// Adds the subcommand; running it sets the exit code.
void add_list(CLI::App &app, int &exit_code);

}  // namespace chlist
