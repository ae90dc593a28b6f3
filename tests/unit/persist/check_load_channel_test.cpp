// The merge at the fixed path where the producer of a new channel list places it. The path lies in a mount of this
// process alone where the system grants one; otherwise it is created and restored, which takes root.
#include "support/channel_file.h"
#include "support/log_capture.h"

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <filesystem>

namespace {

using test_support::channel_file;
using test_support::log_capture;
using test_support::write_file;
using lines = std::vector<std::string>;
namespace fs = std::filesystem;

const fs::path data = "/DATA";
const fs::path folder = data / "BACKUP";
const fs::path new_list = folder / "all_channel.dat";

// Makes the folder of new lists this test's own as long as it lives.
class own_folder {
 public:
  own_folder() {
    std::error_code failed;
    had_data_ = fs::exists(data, failed);
    if (!had_data_ && !fs::create_directory(data, failed)) {
      return;
    }
    is_mounted_ = mount_in_private();
    had_folder_ = fs::exists(folder, failed);
    if (had_folder_ && fs::exists(new_list, failed)) {
      fs::rename(new_list, set_aside_, failed);
      was_set_aside_ = !failed;
    }
    fs::create_directory(folder, failed);
    is_ours_ = ::access(folder.c_str(), W_OK) == 0 && !fs::exists(new_list, failed);
  }

  ~own_folder() {
    std::error_code ignored;
    if (is_ours_) {
      fs::remove_all(new_list, ignored);
    }
    if (was_set_aside_) {
      fs::rename(set_aside_, new_list, ignored);
    }
    if (!had_folder_) {
      fs::remove(folder, ignored);
    }
    if (is_mounted_) {
      ::umount(data.c_str());
    }
    if (!had_data_) {
      fs::remove(data, ignored);
    }
  }

  own_folder(const own_folder &) = delete;
  own_folder &operator=(const own_folder &) = delete;

  [[nodiscard]] bool is_ours() const { return is_ours_; }

 private:
  // Propagation is cut first, so that no other process sees the mount.
  static bool mount_in_private() {
    return ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("tmpfs", data.c_str(), "tmpfs", 0, "size=4m") == 0;
  }

  const fs::path set_aside_ = folder / "all_channel.dat.set_aside";
  bool had_data_ = false;
  bool had_folder_ = false;
  bool is_mounted_ = false;
  bool was_set_aside_ = false;
  bool is_ours_ = false;
};

class CheckLoadChannel : public test_support::file_test {
 protected:
  void SetUp() override {
    file_test::SetUp();
    if (!place.is_ours()) {
      GTEST_SKIP() << new_list << " can neither be mounted over nor created here";
    }
    channel_file file;
    file.service({.service_id = 1}).service({.service_id = 2}).entry(VIEW_ALL, {.service_id = 1}, 11);
    file.entry(VIEW_ALL, {.service_id = 2}, 12).entry(VIEW_FAVOURITE, {.service_id = 2}, 13);
    load(file.group(GROUP_GENRE, 1, "News").group(GROUP_COUNTRY, 1, "Malta").data);
  }

  own_folder place;
};

TEST_F(CheckLoadChannel, MergesTheListThatStandsThere) {
  write_file(new_list, channel_file().service({.service_id = 1}).service({.service_id = 0xC005}).data);
  const log_capture log(0);

  EXPECT_EQ(check_load_channel(), 2);

  EXPECT_EQ(log.writes(), lines{});
  EXPECT_EQ(test_support::majors(VIEW_ALL), (std::vector<int>{11, 5}));
  EXPECT_EQ(test_support::majors(VIEW_TV), std::vector<int>{5});
  EXPECT_EQ(test_support::majors(VIEW_FAVOURITE), std::vector<int>{});
  EXPECT_EQ(get_channel_st(1, 1, 100, 11'000'000, 2, 0), nullptr);
  EXPECT_EQ(get_channel_st(1, 1, 100, 11'000'000, 1, 0)->country_id, 1);
}

TEST_F(CheckLoadChannel, OnlyReadsTheList) {
  const test_support::bytes contents = channel_file().service({.service_id = 7}).data;
  write_file(new_list, contents);

  check_load_channel();

  EXPECT_TRUE(test_support::read_file(new_list) == contents);
}

TEST_F(CheckLoadChannel, DoesNotLookIntoTheTargetDirectory) {
  write_file(path("all_channel.dat"), channel_file().data);

  EXPECT_EQ(check_load_channel(), 0);

  EXPECT_NE(get_channel_st(1, 1, 100, 11'000'000, 1, 0), nullptr);
}

TEST_F(CheckLoadChannel, ChangesNothingWhereThereIsNoList) {
  const test_support::bytes before = save();
  const log_capture log(0);

  EXPECT_EQ(check_load_channel(), 0);

  EXPECT_EQ(log.writes(), lines{"ERROR: new_load_channel:# Fail to open '/DATA/BACKUP/all_channel.dat'\n"});
  EXPECT_TRUE(save() == before);
}

TEST_F(CheckLoadChannel, ChangesNothingWhereTheListIsShort) {
  const test_support::bytes before = save();
  const test_support::bytes whole = channel_file().service({.service_id = 7}).data;
  write_file(new_list, whole.substr(0, whole.size() - 1));
  const log_capture log(0);

  EXPECT_EQ(check_load_channel(), 0);

  EXPECT_EQ(log.writes(), lines{"ERROR: new_load_channel:# Fail to read '/DATA/BACKUP/all_channel.dat'\n"});
  EXPECT_TRUE(save() == before);
}

TEST_F(CheckLoadChannel, TellsThePathAtLevelTwo) {
  const log_capture log(2);

  check_load_channel();

  EXPECT_EQ(log.writes().front(), "ChannelAPI new_load_channel:# (/DATA/BACKUP/all_channel.dat)\n");
}

}  // namespace
