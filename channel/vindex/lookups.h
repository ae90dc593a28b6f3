// Lookups for other operations: by identity, and by position in passes over whole views.
#pragma once

#include <channel/records.h>
#include <cstdint>

#include "channel/identity.h"
#include "channel/store/service_index.h"
#include "channel/store/view.h"

namespace channel {

// The first position in a view that vtype_get_vch_index_by_ts_info finds, or -1.
std::int16_t find_in_view(const view &searched, const tagged_identity &id);

// What get_vch_index_by_ts_info finds, and logs.
std::int16_t find_in_current_view(const tagged_identity &id);

// What get_channel_by_vindex finds, and logs, resolved by the index of a pass.
channel_st *channel_by_vindex(std::int16_t vindex, service_index &index);

}  // namespace channel
