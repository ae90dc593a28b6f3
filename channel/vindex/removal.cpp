// Removal of view entries and of real channels, and the sweep. A pass over a view compacts it once.
#include "channel/vindex/removal.h"

#include <channel/removal.h>

#include <channel/dumps.h>
#include <channel/views.h>

#include "channel/identity.h"
#include "channel/log.h"
#include "channel/store/channel_list.h"
#include "channel/store/finders.h"
#include "channel/store/hierarchy.h"
#include "channel/store/links.h"
#include "channel/store/release.h"
#include "channel/store/service_index.h"
#include "channel/store/view.h"
#include "channel/text.h"
#include "channel/vindex/lookups.h"

namespace channel {
namespace {

template <class Action>
void for_each_swept_view(const Action &action) {
  for (int type = VIEW_ALL; type <= VIEW_FAVOURITE_LAST; ++type) {
    if (is_swept_view(type)) {
      action(find_view(type), type);
    }
  }
}

constexpr char sweeping[] = "remove_invalid_virtual_channel";

void remove_entries_of(const view &cleaned, const tagged_identity &id) {
  cleaned.remove_if([&id](const virtual_channel_st &entry) { return same_entry(entry, id); });
}

void remove_located(const located_service &found) {
  print_channel_info(found.service);
  doomed_services doomed;
  doomed.add(*found.service);
  count_down(found.transponder->rch_num);
}

void release_networks(std::uint8_t net_index, const char *operation) {
  doomed_services doomed;
  for (network_ch_st &network : networks_of(channel_list.network_list)) {
    if (network.net_index == net_index) {
      LOG_TRACE_AS(operation, 5, "network name(%s)\n", name_of(network).c_str());
      release_network(network, doomed);
    }
  }
}

}  // namespace

void sweep_views(service_index &index) {
  LOG_TRACE_AS(sweeping, 2, "\n");
  for_each_swept_view([&index](const view &swept, int /*type*/) {
    swept.remove_if([&index](const virtual_channel_st &entry) { return index.resolve(entry) == nullptr; });
  });
}

void sweep_and_link_views(service_index &index) {
  LOG_TRACE_AS(sweeping, 2, "\n");
  for_each_swept_view([&index](const view &swept, int type) {
    const bool is_linked = is_linked_view(type);
    swept.remove_if([&index, is_linked](virtual_channel_st &entry) {
      channel_st *service = index.resolve(entry);
      entry.rch = is_linked ? service : entry.rch;
      return service == nullptr;
    });
  });
  link_unswept_views(index);
}

void show_tv_or_radio(const char *operation) {
  if (channel_list.tv_vnumber >= 1) {
    change_vindex_type(VIEW_TV);
  } else if (channel_list.radio_vnumber >= 1) {
    change_vindex_type(VIEW_RADIO);
  } else {
    // Compatibility: the scan's level gates this line, since it follows from what a scan found.
    CHANNEL_LOG_ENTRY(log_module_scan, 0, "ERROR: %s:%d \n", operation, __LINE__);
  }
}

}  // namespace channel

using channel::tagged_identity;
using channel::view;

extern "C" {

int vtype_remove_by_vindex(int16_t vindex, int8_t type) {
  if (vindex < 0) {
    LOG_ERROR("vindex is small than zero\n");
    return -1;
  }
  const view cleaned = channel::fetch_view(type);
  if (!cleaned) {
    return -1;
  }
  if (vindex >= cleaned.size()) {
    LOG_ERROR("vindex is so big %d total %d\n", vindex, *cleaned.count);
    return -1;
  }
  LOG_TRACE(2, "vindex %d, vindex+1 %d, cnt %d\n", vindex, vindex + 1, cleaned.size() - vindex - 1);
  cleaned.remove_at(vindex);
  return 0;
}

int vtype_remove_by_net_index(uint8_t net_index, int8_t type) {
  const view cleaned = channel::fetch_view(type);
  if (!cleaned) {
    return -1;
  }
  cleaned.remove_if([net_index](const virtual_channel_st &entry) { return entry.net_index == net_index; });
  return 0;
}

int vtype_remove_vch(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency,
                     uint16_t service_id, uint8_t polarisation, int8_t type) {
  const tagged_identity id = {{net_index, network_id, ts_id, frequency, service_id, polarisation}, tag};
  const view cleaned = channel::fetch_view(type);
  if (!cleaned) {
    return -1;
  }
  constexpr const char *operation = "vtype_remove_vch";
  cleaned.remove_if([&id](const virtual_channel_st &entry) {
    const bool removed = channel::same_entry(entry, id);
    if (removed) {
      LOG_TRACE_AS(operation, 2, "%x,%x,%x,%ld,%x,%d\n", id.net_index, id.network_id, id.ts_id,
                   channel::as_long(id.frequency), id.service_id, id.polarisation);
    }
    return removed;
  });
  return 0;
}

int vtype_remove_virtual_channel_st(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id,
                                    uint32_t frequency, uint16_t service_id, uint8_t polarisation, int8_t type) {
  const view cleaned = channel::fetch_view(type);
  if (!cleaned) {
    return -1;
  }
  channel::remove_entries_of(cleaned, {{net_index, network_id, ts_id, frequency, service_id, polarisation}, tag});
  return cleaned.size();
}

int remove_invalid_virtual_channel(void) {
  channel::service_index index;
  channel::sweep_views(index);
  return 0;
}

// Compatibility: only a removal by transport stream id alone is followed by the sweep; hosts that know the frequency
// sweep once, after many removals.
int remove_channel_st(uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency, uint16_t service_id,
                      uint8_t polarisation) {
  if (channel::channel_list.network_num == 0) {
    return -1;
  }
  const auto found = channel::locate({net_index, network_id, ts_id, frequency, service_id, polarisation},
                                     channel::misses_of{__func__, true});
  if (found.service == nullptr) {
    return -1;
  }
  channel::remove_located(found);
  if (frequency == 0) {
    remove_invalid_virtual_channel();
  }
  return 0;
}

int remove_virtual_channel_st(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency,
                              uint16_t service_id, uint8_t polarisation) {
  LOG_TRACE(2, "S \n");
  const tagged_identity id = {{net_index, network_id, ts_id, frequency, service_id, polarisation}, tag};
  channel::for_each_swept_view([&id](const view &cleaned, int /*type*/) { channel::remove_entries_of(cleaned, id); });
  if (channel::find_in_view(channel::find_view(VIEW_ALL), id) < 0) {
    remove_channel_st(net_index, network_id, ts_id, frequency, service_id, polarisation);
  }
  remove_invalid_virtual_channel();
  LOG_TRACE(2, "E \n");
  return 0;
}

int remove_channel_info_by_net_index(uint8_t net_index) {
  LOG_PLAIN(5, "\n");
  channel::release_networks(net_index, __func__);
  channel::show_tv_or_radio(__func__);
  remove_invalid_virtual_channel();
  return 0;
}
}
