// Renaming a favourite group: what is cleared, how much is copied, and the failing rename that blanks.
#include "support/favourite_test.h"

namespace {

using namespace test_support;

class FavouriteRenaming : public favourite_test {
 protected:
  // Three groups whose names fill their fields.
  void SetUp() override {
    favourite_test::SetUp();
    create_groups(3);
    restore();
  }
  void restore() {
    for (int index = 0; index < 3; ++index) {
      std::memset(list.favorite_group[index].name, 'o', sizeof list.favorite_group[index].name);
      list.favorite_group[index].name_len = 98;
    }
  }
};

int rename(int id, const std::string &name, int length) {
  return rename_favorite_group(static_cast<std::int16_t>(id), name.data(), static_cast<std::int16_t>(length));
}

TEST_F(FavouriteRenaming, ReplacesTheNameAndItsLength) {
  const group_st before = list.favorite_group[1];

  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(rename(1, "News", 4), 0); }), lines{});

  group_st expected = before;
  std::memset(expected.name, 0, 96);
  std::memcpy(expected.name, "News", 4);
  expected.name_len = 4;
  EXPECT_TRUE(same_bytes(list.favorite_group[1], expected));
}

TEST_F(FavouriteRenaming, LeavesTheOtherGroups) {
  const group_st first = list.favorite_group[0];
  const group_st third = list.favorite_group[2];

  rename(1, "News", 4);

  EXPECT_TRUE(same_bytes(list.favorite_group[0], first));
  EXPECT_TRUE(same_bytes(list.favorite_group[2], third));
}

// Compatibility: 96 of the 98 bytes are cleared; what the old name had behind them stays. The name is cut to 97 bytes,
// so that the record behind is never written.
TEST_F(FavouriteRenaming, CopiesAsManyBytesAsAskedUpTo97) {
  const std::string name(32767, 'n');
  const struct {
    int length;
    int stored;
    std::string field;
  } cases[] = {{1, 1, "n" + std::string(95, '\0') + "oo"}, {95, 95, std::string(95, 'n') + std::string(1, '\0') + "oo"},
               {96, 96, std::string(96, 'n') + "oo"},      {97, 97, std::string(97, 'n') + "o"},
               {98, 97, std::string(97, 'n') + "o"},       {99, 97, std::string(97, 'n') + "o"},
               {32767, 97, std::string(97, 'n') + "o"}};
  for (const auto &each : cases) {
    restore();
    const group_st behind = list.favorite_group[2];

    EXPECT_EQ(rename(1, name, each.length), 0) << each.length;

    EXPECT_EQ(list.favorite_group[1].name_len, each.stored) << each.length;
    EXPECT_EQ(name_field(list.favorite_group[1]), each.field) << each.length;
    EXPECT_TRUE(same_bytes(list.favorite_group[2], behind)) << each.length;
  }
}

TEST_F(FavouriteRenaming, ReadsNoMoreThan97Bytes) {
  const std::vector<char> name(97, 'n');

  EXPECT_EQ(rename_favorite_group(1, name.data(), 98), 0);

  EXPECT_EQ(list.favorite_group[1].name_len, 97);
}

TEST_F(FavouriteRenaming, CopiesBytesNotText) {
  EXPECT_EQ(rename(1, std::string("a\0b", 3), 3), 0);

  EXPECT_EQ(name_field(list.favorite_group[1]).substr(0, 5), std::string("a\0b\0\0", 5));
  EXPECT_EQ(list.favorite_group[1].name_len, 3);
}

// Compatibility: a length below 1 blanks the name and fails, and the old length stays.
TEST_F(FavouriteRenaming, WithALengthBelowOneBlanksTheNameAndFails) {
  for (const int length : {0, -1, -32768}) {
    restore();
    EXPECT_EQ(writes_at(5, [=] { EXPECT_EQ(rename(1, "News", length), -1); }), lines{}) << length;

    EXPECT_EQ(name_field(list.favorite_group[1]), std::string(96, '\0') + "oo") << length;
    EXPECT_EQ(list.favorite_group[1].name_len, 98) << length;
    EXPECT_EQ(list.favorite_group[1].id, 1) << length;
  }
}

// Compatibility: after a blanked name the walk goes on.
TEST_F(FavouriteRenaming, WithALengthBelowOneBlanksEveryGroupWithTheId) {
  list.favorite_group[2].id = 1;

  EXPECT_EQ(rename(1, "", 0), -1);

  EXPECT_EQ(list.favorite_group[0].name[0], 'o');
  EXPECT_EQ(list.favorite_group[1].name[0], '\0');
  EXPECT_EQ(list.favorite_group[2].name[0], '\0');
}

TEST_F(FavouriteRenaming, OfTwoGroupsWithOneIdChangesTheFirst) {
  list.favorite_group[2].id = 1;

  EXPECT_EQ(rename(1, "News", 4), 0);

  EXPECT_STREQ(list.favorite_group[1].name, "News");
  EXPECT_EQ(list.favorite_group[2].name[0], 'o');
}

TEST_F(FavouriteRenaming, OfAGroupThatIsNotThereFailsSilently) {
  list.favorite_group[3].id = 3;
  const std::string before = table();
  for (const int id : {-32768, -1, 3, 20, 32767}) {
    EXPECT_EQ(writes_at(5, [id] { EXPECT_EQ(rename(id, "News", 4), -1); }), lines{}) << id;
    EXPECT_EQ(rename(id, "", 0), -1) << id;
  }
  EXPECT_EQ(table(), before);
}

TEST_F(FavouriteRenaming, DoesNotLookForTheNewNameElsewhere) {
  EXPECT_EQ(rename(0, "Twice", 5), 0);
  EXPECT_EQ(rename(1, "Twice", 5), 0);

  EXPECT_STREQ(list.favorite_group[0].name, "Twice");
  EXPECT_STREQ(list.favorite_group[1].name, "Twice");
}

TEST_F(FavouriteRenaming, RefusesNoNameAndLosesNothing) {
  const std::string before = table();

  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(rename_favorite_group(1, nullptr, 4), -1); }),
            lines{"ERROR: rename_favorite_group:# name is null\n"});

  EXPECT_EQ(table(), before);
}

TEST_F(FavouriteRenaming, NeedsNoNameToBlank) {
  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(rename_favorite_group(1, nullptr, 0), -1); }), lines{});

  EXPECT_EQ(list.favorite_group[1].name[0], '\0');
}

}  // namespace
