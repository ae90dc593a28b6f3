// Everything that the page shows of the channel list in memory, once, as page.js reads it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "chlist/html/health.h"
#include "chlist/report.h"

namespace chlist {

struct listed_file {
  std::string name;
  int version = 0;
  std::size_t size = 0;
};

json page_data(const listed_file &file, const std::vector<health_finding> &findings);

}  // namespace chlist
