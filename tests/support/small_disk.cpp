// A small tmpfs, mounted where only this process and its children see it; a file takes the room that is not left.
#include "small_disk.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace test_support {
namespace {

constexpr char filling[] = "filling";

}  // namespace

// Propagation is cut first, so that no other process sees the mount.
small_disk::small_disk(std::size_t files) {
  const std::string options =
      "size=" + std::to_string(size) + (files == 0 ? "" : ",nr_inodes=" + std::to_string(files));
  is_mounted_ = ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) == 0 &&
                ::mount("tmpfs", path().c_str(), "tmpfs", 0, options.c_str()) == 0;
}

small_disk::~small_disk() {
  if (is_mounted_) {
    ::umount(path().c_str());
  }
}

void small_disk::leave(std::size_t room) const {
  for (const auto &file : std::filesystem::directory_iterator(path())) {
    std::filesystem::remove(file);
  }
  if (room < size) {
    const int fd = ::open((path() + filling).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    EXPECT_EQ(::posix_fallocate(fd, 0, static_cast<off_t>(size - room)), 0);
    ::close(fd);
  }
}

}  // namespace test_support
