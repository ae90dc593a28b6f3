// Moves while a group list is in use: what they log, and lists as the host makes them current.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <vector>

#include "mirrored_test.h"
#include "support/groups.h"

namespace {

using namespace test_support;

class MovingGroupLists : public mirrored_test {
 protected:
  // A favourite group of the entries 1, 2 and 3, made current as a list in the place of a USER view that holds others.
  void show_favourites_over_user_view() {
    fill(VIEW_USER, {7, 8, 9, 10});
    fill(10, {1, 2, 3});
    const auto id = static_cast<std::int16_t>(add_fav_group_info(named_group("Mine")));
    list.favorite_vnumber[0] = 3;
    fill(10, {1, 2, 3});
    ASSERT_EQ(create_service_by_group_list_id(GROUP_FAV, id, VIEW_USER, 1), 0);
    ASSERT_EQ(service_ids(VIEW_USER), (std::vector<int>{1, 2, 3}));
  }
};

TEST_F(MovingGroupLists, ASingleMoveIsTracedTwiceAtLevelTwo) {
  fill_group_and_tv({1, 2, 3}, {9, 3, 2, 1});

  EXPECT_EQ(writes_at(2, [] { return move_to(2, {0}); }), (lines{empty_trace, empty_trace}));
  EXPECT_EQ(writes_at(1, [] { return move_to(2, {0}); }), lines{});
}

TEST_F(MovingGroupLists, ABlockMoveIsTracedWithThePositionsInBothViewsAtLevelTwo) {
  fill_group_and_tv({1, 2, 3}, {9, 3, 2, 1});

  EXPECT_EQ(writes_at(2,
                      [] {
                        return move_to(0, {2, 1});
                      }),
            (lines{moved_from(0, 2), moved_from(3, 1), empty_trace, empty_trace, moved_from(0, 1), moved_from(3, 2),
                   empty_trace, empty_trace, empty_trace}));
  EXPECT_EQ(writes_at(1, [] { return move_to(0, {2, 1}); }), lines{});
}

TEST_F(MovingGroupLists, ABlockMoveTracesChannelsThatTheServiceTypeViewLacksAtMinusOne) {
  fill_group_and_tv({1, 2, 3}, {9, 3});

  EXPECT_EQ(writes_at(2,
                      [] {
                        return move_to(0, {2, 1});
                      }),
            (lines{moved_from(0, 2), moved_from(-1, 1), empty_trace, empty_trace, moved_from(0, 1), moved_from(-1, -1),
                   empty_trace, empty_trace, empty_trace}));
}

TEST_F(MovingGroupLists, AListOfFavouritesOverTheUserViewIsItsOwnServiceTypeViewAndMovedOnce) {
  show_favourites_over_user_view();
  EXPECT_EQ(list.use_group_list, GROUP_FAV);
  EXPECT_EQ(list.service_type, VIEW_USER);
  EXPECT_EQ(get_vindex_type(), VIEW_USER);

  EXPECT_EQ(writes_at(2, [] { EXPECT_EQ(move_to(2, {0}), 1); }), (lines{empty_trace, empty_trace}));

  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{2, 3, 1}));
  EXPECT_EQ(service_ids(10), (std::vector<int>{1, 2, 3}));
}

TEST_F(MovingGroupLists, ABlockOfAListOfFavouritesOverTheUserViewIsMovedOnce) {
  show_favourites_over_user_view();

  EXPECT_EQ(writes_at(2,
                      [] {
                        EXPECT_EQ(move_to(2, {0, 1}), 1);
                      }),
            (lines{moved_from(2, 0), moved_from(2, 0), empty_trace, empty_trace, moved_from(2, 1), moved_from(2, 1),
                   empty_trace, empty_trace, empty_trace}));

  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{3, 1, 2}));
  EXPECT_EQ(service_ids(10), (std::vector<int>{1, 2, 3}));
}

// Compatibility: the service-type view is cleared where it holds the channel first. When it is the current view and
// lists the channel twice, the first of the twins goes with the block, and an empty slot is left at the end.
TEST_F(MovingGroupLists, ABlockWithTheSecondOfTwinsLosesTheFirstWhenTheServiceTypeViewIsCurrent) {
  for (const int kind : {GROUP_ALL, GROUP_GENRE}) {
    fill(VIEW_TV, {1, 2, 2, 3});
    list.tv_vch[1].major_ch_num = 21;
    list.tv_vch[2].major_ch_num = 22;
    show(VIEW_TV, kind);

    EXPECT_EQ(move_to(0, {2, 3}), 1);

    EXPECT_EQ(majors(VIEW_TV), (std::vector<int>{1, 22, 3, 0})) << kind;
    EXPECT_EQ(list.tv_vch[3].rch, nullptr) << kind;
  }
}

}  // namespace
