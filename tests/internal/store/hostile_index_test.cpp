// What an index costs over lists made to be costly, beside one that is not. A nested walk, a bucket that is walked, or
// a slot that all keys share would cost a hundred times as much and more.
#include <gtest/gtest.h>

#include <vector>

#include "channel/store/first_table.h"
#include "channel/store/service_index.h"
#include "support/cpu_time.h"
#include "support/hostile_lists.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;

// The multiplier of releases that had only one, for everyone to know.
constexpr std::uint64_t known_multiplier = 0xD1342543DE82EF95;

class HostileIndex : public store_test {
 protected:
  // Builds the index and resolves every service.
  double cost_with(const tunings &tuned) {
    reset_channel_list();
    hang_one_on_each(tuned);
    show_last_in({VIEW_ALL});
    return least_cpu_time([] {},
                          [this] {
                            channel::service_index index;
                            for (const virtual_channel_st &entry : list.vch) {
                              ASSERT_EQ(index.resolve(entry), entry.rch);
                            }
                          });
  }
  double harmless_cost() { return cost_with(far_apart(most_records)); }
};

TEST_F(HostileIndex, OverTransponders1KHzApartCostsLittleMoreThanOverOthers) {
  reset_channel_list();
  hang_one_on_each(one_khz_apart(most_records));
  const double crowded = least_cpu_time([] {}, [] { const channel::service_index index; });
  EXPECT_LT(crowded, 5 * harmless_cost());
}

TEST_F(HostileIndex, OverIdentitiesCraftedAgainstAKnownMultiplierCostsWhatOthersCost) {
  EXPECT_LT(cost_with(crafted_against(known_multiplier, most_records)), 3 * harmless_cost());
}

// Keys that one spread sends to a few slots of thousands.
std::vector<std::uint64_t> keys_against(const channel::spread &known, std::size_t n) {
  std::vector<std::uint64_t> keys;
  for (std::uint64_t key = 1; keys.size() < n; ++key) {
    if (known(key) >> 56U == 0) {
      keys.push_back(key);
    }
  }
  return keys;
}

double cost_of_table(const std::vector<std::uint64_t> &keys, const channel::spread &where) {
  return least_cpu_time([] {},
                        [&] {
                          static int value;
                          channel::first_table<int> table(keys.size(), where);
                          for (const std::uint64_t key : keys) {
                            table.keep_first(key, &value);
                          }
                        });
}

TEST(HostileKeys, CostMuchOnlyWhereTheirMultipliersAreKnown) {
  const channel::spread known(0x123456789ABCDEF1, 0xFEDCBA9876543211);
  const std::vector<std::uint64_t> keys = keys_against(known, 10'000);
  EXPECT_GT(cost_of_table(keys, known),
            10 * cost_of_table(keys, channel::spread(0x9E3779B97F4A7C15, 0xBF58476D1CE4E5B9)));
  EXPECT_GT(cost_of_table(keys, known), 10 * cost_of_table(keys, channel::spread()));
}

}  // namespace
