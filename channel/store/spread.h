// Where keys go in tables of a power of two of slots.
#pragma once

#include <cstdint>

namespace channel {

// The high bits of the product depend on every bit of the key: a slot is as many of them as its number has. The
// multiplier is one that is known to scatter keys in even steps well, and the keys here are such: ids, frequencies and
// addresses in rows.
constexpr std::uint64_t spread(std::uint64_t key) { return key * 0xD1342543DE82EF95; }

}  // namespace channel
