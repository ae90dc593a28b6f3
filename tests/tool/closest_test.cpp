// What somebody meant who mistyped a word.
#include "chlist/closest.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace {

using chlist::closest;
using chlist::did_you_mean;
using chlist::edit_distance;

TEST(EditDistance, CountsWhatIsAddedLeftOutReplacedAndSwapped) {
  EXPECT_EQ(edit_distance("", ""), 0U);
  EXPECT_EQ(edit_distance("list", "list"), 0U);
  EXPECT_EQ(edit_distance("", "list"), 4U);
  EXPECT_EQ(edit_distance("list", ""), 4U);
  EXPECT_EQ(edit_distance("lists", "list"), 1U);
  EXPECT_EQ(edit_distance("lst", "list"), 1U);
  EXPECT_EQ(edit_distance("lisp", "list"), 1U);
  EXPECT_EQ(edit_distance("lits", "list"), 1U);
  EXPECT_EQ(edit_distance("kitten", "sitting"), 3U);
}

// What was swapped is not edited again.
TEST(EditDistance, IsTheRestrictedOne) { EXPECT_EQ(edit_distance("ca", "abc"), 3U); }

TEST(EditDistance, CountsCharactersNotBytes) { EXPECT_EQ(edit_distance("Łódź", "Lodź"), 2U); }

TEST(Closest, IsTheNearestWord) {
  const std::vector<std::string> words = {"number", "name", "minor", "frequency"};

  EXPECT_EQ(closest("nmae", words), "name");
  EXPECT_EQ(closest("names", words), "name");
  EXPECT_EQ(closest("nubmer", words), "number");
  EXPECT_EQ(closest("frequenzy", words), "frequency");
  EXPECT_EQ(closest("FREQENCY", words), "frequency");
}

TEST(Closest, IsTheFirstOfSeveral) { EXPECT_EQ(closest("fat", {"cat", "bat"}), "cat"); }

TEST(Closest, OfAWordThatIsFarFromAllIsNone) {
  EXPECT_EQ(closest("colour", {"number", "name", "type"}), std::nullopt);
  EXPECT_EQ(closest("nnam", {"name"}), std::nullopt);
  EXPECT_EQ(closest("abcd", {"abxy"}), std::nullopt);
  EXPECT_EQ(closest("abcdefg", {"abcdexy"}), "abcdexy");
  EXPECT_EQ(closest("abcdefg", {"abcdxyz"}), std::nullopt);
}

TEST(Closest, ReplacesNoWholeWord) {
  EXPECT_EQ(closest("x", {"y"}), std::nullopt);
  EXPECT_EQ(closest("", {"y"}), std::nullopt);
  EXPECT_EQ(closest("name", {}), std::nullopt);
}

TEST(DidYouMean, AsksOnlyWhenAWordIsNear) {
  EXPECT_EQ(did_you_mean("lsit", {"list"}), ": did you mean \"list\"?");
  EXPECT_EQ(did_you_mean("export", {"list"}), "");
}

TEST(UnknownName, HasTheNamesThatThereAre) {
  EXPECT_EQ(chlist::unknown_name("view", "tvv", {"all", "tv"}),
            "no view \"tvv\": did you mean \"tv\"? There are all, tv");
  EXPECT_EQ(chlist::unknown_name("view", "x", {"all", "tv"}), "no view \"x\": there are all, tv");
}

}  // namespace
