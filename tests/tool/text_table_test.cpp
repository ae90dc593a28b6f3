// Tables that fit: which columns give way, and to what.
#include "chlist/text_table.h"

#include <gtest/gtest.h>

#include <string>

#include "chlist/text/utf8.h"

namespace {

using chlist::shortened;
using chlist::text_table;

text_table table_of_services() {
  text_table table({{"number", true}, {"name", false, true}, {"provider", false}});
  table.add({"1234567890", "Kanal Morgenrøde International", "Northlight Media Group"});
  table.add({"2", "Ö", ""});
  return table;
}

TEST(TextTable, IsAsWideAsItsCells) {
  EXPECT_EQ(table_of_services().text(std::nullopt),
            "    number  name                            provider\n"
            "1234567890  Kanal Morgenrøde International  Northlight Media Group\n"
            "         2  Ö\n");
  EXPECT_EQ(table_of_services().text(66), table_of_services().text(std::nullopt));
}

TEST(TextTable, ShortensOthersBeforeNames) {
  EXPECT_EQ(table_of_services().text(65), "    number  name                            provider\n"
                                          "1234567890  Kanal Morgenrøde International  Northlight Media Gro…\n"
                                          "         2  Ö\n");
  EXPECT_EQ(table_of_services().text(50), "    number  name                          provider\n"
                                          "1234567890  Kanal Morgenrøde Internatio…  Northli…\n"
                                          "         2  Ö\n");
}

TEST(TextTable, NeverShortensNumbers) {
  EXPECT_EQ(table_of_services().text(20), "    number  name  p…\n"
                                          "1234567890  Kan…  N…\n"
                                          "         2  Ö\n");
}

TEST(TextTable, LeavesOutColumnsAtTheRightThatHaveNoRoomAndTellsWhich) {
  EXPECT_EQ(table_of_services().text(19), "    number  name\n"
                                          "1234567890  Kanal …\n"
                                          "         2  Ö\n"
                                          "1 column left out:\n"
                                          "provider\n");
  EXPECT_EQ(table_of_services().text(15), "    number\n"
                                          "1234567890\n"
                                          "         2\n"
                                          "2 columns left\n"
                                          "out: name,\n"
                                          "provider\n");
}

TEST(TextTable, KeepsItsFirstColumnHoweverNarrowTheScreen) {
  EXPECT_TRUE(table_of_services().text(1).starts_with("    number\n1234567890\n         2\n"));
}

TEST(TextTable, OfWideCharactersFits) {
  text_table table({{"name", false, true}});
  table.add({"テレビ放送チャンネル一覧表示"});
  EXPECT_EQ(table.text(16), "name\nテレビ放送チャ…\n");
  EXPECT_EQ(table.text(17), "name\nテレビ放送チャン…\n");
}

TEST(Shortened, EndsInAnEllipsis) {
  EXPECT_EQ(shortened("News", 4), "News");
  EXPECT_EQ(shortened("News", 3), "Ne…");
  EXPECT_EQ(shortened("News", 1), "…");
  EXPECT_EQ(shortened("News", 0), "");
  EXPECT_EQ(shortened("", 0), "");
}

}  // namespace
