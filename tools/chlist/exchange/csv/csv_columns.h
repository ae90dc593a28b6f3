// The columns of CSV that an import takes, and what they set.
#pragma once

#include <span>
#include <string_view>

#include "chlist/exchange/line_up.h"

namespace chlist {

struct csv_column {
  std::string_view name;
  // Throws bad_line, with the name of the column in its reason, when the text cannot be read.
  void (*set)(line_up_service &service, std::string_view text, std::string_view name);
  bool is_needed = false;
};

// In the order in which they are set.
std::span<const csv_column> csv_columns();

inline constexpr std::string_view favourites_column = "favourites";

}  // namespace chlist
