// What the records of a list say beside their services' fields and that no line-up holds: settings, bytes that only the
// receiver knows, keys, and identities that differ from those of the service.
#pragma once

#include <channel/records.h>

#include "chlist/exchange/loss_counts.h"

namespace chlist {

void count_record_losses(channel_list_st &list, loss_counts &lost);

}  // namespace chlist
