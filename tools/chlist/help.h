// The help of a command: what `chlist COMMAND --help` and `chlist help COMMAND` print.
#pragma once

#include <cstddef>
#include <string>

#include "chlist/command.h"

namespace chlist {

// Lines are broken at blanks in front of a width.
std::string help_text(const called_command &command, std::size_t width);

// "[OPTIONS] FILE [GROUP]...", as a usage line has it behind the command's name.
std::string usage_of(const command &row);

}  // namespace chlist
