// Who is the same service: the six-tuple, the tolerance of frequencies, and the matching rules of networks,
// transponders, services and entries.
#pragma once

#include <channel/records.h>
#include <cstdint>

namespace channel {

// Frequencies are the same when they differ by less than this, in the unit in which they are stored.
inline constexpr std::uint32_t frequency_tolerance = 2500;

constexpr bool same_frequency(std::uint32_t a, std::uint32_t b) {
  return (a > b ? a - b : b - a) < frequency_tolerance;
}

// Real channels store 64 bits: a difference of 2^32 is a difference.
constexpr bool same_frequency(std::int64_t a, std::int64_t b) {
  const auto distance = a > b ? static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b)
                              : static_cast<std::uint64_t>(b) - static_cast<std::uint64_t>(a);
  return distance < frequency_tolerance;
}

// The identity of a service.
struct identity {
  std::uint8_t net_index;
  std::uint16_t network_id;
  std::uint16_t ts_id;
  std::uint32_t frequency;
  std::uint16_t service_id;
  std::uint8_t polarisation;

  // Every value alike, without the tolerance; no lookup asks for that.
  friend bool operator==(const identity &, const identity &) = default;
};

// The identity of a view entry: views may tell entries of one service apart by tag.
struct tagged_identity : identity {
  std::int8_t tag;
};

constexpr identity identity_of(const virtual_channel_st &entry) {
  return {entry.net_index, entry.network_id, entry.ts_id, entry.frequency, entry.service_id, entry.polarisation};
}

constexpr tagged_identity tagged_identity_of(const virtual_channel_st &entry) {
  return {identity_of(entry), entry.vch_tag};
}

// Services and transponders are looked up by the low 32 bits of a real channel's frequency.
constexpr identity identity_of(const channel_st &service) {
  return {service.net_index,  service.network_id,  service.ts_id, static_cast<std::uint32_t>(service.frequency),
          service.service_id, service.polarisation};
}

constexpr bool is_network(const network_ch_st &network, std::uint8_t net_index, std::uint16_t network_id) {
  return network.network_id == network_id && network.net_index == net_index;
}

constexpr bool is_tuned_to(const tp_ch_st &transponder, std::uint32_t frequency, std::uint8_t polarisation) {
  return same_frequency(transponder.frequency, frequency) && transponder.polarisation == polarisation;
}

// A caller that knows the frequency finds the transponder even if its transport stream id changed; one that knows only
// the transport stream id passes frequency 0.
constexpr bool is_transponder(const tp_ch_st &transponder, std::uint16_t ts_id, std::uint32_t frequency,
                              std::uint8_t polarisation) {
  if (frequency == 0) {
    return transponder.ts_id == ts_id;
  }
  return is_tuned_to(transponder, frequency, polarisation);
}

// Compatibility: a released channel's transponder is the only one that is matched by transport stream id and frequency.
constexpr bool is_transponder_of(const tp_ch_st &transponder, const channel_st &service) {
  return transponder.ts_id == service.ts_id &&
         same_frequency(static_cast<std::int64_t>(transponder.frequency), service.frequency) &&
         transponder.polarisation == service.polarisation;
}

// Network, transport stream and service: what an identity without a frequency is known by.
constexpr bool same_ids(const virtual_channel_st &entry, const identity &id) {
  return entry.net_index == id.net_index && entry.network_id == id.network_id && entry.ts_id == id.ts_id &&
         entry.service_id == id.service_id;
}

// The whole identity; frequency 0 is a frequency like any other.
constexpr bool same_service(const virtual_channel_st &entry, const identity &id) {
  return same_ids(entry, id) && same_frequency(entry.frequency, id.frequency) && entry.polarisation == id.polarisation;
}

constexpr bool same_entry(const virtual_channel_st &entry, const tagged_identity &id) {
  return entry.vch_tag == id.tag && same_service(entry, id);
}

// Two real channels; unlike entries they have no tag, and their frequencies have 64 bits.
constexpr bool same_service(const channel_st &a, const channel_st &b) {
  return a.network_id == b.network_id && a.net_index == b.net_index && a.ts_id == b.ts_id &&
         same_frequency(a.frequency, b.frequency) && a.service_id == b.service_id && a.polarisation == b.polarisation;
}

// Source and service type read together, as diagnostics print them.
constexpr int type_of(const channel_st &service) { return service.source_type << 8 | service.service_type; }

// The three searches of views by transport identity differ in what frequency 0 means. Compatibility: hosts rely on
// each.

// In the current view frequency 0 matches any frequency; everything else is compared.
constexpr bool same_entry_any_frequency(const virtual_channel_st &entry, const tagged_identity &id) {
  return entry.vch_tag == id.tag && same_ids(entry, id) && entry.polarisation == id.polarisation &&
         (id.frequency == 0 || same_frequency(entry.frequency, id.frequency));
}

// For a pointer into a named view frequency 0 leaves the polarisation out as well.
constexpr bool same_entry_or_tagged_ids(const virtual_channel_st &entry, const tagged_identity &id) {
  return id.frequency != 0 ? same_entry(entry, id) : entry.vch_tag == id.tag && same_ids(entry, id);
}

// For a position in a named view frequency 0 leaves the polarisation and the tag out.
constexpr bool same_entry_or_ids(const virtual_channel_st &entry, const tagged_identity &id) {
  return id.frequency != 0 ? same_entry(entry, id) : same_ids(entry, id);
}

constexpr bool on_transponder(const virtual_channel_st &entry, std::int8_t tag, std::uint8_t net_index,
                              std::uint32_t frequency, std::uint8_t polarisation) {
  return entry.vch_tag == tag && entry.net_index == net_index && same_frequency(entry.frequency, frequency) &&
         entry.polarisation == polarisation;
}

}  // namespace channel
