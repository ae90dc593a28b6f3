// Tables of identities.
#include "chlist/salvage/witnesses.h"

namespace chlist {
namespace {

using channel::frequency_tolerance;
using channel::identity;

constexpr std::uint64_t golden_ratio = 0x9E3779B97F4A7C15U;

constexpr std::uint64_t transponder_ids(std::uint16_t ts_id, std::uint8_t polarisation) {
  return std::uint64_t{ts_id} << 8U | polarisation;
}

constexpr std::uint64_t network_ids(std::uint8_t net_index, std::uint16_t network_id) {
  return std::uint64_t{network_id} << 8U | net_index;
}

constexpr std::uint64_t ids_in_network(const identity &id) {
  return network_ids(id.net_index, id.network_id) << 24U | transponder_ids(id.ts_id, id.polarisation);
}

constexpr std::uint64_t service_ids(const identity &id) { return ids_in_network(id) << 16U | id.service_id; }

}  // namespace

bool is_pattern(const identity &id) {
  const std::uint32_t low = id.frequency & 0xFFFFU;
  return id.frequency >> 16U == low && id.ts_id == low && id.network_id == low;
}

bool says_nothing(const identity &id) {
  const int zeros = (id.frequency == 0 ? 1 : 0) + (id.ts_id == 0 ? 1 : 0) + (id.network_id == 0 ? 1 : 0) +
                    (id.service_id == 0 ? 1 : 0);
  return zeros > 1 || is_pattern(id);
}

std::size_t frequency_table::hash::operator()(const key &of) const {
  return static_cast<std::size_t>((of.ids ^ std::uint64_t{of.band} << 32U) * golden_ratio >> 8U);
}

std::size_t frequency_table::filter_place(std::uint64_t ids) {
  return static_cast<std::size_t>(ids * golden_ratio >> 44U);
}

void frequency_table::add(std::uint64_t ids, std::uint32_t frequency) {
  if (!holds(ids, frequency)) {
    first_.emplace(key{ids, frequency / frequency_tolerance}, frequency);
    may_hold_[filter_place(ids)] = true;
  }
}

bool frequency_table::holds_in(const key &place, std::uint32_t frequency) const {
  const auto found = first_.find(place);
  return found != first_.end() && channel::same_frequency(found->second, frequency);
}

bool frequency_table::holds(std::uint64_t ids, std::uint32_t frequency) const {
  if (!may_hold_[filter_place(ids)]) {
    return false;
  }
  const std::uint32_t band = frequency / frequency_tolerance;
  return holds_in({ids, band}, frequency) || holds_in({ids, band + 1}, frequency) ||
         (band > 0 && holds_in({ids, band - 1}, frequency));
}

void witnesses::add_entry(const identity &id) {
  if (!says_nothing(id)) {
    entries_.add(service_ids(id), id.frequency);
    add_service(id);
  }
}

void witnesses::add_service(const identity &id) {
  if (!says_nothing(id)) {
    in_networks_.add(ids_in_network(id), id.frequency);
    transponders_.add(transponder_ids(id.ts_id, id.polarisation), id.frequency);
    networks_.add(network_ids(id.net_index, id.network_id), 0);
  }
}

bool witnesses::list(const identity &id) const { return entries_.holds(service_ids(id), id.frequency); }

bool witnesses::know_transponder(const identity &id) const {
  return in_networks_.holds(ids_in_network(id), id.frequency);
}

bool witnesses::know_transponder(std::uint16_t ts_id, std::uint32_t frequency, std::uint8_t polarisation) const {
  return transponders_.holds(transponder_ids(ts_id, polarisation), frequency);
}

bool witnesses::know_network(std::uint8_t net_index, std::uint16_t network_id) const {
  return networks_.holds(network_ids(net_index, network_id), 0);
}

}  // namespace chlist
