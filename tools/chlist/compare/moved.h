// Which elements of a row were moved.
#pragma once

#include <cstddef>
#include <vector>

namespace chlist {

// The fewest of the elements that stand in both rows, in the second one's order, without which the others stand in the
// same order in both. What occurs more than once is paired first with first.
std::vector<std::size_t> moved_between(const std::vector<std::size_t> &before, const std::vector<std::size_t> &after);

}  // namespace chlist
