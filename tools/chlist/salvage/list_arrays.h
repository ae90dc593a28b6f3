// The arrays of the list's own record, views and groups, by their places in its image.
#pragma once

#include <channel/records.h>

#include <cstddef>
#include <functional>
#include <vector>

#include "chlist/files/file_bytes.h"

namespace chlist {

struct array_place {
  bool is_view;
  std::size_t first;
  std::size_t stride;
  std::size_t capacity;
  std::size_t count;
};

std::vector<array_place> arrays_of_list();

virtual_channel_st entry_at(byte_span bytes, std::size_t at);

// A name as long as it says: up to a zero byte, or up to where a text in its table ends.
bool has_right_length(const group_st &group);

// Such a name, and more than a control.
bool is_named_group(const group_st &group);

// Every entry of every view that is in use, or looks like it: by its place, whatever the counts say. The list may end
// early.
void for_each_entry(byte_span list, const std::function<void(const virtual_channel_st &entry)> &action);

void for_each_counted_entry(byte_span list, const std::function<void(const virtual_channel_st &entry)> &action);

}  // namespace chlist
