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

// The companion of a file that is edited. One that cannot be read is told, and nobody touches it.
class edited_companion {
 public:
  explicit edited_companion(const std::filesystem::path &file);

  // What there is to say of it; empty when it can be read, or is not there.
  [[nodiscard]] const std::string &trouble() const { return trouble_; }

  // What was kept; nothing of what cannot be read.
  [[nodiscard]] const companion &kept() const { return kept_; }

  // Beside the target, of a list as it is now.
  [[nodiscard]] companion_to_write beside(const std::filesystem::path &target,
                                          const std::vector<changed_identity> &changes, const line_up &list) const;

  // What becomes of one that somebody else made of it.
  [[nodiscard]] companion_to_write to_write(const std::filesystem::path &target, companion made) const;

 private:
  std::filesystem::path file_;
  companion kept_;
  std::string trouble_;
};

}  // namespace chlist
