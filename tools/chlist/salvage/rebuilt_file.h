// A sound channel file made of what is left of a damaged one.
#pragma once

#include <cstddef>
#include <vector>

#include "chlist/salvage/list_image.h"
#include "chlist/salvage/salvaged_records.h"

namespace chlist {

// Networks and transponders without anything below them stay when their own counts say so.
bool is_kept(const salvaged_transponder &transponder);
bool is_kept(const salvaged_records &records, const salvaged_network &network);

std::vector<std::byte> rebuilt_bytes(byte_span damaged, const record_sizes &sizes, int version, const list_image &list,
                                     const salvaged_records &records);

}  // namespace chlist
