// `chlist check`: says what is wrong with a channel file, and what a receiver will do with it.
#pragma once

#include <CLI/CLI.hpp>

namespace chlist {

// Adds the subcommand; running it sets the exit code.
void add_check(CLI::App &app, int &exit_code);

}  // namespace chlist
