// A table from keys to pointers against a map: the first pointer of each key, while keys come and go and the table
// grows, wherever its multipliers send the keys.
#include "channel/store/first_table.h"
#include "support/rounds.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <map>
#include <random>

namespace {

using channel::first_table;
using channel::spread;

std::array<int, 7> values;

void expect_the_maps_answers(const spread &where, std::size_t expected_keys, std::uint64_t different_keys) {
  first_table<int> table(expected_keys, where);
  std::map<std::uint64_t, int *> map;
  std::mt19937_64 random(16);
  for (int step = 0; step < test_support::rounds(20'000); ++step) {
    int *value = &values.at(static_cast<std::size_t>(random() % values.size()));
    if (random() % 500 == 0) {
      table.remove_if([value](const int &kept) { return &kept == value; });
      std::erase_if(map, [value](const auto &entry) { return entry.second == value; });
    } else {
      const std::uint64_t key = random() % different_keys;
      table.keep_first(key, value);
      map.try_emplace(key, value);
    }
    const std::uint64_t asked = random() % different_keys;
    const auto known = map.find(asked);
    ASSERT_EQ(table.find(asked), known != map.end() ? known->second : nullptr) << "step " << step;
  }
}

TEST(FirstTable, KeepsTheFirstPointerOfEachKey) {
  for (const std::size_t expected_keys : {0U, 1U, 100U, 3'000U}) {
    expect_the_maps_answers(spread(), expected_keys, 2'000);
  }
}

// Multipliers of 1 leave small keys in the low bits, so that all of them share one chain.
TEST(FirstTable, KeepsThemInOneChainToo) { expect_the_maps_answers(spread(1, 1), 3'000, 700); }

TEST(FirstTable, CountsKeysOnce) {
  first_table<int> table(2);
  for (const std::uint64_t key : {5U, 6U, 5U, 7U, 5U, 8U, 9U, 10U}) {
    table.keep_first(key, values.data());
  }

  EXPECT_EQ(table.size(), 6U);
}

}  // namespace
