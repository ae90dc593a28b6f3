// The sort behind every sort of a view by name, number and the like.
#pragma once

#include <channel/records.h>
#include <span>

namespace channel {

// Sorts entries, of any list, by the channels that they point to; equal ones keep their order. 0, or -1 for a type that
// is unknown or not supported.
int qsort_virtual_channel(std::span<virtual_channel_st> entries, int sort_type);

}  // namespace channel
