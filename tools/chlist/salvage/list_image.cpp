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

// A piece of the record that shows whether it is where it should be: an entry or a group, or the count of an array,
// which ends where its entries end.
struct piece {
  std::size_t at;
  std::size_t size;
  const array_place *array;
  bool is_count;
};

std::vector<piece> pieces_of(const std::vector<array_place> &arrays) {
  std::vector<piece> pieces;
  for (const array_place &array : arrays) {
    for (std::size_t i = 0; i < array.capacity; ++i) {
      pieces.push_back({array.first + i * array.stride, array.stride, &array, false});
    }
    pieces.push_back({array.count, sizeof(std::int16_t), &array, true});
  }
  std::ranges::sort(pieces, {}, &piece::at);
  return pieces;
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

  // The place of the record where bytes were inserted or cut out, and how many pieces are right then.
  struct split {
    std::size_t at;
    std::size_t right;
  };

  // Every byte of the file counts for one place of the record: those that were cut out leave a gap. Of equal splits the
  // first is taken, and then every piece behind it that is right where it stands.
  [[nodiscard]] split best_split(std::ptrdiff_t shift) const {
    const std::vector<std::size_t> behind = right_behind(shift);
    std::size_t in_front = 0;
    bool is_next = false;
    // In front of the first piece nothing tells; the settings there are few.
    split best = {pieces_.front().at, 0};
    for (std::size_t i = 0, next = 0; i <= pieces_.size(); ++i) {
      const std::size_t at = i < pieces_.size() ? pieces_[i].at : size_;
      while (next < pieces_.size() && pieces_[next].at < at + gap_of(shift)) {
        ++next;
      }
      const std::size_t right = in_front + behind[next];
      const bool is_better = right > best.right || (is_next && right == best.right);
      if (is_better) {
        best = {at, right};
      }
      const std::size_t piece = i < pieces_.size() ? weight_of(pieces_[i], 0) : 0;
      is_next = (is_better || at == best.at) && piece > 0;
      in_front += piece;
    }
    return best;
  }

  [[nodiscard]] std::vector<std::byte> shifted(std::ptrdiff_t shift, std::size_t at) const {
    std::vector<std::byte> bytes(size_);
    copy(bytes, 0, std::min(at, size_), 0);
    copy(bytes, std::min(at + gap_of(shift), size_), size_, shift);
    return bytes;
  }

 private:
  static std::size_t gap_of(std::ptrdiff_t shift) { return shift < 0 ? static_cast<std::size_t>(-shift) : 0; }

  // For each piece how many are right from it on.
  [[nodiscard]] std::vector<std::size_t> right_behind(std::ptrdiff_t shift) const {
    std::vector<std::size_t> right(pieces_.size() + 1);
    for (std::size_t i = pieces_.size(); i > 0; --i) {
      right[i - 1] = right[i] + weight_of(pieces_[i - 1], shift);
    }
    return right;
  }

  // An array begins with its first slot: one that is shifted by whole slots would seem as right as any.
  [[nodiscard]] std::size_t weight_of(const piece &each, std::ptrdiff_t shift) const {
    return !is_right(each, shift) ? 0 : each.at == each.array->first ? 2 : 1;
  }

  [[nodiscard]] bool is_right(const piece &each, std::ptrdiff_t shift) const {
    const std::size_t at = shifted_place(file_, each.at, shift);
    if (!fits(file_, at, each.size)) {
      return false;
    }
    return each.is_count ? is_right_count(*each.array, value_at<std::int16_t>(file_, at), shift)
                         : is_used(*each.array, at);
  }

  [[nodiscard]] bool is_used(const array_place &array, std::size_t at) const {
    return array.is_view ? services_.list(channel::identity_of(entry_at(file_, at))) : is_named_group(file_, at);
  }

  [[nodiscard]] bool is_right_count(const array_place &array, int count, std::ptrdiff_t shift) const {
    const auto is_used_slot = [&](std::size_t slot) {
      const std::size_t at = shifted_place(file_, array.first + slot * array.stride, shift);
      return fits(file_, at, array.stride) && is_used(array, at);
    };
    const auto used = static_cast<std::size_t>(std::max(count, 0));
    return used > 0 && used <= array.capacity && is_used_slot(used - 1) &&
           (used == array.capacity || !is_used_slot(used));
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
  std::vector<array_place> arrays_ = arrays_of_list();
  std::vector<piece> pieces_ = pieces_of(arrays_);
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
      image = {list.shifted(shift, split.at), shift, split.at, false};
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
