// The seven values that the interface knows a channel by, as one, and calls of the functions that take them apart.
#pragma once

#include <cstdint>

namespace test_support {

// The defaults are those of service_data and of unfiled_entry(1).
struct channel_key {
  int tag = 0;
  int net_index = 1;
  int network_id = 1;
  int ts_id = 100;
  std::uint32_t frequency = 11'000'000;
  int service_id = 1;
  int polarisation = 0;

  // Calls a function with the seven values in this order, and whatever it takes behind them.
  template <class Function, class... More>
  auto call(Function function, More... more) const {
    return call_untagged(
        [&](auto... identity) { return function(static_cast<std::int8_t>(tag), identity..., more...); });
  }

  // The same without the tag, which is no part of what a real channel is known by.
  template <class Function, class... More>
  auto call_untagged(Function function, More... more) const {
    return function(static_cast<std::uint8_t>(net_index), static_cast<std::uint16_t>(network_id),
                    static_cast<std::uint16_t>(ts_id), frequency, static_cast<std::uint16_t>(service_id),
                    static_cast<std::uint8_t>(polarisation), more...);
  }
};

}  // namespace test_support
