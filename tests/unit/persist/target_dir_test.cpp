// The target directory: how it is kept, how it is refused, and how a file's path is made of it.
#include <algorithm>
#include <filesystem>

#include "support/channel_file.h"
#include "support/log_capture.h"

namespace {

using test_support::channel_file;
using test_support::file_test;
using test_support::log_capture;
using test_support::write_file;
using lines = std::vector<std::string>;

constexpr std::size_t capacity = 32;

class TargetDirectory : public file_test {};

std::string whole_buffer() { return {set_target_dir("/"), capacity}; }

TEST_F(TargetDirectory, IsReturnedAsATerminatedText) { EXPECT_STREQ(set_target_dir("/data/"), "/data/"); }

TEST_F(TargetDirectory, StaysAtOneAddress) { EXPECT_EQ(set_target_dir("/a/"), set_target_dir("/b/")); }

TEST_F(TargetDirectory, LeavesNothingOfALongerOneBehind) {
  set_target_dir("/a/rather/long/directory/");

  const char *kept = set_target_dir("/x/");

  EXPECT_TRUE(std::all_of(kept + 3, kept + capacity, [](char byte) { return byte == '\0'; }));
}

TEST_F(TargetDirectory, MayBeEmpty) {
  EXPECT_STREQ(set_target_dir(""), "");
  EXPECT_EQ(whole_buffer(), '/' + std::string(capacity - 1, '\0'));
}

TEST_F(TargetDirectory, MayBeSetToItself) {
  char *current = set_target_dir("/data/list/");

  EXPECT_STREQ(set_target_dir(current), "/data/list/");
}

TEST_F(TargetDirectory, MayBeSetToItsOwnEnd) {
  char *current = set_target_dir("/data/list/");

  EXPECT_STREQ(set_target_dir(current + 5), "/list/");
}

TEST_F(TargetDirectory, TakesAsManyCharactersAsFit) {
  for (const std::size_t length : {std::size_t{1}, capacity - 2, capacity - 1}) {
    const std::string text = std::string(length - 1, 'd') + '/';
    EXPECT_EQ(set_target_dir(text.c_str()), text);
  }
}

TEST_F(TargetDirectory, RefusesMoreAndStays) {
  for (const std::size_t length : {capacity, capacity + 1, std::size_t{1000}}) {
    set_target_dir("/kept/");
    const log_capture log(0);

    const char *kept = set_target_dir(std::string(length, 'd').c_str());

    EXPECT_STREQ(kept, "/kept/");
    EXPECT_EQ(log.writes(), (lines{"ERROR: set_target_dir:# directory is longer than 31 characters\n"}));
  }
}

TEST_F(TargetDirectory, RefusesNullAndStays) {
  set_target_dir("/kept/");
  const log_capture log(0);

  EXPECT_STREQ(set_target_dir(nullptr), "/kept/");
  EXPECT_EQ(log.writes(), (lines{"ERROR: set_target_dir:# dir is null\n"}));
}

TEST_F(TargetDirectory, IsTracedAtLevelTwo) {
  const log_capture log(2);

  set_target_dir("/x/");

  EXPECT_EQ(log.writes(), (lines{"ChannelAPI set_target_dir:# \n"}));
}

TEST_F(TargetDirectory, IsNotTracedBelowLevelTwo) {
  const log_capture log(1);

  set_target_dir("/x/");

  EXPECT_EQ(log.writes(), lines{});
}

TEST_F(TargetDirectory, IsFollowedByTheNameWithoutASeparator) {
  const std::string prefix = dir.path() + "pre";
  write_file(prefix + "list.dat", channel_file().data);

  set_target_dir(prefix.c_str());

  EXPECT_EQ(load_named("list.dat"), 10);
}

TEST_F(TargetDirectory, IsLookedUpBelowTheWorkingDirectoryWhenItIsNoAbsolutePath) {
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(dir.path());
  write_file(path("list.dat"), channel_file().data);

  set_target_dir("./");
  const int with_dot = load_named("list.dat");
  set_target_dir("");
  const int with_nothing = load_named("list.dat");
  std::filesystem::current_path(before);

  EXPECT_EQ(with_dot, 10);
  EXPECT_EQ(with_nothing, 10);
}

// Composed paths of 63 characters at most. The directory is filled to its own limit.
class ComposedPath : public file_test {
 protected:
  void SetUp() override {
    file_test::SetUp();
    long_dir = dir.path() + std::string(30 - dir.path().size(), 'd') + '/';
    std::filesystem::create_directory(long_dir);
    set_target_dir(long_dir.c_str());
  }

  std::string long_dir;
  const std::string name_of_32 = std::string(32, 'n');
  const std::string name_of_33 = std::string(33, 'n');
};

TEST_F(ComposedPath, Of63CharactersIsLoaded) {
  ASSERT_EQ(long_dir.size() + name_of_32.size(), 63U);
  write_file(long_dir + name_of_32, channel_file().data);

  EXPECT_EQ(load_named(name_of_32.c_str()), 10);
}

TEST_F(ComposedPath, Of64CharactersCannotBeOpenedForLoading) {
  write_file(long_dir + name_of_33, channel_file().data);
  write_file(long_dir + name_of_32, channel_file().data);
  const log_capture log(0);

  EXPECT_EQ(load_named(name_of_33.c_str()), 1);
  EXPECT_EQ(log.writes().at(0), "ERROR: load_channel_internal:# Fail to open '" + long_dir + name_of_32 + "'\n");
}

TEST_F(ComposedPath, Of63CharactersIsSaved) {
  EXPECT_EQ(save_channel(name_of_32.c_str()), 1);
  EXPECT_TRUE(std::filesystem::exists(long_dir + name_of_32));
}

TEST_F(ComposedPath, Of64CharactersCannotBeOpenedForSaving) {
  const log_capture log(0);

  EXPECT_EQ(save_channel(name_of_33.c_str()), 0);
  EXPECT_EQ(log.writes(), (lines{"ERROR: save_channel_internal:# Fail to open '" + long_dir + name_of_32 + "'\n"}));
  EXPECT_TRUE(std::filesystem::is_empty(long_dir));
}

TEST_F(ComposedPath, MayBeMuchTooLong) {
  const log_capture log(0);

  EXPECT_EQ(load_named(std::string(5000, 'n').c_str()), 1);
  EXPECT_EQ(log.writes().at(0), "ERROR: load_channel_internal:# Fail to open '" + long_dir + name_of_32 + "'\n");
}

}  // namespace
