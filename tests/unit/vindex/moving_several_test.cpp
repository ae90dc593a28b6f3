// Moving several entries of the current view: they follow, in the order given, the entry at the destination; entries
// without a real channel are compacted away on the way.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "mirrored_test.h"

namespace {

using namespace test_support;

class MovingSeveral : public moving_test {
 protected:
  // Service ids of a TV view of 1..n after a move.
  std::vector<int> moved(int n, int destination, const positions &sources) {
    fill(VIEW_TV, first_ids(n));
    show(VIEW_TV);
    EXPECT_EQ(move_to(destination, sources), 1);
    EXPECT_TRUE(slots_behind_count_are_zero(VIEW_TV, 4000));
    return service_ids(VIEW_TV);
  }
  // Makes a TV view of 1..n current in which some positions have no real channel.
  void fill_with_gaps(int n, const positions &gaps) {
    fill(VIEW_TV, first_ids(n));
    show(VIEW_TV);
    for (const std::int16_t gap : gaps) {
      list.tv_vch[gap].rch = nullptr;
    }
  }
};

TEST_F(MovingSeveral, TheBlockFollowsTheEntryAtTheDestination) {
  EXPECT_EQ(moved(6, 1, {4, 5}), (std::vector<int>{1, 2, 5, 6, 3, 4}));
  EXPECT_EQ(moved(6, 5, {0, 1}), (std::vector<int>{3, 4, 5, 6, 1, 2}));
  EXPECT_EQ(moved(6, 2, {0, 5}), (std::vector<int>{2, 3, 1, 6, 4, 5}));
}

TEST_F(MovingSeveral, TheBlockKeepsTheOrderGiven) {
  EXPECT_EQ(moved(5, 0, {3, 1}), (std::vector<int>{1, 4, 2, 3, 5}));
  EXPECT_EQ(moved(5, 0, {1, 3}), (std::vector<int>{1, 2, 4, 3, 5}));
  EXPECT_EQ(moved(5, 4, {2, 0, 1}), (std::vector<int>{4, 5, 3, 1, 2}));
}

TEST_F(MovingSeveral, ADestinationThatIsItselfMovedStandsForTheNextEntryLeft) {
  EXPECT_EQ(moved(5, 2, {2, 4}), (std::vector<int>{1, 2, 4, 3, 5}));
  EXPECT_EQ(moved(5, 0, {0, 1}), (std::vector<int>{3, 1, 2, 4, 5}));
}

TEST_F(MovingSeveral, ADestinationMovedWithEverythingBehindItDoesNotPushTheBlockOutOfTheView) {
  EXPECT_EQ(moved(5, 4, {3, 4}), (std::vector<int>{1, 2, 3, 4, 5}));
  EXPECT_EQ(moved(5, 3, {4, 3}), (std::vector<int>{1, 2, 3, 5, 4}));
  EXPECT_EQ(moved(3, 1, {2, 0, 1}), (std::vector<int>{3, 1, 2}));
}

TEST_F(MovingSeveral, MovesWholeEntriesAndKeepsTheirNumbers) {
  fill(VIEW_TV, first_ids(4), 100);
  show(VIEW_TV);
  const virtual_channel_st before = mark_whole(list.tv_vch[3]);

  move_to(0, {3, 2});

  EXPECT_EQ(std::memcmp(&list.tv_vch[1], &before, sizeof before), 0);
  EXPECT_EQ(majors(VIEW_TV), (std::vector<int>{101, 104, 103, 102}));
}

TEST_F(MovingSeveral, EntriesWithoutChannelGoAndTheCountStays) {
  fill_with_gaps(6, {0, 3});

  EXPECT_EQ(move_to(1, {4, 2}), 1);

  EXPECT_EQ(list.tv_vnumber, 6);
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{2, 5, 3, 6, 6, 6}));
}

TEST_F(MovingSeveral, AnEntryWithoutChannelThatIsMovedStays) {
  fill_with_gaps(4, {0, 3});

  EXPECT_EQ(move_to(1, {2, 3}), 1);

  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{2, 3, 4, 0}));
}

