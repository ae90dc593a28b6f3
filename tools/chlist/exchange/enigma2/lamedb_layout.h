// A folder of Enigma2: the lines of the lamedb, a service at a time, and those of bouquets and of the blacklist.
#pragma once

#include "chlist/exchange/layout/source_layout.h"

namespace chlist {

extern const source_layout lamedb_layout;

}  // namespace chlist
