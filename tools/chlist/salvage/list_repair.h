// Brings the views and group tables of the list in memory into order, after it was read from what a damaged file left:
// entries without a service go, and counts follow what is in use. Where there is no service at all, entries stay: their
// numbers and favourites are what is left of the list.
#pragma once

#include <string>
#include <vector>

#include "chlist/list_contents.h"

namespace chlist {

// A count, and what there was to count.
struct corrected_count {
  std::string what;
  int counted = 0;
  int present = 0;
};

// What became of the ALL view, without which a receiver shows nothing.
enum class all_view { kept, filled, numbered_anew };

struct list_repair {
  std::vector<placed_entry> lost_entries;
  std::size_t blank_entries = 0;  // that were counted, and of which nothing is left
  std::vector<corrected_count> counts;
  std::size_t entries_without_service = 0;  // that stay
  std::size_t named_groups = 0;             // favourite groups with a new name
  bool is_of_a_list = true;                 // without services: entries or groups are more than chance
  all_view all = all_view::kept;
};

// Of what bytes are missing. Groups of which nothing is left go then, but for favourite groups, which get a name: their
// entries are theirs by position. The ALL view gets the services that it lacks.
struct torn_parts {
  bool list = false;  // of the list's own record
  bool all_view = false;
};

list_repair repair_list_in_memory(const torn_parts &torn);

}  // namespace chlist
