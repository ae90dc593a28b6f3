// Manual pages, in the macros of man(7).
#pragma once

#include <string>

#include "chlist/pages/command_help.h"

namespace chlist {

// The page of a command; those of its subcommands are pages of their own, which it names.
std::string manual_page(const command_help &command, const std::string &version);

}  // namespace chlist
