// Which service gets which number, where networks broadcast numbers: services that claim one number, and those of high
// definition that take the number of their twin.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace chlist {

// What the network says of one service.
struct number_claim {
  std::optional<int> number;     // none, or 0: not told
  std::optional<int> simulcast;  // of a service of high definition: the number of its twin, which it takes
  int rank = 0;                  // of several with one number the lowest rank keeps it, then the first
};

struct settled_numbers {
  std::vector<std::optional<int>> numbers;  // by service
  std::size_t moved = 0;                    // services whose number another one has
};

// A service that takes its twin's number leaves it its own. One whose number is another's gets the first that is free
// from 800 to 999, or else the first behind the largest.
settled_numbers settle(const std::vector<number_claim> &claims);

}  // namespace chlist
