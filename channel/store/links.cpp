// Refreshes the cached pointer of every view entry from the hierarchy, after records were loaded or merged.
#include "channel/store/links.h"

#include <algorithm>
#include <cstdint>

#include "channel/log.h"
#include "channel/store/channel_list.h"
#include "channel/store/group_table.h"
#include "channel/store/service_index.h"
#include "channel/store/view.h"

namespace channel {
namespace {

constexpr char operation[] = "link_rch_info";

void link_view(int type, service_index &index) {
  const view linked = fetch_view(static_cast<std::int8_t>(type));
  if (!linked) {
    return;
  }
  for (virtual_channel_st &entry : linked) {
    entry.rch = index.resolve(entry);
    if (entry.rch == nullptr) {
      LOG_PLAIN(0, "ERROR: link...[%d][%d]-n_in %d, on %d, ts %d, freq %ld, sid %d, polr %d\n", type,
                static_cast<int>(&entry - linked.entries), entry.net_index, entry.network_id, entry.ts_id,
                as_long(entry.frequency), entry.service_id, entry.polarisation);
    }
  }
}

}  // namespace

// Kept: the walk visits one view past the last favourite group; it is empty or, behind a full table, unknown.
int link_views(service_index &index) {
  LOG_TRACE_AS(operation, 2, "\n");
  if (channel_list.cur_vch == nullptr || channel_list.cur_vnumber == nullptr) {
    LOG_ERROR_AS(operation, " channel_list NULL !! ");
    return -1;
  }
  for (int type = VIEW_ALL; type <= VIEW_PROMOTION; ++type) {
    link_view(type, index);
  }
  const int past_last_group = VIEW_FAVOURITE + std::min<int>(favourite_table().counted(), MAX_FAV);
  for (int type = VIEW_FAVOURITE; type <= past_last_group; ++type) {
    link_view(type, index);
  }
  return 0;
}

int link_rch_info() {
  service_index index;
  return link_views(index);
}

}  // namespace channel
