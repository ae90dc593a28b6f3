// Who gets which number.
#include "chlist/scan/logical_channels.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace {

using claims = std::vector<chlist::number_claim>;
using numbers = std::vector<std::optional<int>>;

chlist::number_claim claim(std::optional<int> number, int rank = 0, std::optional<int> simulcast = std::nullopt) {
  return {number, simulcast, rank};
}

TEST(ScanNumbers, AreThoseOfTheNetwork) {
  EXPECT_EQ(chlist::settle({claim(3), claim(1), claim(std::nullopt)}).numbers, (numbers{3, 1, std::nullopt}));
}

TEST(ScanNumbers, BeyondWhatAListShowsAreNone) {
  EXPECT_EQ(chlist::settle({claim(0), claim(32768), claim(-1), claim(32767)}).numbers,
            (numbers{std::nullopt, std::nullopt, std::nullopt, 32767}));
}

TEST(ScanNumbers, TheFirstOfSeveralKeepsItsNumber) {
  const chlist::settled_numbers made = chlist::settle({claim(1), claim(1), claim(800), claim(1)});
  EXPECT_EQ(made.numbers, (numbers{1, 801, 800, 802}));
  EXPECT_EQ(made.moved, 2U);
}

TEST(ScanNumbers, TelevisionKeepsItsNumberBeforeRadio) {
  EXPECT_EQ(chlist::settle({claim(1, 1), claim(1, 0)}).numbers, (numbers{800, 1}));
}

TEST(ScanNumbers, HighDefinitionChangesNumbersWithItsTwin) {
  EXPECT_EQ(chlist::settle({claim(1), claim(501, 0, 1), claim(2)}).numbers, (numbers{501, 1, 2}));
  EXPECT_EQ(chlist::settle({claim(1), claim(std::nullopt, 0, 1)}).numbers, (numbers{std::nullopt, 1}));
  EXPECT_EQ(chlist::settle({claim(501, 0, 1), claim(2)}).numbers, (numbers{1, 2}));
}

TEST(ScanNumbers, GoOnBehindTheLastWhenThereIsNoRoom) {
  claims all;
  for (int number = 800; number <= 999; ++number) {
    all.push_back(claim(number));
  }
  all.push_back(claim(1200));
  all.push_back(claim(1200));
  EXPECT_EQ(chlist::settle(all).numbers.back(), 1201);
}

TEST(ScanNumbers, AreNoneWhenAllAreTaken) {
  claims all;
  for (int number = 800; number <= 999; ++number) {
    all.push_back(claim(number));
  }
  all.push_back(claim(32767));
  all.push_back(claim(32767));
  EXPECT_EQ(chlist::settle(all).numbers.back(), std::nullopt);
}

}  // namespace
