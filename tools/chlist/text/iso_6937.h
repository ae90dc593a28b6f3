// The table of texts that name none (ETSI EN 300 468, figure A.1): ISO/IEC 6937 with the euro sign.
#pragma once

#include <string_view>

#include "chlist/text/broadcast_text.h"

namespace chlist {

decoded_text decode_iso_6937(std::string_view encoded);

}  // namespace chlist
