// The fewest things that moved between two rows.
#include "chlist/compare/moved.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

namespace {

using chlist::moved_between;
using row = std::vector<std::size_t>;

TEST(Moved, NothingMovesInTheSameOrder) {
  EXPECT_EQ(moved_between({}, {}), row{});
  EXPECT_EQ(moved_between({1}, {1}), row{});
  EXPECT_EQ(moved_between({1, 2, 3}, {1, 2, 3}), row{});
}

TEST(Moved, WhatIsOnlyInOneRowDoesNotMove) {
  EXPECT_EQ(moved_between({1, 2, 3}, {1, 4, 3}), row{});
  EXPECT_EQ(moved_between({}, {1}), row{});
  EXPECT_EQ(moved_between({1}, {}), row{});
}

TEST(Moved, OneThatGoesForwardOrBackIsOne) {
  EXPECT_EQ(moved_between({1, 2, 3, 4}, {4, 1, 2, 3}), row{4});
  EXPECT_EQ(moved_between({1, 2, 3, 4}, {2, 3, 4, 1}), row{1});
}

TEST(Moved, OfAReversedRowOneStays) { EXPECT_EQ(moved_between({1, 2, 3}, {3, 2, 1}), (row{3, 2})); }

TEST(Moved, WhatOccursTwiceIsPairedInOrder) {
  EXPECT_EQ(moved_between({1, 1, 2}, {1, 1, 2}), row{});
  EXPECT_EQ(moved_between({1, 2, 1}, {1, 2}), row{});
}

// Without those that moved, both rows are the same; and there is no fewer: each rotation by k of n moves min(k, n - k).
TEST(Moved, TheOthersKeepTheirOrder) {
  std::mt19937 random(11);
  row before(60);
  std::iota(before.begin(), before.end(), 0);
  for (int i = 0; i < 50; ++i) {
    row after = before;
    std::shuffle(after.begin(), after.end(), random);
    for (const std::size_t moved : moved_between(before, after)) {
      std::erase(after, moved);
    }
    EXPECT_TRUE(std::ranges::is_sorted(after));
  }
  for (std::ptrdiff_t k = 0; k < 60; ++k) {
    row after = before;
    std::rotate(after.begin(), after.begin() + k, after.end());
    EXPECT_EQ(moved_between(before, after).size(), static_cast<std::size_t>(std::min(k, 60 - k)));
  }
}

}  // namespace
