// A channel file that is read: opened once, its bytes taken as they are. What is looked at, and what is loaded, is the
// very file that was opened, even if another one takes its place meanwhile; nothing is asked of the system afterwards.
#pragma once

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "chlist/files/file_bytes.h"
#include "chlist/files/file_stamp.h"

namespace chlist {

// A file that is no channel file of any version: a list of another format, perhaps.
class foreign_file : public std::runtime_error {
 public:
  foreign_file(std::filesystem::path path, const std::string &why);
  [[nodiscard]] const std::filesystem::path &path() const { return path_; }

 private:
  std::filesystem::path path_;
};

class channel_file {
 public:
  // Throws when there is no regular file to read, or not even a version in it.
  explicit channel_file(const std::filesystem::path &path);
  // Of bytes that were made: the path is what errors begin with.
  channel_file(std::filesystem::path path, std::vector<std::byte> bytes);

  [[nodiscard]] int version() const { return version_; }
  [[nodiscard]] const std::filesystem::path &path() const { return path_; }
  [[nodiscard]] byte_span bytes() const { return bytes_; }

  // Throws an error that begins with the file's path.
  [[noreturn]] void refuse(const std::string &why) const;
  [[noreturn]] void refuse_as_short() const;
  // Its version, and what is said of it: ": only 7, 8 and 9 can be converted".
  [[noreturn]] void refuse_version(const std::string &why) const;

  // Refuses a file of another version than the current one.
  void must_be_current() const;

  // Throws when it is no longer the file that was read: what somebody wrote meanwhile is not overwritten.
  void must_be_unchanged() const;

  // Refuses a target that is this file.
  void must_not_be(const std::filesystem::path &target) const;

 private:
  void must_have_version() const;

  std::filesystem::path path_;
  std::optional<file_stamp> stamp_;  // none of bytes that were made
  std::vector<std::byte> bytes_;
  int version_ = 0;
};

// The number in front of every channel file; 0 of bytes too few for one.
int version_in(byte_span file);
inline constexpr int first_known_version = 7;
bool is_known_version(int version);

// Whether a file that begins so is a channel file of a version that is known.
bool is_channel_file(std::string_view beginning);

}  // namespace chlist
