// Counting what is lost.
#include "chlist/exchange/line_up.h"

#include <algorithm>

namespace chlist {

void loss_counts::add(std::string_view what, std::size_t count) {
  if (count == 0) {
    return;
  }
  if (const auto known = std::ranges::find(rows_, what, &row::what); known != rows_.end()) {
    known->count += count;
  } else {
    rows_.push_back({std::string(what), count});
  }
}

}  // namespace chlist
