// The columns of CSV that an import takes: fields of services, and where ALL and the favourites show them.
#pragma once

#include <span>
#include <string_view>

#include "chlist/fields/service_fields.h"

namespace chlist {

struct csv_column {
  std::string_view name;
  bool is_needed = false;
};

// In the order in which they are set.
std::span<const csv_column> csv_columns();

// Whether a listing has a column of this name that others tell: where a service stands, and what the list numbers anew.
bool is_told_by_other_columns(std::string_view name);

// Throws bad_line when the text is none of the column's values.
void set_column(line_up_service &service, const csv_column &column, std::string_view text);

inline constexpr std::string_view favourites_column = "favourites";

}  // namespace chlist
