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

// The parts between separators, each known by its place; and parts put together again.
std::vector<text_unit> units_by_place(std::string_view text, char separator);
std::string joined_units(const std::vector<text_unit> &units, std::string_view separator);

// A part that is new stands behind the one that it follows in the newer version.
std::vector<text_unit> merged_units(std::vector<text_unit> kept, const std::vector<text_unit> &before,
                                    const std::vector<text_unit> &now);

}  // namespace chlist
