// No pointer to a freed channel is left in a view, the work view or the history, whichever way the channel went, and
// the history prints an empty name for it.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "support/hierarchy_walk.h"
#include "support/log_capture.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;

// Each way in which a filed channel can be freed.
struct way_out {
  const char *name;
  std::function<void(channel_st *)> take;
};

const way_out ways_out[] = {
    {"Channel", [](channel_st *service) { release_rch_info(service); }},
    {"Transponder", [](channel_st *) { release_tp_ch_info(transponders(*networks().at(0)).at(0)); }},
    {"Network", [](channel_st *) { release_network_ch_info(networks().at(0)); }},
};

class StalePointers : public store_test, public ::testing::WithParamInterface<way_out> {
 protected:
  void SetUp() override {
    store_test::SetUp();
    freed_ = file_service({.service_id = 1});
    kept_ = file_service({.net_index = 2, .service_id = 2});
  }
  [[nodiscard]] virtual_channel_st freed_entry() const { return entry_of(*freed_, 1); }
  [[nodiscard]] virtual_channel_st kept_entry() const { return entry_of(*kept_, 2); }
  [[nodiscard]] const channel_st *kept() const { return kept_; }
  void watch_freed() const {
    append_entry(VIEW_ALL, freed_entry());
    add_return_channel(0, 1, 1, 100, 11'000'000, 1, 0);
    ASSERT_EQ(get_return_channel()->vch.rch, freed_);
  }
  void free_it() const { GetParam().take(freed_); }

 private:
  channel_st *freed_ = nullptr;
  channel_st *kept_ = nullptr;
};

TEST_P(StalePointers, NoEntryOfAnyViewPointsToAFreedChannel) {
  const int views[] = {0, 1, 2, 3, 4, 5, 10, 29};
  for (const int view : views) {
    append_entry(static_cast<std::int8_t>(view), freed_entry());
    append_entry(static_cast<std::int8_t>(view), kept_entry());
  }

  free_it();

  for (const int view : views) {
    const auto type = static_cast<std::int8_t>(view);
    const virtual_channel_st *entries = get_virtual_channel_st(type);
    EXPECT_EQ(entries[0].rch, nullptr) << "view " << view;
    EXPECT_EQ(entries[1].rch, kept()) << "view " << view;
    EXPECT_EQ(service_ids(type), (std::vector<int>{1, 2})) << "view " << view;
  }
}

TEST_P(StalePointers, NoSlotBehindTheCountOfAViewPointsToAFreedChannel) {
  append_entry(VIEW_ALL, freed_entry());
  append_entry(VIEW_WORK, freed_entry());
  *get_virtual_channel_vnumber(VIEW_ALL) = 0;
  *get_virtual_channel_vnumber(VIEW_WORK) = 0;
  list.tv_vch[MAX_TV_CHANNEL - 1] = freed_entry();

  free_it();

  EXPECT_EQ(get_virtual_channel_st(VIEW_ALL)->rch, nullptr);
  EXPECT_EQ(get_virtual_channel_st(VIEW_WORK)->rch, nullptr);
  EXPECT_EQ(list.tv_vch[MAX_TV_CHANNEL - 1].rch, nullptr);
}

TEST_P(StalePointers, NoEntryOfTheHistoryPointsToAFreedChannel) {
  watch_freed();

  free_it();

  EXPECT_EQ(get_return_channel_num(), 1);
  EXPECT_EQ(get_return_channel()->vch.rch, nullptr);
  EXPECT_EQ(get_return_channel()->vch.service_id, 1);
}

TEST_P(StalePointers, NoSlotBehindTheHistoryPointsToAFreedChannel) {
  watch_freed();
  remove_return_channel(0, 1, 1, 100, 11'000'000, 1, 0);
  ASSERT_EQ(get_return_channel_num(), 0);

  free_it();

  EXPECT_EQ(get_return_channel()->vch.rch, nullptr);
}

