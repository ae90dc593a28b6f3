// Three-way merges of the parts of a line: what the list changed is taken over, all else stays as somebody wrote it.
#pragma once

#include <string>
#include <vector>

namespace chlist {

struct text_unit {
  std::string key;   // the same in all versions of a part
  std::string text;  // with the key in it, as it stands

  bool operator==(const text_unit &) const = default;
};

// A part that is new stands behind the one that it follows in the newer version.
std::vector<text_unit> merged_units(std::vector<text_unit> kept, const std::vector<text_unit> &before,
                                    const std::vector<text_unit> &now);

}  // namespace chlist
