// The time that a network tells (ETSI EN 300 468, annex C): the date as a modified Julian one, and the hour, the minute
// and the second in digits.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace chlist {

// "2026-11-22 14:05:00 UTC"; nothing of 40 bits that are no time.
std::optional<std::string> broadcast_time_text(std::uint64_t bits);

}  // namespace chlist
