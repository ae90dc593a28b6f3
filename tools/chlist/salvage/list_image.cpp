// Entries that name services which are there, groups with names, and counts that end where entries do tell where the
// record's arrays stand. The record ends behind the last of them at the earliest.
#include "chlist/salvage/list_image.h"

#include <channel/store.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>

#include "channel/persist/image.h"
#include "channel/store/channel_list.h"
#include "chlist/salvage/list_alignment.h"
#include "chlist/salvage/list_arrays.h"
#include "chlist/salvage/record_bytes.h"

namespace chlist {
namespace {

namespace persist = channel::persist;

struct piece {
  std::size_t at;
  std::size_t size;
  const array_place *array;
  bool is_count;

  // The slot of a pointer at the end of an entry says nothing.
  [[nodiscard]] std::size_t telling_end() const {
    return at + size - (array->is_view && !is_count ? sizeof(std::uint32_t) : 0);
  }
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

class shifted_places {
 public:
  shifted_places(std::size_t file_size, std::vector<shift_step> steps)
      : file_size_(file_size), steps_(std::move(steps)) {}

  // A byte that was cut out stands nowhere: the end of the file is given for it.
  [[nodiscard]] std::size_t operator[](std::size_t at) const {
    std::ptrdiff_t shift = 0;
    for (const shift_step &step : steps_) {
      if (at < step.from) {
        break;
      }
      if (at < gap_end(step, shift)) {
        return file_size_;
      }
      shift = step.shift;
    }
    const auto place = static_cast<std::ptrdiff_t>(at) + shift;
    return place < 0 ? file_size_ : std::min(static_cast<std::size_t>(place), file_size_);
  }

  // Up to here bytes that stand together do so in the file, too.
  [[nodiscard]] std::size_t next_border(std::size_t behind) const {
    std::size_t next = SIZE_MAX;
    std::ptrdiff_t shift = 0;
    for (const shift_step &step : steps_) {
      const auto in_front_of_file = static_cast<std::size_t>(std::max<std::ptrdiff_t>(-step.shift, 0));
      for (const std::size_t border : {step.from, gap_end(step, shift), in_front_of_file}) {
        next = border > behind ? std::min(next, border) : next;
      }
      shift = step.shift;
    }
    return next;
  }

  [[nodiscard]] std::ptrdiff_t last_shift() const { return steps_.empty() ? 0 : steps_.back().shift; }

  [[nodiscard]] bool lack_any(std::size_t begin, std::size_t end) const {
    std::ptrdiff_t shift = 0;
    for (const shift_step &step : steps_) {
      if (step.from < end && begin < gap_end(step, shift)) {
        return true;
      }
      shift = step.shift;
    }
    return false;
  }

 private:
  static std::size_t gap_end(const shift_step &step, std::ptrdiff_t before) {
    return step.from + static_cast<std::size_t>(std::max<std::ptrdiff_t>(before - step.shift, 0));
  }

  std::size_t file_size_;
  std::vector<shift_step> steps_;
};

// A change to a shift that the first network's place speaks for is worth a piece that is right; one to a shift that
// entries alone speak for has to make more of them right than chance would.
constexpr int cost_of_confirmed_shift = 1;
constexpr int cost_of_shift = 4;

// Each costs a comparison with the whole record; of more runs of entries only the longest are asked.
constexpr std::size_t most_shifts = 40;

class shifted_list {
 public:
  shifted_list(byte_span file, std::size_t size, const witnesses &services, const std::vector<record_run> &runs)
      : file_(file), size_(size), services_(services), runs_(runs) {}

  [[nodiscard]] alignment best_alignment() const {
    if (is_in_place()) {
      return {{}, 1};
    }
    std::vector<aligned_piece> pieces;
    for (const piece &each : pieces_) {
      pieces.push_back({each.at, each.telling_end()});
    }
    return align(pieces, shifts(),
                 [this](std::size_t piece, std::ptrdiff_t shift) { return weight_of(pieces_[piece], shift); });
  }

  [[nodiscard]] std::size_t end_of_right(const shifted_places &places) const {
    std::size_t end = 0;
    for (const piece &each : pieces_) {
      const std::size_t at = places[each.at];
      const auto shift = static_cast<std::ptrdiff_t>(at) - static_cast<std::ptrdiff_t>(each.at);
      if (at < file_.size() && weight_of(each, shift) > 0) {
        end = std::max(end, at + each.size);
      }
    }
    return end;
  }

