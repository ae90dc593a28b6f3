// Merges a new channel list into the list in memory and finds out, from the list before and after, what that changed.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "chlist/files/channel_file.h"
#include "chlist/list_contents.h"

namespace chlist {

struct changed_service {
  known_service known;
  int service_type = 0;
  int source_type = 0;
  std::vector<placed_entry> entries;  // that it got, or that it takes along
};

struct full_view {
  view_name view;
  std::size_t capacity = 0;
  std::size_t left_out = 0;  // added services without an entry
};

struct merge_outcome {
  std::vector<changed_service> added;
  std::vector<changed_service> deleted;
  std::size_t kept = 0;
  std::vector<placed_entry> dropped;      // entries of the list that resolved to no service before
  std::vector<known_service> duplicates;  // services of the new list that occur twice in it
  std::vector<full_view> full;
  std::vector<std::string> lost;  // what of the list's file cannot be saved again

  [[nodiscard]] bool has_findings() const {
    return !dropped.empty() || !duplicates.empty() || !full.empty() || !lost.empty();
  }
};

// Refuses files of any version but the current one, and files that are short. The merged list is in memory afterwards.
merge_outcome merge_in_memory(const channel_file &list, const channel_file &scan);

}  // namespace chlist
