// The entries of a view, sorted by the library and filtered.
#pragma once

#include <channel/records.h>

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "chlist/fields/where.h"
#include "chlist/text/term.h"

namespace chlist {

// How a view can be sorted.
struct view_sort {
  std::string_view name;
  std::int8_t type;  // the library's
  std::string_view about;
};

std::span<const view_sort> all_sorts();
std::vector<term> terms_of_sorts();

// Sorts a view of a list as the library does. Throws when there is no sort of that name.
void sort_view(channel_list_st &list, std::int8_t view, std::string_view sort);

// The entries of a view that meet every condition.
std::vector<service_row> filtered(const line_up &list, std::int8_t view, const std::vector<where> &conditions);

}  // namespace chlist
