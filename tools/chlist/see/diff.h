// `chlist diff`: what differs between two channel files.
#pragma once

#include <CLI/CLI.hpp>

namespace chlist {

// Adds the subcommand; running it sets the exit code.
void add_diff(CLI::App &app, int &exit_code);

}  // namespace chlist