// Moves and the history copy entries of the current view, whatever array it is.
TEST_P(StalePointers, NoEntryOfAHostsOwnCurrentViewPointsToAFreedChannel) {
  std::array<virtual_channel_st, 3> entries = {freed_entry(), kept_entry(), freed_entry()};
  std::int16_t count = 2;
  list.cur_vch = entries.data();
  list.cur_vnumber = &count;

  free_it();

  EXPECT_EQ(entries[0].rch, nullptr);
  EXPECT_EQ(entries[1].rch, kept());
  EXPECT_NE(entries[2].rch, nullptr) << "behind the count the array is the host's alone";
  change_vindex_type(VIEW_ALL);
}

TEST_P(StalePointers, TheViewsForgetAFreedChannelWithoutACurrentOne) {
  append_entry(VIEW_ALL, freed_entry());
  list.cur_vnumber = nullptr;

  free_it();

  EXPECT_EQ(list.vch[0].rch, nullptr);
}

TEST_P(StalePointers, TheHistoryPrintsAnEmptyNameForAFreedChannel) {
  watch_freed();
  free_it();
  const std::string listed = "ChannelAPI check_same_return_channel:# vch ni(1), net_id(1), ti(100), f(11000000), "
                             "si(1), po(0), name()\n";

  EXPECT_EQ(writes_at(2, [] { return check_same_return_channel(0, 1, 1, 100, 11'000'000, 1, 0); }).at(1), listed);
  EXPECT_EQ(writes_at(2,
                      [] {
                        add_return_channel(0, 1, 1, 100, 11'000'000, 1, 0);
                        return 0;
                      })
                .at(1),
            listed);
  EXPECT_EQ(writes_at(2, [] { return remove_return_channel(0, 1, 1, 100, 11'000'000, 1, 0); }).at(1), listed);
}

class ReleasedInAView : public store_test {
 protected:
  // A current TV view of the services 1..n; one of them is released, its entry stays.
  void show_without(int n, int released) {
    const std::vector<channel_st *> filed = fill_view(VIEW_TV, n);
    change_vindex_type(VIEW_TV);
    release_rch_info(filed.at(static_cast<std::size_t>(released) - 1));
  }
};

// Compatibility: a block move drops entries without a real channel, and the count stays; the last entry fills the view
// up.
TEST_F(ReleasedInAView, ABlockMoveDropsTheEntryAndRepeatsTheLast) {
  show_without(5, 2);
  const std::int16_t sources[] = {0, 2};

  EXPECT_EQ(move_channel(4, 2, sources), 1);

  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{4, 5, 1, 3, 5}));
}

// Compatibility: the slots that no entry with a real channel fills hold what a plain copy of the view puts there.
TEST_F(ReleasedInAView, ASortByFlagDropsTheEntryAndRepeatsTheLast) {
  show_without(4, 2);
  list.tv_vch[0].rch->flag = CHANNEL_FLAG_LOCKED;

  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(sort_vindex_by_flag(VIEW_TV, SORT_LOCK), 0); }),
            lines{"ERROR: sort_vindex_by_flag:# r_ch == NULL\n"});

  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{3, 4, 1, 4}));
}

class StalePointersOfMany : public store_test, public ::testing::WithParamInterface<int> {};

// Channels are forgotten and freed in batches of 2,048.
TEST_P(StalePointersOfMany, NoEntryPointsToAFreedChannelAndNoOtherIsForgotten) {
  fill_view(VIEW_ALL, GetParam());
  channel_st *kept = file_service({.net_index = 2});
  append_entry(VIEW_WORK, list.vch[0]);
  append_entry(VIEW_WORK, list.vch[GetParam() - 1]);
  append_entry(VIEW_WORK, entry_of(*kept, 1));

  release_network_ch_info(networks().at(0));

  for (int i = 0; i < GetParam(); ++i) {
    ASSERT_EQ(list.vch[i].rch, nullptr) << i;
  }
  const virtual_channel_st *work = get_virtual_channel_st(VIEW_WORK);
  EXPECT_EQ(work[0].rch, nullptr);
  EXPECT_EQ(work[1].rch, nullptr);
  EXPECT_EQ(work[2].rch, kept);
}

INSTANTIATE_TEST_SUITE_P(Channels, StalePointersOfMany, ::testing::Values(1, 2047, 2048, 2049, 4096, 4097, 5000));

INSTANTIATE_TEST_SUITE_P(OfA, StalePointers, ::testing::ValuesIn(ways_out),
                         [](const auto &tested) { return std::string(tested.param.name); });

}  // namespace
