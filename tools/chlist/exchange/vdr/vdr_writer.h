// Writes a line-up as VDR's channels.conf.
#pragma once

#include "chlist/exchange/written_list.h"

namespace chlist {

// In the order of the numbers, which ":@N" lines raise where they leap.
written_list write_vdr(const line_up &list, const write_options &options);

}  // namespace chlist
