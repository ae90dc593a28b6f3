#include "new_list_folder.h"

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace test_support {
namespace {

namespace fs = std::filesystem;

const fs::path data_folder = "/DATA";
const fs::path set_aside = data_folder / "BACKUP" / "all_channel.dat.set_aside";

// Propagation is cut first, so that no other process sees the mount.
bool mount_in_private() {
  return ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) == 0 &&
         ::mount("tmpfs", data_folder.c_str(), "tmpfs", 0, "size=4m") == 0;
}

}  // namespace

own_new_list_folder::own_new_list_folder() {
  std::error_code failed;
  had_data_ = fs::exists(data_folder, failed);
  if (!had_data_ && !fs::create_directory(data_folder, failed)) {
    return;
  }
  is_mounted_ = mount_in_private();
  had_folder_ = fs::exists(new_list_folder, failed);
  if (had_folder_ && fs::exists(new_list, failed)) {
    fs::rename(new_list, set_aside, failed);
    was_set_aside_ = !failed;
  }
  fs::create_directory(new_list_folder, failed);
  is_ours_ = ::access(new_list_folder.c_str(), W_OK) == 0 && !fs::exists(new_list, failed);
}

own_new_list_folder::~own_new_list_folder() {
  std::error_code ignored;
  if (is_ours_) {
    fs::remove_all(new_list, ignored);
  }
  if (was_set_aside_) {
    fs::rename(set_aside, new_list, ignored);
  }
  if (!had_folder_) {
    fs::remove(new_list_folder, ignored);
  }
  if (is_mounted_) {
    ::umount(data_folder.c_str());
  }
  if (!had_data_) {
    fs::remove(data_folder, ignored);
  }
}

void new_list_test::SetUp() {
  file_test::SetUp();
  if (!place_.is_ours()) {
    GTEST_SKIP() << new_list << " can neither be mounted over nor created here";
  }
}

int new_list_test::merge(const channel_file &file) {
  write_file(new_list, file.data);
  return check_load_channel();
}

}  // namespace test_support
