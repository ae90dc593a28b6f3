// What a channel list may say of a service that other formats may have no place for. A writer names what it carries;
// the rest is counted, for all formats in the same words.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "chlist/exchange/loss_counts.h"
#include "chlist/fields/service_fields.h"

namespace chlist {

// Bytes that the library does not interpret: a host may have put something there.
template <std::size_t Size>
bool is_used(const std::uint8_t (&bytes)[Size]) {
  return std::ranges::any_of(bytes, [](std::uint8_t byte) { return byte != 0; });
}

enum class trait {
  network_id,
  transport_id,
  frequency,
  service_id,
  place_outside_views,  // of services that the ALL view does not show
  number,
  minor_number,
  name,
  short_name,
  provider,
  genre,
  country,
  source,
  lock,
  skip,
  scrambling,
  data_mark,
  other_flags,
  service_type,
  source_type,
  polarisation,
  video_pid,
  audio_pid,
  pcr_pid,
  pmt_pid,
  ecm_pid,
  video_tag,
  audio_tag,
  order_key,
  net_index,
  host_fields,
  favourites,
  favourite_numbers,
};

// What is carried where a field is written.
std::vector<trait> traits_of(const field &which);

void count_uncarried(const line_up &list, std::span<const trait> carried, loss_counts &lost);

}  // namespace chlist
