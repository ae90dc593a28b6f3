// Finds the records of one snapshot again in another.
#pragma once

#include <cstddef>
#include <vector>

#include "chlist/see/difference.h"

namespace chlist {

struct pairing {
  struct pair {
    std::size_t before = 0;
    std::size_t after = 0;
  };
  std::vector<pair> both;            // in the order of the second snapshot
  std::vector<std::size_t> removed;  // places in the first
  std::vector<std::size_t> added;    // places in the second
};

// By the library's finders in the list in memory, of which the second snapshot was taken.
pairing pair_services(const list_snapshot &before, const list_snapshot &after);
pairing pair_transponders(const list_snapshot &before, const list_snapshot &after);
pairing pair_networks(const list_snapshot &before, const list_snapshot &after);

// By the table and the number in it.
pairing pair_groups(const list_snapshot &before, const list_snapshot &after);

}  // namespace chlist
