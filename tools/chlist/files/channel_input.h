// A channel file that is read. It is opened once: the version is looked at before anything is loaded, and what is
// loaded is the very file that was looked at, even if another one takes its place meanwhile.
#pragma once

#include <filesystem>
#include <string>

#include "chlist/files/descriptor.h"

namespace chlist {

class channel_input {
 public:
  // Throws when there is no regular file to read, or not even a version in it.
  explicit channel_input(const std::filesystem::path &path);

  [[nodiscard]] int version() const { return version_; }
  [[nodiscard]] const std::filesystem::path &path() const { return path_; }

  // The path by which the library opens the file: a short one, however long the file's own is.
  [[nodiscard]] std::string library_path() const;

  // Throws an error that begins with the file's path.
  [[noreturn]] void refuse(const std::string &why) const;

  // Refuses a file of another version than the current one.
  void must_be_current() const;

  // Refuses a target that is this file.
  void must_not_be(const std::filesystem::path &target) const;

  // Replaces the channel list by the file, which is one of the current version.
  void load() const;

 private:
  std::filesystem::path path_;
  descriptor file_;
  int version_ = 0;
};

}  // namespace chlist
