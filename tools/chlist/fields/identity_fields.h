// What networks, transponders and services are known by: net index and original network id, then transport stream id,
// frequency and polarisation, then service id.
#pragma once

#include <cstdint>
#include <string>

#include "channel/identity.h"
#include "chlist/fields/field.h"
#include "chlist/fields/ranges.h"

namespace chlist {

inline constexpr field_words net_index_words = {"net_index", "net", "network index", ranges::byte};
inline constexpr field_words network_id_words = {"network_id", "network", "original network id", ranges::id16};
inline constexpr field_words ts_id_words = {"ts_id", "ts", "transport stream id", ranges::id16};
inline constexpr field_words frequency_words = {"frequency", "frequency", "frequency of the transponder in kHz",
                                                ranges::frequency_khz};
inline constexpr field_words polarisation_words = {"polarisation", "pol", "polarisation, H or V",
                                                   ranges::letters_of_polarisation};
inline constexpr field_words service_id_words = {"service_id", "service", "service id", ranges::id16};

// How much of an identity is meant.
enum class identity_part : std::uint8_t { network, transponder, service };

// "network", "transponder" or "service".
std::string_view name_of(identity_part what);

// The fields of an identity, as many as make it that of a network, a transponder or a service.
std::span<const record_field<channel::identity>> identity_fields(identity_part what = identity_part::service);

// "H", "V", or the number of a polarisation that has no letter.
std::string polarisation_text(std::uint8_t polarisation);

// "net 1, network 2, ts 3, 11000000 H, service 5".
std::string text_of(const channel::identity &id, identity_part what = identity_part::service);

}  // namespace chlist
