// The tables of providers, genres, countries and favourite groups of the list in memory, after it was read from what a
// damaged file left.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/salvage/other_copies.h"

namespace chlist {

struct corrected_count {
  std::string what;
  int counted = 0;
  int present = 0;
};

enum class group_loss {
  empty,       // a record that is counted, and of which nothing is left
  unreadable,  // a record whose name is none, or not as long as it says
  repeated,    // an id that an earlier group has
  unknown      // an id that services have, and no group
};

struct lost_group {
  std::string_view table;  // "provider"
  group_loss loss = group_loss::empty;
  int position = -1;         // in the table; -1 of an id that is not there
  int id = 0;                // of ids that are unknown, or there twice
  std::size_t services = 0;  // that have an unknown one
};

struct group_repair {
  std::vector<corrected_count> counts;
  std::vector<lost_group> lost;
  std::vector<found_again> found;
  std::size_t named_favourites = 0;  // that have got a name, their own being lost
  bool has_any = false;              // groups with a name
};

// Counts follow what is there, up to a record that is none. What services say of groups that are lost is looked for in
// the copies; records of which nothing is found go, but for favourite groups, whose entries are theirs by position:
// they get a name.
group_repair repair_groups_in_memory(const list_copies &copies);

}  // namespace chlist
