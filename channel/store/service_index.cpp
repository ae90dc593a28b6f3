// The tables of a service_index, and what it logs on a miss: line for line what the finder logs.
#include "channel/store/service_index.h"

#include <algorithm>

#include "channel/store/channel_list.h"
#include "channel/store/finders.h"
#include "channel/store/hierarchy.h"
#include "channel/store/release.h"

namespace channel {
namespace {

std::uint32_t key_of(const network_ch_st &network) { return network_key(network.net_index, network.network_id); }

std::uint64_t ts_id_key(std::uint32_t network, std::uint16_t ts_id) { return std::uint64_t{network} << 16U | ts_id; }

std::uint64_t ts_id_key(std::uint32_t network, std::uint16_t ts_id, std::uint16_t service_id) {
  return ts_id_key(network, ts_id) << 16U | service_id;
}

}  // namespace

record_counts count_records(list_head &network_list) {
  record_counts counts;
  for (network_ch_st &network : networks_of(network_list)) {
    ++counts.networks;
    for (tp_ch_st &transponder : transponders_of(network)) {
      ++counts.transponders;
      for ([[maybe_unused]] const channel_st &service : services_of(transponder)) {
        ++counts.services;
      }
    }
  }
  return counts;
}

service_index::service_index(channel_list_st &list, std::size_t filed_later)
    : service_index(list, count_records(list.network_list), filed_later) {
  for (network_ch_st &network : networks_of(list.network_list)) {
    add(network);
    add_with_services(network);
  }
}

// The tables are as large as the list is, or will be when everything that is filed later is new.
service_index::service_index(channel_list_st &list, const record_counts &counts, std::size_t filed_later)
    : list_(&list), counts_(counts), networks_(counts.networks), transponders_(counts.transponders, filed_later),
      services_(std::max(counts.services, filed_later)) {}

void service_index::add(network_ch_st &network) { networks_.keep_first(key_of(network), &network); }

// The finder never looks into a second network of the same identity.
void service_index::add_with_services(network_ch_st &network) {
  if (networks_.find(key_of(network)) != &network) {
    return;
  }
  for (tp_ch_st &transponder : transponders_of(network)) {
    const place &at = transponders_.add(scope_of(key_of(network), transponder.polarisation), transponder);
    for (channel_st &service : services_of(transponder)) {
      services_.keep_first(service_key(at, service.service_id), &service);
      ++services_met_;
    }
  }
}

const service_index::place *service_index::add(const network_ch_st &network, tp_ch_st &transponder) {
  const place &at = transponders_.add(scope_of(key_of(network), transponder.polarisation), transponder);
  if (by_ts_id_) {
    add_by_ts_id(at);
  }
  return &at;
}

void service_index::add(const place &on, channel_st &service) {
  services_.keep_first(service_key(on, service.service_id), &service);
  ++services_met_;
  if (by_ts_id_) {
    add_by_ts_id(on, service);
  }
}

void service_index::add_by_ts_id(const place &at) {
  by_ts_id_->transponders.keep_first(ts_id_key(network_of(at), at.transponder->ts_id), &at);
}

// A service may be filed before others of its id in list order.
void service_index::add_by_ts_id(const place &on, const channel_st &service) {
  const place *&first = by_ts_id_->services.at(ts_id_key(network_of(on), on.transponder->ts_id, service.service_id));
  first = first != nullptr ? std::min(first, &on) : &on;
}

service_index::ts_id_tables &service_index::by_ts_id() {
  if (!by_ts_id_) {
    by_ts_id_.emplace(counts_);
    for (const place &at : transponders_.places()) {
      add_by_ts_id(at);
      for (const channel_st &service : services_of(*at.transponder)) {
        add_by_ts_id(at, service);
      }
    }
  }
  return *by_ts_id_;
}

// Where two services of a transponder have one id, the first that is left is found anew.
void service_index::forget_doomed() {
  if (const bool has_doubles = services_met_ != services_.size(); has_doubles) {
    *this = service_index(*list_);
    return;
  }
  services_.remove_if(is_doomed);
  by_ts_id_.reset();
}

network_ch_st *service_index::find_network(std::uint8_t net_index, std::uint16_t network_id) const {
  network_ch_st *network = networks_.find(network_key(net_index, network_id));
  if (network == nullptr) {
    log_missing_network(net_index, network_id);
  }
  return network;
}

const service_index::place *service_index::find_transponder(const network_ch_st &network, const identity &id) {
  const std::uint32_t key = key_of(network);
  const place *at = id.frequency != 0 ? transponders_.find(scope_of(key, id.polarisation), id.frequency)
                                      : by_ts_id().transponders.find(ts_id_key(key, id.ts_id));
  if (at == nullptr) {
    log_missing_transponder(id.ts_id, id.frequency, id.polarisation);
  }
  return at;
}

channel_st *service_index::find_without_frequency(const identity &id) {
  const std::uint32_t network = network_key(id.net_index, id.network_id);
  const place *on = by_ts_id().services.find(ts_id_key(network, id.ts_id, id.service_id));
  return on != nullptr ? find_service(*on, id.service_id) : nullptr;
}

// Takes the finder's steps one by one, which say what is missing.
channel_st *service_index::miss(const identity &id) {
  if (list_->network_num == 0) {
    return nullptr;
  }
  const network_ch_st *network = find_network(id.net_index, id.network_id);
  if (network == nullptr) {
    resolving::no_network(id);
  } else if (id.frequency != 0 && find_transponder(*network, id) == nullptr) {
    resolving::no_transponder(id);
  } else {
    resolving::no_service(id);
  }
  return nullptr;
}

}  // namespace channel
