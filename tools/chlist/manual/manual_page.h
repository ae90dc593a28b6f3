// Manual pages, in the macros of man(7).
#pragma once

#include <string>

#include "chlist/command.h"

namespace chlist {

// "chlist-fav-new", the name of the page of "chlist fav new".
std::string page_name(std::string line);

// The page of a command; those of its subcommands are pages of their own, which it names.
std::string manual_page(const called_command &called, const std::string &version);

}  // namespace chlist
