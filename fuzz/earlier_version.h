// One input for the reader of an earlier version, and for the repair from that version.
#pragma once

#include <cstddef>
#include <cstdint>

namespace fuzz {

void read_and_repair(int version, const std::uint8_t *data, std::size_t size);

}  // namespace fuzz
