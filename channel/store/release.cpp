// Releases networks, transponders and real channels, one record at a time, and the pointers that views and the history
// of watched channels keep to them.
#include "channel/store/release.h"

#include <channel/return_channels.h>
#include <channel/store.h>
#include <cstdlib>

#include "channel/identity.h"
#include "channel/log.h"
#include "channel/store/channel_list.h"
#include "channel/store/hierarchy.h"
#include "channel/store/view.h"

namespace channel {
namespace {

// A doomed record's link points here and, backwards, to the record doomed before it.
list_head doomed_mark;

void forget_if_doomed(virtual_channel_st &entry) {
  if (entry.rch != nullptr && entry.rch->list.next == &doomed_mark) {
    entry.rch = nullptr;
  }
}

void forget_doomed() {
  for (const view &each : all_views()) {
    for (virtual_channel_st &entry : each.array()) {
      forget_if_doomed(entry);
    }
  }
  for (int index = 0; index < MAX_RETURN_CHANNEL; ++index) {
    forget_if_doomed(get_return_channel()[index].vch);
  }
}

}  // namespace

void doomed_services::add(channel_st &service) {
  unlink(service.list);
  service.list = {&doomed_mark, first_};
  first_ = &service.list;
}

void doomed_services::add_all(tp_ch_st &transponder) {
  for (channel_st &service : services_of(transponder)) {
    add(service);
  }
}

doomed_services::~doomed_services() {
  if (first_ == nullptr) {
    return;
  }
  forget_doomed();
  while (first_ != nullptr) {
    list_head *record = first_;
    first_ = record->prev;
    std::free(record);
  }
}

void free_record(list_head &node) {
  unlink(node);
  std::free(&node);
}

void release_hierarchy(list_head &network_list) {
  doomed_services doomed;
  for (network_ch_st &network : networks_of(network_list)) {
    for (tp_ch_st &transponder : transponders_of(network)) {
      doomed.add_all(transponder);
      free_record(transponder.list);
    }
    free_record(network.list);
  }
}

namespace {

void release_transponder(tp_ch_st &transponder, doomed_services &doomed) {
  LOG_TRACE_AS("release_tp_ch_info", 2, "\n");
  doomed.add_all(transponder);
  free_record(transponder.list);
}

// Kept: a network's first matching transponder is counted down whether or not the channel hangs from it.
void count_down_transponder(network_ch_st &network, const channel_st &service) {
  for (tp_ch_st &transponder : transponders_of(network)) {
    if (is_transponder_of(transponder, service)) {
      count_down(transponder.rch_num);
      return;
    }
  }
}

}  // namespace
}  // namespace channel

extern "C" {

// Kept: the walk goes on after a match, into networks of the same identity that a merge has doubled.
void release_rch_info(channel_st *rch) {
  if (rch == nullptr) {
    LOG_ERROR("rch is null\n");
    return;
  }
  for (network_ch_st &network : channel::networks_of(channel::channel_list.network_list)) {
    if (channel::is_network(network, rch->net_index, rch->network_id)) {
      channel::count_down_transponder(network, *rch);
    }
  }
  channel::doomed_services doomed;
  doomed.add(*rch);
}

void release_tp_ch_info(tp_ch_st *tp) {
  if (tp == nullptr) {
    LOG_ERROR("tp is null\n");
    return;
  }
  channel::doomed_services doomed;
  channel::release_transponder(*tp, doomed);
}

void release_network_ch_info(network_ch_st *network) {
  if (network == nullptr) {
    LOG_ERROR("network is null\n");
    return;
  }
  channel::doomed_services doomed;
  for (tp_ch_st &transponder : channel::transponders_of(*network)) {
    channel::release_transponder(transponder, doomed);
  }
  channel::free_record(network->list);
  channel::count_down(channel::channel_list.network_num);
}
}
