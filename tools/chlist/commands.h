// Every subcommand of the tool, in the order of the help. One table serves the program, the manual pages and the
// completions.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>

namespace chlist {

// The whole command line. Parsing it runs a subcommand, which sets the exit code; log_level is the library's.
std::unique_ptr<CLI::App> command_line(int &exit_code, int &log_level);

}  // namespace chlist
