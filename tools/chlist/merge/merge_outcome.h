// Merges a new channel list into the list in memory. The library adds, keeps and deletes; what a receiver does not do
// is done around it: sources are paired by name, services that moved are found again and keep what the user made of
// them, groups are those of their names, and new numbers are free ones.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "chlist/compare/rescan.h"
#include "chlist/compare/rescan_report.h"
#include "chlist/compare/sources.h"
#include "chlist/files/channel_file.h"
#include "chlist/line_up/list_contents.h"
#include "chlist/merge/new_numbers.h"

namespace chlist {

struct merge_choices {
  bool keeps_missing = false;  // services that the new list lacks stay
  bool is_forced = false;      // even if nothing stays; what is in doubt goes
  numbering numbers;
};

struct changed_service {
  known_service known;
  int service_type = 0;
  int source_type = 0;
  std::vector<placed_entry> entries;  // that it got, or that it takes along
};

// What moved keeps its entries. The list goes on calling it as before.
struct moved_service : service_move {
  std::vector<placed_entry> entries;
};

struct renamed_service : service_rename {
  std::vector<placed_entry> entries;
};

struct doubtful_move : service_doubt {
  std::vector<placed_entry> entries;  // none when it goes
};

struct full_view {
  view_name view;
  std::size_t capacity = 0;
  std::size_t left_out = 0;  // added services without an entry
};

struct merge_outcome {
  std::vector<paired_source> sources;  // of the new list
  std::vector<changed_service> added;
  std::vector<changed_service> deleted;
  std::vector<moved_service> moved;
  std::vector<renamed_service> renamed;
  std::vector<doubtful_move> doubtful;    // unless the merge is forced, they stay
  std::vector<changed_service> missing;   // in the new list, and staying
  std::size_t kept = 0;                   // those that moved and those that are missing among them
  std::vector<placed_entry> dropped;      // entries of the list that resolved to no service before
  std::vector<known_service> duplicates;  // services of the new list that occur twice in it
  std::vector<full_view> full;
  std::vector<channel::identity> emptied;  // transponders that went with their last service
  std::vector<std::string> lost;           // what of the list's file cannot be saved again
  std::vector<std::string> notes;          // groups and numbers that do not fit

  [[nodiscard]] bool has_findings() const;
};

// Refuses files of any version but the current one, files that are short, and a merge that keeps no service unless it
// is forced. The merged list is in memory afterwards.
merge_outcome merge_in_memory(const channel_file &list, const channel_file &scan, const merge_choices &choices);

}  // namespace chlist
