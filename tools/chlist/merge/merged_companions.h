// What stands beside two lists that become one.
#pragma once

#include <filesystem>
#include <vector>

#include "chlist/files/kept_in_step.h"
#include "chlist/merge/merge_outcome.h"

namespace chlist {

// Those that services which moved, or have another name, had and have.
std::vector<changed_identity> identities_in(const merge_outcome &outcome);

class merged_companions {
 public:
  merged_companions(const std::filesystem::path &list, const std::filesystem::path &scan);

  // The list in memory is the merged one. What is newer wins for the services that the new list has; names stay.
  [[nodiscard]] companion_to_write of(const merge_outcome &outcome, const std::filesystem::path &output) const;

  [[nodiscard]] bool has_notes() const { return !list_.note().empty() || !scan_.note().empty(); }
  void print_notes() const;

 private:
  edited_companion list_;
  edited_companion scan_;
};

}  // namespace chlist
