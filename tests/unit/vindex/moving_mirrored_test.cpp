// While a group list is in use, a move in the current view is repeated in the TV or radio view of the service type. The
// single move mixes the positions of both views; receivers show the order that this gives.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

#include "support/moving_test.h"

namespace {

using namespace test_support;

class MovingMirrored : public moving_test {
 protected:
  // A favourite group with its TV view behind it; numbers above 1000 are the TV view's own copies.
  void fill_group_and_tv(const std::vector<int> &group, const std::vector<int> &tv) {
    fill(10, group);
    fill(VIEW_TV, tv, 1000);
    show(10, GROUP_FAV);
  }
  [[nodiscard]] std::vector<virtual_channel_st> tv_slots() const { return {list.tv_vch, list.tv_vch + MAX_TV_CHANNEL}; }
  [[nodiscard]] bool tv_is(const std::vector<virtual_channel_st> &slots) const {
    return std::memcmp(list.tv_vch, slots.data(), sizeof list.tv_vch) == 0;
  }
};

TEST_F(MovingMirrored, OneEntryGoesToTheTvPositionOfTheDestination) {
  fill_group_and_tv({1, 2, 3, 4}, {1, 2, 3, 4});

  EXPECT_EQ(move_to(2, {0}), 1);

  EXPECT_EQ(service_ids(10), (std::vector<int>{2, 3, 1, 4}));
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{2, 3, 1, 4}));
}

TEST_F(MovingMirrored, OneEntryOpensTheGapAtTheCurrentViewsDestination) {
  fill_group_and_tv({1, 2, 3}, {8, 3, 9, 1, 2, 7});

  EXPECT_EQ(move_to(0, {2}), 1);

  // Out at 1: 8 9 1 2 7 7; from 0 up, 6 - 3 entries: 8 8 9 1 7 7; in at 3.
  EXPECT_EQ(service_ids(10), (std::vector<int>{3, 1, 2}));
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{8, 8, 9, 3, 7, 7}));
}

TEST_F(MovingMirrored, OneEntryMayRunOverTheCountOfTheServiceTypeView) {
  fill_group_and_tv({1, 2, 3, 4, 5}, {5, 1, 2});

  EXPECT_EQ(move_to(4, {0}), 1);

  // Out at 1: 5 2 2; from 4 up, 3 - 0 entries, all empty; in at 0.
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1, 2, 2}));
  EXPECT_TRUE(slots_behind_count_are_zero(VIEW_TV, 4000));
  EXPECT_EQ(list.tv_vnumber, 3);
}

TEST_F(MovingMirrored, OneEntryIsTheCurrentViewsCopy) {
  fill_group_and_tv({1, 2, 3}, {1, 2, 3});
  const virtual_channel_st entry = list.favorite_vch[0][0];

  move_to(1, {0});

  EXPECT_EQ(std::memcmp(&list.tv_vch[1], &entry, sizeof entry), 0);
  EXPECT_EQ(majors(VIEW_TV), (std::vector<int>{1002, 1, 1003}));
}

TEST_F(MovingMirrored, SeveralEntriesAreTheServiceTypeViewsOwnCopies) {
  fill_group_and_tv({1, 2, 3}, {9, 3, 2, 1});

  EXPECT_EQ(move_to(0, {2, 1}), 1);

  EXPECT_EQ(majors(10), (std::vector<int>{1, 3, 2}));
  EXPECT_EQ(majors(VIEW_TV), (std::vector<int>{1009, 1001, 1003, 1002}));
}

TEST_F(MovingMirrored, SeveralEntriesFollowTheDestinationInEachView) {
  fill_group_and_tv({1, 2, 3, 4, 5}, {9, 5, 4, 8, 3, 2, 7, 1});

  EXPECT_EQ(move_to(1, {4, 0}), 1);

  EXPECT_EQ(service_ids(10), (std::vector<int>{2, 5, 1, 3, 4}));
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{9, 4, 8, 3, 2, 5, 1, 7}));
  EXPECT_EQ(list.tv_vnumber, 8);
  EXPECT_TRUE(slots_behind_count_are_zero(VIEW_TV, 4000));
}

TEST_F(MovingMirrored, NoPositionsCompactTheServiceTypeViewToo) {
  fill_group_and_tv({1, 2}, {1, 9, 2});
  list.tv_vch[1].rch = nullptr;

  EXPECT_EQ(move_channel(0, 0, nullptr), 1);

  EXPECT_EQ(service_ids(10), (std::vector<int>{1, 2}));
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1, 2, 2}));
}

TEST_F(MovingMirrored, AnyGroupListIsMirrored) {
  for (const int kind : {1, 2, 3, 4, 5, 6, 7, 127, -1, -128}) {
    fill(VIEW_USER, {1, 2, 3});
    fill(VIEW_TV, {1, 2, 3});
    show(VIEW_USER, kind);

    move_to(2, {0});

    EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{2, 3, 1})) << kind;
  }
}

