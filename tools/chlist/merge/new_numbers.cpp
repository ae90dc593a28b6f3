// A service has the same new number in every view.
#include "chlist/merge/new_numbers.h"

#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <map>
#include <set>
#include <stdexcept>

#include "channel/store/view.h"
#include "chlist/line_up/line_up.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

constexpr std::string_view from_word = "from ";

constexpr int numbered_views[] = {VIEW_ALL, VIEW_TV, VIEW_RADIO};

using services = std::set<const channel_st *>;

template <class Function>
void for_each_numbered(const Function &function) {
  for (const int code : numbered_views) {
    for (virtual_channel_st &entry : channel::find_view(code)) {
      function(entry);
    }
  }
}

class free_numbers {
 public:
  explicit free_numbers(const services &added) {
    for_each_numbered([&](const virtual_channel_st &entry) {
      if (!added.contains(entry.rch)) {
        used_.insert(entry.major_ch_num);
      }
    });
  }

  [[nodiscard]] int behind_all() const { return used_.empty() ? 1 : std::max(*used_.rbegin(), 0) + 1; }

  // The next free one from there on, or else the first of all.
  int take(int from) {
    int number = first_free(from);
    number = number <= largest_channel_number ? number : first_free(1);
    used_.insert(number);
    return number;
  }

 private:
  [[nodiscard]] int first_free(int number) const {
    while (used_.contains(number)) {
      ++number;
    }
    return number;
  }

  std::set<int> used_;
};

// In the order of the ALL view; those that it does not show behind it.
std::map<const channel_st *, int> numbers_for(const services &added, const numbering &chosen) {
  free_numbers free(added);
  int from = chosen.by == numbering::way::from ? chosen.first : free.behind_all();
  std::map<const channel_st *, int> numbers;
  for_each_numbered([&](const virtual_channel_st &entry) {
    if (added.contains(entry.rch) && !numbers.contains(entry.rch)) {
      from = numbers[entry.rch] = free.take(from);
    }
  });
  return numbers;
}

// The numbers that added services share with another one in a view.
std::set<int> numbers_twice(const services &added) {
  std::set<int> twice;
  for (const int code : numbered_views) {
    std::map<int, std::size_t> counts;
    for (const virtual_channel_st &entry : channel::find_view(code)) {
      ++counts[entry.major_ch_num];
    }
    for (const virtual_channel_st &entry : channel::find_view(code)) {
      if (added.contains(entry.rch) && counts[entry.major_ch_num] > 1) {
        twice.insert(entry.major_ch_num);
      }
    }
  }
  return twice;
}

std::vector<std::string> twice_among(const services &added) {
  const std::set<int> twice = numbers_twice(added);
  if (twice.empty()) {
    return {};
  }
  return {fmt::format("{} more than once in a view since services were added by their ids, {} the first of them",
                      counted(twice.size(), "number"), *twice.begin())};
}

}  // namespace

numbering numbering_from(std::string_view text) {
  if (text == "next") {
    return {numbering::way::next};
  }
  if (text == "service-id") {
    return {numbering::way::service_id};
  }
  const std::string_view digits = text.starts_with(from_word) ? text.substr(from_word.size()) : text;
  int first = 0;
  const char *end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, first);
  if (stop != end || error != std::errc() || first < 1 || first > largest_channel_number) {
    throw std::runtime_error(fmt::format("--new-numbers: {} is neither next nor service-id nor a number of 1 to {}",
                                         shown(text), largest_channel_number));
  }
  return {numbering::way::from, first};
}

std::vector<std::string> number_added(const std::vector<const channel_st *> &added, const numbering &chosen) {
  const services of_scan(added.begin(), added.end());
  if (chosen.by == numbering::way::service_id) {
    return twice_among(of_scan);
  }
  const std::map<const channel_st *, int> numbers = numbers_for(of_scan, chosen);
  for_each_numbered([&](virtual_channel_st &entry) {
    if (const auto found = numbers.find(entry.rch); found != numbers.end()) {
      entry.major_ch_num = static_cast<std::int16_t>(found->second);
    }
  });
  return {};
}

}  // namespace chlist
