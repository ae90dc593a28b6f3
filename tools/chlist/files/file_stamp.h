// Whether a file is still the one that was looked at: what somebody wrote meanwhile is not overwritten.
#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <optional>

namespace chlist {

// What tells a file from one that took its place, and from itself before somebody wrote to it.
class file_stamp {
 public:
  // The stamp is empty when there is no such file. Throws std::system_error when that cannot be found out.
  explicit file_stamp(const std::filesystem::path &path);

  friend bool operator==(const file_stamp &a, const file_stamp &b);

 private:
  std::optional<struct stat> found_;
};

}  // namespace chlist
