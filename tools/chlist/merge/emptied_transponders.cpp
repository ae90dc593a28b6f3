#include "chlist/merge/emptied_transponders.h"

#include <channel/store.h>
#include <channel/views.h>

#include "channel/store/hierarchy.h"
#include "channel/store/release.h"

namespace chlist {
namespace {

auto networks_in_memory() { return channel::networks_of(get_channel_list()->network_list); }

channel::identity identity_of(const network_ch_st &network, const tp_ch_st &transponder) {
  return {network.net_index, network.network_id, transponder.ts_id, transponder.frequency, 0, transponder.polarisation};
}

}  // namespace

occupied_transponders::occupied_transponders() {
  for (const channel::filed_service &filed : channel::all_services_of(get_channel_list()->network_list)) {
    transponders_.insert(&filed.transponder);
  }
}

std::vector<channel::identity> occupied_transponders::remove_emptied(const std::set<std::uint8_t> &covered) const {
  std::vector<channel::identity> removed;
  for (network_ch_st &network : networks_in_memory()) {
    if (!covered.contains(network.net_index)) {
      continue;
    }
    for (tp_ch_st &transponder : channel::transponders_of(network)) {
      if (channel::is_empty(transponder.rch_list) && transponders_.contains(&transponder)) {
        removed.push_back(identity_of(network, transponder));
        release_tp_ch_info(&transponder);
        channel::count_down(network.tp_num);
      }
    }
  }
  return removed;
}

}  // namespace chlist
