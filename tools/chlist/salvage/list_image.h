// The list's own record in a damaged file: where its arrays stand, what its entries name, and how it was when bytes
// have been inserted into it or cut out of it since.
#pragma once

#include <channel/records.h>

#include <cstddef>
#include <functional>
#include <vector>

#include "chlist/check/frame.h"
#include "chlist/salvage/witnesses.h"

namespace chlist {

struct list_image {
  std::vector<std::byte> bytes;  // as large as the record
  std::ptrdiff_t shift = 0;      // how many bytes were inserted, or cut out when negative
  std::size_t shifted_from = 0;  // from this place of the record on
  bool is_lost = false;          // nothing of it is right: the bytes are those of an empty list
};

// Every entry of every view that is in use, or looks like it: by its place, whatever the counts say.
void for_each_entry(byte_span list, const std::function<void(const virtual_channel_st &entry)> &action);

// The same for those that the counts of the views hold.
void for_each_counted_entry(byte_span list, const std::function<void(const virtual_channel_st &entry)> &action);

// services: those that were found. first_record: where the first network stands, or would stand.
list_image repair_list_image(byte_span file, const record_sizes &sizes, std::size_t first_record,
                             const witnesses &services);

}  // namespace chlist
