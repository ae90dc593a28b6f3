// Completions for shells. Each asks the program what may follow (`PROGRAM complete`), and offers files where it knows
// nothing.
#pragma once

#include <string>

namespace chlist {

std::string bash_completion(const std::string &program);
std::string zsh_completion(const std::string &program);
std::string fish_completion(const std::string &program);

}  // namespace chlist
