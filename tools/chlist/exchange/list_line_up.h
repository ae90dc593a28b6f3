// The channel list in memory as a line-up, for the writers of formats.
#pragma once

#include "chlist/exchange/line_up.h"

namespace chlist {

// The services as the ALL view has them, those that it does not show behind it, and the favourites. The views have to
// be linked, as they are after a load. What a line-up has no place for is counted: other views, entries that show
// nothing, groups that nobody uses.
line_up take_line_up(loss_counts &lost);

}  // namespace chlist
