// A list of any format, a channel file among them, as a channel list that stands beside the one that is worked on.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "chlist/line_up/line_up.h"

namespace chlist {

struct any_list {
  line_up list;
  std::vector<std::string> notes;  // what of it could not be read, one text for each
};

// The list has what stands beside it, or what the format tells beyond a channel list. A list of another format is what
// an import makes of it, with the views and numbers that it gets there. The list in memory is lost. Throws when the
// path cannot be read.
any_list read_any_list(const std::filesystem::path &path);

}  // namespace chlist
