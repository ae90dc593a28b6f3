// A channels.conf, line by line: services, and the separators that name groups and raise numbers.
#pragma once

#include "chlist/exchange/layout/source_layout.h"

namespace chlist {

extern const source_layout vdr_layout;

}  // namespace chlist
