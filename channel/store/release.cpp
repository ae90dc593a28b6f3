// Releases networks, transponders and real channels, one record at a time, and the pointers that views and the history
// of watched channels keep to them.
#include "channel/store/release.h"

#include <algorithm>
#include <array>
#include <channel/store.h>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "channel/identity.h"
#include "channel/log.h"
#include "channel/store/channel_list.h"
#include "channel/store/hierarchy.h"
#include "channel/store/service_index.h"
#include "channel/store/spread.h"
#include "channel/store/view.h"

namespace channel {
namespace {

// A doomed record's link points here and, backwards, to the record doomed before it.
list_head doomed_mark;

// The channels of one batch by their addresses.
class batch {
 public:
  static constexpr int slot_bits = 12;
  static constexpr std::size_t slots = std::size_t{1} << slot_bits;
  static constexpr std::size_t capacity = slots / 2;

  void add(const channel_st &service) {
    slot_of(&service) = &service;
    ++count_;
    lowest_ = std::min(lowest_, address_of(&service));
    highest_ = std::max(highest_, address_of(&service));
  }
  [[nodiscard]] bool is_full() const { return count_ == capacity; }
  // Records allocated together are released together: most other pointers lie outside their range.
  [[nodiscard]] bool holds(const channel_st *service) {
    return address_of(service) - lowest_ <= highest_ - lowest_ && slot_of(service) == service;
  }

 private:
  static std::uintptr_t address_of(const channel_st *service) { return reinterpret_cast<std::uintptr_t>(service); }

  // Where a channel stands, or the free slot where it would.
  const channel_st *&slot_of(const channel_st *service) {
    auto index = static_cast<std::size_t>(where_(address_of(service)) >> (64 - slot_bits));
    while (slots_[index] != nullptr && slots_[index] != service) {
      index = (index + 1) % slots;
    }
    return slots_[index];
  }

  spread where_;
  std::array<const channel_st *, slots> slots_{};
  std::size_t count_ = 0;
  std::uintptr_t lowest_ = UINTPTR_MAX;
  std::uintptr_t highest_ = 0;
};

bool is_hosts_own(const view &current) {
  return std::ranges::find(all_views(), current.entries, &view::entries) == all_views().end();
}

// Takes pointers to doomed channels out of everything that keeps any. Pointers are compared, never followed: a host may
// have freed a record of its own that an entry still points to.
void forget(batch &doomed) {
  const auto forget_if_doomed = [&doomed](virtual_channel_st &entry) {
    if (doomed.holds(entry.rch)) {
      entry.rch = nullptr;
    }
  };
  for (const view &each : all_views()) {
    std::ranges::for_each(each.array(), forget_if_doomed);
  }
  if (const view current = current_view(); current && is_hosts_own(current)) {
    std::ranges::for_each(current.used(), forget_if_doomed);
  }
  for (return_channel_st &watched : history) {
    forget_if_doomed(watched.vch);
  }
}

}  // namespace

bool is_doomed(const channel_st &service) { return service.list.next == &doomed_mark; }

void doomed_services::add(channel_st &service) {
  unlink(service.list);
  service.list = {&doomed_mark, first_};
  first_ = &service.list;
}

namespace {

std::uint64_t holder_key(const channel_st &service) { return reinterpret_cast<std::uintptr_t>(&service); }

first_table<tp_ch_st> find_holders() {
  first_table<tp_ch_st> holders(count_records(channel_list.network_list).services);
  for (const filed_service &filed : all_services_of(channel_list.network_list)) {
    holders.keep_first(holder_key(filed.service), &filed.transponder);
  }
  return holders;
}

}  // namespace

tp_ch_st *doomed_services::holder_of(const channel_st &service) {
  if (!holders_) {
    holders_.emplace(find_holders());
  }
  return holders_->find(holder_key(service));
}

void doomed_services::add_all(tp_ch_st &transponder) {
  for (channel_st &service : services_of(transponder)) {
    add(service);
  }
}

doomed_services::~doomed_services() {
  while (first_ != nullptr) {
    batch doomed;
    const list_head *behind = first_;
    for (; behind != nullptr && !doomed.is_full(); behind = behind->prev) {
      doomed.add(*reinterpret_cast<const channel_st *>(behind));
    }
    forget(doomed);
    while (first_ != behind) {
      std::free(std::exchange(first_, first_->prev));
    }
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

void free_hierarchy(list_head &network_list) {
  for (network_ch_st &network : networks_of(network_list)) {
    for (tp_ch_st &transponder : transponders_of(network)) {
      for (channel_st &service : services_of(transponder)) {
        std::free(&service);
      }
      std::free(&transponder);
    }
    std::free(&network);
  }
  clear_link(network_list);
}

void release_transponder(tp_ch_st &transponder, doomed_services &doomed) {
  LOG_TRACE_AS("release_tp_ch_info", 2, "\n");
  doomed.add_all(transponder);
  free_record(transponder.list);
}

void release_network(network_ch_st &network, doomed_services &doomed) {
  for (tp_ch_st &transponder : transponders_of(network)) {
    release_transponder(transponder, doomed);
  }
  free_record(network.list);
  count_down(channel_list.network_num);
}

namespace {

// The first transponder of a network that matches a channel, whether or not the channel hangs from it; or null.
tp_ch_st *find_match(network_ch_st &network, const channel_st &service) {
  for (tp_ch_st &transponder : transponders_of(network)) {
    if (is_transponder_of(transponder, service)) {
      return &transponder;
    }
  }
  return nullptr;
}

// What transponder_matches knows, from walks, for the release of one channel.
struct walked_matches {
  template <class Action>
  static void for_each(const channel_st &service, const Action &action) {
    for (network_ch_st &network : networks_of(channel_list.network_list)) {
      if (is_network(network, service.net_index, service.network_id)) {
        if (tp_ch_st *transponder = find_match(network, service); transponder != nullptr) {
          action(*transponder);
        }
      }
    }
  }
};

// Compatibility: every match is counted down, also those in networks of the same identity that a merge has doubled.
template <class Matches>
void release(channel_st &service, const Matches &matches, doomed_services &doomed) {
  if (is_doomed(service)) {
    return;
  }
  bool any = false;
  matches.for_each(service, [&any](tp_ch_st &match) {
    count_down(match.rch_num);
    any = true;
  });
  if (tp_ch_st *holder = any ? nullptr : doomed.holder_of(service); holder != nullptr) {
    count_down(holder->rch_num);
  }
  doomed.add(service);
}

}  // namespace

void release_service(channel_st &service, doomed_services &doomed) { release(service, walked_matches{}, doomed); }

void release_service(channel_st &service, const transponder_matches &matches, doomed_services &doomed) {
  release(service, matches, doomed);
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
  channel::release_network(*network, doomed);
}
}
