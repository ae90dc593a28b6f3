// The entries of a view in an order that something outside the list gives.
#pragma once

#include <channel/records.h>

#include <cstddef>
#include <cstdint>
#include <unordered_map>

namespace chlist {

// Services of the list in memory by where they are to stand: the lowest first.
using service_ranks = std::unordered_map<const channel_st *, std::size_t>;

// Entries whose services have a rank share the positions that they have now in the order of their ranks; those of one
// rank keep their order, and all others their positions. Entries move as a whole, so they keep their numbers.
void arrange(std::int8_t view, const service_ranks &ranks);

}  // namespace chlist
