// Names without regard to case, service types by name, and cells of CSV.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "chlist/text/utf8.h"

namespace {

using chlist::contains_name;
using chlist::is_same_name;

TEST(Names, CaseAndAccentsDoNotCount) {
  EXPECT_TRUE(is_same_name("COMÉDIA", "comedia"));
  EXPECT_TRUE(is_same_name("Łódź", "łodz"));
  EXPECT_TRUE(is_same_name("МИР", "мир"));
  EXPECT_FALSE(is_same_name("Łódź", "Lodz"));
  EXPECT_TRUE(is_same_name("aZ[`{@", "Az[`{@"));
  EXPECT_FALSE(is_same_name("[", "{"));
  EXPECT_FALSE(is_same_name("@", "`"));
  EXPECT_FALSE(is_same_name("News", "News "));
}

TEST(Names, APartMayStandAnywhere) {
  EXPECT_TRUE(contains_name("BBC News", "news"));
  EXPECT_TRUE(contains_name("BBC News", "bBc"));
  EXPECT_TRUE(contains_name("Canal Comédia", "COME"));
  EXPECT_TRUE(contains_name("BBC News", ""));
  EXPECT_TRUE(contains_name("", ""));
  EXPECT_FALSE(contains_name("New", "News"));
}

}  // namespace
