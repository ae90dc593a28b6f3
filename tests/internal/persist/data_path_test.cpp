// Paths of data files: the directory and the name, in 64 bytes.
#include "channel/persist/data_path.h"

#include <channel/files.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using channel::persist::data_path;

class DataPath : public ::testing::Test {
 protected:
  void TearDown() override { set_target_dir("/"); }

  const std::string dir_of_31 = "/" + std::string(29, 'd') + "/";
};

TEST_F(DataPath, BeginsAtTheRootUntilADirectoryIsSet) { EXPECT_STREQ(data_path("list.dat").c_str(), "/list.dat"); }

TEST_F(DataPath, IsTheDirectoryFollowedByTheName) {
  set_target_dir("/data");

  EXPECT_STREQ(data_path("list.dat").c_str(), "/datalist.dat");
  EXPECT_STREQ(data_path("").c_str(), "/data");
}

TEST_F(DataPath, KeepsTheDirectoryOfItsMaking) {
  const data_path before("list.dat");

  set_target_dir("/other/");

  EXPECT_STREQ(before.c_str(), "/list.dat");
}

TEST_F(DataPath, HoldsUpTo63Characters) {
  set_target_dir(dir_of_31.c_str());
  for (const std::size_t length : {0U, 1U, 31U, 32U}) {
    const std::string name(length, 'n');
    const data_path path(name.c_str());
    EXPECT_EQ(path.c_str(), dir_of_31 + name);
    EXPECT_EQ(path.to_open(), path.c_str());
  }
}

TEST_F(DataPath, IsCutAndNotOpenedWhenLonger) {
  set_target_dir(dir_of_31.c_str());
  for (const std::size_t length : {33U, 34U, 10000U}) {
    const std::string name(length, 'n');
    const data_path path(name.c_str());
    EXPECT_EQ(path.c_str(), dir_of_31 + std::string(32, 'n'));
    EXPECT_EQ(path.to_open(), nullptr);
  }
}

}  // namespace
