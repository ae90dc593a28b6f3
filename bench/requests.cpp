// Requests for one channel. All of them look for the last one of the full list too, since walks end there.
#include "requests.h"

#include <channel/channel.h>

#include "full_store.h"
#include "trace_line.h"

namespace bench {

template <std::int16_t Number>
void index_of_number() {
  require(get_channel_index(Number) == Number - 1, "get_channel_index");
}

template void index_of_number<1>();
template void index_of_number<MAX_CHANNEL>();

template <std::int16_t Vindex>
void channel_at() {
  const channel_st *found = get_channel(Vindex);
  require(found != nullptr && found->service_id == Vindex + 1, "get_channel");
}

template void channel_at<0>();
template void channel_at<MAX_CHANNEL - 1>();

void index_by_ts_info() {
  const virtual_channel_st &last = get_virtual_channel_st(VIEW_ALL)[MAX_CHANNEL - 1];
  require(get_vch_index_by_ts_info(last.vch_tag, last.net_index, last.network_id, last.ts_id, last.frequency,
                                   last.service_id, last.polarisation) == MAX_CHANNEL - 1,
          "get_vch_index_by_ts_info");
}

void zap_to_last() {
  require(change_vindex_type(VIEW_ALL) == 0, "change_vindex_type");
  const std::int16_t vindex = get_channel_index(MAX_CHANNEL);
  require(check_skip_channel_index(vindex) == 0, "check_skip_channel_index");
  require(check_available_channel(vindex) == 1, "check_available_channel");
  const channel_st *service = get_channel(vindex);
  require(service != nullptr && service->service_id == MAX_CHANNEL, "get_channel");
  require(check_limited_channel(service) == 1, "check_limited_channel");
}

void write_trace_lines() {
  for (int i = 0; i < lines_per_run; ++i) {
    write_trace_line(i);
  }
  require(!was_argument_evaluated(), "leaving a trace line out");
}

}  // namespace bench
