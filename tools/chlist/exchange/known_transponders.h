// Services of formats that say ids and no frequency, as playlists do, are received where another list has them.
#pragma once

#include "chlist/exchange/loss_counts.h"
#include "chlist/line_up/line_up.h"

namespace chlist {

// Services without a frequency take the transponder, the source, the type and the PIDs of the one with the same
// network, transport stream and service ids in the other list, if there is one. Those that go on without are counted: a
// channel list knows them by their ids, but nobody can tune to them.
void take_transponders(line_up &list, const line_up *known, loss_counts &lost);

}  // namespace chlist
