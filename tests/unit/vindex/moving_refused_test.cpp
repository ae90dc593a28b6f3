// Moves that are refused: views that do not exist, positions that are not valid. Nothing is moved.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "support/moving_test.h"

namespace {

using namespace test_support;

class MovingRefused : public moving_test {
 protected:
  // Five entries in a group, four of them in the TV view, and a group list in use.
  void SetUp() override {
    moving_test::SetUp();
    fill(10, first_ids(5));
    fill(VIEW_TV, {4, 3, 2, 1});
    fill(VIEW_WORK, first_ids(2));
    show(10, GROUP_FAV);
  }

  // The move fails, logs the line at level 0, nothing at -1, and nothing is moved.
  void expect_refused(int destination, int count, const std::int16_t *sources, const lines &expected) {
    const auto before = std::make_unique<channel_list_st>(list);
    const auto move = [&] {
      EXPECT_EQ(move_channel(static_cast<std::int16_t>(destination), static_cast<std::int16_t>(count), sources), -1);
    };
    EXPECT_EQ(writes_at(0, move), expected);
    EXPECT_EQ(writes_at(5, move), expected);
    EXPECT_EQ(writes_at(-1, move), lines{});
    EXPECT_EQ(std::memcmp(&list, before.get(), sizeof list), 0);
    EXPECT_EQ(service_ids(VIEW_WORK), (std::vector<int>{1, 2}));
  }
  void expect_refused(int destination, const positions &sources) {
    expect_refused(destination, static_cast<int>(sources.size()), sources.data(),
                   {"ERROR: move_channel:# positions outside the view or given twice\n"});
  }
};

TEST_F(MovingRefused, ADestinationOutsideTheView) {
  for (const int destination : {-32768, -1, 5, 6, 40, 32767}) {
    expect_refused(destination, {0});
    expect_refused(destination, {0, 1});
    expect_refused(destination, {});
  }
}

TEST_F(MovingRefused, ASourceOutsideTheView) {
  for (const std::int16_t source : {std::int16_t{-32768}, std::int16_t{-1}, std::int16_t{5}, std::int16_t{6},
                                    std::int16_t{4999}, std::int16_t{5000}, std::int16_t{32767}}) {
    expect_refused(1, {source});
    expect_refused(1, {source, 0});
    expect_refused(1, {0, 2, source});
  }
}

TEST_F(MovingRefused, TheSameSourceTwice) {
  expect_refused(1, {3, 3});
  expect_refused(1, {4, 0, 3, 4});
  expect_refused(1, {0, 1, 2, 3, 4, 0});
}

TEST_F(MovingRefused, TheSamePositionAsSourceAndDestinationIsNotGivenTwice) {
  EXPECT_EQ(move_to(1, {1}), 1);
  EXPECT_EQ(move_to(1, {1, 2}), 1);
}

TEST_F(MovingRefused, FirstAndLastPositionsAreInside) {
  EXPECT_EQ(move_to(0, {4}), 1);
  EXPECT_EQ(move_to(4, {0}), 1);
  EXPECT_EQ(move_to(4, {4, 3, 2, 1, 0}), 1);
}

TEST_F(MovingRefused, ANullPointerToPositions) {
  for (const int count : {1, 2, 32767}) {
    expect_refused(0, count, nullptr, {"ERROR: move_channel:# src_indices is null\n"});
    expect_refused(-1, count, nullptr, {"ERROR: move_channel:# src_indices is null\n"});
  }
}

TEST_F(MovingRefused, MorePositionsThanThereAreEntries) {
  const positions many(32767, 0);

  expect_refused(0, many);
}

TEST_F(MovingRefused, AnEmptyViewHasNoPositions) {
  init_vindex(10);

  expect_refused(0, {0});
  expect_refused(0, {0, 1});
  expect_refused(0, {});
}

TEST_F(MovingRefused, ACountBelowZeroIsAnEmptyView) {
  list.favorite_vnumber[0] = -1;

  expect_refused(0, {0});
  expect_refused(0, {});
}

TEST_F(MovingRefused, WithoutACurrentViewNothingIsSaid) {
  list.cur_vch = nullptr;
  const std::int16_t source = 0;
  expect_refused(1, 1, &source, {});

  change_vindex_type(10);
  list.cur_vnumber = nullptr;
  expect_refused(1, 1, &source, {});
}

TEST_F(MovingRefused, AServiceTypeWithoutViewIsWarnedOfByTheLookups) {
  for (const std::int8_t code : unknown_codes) {
    list.service_type = code;
    const auto before = std::make_unique<channel_list_st>(list);
    const std::string warning = ":# unknown vch_type=" + std::to_string(code) + "\n";
    const lines warnings = {"WARNING: get_virtual_channel_st" + warning,
                            "WARNING: get_virtual_channel_vnumber" + warning};
    for (const positions &sources : std::vector<positions>{{0}, {0, 1}, {}}) {
      EXPECT_EQ(writes_at(1, [&] { EXPECT_EQ(move_to(2, sources), -1); }), warnings);
      EXPECT_EQ(writes_at(5, [&] { return move_to(2, sources); }), warnings);
      EXPECT_EQ(writes_at(0, [&] { return move_to(2, sources); }), lines{});
    }
    EXPECT_EQ(std::memcmp(&list, before.get(), sizeof list), 0);
  }
}

TEST_F(MovingRefused, AServiceTypeWithoutViewComesBeforeThePositions) {
  list.service_type = 7;

  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(move_channel(-1, 1, nullptr), -1); }), lines{});
}

TEST_F(MovingRefused, ADestroyedListHasNoCurrentView) {
  destroy_channel_list();

  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(move_to(0, {0}), -1); }), lines{});
}

}  // namespace
