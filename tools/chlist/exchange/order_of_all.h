// A channel list as the writers of formats take it.
#pragma once

#include <cstddef>
#include <vector>

#include "chlist/line_up/line_up.h"

namespace chlist {

struct list_for_formats {
  line_up list;
  std::vector<std::size_t> places;  // of each of its services in the channel list
};

// The services as the ALL view has them, each with its number, those that it does not show behind it; no favourites but
// those of groups that there are and that show a service; groups of services by their names alone.
list_for_formats in_order_of_all(line_up list);

}  // namespace chlist
