// Filling the genre and country tables from files of their own: short, long and missing files, and counts outside a
// table.
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

class GroupFileLoading : public group_file_test {};

TEST_P(GroupFileLoading, AFileFillsTheTable) {
  write_file(loaded_path(), file_of(3, image()));

  EXPECT_EQ(load(), 0);

  EXPECT_EQ(*GetParam().count, 3);
  EXPECT_EQ(table_in_memory(), as_bytes(image().data(), GetParam().table_size()));
}

TEST_P(GroupFileLoading, ALoadReplacesTheWholeTable) {
  fill();
  write_file(loaded_path(), file_of(0, std::vector<group_st>(static_cast<std::size_t>(GetParam().capacity))));

  EXPECT_EQ(load(), 0);

  expect_empty_table();
}

TEST_P(GroupFileLoading, ALoadTouchesNothingButItsTable) {
  fill_everything();
  const bytes everything(reinterpret_cast<const char *>(&list), sizeof list);
  write_file(loaded_path(), file_of(3, image()));

  load();

  const auto *now = reinterpret_cast<const char *>(&list);
  const auto first = static_cast<std::size_t>(reinterpret_cast<char *>(GetParam().groups) - now);
  const std::size_t behind = first + GetParam().file_size();
  EXPECT_EQ(std::memcmp(now, everything.data(), first), 0);
  EXPECT_EQ(std::memcmp(now + behind, everything.data() + behind, sizeof list - behind), 0);
}

TEST_P(GroupFileLoading, ALoadThatSucceedsIsNotLogged) {
  write_file(loaded_path(), file_of(3, image()));

  EXPECT_EQ(writes_at(9, load), lines{});
}

TEST_P(GroupFileLoading, ALongerFileIsReadAsFarAsTheTableGoes) {
  write_file(loaded_path(), file_of(3, image()) + "more");

  EXPECT_EQ(load(), 0);

  EXPECT_EQ(*GetParam().count, 3);
}

TEST_P(GroupFileLoading, AShortFileEmptiesTheTable) {
  const bytes whole = file_of(3, image());
  for (const std::size_t size : {std::size_t{2}, std::size_t{3}, std::size_t{106}, whole.size() - 1}) {
    fill();
    write_file(loaded_path(), whole.substr(0, size));

    EXPECT_EQ(load(), -1) << size;

    expect_empty_table();
    EXPECT_EQ(writes_at(0, load), lines{short_read(GetParam().table_size())}) << size;
    EXPECT_EQ(writes_at(-1, load), lines{}) << size;
  }
}

TEST_P(GroupFileLoading, AFileTooShortForItsCountFailsBothReads) {
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}}) {
    fill();
    write_file(loaded_path(), bytes(size, '\3'));

    EXPECT_EQ(load(), -1) << size;

    expect_empty_table();
    EXPECT_EQ(writes_at(0, load), (lines{short_read(2), short_read(GetParam().table_size())})) << size;
  }
}

TEST_P(GroupFileLoading, ADirectoryInPlaceOfTheFileFailsBothReads) {
  fs::create_directory(loaded_path());
  fill();

  EXPECT_EQ(load(), -1);

  expect_empty_table();
  EXPECT_EQ(writes_at(0, load), (lines{short_read(2), short_read(GetParam().table_size())}));
}

TEST_P(GroupFileLoading, AMissingFileLeavesTheTableAsItWas) {
  fill();

  EXPECT_EQ(load(), 0);

  EXPECT_EQ(*GetParam().count, 3);
  EXPECT_EQ(table_in_memory(), as_bytes(image().data(), GetParam().table_size()));
  EXPECT_EQ(writes_at(0, load), lines{"ERROR: load_group_list:# Fail to open '" + GetParam().loaded_from + "'\n"});
  EXPECT_EQ(writes_at(-1, load), lines{});
}

TEST_P(GroupFileLoading, ACountInsideTheTableIsKept) {
  for (const int count : {0, 1, GetParam().capacity - 1, static_cast<int>(GetParam().capacity)}) {
    write_file(loaded_path(), file_of(static_cast<std::int16_t>(count), image()));

    EXPECT_EQ(writes_at(0, load), lines{}) << count;
    EXPECT_EQ(*GetParam().count, count);
  }
}

TEST_P(GroupFileLoading, ACountOutsideTheTableIsBroughtToItsNearestEndAndReported) {
  const int capacity = GetParam().capacity;
  const struct {
    int in_file;
    int taken;
  } cases[] = {{-1, 0}, {-32768, 0}, {capacity + 1, capacity}, {32767, capacity}};
  for (const auto &each : cases) {
    write_file(loaded_path(), file_of(static_cast<std::int16_t>(each.in_file), image()));

    EXPECT_EQ(writes_at(0, load),
              lines{"ERROR: load_group_list:# group list " + std::to_string(GetParam().kind) + " counts " +
                    std::to_string(each.in_file) + ", taken as " + std::to_string(each.taken) + "\n"});
    EXPECT_EQ(load(), 0);
    EXPECT_EQ(*GetParam().count, each.taken);
    EXPECT_EQ(table_in_memory(), as_bytes(image().data(), GetParam().table_size()));
  }
}

TEST_P(GroupFileLoading, NamesWithoutTerminatorAndReservedBytesComeBackByteForByte) {
  auto groups = image();
  groups.front() = group(-1, std::string(98, 'n'));
  groups.back() = group(-32768, std::string(98, '\xFF'));
  write_file(loaded_path(), file_of(GetParam().capacity, groups));

  EXPECT_EQ(load(), 0);

  EXPECT_EQ(table_in_memory(), as_bytes(groups.data(), GetParam().table_size()));
}

TEST_P(GroupFileLoading, ThePathIsTheDirectoryFollowedDirectlyByTheName) {
  set_target_dir((dir() + "x").c_str());
  fill();
  write_file(dir() + "x" + GetParam().loaded_from, file_of(2, image()));

  EXPECT_EQ(load(), 0);
  EXPECT_EQ(save(), 1);

  EXPECT_EQ(*GetParam().count, 2);
  EXPECT_EQ(read_file(dir() + "x" + GetParam().saved_as), file_of(2, image()));
}

INSTANTIATE_TEST_SUITE_P(OfThe, GroupFileLoading, ::testing::Values(genres(), countries()), name_of_table);

}  // namespace
