// Hosts write numbers into the entries themselves: the library has no call for it. Records hold signed 16-bit values,
// so that numbers on command lines are checked here.
#include "chlist/edit/renumbering.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <optional>
#include <stdexcept>
#include <tuple>
#include <utility>
#include <vector>

#include "chlist/fields/ranges.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

using entries_of_number = std::vector<virtual_channel_st *>;

entries_of_number find_number(const channel::view &view, const channel_number &number) {
  entries_of_number found;
  for (virtual_channel_st &entry : view) {
    if (number_of(entry) == number) {
      found.push_back(&entry);
    }
  }
  return found;
}

[[noreturn]] void refuse(std::int8_t view, const channel_number &number, const virtual_channel_st &holder) {
  throw std::runtime_error(fmt::format(
      "number {} belongs to {} in {}: --swap or --shift says what becomes of it", text_of(number),
      holder.rch == nullptr ? "an entry without a service" : name_for_message(*holder.rch), title_of(view)));
}

channel_number next(const channel_number &number, bool by_minor) {
  const int last = by_minor ? number.minor : number.major;
  if (last == largest_channel_number) {
    throw std::runtime_error(fmt::format("no number is free above {}: the largest is {}", text_of(number), last));
  }
  return by_minor ? channel_number{number.major, number.minor + 1} : channel_number{number.major + 1, number.minor};
}

// Whatever stood at a number moves to the next one, up to the first that is free.
void shift(const channel::view &view, entries_of_number displaced, channel_number number) {
  const bool by_minor = number.minor != 0;
  while (!displaced.empty()) {
    number = next(number, by_minor);
    entries_of_number following = find_number(view, number);
    for (virtual_channel_st *entry : displaced) {
      set_number(*entry, number);
    }
    displaced = std::move(following);
  }
}

void must_have_numbers(std::int8_t view, int from) {
  const int count = channel::find_view(view).size();
  if (from > largest_channel_number - count + 1) {
    throw std::runtime_error(fmt::format("{} has {} entries: numbered from {} they would pass {}", title_of(view),
                                         count, from, largest_channel_number));
  }
}

std::size_t count_shared_numbers(const channel::view &view) {
  std::map<std::pair<int, int>, std::size_t> uses;
  for (const virtual_channel_st &entry : view) {
    ++uses[{entry.major_ch_num, entry.minor_ch_num}];
  }
  return static_cast<std::size_t>(std::ranges::count_if(uses, [](const auto &use) { return use.second > 1; }));
}

// A service's entry with a number.
using shown_number = std::tuple<const channel_st *, int, int>;

shown_number shown_by(const virtual_channel_st &entry) { return {entry.rch, entry.major_ch_num, entry.minor_ch_num}; }

void follow(std::int8_t code, const std::map<shown_number, channel_number> &renumbered, edit_notes &notes) {
  const channel::view view = channel::find_view(code);
  const std::size_t shared_before = count_shared_numbers(view);
  for (virtual_channel_st &entry : view) {
    if (const auto found = renumbered.find(shown_by(entry)); found != renumbered.end()) {
      set_number(entry, found->second);
    }
  }
  if (const std::size_t shared = count_shared_numbers(view); shared > shared_before) {
    notes.push_back(
        fmt::format("numbers that now occur more than once in {}, where entries have numbers of their own: {}",
                    title_of(code), shared - shared_before));
  }
}

}  // namespace

channel_number number_from(std::string_view text) {
  const std::size_t dash = text.find('-', 1);
  const std::string_view behind = dash == std::string_view::npos ? "0" : text.substr(dash + 1);
  const auto major = number_from(ranges::channel_number, text.substr(0, dash));
  const auto minor = number_from(ranges::minor_number, behind);
  if (!major || !minor) {
    throw std::runtime_error(
        fmt::format("{} is no channel number: NUMBER is {}, or NUMBER-MINOR with a minor number of {}", shown(text),
                    ranges::channel_number.text, ranges::minor_number.text));
  }
  return {static_cast<int>(*major), static_cast<int>(*minor)};
}

channel_number number_of(const virtual_channel_st &entry) { return {entry.major_ch_num, entry.minor_ch_num}; }

void set_number(virtual_channel_st &entry, const channel_number &number) {
  entry.major_ch_num = static_cast<std::int16_t>(number.major);
  entry.minor_ch_num = static_cast<std::int16_t>(number.minor);
}

channel_number first_number_in(std::int8_t view, const channel_st &service) {
  const channel::view searched = channel::find_view(view);
  const int index = index_of(searched, service);
  if (index < 0) {
    throw std::runtime_error(fmt::format("{} has no entry in {}", name_for_message(service), title_of(view)));
  }
  return number_of(searched.entries[index]);
}

void renumber_entries(std::int8_t view, const channel_st &service, const channel_number &former,
                      const channel_number &wanted, taken_number policy) {
  const channel::view renumbered = channel::find_view(view);
  entries_of_number own = find_number(renumbered, former);
  std::erase_if(own, [&](const virtual_channel_st *entry) { return entry->rch != &service; });
  if (own.empty() || former == wanted) {
    return;
  }
  const entries_of_number holders = find_number(renumbered, wanted);
  if (!holders.empty() && policy == taken_number::is_refused) {
    refuse(view, wanted, *holders.front());
  }
  for (virtual_channel_st *entry : own) {
    set_number(*entry, wanted);
  }
  if (policy == taken_number::is_shifted) {
    shift(renumbered, holders, wanted);
  } else {
    std::ranges::for_each(holders, [&](virtual_channel_st *entry) { set_number(*entry, former); });
  }
}

void renumber_view(std::int8_t view, int from) {
  must_have_numbers(view, from);
  for (virtual_channel_st &entry : channel::find_view(view)) {
    set_number(entry, {from++, 0});
  }
}

void renumber_all_with_followers(std::span<const channel_number> numbers, edit_notes &notes) {
  std::map<shown_number, channel_number> renumbered;
  std::size_t place = 0;
  for (virtual_channel_st &entry : channel::find_view(VIEW_ALL)) {
    if (entry.rch != nullptr) {
      renumbered.emplace(shown_by(entry), numbers[place]);
    }
    set_number(entry, numbers[place]);
    ++place;
  }
  for (const std::int8_t view : views_in_use()) {
    if (view != VIEW_ALL) {
      follow(view, renumbered, notes);
    }
  }
}

void renumber_all_with_followers(int from, edit_notes &notes) {
  must_have_numbers(VIEW_ALL, from);
  std::vector<channel_number> numbers(static_cast<std::size_t>(channel::find_view(VIEW_ALL).size()));
  for (channel_number &number : numbers) {
    number.major = from++;
  }
  renumber_all_with_followers(numbers, notes);
}

}  // namespace chlist
