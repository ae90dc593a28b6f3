// How a playlist falls apart into the lines of its services.
#pragma once

#include "chlist/exchange/layout/source_layout.h"

namespace chlist {

extern const source_layout m3u_layout;

}  // namespace chlist
