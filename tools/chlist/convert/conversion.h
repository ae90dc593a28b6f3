// Turns a channel file of an earlier version into the list in memory, and holds the two against each other.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

#include "chlist/files/channel_file.h"
#include "chlist/line_up/list_contents.h"

namespace chlist {

// Something that the converted list has no place for, and how much of it the file has.
struct loss {
  std::string_view key;
  std::string_view text;
  std::size_t count = 0;
};

// A view or a group table whose count lies outside its array.
struct cut_array {
  std::string_view array;
  int group = -1;  // of favourites: its index
  int counted = 0;
  std::size_t carried = 0;
};

struct conversion {
  int version = 0;
  hierarchy_counts carried;
  std::vector<loss> losses;
  std::vector<known_service> duplicates;
  std::vector<placed_entry> unresolved;
  std::vector<cut_array> cut;

  [[nodiscard]] bool has_losses() const {
    return std::ranges::any_of(losses, [](const loss &lost) { return lost.count > 0; });
  }
  [[nodiscard]] bool has_findings() const { return !duplicates.empty() || !unresolved.empty() || !cut.empty(); }
};

// Refuses a file of the current version, of one it does not know, and one that is short. The converted list is linked.
conversion convert_to_memory(const channel_file &input);

}  // namespace chlist
