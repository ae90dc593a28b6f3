// Transponders stand in buckets as wide as the tolerance: whatever matches a frequency is in its bucket or in one
// beside it. Most identities carry a transponder's own frequency: for those the answer is found when the transponder is
// added, since those added later stand behind it in the list.
#include "channel/store/transponder_table.h"

#include <algorithm>

#include "channel/identity.h"

namespace channel {
namespace {

std::uint32_t bucket_of(std::uint32_t frequency) { return frequency / frequency_tolerance; }

}  // namespace

const transponder_table::place &transponder_table::add(std::uint32_t network, tp_ch_st &transponder) {
  place &added = places_.get()[used_places_];
  added = {&transponder, nullptr, network, used_places_++};
  const query own = {network, transponder.frequency, transponder.polarisation};
  const place *&first = firsts_.at(key_of(own, own.frequency));
  // Of two with one frequency the second is never the first within any tolerance.
  if (first == nullptr) {
    const place *&bucket = buckets_.at(key_of(own, bucket_of(own.frequency)));
    added.next_in_bucket = bucket;
    bucket = &added;
    first = find_within_tolerance(own);
  }
  return added;
}

const transponder_table::place *transponder_table::find_within_tolerance(const query &wanted) const {
  const std::uint32_t bucket = bucket_of(wanted.frequency);
  const place *first = nullptr;
  for (std::uint32_t beside = bucket - std::min(bucket, 1U); beside <= bucket + 1; ++beside) {
    for (const place *in = buckets_.find(key_of(wanted, beside)); in != nullptr; in = in->next_in_bucket) {
      const bool matches = same_frequency(in->transponder->frequency, wanted.frequency);
      first = matches && (first == nullptr || in < first) ? in : first;
    }
  }
  return first;
}

}  // namespace channel
