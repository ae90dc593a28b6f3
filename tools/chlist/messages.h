// What goes to standard error. Each message begins with the program and the command that runs: in a script with ten of
// them it is known which one speaks.
#pragma once

#include <string>
#include <string_view>

namespace chlist {

// Messages come from "chlist list" from now on.
void speak_as(std::string line);

// "chlist: list: channels.dat: No such file or directory". Standard error that cannot be written changes nothing.
void print_message(std::string_view text);

}  // namespace chlist
