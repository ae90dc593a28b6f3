// The transponders of a pass over the whole list, by network, frequency and polarisation: gives the finder's answer,
// the first in list order within the tolerance, in about constant time.
#pragma once

#include <channel/records.h>
#include <cstddef>
#include <cstdint>
#include <span>

#include "channel/store/first_table.h"

namespace channel {

// A network's identity in one number of 24 bits.
constexpr std::uint32_t network_key(std::uint8_t net_index, std::uint16_t network_id) {
  return std::uint32_t{net_index} << 16U | network_id;
}

class transponder_table {
 public:
  // A transponder's place in the list order of its network.
  struct place {
    tp_ch_st *transponder;
    const place *next_in_bucket;
    std::uint32_t network;
    std::uint32_t number;  // from 0, in the order in which transponders were added
  };

  struct query {
    std::uint32_t network;
    std::uint32_t frequency;
    std::uint8_t polarisation;
  };

  // So many transponders are there to be added, and so many may come later.
  transponder_table(std::size_t transponders, std::size_t later)
      : places_(allocate_array<place>(transponders + later + 1)), firsts_(transponders), buckets_(transponders) {}

  // Those of one network in list order.
  const place &add(std::uint32_t network, tp_ch_st &transponder);

  // Null when no transponder of the network is within the tolerance.
  [[nodiscard]] const place *find(const query &wanted) const {
    const place *first = firsts_.find(key_of(wanted, wanted.frequency));
    return first != nullptr ? first : find_within_tolerance(query{wanted});
  }

  [[nodiscard]] std::span<const place> places() const { return {places_.get(), used_places_}; }

 private:
  static std::uint64_t key_of(const query &wanted, std::uint32_t frequency_or_bucket) {
    return std::uint64_t{wanted.network} << 40U | std::uint64_t{wanted.polarisation} << 32U | frequency_or_bucket;
  }
  [[nodiscard]] const place *find_within_tolerance(const query &wanted) const;

  std::uint32_t used_places_ = 0;
  transient<place> places_;
  first_table<const place> firsts_;
  first_table<const place> buckets_;
};

}  // namespace channel
