// Completions for shells: the commands, their options, the values of an option when they are few, and else files.
#pragma once

#include <string>

#include "chlist/command.h"

namespace chlist {

std::string bash_completion(const command &program);
std::string zsh_completion(const command &program);

}  // namespace chlist
