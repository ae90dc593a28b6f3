// A channel list as a line-up, whether it is the one in memory or one that was read beside it.
#pragma once

#include <channel/records.h>

#include "chlist/line_up/line_up.h"

namespace chlist {

// Everything but reserved bytes. Entries lead to the services that the library's finder finds by their identities;
// nothing is said, and the list stays as it is.
line_up line_up_of(channel_list_st &list);

// The same of the list in memory.
line_up line_up_in_memory();

}  // namespace chlist
