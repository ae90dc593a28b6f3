// Places by the library's own tables of views and groups.
#include "chlist/salvage/list_arrays.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "channel/persist/image.h"
#include "channel/store/channel_list.h"
#include "channel/store/group_table.h"
#include "channel/store/view.h"
#include "chlist/salvage/record_bytes.h"
#include "chlist/text/broadcast_text.h"

namespace chlist {
namespace {

namespace persist = channel::persist;

array_place place_of(const channel::view &view) {
  const channel_list_st &list = channel::channel_list;
  return {true, place_in_image(list, view.entries), persist::entry_image_size, static_cast<std::size_t>(view.capacity),
          place_in_image(list, view.count)};
}

array_place place_of(const channel::group_table &table) {
  const channel_list_st &list = channel::channel_list;
  return {false, place_in_image(list, table.groups), sizeof(group_st), static_cast<std::size_t>(table.capacity),
          place_in_image(list, table.count)};
}

std::size_t count_in(byte_span list, const array_place &array) {
  const int count = fits(list, array.count, sizeof(std::int16_t)) ? value_at<std::int16_t>(list, array.count) : 0;
  return static_cast<std::size_t>(std::clamp(count, 0, static_cast<int>(array.capacity)));
}

template <class Action>
void for_each_slot(byte_span list, bool only_counted, const Action &action) {
  for (const array_place &array : arrays_of_list()) {
    const std::size_t slots = only_counted && array.is_view ? count_in(list, array) : array.capacity;
    for (std::size_t i = 0; array.is_view && i < slots && fits(list, array.first + i * array.stride, array.stride);
         ++i) {
      action(entry_at(list, array.first + i * array.stride));
    }
  }
}

}  // namespace

std::vector<array_place> arrays_of_list() {
  std::vector<array_place> arrays;
  for (int code = VIEW_ALL; code <= VIEW_FAVOURITE_LAST; ++code) {
    if (const channel::view view = channel::find_view(code); view && code != VIEW_WORK) {
      arrays.push_back(place_of(view));
    }
  }
  for (const channel::group_table &table :
       {channel::provider_table(), channel::genre_table(), channel::country_table(), channel::favourite_table()}) {
    arrays.push_back(place_of(table));
  }
  std::ranges::sort(arrays, {}, &array_place::first);
  return arrays;
}

virtual_channel_st entry_at(byte_span bytes, std::size_t at) {
  virtual_channel_st entry = {};
  std::memcpy(&entry, bytes.data() + at, channel::entry_bytes);
  return entry;
}

bool has_right_length(const group_st &group) {
  const auto length = static_cast<std::size_t>(std::max<int>(group.name_len, 0));
  return length == strnlen(group.name, sizeof group.name) || length == encoded_text(group.name).size();
}

bool is_named_group(const group_st &group) {
  const bool is_text = group.name_len > 1 || static_cast<unsigned char>(group.name[0]) >= ' ';
  return group.name_len > 0 && is_text && has_right_length(group);
}

void for_each_entry(byte_span list, const std::function<void(const virtual_channel_st &entry)> &action) {
  for_each_slot(list, false, action);
}

void for_each_counted_entry(byte_span list, const std::function<void(const virtual_channel_st &entry)> &action) {
  for_each_slot(list, true, action);
}

}  // namespace chlist
