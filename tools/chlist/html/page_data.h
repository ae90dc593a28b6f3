// Everything that the page shows of the channel list in memory, once, as page.js reads it.
#pragma once

#include <string>

#include "chlist/check/findings.h"
#include "chlist/report.h"

namespace chlist {

// file_name: as the page's title has it. found: of the file that the list was loaded from.
json page_data(const std::string &file_name, const file_findings &found);

}  // namespace chlist
