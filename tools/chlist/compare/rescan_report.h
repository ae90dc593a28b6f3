// What there is to tell of services that moved, were renamed, or may have become another: of a merge and of two scans
// alike, as text and as JSON.
#pragma once

#include <string>
#include <vector>

#include "chlist/compare/rescan.h"
#include "chlist/json/json.h"

namespace chlist {

struct service_move {
  known_service before;
  known_service after;
  found_by by = found_by::ids;
};

struct service_rename {
  known_service before;
  known_service after;
};

struct service_doubt {
  known_service before;
  std::vector<known_service> candidates;  // the first of them
  std::size_t count = 0;                  // of all
};

// Those of two lists; of a service that moved and was renamed there are both.
struct rescan_report {
  std::vector<service_move> moved;
  std::vector<service_rename> renamed;
  std::vector<service_doubt> doubtful;
};

rescan_report report_of(const rescan &again, const line_up &before, const line_up &after);

// "\"News\" (...) -> \"News 24\" (...), found by ids".
std::string text_of(const service_move &move);

// "\"News\" (...) -> \"News 24\"".
std::string text_of(const service_rename &rename);

// "\"News\" (...) may have become \"News\" (...), or one of 2 others".
std::string text_of(const service_doubt &doubt);

json json_of(const service_move &move);
json json_of(const service_rename &rename);
json json_of(const service_doubt &doubt);

}  // namespace chlist
