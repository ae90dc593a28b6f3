// `chlist show`: everything there is to know of one service.
#pragma once

#include <CLI/CLI.hpp>

namespace chlist {

// Adds the subcommand; running it sets the exit code.
void add_show(CLI::App &app, int &exit_code);

}  // namespace chlist
