// What a receiver asks the list for one channel at a time, each checked while it is measured: a lookup must find what
// it looks for.
#pragma once

#include <channel/records.h>

#include <cstdint>

namespace bench {

template <std::int16_t Number>
void index_of_number();
template <std::int16_t Vindex>
void channel_at();
void index_by_ts_info();

// The whole road of one zapping request, to the last entry of the full ALL view and the last service of the hierarchy:
// makes the view current, finds the number, and asks what has to be known before the receiver tunes.
void zap_to_last();

// A thousand log lines above the level.
void write_trace_lines();

}  // namespace bench
