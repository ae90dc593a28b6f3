// Releases networks, transponders and real channels, one record at a time, and the pointers that views and the history
// of watched channels keep to them.
#include "channel/store/release.h"

#include <algorithm>
#include <array>
#include <channel/return_channels.h>
#include <channel/store.h>
#include <cstdlib>
#include <functional>
#include <span>

#include "channel/identity.h"
#include "channel/log.h"
#include "channel/store/channel_list.h"
#include "channel/store/hierarchy.h"
#include "channel/store/view.h"

namespace channel {
namespace {

// A doomed record's link points here and, backwards, to the record doomed before it.
list_head doomed_mark;

bool is_doomed(const channel_st &service) { return service.list.next == &doomed_mark; }

// Takes pointers to doomed channels out of everything that keeps any. Pointers are compared, never followed: a host may
// have freed a record of its own that an entry still points to.
void forget(std::span<channel_st *> doomed) {
  constexpr std::less<> before;
  std::ranges::sort(doomed, before);
  const auto forget_if_doomed = [doomed, before](virtual_channel_st &entry) {
    // Records allocated together are released together: most pointers lie outside the range of a batch.
    if (!before(entry.rch, doomed.front()) && !before(doomed.back(), entry.rch) &&
        std::ranges::binary_search(doomed, entry.rch, before)) {
      entry.rch = nullptr;
    }
  };
  for (const view &each : all_views()) {
    std::ranges::for_each(each.array(), forget_if_doomed);
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
  constexpr std::size_t batch_size = 512;
  std::array<channel_st *, batch_size> batch;
  while (first_ != nullptr) {
    std::size_t count = 0;
    for (; first_ != nullptr && count < batch_size; first_ = first_->prev) {
      batch[count++] = reinterpret_cast<channel_st *>(first_);
    }
    const std::span doomed = std::span(batch).first(count);
    forget(doomed);
    std::ranges::for_each(doomed, std::free);
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

// Kept: the walk goes on after a match, into networks of the same identity that a merge has doubled.
void release_service(channel_st &service, doomed_services &doomed) {
  if (is_doomed(service)) {
    return;
  }
  for (network_ch_st &network : networks_of(channel_list.network_list)) {
    if (is_network(network, service.net_index, service.network_id)) {
      count_down_transponder(network, service);
    }
  }
  doomed.add(service);
}

}  // namespace channel

extern "C" {

void release_rch_info(channel_st *rch) {
  if (rch == nullptr) {
    LOG_ERROR("rch is null\n");
    return;
  }
  channel::doomed_services doomed;
  channel::release_service(*rch, doomed);
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
