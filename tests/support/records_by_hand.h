// Records that a host hangs below each other itself: filing channels would have joined them with others.
#pragma once

#include <base/list.h>
#include <channel/channel.h>

#include "full_list.h"

namespace test_support {

inline tp_ch_st *append_transponder(network_ch_st &network, std::uint16_t ts_id, std::uint32_t frequency,
                                    std::uint8_t polarisation) {
  tp_ch_st *transponder = alloc_tp_ch_info(ts_id, frequency, polarisation);
  list_add_tail(&transponder->list, &network.tp_list);
  ++network.tp_num;
  return transponder;
}

inline channel_st *append_service(tp_ch_st &transponder, const service_data &data) {
  channel_st *service = make_service(data);
  list_add_tail(&service->list, &transponder.rch_list);
  ++transponder.rch_num;
  return service;
}

// Each record of a list, in list order.
template <class Record, class Action>
void for_each_linked(const list_head &head, const Action &action) {
  for (list_head *node = head.next; node != &head; node = node->next) {
    action(*reinterpret_cast<Record *>(node));
  }
}

}  // namespace test_support
