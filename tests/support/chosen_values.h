// Arguments of the interface that bytes choose: small numbers, which name what a small list holds, and the extremes of
// the type; any record of the list as it is now; names and paths that mean something, and some that do not.
#pragma once

#include <channel/channel.h>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "byte_reader.h"
#include "extreme_values.h"

namespace extremes {

// One of the type's extremes.
template <class Value>
Value chosen(test_support::byte_reader &from) {
  const std::vector<Value> values = values_of<Value>();
  return values[from.byte() % values.size()];
}

template <std::integral Value>
Value chosen(test_support::byte_reader &from) {
  constexpr std::uint8_t small_numbers = 128;
  const std::uint8_t byte = from.byte();
  const std::vector<Value> values = values_of<Value>();
  return byte < small_numbers ? static_cast<Value>(byte)
                              : values[static_cast<std::size_t>(byte - small_numbers) % values.size()];
}

// Null, or a record of the list: the pointers are good for one call.
template <>
channel_st *chosen(test_support::byte_reader &from);
template <>
tp_ch_st *chosen(test_support::byte_reader &from);
template <>
network_ch_st *chosen(test_support::byte_reader &from);
template <>
virtual_channel_st *chosen(test_support::byte_reader &from);

// An extreme, or a record of the list.
template <>
const channel_st *chosen(test_support::byte_reader &from);
template <>
const virtual_channel_st *chosen(test_support::byte_reader &from);

// An extreme, or a group with a short name.
template <>
group_st chosen(test_support::byte_reader &from);

// An extreme, or a name that a host would use: good for one call.
template <>
const char *chosen(test_support::byte_reader &from);

// An extreme, or any positions in front: good for one call.
template <>
const std::int16_t *chosen(test_support::byte_reader &from);

}  // namespace extremes