TEST_F(MovingMirrored, TheViewOfTheServiceTypeIsTheOneThatFollows) {
  const std::vector<std::int8_t> codes = {0, 1, 2, 3, 4, 5, 11, 29};
  for (const std::int8_t service_type : codes) {
    for (const std::int8_t code : codes) {
      fill(code, {1, 2, 3});
    }
    fill(10, {1, 2, 3});
    show(10, GROUP_FAV, service_type);

    move_to(2, {0});

    for (const std::int8_t code : codes) {
      EXPECT_EQ(service_ids(code), (code == service_type ? std::vector<int>{2, 3, 1} : std::vector<int>{1, 2, 3}));
    }
  }
}

TEST_F(MovingMirrored, ChannelsAreFoundByTagAndIdentityWithinTheTolerance) {
  struct difference {
    void (*make)(virtual_channel_st &);
    bool is_found;
  };
  const std::vector<difference> differences = {
      {[](virtual_channel_st &entry) { entry.frequency += 2499; }, true},
      {[](virtual_channel_st &entry) { entry.frequency -= 2499; }, true},
      {[](virtual_channel_st &entry) { entry.frequency += 2500; }, false},
      {[](virtual_channel_st &entry) { entry.frequency -= 2500; }, false},
      {[](virtual_channel_st &entry) { entry.vch_tag = 1; }, false},
      {[](virtual_channel_st &entry) { entry.net_index = 2; }, false},
      {[](virtual_channel_st &entry) { entry.network_id = 2; }, false},
      {[](virtual_channel_st &entry) { entry.ts_id = 2; }, false},
      {[](virtual_channel_st &entry) { entry.polarisation = 1; }, false},
      {[](virtual_channel_st &entry) { entry.minor_ch_num = 1; }, true},
  };
  for (const difference &each : differences) {
    fill_group_and_tv({1, 2, 3}, {1, 2, 3});
    each.make(list.tv_vch[0]);

    move_to(2, {0});

    const bool was_mirrored = service_ids(VIEW_TV) == std::vector<int>{2, 3, 1};
    EXPECT_EQ(was_mirrored, each.is_found) << &each - differences.data();
  }
}

TEST_F(MovingMirrored, AnEntryWithoutFrequencyIsFoundWithoutTagAndPolarisation) {
  fill_group_and_tv({1, 2, 3}, {1, 2, 3});
  list.favorite_vch[0][0].frequency = 0;
  list.favorite_vch[0][0].vch_tag = 4;
  list.favorite_vch[0][0].polarisation = 1;

  move_to(2, {0});

  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{2, 3, 1}));
}

TEST_F(MovingMirrored, OneEntryThatTheServiceTypeViewLacksIsMovedInTheCurrentViewAlone) {
  fill_group_and_tv({1, 2, 3}, {3, 2, 9});
  const std::vector<virtual_channel_st> before = tv_slots();

  EXPECT_EQ(move_to(2, {0}), 1);

  EXPECT_EQ(service_ids(10), (std::vector<int>{2, 3, 1}));
  EXPECT_TRUE(tv_is(before));
}

TEST_F(MovingMirrored, ADestinationThatTheServiceTypeViewLacksLeavesThatViewAlone) {
  for (const positions &sources : std::vector<positions>{{0}, {0, 1}, {}}) {
    fill_group_and_tv({1, 2, 3}, {1, 2, 9});
    const std::vector<virtual_channel_st> before = tv_slots();

    EXPECT_EQ(move_to(2, sources), 1);

    EXPECT_EQ(service_ids(10).size(), 3U);
    EXPECT_TRUE(tv_is(before)) << sources.size();
  }
}

TEST_F(MovingMirrored, OfSeveralEntriesThoseThatTheServiceTypeViewHoldsAreMirrored) {
  fill_group_and_tv({1, 2, 3, 4}, {4, 2, 9, 1});

  EXPECT_EQ(move_to(0, {3, 2, 1}), 1);

  EXPECT_EQ(service_ids(10), (std::vector<int>{1, 4, 3, 2}));
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{9, 1, 4, 2}));
}

TEST_F(MovingMirrored, AnEmptyEntryDoesNotTakeAnEmptiedSlotAgain) {
  fill_group_and_tv({1, 2, 3, 4}, {4, 1, 3, 9});
  list.favorite_vch[0][1] = {};

  EXPECT_EQ(move_to(3, {0, 1, 2}), 1);

  EXPECT_EQ(service_ids(10), (std::vector<int>{4, 1, 0, 3}));
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{4, 1, 3, 9}));
}

