// Counting what is lost.
#include "chlist/exchange/line_up.h"

#include <algorithm>

namespace chlist {

void loss_counts::add(std::string_view what, std::size_t count, bool is_left_out) {
  if (count == 0) {
    return;
  }
  const auto is_same = [&](const row &known) { return known.what == what && known.is_left_out == is_left_out; };
  if (const auto known = std::ranges::find_if(rows_, is_same); known != rows_.end()) {
    known->count += count;
  } else {
    rows_.push_back({std::string(what), count, is_left_out});
  }
}

bool loss_counts::has_left_out() const { return std::ranges::any_of(rows_, &row::is_left_out); }

}  // namespace chlist
