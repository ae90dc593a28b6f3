// A plain rendering of the steps of a move within a favourite group, on a group with room behind it, and every choice
// of what to move.
#pragma once

#include <channel/records.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace test_support {

using slots = std::vector<virtual_channel_st>;
using positions = std::vector<std::uint16_t>;

inline void move_single_by_steps(slots &group, int n, int dest, int src) {
  const auto at = [&group](int index) { return group.begin() + index; };
  const virtual_channel_st saved = *at(src);
  std::move(at(src + 1), at(n), at(src));
  std::move_backward(at(dest), at(n), at(n + 1));
  *at(dest) = saved;
}

inline void move_several_by_steps(slots &group, int n, int dest, const positions &sources) {
  const auto at = [&group](int index) { return group.begin() + index; };
  slots lifted;
  for (const std::uint16_t source : sources) {
    lifted.push_back(*at(source));
    *at(source) = {};
  }
  int count = n;
  for (int i = 0; i < count;) {
    if (at(i)->rch != nullptr) {
      ++i;
      continue;
    }
    std::move(at(i + 1), at(count), at(i));
    --count;
    if (i < dest) {
      --dest;
    }
  }
  const int how_many = static_cast<int>(lifted.size());
  std::move_backward(at(dest), at(count), at(count + how_many));
  // Where the destination moved itself, with all behind it, the list would end behind the last entry: it ends the group
  // instead, and nothing is lost.
  std::copy(lifted.begin(), lifted.end(), at(std::min(dest + 1, n - how_many)));
}

// Every choice of distinct positions below n, in every order.
void for_each_choice(int n, positions &chosen, const auto &action) {
  action(chosen);
  for (int position = 0; position < n; ++position) {
    const auto next = static_cast<std::uint16_t>(position);
    if (std::find(chosen.begin(), chosen.end(), next) == chosen.end()) {
      chosen.push_back(next);
      for_each_choice(n, chosen, action);
      chosen.pop_back();
    }
  }
}

}  // namespace test_support
