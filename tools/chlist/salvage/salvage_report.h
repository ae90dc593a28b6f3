// The report of a salvage as text for people.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include "chlist/salvage/salvaging.h"

namespace chlist {

struct salvage_report {
  std::string made;  // what the list came into
  std::string like;  // what it was compared with
  bool shows_all = false;
};

// Those of the list's own record, and of its groups.
std::vector<corrected_count> corrected_counts(const salvage_outcome &outcome);

// Views are counted in the list in memory, which the salvage made.
void print_outcome(std::FILE *to, const salvage_report &report, const salvage_outcome &outcome);

}  // namespace chlist
