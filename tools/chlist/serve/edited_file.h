// The file that an editor has open: read once, watched, and written back in its own form.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "chlist/files/channel_file.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

class edited_file {
 public:
  // Throws when it cannot be read.
  explicit edited_file(const std::filesystem::path &path);

  [[nodiscard]] const std::filesystem::path &path() const { return path_; }

  // Takes it into memory as it was read. Returns what a save does not write again, one text for each.
  [[nodiscard]] std::vector<std::string> load() const;

  // Whether somebody else wrote it meanwhile; and what it is now, beside the list in memory, or to go on with.
  [[nodiscard]] bool is_changed() const;
  [[nodiscard]] line_up read_beside() const;
  void read_again();

  // Replaces it by the list in memory, and keeps what it was as FILE.bak. Throws when it is not what was read.
  void save();

 private:
  std::filesystem::path path_;
  channel_file input_;
};

}  // namespace chlist
