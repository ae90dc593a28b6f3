// Text files are written whole or not at all, and replace what stood there as channel files do.
#include "chlist/files/replacement.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>
#include <string>

#include "support/small_disk.h"
#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;

using test_support::read_file;
using test_support::write_file;

class TextFile : public ::testing::Test {
 protected:
  [[nodiscard]] fs::path at(const std::string &name) const { return dir_.path() + name; }

  [[nodiscard]] std::size_t files() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(dir_.path()), fs::directory_iterator()));
  }

  static std::string refusal(const fs::path &target) {
    try {
      chlist::write_text_file(target, "new");
    } catch (const std::runtime_error &error) {
      return error.what();
    }
    return "none";
  }

 private:
  test_support::temp_dir dir_;
};

TEST_F(TextFile, HoldsTheTextByteByByte) {
  for (const std::string &text : {std::string(), std::string("a\r\n\0b", 5), std::string(3'000'000, 'x')}) {
    chlist::write_text_file(at("out"), text);

    EXPECT_TRUE(read_file(at("out")) == text) << text.size();
    EXPECT_EQ(files(), 1U);
  }
}

TEST_F(TextFile, KeepsTheModeOfWhatItReplaces) {
  write_file(at("out"), "a longer text that was there before");
  fs::permissions(at("out"), fs::perms(0640));

  chlist::write_text_file(at("out"), "new");

  EXPECT_EQ(read_file(at("out")), "new");
  EXPECT_EQ(fs::status(at("out")).permissions(), fs::perms(0640));
}

TEST_F(TextFile, KeepsTheOwnerOfWhatItReplaces) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << "only root gives files away";
  }
  write_file(at("out"), "before");
  ASSERT_EQ(::chown(at("out").c_str(), 1234, 5678), 0);
  fs::permissions(at("out"), fs::perms(0640));

  chlist::write_text_file(at("out"), "new");

  struct stat found = {};
  ASSERT_EQ(::stat(at("out").c_str(), &found), 0);
  EXPECT_EQ(found.st_uid, 1234U);
  EXPECT_EQ(found.st_gid, 5678U);
  EXPECT_EQ(found.st_mode & 07777U, 0640U);
}

TEST_F(TextFile, HasTheModeOfNewFilesWhenItIsNew) {
  write_file(at("other"), "");

  chlist::write_text_file(at("out"), "new");

  EXPECT_EQ(fs::status(at("out")).permissions(), fs::status(at("other")).permissions());
}

TEST_F(TextFile, ReplacesWhatASymbolicLinkPointsTo) {
  write_file(at("real"), "before");
  fs::create_symlink("real", at("link"));

  chlist::write_text_file(at("link"), "new");

  EXPECT_TRUE(fs::is_symlink(at("link")));
  EXPECT_EQ(read_file(at("real")), "new");
  EXPECT_EQ(files(), 2U);
}

TEST_F(TextFile, LeavesTheWorkingDirectoryAsItWas) {
  const fs::path before = fs::current_path();

  chlist::write_text_file(at("out"), "new");

  EXPECT_EQ(fs::current_path(), before);
}

TEST_F(TextFile, RefusesWhatIsNoFile) {
  fs::create_directory(at("folder"));

  EXPECT_EQ(refusal(at("folder")), at("folder").string() + ": not a regular file");
  EXPECT_EQ(refusal(at("none/out")), at("none").string() + ": No such file or directory");
  EXPECT_EQ(files(), 1U);
}

TEST_F(TextFile, RefusesWhatNobodyMayWrite) {
  write_file(at("out"), "protected");
  fs::permissions(at("out"), fs::perms(0444));

  EXPECT_EQ(refusal(at("out")), at("out").string() + ": is read-only");
  EXPECT_EQ(read_file(at("out")), "protected");
  EXPECT_EQ(files(), 1U);
}

TEST_F(TextFile, LeavesTheEarlierTextWhenTheDiskIsFull) {
  const test_support::small_disk disk;
  if (!disk.is_mounted()) {
    GTEST_SKIP() << "no disk can be mounted here";
  }
  disk.leave(2 * test_support::small_disk::block);
  const std::string target = disk.path() + "out";
  write_file(target, "before");

  EXPECT_THROW(chlist::write_text_file(target, std::string(test_support::small_disk::block + 1, 'x')),
               std::system_error);
  EXPECT_EQ(read_file(target), "before");
  chlist::write_text_file(target, std::string(test_support::small_disk::block, 'x'));
  EXPECT_EQ(read_file(target).size(), test_support::small_disk::block);
}

}  // namespace
