// `chlist convert`: makes a channel file of the current version from one of an earlier version.
#pragma once

#include <CLI/CLI.hpp>

namespace chlist {

// Adds the subcommand; running it sets the exit code.
void add_convert(CLI::App &app, int &exit_code);

}  // namespace chlist
