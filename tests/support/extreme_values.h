// The extremes of every argument type of the interface: what a type can hold, the codes, and each limit with its
// neighbours. Pointers are null, or to something that is as large as the interface asks for, to the byte.
#pragma once

#include <channel/channel.h>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace extremes {

// What the other arguments are while one goes through its extremes.
enum class base { one, zero, lowest, highest };

template <class Value>
std::vector<Value> values_of();

template <>
std::vector<std::int8_t> values_of();
template <>
std::vector<std::uint8_t> values_of();
template <>
std::vector<std::int16_t> values_of();
template <>
std::vector<std::uint16_t> values_of();
template <>
std::vector<std::int32_t> values_of();
template <>
std::vector<std::uint32_t> values_of();

template <std::integral Value>
Value value_at(base which) {
  switch (which) {
    case base::lowest:
      return std::numeric_limits<Value>::lowest();
    case base::highest:
      return std::numeric_limits<Value>::max();
    default:
      return which == base::one ? Value{1} : Value{0};
  }
}

// Texts have 64 readable bytes, and the long one any length that an argument can name.
template <>
std::vector<const char *> values_of();

// Records of the list as it is now: the pointers are good for one call.
template <>
std::vector<channel_st *> values_of();
template <>
std::vector<tp_ch_st *> values_of();
template <>
std::vector<network_ch_st *> values_of();
template <>
std::vector<virtual_channel_st *> values_of();

// Records that are read only may hold anything.
template <>
std::vector<const channel_st *> values_of();
template <>
std::vector<const virtual_channel_st *> values_of();
template <>
std::vector<group_st> values_of();
template <>
std::vector<const group_st *> values_of();

// Results: as many as the interface says that it writes. Positions: as many as a count can name.
template <>
std::vector<std::int16_t *> values_of();
template <>
std::vector<std::uint16_t *> values_of();
template <>
std::vector<group_st *> values_of();
template <>
std::vector<virtual_channel_st **> values_of();
template <>
std::vector<const std::int16_t *> values_of();
template <>
std::vector<const std::uint16_t *> values_of();

// The last of the values is the usual one, the first the null or empty one.
template <class Value>
Value value_at(base which) {
  const std::vector<Value> values = values_of<Value>();
  return which == base::zero ? values.front() : values.back();
}

}  // namespace extremes
