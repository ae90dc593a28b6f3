// Brings the views and group tables of the list in memory into order, after it was read from what a damaged file left:
// entries without a service go, and counts follow what is in use.
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

struct list_repair {
  std::vector<placed_entry> lost_entries;
  std::vector<corrected_count> counts;
  std::size_t unlisted_services = 0;
  bool is_numbered_anew = false;  // no view had an entry left: ALL lists every service, in the file's order
};

list_repair repair_list_in_memory();

}  // namespace chlist
