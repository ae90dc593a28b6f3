// `chlist info`: what a channel file holds, counted.
#pragma once

#include <CLI/CLI.hpp>

namespace chlist {

// Adds the subcommand; running it sets the exit code.
void add_info(CLI::App &app, int &exit_code);

}  // namespace chlist
