// The help of a command: what `chlist COMMAND --help` and `chlist help COMMAND` print; and the short one of `chlist`
// alone.
#pragma once

#include <cstddef>
#include <string>

#include "chlist/command.h"

namespace chlist {

// Lines are broken at blanks in front of a width.
std::string help_text(const called_command &command, std::size_t width);

// What commands there are, by their topics, and how to learn more of them.
std::string short_help(const command &program, std::size_t width);

// "[OPTIONS] FILE [GROUP]...", as a usage line has it behind the command's name.
std::string usage_of(const command &row);

}  // namespace chlist
