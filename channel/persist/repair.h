// Making the channel list of one of an earlier version.
#pragma once

#include "channel/persist/detached_list.h"

namespace channel::persist {

// Fills the channel list in memory, which was initialised before, from a list of version 9, or of versions 7 and 8. Its
// services are taken over; what is not goes with it. Entries of views have no pointers yet.
void convert_list(detached_list<current_format> old, int version);
void convert_list(detached_list<version_8_format> old, int version);

}  // namespace channel::persist
