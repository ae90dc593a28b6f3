// Fields of what could be a record, at any place of a file. Nothing is read outside the bytes.
#pragma once

#include <channel/records.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "channel/identity.h"
#include "chlist/files/file_bytes.h"
#include "chlist/files/file_records.h"

namespace chlist {

// The caller has seen to it that the value lies within the bytes.
template <class Value>
Value value_at(byte_span file, std::size_t at) {
  Value value{};
  std::memcpy(&value, file.data() + at, sizeof value);
  return value;
}

#define CHLIST_FIELD(file, at, record, field) \
  value_at<decltype(record::field)>(file, (at) + image_place<record>(offsetof(record, field)))

inline bool fits(byte_span file, std::size_t at, std::size_t size) {
  return at <= file.size() && file.size() - at >= size;
}

inline channel::identity service_at(byte_span file, std::size_t at) {
  return {CHLIST_FIELD(file, at, channel_st, net_index),
          CHLIST_FIELD(file, at, channel_st, network_id),
          CHLIST_FIELD(file, at, channel_st, ts_id),
          static_cast<std::uint32_t>(CHLIST_FIELD(file, at, channel_st, frequency)),
          CHLIST_FIELD(file, at, channel_st, service_id),
          CHLIST_FIELD(file, at, channel_st, polarisation)};
}

inline bool has_wide_frequency(byte_span file, std::size_t at) {
  return static_cast<std::uint64_t>(CHLIST_FIELD(file, at, channel_st, frequency)) > UINT32_MAX;
}

inline channel::identity transponder_at(byte_span file, std::size_t at) {
  channel::identity id = {};
  id.ts_id = CHLIST_FIELD(file, at, tp_ch_st, ts_id);
  id.frequency = CHLIST_FIELD(file, at, tp_ch_st, frequency);
  id.polarisation = CHLIST_FIELD(file, at, tp_ch_st, polarisation);
  return id;
}

inline channel::identity network_at(byte_span file, std::size_t at) {
  channel::identity id = {};
  id.net_index = CHLIST_FIELD(file, at, network_ch_st, net_index);
  id.network_id = CHLIST_FIELD(file, at, network_ch_st, network_id);
  return id;
}

// Nothing but its own count confirms a transponder without services.
inline bool is_empty_transponder(byte_span file, std::size_t at) {
  return CHLIST_FIELD(file, at, tp_ch_st, rch_num) == 0 && CHLIST_FIELD(file, at, tp_ch_st, frequency) != 0;
}

inline bool has_name(byte_span file, std::size_t network) {
  return value_at<char>(file, network + image_place<network_ch_st>(offsetof(network_ch_st, network_name))) != '\0';
}

inline bool is_empty_network(byte_span file, std::size_t at) {
  return CHLIST_FIELD(file, at, network_ch_st, tp_num) == 0 && has_name(file, at);
}

inline bool same_network(const channel::identity &a, const channel::identity &b) {
  return a.net_index == b.net_index && a.network_id == b.network_id;
}

// The rule is that of the finder, or, where there is no frequency, the transport stream id.
inline bool same_transponder(const channel::identity &a, const channel::identity &b) {
  return a.frequency != 0 ? channel::same_frequency(a.frequency, b.frequency) && a.polarisation == b.polarisation
                          : a.ts_id == b.ts_id && b.frequency == 0;
}

}  // namespace chlist
