// The lamedb on the disk: a folder or the file in it, which of two versions is read, and errors that name the file.
#include "chlist/exchange/enigma2/lamedb.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "support/temp_dir.h"
#include "tool/exchange/enigma2/lamedb_folder.h"

namespace {

using namespace tool_test::enigma2;

TEST(LamedbFile, AFolderOrTheFileInItIsRead) {
  const test_support::temp_dir dir;
  for (const auto &[name, text] : written_folder(list_of({plain_service(1)}))) {
    test_support::write_file(dir.path() + name, text);
  }
  loss_counts lost;

  EXPECT_EQ(chlist::read_lamedb(chlist::source_at(dir.path()), lost).services.at(0).number, chlist::channel_number{1});
  EXPECT_EQ(chlist::read_lamedb(chlist::source_at(dir.path() + "lamedb"), lost).services.at(0).number,
            chlist::channel_number{1});
  EXPECT_EQ(chlist::read_lamedb5(chlist::source_at(dir.path()), lost).services.size(), 1U);
  EXPECT_TRUE(chlist::is_like_lamedb4(dir.path(), ""));
  EXPECT_FALSE(chlist::is_like_lamedb5(dir.path(), ""));
  EXPECT_FALSE(chlist::is_like_lamedb3(dir.path(), ""));
  EXPECT_TRUE(chlist::is_like_lamedb3(dir.path() + "x", "eDVB services /3/\nt"));
  EXPECT_TRUE(chlist::is_like_lamedb5(dir.path() + "x", "eDVB services /5/\nt"));
  EXPECT_FALSE(chlist::is_like_lamedb4(dir.path() + "x", ""));
}

TEST(LamedbFile, TheVersionDecidesWhichFileOfAFolderIsRead) {
  const test_support::temp_dir dir;
  test_support::write_file(dir.path() + "lamedb", written_folder(list_of({plain_service(4)}), 4)["lamedb"]);
  test_support::write_file(dir.path() + "lamedb5", written_folder(list_of({plain_service(5)}), 5)["lamedb5"]);
  loss_counts lost;

  EXPECT_EQ(chlist::read_lamedb(chlist::source_at(dir.path()), lost).services.at(0).name, "A4");
  EXPECT_EQ(chlist::read_lamedb5(chlist::source_at(dir.path()), lost).services.at(0).name, "A5");
}

TEST(LamedbFile, ErrorsNameTheFile) {
  const test_support::temp_dir dir;
  loss_counts lost;
  const auto error_of_path = [&](const std::string &path) {
    try {
      chlist::read_lamedb(chlist::source_at(path), lost);
    } catch (const std::runtime_error &error) {
      return std::string(error.what());
    }
    return std::string();
  };

  EXPECT_EQ(error_of_path(dir.path()), "neither lamedb nor lamedb5 is in it");
  EXPECT_EQ(error_of_path(dir.path() + "lamedb"), dir.path() + "lamedb: No such file or directory");
  test_support::write_file(dir.path() + "lamedb", "eDVB services /9/\n");
  EXPECT_EQ(error_of_path(dir.path()), "lamedb: lamedb of version '9': only 3, 4 and 5 are known");
}

}  // namespace
