// What the line of an edit takes, for a page to ask: made of the row that the command line, the help and the manual
// pages are made of.
#pragma once

#include <string>

#include "chlist/json/json.h"

namespace chlist {

// Throws std::runtime_error when there is no edit of that name.
json form_of_edit(const std::string &name);

}  // namespace chlist
