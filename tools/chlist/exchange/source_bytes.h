// The files of an export as bytes: in the encoding that those had which the list was made of.
#pragma once

#include <vector>

#include "chlist/exchange/loss_counts.h"
#include "chlist/exchange/written_list.h"
#include "chlist/files/companion.h"

namespace chlist {

// Characters that an encoding has not become question marks, and are counted.
void encode_as(const source_text &source, std::vector<made_file> &files, loss_counts &lost);

}  // namespace chlist
