// Filing a real channel under its network and transponder, which are created as needed. Written once for two ways of
// finding them: walks over the lists as they stand, and the index of a pass that files many.
#pragma once

#include <channel/records.h>
#include <channel/store.h>
#include <cstdint>

#include "channel/identity.h"
#include "channel/log.h"
#include "channel/store/hierarchy.h"
#include "channel/text.h"

namespace channel {

// Counts are 16 bits in the file; a list that has reached the end of its count takes no more.
bool can_count_one_more(std::uint16_t count, const char *operation);

// The hierarchy as its lists stand: every step is a walk, and nothing is kept that an addition would change.
struct walked_hierarchy {
  static network_ch_st *find_network(std::uint8_t net_index, std::uint16_t network_id) {
    return get_network_ch_info(net_index, network_id);
  }
  static tp_ch_st *find_transponder(network_ch_st &network, const identity &id) {
    return get_tp_ch_info_by_network_ch(&network, id.ts_id, id.frequency, id.polarisation);
  }
  static channel_st *find_service(tp_ch_st &transponder, std::uint16_t service_id) {
    return get_rch_ch_info_by_tp_ch(&transponder, service_id);
  }
  static tp_ch_st &record_of(tp_ch_st &filed) { return filed; }
  static void add(const network_ch_st & /*network*/) {}
  static tp_ch_st *add(const network_ch_st & /*network*/, tp_ch_st &transponder) { return &transponder; }
  static void add(const tp_ch_st & /*on*/, const channel_st & /*service*/) {}
};

namespace filing {

inline constexpr char operation[] = "add_rch_info";

template <class Hierarchy>
network_ch_st *find_or_create_network(Hierarchy &hierarchy, const channel_st &service, const char *name) {
  network_ch_st *network = hierarchy.find_network(service.net_index, service.network_id);
  if (network == nullptr) {
    network = alloc_network_ch_info(service.net_index, service.network_id, name);
    if (network != nullptr) {
      hierarchy.add(*network);
    }
  }
  return network;
}

// What the hierarchy knows a transponder by, or null.
template <class Hierarchy>
auto find_or_create_transponder(Hierarchy &hierarchy, network_ch_st &network, const channel_st &service) {
  const identity id = identity_of(service);
  auto found = hierarchy.find_transponder(network, id);
  if (found == nullptr && can_count_one_more(network.tp_num, operation)) {
    tp_ch_st *transponder = alloc_tp_ch_info(id.ts_id, id.frequency, id.polarisation);
    append(transponder->list, network.tp_list);
    ++network.tp_num;
    found = hierarchy.add(network, *transponder);
  }
  return found;
}

}  // namespace filing

// Does what add_rch_info does, and gives the service that is filed under the identity then: the given one, or, when
// there was one already, that one. The given one stays unlinked in that case, the caller's to free; so it does when the
// hierarchy takes no more, and there is none to give.
template <class Hierarchy>
channel_st *file_service(Hierarchy &hierarchy, channel_st &rch, const char *network_name) {
  network_ch_st *network = filing::find_or_create_network(hierarchy, rch, network_name);
  if (network == nullptr) {
    return nullptr;
  }
  const auto on = filing::find_or_create_transponder(hierarchy, *network, rch);
  if (on == nullptr) {
    return nullptr;
  }
  if (channel_st *filed = hierarchy.find_service(*on, rch.service_id); filed != nullptr) {
    LOG_WARNING_AS(filing::operation, "rch: s_id(0x%x), n_id(0x%x), ts_id(0x%x), name(%s), type(0x%04x)\n",
                   filed->service_id, filed->network_id, filed->ts_id, name_of(*filed).c_str(), type_of(*filed));
    return filed;
  }
  tp_ch_st &transponder = hierarchy.record_of(*on);
  if (!can_count_one_more(transponder.rch_num, filing::operation)) {
    return nullptr;
  }
  LOG_TRACE_AS(filing::operation, 2, "rch: s_id(0x%x), n_id(0x%x), ts_id(0x%x), name(%s), type(0x%04x)\n",
               rch.service_id, rch.network_id, rch.ts_id, name_of(rch).c_str(), type_of(rch));
  append(rch.list, transponder.rch_list);
  ++transponder.rch_num;
  hierarchy.add(*on, rch);
  return &rch;
}

}  // namespace channel
