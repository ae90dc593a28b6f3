// What formats know of services alike.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "chlist/line_up/line_up.h"

namespace chlist {

// The source type of services whose format tells none.
inline constexpr std::uint8_t broadcast_source = 1;

// Formats tell four polarisations apart, a channel list two.
inline constexpr std::string_view circular_polarisations =
    "circular polarisations (left as horizontal, right as vertical)";

// A service as readers begin with it: nothing known but that it is broadcast.
line_up_service broadcast_service(std::size_t line);

// Television with video, radio with audio alone, data with neither.
std::uint8_t service_type_by_streams(const channel_st &fields);

}  // namespace chlist
