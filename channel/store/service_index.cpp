// The tables of a service_index. Transponders stand in buckets as wide as the tolerance: whatever matches a frequency
// is in its bucket or in one beside it.
#include "channel/store/service_index.h"

#include <algorithm>
#include <channel/store.h>
#include <cstdint>

#include "channel/store/channel_list.h"
#include "channel/store/hierarchy.h"

namespace channel {
namespace {

std::uint64_t network_key(std::uint8_t net_index, std::uint16_t network_id) {
  return std::uint64_t{net_index} << 16U | network_id;
}

std::uint64_t bucket_key(std::uint64_t network, std::uint8_t polarisation, std::uint32_t bucket) {
  return network << 40U | std::uint64_t{polarisation} << 32U | bucket;
}

std::uint64_t ts_id_key(std::uint64_t network, std::uint16_t ts_id, std::uint16_t service_id) {
  return network << 32U | std::uint64_t{ts_id} << 16U | service_id;
}

std::uint32_t bucket_of(std::uint32_t frequency) { return frequency / frequency_tolerance; }

}  // namespace

service_index::service_index() : service_index(count_records()) {
  for (network_ch_st &network : networks_of(channel_list.network_list)) {
    add_network(network);
  }
}

service_index::service_index(const record_counts &counts)
    : counts_(counts), nodes_(allocate_array<transponder_node>(counts.transponders + 1)), networks_(counts.networks),
      buckets_(counts.transponders), services_(counts.services) {}

service_index::record_counts service_index::count_records() {
  record_counts counts;
  for (network_ch_st &network : networks_of(channel_list.network_list)) {
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

// The finder never looks into a second network of the same identity.
void service_index::add_network(network_ch_st &network) {
  network_ch_st *&first = networks_.at(network_key(network.net_index, network.network_id));
  if (first != nullptr) {
    return;
  }
  first = &network;
  for (tp_ch_st &transponder : transponders_of(network)) {
    add_transponder(network, transponder);
  }
}

void service_index::add_transponder(const network_ch_st &network, tp_ch_st &transponder) {
  transponder_node &node = nodes_.get()[used_nodes_++];
  const std::uint64_t key = bucket_key(network_key(network.net_index, network.network_id), transponder.polarisation,
                                       bucket_of(transponder.frequency));
  transponder_node *&bucket = buckets_.at(key);
  node = {&transponder, bucket};
  bucket = &node;
  for (channel_st &service : services_of(transponder)) {
    services_.keep_first(service_key(node, service.service_id), &service);
  }
}

std::uint64_t service_index::service_key(const transponder_node &node, std::uint16_t service_id) const {
  return static_cast<std::uint64_t>(&node - nodes_.get()) << 16U | service_id;
}

// Few hosts ask without a frequency: the table is made when the first does.
void service_index::index_by_ts_id() {
  services_by_ts_id_.emplace(counts_.services);
  for (network_ch_st &network : networks_of(channel_list.network_list)) {
    const std::uint64_t key = network_key(network.net_index, network.network_id);
    if (networks_.find(key) != &network) {
      continue;
    }
    for (tp_ch_st &transponder : transponders_of(network)) {
      for (channel_st &service : services_of(transponder)) {
        services_by_ts_id_->keep_first(ts_id_key(key, transponder.ts_id, service.service_id), &service);
      }
    }
  }
}

const service_index::transponder_node *service_index::find_transponder(const identity &id) const {
  const std::uint32_t bucket = bucket_of(id.frequency);
  const transponder_node *first = nullptr;
  for (std::uint32_t beside = bucket - std::min(bucket, 1U); beside <= bucket + 1; ++beside) {
    const std::uint64_t key = bucket_key(network_key(id.net_index, id.network_id), id.polarisation, beside);
    for (const transponder_node *node = buckets_.find(key); node != nullptr; node = node->next_in_bucket) {
      const bool matches = is_transponder(*node->transponder, id.ts_id, id.frequency, id.polarisation);
      first = matches && (first == nullptr || node < first) ? node : first;
    }
  }
  return first;
}

channel_st *service_index::find(const identity &id) {
  if (id.frequency == 0) {
    if (!services_by_ts_id_) {
      index_by_ts_id();
    }
    return services_by_ts_id_->find(ts_id_key(network_key(id.net_index, id.network_id), id.ts_id, id.service_id));
  }
  const transponder_node *node = find_transponder(id);
  return node != nullptr ? services_.find(service_key(*node, id.service_id)) : nullptr;
}

channel_st *service_index::resolve(const identity &id) {
  channel_st *found = channel_list.network_num != 0 ? find(id) : nullptr;
  return found != nullptr
             ? found
             : get_channel_st(id.net_index, id.network_id, id.ts_id, id.frequency, id.service_id, id.polarisation);
}

}  // namespace channel
