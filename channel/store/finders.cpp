// The finders of the hierarchy. They walk the lists and keep nothing between calls, because hosts write the records
// directly. The first match in list order wins.
#include "channel/store/finders.h"

#include <channel/store.h>

#include "channel/log.h"
#include "channel/store/channel_list.h"

namespace channel {
namespace {

// Kept: a missing transponder is reported at level 5 and again at level 2; receivers' logs are read at either.
struct resolving {
  static constexpr char operation[] = "get_channel_st";

  static void no_network(const identity &id) {
    LOG_TRACE_AS(operation, 5, "Fail to find network_ch ni=0x%x,on_id=0x%x,ts_id=0x%x,freq=%ld,sid=0x%x polar=%d\n",
                 id.net_index, id.network_id, id.ts_id, as_long(id.frequency), id.service_id, id.polarisation);
  }
  static void no_transponder(const identity &id) {
    LOG_TRACE_AS(operation, 5, "Fail to find tp_ch ni=0x%x,on_id=0x%x,ts_id=0x%x,freq=%ld,sid=0x%x polar=%d\n",
                 id.net_index, id.network_id, id.ts_id, as_long(id.frequency), id.service_id, id.polarisation);
    LOG_TRACE_AS(operation, 2, "Fail to find tp_ch ni=0x%x,on_id=0x%x,ts_id=0x%x,freq=%ld,sid=0x%x polar=%d\n",
                 id.net_index, id.network_id, id.ts_id, as_long(id.frequency), id.service_id, id.polarisation);
  }
  static void no_service(const identity &id) {
    LOG_TRACE_AS(operation, 5, "Fail to find rchannel ni=0x%x,on_id=0x%x,ts_id=0x%x,freq=%ld,sid=0x%x polar=%d\n",
                 id.net_index, id.network_id, id.ts_id, as_long(id.frequency), id.service_id, id.polarisation);
  }
};

}  // namespace

channel_st *resolve(const virtual_channel_st &entry) {
  return get_channel_st(entry.net_index, entry.network_id, entry.ts_id, entry.frequency, entry.service_id,
                        entry.polarisation);
}

}  // namespace channel

extern "C" {

network_ch_st *get_network_ch_info(uint8_t net_index, uint16_t network_id) {
  for (network_ch_st &network : channel::networks_of(channel::channel_list.network_list)) {
    if (channel::is_network(network, net_index, network_id)) {
      return &network;
    }
  }
  LOG_TRACE(3, "Fail to find network_ch ni=%d, on_id=0x%x\n", net_index, network_id);
  return nullptr;
}

tp_ch_st *get_tp_ch_info_by_network_ch(network_ch_st *network, uint16_t ts_id, uint32_t frequency,
                                       uint8_t polarisation) {
  if (network == nullptr) {
    LOG_ERROR("network is null\n");
    return nullptr;
  }
  for (tp_ch_st &transponder : channel::transponders_of(*network)) {
    if (channel::is_transponder(transponder, ts_id, frequency, polarisation)) {
      return &transponder;
    }
  }
  LOG_TRACE(3, "Fail to find tp_ch ts_id=0x%x, freq=%ld, polar %d \n", ts_id, channel::as_long(frequency),
            polarisation);
  return nullptr;
}

channel_st *get_rch_ch_info_by_tp_ch(tp_ch_st *tp, uint16_t service_id) {
  if (tp == nullptr) {
    return nullptr;
  }
  for (channel_st &service : channel::services_of(*tp)) {
    if (service.service_id == service_id) {
      return &service;
    }
  }
  return nullptr;
}

channel_st *get_channel_st(uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency,
                           uint16_t service_id, uint8_t polarisation) {
  if (channel::channel_list.network_num == 0) {
    return nullptr;
  }
  return channel::locate({net_index, network_id, ts_id, frequency, service_id, polarisation}, channel::resolving{})
      .service;
}
}
