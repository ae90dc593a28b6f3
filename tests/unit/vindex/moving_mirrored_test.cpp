// While a group list is in use, a move in the current view is repeated in the TV or radio view of the service type. The
// single move mixes the positions of both views; receivers show the order that this gives.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <utility>
#include <vector>

#include "mirrored_test.h"

namespace {

using namespace test_support;

class MovingMirrored : public mirrored_test {
 protected:
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
  const std::pair<positions, std::vector<int>> moves[] = {{{0}, {2, 3, 1}}, {{0, 1}, {3, 1, 2}}, {{}, {1, 2, 3}}};
  for (const auto &[sources, moved] : moves) {
    fill_group_and_tv({1, 2, 3}, {1, 2, 9});
    const std::vector<virtual_channel_st> before = tv_slots();

    EXPECT_EQ(move_to(2, sources), 1);

    EXPECT_EQ(service_ids(10), moved);
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

}  // namespace
