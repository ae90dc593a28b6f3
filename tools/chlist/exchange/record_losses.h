// What the records of two lists say beside their fields: bytes that only the receiver knows, texts as they are encoded,
// identities that records around a service have of their own.
#pragma once

#include <channel/records.h>

#include "chlist/compare/pairing.h"
#include "chlist/exchange/loss_counts.h"

namespace chlist {

// A list, and the line-up that it is.
struct records_of_list {
  channel_list_st &records;
  const line_up &list;
};

// Counts the records of the first list of which that is not the same in the second.
void count_record_losses(const records_of_list &before, const records_of_list &after, const paired_records &pairs,
                         loss_counts &lost);

}  // namespace chlist
