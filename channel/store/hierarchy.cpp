// Memory of the hierarchy's records, and the operations that create and file them.
#include "channel/store/hierarchy.h"

#include <channel/store.h>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "channel/identity.h"
#include "channel/log.h"
#include "channel/store/channel_list.h"
#include "channel/text.h"

namespace channel {

void *allocate_zeroed(std::size_t size) {
  void *memory = std::calloc(1, size);
  if (memory == nullptr) {
    LOG_ERROR("no memory for %lu bytes\n", static_cast<unsigned long>(size));
    std::abort();
  }
  return memory;
}

namespace {

// Counts are 16 bits in the file; a list that has reached the end of its count takes no more.
bool can_count_one_more(std::uint16_t count, const char *operation) {
  if (count == UINT16_MAX) {
    LOG_ERROR_AS(operation, "list is full, %d records\n", count);
    return false;
  }
  return true;
}

network_ch_st *find_or_create_network(const channel_st &service, const char *name) {
  network_ch_st *network = get_network_ch_info(service.net_index, service.network_id);
  return network != nullptr ? network : alloc_network_ch_info(service.net_index, service.network_id, name);
}

tp_ch_st *find_or_create_transponder(network_ch_st &network, const channel_st &service, const char *operation) {
  const auto id = identity_of(service);
  tp_ch_st *transponder = get_tp_ch_info_by_network_ch(&network, id.ts_id, id.frequency, id.polarisation);
  if (transponder == nullptr && can_count_one_more(network.tp_num, operation)) {
    transponder = alloc_tp_ch_info(id.ts_id, id.frequency, id.polarisation);
    append(transponder->list, network.tp_list);
    ++network.tp_num;
  }
  return transponder;
}

}  // namespace
}  // namespace channel

using channel::channel_list;

extern "C" {

void reset_channel(channel_st *rch) {
  if (rch == nullptr) {
    LOG_ERROR("rch is null\n");
    return;
  }
  std::memset(rch, 0, sizeof *rch);
  rch->service_id = 0xFFFF;
  rch->pmt_pid = 0xFFFF;
  rch->pcr_pid = 0xFFFF;
  rch->video_tag = 0xFF;
  rch->video_pid = 0xFFFF;
  rch->video_ecm_pid = 0xFFFF;
  rch->audio_tag = 0xFF;
  rch->audio_pid = 0xFFFF;
  rch->reserved_pid = 0xFFFF;
  rch->reserved_id = 0xFFFF;
}

channel_st *alloc_channel_info(void) {
  auto *service = channel::allocate_record<channel_st>();
  reset_channel(service);
  list_init(&service->list);
  return service;
}

tp_ch_st *alloc_tp_ch_info(uint16_t ts_id, uint32_t frequency, uint8_t polarisation) {
  auto *transponder = channel::allocate_record<tp_ch_st>();
  transponder->ts_id = ts_id;
  transponder->frequency = frequency;
  transponder->polarisation = polarisation;
  list_init(&transponder->list);
  list_init(&transponder->rch_list);
  return transponder;
}

network_ch_st *alloc_network_ch_info(uint8_t net_index, uint16_t network_id, const char *name) {
  if (!channel::can_count_one_more(channel_list.network_num, __func__)) {
    return nullptr;
  }
  auto *network = channel::allocate_record<network_ch_st>();
  network->net_index = net_index;
  network->network_id = network_id;
  if (name != nullptr) {
    std::memcpy(network->network_name, name, sizeof network->network_name);
  }
  list_init(&network->tp_list);
  channel::append(network->list, channel_list.network_list);
  ++channel_list.network_num;
  return network;
}

int add_rch_info(channel_st *rch, const char *network_name) {
  if (rch == nullptr) {
    LOG_ERROR("rch is null\n");
    return -1;
  }
  network_ch_st *network = channel::find_or_create_network(*rch, network_name);
  if (network == nullptr) {
    return -1;
  }
  tp_ch_st *transponder = channel::find_or_create_transponder(*network, *rch, __func__);
  if (transponder == nullptr) {
    return -1;
  }
  if (const channel_st *filed = get_rch_ch_info_by_tp_ch(transponder, rch->service_id); filed != nullptr) {
    LOG_WARNING("rch: s_id(0x%x), n_id(0x%x), ts_id(0x%x), name(%s), type(0x%04x)\n", filed->service_id,
                filed->network_id, filed->ts_id, channel::name_of(*filed).c_str(), channel::type_of(*filed));
    return 0;
  }
  if (!channel::can_count_one_more(transponder->rch_num, __func__)) {
    return -1;
  }
  LOG_TRACE(2, "rch: s_id(0x%x), n_id(0x%x), ts_id(0x%x), name(%s), type(0x%04x)\n", rch->service_id, rch->network_id,
            rch->ts_id, channel::name_of(*rch).c_str(), channel::type_of(*rch));
  channel::append(rch->list, transponder->rch_list);
  ++transponder->rch_num;
  return 0;
}
}
