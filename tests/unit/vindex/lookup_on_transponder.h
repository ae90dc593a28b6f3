// The search for an entry on a transponder, by one value.
#pragma once

#include <channel/channel.h>

#include "support/channel_key.h"

namespace test_support {

inline virtual_channel_st *on_transponder(const channel_key &sought, std::int8_t type) {
  return vtype_get_vch_by_frequency(static_cast<std::int8_t>(sought.tag), static_cast<std::uint8_t>(sought.net_index),
                                    sought.frequency, static_cast<std::uint8_t>(sought.polarisation), type);
}

}  // namespace test_support
