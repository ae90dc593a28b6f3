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

constexpr char linking[] = "link_rch_info";

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

bool is_list_missing() { return channel_list.cur_vch == nullptr || channel_list.cur_vnumber == nullptr; }

// Compatibility: the walk visits one view past the last favourite group; it is empty or, behind a full table, unknown.
int last_linked_view() { return VIEW_FAVOURITE + std::min<int>(favourite_table().counted(), MAX_FAV); }

// Links the views that a rule leaves.
template <class Rule>
int link_views_but(const Rule &is_left_out, service_index &index) {
  LOG_TRACE_AS(linking, 2, "\n");
  if (is_list_missing()) {
    LOG_ERROR_AS(linking, " channel_list NULL !! ");
    return -1;
  }
  for (int type = VIEW_ALL; type <= last_linked_view(); ++type) {
    if (is_linked_view(type) && !is_left_out(type)) {
      link_view(type, index);
    }
  }
  return 0;
}

}  // namespace

bool is_linked_view(int type) {
  return !is_list_missing() && (type <= VIEW_PROMOTION || (type >= VIEW_FAVOURITE && type <= last_linked_view()));
}

int link_views(service_index &index) {
  return link_views_but([](int /*type*/) { return false; }, index);
}

int link_unswept_views(service_index &index) { return link_views_but(is_swept_view, index); }

int link_rch_info() {
  service_index index;
  return link_views(index);
}

}  // namespace channel
