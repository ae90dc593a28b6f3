// Groups are chosen first, and split last.
#include "chlist/exchange/group_choice.h"

#include <channel/records.h>
#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

#include "chlist/closest.h"
#include "chlist/command.h"
#include "chlist/exchange/field_reading.h"
#include "chlist/exchange/group_names.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

using group_list = std::vector<favourite_group>;

std::vector<std::string> names_of(const group_list &all) {
  std::vector<std::string> names;
  std::ranges::transform(all, std::back_inserter(names), &favourite_group::name);
  return names;
}

group_list::const_iterator find_group(const group_list &all, std::string_view name) {
  return std::ranges::find_if(all, [name](const favourite_group &each) { return is_same_name(each.name, name); });
}

// "A,B", unless there is a group of that name.
std::vector<std::string_view> names_in(const group_list &all, std::string_view text) {
  return find_group(all, text) != all.end() ? std::vector{text} : split(text, ',');
}

group_list groups_named(const group_list &all, const std::vector<std::string> &options) {
  group_list chosen;
  for (const std::string &option : options) {
    for (const std::string_view name : names_in(all, option)) {
      const auto found = find_group(all, name);
      if (found == all.end()) {
        throw usage_error("--bouquets: " + unknown_name("group", name, names_of(all)));
      }
      if (find_group(chosen, name) == chosen.end()) {
        chosen.push_back(*found);
      }
    }
  }
  return chosen;
}

void become_genres(line_up &list, loss_counts &lost) {
  for (const favourite_group &group : std::exchange(list.favourites, {})) {
    for (const line_up_entry &entry : group.entries) {
      std::string &genre = list.services[entry.service].genre;
      const bool has_another = !genre.empty() && genre != group.name;
      lost.add("groups of services that have a genre", has_another ? 1 : 0);
      genre = has_another ? genre : group.name;
    }
  }
}

void split_group(favourite_group group, group_list &into) {
  constexpr std::size_t most = MAX_FAV_NUM;
  if (group.entries.size() <= most) {
    into.push_back(std::move(group));
    return;
  }
  const std::span<const line_up_entry> entries = group.entries;
  for (std::size_t first = 0; first < entries.size(); first += most) {
    const auto part = entries.subspan(first, std::min(most, entries.size() - first));
    into.push_back({.name = fmt::format("{} {}", group.name, first / most + 1),
                    .entries = {part.begin(), part.end()},
                    .origin = group.origin});
  }
}

}  // namespace

void order_groups(line_up &list, const std::vector<std::string> &order) {
  const auto rank = [&](const favourite_group &each) {
    return std::ranges::find(order, cut_utf8(each.name, longest_group_name)) - order.begin();
  };
  if (list.favourites.size() > MAX_FAV) {
    std::ranges::stable_sort(list.favourites, {}, rank);
    return;
  }
  std::vector<favourite_group> known;
  std::vector<favourite_group *> places;
  for (favourite_group &each : list.favourites) {
    if (std::cmp_less(rank(each), order.size())) {
      known.push_back(std::move(each));
      places.push_back(&each);
    }
  }
  std::ranges::stable_sort(known, {}, rank);
  for (std::size_t i = 0; i < known.size(); ++i) {
    *places[i] = std::move(known[i]);
  }
}

void follow_groups_of(const line_up &model, group_options &options) {
  if (options.chosen.empty() && options.become == "favourites") {
    options.order = names_of(model.favourites);
  }
}

void choose_groups(line_up &list, const group_options &options, loss_counts &lost) {
  if (!options.chosen.empty()) {
    list.favourites = groups_named(list.favourites, options.chosen);
  }
  if (options.become == "genres") {
    become_genres(list, lost);
  } else if (options.become == "none") {
    lost.add("groups", std::exchange(list.favourites, {}).size());
  } else if (options.are_split) {
    for (favourite_group &group : std::exchange(list.favourites, {})) {
      split_group(std::move(group), list.favourites);
    }
  }
  order_groups(list, options.order);
}

void choose_groups_again(line_up &list, group_options options, const std::vector<favourite_group> &others) {
  if (!options.chosen.empty()) {
    std::vector<std::string> there;
    for (const std::string &each : options.chosen) {
      for (const std::string_view name : names_in(list.favourites, each)) {
        there.emplace_back(name);
      }
    }
    std::ranges::transform(others, std::back_inserter(there), &favourite_group::name);
    std::erase_if(there,
                  [&](const std::string &each) { return find_group(list.favourites, each) == list.favourites.end(); });
    list.favourites = groups_named(list.favourites, there);
    options.chosen.clear();
  }
  if (!options.order.empty()) {
    options.order = names_of(others);
  }
  loss_counts unsaid;
  choose_groups(list, options, unsaid);
}

}  // namespace chlist
