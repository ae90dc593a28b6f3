// Two edits of one file at a time: the second waits for the first, and what somebody else wrote meanwhile is not
// overwritten.
#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <optional>
#include <string>

#include "chlist/files/descriptor.h"

namespace chlist {

// Held by whoever reads a file in order to write it again, from before the reading until behind the writing. It is a
// lock on the folder, which leaves nothing behind; where folders cannot be locked, there is none.
class edit_lock {
 public:
  // Waits for another edit. Throws std::runtime_error when that takes too long, and when there is no such folder.
  explicit edit_lock(const std::filesystem::path &target);

 private:
  std::string folder_name_;
  descriptor folder_;
};

// What tells a file from one that took its place, and from itself before somebody wrote to it.
class file_stamp {
 public:
  // Of nothing when there is no such file. Throws std::system_error when that cannot be found out.
  explicit file_stamp(const std::filesystem::path &path);

  friend bool operator==(const file_stamp &a, const file_stamp &b);

 private:
  std::optional<struct stat> found_;
};

}  // namespace chlist
