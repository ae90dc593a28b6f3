// Lists made to cost as much as possible: all services on one transponder, one on each of many, transponders closer to
// each other than the tolerance, and identities that a table with a known multiplier sends to one slot. Free of the
// test framework, so that the benchmarks measure the same lists.
#pragma once

#include <channel/channel.h>

#include <cstdint>
#include <initializer_list>
#include <vector>

namespace test_support {

// As many records as a count can hold.
inline constexpr int most_records = 65'535;

struct tuning {
  std::uint32_t frequency;
  std::uint8_t polarisation;
};

using tunings = std::vector<tuning>;

tunings far_apart(int n);
tunings one_khz_apart(int n);

// Tunings whose keys, the polarisation above the 32 bits of the frequency, lie side by side when multiplied: the high
// bits of the products are those of a few slots.
tunings crafted_against(std::uint64_t multiplier, int n);

// Hangs one network into the empty list, a transponder for each tuning, and one service with id 1 on each.
void hang_one_on_each(const tunings &tuned);

// Hangs n services, with ids from 1, on one transponder.
void hang_all_on_one(int n);

// Makes views show the last services in list order, as many as they hold: those that a walk reaches last.
void show_last_in(std::initializer_list<std::int8_t> view_types);

}  // namespace test_support
