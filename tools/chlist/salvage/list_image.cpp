// Bytes that were inserted or cut out move everything behind them. Entries that name services which are there tell
// where that begins, and the record ends behind the last of them at the earliest.
#include "chlist/salvage/list_image.h"

#include <channel/store.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "channel/persist/image.h"
#include "channel/store/channel_list.h"
#include "chlist/salvage/list_arrays.h"
#include "chlist/salvage/record_bytes.h"

namespace chlist {
namespace {

namespace persist = channel::persist;

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

class shifted_list {
 public:
  shifted_list(byte_span file, std::size_t size, const witnesses &services, const std::vector<record_run> &runs)
      : file_(file), size_(size), services_(services), runs_(runs) {}

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

  // Where the last piece ends that is right, in the file; 0 when none is.
  [[nodiscard]] std::size_t end_of_right(std::ptrdiff_t shift, std::size_t from) const {
    std::size_t end = 0;
    for (const piece &each : pieces_) {
      if (const std::size_t at = place_of(each.at, shift, from);
          at < file_.size() && weight_of(each, each.at < from ? 0 : shift) > 0) {
        end = std::max(end, at + each.size);
      }
    }
    return end;
  }

  // Pieces of which a part is missing are zeros. What the file has from its end on is of other records.
  [[nodiscard]] std::vector<std::byte> bytes(std::ptrdiff_t shift, std::size_t from, std::size_t end) const {
    std::vector<std::byte> bytes(size_);
    const auto is_there = [&](std::size_t at) { return place_of(at, shift, from) < end; };
    for (std::size_t at = 0; at < size_; ++at) {
      if (is_there(at)) {
        bytes[at] = file_[place_of(at, shift, from)];
      }
    }
    for (const piece &each : pieces_) {
      if (is_there(each.at) != is_there(each.at + each.size - 1)) {
        std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(each.at), each.size, std::byte{0});
      }
    }
    return bytes;
  }

  [[nodiscard]] bool is_all_view_torn(std::ptrdiff_t shift, std::size_t from, std::size_t end) const {
    constexpr std::size_t first = image_place<channel_list_st>(offsetof(channel_list_st, vch));
    constexpr std::size_t count = image_place<channel_list_st>(offsetof(channel_list_st, vnumber));
    return place_of(first, shift, from) >= end || place_of(count + 1, shift, from) >= end ||
           (shift < 0 && from > first && from < count);
  }

  // What stands in front of all arrays, where nothing tells whether it is right.
  [[nodiscard]] std::size_t settings_size() const { return pieces_.front().at; }

 private:
  static std::size_t gap_of(std::ptrdiff_t shift) { return shift < 0 ? static_cast<std::size_t>(-shift) : 0; }

  // Where a place of the record stands in the file when it is shifted; nowhere is the end.
  [[nodiscard]] std::size_t shifted_place(std::size_t at, std::ptrdiff_t shift) const {
    const auto place = static_cast<std::ptrdiff_t>(at) + shift;
    return place < 0 ? file_.size() : std::min(static_cast<std::size_t>(place), file_.size());
  }

  [[nodiscard]] std::size_t place_of(std::size_t at, std::ptrdiff_t shift, std::size_t from) const {
    if (at < from) {
      return std::min(at, file_.size());
    }
    return at < from + gap_of(shift) ? file_.size() : shifted_place(at, shift);
  }

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
    const std::size_t at = shifted_place(each.at, shift);
    if (!fits(file_, at, each.size) || is_of_records(at)) {
      return false;
    }
    return each.is_count ? is_right_count(*each.array, value_at<std::int16_t>(file_, at), shift)
                         : is_used(*each.array, at);
  }

  // Services look like groups here and there.
  [[nodiscard]] bool is_of_records(std::size_t at) const {
    return std::ranges::any_of(runs_, [=](const record_run &run) { return at >= run.begin && at < run.end; });
  }

  [[nodiscard]] bool is_used(const array_place &array, std::size_t at) const {
    return array.is_view ? services_.list(channel::identity_of(entry_at(file_, at)))
                         : is_named_group(value_at<group_st>(file_, at));
  }

  [[nodiscard]] bool is_right_count(const array_place &array, int count, std::ptrdiff_t shift) const {
    const auto is_used_slot = [&](std::size_t slot) {
      const std::size_t at = shifted_place(array.first + slot * array.stride, shift);
      return fits(file_, at, array.stride) && is_used(array, at);
    };
    const auto used = static_cast<std::size_t>(std::max(count, 0));
    return used > 0 && used <= array.capacity && is_used_slot(used - 1) &&
           (used == array.capacity || !is_used_slot(used));
  }

  byte_span file_;
  std::size_t size_;
  const witnesses &services_;
  const std::vector<record_run> &runs_;
  std::vector<array_place> arrays_ = arrays_of_list();
  std::vector<piece> pieces_ = pieces_of(arrays_);
};

std::vector<std::byte> empty_list_image(std::size_t size) {
  reset_channel_list();
  persist::image<channel_list_st> image{};
  persist::to_image(channel::channel_list, image);
  std::vector<std::byte> bytes(image.begin(), image.end());
  bytes.resize(size);
  return bytes;
}

struct placement {
  std::ptrdiff_t shift = 0;
  std::size_t split = 0;
  std::size_t right = 0;
};

// As it stands, unless one of the starts makes more of it right.
placement place_list(const shifted_list &list, std::size_t list_size, const std::vector<record_run> &runs) {
  placement best = {0, list_size, list.best_split(0).right};
  for (const record_run &run : runs) {
    const auto shift = static_cast<std::ptrdiff_t>(run.network) - static_cast<std::ptrdiff_t>(list_size);
    if (const auto split = shift != 0 ? list.best_split(shift) : shifted_list::split{}; split.right > best.right) {
      best = {shift, split.at, split.right};
    }
  }
  return best;
}

std::size_t end_of_list(std::size_t end, std::size_t end_of_right, const std::vector<record_run> &runs) {
  const auto first = std::ranges::find_if(runs, [=](const record_run &each) { return each.begin >= end_of_right; });
  return first != runs.end() ? std::min(end, first->begin) : end;
}

}  // namespace

list_image repair_list_image(byte_span file, const record_sizes &sizes, const std::vector<record_run> &runs,
                             const witnesses &services) {
  const shifted_list list(file, sizes.list, services, runs);
  const placement best = place_list(list, sizes.list, runs);
  const auto end = static_cast<std::size_t>(static_cast<std::ptrdiff_t>(sizes.list) + best.shift);
  const bool has_version = is_known_version(version_in(file));
  list_image image;
  image.shift = best.shift;
  image.shifted_from = best.shift != 0 ? best.split : 0;
  image.end = end_of_list(std::min(end, file.size()), list.end_of_right(best.shift, best.split), runs);
  image.missing = end - image.end;
  image.is_all_view_torn = list.is_all_view_torn(best.shift, best.split, image.end);
  image.is_lost = best.right == 0 && !has_version;
  image.bytes = empty_list_image(sizes.list);
  if (!image.is_lost) {
    const std::vector<std::byte> bytes = list.bytes(best.shift, best.split, image.end);
    const std::size_t kept = !has_version && best.shift != 0 && best.split <= list.settings_size() ? best.split : 0;
    std::copy(bytes.begin() + static_cast<std::ptrdiff_t>(kept), bytes.end(),
              image.bytes.begin() + static_cast<std::ptrdiff_t>(kept));
  }
  return image;
}

}  // namespace chlist
