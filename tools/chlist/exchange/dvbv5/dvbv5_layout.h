// The DVBv5 format, section by section.
#pragma once

#include "chlist/exchange/layout/source_layout.h"

namespace chlist {

extern const source_layout dvbv5_layout;

}  // namespace chlist
