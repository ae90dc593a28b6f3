// The ends of lines, and three-way merges of the parts of one: what the list changed is taken over, all else stays as
// somebody wrote it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace chlist {

// What a line ends with: "\n", "\r\n" or nothing.
std::string_view line_end_of(std::string_view text);
std::string_view without_line_end(std::string_view text);

struct text_unit {
  std::string key;   // the same in all versions of a part
  std::string text;  // with the key in it, as it stands

  bool operator==(const text_unit &) const = default;
};

// A part that is new stands behind the one that it follows in the newer version.
std::vector<text_unit> merged_units(std::vector<text_unit> kept, const std::vector<text_unit> &before,
                                    const std::vector<text_unit> &now);

}  // namespace chlist
