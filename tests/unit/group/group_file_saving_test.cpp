// Saving the genre and country tables to files of their own: their bytes, and saves that fail.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "support/group_file_test.h"
#include "support/resource_limits.h"

namespace {

using namespace test_support;
namespace fs = std::filesystem;
using lines = std::vector<std::string>;

class GroupFileSaving : public group_file_test {};

TEST_P(GroupFileSaving, ASavedFileIsTheCountAndTheWholeTable) {
  fill();

  EXPECT_EQ(save(), 1);

  EXPECT_EQ(read_file(saved_path()), file_of(3, image()));
  EXPECT_EQ(fs::file_size(saved_path()), GetParam().file_size());
}

TEST_P(GroupFileSaving, ASaveReplacesALongerFile) {
  write_file(saved_path(), bytes(50'000, 'x'));
  fill();

  EXPECT_EQ(save(), 1);

  EXPECT_EQ(read_file(saved_path()), file_of(3, image()));
}

TEST_P(GroupFileSaving, SavingLeavesTheTableAsItWas) {
  fill();

  save();

  EXPECT_EQ(*GetParam().count, 3);
  EXPECT_EQ(table_in_memory(), as_bytes(image().data(), GetParam().table_size()));
}

TEST_P(GroupFileSaving, SavingIsLoggedAtLevel2) {
  fill();

  EXPECT_EQ(writes_at(2, save), (lines{GetParam().saving, "ChannelAPI save_group_list:# \n"}));
  EXPECT_EQ(writes_at(1, save), lines{});
}

TEST_P(GroupFileSaving, AnEmptyTableIsNotSavedAndLeavesTheEarlierFile) {
  write_file(saved_path(), "earlier");

  EXPECT_EQ(save(), 1);

  EXPECT_EQ(read_file(saved_path()), "earlier");
  EXPECT_EQ(writes_at(0, save), lines{GetParam().empty});
  EXPECT_EQ(writes_at(2, save), (lines{GetParam().saving, GetParam().empty}));
  EXPECT_EQ(writes_at(-1, save), lines{});
}

TEST_P(GroupFileSaving, AnEmptyTableMakesNoFile) {
  save();

  EXPECT_TRUE(fs::is_empty(dir()));
}

TEST_P(GroupFileSaving, ACountOutsideTheTableIsSavedAsItStands) {
  for (const int count : {-1, GetParam().capacity + 1}) {
    *GetParam().count = static_cast<std::int16_t>(count);

    EXPECT_EQ(save(), 1);

    const bytes file = read_file(saved_path());
    std::int16_t saved = 0;
    ASSERT_GE(file.size(), sizeof saved);
    std::memcpy(&saved, file.data(), sizeof saved);
    EXPECT_EQ(saved, count);
    EXPECT_EQ(file.size(), GetParam().file_size());
  }
}

TEST_P(GroupFileSaving, AFileThatCannotBeOpenedForWritingIsAnError) {
  fs::create_directory(saved_path());
  fill();

  EXPECT_EQ(save(), 0);
  EXPECT_EQ(writes_at(0, save), lines{"ERROR: save_group_list:# Fail to open '" + saved_path() + "'\n"});
  EXPECT_EQ(writes_at(-1, save), lines{});
}

TEST_P(GroupFileSaving, ADirectoryThatIsNotThereIsAnError) {
  set_target_dir((dir() + "no/").c_str());
  fill();

  EXPECT_EQ(save(), 0);
  EXPECT_EQ(writes_at(0, save),
            lines{"ERROR: save_group_list:# Fail to open '" + dir() + "no/" + GetParam().saved_as + "'\n"});
}

TEST_P(GroupFileSaving, AFullDeviceIsAnErrorThatNamesTheGenreListWhateverTheTable) {
  fs::create_symlink("/dev/full", saved_path());
  fill();

  EXPECT_EQ(save(), 0);

  EXPECT_EQ(*GetParam().count, 3);
  EXPECT_EQ(writes_at(2, save), (lines{GetParam().saving, failed_write(), "ChannelAPI save_group_list:# \n"}));
  EXPECT_EQ(writes_at(0, save), lines{failed_write()});
  EXPECT_EQ(writes_at(-1, save), lines{});
}

// What stays in the stream's buffer shows only when the file is closed.
TEST_P(GroupFileSaving, ADiskThatFillsUpWithTheLastBytesIsAnError) {
  fill();
  const rlim_t whole_blocks = GetParam().file_size() / 4096 * 4096;
  const auto save_within = [&](int level) {
    const log_capture log(level);
    {
      const file_size_limit limit(whole_blocks);
      EXPECT_EQ(save(), 0);
    }
    EXPECT_EQ(fs::file_size(saved_path()), whole_blocks);
    return log.writes();
  };

  EXPECT_EQ(save_within(0), lines{failed_write()});
  EXPECT_EQ(save_within(-1), lines{});
}

INSTANTIATE_TEST_SUITE_P(OfThe, GroupFileSaving, ::testing::Values(genres(), countries()), name_of_table);

}  // namespace
