// Brings the views and group tables of the list in memory into order, after it was read from what a damaged file left:
// entries without a service go, and counts follow what is in use. Where there is no service at all, entries stay: their
// numbers and favourites are what is left of the list.
#pragma once

#include <string>
#include <vector>

#include "chlist/line_up/list_contents.h"
#include "chlist/salvage/group_repair.h"

namespace chlist {

// What became of the ALL view, without which a receiver shows nothing.
enum class all_view { kept, filled, numbered_anew };

struct list_repair {
  std::vector<placed_entry> lost_entries;
  std::size_t blank_entries = 0;            // that were counted, and of which nothing is left
  std::vector<corrected_count> counts;      // of views
  std::size_t entries_without_service = 0;  // that stay
  std::vector<placed_entry> other_numbers;  // that differ from those in ALL, in views that have the same ones otherwise
  bool has_empty_favourites = false;        // in doubt: counted groups without an entry, beside others that are damaged
  group_repair groups;
  bool is_of_a_list = true;  // without services: entries or groups are more than chance
  all_view all = all_view::kept;
};

// is_all_view_torn: bytes of it are missing; it gets the services that it lacks.
list_repair repair_list_in_memory(bool is_all_view_torn, const list_copies &copies);

}  // namespace chlist
