// Counting what is lost.
#include "chlist/exchange/loss_counts.h"

#include <algorithm>

namespace chlist {

void loss_counts::add(row more) {
  if (more.count == 0) {
    return;
  }
  const auto [place, is_new] = places_[more.is_left_out ? 1 : 0].try_emplace(more.what, rows_.size());
  if (is_new) {
    rows_.push_back(std::move(more));
  } else {
    rows_[place->second].count += more.count;
  }
}

void loss_counts::add(const loss_counts &others) {
  std::ranges::for_each(others.rows_, [this](const row &each) { add(each); });
}

bool loss_counts::has_left_out() const { return std::ranges::any_of(rows_, &row::is_left_out); }

}  // namespace chlist
