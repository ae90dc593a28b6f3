// Replacing a whole group table, the names of the files, and kinds that have none.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "support/group_file_test.h"

namespace {

using namespace test_support;
namespace fs = std::filesystem;
using lines = std::vector<std::string>;

class GroupReplacing : public group_file_test {};

TEST_P(GroupReplacing, ReplacingATableCopiesAllOfItAndSavesIt) {
  *GetParam().count = 1;

  EXPECT_EQ(set_group_list(GetParam().kind, image().data(), 3), 1);

  EXPECT_EQ(*GetParam().count, 3);
  EXPECT_EQ(table_in_memory(), as_bytes(image().data(), GetParam().table_size()));
  EXPECT_EQ(read_file(saved_path()), file_of(3, image()));
}

TEST_P(GroupReplacing, ReplacingATableStoresAnyCountAsGiven) {
  const auto groups = image();
  for (const int count :
       {-32768, -1, 0, 1, GetParam().capacity - 1, GetParam().capacity + 0, GetParam().capacity + 1, 32767}) {
    EXPECT_EQ(set_group_list(GetParam().kind, groups.data(), static_cast<std::int16_t>(count)), 1) << count;

    EXPECT_EQ(*GetParam().count, count);
  }
}

TEST_P(GroupReplacing, ReplacingATableByAnEmptyOneLeavesTheEarlierFile) {
  write_file(saved_path(), "earlier");
  const std::vector<group_st> empty(static_cast<std::size_t>(GetParam().capacity));

  EXPECT_EQ(writes_at(0, [&] { return set_group_list(GetParam().kind, empty.data(), 0); }), lines{GetParam().empty});

  expect_empty_table();
  EXPECT_EQ(read_file(saved_path()), "earlier");
}

TEST_P(GroupReplacing, ReplacingATableSucceedsEvenIfItCannotBeSaved) {
  set_target_dir((dir() + "no/").c_str());
  const auto groups = image();

  EXPECT_EQ(set_group_list(GetParam().kind, groups.data(), 3), 1);

  EXPECT_EQ(*GetParam().count, 3);
  EXPECT_EQ(writes_at(0, [&] { return set_group_list(GetParam().kind, groups.data(), 3); }),
            lines{"ERROR: save_group_list:# Fail to open '" + dir() + "no/" + GetParam().saved_as + "'\n"});
}

TEST_P(GroupReplacing, ReplacingATableByNothingIsRefused) {
  fill();
  const auto replace = [] { return set_group_list(GetParam().kind, nullptr, 1); };

  EXPECT_EQ(replace(), 1);

  EXPECT_EQ(*GetParam().count, 3);
  EXPECT_EQ(writes_at(0, replace), lines{"ERROR: set_group_list:# table is null\n"});
  EXPECT_TRUE(fs::is_empty(dir()));
}

TEST_P(GroupReplacing, ATableMayBeReplacedByItself) {
  fill();

  set_group_list(GetParam().kind, GetParam().groups, 2);

  EXPECT_EQ(*GetParam().count, 2);
  EXPECT_EQ(table_in_memory(), as_bytes(image().data(), GetParam().table_size()));
}

INSTANTIATE_TEST_SUITE_P(OfThe, GroupReplacing, ::testing::Values(genres(), countries()), name_of_table);

class GroupFileNames : public store_test {
 protected:
  void SetUp() override {
    store_test::SetUp();
    set_target_dir(dir_.path().c_str());
  }
  [[nodiscard]] const std::string &dir() const { return dir_.path(); }

 private:
  temp_dir dir_;
};

TEST_F(GroupFileNames, ASavedGenreFileEndsInANewlineAndIsNotReadBack) {
  const auto image = table_image(genres());
  set_group_list(GROUP_GENRE, image.data(), 3);
  EXPECT_EQ(fs::file_size(dir() + "genre.dat\n"), 5202U);
  EXPECT_FALSE(fs::exists(dir() + "genre.dat"));
  list.genre_num = 1;
  list.genre[0].id = 77;

  EXPECT_EQ(load_group_list(GROUP_GENRE), 0);

  EXPECT_EQ(list.genre_num, 1);
  EXPECT_EQ(list.genre[0].id, 77);
}

TEST_F(GroupFileNames, ASavedCountryFileIsReadBack) {
  const auto image = table_image(countries());
  set_group_list(GROUP_COUNTRY, image.data(), 200);
  EXPECT_EQ(fs::file_size(dir() + "country.dat"), 20802U);
  std::memset(list.country, 0, sizeof list.country);
  list.country_num = 0;

  EXPECT_EQ(load_group_list(GROUP_COUNTRY), 0);

  EXPECT_EQ(list.country_num, 200);
  EXPECT_EQ(std::memcmp(list.country, image.data(), sizeof list.country), 0);
}

TEST_F(GroupFileNames, OtherKindsAreNeitherLoadedNorSaved) {
  fill_everything();
  for (const int kind : {0, 1, 3, 5, 6, 7, -1, 127, -128}) {
    const auto code = static_cast<std::int8_t>(kind);
    const std::string refusal = "#  unknown group list( " + std::to_string(kind) + " )!!\n";

    EXPECT_EQ(load_group_list(code), 0);
    EXPECT_EQ(save_group_list(code), 0);

    EXPECT_EQ(writes_at(0, [code] { return load_group_list(code); }), lines{"ERROR: load_group_list:" + refusal});
    EXPECT_EQ(writes_at(9, [code] { return save_group_list(code); }), lines{"ERROR: save_group_list:" + refusal});
    EXPECT_EQ(writes_at(-1, [code] { return save_group_list(code); }), lines{});
  }
  EXPECT_TRUE(fs::is_empty(dir()));
}

TEST_F(GroupFileNames, TablesOfOtherKindsAreNotReplaced) {
  fill_everything();
  const bytes before(reinterpret_cast<const char *>(&list), sizeof list);
  const std::vector<group_st> image(MAX_PROVIDER);
  for (const int kind : {0, 1, 3, 5, 6, 7, -1, 127, -128}) {
    const auto replace = [&image, kind] { return set_group_list(static_cast<std::int8_t>(kind), image.data(), 3); };

    EXPECT_EQ(replace(), 1);

    EXPECT_EQ(std::memcmp(&list, before.data(), sizeof list), 0) << kind;
    EXPECT_EQ(writes_at(1, replace), lines{"WARNING: set_group_list:# unknown 'group_list'\n"});
    EXPECT_EQ(writes_at(0, replace), lines{});
  }
  EXPECT_TRUE(fs::is_empty(dir()));
}

}  // namespace
