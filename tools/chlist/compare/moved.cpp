// A longest increasing subsequence, found by patience sorting, stays where it is; the others moved.
#include "chlist/compare/moved.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

namespace chlist {
namespace {

struct placed {
  std::size_t element = 0;
  std::size_t before = 0;  // its place in the first row
};

std::vector<placed> common_to(const std::vector<std::size_t> &before, const std::vector<std::size_t> &after) {
  std::unordered_map<std::size_t, std::vector<std::size_t>> places;  // the first is the last
  for (std::size_t i = before.size(); i > 0; --i) {
    places[before[i - 1]].push_back(i - 1);
  }
  std::vector<placed> common;
  for (const std::size_t element : after) {
    if (const auto found = places.find(element); found != places.end() && !found->second.empty()) {
      common.push_back({element, found->second.back()});
      found->second.pop_back();
    }
  }
  return common;
}

// Which of a row belong to a longest sequence of rising places.
std::vector<bool> longest_rise(const std::vector<placed> &row) {
  constexpr auto none = std::numeric_limits<std::size_t>::max();
  std::vector<std::size_t> ends;  // of the rises of each length, the one that ends lowest
  std::vector<std::size_t> previous(row.size(), none);
  for (std::size_t i = 0; i < row.size(); ++i) {
    const auto length =
        std::ranges::lower_bound(ends, row[i].before, {}, [&row](std::size_t end) { return row[end].before; });
    previous[i] = length != ends.begin() ? *(length - 1) : none;
    if (length == ends.end()) {
      ends.push_back(i);
    } else {
      *length = i;
    }
  }
  std::vector<bool> rises(row.size(), false);
  for (std::size_t i = ends.empty() ? none : ends.back(); i != none; i = previous[i]) {
    rises[i] = true;
  }
  return rises;
}

}  // namespace

std::vector<std::size_t> moved_between(const std::vector<std::size_t> &before, const std::vector<std::size_t> &after) {
  const std::vector<placed> row = common_to(before, after);
  const std::vector<bool> stays = longest_rise(row);
  std::vector<std::size_t> moved;
  for (std::size_t i = 0; i < row.size(); ++i) {
    if (!stays[i]) {
      moved.push_back(row[i].element);
    }
  }
  return moved;
}

}  // namespace chlist