TEST_F(MovingSeveral, ADestinationMovedWithEverythingBehindItLeavesItsSlotWhereThereIsRoom) {
  fill_with_gaps(5, {0});

  EXPECT_EQ(move_to(4, {3, 4}), 1);

  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{2, 3, 0, 4, 5}));
}

TEST_F(MovingSeveral, NoPositionsOnlyCompact) {
  for (const int count : {0, -1, -32768}) {
    fill_with_gaps(4, {1});

    EXPECT_EQ(move_channel(3, static_cast<std::int16_t>(count), nullptr), 1);

    EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1, 3, 4, 4})) << count;
    EXPECT_EQ(list.tv_vnumber, 4);
  }
}

TEST_F(MovingSeveral, NoPositionsLeaveAViewWithoutGapsAlone) {
  fill(VIEW_TV, first_ids(4));
  show(VIEW_TV);
  const auto before = std::make_unique<channel_list_st>(list);

  EXPECT_EQ(move_channel(2, 0, nullptr), 1);

  EXPECT_EQ(std::memcmp(&list, before.get(), sizeof list), 0);
}

TEST_F(MovingSeveral, AViewOfGapsAloneKeepsItsSlots) {
  fill_with_gaps(3, {0, 1, 2});

  EXPECT_EQ(move_channel(0, 0, nullptr), 1);

  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{3, 3, 3}));
}

// Hosts move blocks while a TV, radio or group view is current.
TEST_F(MovingSeveral, WithoutAGroupListTheSlotsOfTheServiceTypeViewAreClearedAllTheSame) {
  fill(VIEW_USER, {1, 2, 3, 4});
  fill(VIEW_TV, {4, 9, 2, 1});
  show(VIEW_USER);

  EXPECT_EQ(move_to(0, {3, 1}), 1);

  EXPECT_EQ(service_ids(VIEW_USER), (std::vector<int>{1, 4, 2, 3}));
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{0, 9, 0, 1}));
  EXPECT_EQ(list.tv_vnumber, 4);
  const virtual_channel_st zero = {};
  EXPECT_EQ(std::memcmp(&list.tv_vch[0], &zero, sizeof zero), 0);
  EXPECT_EQ(std::memcmp(&list.tv_vch[2], &zero, sizeof zero), 0);
}

TEST_F(MovingSeveral, AFullViewIsMovedWithoutTouchingWhatLiesBehindIt) {
  for (const view_case &each : every_view()) {
    if (each.code == VIEW_WORK) {
      continue;
    }
    const int last = each.capacity - 1;
    for (const int destination : {0, 1, last}) {
      fill(each.code, first_ids(each.capacity));
      show(each.code, GROUP_ALL, each.code);
      const auto before = std::make_unique<channel_list_st>(list);
      virtual_channel_st *entries = get_virtual_channel_st(each.code);
      const std::vector<virtual_channel_st> moved_entries(entries, entries + each.capacity);

      EXPECT_TRUE(moves_like_the_model(destination, {static_cast<std::int16_t>(last), 0, 4})) << int{each.code};

      std::copy(moved_entries.begin(), moved_entries.end(), entries);
      EXPECT_EQ(std::memcmp(&list, before.get(), sizeof list), 0) << int{each.code};
    }
  }
}

TEST_F(MovingSeveral, ACountBehindTheArrayIsReadAsTheWholeArray) {
  fill(10, first_ids(40));
  fill(11, {77});
  show(10);
  list.favorite_vnumber[0] = 32767;

  EXPECT_EQ(move_to(0, {39, 38}), 1);

  EXPECT_EQ(list.favorite_vch[0][1].service_id, 40);
  EXPECT_EQ(list.favorite_vch[0][39].service_id, 38);
  EXPECT_EQ(service_ids(11), (std::vector<int>{77}));
}

