// The tuning of one list for another: `chlist export --tuning OTHER`.
#pragma once

#include <filesystem>

#include "chlist/line_up/line_up.h"

namespace chlist {

// Gives a list what another one, of any format, tells of the same services, and of their transponders for services that
// the other does not have. The list in memory is another one then. Throws std::runtime_error when it cannot be read.
void take_tuning_of(const std::filesystem::path &path, line_up &list);

}  // namespace chlist