  // Pieces of which a part is missing are zeros. What the file has from its end on is of other records.
  [[nodiscard]] std::vector<std::byte> bytes(const shifted_places &places, std::size_t end) const {
    std::vector<std::byte> bytes(size_);
    for (std::size_t at = 0, next = 0; at < size_; at = next) {
      next = std::min(places.next_border(at), size_);
      if (const std::size_t place = places[at]; place < end) {
        std::memcpy(bytes.data() + at, file_.data() + place, std::min(next - at, end - place));
      }
    }
    for (const piece &each : pieces_) {
      const bool is_torn = places.lack_any(each.at, each.telling_end());
      if (is_torn || (places[each.at] < end) != (places[each.telling_end() - 1] < end)) {
        std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(each.at), each.size, std::byte{0});
      }
    }
    return bytes;
  }

  // What stands in front of all arrays, where nothing tells whether it is right.
  [[nodiscard]] std::size_t settings_size() const { return pieces_.front().at; }

 private:
  // The record stands where the file begins, and of every array those slots are used that its count says.
  [[nodiscard]] bool is_in_place() const {
    const auto is_as_counted = [this](const array_place &array) {
      const int count =
          fits(file_, array.count, sizeof(std::int16_t)) ? value_at<std::int16_t>(file_, array.count) : -1;
      for (std::size_t i = 0; i < array.capacity && count >= 0; ++i) {
        if (is_used(array, array.first + i * array.stride) != (i < static_cast<std::size_t>(count))) {
          return false;
        }
      }
      return count >= 0;
    };
    return std::ranges::any_of(runs_, [this](const record_run &run) { return run.network == size_; }) &&
           std::ranges::all_of(arrays_, is_as_counted);
  }

  [[nodiscard]] std::vector<possible_shift> shifts() const {
    std::vector<possible_shift> shifts = {{0, cost_of_confirmed_shift}};
    for (const record_run &run : runs_) {
      add(shifts, static_cast<std::ptrdiff_t>(run.network) - static_cast<std::ptrdiff_t>(size_),
          cost_of_confirmed_shift);
    }
    const std::size_t confirmed = shifts.size();
    for (const entry_run &run : entry_runs()) {
      for (const array_place &array : arrays_) {
        if (array.is_view) {
          add_shifts_by_count(shifts, array, run);
          add_nearest_shifts(shifts, confirmed, array, run);
        }
      }
    }
    return shifts;
  }

  static void add(std::vector<possible_shift> &shifts, std::ptrdiff_t shift, int cost) {
    if (shifts.size() < most_shifts && std::ranges::find(shifts, shift, &possible_shift::shift) == shifts.end()) {
      shifts.push_back({shift, cost});
    }
  }

  struct entry_run {
    std::size_t begin;
    std::size_t count;
  };

  [[nodiscard]] std::vector<entry_run> entry_runs() const {
    const std::size_t end = runs_.empty() ? std::min(size_, file_.size()) : runs_.front().begin;
    std::vector<entry_run> found;
    for (std::size_t at = 0; fits(file_, at, persist::entry_image_size) && at < end;) {
      const std::size_t begin = at;
      while (at < end && fits(file_, at, persist::entry_image_size) && is_entry(at)) {
        at += persist::entry_image_size;
      }
      if (at > begin) {
        found.push_back({begin, (at - begin) / persist::entry_image_size});
      } else {
        ++at;
      }
    }
    std::ranges::stable_sort(found, std::greater<>(), &entry_run::count);
    found.resize(std::min(found.size(), most_shifts));
    return found;
  }

  // A run that ends where a view's count says that its entries do.
  void add_shifts_by_count(std::vector<possible_shift> &shifts, const array_place &array, const entry_run &run) const {
    const std::size_t end = run.begin + run.count * array.stride;
    for (std::size_t count = 1; count <= array.capacity; ++count) {
      const auto shift =
          static_cast<std::ptrdiff_t>(end) - static_cast<std::ptrdiff_t>(array.first + count * array.stride);
      const std::size_t place = shifted_place(array.count, shift);
      if (fits(file_, place, sizeof(std::int16_t)) &&
          value_at<std::int16_t>(file_, place) == static_cast<std::int16_t>(count) &&
          is_right_count(array, static_cast<int>(count), shift)) {
        add(shifts, shift, cost_of_shift);
      }
    }
  }

