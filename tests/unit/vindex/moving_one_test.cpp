// Moving one entry of the current view: it is taken out, and put in at the destination counted without it.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <vector>

#include "support/moving_test.h"

namespace {

using namespace test_support;

class MovingOne : public moving_test {
 protected:
  // Service ids of a TV view of 1..n after one move.
  std::vector<int> moved(int n, int destination, int source) {
    fill(VIEW_TV, first_ids(n));
    show(VIEW_TV);
    EXPECT_EQ(move_to(destination, {static_cast<std::int16_t>(source)}), 1);
    return service_ids(VIEW_TV);
  }
};

const lines two_empty_traces = {empty_trace, empty_trace};

TEST_F(MovingOne, TheDestinationIsCountedWithoutTheEntry) {
  EXPECT_EQ(moved(6, 4, 1), (std::vector<int>{1, 3, 4, 5, 2, 6}));
  EXPECT_EQ(moved(6, 1, 4), (std::vector<int>{1, 5, 2, 3, 4, 6}));
}

TEST_F(MovingOne, MovesToTheFirstAndTheLastPosition) {
  EXPECT_EQ(moved(4, 0, 3), (std::vector<int>{4, 1, 2, 3}));
  EXPECT_EQ(moved(4, 3, 0), (std::vector<int>{2, 3, 4, 1}));
  EXPECT_EQ(moved(4, 0, 1), (std::vector<int>{2, 1, 3, 4}));
  EXPECT_EQ(moved(4, 3, 2), (std::vector<int>{1, 2, 4, 3}));
  EXPECT_EQ(moved(2, 1, 0), (std::vector<int>{2, 1}));
}

TEST_F(MovingOne, AnEntryMovesOntoItself) {
  EXPECT_EQ(moved(1, 0, 0), (std::vector<int>{1}));
  EXPECT_EQ(moved(3, 0, 0), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(moved(3, 1, 1), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(moved(3, 2, 2), (std::vector<int>{1, 2, 3}));
}

TEST_F(MovingOne, MovesWholeEntriesAndKeepsTheirNumbers) {
  fill(VIEW_TV, first_ids(3), 100);
  show(VIEW_TV);
  const virtual_channel_st before = mark_whole(list.tv_vch[2]);

  move_to(0, {2});

  EXPECT_EQ(std::memcmp(&list.tv_vch[0], &before, sizeof before), 0);
  EXPECT_EQ(majors(VIEW_TV), (std::vector<int>{103, 101, 102}));
}

TEST_F(MovingOne, EntriesWithoutChannelMoveAndStayLikeAnyOther) {
  fill(VIEW_TV, first_ids(4));
  show(VIEW_TV);
  list.tv_vch[0].rch = nullptr;
  list.tv_vch[2].rch = nullptr;

  EXPECT_EQ(move_to(1, {2}), 1);

  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1, 3, 2, 4}));
}

TEST_F(MovingOne, TheSlotBehindTheCountReceivesTheFormerLastEntry) {
  struct moving {
    int destination;
    std::int16_t source;
  };
  for (const auto &[destination, source] : std::vector<moving>{{0, 1}, {2, 0}, {0, 2}, {2, 2}, {1, 2}}) {
    fill(VIEW_TV, first_ids(3));
    show(VIEW_TV);
    const virtual_channel_st last = list.tv_vch[2];

    move_to(destination, {source});

    EXPECT_EQ(list.tv_vnumber, 3);
    EXPECT_EQ(std::memcmp(&list.tv_vch[3], &last, sizeof last), 0) << destination << ' ' << source;
    EXPECT_EQ(list.tv_vch[4].service_id, 0);
  }
}

TEST_F(MovingOne, AFullViewIsMovedWithoutTouchingWhatLiesBehindIt) {
  for (const view_case &each : every_view()) {
    if (each.code == VIEW_WORK) {
      continue;
    }
    for (const int destination : {0, 1, each.capacity - 1}) {
      fill(each.code, first_ids(each.capacity));
      show(each.code);
      const auto before = std::make_unique<channel_list_st>(list);
      virtual_channel_st *entries = get_virtual_channel_st(each.code);
      const std::vector<virtual_channel_st> moved_entries(entries, entries + each.capacity);

      EXPECT_TRUE(moves_like_the_model(destination, {static_cast<std::int16_t>(each.capacity / 2)})) << int{each.code};

      std::copy(moved_entries.begin(), moved_entries.end(), entries);
      EXPECT_EQ(std::memcmp(&list, before.get(), sizeof list), 0) << int{each.code};
    }
  }
}

TEST_F(MovingOne, OneFreeSlotIsEnoughForTheCopy) {
  fill(10, first_ids(39));
  fill(11, {77});
  show(10);

  EXPECT_TRUE(moves_like_the_model(0, {38}));

  EXPECT_EQ(list.favorite_vch[0][39].service_id, 39);
  EXPECT_EQ(service_ids(11), (std::vector<int>{77}));
}

TEST_F(MovingOne, WithoutAGroupListNoOtherViewChanges) {
  fill(VIEW_TV, first_ids(5));
  fill(VIEW_USER, {5, 3, 1});
  show(VIEW_USER);
  const std::vector<virtual_channel_st> tv(list.tv_vch, list.tv_vch + MAX_TV_CHANNEL);

  EXPECT_EQ(move_to(0, {2}), 1);

  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{1, 5, 3}));
  EXPECT_EQ(std::memcmp(list.tv_vch, tv.data(), sizeof list.tv_vch), 0);
}

TEST_F(MovingOne, ACountBehindTheArrayIsReadAsTheWholeArray) {
  fill(10, first_ids(40));
  fill(11, {77});
  show(10);
  list.favorite_vnumber[0] = 32767;

  EXPECT_EQ(move_to(0, {39}), 1);

  EXPECT_EQ(list.favorite_vch[0][0].service_id, 40);
  EXPECT_EQ(list.favorite_vch[0][39].service_id, 39);
  EXPECT_EQ(service_ids(11), (std::vector<int>{77}));
}

TEST_F(MovingOne, TracesTwoEmptyLinesAtLevelTwo) {
  fill(VIEW_TV, first_ids(3));
  show(VIEW_TV);
  EXPECT_EQ(writes_at(2, [] { return move_to(2, {0}); }), two_empty_traces);
  EXPECT_EQ(writes_at(5, [] { return move_to(2, {0}); }), two_empty_traces);
  EXPECT_EQ(writes_at(1, [] { return move_to(2, {0}); }), lines{});
}

TEST_F(MovingOne, EveryMoveInAViewOfUpToSixEntriesAgreesWithTheModel) {
  for (const std::int8_t view : {std::int8_t{VIEW_ALL}, std::int8_t{VIEW_TV}, std::int8_t{VIEW_PROMOTION}}) {
    for (int n = 1; n <= 6; ++n) {
      for (int destination = 0; destination < n; ++destination) {
        for (int source = 0; source < n; ++source) {
          fill(view, first_ids(n));
          show(view);
          EXPECT_TRUE(moves_like_the_model(destination, {static_cast<std::int16_t>(source)})) << n;
        }
      }
    }
  }
}

TEST_F(MovingOne, ManyMovesInAFullUserViewAgreeWithTheModel) {
  std::mt19937 random(1);
  fill(VIEW_USER, first_ids(5000));
  fill(VIEW_TV, first_ids(4000), 5000);
  show(VIEW_USER);
  for (int i = 0; i < 50; ++i) {
    EXPECT_TRUE(
        moves_like_the_model(random_below(random, 5000), {static_cast<std::int16_t>(random_below(random, 5000))}));
  }
}

}  // namespace
