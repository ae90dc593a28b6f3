// The example host takes over a new channel list from the place where a search leaves it.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "tool/zapper/zapper_host.h"

namespace {

namespace fs = std::filesystem;

using tool_test::begins_with;
using tool_test::viewer;

const fs::path new_list = "/DATA/BACKUP/all_channel.dat";

// Suites of this name never run beside each other: the place is one for the whole machine.
class ZapperNewList : public tool_test::zapper_test {
 protected:
  void SetUp() override {
    zapper_test::SetUp();
    if (fs::exists(new_list) || ::geteuid() != 0) {
      GTEST_SKIP() << new_list << " is not ours";
    }
    created_ = !fs::exists("/DATA");
    fs::create_directories(new_list.parent_path());
  }

  void TearDown() override {
    std::error_code ignored;
    fs::remove(new_list, ignored);
    if (created_) {
      fs::remove_all("/DATA", ignored);
    }
    zapper_test::TearDown();
  }

  void import(const std::string &lines, const std::string &target) const {
    test_support::write_file(dir.path() + "conf", lines);
    ASSERT_EQ(tool_test::run_program({CHLIST_PROGRAM, "import", dir.path() + "conf", "-o", target}).exit_code, 0);
  }

 private:
  bool created_ = false;
};

TEST_F(ZapperNewList, IsTakenOver) {
  const std::string one = "Only:12000:H:S1E:0:101:0:0:0:1:1:1:0\n";
  import(one, file);
  import(one + "Another:12000:H:S1E:0:201:0:0:0:2:1:1:0\n", new_list);
  viewer user(interactive());

  EXPECT_TRUE(begins_with(user.answer("scan"), "1 channels came or went.\n"));
  EXPECT_NE(user.answer("2").find("Another"), std::string::npos);
}

TEST_F(ZapperNewList, ThatIsMissingChangesNothing) {
  viewer user(interactive());

  EXPECT_TRUE(begins_with(user.answer("scan"), "Nothing has changed: "));
}

}  // namespace
