// Everything that the page shows of a list, once, as page.js reads it.
#pragma once

#include <string>

#include "chlist/check/findings.h"
#include "chlist/line_up/line_up.h"
#include "chlist/report.h"

namespace chlist {

// file_name: as the page's title has it. found: of the file that the list was loaded from.
json page_data(const std::string &file_name, const line_up &list, const file_findings &found);

}  // namespace chlist
