// Writes a line-up as VDR's channels.conf.
#pragma once

#include <vector>

#include "chlist/exchange/loss_counts.h"
#include "chlist/exchange/made_files.h"

namespace chlist {

// In the order of the numbers, which ":@N" lines raise where they leap.
std::vector<made_file> write_vdr(const line_up &list, loss_counts &lost);

}  // namespace chlist
