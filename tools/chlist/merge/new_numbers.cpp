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
#include "chlist/report.h"

namespace chlist {
namespace {

constexpr std::string_view from_word = "from ";

class free_numbers {
 public:
  explicit free_numbers(const std::set<const channel_st *> &added) {
    for (const virtual_channel_st &entry : channel::find_view(VIEW_ALL)) {
      if (!added.contains(entry.rch)) {
        used_.insert(entry.major_ch_num);
      }
    }
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

void give_number(const std::map<const channel_st *, int> &numbers) {
  for (const int code : {VIEW_ALL, VIEW_TV, VIEW_RADIO}) {
    for (virtual_channel_st &entry : channel::find_view(code)) {
      if (const auto found = numbers.find(entry.rch); found != numbers.end()) {
        entry.major_ch_num = static_cast<std::int16_t>(found->second);
      }
    }
  }
}

std::vector<std::string> twice_among(const std::set<const channel_st *> &added) {
  std::map<int, std::size_t> counts;
  for (const virtual_channel_st &entry : channel::find_view(VIEW_ALL)) {
    ++counts[entry.major_ch_num];
  }
  std::set<int> twice;
  for (const virtual_channel_st &entry : channel::find_view(VIEW_ALL)) {
    if (added.contains(entry.rch) && counts[entry.major_ch_num] > 1) {
      twice.insert(entry.major_ch_num);
    }
  }
  if (twice.empty()) {
    return {};
  }
  return {fmt::format("{} in the ALL view more than once since services were added by their ids, {} the first of them",
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

std::vector<std::string> number_added(const std::vector<const channel_st *> &services, const numbering &chosen) {
  const std::set<const channel_st *> added(services.begin(), services.end());
  if (chosen.by == numbering::way::service_id) {
    return twice_among(added);
  }
  free_numbers free(added);
  int from = chosen.by == numbering::way::from ? chosen.first : free.behind_all();
  std::map<const channel_st *, int> numbers;
  for (const virtual_channel_st &entry : channel::find_view(VIEW_ALL)) {
    if (added.contains(entry.rch) && !numbers.contains(entry.rch)) {
      from = numbers[entry.rch] = free.take(from);
    }
  }
  give_number(numbers);
  return {};
}

}  // namespace chlist
