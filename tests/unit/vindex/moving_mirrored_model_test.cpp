// Mirrored moves against the model of what receivers do, step by step.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "mirrored_test.h"

namespace {

using namespace test_support;

class MovingMirroredModel : public mirrored_test {};

TEST_F(MovingMirroredModel, AFullServiceTypeViewDoesNotSpill) {
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

TEST_F(MovingMirroredModel, EveryMoveOfOneAgreesWithTheModelWhateverTheOrderOfTheTvView) {
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

TEST_F(MovingMirroredModel, EveryMoveOfOneAmongSixAgreesWithTheModel) {
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

TEST_F(MovingMirroredModel, EveryChoiceAgreesWithTheModel) {
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

TEST_F(MovingMirroredModel, RandomMovesOneAfterTheOtherAgreeWithTheModel) {
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
