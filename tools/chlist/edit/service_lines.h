// The lines of a script that are about single services and favourite groups.
#pragma once

#include <string>
#include <vector>

#include "chlist/edit/compared_lists.h"

namespace chlist {

// Services that are not wanted go, and what is wanted under another identity gets it.
std::vector<std::string> lines_of_identities(const compared_lists &lists);

// Names, flags, groups and other fields.
std::vector<std::string> lines_of_fields(const compared_lists &lists);

// Favourite groups: other names; those that come and go; their order; what is in them.
std::vector<std::string> lines_of_group_names(const compared_lists &lists);
std::vector<std::string> lines_of_groups(const compared_lists &lists);
std::vector<std::string> lines_of_group_order(const compared_lists &lists);
std::vector<std::string> lines_of_members(const compared_lists &lists);

}  // namespace chlist
