// Moving entries within a favourite group, compared with a plain rendering of the steps on a group with room behind it.
#include "favourite_moves_by_steps.h"
#include "support/favourite_test.h"

#include <numeric>
#include <random>

namespace {

using namespace test_support;

class FavouriteEntryMoves : public favourite_test {
 protected:
  // The group's services are 1..n; those of the mask have no real channel.
  void fill(int group, int n, std::uint64_t without_channel = 0) {
    fill_group(group, n);
    for (int i = 0; i < n; ++i) {
      list.favorite_vch[group][i].rch = (without_channel >> i & 1U) != 0 ? nullptr : &real_channel_;
    }
  }
  slots group_and_room(int group) {
    slots copy(2 * MAX_FAV_NUM + 1);
    std::copy_n(list.favorite_vch[group], MAX_FAV_NUM, copy.begin());
    return copy;
  }
  ::testing::AssertionResult moves_as_by_steps(int group, int dest, const positions &sources) {
    const int n = list.favorite_vnumber[group];
    slots expected = group_and_room(group);
    if (sources.size() == 1) {
      move_single_by_steps(expected, n, dest, sources[0]);
    } else {
      move_several_by_steps(expected, n, dest, sources);
    }
    const auto how_many = static_cast<std::int16_t>(sources.size());
    const int result =
        move_fav_channel(static_cast<std::int16_t>(group), static_cast<std::int16_t>(dest), how_many, sources.data());
    const bool is_equal = std::memcmp(list.favorite_vch[group], expected.data(), sizeof list.favorite_vch[group]) == 0;
    if (result == 0 && is_equal && list.favorite_vnumber[group] == n) {
      return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << n << " entries, " << ::testing::PrintToString(sources) << " to " << dest
                                         << " give " << ::testing::PrintToString(service_ids(view_of(group)));
  }
  static int move(int dest, const positions &sources, int group = 0) {
    return move_fav_channel(static_cast<std::int16_t>(group), static_cast<std::int16_t>(dest),
                            static_cast<std::int16_t>(sources.size()), sources.data());
  }
  static std::vector<int> moved() { return service_ids(10); }

 private:
  channel_st real_channel_ = {};
};

TEST_F(FavouriteEntryMoves, OneEntryEndsAtTheDestination) {
  fill(0, 4);
  EXPECT_EQ(move(3, {0}), 0);
  EXPECT_EQ(moved(), (std::vector<int>{2, 3, 4, 1}));

  fill(0, 4);
  EXPECT_EQ(move(1, {3}), 0);
  EXPECT_EQ(moved(), (std::vector<int>{1, 4, 2, 3}));
}

// Compatibility: several entries follow the one that ends at the destination, an offset by one against a single move.
TEST_F(FavouriteEntryMoves, SeveralEntriesFollowTheDestination) {
  fill(0, 4);
  EXPECT_EQ(move(3, {0, 1}), 0);
  EXPECT_EQ(moved(), (std::vector<int>{3, 4, 1, 2}));

  fill(0, 4);
  EXPECT_EQ(move(0, {2, 3}), 0);
  EXPECT_EQ(moved(), (std::vector<int>{1, 3, 4, 2}));
}

TEST_F(FavouriteEntryMoves, SeveralEntriesKeepTheOrderInWhichTheyAreGiven) {
  fill(0, 5);

  EXPECT_EQ(move(2, {4, 0, 3}), 0);

  EXPECT_EQ(moved(), (std::vector<int>{2, 3, 5, 1, 4}));
}

TEST_F(FavouriteEntryMoves, AgreeWithTheStepsForEveryChoiceOfASmallGroup) {
  for (int n = 1; n <= 5; ++n) {
    for (std::uint64_t without_channel = 0; without_channel < 1U << n; ++without_channel) {
      positions chosen;
      for_each_choice(n, chosen, [&](const positions &sources) {
        for (int dest = 0; dest < n; ++dest) {
          fill(0, n, without_channel);
          ASSERT_TRUE(moves_as_by_steps(0, dest, sources)) << "without channel: " << without_channel;
        }
      });
    }
  }
}

TEST_F(FavouriteEntryMoves, AgreeWithTheStepsInGroupsOfAnySize) {
  std::mt19937 random(20'240'502);
  const auto below = [&random](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
  for (int i = 0; i < 5000; ++i) {
    const int n = 1 + below(MAX_FAV_NUM);
    positions sources(static_cast<std::size_t>(n));
    std::iota(sources.begin(), sources.end(), std::uint16_t{0});
    std::shuffle(sources.begin(), sources.end(), random);
    sources.resize(static_cast<std::size_t>(1 + below(n)));
    const int group = below(MAX_FAV);
    fill(group, n, below(2) == 0 ? 0 : random() & random());

    ASSERT_TRUE(moves_as_by_steps(group, below(n), sources));
  }
}

TEST_F(FavouriteEntryMoves, FollowEachOther) {
  std::mt19937 random(20'240'503);
  const auto below = [&random](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
  for (const int n : {2, 39, 40}) {
    fill(0, n);
    for (int i = 0; i < 300; ++i) {
      const auto first = static_cast<std::uint16_t>(below(n));
      const auto second = static_cast<std::uint16_t>((first + 1 + below(n - 1)) % n);
      ASSERT_TRUE(moves_as_by_steps(0, below(n), i % 2 == 0 ? positions{first} : positions{first, second}));
    }
    std::vector<int> all = moved();
    std::sort(all.begin(), all.end());
    for (int id = 1; id <= n; ++id) {
      ASSERT_EQ(all[static_cast<std::size_t>(id) - 1], id);
    }
  }
}

TEST_F(FavouriteEntryMoves, ADestinationThatMovesItselfLosesNothing) {
  fill(0, 4);
  EXPECT_EQ(move(3, {2, 3}), 0);
  EXPECT_EQ(moved(), (std::vector<int>{1, 2, 3, 4}));

  fill(0, 4);
  EXPECT_EQ(move(2, {3, 2}), 0);
  EXPECT_EQ(moved(), (std::vector<int>{1, 2, 4, 3}));

  fill(0, 4);
  EXPECT_EQ(move(1, {3, 1, 0, 2}), 0);
  EXPECT_EQ(moved(), (std::vector<int>{4, 2, 1, 3}));
}

// Compatibility: the slot behind a group that is not full receives a copy of the former last entry; it is not counted.
TEST_F(FavouriteEntryMoves, ASingleMoveLeavesACopyBehindTheLastEntry) {
  fill(0, 39);
  EXPECT_EQ(move(38, {0}), 0);

  EXPECT_EQ(list.favorite_vch[0][38].service_id, 1);
  EXPECT_EQ(list.favorite_vch[0][39].service_id, 39);
  EXPECT_EQ(list.favorite_vnumber[0], 39);
}

TEST_F(FavouriteEntryMoves, AFullGroupIsMovedInPlace) {
  fill(0, 40);
  fill(1, 1);
  fill(19, 40);
  EXPECT_EQ(move(39, {0}), 0);
  EXPECT_EQ(move(0, {39, 38}, 0), 0);
  EXPECT_EQ(move(39, {0}, 19), 0);

  EXPECT_EQ(list.favorite_vnumber[0], 40);
  EXPECT_EQ(list.favorite_vch[0][0].service_id, 2);
  EXPECT_EQ(list.favorite_vch[0][1].service_id, 1);
  EXPECT_EQ(list.favorite_vch[0][2].service_id, 40);
  EXPECT_EQ(list.favorite_vch[1][0].service_id, 1);
  EXPECT_EQ(list.favorite_vch[19][39].service_id, 1);
  EXPECT_EQ(list.favorite_vnumber[19], 40);
}

TEST_F(FavouriteEntryMoves, RenumberNothing) {
  fill(0, 4);
  move(3, {0});
  EXPECT_EQ(majors(10), (std::vector<int>{2, 3, 4, 1}));
  EXPECT_EQ(favourite_ids(10), (std::vector<int>{1, 2, 3, 0}));

  fill(0, 4);
  move(3, {0, 1});
  EXPECT_EQ(majors(10), (std::vector<int>{3, 4, 1, 2}));
  EXPECT_EQ(favourite_ids(10), (std::vector<int>{2, 3, 0, 1}));
}

// Compatibility: the group is a slot of the table, whether a group is there or not.
TEST_F(FavouriteEntryMoves, WorkOnEverySlotOfTheTable) {
  ASSERT_EQ(list.favorite_group_num, 0);
  for (int group = 0; group < MAX_FAV; ++group) {
    fill(group, 3);
    EXPECT_EQ(move(0, {2}, group), 0);
    EXPECT_EQ(service_ids(view_of(group)), (std::vector<int>{3, 1, 2}));
  }
}

TEST_F(FavouriteEntryMoves, OfSeveralEntriesAreLoggedAtLevelTwo) {
  fill(0, 4);
  const std::string line = "ChannelAPI move_fav_channel:# des_index 3 src_index "
                           "------------------------------------------------ ";

  EXPECT_EQ(writes_at(2, [] { return move(3, {1, 0}); }), (lines{line + "1 \n", line + "0 \n"}));
  EXPECT_EQ(writes_at(1, [] { return move(3, {1, 0}); }), lines{});
  EXPECT_EQ(writes_at(5, [] { return move(3, {1}); }), lines{});
}

TEST_F(FavouriteEntryMoves, OfNothingCompactAllTheSame) {
  for (const int how_many : {0, -1, -32768}) {
    fill(0, 4, 0b0010);
    slots expected = group_and_room(0);
    move_several_by_steps(expected, 4, 2, {});

    EXPECT_EQ(
        writes_at(
            5, [=] { EXPECT_EQ(move_fav_channel(0, 2, static_cast<std::int16_t>(how_many), nullptr), 0) << how_many; }),
        lines{});

    EXPECT_EQ(moved(), (std::vector<int>{1, 3, 4, 4}));
    EXPECT_EQ(std::memcmp(list.favorite_vch[0], expected.data(), sizeof list.favorite_vch[0]), 0);
  }
}

// Compatibility: a move of several entries takes those without a real channel away, and the count stays.
TEST_F(FavouriteEntryMoves, OfSeveralEntriesDropThoseWithoutARealChannel) {
  fill(0, 5, 0b00100);

  EXPECT_EQ(move(4, {0, 1}), 0);

  EXPECT_EQ(moved(), (std::vector<int>{4, 5, 1, 2, 5}));
}

TEST_F(FavouriteEntryMoves, OutsideTheGroupAreRefused) {
  const lines refused = {"ERROR: move_fav_channel:# positions outside the group or given twice\n"};
  for (const int n : {0, 1, 39, 40}) {
    fill(0, n);
    const std::string before = table();
    const auto outside = static_cast<std::uint16_t>(n);
    for (const int dest : {-32768, -1, n, 41, 32767}) {
      EXPECT_EQ(writes_at(0, [=] { EXPECT_EQ(move(dest, {0}), -1); }), refused) << n << ' ' << dest;
      EXPECT_EQ(move_fav_channel(0, static_cast<std::int16_t>(dest), 0, nullptr), -1) << n << ' ' << dest;
    }
    for (const positions &sources :
         {positions{outside}, positions{0xFFFF}, positions{0, outside}, positions{0, 0}, positions{0, 1, 0}}) {
      EXPECT_EQ(writes_at(0, [&] { EXPECT_EQ(move(0, sources), -1); }), refused) << n;
      EXPECT_EQ(writes_at(-1, [&] { return move(0, sources); }), lines{});
    }
    EXPECT_EQ(table(), before) << n;
  }
}

TEST_F(FavouriteEntryMoves, OfAnEntryOntoItsPlaceChangeNothing) {
  fill(0, 40);
  const std::string before = table();
  for (std::uint16_t position = 0; position < 40; ++position) {
    EXPECT_EQ(move(position, {position}), 0);
  }
  EXPECT_EQ(table(), before);
}

TEST_F(FavouriteEntryMoves, OutsideTheTableOrWithoutSourcesAreRefused) {
  fill(0, 2);
  const std::string before = table();
  const auto line = [](int group) {
    return lines{"ERROR: move_fav_channel:# group " + std::to_string(group) +
                 " outside the favourites, or no sources\n"};
  };
  for (const int group : {-32768, -1, 20, 32767}) {
    EXPECT_EQ(writes_at(0, [=] { EXPECT_EQ(move(0, {1}, group), -1); }), line(group));
  }
  for (const std::int16_t how_many : {std::int16_t{1}, std::int16_t{2}, std::int16_t{32767}}) {
    EXPECT_EQ(writes_at(0, [=] { EXPECT_EQ(move_fav_channel(0, 0, how_many, nullptr), -1); }), line(0));
  }
  EXPECT_EQ(table(), before);
}

TEST_F(FavouriteEntryMoves, ACountOutsideTheGroupIsReadAsTheNearestInside) {
  fill(0, 40);
  fill(1, 1);
  list.favorite_vnumber[0] = 41;

  EXPECT_EQ(move(40, {0}), -1);
  EXPECT_EQ(move(39, {40}), -1);
  EXPECT_EQ(move(39, {0}), 0);

  EXPECT_EQ(list.favorite_vch[0][39].service_id, 1);
  EXPECT_EQ(list.favorite_vch[1][0].service_id, 1);
  EXPECT_EQ(list.favorite_vnumber[0], 41);
}

}  // namespace
