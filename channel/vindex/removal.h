// What removals of whole networks and transponders do to the current view.
#pragma once

namespace channel {

// Makes the TV view current, or the radio view when TV is empty. The counts are those before any sweep.
void show_tv_or_radio(const char *operation);

}  // namespace channel