TEST_F(MovingMirrored, AnEmptyServiceTypeViewStaysEmpty) {
  for (const positions &sources : std::vector<positions>{{0}, {0, 1}, {}}) {
    fill_group_and_tv({1, 2, 3}, {});

    EXPECT_EQ(move_to(2, sources), 1);

    EXPECT_EQ(list.tv_vnumber, 0);
    EXPECT_TRUE(slots_behind_count_are_zero(VIEW_TV, 4000));
  }
}

TEST_F(MovingMirrored, AServiceTypeViewThatIsTheCurrentOneIsMovedOnce) {
  fill(VIEW_TV, first_ids(6));
  show(VIEW_TV, GROUP_FAV);
  move_to(4, {1});
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1, 3, 4, 5, 2, 6}));

  fill(VIEW_TV, first_ids(6));
  show(VIEW_TV, GROUP_FAV);
  move_to(1, {4, 5});
  EXPECT_EQ(service_ids(VIEW_TV), (std::vector<int>{1, 2, 5, 6, 3, 4}));
}

TEST_F(MovingMirrored, AFullServiceTypeViewDoesNotSpill) {
  fill(VIEW_USER, first_ids(5000));
  fill(VIEW_TV, first_ids(4000), 5000);
  show(VIEW_USER, GROUP_GENRE);
  for (const int destination : {0, 1, 3998, 3999, 4000, 4500, 4999}) {
    for (const std::int16_t source : {std::int16_t{0}, std::int16_t{2000}, std::int16_t{3999}}) {
      EXPECT_TRUE(moves_like_the_model(destination, {source}));
      EXPECT_TRUE(moves_like_the_model(destination, {source, 7, 8}));
      EXPECT_EQ(list.tv_vnumber, 4000);
      EXPECT_EQ(list.reserved_296118[0], 0);
    }
  }
}

TEST_F(MovingMirrored, EveryMoveOfOneAgreesWithTheModelWhateverTheOrderOfTheTvView) {
  for (int n = 1; n <= 5; ++n) {
    std::vector<int> tv = first_ids(n);
    do {
      for (int destination = 0; destination < n; ++destination) {
        for (int source = 0; source < n; ++source) {
          fill_group_and_tv(first_ids(n), tv);
          EXPECT_TRUE(moves_like_the_model(destination, {static_cast<std::int16_t>(source)}, 16)) << n;
        }
      }
    } while (std::next_permutation(tv.begin(), tv.end()));
  }
}

TEST_F(MovingMirrored, EveryMoveOfOneAmongSixAgreesWithTheModel) {
  for (const std::vector<int> &tv : std::vector<std::vector<int>>{
           {1, 2, 3, 4, 5, 6}, {6, 5, 4, 3, 2, 1}, {9, 4, 8, 2, 6, 1, 7, 3, 5}, {3, 1, 5}, {8, 9}}) {
    for (int destination = 0; destination < 6; ++destination) {
      for (int source = 0; source < 6; ++source) {
        fill_group_and_tv(first_ids(6), tv);
        EXPECT_TRUE(moves_like_the_model(destination, {static_cast<std::int16_t>(source)}));
      }
    }
  }
}

TEST_F(MovingMirrored, EveryChoiceAgreesWithTheModel) {
  for (const std::vector<int> &tv :
       std::vector<std::vector<int>>{{1, 2, 3, 4, 5}, {5, 4, 3, 2, 1}, {9, 4, 8, 2, 1, 7, 3, 5}, {3, 1, 5}, {9}}) {
    for (int destination = 0; destination < 5; ++destination) {
      for_each_choice(5, [&](const positions &sources) {
        fill_group_and_tv(first_ids(5), tv);
        EXPECT_TRUE(moves_like_the_model(destination, sources, 16));
      });
    }
  }
}

TEST_F(MovingMirrored, RandomMovesOneAfterTheOtherAgreeWithTheModel) {
  std::mt19937 random(4);
  for (int round = 0; round < 300; ++round) {
    const int n = 1 + random_below(random, 40);
    std::vector<int> tv = first_ids(60);
    std::shuffle(tv.begin(), tv.end(), random);
    tv.resize(static_cast<std::size_t>(random_below(random, 61)));
    fill_group_and_tv(first_ids(n), tv);
    list.use_group_list = static_cast<std::int8_t>(random_below(random, 4));
    for (int i = 0; i < 8; ++i) {
      list.favorite_vch[0][random_below(random, n)].rch = random_below(random, 3) == 0 ? nullptr : service_;
      list.tv_vch[random_below(random, 60)].rch = random_below(random, 3) == 0 ? nullptr : service_;
      EXPECT_TRUE(
          moves_like_the_model(random_below(random, n), random_choice(random, n, random_below(random, n + 1)), 128));
    }
  }
}

}  // namespace
