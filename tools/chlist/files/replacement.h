// A file that takes its target's place as a whole or not at all: a temporary file beside the target, brought to the
// disk and then renamed. A symbolic link stays one: what it points to is replaced.
#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "chlist/files/descriptor.h"

namespace chlist {

// What the caller's mask leaves of the mode of a new file or folder.
mode_t mode_of_new(mode_t wanted);

// The file that a link leads to, or will when it is written; a link that leads nowhere yet stays one as well.
std::filesystem::path behind_links(const std::filesystem::path &target);

// The program works in a descriptor's directory while this lives. The library composes paths of at most 63 characters,
// so it is given names there.
class working_directory {
 public:
  working_directory(const descriptor &directory, const std::string &name);
  ~working_directory();
  working_directory(const working_directory &) = delete;
  working_directory &operator=(const working_directory &) = delete;

 private:
  descriptor before_;
};

// Throws std::runtime_error (or std::system_error) with a readable text when the target is there and is no regular
// file, or one that nobody may write.
void must_be_replaceable(const std::filesystem::path &target);

// While this lives, the program works in the target's folder.
class replacement {
 public:
  // Throws when the target cannot be replaced, or its folder takes no file.
  explicit replacement(const std::filesystem::path &target);
  ~replacement();
  replacement(const replacement &) = delete;
  replacement &operator=(const replacement &) = delete;

  // The temporary file, empty at first: its name in the working directory.
  [[nodiscard]] const char *name() const { return name_; }

  // Goes on at the file's end.
  void write(std::string_view text);

  // Another file than the one that is replaced lends its mode and its owner.
  void take_after(const struct stat &model) { model_ = model; }

  // Gives the file the mode of the one that it replaces and, as far as the caller may, the owner; brings it to the
  // disk, and puts it in the target's place. The file goes away when this is not called, or throws.
  void take_place();

  // The same, and what was there is kept until this goes away; put_back() gives it its place again, as far as the file
  // system can exchange two names, and throws nothing.
  void take_place_for_now();
  void put_back();

 private:
  void take_attributes() const;
  void bring_to_disk();

  std::filesystem::path target_;
  std::optional<struct stat> model_;  // none for a new file
  std::string folder_name_;
  descriptor folder_;
  working_directory inside_;
  char name_[16] = ".chlist-XXXXXX";
  descriptor file_;
  bool is_renamed_ = false;
  bool was_there_ = false;  // another file, whose name is the temporary one now
};

// Puts a file with one text in the target's place. Throws as a replacement does; the target is then as it was.
void write_text_file(const std::filesystem::path &target, std::string_view text);

}  // namespace chlist
