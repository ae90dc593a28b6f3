// Counts that come from files.
#pragma once

namespace channel::persist {

// Brings every view and group count of the channel list that lies outside its array to the nearest one inside, and says
// so in the operation's name.
void bring_counts_into_arrays(const char *operation);

}  // namespace channel::persist
