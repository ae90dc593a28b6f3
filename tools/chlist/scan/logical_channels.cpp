// Twins first, then who keeps a number, then room for the others.
#include "chlist/scan/logical_channels.h"

#include <algorithm>
#include <map>
#include <numeric>

#include "chlist/line_up/line_up.h"

namespace chlist {
namespace {

using numbers = std::vector<std::optional<int>>;

constexpr int first_for_moved = 800;
constexpr int last_for_moved = 999;

bool is_shown(int number) { return number > 0 && number <= largest_channel_number; }

numbers numbers_told(const std::vector<number_claim> &claims) {
  numbers told;
  for (const number_claim &each : claims) {
    told.push_back(each.number && is_shown(*each.number) ? each.number : std::nullopt);
  }
  return told;
}

void give_twins_numbers(const std::vector<number_claim> &claims, numbers &all) {
  const numbers told = all;
  for (std::size_t service = 0; service < claims.size(); ++service) {
    const std::optional<int> wanted = claims[service].simulcast;
    if (!wanted || !is_shown(*wanted) || wanted == told[service]) {
      continue;
    }
    if (const auto twin = std::ranges::find(told, wanted); twin != told.end()) {
      all[static_cast<std::size_t>(twin - told.begin())] = told[service];
    }
    all[service] = wanted;
  }
}

int free_number(const std::map<int, std::size_t> &taken) {
  for (int number = first_for_moved; number <= last_for_moved; ++number) {
    if (!taken.contains(number)) {
      return number;
    }
  }
  return taken.rbegin()->first + 1;
}

}  // namespace

settled_numbers settle(const std::vector<number_claim> &claims) {
  settled_numbers made{numbers_told(claims)};
  give_twins_numbers(claims, made.numbers);
  std::vector<std::size_t> order(claims.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::stable_sort(order, {}, [&](std::size_t service) { return claims[service].rank; });
  std::map<int, std::size_t> taken;
  std::vector<std::size_t> without;
  for (const std::size_t service : order) {
    if (made.numbers[service] && !taken.emplace(*made.numbers[service], service).second) {
      without.push_back(service);
    }
  }
  for (const std::size_t service : without) {
    const int number = free_number(taken);
    made.numbers[service] = number <= largest_channel_number ? std::optional(number) : std::nullopt;
    taken.emplace(number, service);
    ++made.moved;
  }
  return made;
}

}  // namespace chlist
