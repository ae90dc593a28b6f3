// Refreshing the pointers from view entries to their real channels.
#pragma once

#include "channel/store/service_index.h"

namespace channel {

// Resolves every entry of every view, the work view included; an entry that does not resolve gets null and is reported.
// 0, or -1 when no view is current.
int link_rch_info();

// The same, with an index that the caller built.
int link_views(service_index &index);

// The same behind a sweep that has linked the views which it visits.
int link_unswept_views(service_index &index);

// Whether link_rch_info gets to a view.
bool is_linked_view(int type);

}  // namespace channel