  // A run between two holes is taken for one that was moved as little as its slots allow.
  static void add_nearest_shifts(std::vector<possible_shift> &shifts, std::size_t confirmed, const array_place &array,
                                 const entry_run &run) {
    const auto stride = static_cast<std::ptrdiff_t>(array.stride);
    const auto begin = static_cast<std::ptrdiff_t>(run.begin);
    const auto first = static_cast<std::ptrdiff_t>(array.first);
    for (std::size_t i = 0; i < confirmed; ++i) {
      const std::ptrdiff_t near = shifts[i].shift;
      if (begin - near + stride <= first || begin - near >= static_cast<std::ptrdiff_t>(array.count)) {
        continue;
      }
      const std::ptrdiff_t beyond = ((begin - first - near) % stride + stride) % stride;
      add(shifts, near + beyond, cost_of_shift);
      add(shifts, near + beyond - stride, cost_of_shift);
    }
  }

  // Where a place of the record stands in the file when it is shifted; nowhere is the end.
  [[nodiscard]] std::size_t shifted_place(std::size_t at, std::ptrdiff_t shift) const {
    const auto place = static_cast<std::ptrdiff_t>(at) + shift;
    return place < 0 ? file_.size() : std::min(static_cast<std::size_t>(place), file_.size());
  }

  // An array begins with its first slot: one that is shifted by whole slots would seem as right as any.
  [[nodiscard]] int weight_of(const piece &each, std::ptrdiff_t shift) const {
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

  [[nodiscard]] bool is_entry(std::size_t at) const {
    return !names_no_service(at) && services_.list(channel::identity_of(entry_at(file_, at)));
  }

  // What most of a file is: no table needs to be asked.
  [[nodiscard]] bool names_no_service(std::size_t at) const {
    constexpr std::size_t ids = offsetof(virtual_channel_st, service_id);
    return value_at<std::uint32_t>(file_, at + ids) == 0 &&
           value_at<std::uint16_t>(file_, at + ids + sizeof(std::uint32_t)) == 0;
  }

  [[nodiscard]] bool is_used(const array_place &array, std::size_t at) const {
    return array.is_view ? is_entry(at) : is_named_group(value_at<group_st>(file_, at));
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

bool is_all_view_torn(const shifted_places &places, std::size_t list_end) {
  constexpr std::size_t begin = image_place<channel_list_st>(offsetof(channel_list_st, vch));
  constexpr std::size_t end = image_place<channel_list_st>(offsetof(channel_list_st, vnumber)) + sizeof(std::int16_t);
  return places[begin] >= list_end || places[end - 1] >= list_end || places.lack_any(begin, end);
}

std::size_t end_of_list(std::size_t end, std::size_t end_of_right, const std::vector<record_run> &runs) {
  const auto first = std::ranges::find_if(runs, [=](const record_run &each) { return each.begin >= end_of_right; });
  return first != runs.end() ? std::min(end, first->begin) : end;
}

// In front of a provider that is right, settings that are none's and no stretch of one byte are the list's, whatever
// has happened to its version.
bool has_plausible_settings(byte_span file, const std::vector<shift_step> &steps, std::size_t size) {
  constexpr std::size_t behind_version = sizeof(std::int16_t);
  const bool is_shifted = !steps.empty() && steps.front().from <= size;
  if (is_shifted || !fits(file, size, sizeof(group_st)) || !is_named_group(value_at<group_st>(file, size))) {
    return false;
  }
  const byte_span settings = file.subspan(behind_version, size - behind_version);
  const std::int8_t group_kind = CHLIST_FIELD(file, 0, channel_list_st, use_group_list);
  return group_kind >= GROUP_ALL && group_kind <= GROUP_FAV &&
         std::ranges::any_of(settings, [&](std::byte byte) { return byte != settings.front(); });
}

}  // namespace

list_image repair_list_image(byte_span file, const record_sizes &sizes, const std::vector<record_run> &runs,
                             const witnesses &services) {
  const shifted_list list(file, sizes.list, services, runs);
  const alignment best = list.best_alignment();
  const shifted_places places(file.size(), best.steps);
  const auto end = static_cast<std::size_t>(static_cast<std::ptrdiff_t>(sizes.list) + places.last_shift());
  list_image image;
  image.steps = best.steps;
  image.end = end_of_list(std::min(end, file.size()), list.end_of_right(places), runs);
  image.missing = end - image.end;
  image.is_all_view_torn = is_all_view_torn(places, image.end);
  const bool has_version = is_known_version(version_in(file));
  image.has_lost_settings = !has_version && !has_plausible_settings(file, best.steps, list.settings_size());
  image.bytes = empty_list_image(sizes.list);
  if (best.right > 0 || has_version) {
    const std::vector<std::byte> bytes = list.bytes(places, image.end);
    const auto kept = static_cast<std::ptrdiff_t>(image.has_lost_settings ? list.settings_size() : 0);
    std::copy(bytes.begin() + kept, bytes.end(), image.bytes.begin() + kept);
  }
  return image;
}

}  // namespace chlist
