// The texts of a line-up as the formats that are plain text have them: in UTF-8, whatever table a broadcast named.
#pragma once

#include "chlist/exchange/line_up.h"

namespace chlist {

// Texts that name no table stay what they are. What changes is counted.
line_up with_plain_texts(line_up list, loss_counts &lost);

}  // namespace chlist
