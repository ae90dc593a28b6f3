// `chlist merge`: merges a new channel list into a channel file, as a receiver does after a channel search.
#pragma once

#include <CLI/CLI.hpp>

namespace chlist {

// Adds the subcommand; running it sets the exit code.
void add_merge(CLI::App &app, int &exit_code);

}  // namespace chlist
