// `chlist salvage`: rebuilds a channel list from a damaged file.
#pragma once

#include <CLI/CLI.hpp>

namespace chlist {

// Adds the subcommand; running it sets the exit code.
void add_salvage(CLI::App &app, int &exit_code);

}  // namespace chlist
