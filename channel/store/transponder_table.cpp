// Transponders stand in buckets as wide as the tolerance: whatever matches a frequency is in its bucket, where
// everything matches it, or in one of the two beside it.
//
// Of the bucket above a frequency only the lower part matches. A place there can be the first in list order only if it
// is lower than all that were added before it: such places are the bucket's falling stairs, and the oldest of them that
// is low enough is the first. The rising stairs do the same for the bucket below. A bucket holds up to 2,500 stairs
// when transponders stand 1 kHz apart; each stair also points to one further back, so that the search takes logarithmic
// time (Myers, "An applicative random-access stack", 1983).
#include "channel/store/transponder_table.h"

#include <algorithm>

#include "channel/identity.h"

namespace channel {
namespace {

// Rounded down, below 0 too.
std::uint32_t bucket_of(std::int64_t frequency) {
  constexpr std::int64_t width = frequency_tolerance;
  return static_cast<std::uint32_t>(frequency / width - (frequency % width < 0 ? 1 : 0));
}

bool is_tuned_to(const transponder_table::place &at, std::int64_t frequency) {
  return same_frequency(std::int64_t{at.transponder->frequency}, frequency);
}

const transponder_table::place *earlier(const transponder_table::place *a, const transponder_table::place *b) {
  return a == nullptr || (b != nullptr && b < a) ? b : a;
}

}  // namespace

const transponder_table::place &transponder_table::add(std::uint32_t scope, tp_ch_st &transponder) {
  place &added = places_.get()[used_places_];
  added.transponder = &transponder;
  added.scope = scope;
  added.number = used_places_++;
  // Of two with one frequency the second is never the first within any tolerance.
  if (place *&first = own_frequencies_.at(key_of(scope, transponder.frequency)); first == nullptr) {
    first = &added;
    add_to_bucket(added);
  }
  return added;
}

void transponder_table::add_to_bucket(place &added) {
  place *&bucket = buckets_.at(key_of(added.scope, bucket_of(added.transponder->frequency)));
  if (bucket == nullptr) {
    bucket = &added;
    added.falling = added.rising = {added.number, added.number, 0};
    added.lowest = added.highest = added.number;
    return;
  }
  const place *in_order = places_.get();
  if (added.transponder->frequency < in_order[bucket->lowest].transponder->frequency) {
    add_stair(added, &place::falling, std::exchange(bucket->lowest, added.number));
  } else if (added.transponder->frequency > in_order[bucket->highest].transponder->frequency) {
    add_stair(added, &place::rising, std::exchange(bucket->highest, added.number));
  }
}

// A jump is as long as the two behind it together with one step, when those two are equally long, and one step else.
void transponder_table::add_stair(place &added, stairs side, std::uint32_t last) {
  const stair &older = stair_of(last, side);
  const stair &jumped = stair_of(older.jump, side);
  const bool are_even = older.height - jumped.height == jumped.height - stair_of(jumped.jump, side).height;
  added.*side = {last, are_even ? jumped.jump : last, older.height + 1};
}

// The oldest stair within the tolerance of a frequency on its other side; the stairs come closer to it with each.
const transponder_table::place *transponder_table::find_oldest(stairs side, std::uint32_t last,
                                                               std::int64_t frequency) const {
  const place *in_order = places_.get();
  const auto matches = [&](std::uint32_t number) { return is_tuned_to(in_order[number], frequency); };
  if (!matches(last)) {
    return nullptr;
  }
  std::uint32_t oldest = last;
  while (stair_of(oldest, side).height != 0) {
    const stair &from = stair_of(oldest, side);
    if (matches(from.jump)) {
      oldest = from.jump;
    } else if (matches(from.older)) {
      oldest = from.older;
    } else {
      break;
    }
  }
  return &in_order[oldest];
}

const transponder_table::place *transponder_table::find_within_tolerance(std::uint32_t scope,
                                                                         std::int64_t frequency) const {
  const std::uint32_t bucket = bucket_of(frequency);
  const place *own = buckets_.find(key_of(scope, bucket));
  const place *first = own != nullptr && is_tuned_to(*own, frequency) ? own : nullptr;
  if (const place *below = buckets_.find(key_of(scope, bucket - 1)); below != nullptr) {
    first = earlier(first, find_oldest(&place::rising, below->highest, frequency));
  }
  if (const place *above = buckets_.find(key_of(scope, bucket + 1)); above != nullptr) {
    first = earlier(first, find_oldest(&place::falling, above->lowest, frequency));
  }
  return first;
}

}  // namespace channel
