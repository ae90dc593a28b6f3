// Groups of the source are known in the list by their names, as it was filled with them; those of the list then by
// their names now, or, when somebody called them otherwise, by their ids and a service that both have.
#include "chlist/exchange/layout/group_edits.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

#include "chlist/exchange/group_names.h"

namespace chlist {
namespace {

using place_row = std::vector<std::size_t>;
using group_list = std::vector<favourite_group>;

bool has_place(const place_row &row, std::size_t place) { return std::ranges::find(row, place) != row.end(); }

place_row services_in_group(const favourite_group &group, const place_row *places = nullptr) {
  place_row row;
  for (const line_up_entry &each : group.entries) {
    const std::size_t place = places != nullptr && each.service != nowhere ? (*places)[each.service] : each.service;
    if (place != nowhere && !has_place(row, place)) {
      row.push_back(place);
    }
  }
  return row;
}

std::size_t place_of_name(const group_list &groups, std::string_view name) {
  const auto found = std::ranges::find(groups, name, &favourite_group::name);
  return found != groups.end() ? static_cast<std::size_t>(found - groups.begin()) : nowhere;
}

class edit_finder {
 public:
  edit_finder(const groups_before &before, const group_list &now) : before_(before), now_(now) {
    for (const favourite_group &each : before.filled.favourites) {
      filled_.push_back(services_in_group(each, &before.places_of_filled));
    }
    pair_groups();
  }

  std::vector<group_edit> edits() {
    for (std::size_t at = 0; at < before_.read.favourites.size(); ++at) {
      take_read(at);
    }
    for (std::size_t at = 0; at < now_.size(); ++at) {
      if (std::ranges::find(partners_, at) == partners_.end()) {
        made_.push_back({.name = now_[at].name, .now = services_in_group(now_[at])});
        places_.push_back(at);
      }
    }
    return in_order();
  }

 private:
  // partners_: of each group of the list as it was filled, the one that it is now.
  void pair_groups() {
    const group_list &filled = before_.filled.favourites;
    for (const favourite_group &each : filled) {
      partners_.push_back(place_of_name(now_, each.name));
    }
    for (std::size_t at = 0; at < filled.size(); ++at) {
      const auto same = std::ranges::find(now_, filled[at].id, &favourite_group::id);
      const auto place = static_cast<std::size_t>(same - now_.begin());
      if (partners_[at] == nowhere && same != now_.end() && !has_place(partners_, place) &&
          have_one_in_common(at, place)) {
        partners_[at] = place;
      }
    }
  }

  [[nodiscard]] bool have_one_in_common(std::size_t filled, std::size_t now) const {
    const place_row services = services_in_group(now_[now]);
    return filled_[filled] == services ||
           std::ranges::any_of(filled_[filled], [&](std::size_t each) { return has_place(services, each); });
  }

  [[nodiscard]] std::size_t filled_of(std::size_t read) const {
    const std::string name(cut_utf8(before_.read.favourites[read].name, longest_group_name));
    return place_of_name(before_.filled.favourites, name);
  }

  // Of several groups that became one, the last gets what is new.
  [[nodiscard]] bool is_last_of(std::size_t read, std::size_t filled) const {
    for (std::size_t at = read + 1; at < before_.read.favourites.size(); ++at) {
      if (filled_of(at) == filled) {
        return false;
      }
    }
    return true;
  }

  void take_read(std::size_t at) {
    const favourite_group &read = before_.read.favourites[at];
    const std::size_t filled = filled_of(at);
    if (filled == nowhere) {
      return;
    }
    const place_row own = services_in_group(read, &before_.places_of_read);
    group_edit edit{.origin = read.origin, .name = read.name};
    std::ranges::copy_if(filled_[filled], std::back_inserter(edit.before),
                         [&](auto each) { return has_place(own, each); });
    const std::size_t partner = partners_[filled];
    edit.is_gone = partner == nowhere;
    if (!edit.is_gone) {
      edit.is_renamed = now_[partner].name != before_.filled.favourites[filled].name;
      edit.name = edit.is_renamed ? now_[partner].name : edit.name;
      const bool takes_new = is_last_of(at, filled);
      std::ranges::copy_if(services_in_group(now_[partner]), std::back_inserter(edit.now), [&](std::size_t each) {
        return has_place(own, each) || (takes_new && !has_place(filled_[filled], each));
      });
    }
    take(std::move(edit), partner);
  }

  // Parts of one group are joined; they are called otherwise than the group, which renames nothing.
  void take(group_edit edit, std::size_t partner) {
    const auto known = std::ranges::find(made_, edit.origin, &group_edit::origin);
    if (known == made_.end()) {
      made_.push_back(std::move(edit));
      places_.push_back(partner);
      return;
    }
    known->is_renamed = false;
    known->is_gone = known->is_gone && edit.is_gone;
    std::ranges::copy(edit.before, std::back_inserter(known->before));
    std::ranges::copy(edit.now, std::back_inserter(known->now));
    auto &place = places_[static_cast<std::size_t>(known - made_.begin())];
    place = std::min(place, partner);
  }

  // Whether nobody moved a group, or made one in front of others.
  [[nodiscard]] bool is_in_filled_order() const {
    place_row row;
    std::ranges::copy_if(partners_, std::back_inserter(row), [](std::size_t place) { return place != nowhere; });
    for (std::size_t at = 0; at < made_.size(); ++at) {
      if (made_[at].origin.empty()) {
        row.push_back(places_[at]);
      }
    }
    return std::ranges::is_sorted(row);
  }

  std::vector<group_edit> in_order() {
    std::vector<std::size_t> order(made_.size());
    std::ranges::generate(order, [at = std::size_t{0}]() mutable { return at++; });
    const bool is_moved = !is_in_filled_order();
    std::ranges::stable_sort(order, {},
                             [&](std::size_t at) { return is_moved || made_[at].is_gone ? places_[at] : at; });
    std::vector<group_edit> sorted;
    for (const std::size_t at : order) {
      sorted.push_back(std::move(made_[at]));
    }
    return sorted;
  }

  const groups_before &before_;
  const group_list &now_;
  std::vector<place_row> filled_;  // the services of each group
  place_row partners_;
  std::vector<group_edit> made_;
  place_row places_;  // of each of these among the groups as they are now
};

}  // namespace

std::vector<group_edit> group_edits(const groups_before &before, const std::vector<favourite_group> &now) {
  return edit_finder(before, now).edits();
}

}  // namespace chlist
