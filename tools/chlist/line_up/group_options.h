// What becomes of the groups that a list of another format has: bouquets, and the separators of a channels.conf.
#pragma once

#include <string>
#include <vector>

namespace chlist {

struct group_options {
  std::string become = "favourites";  // or "genres", or "none"
  std::vector<std::string> chosen;    // by name, in this order, which holds; all of them when empty
  bool are_split = false;             // those that are too long for a favourite group, into several
  std::vector<std::string> order{};   // of groups that are in it, whatever stands between them

  bool operator==(const group_options &) const = default;
};

}  // namespace chlist
