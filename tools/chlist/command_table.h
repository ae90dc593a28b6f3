// The table of commands, in the order of the help.
#pragma once

#include "chlist/command.h"

namespace chlist {

// The whole tool. The library prints its log lines up to log_level.
command whole_program(int &log_level);

}  // namespace chlist
