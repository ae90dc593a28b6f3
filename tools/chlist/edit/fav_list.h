// `chlist fav list`: the favourite groups, or what one of them holds.
#pragma once

#include <CLI/CLI.hpp>

namespace chlist {

void add_fav_list(CLI::App &fav, int &exit_code);

}  // namespace chlist
