// The operations that create the hierarchy's records and file them one at a time.
#include "channel/store/hierarchy.h"

#include <channel/store.h>
#include <cstdint>
#include <cstring>

#include "channel/log.h"
#include "channel/store/channel_list.h"
#include "channel/store/filing.h"
#include "channel/store/memory.h"

namespace channel {

bool can_count_one_more(std::uint16_t count, const char *operation) {
  if (count == UINT16_MAX) {
    LOG_ERROR_AS(operation, "list is full, %d records\n", count);
    return false;
  }
  return true;
}

}  // namespace channel

using channel::channel_list;

extern "C" {

void reset_channel(channel_st *rch) {
  if (rch == nullptr) {
    LOG_ERROR("rch is null\n");
    return;
  }
  *rch = channel::unset_service;
}

channel_st *alloc_channel_info(void) {
  auto *service = channel::allocate_record<channel_st>();
  *service = channel::unset_service;
  channel::clear_link(service->list);
  return service;
}

tp_ch_st *alloc_tp_ch_info(uint16_t ts_id, uint32_t frequency, uint8_t polarisation) {
  auto *transponder = channel::allocate_record<tp_ch_st>();
  transponder->ts_id = ts_id;
  transponder->frequency = frequency;
  transponder->polarisation = polarisation;
  channel::clear_link(transponder->list);
  channel::clear_link(transponder->rch_list);
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
  channel::clear_link(network->tp_list);
  channel::append(network->list, channel_list.network_list);
  ++channel_list.network_num;
  return network;
}

int add_rch_info(channel_st *rch, const char *network_name) {
  if (rch == nullptr) {
    LOG_ERROR("rch is null\n");
    return -1;
  }
  channel::walked_hierarchy hierarchy;
  return channel::file_service(hierarchy, *rch, network_name) != nullptr ? 0 : -1;
}
}