TEST_F(MovingSeveral, TracesEachStepAtLevelTwo) {
  fill(VIEW_USER, {1, 2, 3, 4});
  fill(VIEW_TV, {4, 3, 9});
  const lines expected = {moved_from(2, 3),  moved_from(1, 0), empty_trace, empty_trace, moved_from(2, 0),
                          moved_from(1, -1), empty_trace,      empty_trace, empty_trace};
  for (const int level : {2, 5}) {
    fill(VIEW_USER, {1, 2, 3, 4});
    fill(VIEW_TV, {4, 3, 9});
    show(VIEW_USER);
    EXPECT_EQ(writes_at(level, [] { return move_to(2, {3, 0}); }), expected) << level;
  }
  EXPECT_EQ(writes_at(1, [] { return move_to(2, {3, 0}); }), lines{});
}

TEST_F(MovingSeveral, TracesADestinationThatTheServiceTypeViewLacks) {
  fill(VIEW_USER, {1, 2, 3});
  fill(VIEW_TV, {1, 2});
  show(VIEW_USER);

  EXPECT_EQ(writes_at(2,
                      [] {
                        return move_to(2, {0, 1});
                      }),
            (lines{moved_from(2, 0), moved_from(-1, 0), empty_trace, empty_trace, moved_from(2, 1), moved_from(-1, 1),
                   empty_trace, empty_trace, empty_trace}));
}

TEST_F(MovingSeveral, NoPositionsTraceOneEmptyLine) {
  fill(VIEW_TV, first_ids(3));
  show(VIEW_TV);

  EXPECT_EQ(writes_at(2, [] { return move_channel(0, 0, nullptr); }), lines{empty_trace});
  EXPECT_EQ(writes_at(1, [] { return move_channel(0, 0, nullptr); }), lines{});
}

TEST_F(MovingSeveral, EveryChoiceInAViewOfUpToSixEntriesAgreesWithTheModel) {
  for (int n = 1; n <= 6; ++n) {
    for (int destination = 0; destination < n; ++destination) {
      for_each_choice(n, [&](const positions &sources) {
        fill(VIEW_PROMOTION, first_ids(n));
        show(VIEW_PROMOTION);
        EXPECT_TRUE(moves_like_the_model(destination, sources, 16)) << n;
      });
    }
  }
}

TEST_F(MovingSeveral, EveryChoiceAmongEntriesWithoutChannelAgreesWithTheModel) {
  for (int n = 1; n <= 4; ++n) {
    for (unsigned gaps = 0; gaps < 1U << n; ++gaps) {
      for (int destination = 0; destination < n; ++destination) {
        for_each_choice(n, [&](const positions &sources) {
          fill(VIEW_PROMOTION, first_ids(n));
          show(VIEW_PROMOTION);
          for (int i = 0; i < n; ++i) {
            list.promo_vch[i].rch = (gaps >> i & 1U) != 0 ? nullptr : service_;
          }
          EXPECT_TRUE(moves_like_the_model(destination, sources, 16)) << n << " gaps " << gaps;
        });
      }
    }
  }
}

TEST_F(MovingSeveral, RandomMovesOneAfterTheOtherAgreeWithTheModel) {
  std::mt19937 random(2);
  for (int round = 0; round < 200; ++round) {
    const int n = 1 + random_below(random, 40);
    fill(10, first_ids(n));
    show(10);
    for (int i = 0; i < 10; ++i) {
      list.favorite_vch[0][random_below(random, n)].rch = random_below(random, 3) == 0 ? nullptr : service_;
      EXPECT_TRUE(
          moves_like_the_model(random_below(random, n), random_choice(random, n, random_below(random, n + 1)), 64));
    }
  }
}

TEST_F(MovingSeveral, RandomMovesInAFullUserViewAgreeWithTheModel) {
  std::mt19937 random(3);
  for (const int length : {0, 2, 10, 1000, 4999, 5000}) {
    fill(VIEW_USER, first_ids(5000));
    fill(VIEW_TV, first_ids(4000), 5000);
    show(VIEW_USER);
    for (int i = 0; i < 20; ++i) {
      list.user_vch[random_below(random, 5000)].rch = nullptr;
    }
    EXPECT_TRUE(moves_like_the_model(random_below(random, 5000), random_choice(random, 5000, length))) << length;
  }
}

}  // namespace
