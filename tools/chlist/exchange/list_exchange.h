// A channel list as the writers of formats take it.
#pragma once

#include <channel/records.h>

#include "chlist/exchange/loss_counts.h"

namespace chlist {

// The services as the ALL view has them, those that it does not show behind it, and the favourites of the groups that
// there are. What no format has a place for is counted: other views, entries that show nothing, groups that nobody
// uses.
line_up take_line_up(channel_list_st &list, loss_counts &lost);

}  // namespace chlist
