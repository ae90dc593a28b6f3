// Completions for shells: the commands, their options, the values of an option when they are few, and else files.
#pragma once

#include <string>

#include "chlist/pages/command_help.h"

namespace chlist {

std::string bash_completion(const command_help &program);
std::string zsh_completion(const command_help &program);

}  // namespace chlist
