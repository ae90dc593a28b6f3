// Counting what is lost.
#include "chlist/exchange/loss_counts.h"

#include <algorithm>

namespace chlist {

void loss_counts::add(std::string_view what, std::size_t count, bool is_left_out) {
  if (count == 0) {
    return;
  }
  const auto [place, is_new] = places_[is_left_out ? 1 : 0].try_emplace(std::string(what), rows_.size());
  if (is_new) {
    rows_.push_back({place->first, 0, is_left_out});
  }
  rows_[place->second].count += count;
}

bool loss_counts::has_left_out() const { return std::ranges::any_of(rows_, &row::is_left_out); }

}  // namespace chlist
