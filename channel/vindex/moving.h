// Moving entries inside one view, for the current view, its service-type view and favourite groups alike.
#pragma once

#include <bitset>
#include <channel/records.h>
#include <cstddef>
#include <cstdint>
#include <span>

#include "channel/store/view.h"

namespace channel {

// Takes the entry at source out and puts it in at destination, counted without it. The slot behind the count, where the
// array has one, receives a copy of the former last entry. Both positions are inside the view.
void move_entry(const view &moved, int destination, int source);

// Compacts entries without a real channel away and puts a block behind the entry at destination, which is lowered with
// the entries that go in front of it. The stored count is not changed: what does not fit into it is left out. The
// destination is inside the view, which is not empty then.
void insert_block(const view &moved, int destination, std::span<const virtual_channel_st> block);

inline bool is_position(const view &searched, int position) { return position >= 0 && position < searched.size(); }

// Whether every position is inside the view and none is given twice. A view that is an array of the host's own may have
// every position that a count can count.
template <class Position>
bool are_distinct_positions(const view &searched, std::span<const Position> positions) {
  std::bitset<std::size_t{INT16_MAX} + 1> seen;
  for (const Position position : positions) {
    if (!is_position(searched, position) || seen[static_cast<std::size_t>(position)]) {
      return false;
    }
    seen[static_cast<std::size_t>(position)] = true;
  }
  return true;
}

}  // namespace channel
