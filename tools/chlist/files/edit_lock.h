// One edit of a file at a time: a second one waits for the first.
#pragma once

#include <filesystem>
#include <string>

#include "chlist/files/descriptor.h"

namespace chlist {

// Held by whoever reads a file in order to write it again, from before the reading until behind the writing. It is a
// lock on the folder, which leaves nothing behind; where folders cannot be locked, there is none.
class edit_lock {
 public:
  // Waits for another edit. Throws std::runtime_error when that takes too long, when there is no such folder, and when
  // the system fails to lock it.
  explicit edit_lock(const std::filesystem::path &target);
  ~edit_lock();
  edit_lock(const edit_lock &) = delete;
  edit_lock &operator=(const edit_lock &) = delete;

 private:
  std::string folder_name_;
  descriptor folder_;
};

}  // namespace chlist
