// A folder of Enigma2: the lines of the lamedb, a service at a time, and those of bouquets and of the blacklist.
#pragma once

#include <optional>
#include <string_view>

#include "chlist/exchange/enigma2/lamedb_fields.h"
#include "chlist/exchange/layout/source_layout.h"

namespace chlist {

// The numbers of a service in its piece of a lamedb; nothing of other pieces.
std::optional<lamedb_service> service_in_piece(std::string_view piece);

extern const source_layout lamedb_layout;

}  // namespace chlist
