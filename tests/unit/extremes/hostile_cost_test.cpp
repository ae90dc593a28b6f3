// What operations on whole views cost over lists made to be costly, beside the sweep of the same list, which looks
// every entry up once. A walk for each entry, in the hierarchy or in a view, would cost dozens of sweeps and more.
#include <base/verbosity.h>
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "support/cpu_time.h"
#include "support/hostile_lists.h"
#include "support/log_capture.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;

constexpr double sweeps = 40;

class HostileCost : public store_test {
 protected:
  template <class Action>
  static double cost_of(const Action &action) {
    return least_cpu_time([] {}, action);
  }
  static double cost_of_a_sweep() { return cost_of(remove_invalid_virtual_channel); }
};

TEST_F(HostileCost, FlagsOfAViewWhoseServicesShareATransponder) {
  hang_all_on_one(MAX_CHANNEL);
  show_last_in({VIEW_ALL});
  const double sweep = cost_of_a_sweep();

  EXPECT_LT(cost_of([] { set_channel_flag_by_bit(0x08); }), sweeps * sweep);
  EXPECT_LT(cost_of([] { clear_channel_flag_by_bit(0x08); }), sweeps * sweep);
}

TEST_F(HostileCost, FlagsOfAViewOfTheLastOfManyServices) {
  hang_one_on_each(far_apart(most_records));
  show_last_in({VIEW_ALL});
  const double sweep = cost_of_a_sweep();

  EXPECT_LT(cost_of([] { set_channel_flag_by_bit(0x08); }), sweeps * sweep);
}

TEST_F(HostileCost, ADumpOfAViewOfTheLastOfManyServices) {
  const auto cost_of_a_dump = [] {
    return cost_of([] {
      const log_capture log(2);
      print_virtual_channel_list(VIEW_ALL);
    });
  };
  hang_one_on_each(far_apart(MAX_CHANNEL));
  show_last_in({VIEW_ALL});
  const double of_as_many_entries = cost_of_a_dump();

  reset_channel_list();
  hang_one_on_each(far_apart(most_records));
  show_last_in({VIEW_ALL});

  EXPECT_LT(cost_of_a_dump(), 5 * of_as_many_entries);
}

TEST_F(HostileCost, TheRemovalOfTheServicesOfManyTransponders) {
  const auto build = [] {
    reset_channel_list();
    hang_one_on_each(far_apart(most_records));
    show_last_in({VIEW_ALL});
  };
  build();
  const double sweep = cost_of_a_sweep();

  EXPECT_LT(least_cpu_time(build, [] { remove_service_by_group_list_id(GROUP_FTACAS, 0, VIEW_ALL); }), sweeps * sweep);
}

TEST_F(HostileCost, TheRemovalOfServicesThatNameNoTransponderOfTheirs) {
  const auto build = [this] {
    reset_channel_list();
    hang_one_on_each(one_khz_apart(most_records));
    show_last_in({VIEW_ALL});
    for (const virtual_channel_st &entry : list.vch) {
      ++entry.rch->ts_id;
    }
  };
  build();
  const double sweep = cost_of_a_sweep();

  EXPECT_LT(least_cpu_time(build, [] { remove_service_by_group_list_id(GROUP_FTACAS, 0, VIEW_ALL); }), sweeps * sweep);
}

class HostileMoves : public HostileCost {
 protected:
  // A USER view that is moved from its end to its beginning, and a TV view that follows.
  void SetUp() override {
    HostileCost::SetUp();
    hang_all_on_one(MAX_TV_CHANNEL);
    sources_.resize(MAX_TV_CHANNEL);
    std::iota(sources_.rbegin(), sources_.rend(), std::int16_t{0});
  }
  void show_views() const {
    init_vindex(VIEW_USER);
    init_vindex(VIEW_TV);
    show_last_in({VIEW_USER, VIEW_TV});
    change_vindex_type(VIEW_USER);
    get_channel_list()->use_group_list = GROUP_PROVIDER;
    get_channel_list()->service_type = VIEW_TV;
  }
  void move_everything() const {
    ASSERT_EQ(move_channel(0, static_cast<std::int16_t>(sources_.size()), sources_.data()), 1);
  }

 private:
  std::vector<std::int16_t> sources_;
};

TEST_F(HostileMoves, OfAWholeViewThatAnotherOneFollows) {
  show_views();
  const double sweep = cost_of_a_sweep();

  EXPECT_LT(least_cpu_time([this] { show_views(); }, [this] { move_everything(); }), sweeps * sweep);
}

TEST_F(HostileMoves, OfEntriesThatDifferInNothingButTheirFrequencies) {
  const auto tell_apart_by_frequency = [this] {
    show_views();
    for (int i = 0; i < MAX_TV_CHANNEL; ++i) {
      for (virtual_channel_st *entry : {&list.user_vch[i], &list.tv_vch[i]}) {
        entry->service_id = 1;
        entry->frequency = static_cast<std::uint32_t>(3'000 * (i + 1));
      }
    }
  };
  show_views();
  const double sweep = cost_of_a_sweep();

  EXPECT_LT(least_cpu_time(tell_apart_by_frequency, [this] { move_everything(); }), sweeps * sweep);
}

}  // namespace
