// Channel numbers: as they are written, and entries that carry them.
#pragma once

#include <channel/records.h>

#include <string>
#include <string_view>

#include "chlist/line_up/selection.h"

namespace chlist {

// "7" or "7-2": 1 to 32767, and 0 to 32767 for the minor number. Throws std::runtime_error that names the value and the
// range.
channel_number number_from(std::string_view text);

channel_number number_of(const virtual_channel_st &entry);
void set_number(virtual_channel_st &entry, const channel_number &number);

}  // namespace chlist
