#include "chlist/serve/list_states.h"

#include <algorithm>

namespace chlist {
namespace {

constexpr std::size_t most_states = 16;

}  // namespace

void list_states::keep(std::size_t step, const std::string &image) {
  if (step < kept_.back().step + distance_) {
    return;
  }
  if (kept_.size() == most_states) {
    for (std::size_t i = 1; i < kept_.size(); ++i) {
      kept_.erase(kept_.begin() + static_cast<std::ptrdiff_t>(i));
    }
    distance_ *= 2;
  }
  kept_.push_back({step, image});
}

void list_states::forget_behind(std::size_t step) {
  std::erase_if(kept_, [step](const state &each) { return each.step > step; });
}

const list_states::state &list_states::nearest(std::size_t step) const {
  const auto behind = std::ranges::find_if(kept_, [step](const state &each) { return each.step > step; });
  return *std::prev(behind);
}

}  // namespace chlist
