// Sorts view entries in place: a merge sort of their positions, two bytes each, on the stack; then every entry is moved
// once. It allocates nothing, asks few comparisons, keeps the order of equal entries, and bears comparisons that are no
// total order: whatever they answer, every entry is kept once.
#pragma once

#include <algorithm>
#include <array>
#include <channel/records.h>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <span>

namespace channel {

// Compare: negative, 0 or positive for two entries, the first of which stands before the second as the view is.
template <int Compare(const virtual_channel_st &, const virtual_channel_st &)>
class entry_sort {
 public:
  explicit entry_sort(std::span<virtual_channel_st> entries) : entries_(entries) {}

  void run() {
    const std::span<position> order = std::span(order_).first(entries_.size());
    std::iota(order.begin(), order.end(), position{0});
    sort(order);
    arrange(order);
  }

 private:
  using position = std::uint16_t;

  void sort(std::span<position> order) {
    if (order.size() < 2) {
      return;
    }
    const std::size_t half = order.size() / 2;
    sort(order.first(half));
    sort(order.subspan(half));
    merge(order, half);
  }

  // The first half is set aside, so that what is merged never overtakes the second.
  void merge(std::span<position> order, std::size_t half) {
    const position *left = aside_.data();
    const position *const left_end = std::copy_n(order.begin(), half, aside_.data());
    auto right = order.begin() + static_cast<std::ptrdiff_t>(half);
    auto out = order.begin();
    while (left != left_end && right != order.end()) {
      *out++ = Compare(entries_[*left], entries_[*right]) > 0 ? *right++ : *left++;
    }
    std::copy(left, left_end, out);
  }

  // Puts the entry from position order[i] to position i, cycle by cycle; a position that has its entry names itself.
  void arrange(std::span<position> order) {
    for (std::size_t first = 0; first < order.size(); ++first) {
      const virtual_channel_st displaced = entries_[first];
      std::size_t place = first;
      for (std::size_t from = order[place]; from != first; from = order[place]) {
        entries_[place] = entries_[from];
        order[place] = static_cast<position>(place);
        place = from;
      }
      entries_[place] = displaced;
      order[place] = static_cast<position>(place);
    }
  }

  std::span<virtual_channel_st> entries_;
  std::array<position, MAX_CHANNEL> order_;
  std::array<position, MAX_CHANNEL / 2> aside_;
};

}  // namespace channel
