// Puts the page together: one file that needs nothing else.
#pragma once

#include <string>

#include "chlist/report.h"

namespace chlist {

std::string page_of(const json &data);

// JSON that a script element can hold: no text of it ends the element or a line of it.
std::string script_safe(const json &data);

}  // namespace chlist
