// What becomes of the groups that a list of another format has: bouquets, and the separators of a channels.conf.
#pragma once

#include <string>
#include <vector>

#include "chlist/exchange/loss_counts.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

struct group_options {
  std::string become = "favourites";  // or "genres", or "none"
  std::vector<std::string> chosen;    // by name, in this order; all of them when empty
  bool are_split = false;             // those that are too long for a favourite group, into several
};

// Throws usage_error when a group is chosen that there is not.
void choose_groups(line_up &list, const group_options &options, loss_counts &lost);

}  // namespace chlist
