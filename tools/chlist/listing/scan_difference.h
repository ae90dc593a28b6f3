// What became of the services of one scan in another.
#pragma once

#include <vector>

#include "chlist/compare/rescan_report.h"
#include "chlist/json/json.h"

namespace chlist {

struct scan_difference {
  std::vector<known_service> added;
  std::vector<known_service> gone;
  rescan_report changes;

  [[nodiscard]] bool is_empty() const;
};

// The scans have to number their sources alike.
scan_difference difference_of_scans(const line_up &before, const line_up &after);

// Added, removed, moved, renamed and doubtful services, as a merge reports them.
void put_scan_difference(json &document, const scan_difference &found);

void print_scan_difference(const scan_difference &found);

}  // namespace chlist
