// The sort of entries at every size: order, equal entries, and comparisons that are no order at all.
#include "channel/vindex/entry_sort.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace {

std::mt19937 answers;
int comparisons;

int compare_number(const virtual_channel_st &a, const virtual_channel_st &b) {
  ++comparisons;
  return a.major_ch_num - b.major_ch_num;
}

int answer_anything(const virtual_channel_st &, const virtual_channel_st &) {
  return static_cast<int>(answers() % 3) - 1;
}

int always_greater(const virtual_channel_st &, const virtual_channel_st &) { return 1; }

// Entries that remember their position in ts_id.
std::vector<virtual_channel_st> entries_numbered(int size, int different_numbers) {
  std::mt19937 random(static_cast<unsigned>(size));
  std::vector<virtual_channel_st> entries(static_cast<std::size_t>(size));
  for (int i = 0; i < size; ++i) {
    entries[static_cast<std::size_t>(i)].ts_id = static_cast<std::uint16_t>(i);
    entries[static_cast<std::size_t>(i)].major_ch_num =
        static_cast<std::int16_t>(random() % static_cast<unsigned>(different_numbers));
  }
  return entries;
}

std::vector<int> positions(const std::vector<virtual_channel_st> &entries) {
  std::vector<int> found;
  std::transform(entries.begin(), entries.end(), std::back_inserter(found),
                 [](const virtual_channel_st &entry) { return entry.ts_id; });
  return found;
}

class EntrySort : public ::testing::TestWithParam<int> {};

TEST_P(EntrySort, OrdersEntriesAndKeepsTheOrderOfEqualOnes) {
  for (const int different_numbers : {1, 2, 100, 30'000}) {
    std::vector<virtual_channel_st> sorted = entries_numbered(GetParam(), different_numbers);
    std::vector<virtual_channel_st> expected = sorted;
    std::stable_sort(expected.begin(), expected.end(), [](const virtual_channel_st &a, const virtual_channel_st &b) {
      return a.major_ch_num < b.major_ch_num;
    });

    channel::entry_sort<compare_number>(sorted).run();

    EXPECT_EQ(positions(sorted), positions(expected)) << different_numbers;
  }
}

TEST_P(EntrySort, KeepsEveryEntryOnceWhateverTheComparisonAnswers) {
  std::vector<virtual_channel_st> sorted = entries_numbered(GetParam(), 100);
  std::vector<int> before = positions(sorted);

  channel::entry_sort<answer_anything>(sorted).run();

  std::vector<int> kept = positions(sorted);
  std::ranges::sort(before);
  std::ranges::sort(kept);
  EXPECT_EQ(kept, before);
}

TEST_P(EntrySort, ReversesEntriesOfWhichEachComesBehindTheNext) {
  std::vector<virtual_channel_st> sorted = entries_numbered(GetParam(), 100);
  std::vector<int> reversed = positions(sorted);
  std::reverse(reversed.begin(), reversed.end());

  channel::entry_sort<always_greater>(sorted).run();

  EXPECT_EQ(positions(sorted), reversed);
}

INSTANTIATE_TEST_SUITE_P(OfEntries, EntrySort, ::testing::Values(0, 1, 2, 3, 4, 5, 40, 4'999, MAX_CHANNEL));

TEST(EntrySortOfAFullView, AsksFewComparisons) {
  std::vector<virtual_channel_st> sorted = entries_numbered(MAX_CHANNEL, 30'000);
  comparisons = 0;

  channel::entry_sort<compare_number>(sorted).run();

  EXPECT_LE(comparisons, 61'500);
}

}  // namespace
