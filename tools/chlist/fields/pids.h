// PIDs and component tags as a channel list holds them.
#pragma once

#include <cstdint>

namespace chlist {

inline constexpr std::uint16_t unset_pid = 0xFFFF;
inline constexpr std::uint8_t unset_tag = 0xFF;

// ISO/IEC 13818-1: 13 bits, of which 0 is that of the program association table.
inline constexpr std::uint16_t largest_pid = 0x1FFF;

// Whether a PID can be that of a stream.
constexpr bool is_stream_pid(std::uint16_t pid) { return pid != 0 && pid <= largest_pid; }

}  // namespace chlist
