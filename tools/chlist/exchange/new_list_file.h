// The channel file that a command makes of something else. One that is replaced may be somebody's work: what it was is
// kept, as its backup and in its history, and that is said.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "chlist/files/companion.h"
#include "chlist/json/json.h"

namespace chlist {

class new_list_file {
 public:
  // "-" is standard output. A backup is of a channel file only.
  // made_by: the command, for the history of a list that is replaced.
  new_list_file(const std::filesystem::path &output, bool keeps_backup, std::string made_by);

  // The list in memory, and what stands beside it.
  void write_list(const companion &beside) const;
  void write_bytes(std::string_view bytes) const;

  // That a backup was kept, for people; empty when none was.
  [[nodiscard]] std::string note() const;
  [[nodiscard]] json backup() const;

 private:
  // The backup stands beside the output as it was named, unless that is a link.
  [[nodiscard]] std::string name_of_backup() const;

  const std::filesystem::path &output_;
  std::string made_by_;
  bool keeps_backup_ = false;
};

// Whether a companion is written: it needs something in it, and a place.
bool has_companion(const std::filesystem::path &output, const companion &beside);

// What the channel file has no place for, and whether it is in the companion instead.
std::string title_of_losses(const std::filesystem::path &output, bool are_kept);

// The companion's name; null when there is nothing for it, or no place.
json json_of_companion(const std::filesystem::path &output, const companion &beside);

}  // namespace chlist
