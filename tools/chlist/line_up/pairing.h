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

// As the library's finder finds them in the second line-up, its tolerance of frequencies included.
pairing pair_services(const line_up &before, const line_up &after);
pairing pair_transponders(const line_up &before, const line_up &after);
// By network index and original network id.
pairing pair_networks(const line_up &before, const line_up &after);

}  // namespace chlist
