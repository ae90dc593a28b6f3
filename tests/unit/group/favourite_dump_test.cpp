// The dump of the favourites, whole.
#include "support/favourite_test.h"

namespace {

using namespace test_support;

const std::string first_line = "********************************   FAVORITE LIST    *****************************\n";
const std::string last_line = "**************************************************************************\n";

lines dump(int show_channels, int level = 2) {
  return writes_at(level, [show_channels] {
    print_fav_list(show_channels);
    return 0;
  });
}

lines group_lines(int index, int id, int count, const std::string &name, int name_len) {
  return {"\t\t=================== " + std::to_string(index) + " ====================================\n",
          "\t\t * index: " + std::to_string(index) + "\n",
          "\t\t * id: " + std::to_string(id) + "\n",
          "\t\t * vnumber: " + std::to_string(count) + "\n",
          "\t\t * name: " + name + "\n",
          "\t\t * name_len: " + std::to_string(name_len) + "\n",
          "\t\t=========================================================\n"};
}

lines framed(std::initializer_list<lines> parts) { return joined({{first_line}, joined(parts), {last_line}}); }

class FavouriteDump : public favourite_test {};

TEST_F(FavouriteDump, AnEmptyTablePrintsItsFrame) {
  EXPECT_EQ(dump(0), framed({}));
  EXPECT_EQ(dump(1), framed({}));
}

TEST_F(FavouriteDump, EveryGroupIsPrinted) {
  create("News");
  create("Sport");
  list.favorite_group[1].id = 17;
  fill_group(1, 2);

  EXPECT_EQ(dump(0), framed({group_lines(0, 0, 0, "News", 4), group_lines(1, 17, 2, "Sport", 5)}));
}

TEST_F(FavouriteDump, EntriesArePrintedOnRequest) {
  create("News");
  create("Sport");
  fill_group(0, 2);
  list.favorite_vch[0][1].major_ch_num = -7;
  list.favorite_vch[0][1].minor_ch_num = 32767;
  const lines entries = {"\t\t * major: 1-0\n", "\t\t * major: -7-32767\n"};
  const lines expected = framed({group_lines(0, 0, 2, "News", 4), entries, group_lines(1, 1, 0, "Sport", 5)});

  for (const int show_channels : {1, 2, -1}) {
    EXPECT_EQ(dump(show_channels), expected) << show_channels;
  }
}

TEST_F(FavouriteDump, IsPrintedAtLevelTwoAndNotBelow) {
  create("News");
  fill_group(0, 1);

  EXPECT_EQ(dump(1, 2).size(), 10U);
  EXPECT_EQ(dump(1, 1), lines{});
}

// Compatibility: the length says whether a group is printed, not the name.
TEST_F(FavouriteDump, GroupsWithoutALengthAreSkippedWithTheirEntries) {
  create("News");
  create("Sport");
  create("Films");
  list.favorite_group[1].name_len = 0;
  fill_group(1, 3);

  EXPECT_EQ(dump(1), framed({group_lines(0, 0, 0, "News", 4), group_lines(2, 2, 0, "Films", 5)}));
}

TEST_F(FavouriteDump, ABlankedGroupIsStillPrinted) {
  create("News");
  EXPECT_EQ(rename_favorite_group(0, "", 0), -1);

  EXPECT_EQ(dump(0), framed({group_lines(0, 0, 0, "", 4)}));
}

TEST_F(FavouriteDump, AnyLengthButZeroIsPrintedAsItIs) {
  create("News");
  for (const int length : {-32768, -1, 1, 97, 98, 32767}) {
    list.favorite_group[0].name_len = static_cast<std::int16_t>(length);

    EXPECT_EQ(dump(0), framed({group_lines(0, 0, 0, "News", length)}));
  }
}

TEST_F(FavouriteDump, ANameWithoutTerminatorIsPrintedWithinItsField) {
  const std::string name(98, 'n');
  create(name);
  list.favorite_group[1].reserved_0 = 0x6E6E;

  EXPECT_EQ(dump(0), framed({group_lines(0, 0, 0, name, 98)}));
}

TEST_F(FavouriteDump, AFullTableIsPrintedToItsEnd) {
  fill_everything();

  const lines printed = dump(1);

  EXPECT_EQ(printed.size(), 2U + 20U * (7U + 40U));
  EXPECT_EQ(printed[printed.size() - 2], "\t\t * major: 800-0\n");
}

TEST_F(FavouriteDump, ACountOutsideAGroupIsPrintedAndItsEntriesAreThoseInside) {
  create("News");
  fill_group(0, 40);
  list.favorite_vnumber[0] = 32767;
  EXPECT_EQ(dump(1).size(), 2U + 7U + 40U);
  EXPECT_EQ(dump(1)[4], "\t\t * vnumber: 32767\n");

  list.favorite_vnumber[0] = -1;
  EXPECT_EQ(dump(1), framed({group_lines(0, 0, -1, "News", 4)}));
}

TEST_F(FavouriteDump, GroupsBehindTheCountAreNotPrinted) {
  create_groups(2);
  list.favorite_group_num = 1;

  EXPECT_EQ(dump(0), framed({group_lines(0, 0, 0, "Group 0", 7)}));
}

}  // namespace
