// What removals do to the views, for operations that remove many channels.
#pragma once

#include "channel/store/service_index.h"

namespace channel {

// Removes every entry that does not resolve, as remove_invalid_virtual_channel does, with an index that the caller
// built.
void sweep_views(service_index &index);

// The sweep, and link_rch_info behind it: what is left was resolved for the sweep, and is linked to that.
void sweep_and_link_views(service_index &index);

// Makes the TV view current, or the radio view when TV is empty. The counts are those before any sweep.
void show_tv_or_radio(const char *operation);

}  // namespace channel
