// What a load costs when the file was made to cost much, beside a harmless file of its size.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include "support/channel_file.h"
#include "support/cpu_time.h"
#include "support/hostile_lists.h"

namespace {

using namespace test_support;

class LoadHostile : public file_test {
 protected:
  double cost_of_loading(const tunings &tuned) {
    reset_channel_list();
    hang_one_on_each(tuned);
    show_last_in({VIEW_ALL, VIEW_TV, VIEW_USER});
    save();
    return least_cpu_time(reset_channel_list, [] { ASSERT_EQ(load_named("saved.dat"), CHANNEL_LIST_VERSION); });
  }
};

TEST_F(LoadHostile, NoFileCostsMoreThanThreeTimesAHarmlessOneOfItsSize) {
  // What tables multiplied keys by when everybody could know it.
  constexpr std::uint64_t known_multiplier = 0xD1342543DE82EF95;
  const double harmless = cost_of_loading(far_apart(most_records));

  EXPECT_LT(cost_of_loading(crafted_against(known_multiplier, most_records)), 3 * harmless);
  EXPECT_LT(cost_of_loading(one_khz_apart(most_records)), 3 * harmless);
}

}  // namespace
