// The transponders of a pass over the whole list, by what they must share and frequency: gives the finder's answer, the
// first in list order within the tolerance, in about constant time; in the worst case in that of a binary search.
#pragma once

#include <channel/records.h>
#include <cstddef>
#include <cstdint>
#include <span>

#include "channel/store/first_table.h"

namespace channel {

class transponder_table {
 public:
  // One of the places of a bucket, each of which is lower than all that were added before it, or each higher.
  struct stair {
    std::uint32_t older;
    std::uint32_t jump;
    std::uint32_t height;
  };

  // A transponder's place in the list order of its scope.
  struct place {
    tp_ch_st *transponder;
    std::uint32_t scope;
    std::uint32_t number;  // from 0, in the order in which transponders were added
    stair falling;
    stair rising;
    // Of a bucket's first place: its last stairs.
    std::uint32_t lowest;
    std::uint32_t highest;
    // The answer for this place's own frequency, once it was asked for.
    const place *first_within_tolerance;
  };

  // So many transponders are there to be added, and so many may come later.
  transponder_table(std::size_t transponders, std::size_t later)
      : places_(allocate_array<place>(transponders + later + 1)), own_frequencies_(transponders),
        buckets_(transponders) {}

  // Those of one scope in list order. Only transponders of one scope are compared.
  const place &add(std::uint32_t scope, tp_ch_st &transponder);

  // Null when no transponder of the scope is within the tolerance. Most identities carry a transponder's own frequency,
  // of which the answer stays what it was: transponders that are added later stand behind it.
  [[nodiscard]] const place *find(std::uint32_t scope, std::uint32_t frequency) const {
    place *own = own_frequencies_.find(key_of(scope, frequency));
    if (own == nullptr) {
      return find_within_tolerance(scope, frequency);
    }
    if (own->first_within_tolerance == nullptr) {
      own->first_within_tolerance = find_within_tolerance(scope, frequency);
    }
    return own->first_within_tolerance;
  }
  // The same for frequencies of 64 bits.
  [[nodiscard]] const place *find_within_tolerance(std::uint32_t scope, std::int64_t frequency) const;

  [[nodiscard]] std::span<const place> places() const { return {places_.get(), used_places_}; }

 private:
  using stairs = stair place::*;

  static std::uint64_t key_of(std::uint32_t scope, std::uint32_t frequency_or_bucket) {
    return std::uint64_t{scope} << 32U | frequency_or_bucket;
  }
  void add_to_bucket(place &added);
  void add_stair(place &added, stairs side, std::uint32_t last);
  [[nodiscard]] const place *find_oldest(stairs side, std::uint32_t last, std::int64_t frequency) const;
  [[nodiscard]] const stair &stair_of(std::uint32_t number, stairs side) const { return places_.get()[number].*side; }

  std::uint32_t used_places_ = 0;
  transient<place> places_;
  first_table<place> own_frequencies_;
  first_table<place> buckets_;
};

}  // namespace channel
