// The finders of the hierarchy. They walk the lists and keep nothing between calls, because hosts write the records
// directly. The first match in list order wins.
#include "channel/store/finders.h"

#include <channel/store.h>

#include "channel/log.h"
#include "channel/store/channel_list.h"

namespace channel {

void resolving::no_network(const identity &id) {
  LOG_TRACE_AS(operation, 5, "Fail to find network_ch ni=0x%x,on_id=0x%x,ts_id=0x%x,freq=%ld,sid=0x%x polar=%d\n",
               id.net_index, id.network_id, id.ts_id, as_long(id.frequency), id.service_id, id.polarisation);
}

// Compatibility: a missing transponder is reported at level 5 and again at level 2; receivers' logs are read at either.
void resolving::no_transponder(const identity &id) {
  LOG_TRACE_AS(operation, 5, "Fail to find tp_ch ni=0x%x,on_id=0x%x,ts_id=0x%x,freq=%ld,sid=0x%x polar=%d\n",
               id.net_index, id.network_id, id.ts_id, as_long(id.frequency), id.service_id, id.polarisation);
  LOG_TRACE_AS(operation, 2, "Fail to find tp_ch ni=0x%x,on_id=0x%x,ts_id=0x%x,freq=%ld,sid=0x%x polar=%d\n",
               id.net_index, id.network_id, id.ts_id, as_long(id.frequency), id.service_id, id.polarisation);
}

void resolving::no_service(const identity &id) {
  LOG_TRACE_AS(operation, 5, "Fail to find rchannel ni=0x%x,on_id=0x%x,ts_id=0x%x,freq=%ld,sid=0x%x polar=%d\n",
               id.net_index, id.network_id, id.ts_id, as_long(id.frequency), id.service_id, id.polarisation);
}

void misses_of::no_transponder(const identity &id) const {
  if (!names_polarisation) {
    tell("tp_ch", id);
    return;
  }
  LOG_TRACE_AS(operation, 3, "Fail to find tp_ch ni=0x%x,on_id=0x%x,ts_id=0x%x,freq=%ld,sid=0x%x polar=%d\n",
               id.net_index, id.network_id, id.ts_id, as_long(id.frequency), id.service_id, id.polarisation);
}

void misses_of::tell(const char *missing, const identity &id) const {
  LOG_TRACE_AS(operation, 3, "Fail to find %s ni=0x%x,on_id=0x%x,ts_id=0x%x,freq=%ld,sid=0x%x\n", missing, id.net_index,
               id.network_id, id.ts_id, as_long(id.frequency), id.service_id);
}

void log_missing_network(std::uint8_t net_index, std::uint16_t network_id) {
  LOG_TRACE_AS("get_network_ch_info", 3, "Fail to find network_ch ni=%d, on_id=0x%x\n", net_index, network_id);
}

void log_missing_transponder(std::uint16_t ts_id, std::uint32_t frequency, std::uint8_t polarisation) {
  LOG_TRACE_AS("get_tp_ch_info_by_network_ch", 3, "Fail to find tp_ch ts_id=0x%x, freq=%ld, polar %d \n", ts_id,
               as_long(frequency), polarisation);
}

channel_st *resolve(const identity &id) {
  return channel_list.network_num != 0 ? locate(id, resolving{}).service : nullptr;
}

}  // namespace channel

extern "C" {

network_ch_st *get_network_ch_info(uint8_t net_index, uint16_t network_id) {
  for (network_ch_st &network : channel::networks_of(channel::channel_list.network_list)) {
    if (channel::is_network(network, net_index, network_id)) {
      return &network;
    }
  }
  channel::log_missing_network(net_index, network_id);
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
  channel::log_missing_transponder(ts_id, frequency, polarisation);
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
  return channel::resolve(channel::identity{net_index, network_id, ts_id, frequency, service_id, polarisation});
}
}
