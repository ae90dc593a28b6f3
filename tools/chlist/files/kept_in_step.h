// The companion of a channel file while somebody edits that: its keys follow the identities of services, and what is
// of services that are gone goes with them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "chlist/files/list_file.h"

namespace chlist {

struct changed_identity {
  channel::identity before = {};
  channel::identity after = {};
};

// changes: in the order in which they were made.
companion in_step(companion kept, const std::vector<changed_identity> &changes, const line_up &list);

// What is said of a companion whose channel file is another one than it was written with.
std::string note_out_of_step(const std::filesystem::path &file);

// The companion of a file that is edited. One that cannot be read is told, and nobody touches it.
class edited_companion {
 public:
  explicit edited_companion(const std::filesystem::path &file);

  [[nodiscard]] bool is_readable() const { return is_readable_; }

  // What there is to say of it: it cannot be read, or it is of another file. Empty when all is well, or none is there.
  [[nodiscard]] const std::string &note() const { return note_; }

  // What was kept; nothing of what cannot be read.
  [[nodiscard]] const companion &kept() const { return kept_; }

  // What is to stand beside the target, for a list as it is now.
  [[nodiscard]] companion_to_write beside(const std::filesystem::path &target,
                                          const std::vector<changed_identity> &changes, const line_up &list) const;

  // What becomes of one that somebody else made of it.
  [[nodiscard]] companion_to_write to_write(const std::filesystem::path &target, companion made) const;

 private:
  companion kept_;
  bool is_readable_ = true;
  std::string note_;
};

}  // namespace chlist
