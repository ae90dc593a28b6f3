// Finds the records of one line-up again in another.
#pragma once

#include <algorithm>
#include <cstddef>
#include <map>
#include <vector>

#include "chlist/line_up/line_up.h"

namespace chlist {

struct pairing {
  struct pair {
    std::size_t before = 0;
    std::size_t after = 0;
  };
  std::vector<pair> both;            // in the order of the second line-up
  std::vector<std::size_t> removed;  // places in the first
  std::vector<std::size_t> added;    // places in the second
};

// By keys; of several that are alike the first is paired with the first, so that a list is equal to itself even if
// something occurs twice in it.
template <class Key>
pairing pair_keys(const std::vector<Key> &before, const std::vector<Key> &after) {
  std::map<Key, std::vector<std::size_t>> unpaired;
  for (std::size_t i = before.size(); i-- > 0;) {
    unpaired[before[i]].push_back(i);
  }
  pairing result;
  for (std::size_t i = 0; i < after.size(); ++i) {
    const auto found = unpaired.find(after[i]);
    if (found == unpaired.end() || found->second.empty()) {
      result.added.push_back(i);
      continue;
    }
    result.both.push_back({found->second.back(), i});
    found->second.pop_back();
  }
  for (const auto &[unused, places] : unpaired) {
    result.removed.insert(result.removed.end(), places.begin(), places.end());
  }
  std::ranges::sort(result.removed);
  return result;
}

// Services stand for those that the library's finder finds in the second line-up, its tolerance included.
pairing pair_services(const line_up &before, const line_up &after);

// The records of two line-ups that stand for each other, places in their arrays; groups are those of rows_of_groups(),
// views those of views_of().
struct paired_records {
  pairing services;
  pairing transponders;
  pairing networks;
  pairing groups;
  pairing views;
};

// Services and transponders as the library's finder finds them in the second line-up; networks by index and original
// network id, groups by id, favourite groups by position.
paired_records pair_by_identity(const line_up &before, const line_up &after);

// Of services that are paired already, whatever became of their identities: the transponders and networks that they
// stand below. Groups go by their names, and the views of favourite groups with them.
paired_records pair_around(pairing services, const line_up &before, const line_up &after);

}  // namespace chlist
