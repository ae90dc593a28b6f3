// Shifting slots of a view or a table as memory moves do, and the rules by which identities match.
#pragma once

#include <algorithm>

#include "state.h"

namespace model_tests {

// A slot, in use or not; slots that were never written are zero.
template <class Table>
auto &slot(Table &table, int position) {
  const auto index = static_cast<std::size_t>(position);
  if (index >= table.slots.size()) {
    table.slots.resize(index + 1);
  }
  return table.slots[index];
}

template <class Table>
void shift(Table &table, int to, int from, int count) {
  for (int i = 0; i < count; ++i) {
    const int at = to < from ? i : count - 1 - i;
    const auto moved = slot(table, from + at);
    slot(table, to + at) = moved;
  }
}

// The slots behind move down and the last one is cleared.
template <class Table>
void remove_at(Table &table, int position) {
  shift(table, position, position + 1, table.count - position - 1);
  --table.count;
  slot(table, table.count) = {};
}

template <class Table, class Rule>
void remove_if(Table &table, const Rule &is_removed) {
  for (int i = 0; i < table.count;) {
    if (is_removed(slot(table, i))) {
      remove_at(table, i);
    } else {
      ++i;
    }
  }
}

template <class Table, class Slot>
void push(Table &table, const Slot &added) {
  slot(table, table.count) = added;
  ++table.count;
}

inline bool same_frequency(std::uint32_t a, std::uint32_t b) { return std::max(a, b) - std::min(a, b) < 2500; }

inline bool same_ids(const identity &a, const identity &b) {
  return a.net_index == b.net_index && a.network_id == b.network_id && a.ts_id == b.ts_id &&
         a.service_id == b.service_id;
}

inline bool same_service(const identity &a, const identity &b) {
  return same_ids(a, b) && same_frequency(a.frequency, b.frequency) && a.polarisation == b.polarisation;
}

inline identity make_identity(int net_index, int network_id, int ts_id, int frequency, int service_id,
                              int polarisation) {
  return {net_index, network_id, ts_id, static_cast<std::uint32_t>(frequency), service_id, polarisation};
}

}  // namespace model_tests
