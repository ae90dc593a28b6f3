// A file in another's place has another number, one that is written another time.
#include "chlist/files/file_stamp.h"

#include <cerrno>
#include <tuple>

#include "chlist/files/descriptor.h"

namespace chlist {
namespace {

auto key_of(const struct stat &found) {
  return std::tuple{found.st_dev, found.st_ino, found.st_size, found.st_mtim.tv_sec, found.st_mtim.tv_nsec};
}

}  // namespace

file_stamp::file_stamp(const fs::path &path) {
  struct stat found = {};
  if (::stat(path.c_str(), &found) == 0) {
    found_ = found;
  } else if (errno != ENOENT) {
    fail(path.string());
  }
}

bool operator==(const file_stamp &a, const file_stamp &b) {
  return a.found_.has_value() == b.found_.has_value() && (!a.found_ || key_of(*a.found_) == key_of(*b.found_));
}

}  // namespace chlist
