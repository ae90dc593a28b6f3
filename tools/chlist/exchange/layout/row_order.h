// A row of lines brought into another order: what stands in the same order before and afterwards stays where it is,
// with all that stands between, and nothing else moves.
#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <list>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "chlist/compare/moved.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

// An element has a key, which is nowhere for what has no place in the order. made: a new element of a key.
template <class Element, class Made>
void bring_into_order(std::list<Element> &row, std::size_t Element::*key, const std::vector<std::size_t> &order,
                      const Made &made) {
  std::unordered_map<std::size_t, typename std::list<Element>::iterator> known;
  std::vector<std::size_t> before;
  for (auto at = row.begin(); at != row.end(); ++at) {
    if (*at.*key != nowhere && known.emplace(*at.*key, at).second) {
      before.push_back(*at.*key);
    }
  }
  const std::vector<std::size_t> moved = moved_between(before, order);
  const std::unordered_set<std::size_t> are_moved(moved.begin(), moved.end());
  const std::unordered_set<std::size_t> are_ordered(order.begin(), order.end());
  auto behind = std::ranges::find_if(row, [&](const Element &each) { return are_ordered.contains(each.*key); });
  for (const std::size_t each : order) {
    const auto found = known.find(each);
    if (found == known.end()) {
      behind = std::next(row.insert(behind, made(each)));
    } else if (are_moved.contains(each)) {
      behind = behind == found->second ? std::next(behind) : behind;
      row.splice(behind, row, found->second);
    } else {
      behind = std::next(found->second);
    }
  }
}

}  // namespace chlist
