// What sources are called, as somebody says it on a command line: "S=S13.0E".
#pragma once

#include <string>
#include <string_view>

#include "chlist/line_up/line_up.h"

namespace chlist {

// Renames the source of services, and their network. what: "network", "source". Throws usage_error when the option is
// none, or no service comes from there.
void rename_source(line_up &list, const std::string &option, std::string_view what);

}  // namespace chlist
