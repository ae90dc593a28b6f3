// The transponders of a pass against a plain walk: the first in list order within the tolerance, wherever they stand
// and however close together.
#include "channel/store/transponder_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <deque>
#include <random>
#include <vector>

#include "channel/identity.h"

namespace {

using channel::transponder_table;

class TransponderTable : public ::testing::Test {
 protected:
  // Frequencies in list order.
  void add(const std::vector<std::uint32_t> &frequencies) {
    for (const std::uint32_t frequency : frequencies) {
      records_.push_back({});
      records_.back().frequency = frequency;
      table_.add(scope, records_.back());
    }
  }

  [[nodiscard]] const tp_ch_st *walk(std::int64_t frequency) const {
    const auto found = std::find_if(records_.begin(), records_.end(), [frequency](const tp_ch_st &each) {
      return channel::same_frequency(std::int64_t{each.frequency}, frequency);
    });
    return found != records_.end() ? &*found : nullptr;
  }

  // Every frequency that could match one of the transponders, and a few beside them.
  void expect_the_walks_answers(std::int64_t lowest, std::int64_t highest, std::int64_t step = 1) const {
    for (std::int64_t frequency = lowest - 2'501; frequency <= highest + 2'501; frequency += step) {
      expect_the_walks_answer(frequency);
    }
  }
  void expect_the_walks_answer(std::int64_t frequency) const {
    ASSERT_EQ(transponder_at(frequency), walk(frequency)) << frequency;
  }

 private:
  static constexpr std::uint32_t scope = 7;

  [[nodiscard]] const tp_ch_st *transponder_at(std::int64_t frequency) const {
    const transponder_table::place *wide = table_.find_within_tolerance(scope, frequency);
    if (frequency >= 0 && frequency <= UINT32_MAX) {
      EXPECT_EQ(table_.find(scope, static_cast<std::uint32_t>(frequency)), wide) << frequency;
    }
    return wide != nullptr ? wide->transponder : nullptr;
  }

  std::deque<tp_ch_st> records_;
  transponder_table table_{0, 20'000};
};

std::vector<std::uint32_t> in_steps(std::uint32_t from, int n, int step) {
  std::vector<std::uint32_t> frequencies;
  for (int i = 0; i < n; ++i) {
    frequencies.push_back(from + static_cast<std::uint32_t>(i * step));
  }
  return frequencies;
}

TEST_F(TransponderTable, FindsTheFirstOfTransponders1KHzApart) {
  add(in_steps(11'000'000, 6'000, 1));
  expect_the_walks_answers(11'000'000, 11'006'000);
}

TEST_F(TransponderTable, FindsTheFirstOfTransponders1KHzApartFromTheHighestDown) {
  add(in_steps(11'006'000, 6'000, -1));
  expect_the_walks_answers(11'000'000, 11'006'000);
}

TEST_F(TransponderTable, FindsTheFirstOfTranspondersInAnyOrder) {
  std::mt19937 random(16);
  for (const int step : {1, 7, 400, 2'499, 2'500}) {
    std::vector<std::uint32_t> shuffled =
        in_steps(50'000'000U + 20'000'000U * static_cast<std::uint32_t>(step), 300, step);
    std::shuffle(shuffled.begin(), shuffled.end(), random);
    add(shuffled);
    const auto [lowest, highest] = std::minmax_element(shuffled.begin(), shuffled.end());
    expect_the_walks_answers(*lowest, *highest, 1 + step / 13);
  }
}

TEST_F(TransponderTable, FindsTheFirstWhileTranspondersAreAdded) {
  std::mt19937 random(17);
  std::uniform_int_distribution<std::uint32_t> some(0, 12'000);
  for (int added = 0; added < 400; ++added) {
    add({some(random)});
    expect_the_walks_answers(0, 12'000, 97);
  }
}

TEST_F(TransponderTable, FindsFrequenciesAtBothEndsOf32Bits) {
  add({0, 2'400, UINT32_MAX, UINT32_MAX - 2'400, 1});
  expect_the_walks_answers(-5, 5'000);
  expect_the_walks_answers(std::int64_t{UINT32_MAX} - 5'000, UINT32_MAX);
}

TEST_F(TransponderTable, FindsNothingAtFrequenciesThatNoTransponderHas) {
  add({0, 2'400, 11'000'000});
  for (const std::int64_t frequency :
       {INT64_MIN, INT64_MIN + 1, -(std::int64_t{1} << 32), std::int64_t{-2'500}, std::int64_t{1} << 32,
        (std::int64_t{1} << 32) + 11'000'000, std::int64_t{2'500} << 32, INT64_MAX - 1, INT64_MAX}) {
    expect_the_walks_answer(frequency);
  }
}

}  // namespace
