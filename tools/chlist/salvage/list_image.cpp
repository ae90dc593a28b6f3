// Bytes that were inserted or cut out move everything behind them. Entries that name services which are there tell
// where that begins.
#include "chlist/salvage/list_image.h"

#include <channel/store.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "channel/persist/image.h"
#include "channel/store/channel_list.h"
#include "channel/store/group_table.h"
#include "channel/store/view.h"
#include "chlist/salvage/record_bytes.h"

namespace chlist {
namespace {

namespace persist = channel::persist;

struct array_place {
  bool is_view;
  std::size_t first;
  std::size_t stride;
  std::size_t capacity;
  std::size_t count;
};

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

// In the record's order.
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
  std::memcpy(&entry, bytes.data() + at, persist::entry_bytes);
  return entry;
}

std::size_t count_in(byte_span list, const array_place &array) {
  const auto count = value_at<std::int16_t>(list, array.count);
  return static_cast<std::size_t>(std::clamp<int>(count, 0, static_cast<int>(array.capacity)));
}

template <class Action>
void for_each_slot(byte_span list, bool only_counted, const Action &action) {
  for (const array_place &array : arrays_of_list()) {
    const std::size_t slots = only_counted && array.is_view ? count_in(list, array) : array.capacity;
    for (std::size_t i = 0; array.is_view && i < slots; ++i) {
      action(entry_at(list, array.first + i * array.stride));
    }
  }
}

bool is_named_group(byte_span bytes, std::size_t at) {
  const auto group = value_at<group_st>(bytes, at);
  const std::size_t length = strnlen(group.name, sizeof group.name);
  return length > 0 && group.name_len == static_cast<std::int16_t>(length);
}

struct slot {
  std::size_t at;
  std::size_t size;
  bool is_entry;
};

std::vector<slot> slots_of_list() {
  std::vector<slot> slots;
  for (const array_place &array : arrays_of_list()) {
    for (std::size_t i = 0; i < array.capacity; ++i) {
      slots.push_back({array.first + i * array.stride, array.stride, array.is_view});
    }
  }
  std::ranges::sort(slots, {}, &slot::at);
  return slots;
}

// Where a place of the record stands in the file when it is shifted; nowhere is the end.
std::size_t shifted_place(byte_span file, std::size_t at, std::ptrdiff_t shift) {
  const auto place = static_cast<std::ptrdiff_t>(at) + shift;
  return place < 0 ? file.size() : static_cast<std::size_t>(place);
}

class shifted_list {
 public:
  shifted_list(byte_span file, std::size_t size, const witnesses &services)
      : file_(file), size_(size), services_(services) {}

  // The place of the record from which on it is shifted, and how many slots are right then.
  struct split {
    std::size_t from;
    std::size_t right;
  };

  [[nodiscard]] split best_split(std::ptrdiff_t shift) const {
    const std::vector<slot> slots = slots_of_list();
    std::size_t right = 0;
    for (const slot &each : slots) {
      right += is_right(each, shift) ? 1 : 0;
    }
    // In front of the first slot nothing tells; the settings there are few.
    split best = {slots.front().at, right};
    for (const slot &each : slots) {
      right += is_right(each, 0) ? 1U : 0U;
      right -= is_right(each, shift) ? 1U : 0U;
      if (right >= best.right) {
        best = {each.at + each.size, right};
      }
    }
    return best;
  }

  [[nodiscard]] std::vector<std::byte> shifted(std::ptrdiff_t shift, std::size_t from) const {
    std::vector<std::byte> bytes(size_);
    copy(bytes, 0, std::min(from, size_), 0);
    copy(bytes, std::min(from, size_), size_, shift);
    return bytes;
  }

 private:
  [[nodiscard]] bool is_right(const slot &each, std::ptrdiff_t shift) const {
    const std::size_t at = shifted_place(file_, each.at, shift);
    if (!fits(file_, at, each.size)) {
      return false;
    }
    return each.is_entry ? services_.list(channel::identity_of(entry_at(file_, at))) : is_named_group(file_, at);
  }

  void copy(std::vector<std::byte> &bytes, std::size_t begin, std::size_t end, std::ptrdiff_t shift) const {
    for (std::size_t at = begin; at < end; ++at) {
      if (const std::size_t place = shifted_place(file_, at, shift); place < file_.size()) {
        bytes[at] = file_[place];
      }
    }
  }

  byte_span file_;
  std::size_t size_;
  const witnesses &services_;
};

bool is_version(int version) { return version >= 7 && version <= CHANNEL_LIST_VERSION; }

std::vector<std::byte> empty_list_image(std::size_t size) {
  reset_channel_list();
  persist::image<channel_list_st> image{};
  persist::to_image(channel::channel_list, image);
  std::vector<std::byte> bytes(image.begin(), image.end());
  bytes.resize(size);
  return bytes;
}

}  // namespace

void for_each_entry(byte_span list, const std::function<void(const virtual_channel_st &entry)> &action) {
  for_each_slot(list, false, action);
}

void for_each_counted_entry(byte_span list, const std::function<void(const virtual_channel_st &entry)> &action) {
  for_each_slot(list, true, action);
}

list_image repair_list_image(byte_span file, const record_sizes &sizes, std::size_t first_record,
                             const witnesses &services) {
  const shifted_list list(file, sizes.list, services);
  const auto shift = static_cast<std::ptrdiff_t>(first_record) - static_cast<std::ptrdiff_t>(sizes.list);
  const std::size_t right = list.best_split(0).right;
  list_image image;
  if (shift != 0) {
    if (const auto split = list.best_split(shift); split.right > right) {
      image = {list.shifted(shift, split.from), shift, split.from, false};
    }
  }
  if (image.shift == 0) {
    const bool has_version = is_version(value_at<std::int16_t>(file, 0));
    image.is_lost = right == 0 && !has_version;
    image.bytes = image.is_lost ? empty_list_image(sizes.list) : list.shifted(0, sizes.list);
  }
  return image;
}

}  // namespace chlist
