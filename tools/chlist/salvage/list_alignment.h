// Where the pieces of the list's own record stand in a file that has lost bytes of it, or got some, at several places.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace chlist {

// From a place of the record on everything stands so many bytes further back in the file, or further in front when less
// than 0.
struct shift_step {
  std::size_t from = 0;
  std::ptrdiff_t shift = 0;
};

struct aligned_piece {
  std::size_t begin = 0;
  std::size_t end = 0;
};

struct possible_shift {
  std::ptrdiff_t shift = 0;
  int cost = 0;  // of changing to it, in pieces that are right
};

// How much a piece is worth under a shift: 0 when it is not right there.
using piece_weight = std::function<int(std::size_t piece, std::ptrdiff_t shift)>;

struct alignment {
  std::vector<shift_step> steps;  // ascending; none: everything stands in its place
  int right = 0;                  // the sum of all weights, less what the changes cost
};

// The steps by which most of the pieces, which ascend and do not overlap, are right. Every byte of the file stands for
// one place of the record: bytes that were cut out leave a gap. Weighted interval scheduling, over the pieces and, at
// each of them, the shifts.
alignment align(const std::vector<aligned_piece> &pieces, const std::vector<possible_shift> &shifts,
                const piece_weight &weight);

}  // namespace chlist
