// `chlist report`: a channel list as a page for the browser.
#pragma once

#include <CLI/CLI.hpp>

namespace chlist {

void add_report(CLI::App &app, int &exit_code);

}  // namespace chlist
