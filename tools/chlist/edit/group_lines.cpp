// Favourite groups are the same by their names, or else by their ids: then one was renamed.
#include <algorithm>
#include <functional>
#include <iterator>

#include "chlist/edit/edit_line.h"
#include "chlist/edit/service_lines.h"
#include "chlist/position.h"
#include "chlist/text/utf8.h"

namespace chlist {
namespace {

std::size_t count_groups(const line_up &list) {
  return static_cast<std::size_t>(std::ranges::count_if(list.favourites, &favourite_group::is_counted));
}

class paired_groups {
 public:
  explicit paired_groups(const compared_lists &lists)
      : lists_(lists), of_list_(count_groups(lists.is()), nowhere), of_wanted_(count_groups(lists.wanted()), nowhere) {
    pair_by([](const favourite_group &a, const favourite_group &b) { return a.name == b.name; });
    pair_by([](const favourite_group &a, const favourite_group &b) { return is_same_name(a.name, b.name); });
    pair_by([](const favourite_group &a, const favourite_group &b) { return a.id == b.id; });
  }

  // The partners of the groups, or nowhere.
  [[nodiscard]] const std::vector<std::size_t> &of_list() const { return of_list_; }
  [[nodiscard]] const std::vector<std::size_t> &of_wanted() const { return of_wanted_; }

 private:
  void pair_by(const std::function<bool(const favourite_group &, const favourite_group &)> &are_same) {
    for (std::size_t wanted = 0; wanted < of_wanted_.size(); ++wanted) {
      for (std::size_t group = 0; group < of_list_.size() && of_wanted_[wanted] == nowhere; ++group) {
        if (of_list_[group] == nowhere && are_same(lists_.is().favourites[group], lists_.wanted().favourites[wanted])) {
          of_list_[group] = wanted;
          of_wanted_[wanted] = group;
        }
      }
    }
  }

  const compared_lists &lists_;
  std::vector<std::size_t> of_list_;
  std::vector<std::size_t> of_wanted_;
};

// The services of a group, each once.
std::vector<std::size_t> members_of(const favourite_group &group) {
  std::vector<std::size_t> members;
  for (const line_up_entry &entry : group.entries) {
    if (entry.service != nowhere && std::ranges::find(members, entry.service) == members.end()) {
      members.push_back(entry.service);
    }
  }
  return members;
}

void add_lines(std::vector<std::string> &lines, const char *edit, const std::string &group, const compared_lists &lists,
               const std::vector<std::size_t> &services) {
  for (std::size_t first = 0; first < services.size(); first += most_services_on_a_line) {
    std::vector<std::string> words = {"fav", edit, group};
    for (std::size_t i = first; i < std::min(first + most_services_on_a_line, services.size()); ++i) {
      words.push_back(lists.name_of(services[i]));
    }
    lines.push_back(line_of_words(words));
  }
}

std::vector<std::size_t> without(std::vector<std::size_t> services, const std::vector<std::size_t> &others) {
  std::erase_if(services, [&others](std::size_t each) { return std::ranges::find(others, each) != others.end(); });
  return services;
}

// A new group gets the lowest id that is free. So that it gets the wanted one, groups that go make room for it as late
// as they can: one that has the wanted id just before, the others behind all new ones, unless the table is full.
class group_exchange {
 public:
  explicit group_exchange(const compared_lists &lists) {
    const paired_groups pairs(lists);
    for (std::size_t group = 0; group < pairs.of_list().size(); ++group) {
      meanwhile_.favourites.push_back(lists.is().favourites[group]);
      is_leaving_.push_back(pairs.of_list()[group] == nowhere);
    }
    for (std::size_t wanted = 0; wanted < pairs.of_wanted().size(); ++wanted) {
      if (pairs.of_wanted()[wanted] == nowhere) {
        coming_.push_back(lists.wanted().favourites[wanted]);
      }
    }
    std::ranges::stable_sort(coming_, {}, &favourite_group::id);
  }

  std::vector<std::string> lines() {
    for (const favourite_group &each : coming_) {
      remove_if([&each](const favourite_group &leaving) { return leaving.id == each.id; });
      if (meanwhile_.favourites.size() >= MAX_FAV) {
        remove_if(is_any);
      }
      lines_.push_back(line_of_words({"fav", "new", each.name}));
      meanwhile_.favourites.push_back(each);
      is_leaving_.push_back(false);
    }
    while (remove_if(is_any)) {
    }
    return std::move(lines_);
  }

 private:
  static bool is_any(const favourite_group & /*leaving*/) { return true; }

  // The first one that goes and is meant.
  bool remove_if(const std::function<bool(const favourite_group &)> &is_meant) {
    for (std::size_t group = 0; group < is_leaving_.size(); ++group) {
      if (is_leaving_[group] && is_meant(meanwhile_.favourites[group])) {
        lines_.push_back(line_of_words({"fav", "delete", name_of_group(meanwhile_, group)}));
        meanwhile_.favourites.erase(meanwhile_.favourites.begin() + static_cast<std::ptrdiff_t>(group));
        is_leaving_.erase(is_leaving_.begin() + static_cast<std::ptrdiff_t>(group));
        return true;
      }
    }
    return false;
  }

  line_up meanwhile_;  // its groups alone
  std::vector<bool> is_leaving_;
  std::vector<favourite_group> coming_;
  std::vector<std::string> lines_;
};

}  // namespace

std::vector<std::string> lines_of_group_names(const compared_lists &lists) {
  std::vector<std::string> lines;
  const paired_groups pairs(lists);
  for (std::size_t group = 0; group < pairs.of_list().size(); ++group) {
    const std::size_t partner = pairs.of_list()[group];
    if (partner != nowhere && lists.is().favourites[group].name != lists.wanted().favourites[partner].name) {
      lines.push_back(
          line_of_words({"fav", "rename", name_of_group(lists.is(), group), lists.wanted().favourites[partner].name}));
    }
  }
  return lines;
}

std::vector<std::string> lines_of_groups(const compared_lists &lists) { return group_exchange(lists).lines(); }

std::vector<std::string> lines_of_group_order(const compared_lists &lists) {
  std::vector<std::string> lines;
  std::vector<std::size_t> order = paired_groups(lists).of_list();
  line_up meanwhile;
  meanwhile.favourites = lists.is().favourites;
  for (std::size_t position = 0; position < order.size(); ++position) {
    const auto place = static_cast<std::ptrdiff_t>(position);
    const auto found = std::min_element(order.begin() + place, order.end());
    const auto from = found - order.begin();
    if (from != place) {
      lines.push_back(line_of_words({"fav", "move", name_of_group(meanwhile, static_cast<std::size_t>(from)), "--to",
                                     std::to_string(position_of(position))}));
      std::rotate(order.begin() + place, found, found + 1);
      std::rotate(meanwhile.favourites.begin() + place, meanwhile.favourites.begin() + from,
                  meanwhile.favourites.begin() + from + 1);
    }
  }
  return lines;
}

std::vector<std::string> lines_of_members(const compared_lists &lists) {
  std::vector<std::string> lines;
  const std::size_t groups = std::min(count_groups(lists.is()), count_groups(lists.wanted()));
  for (std::size_t group = 0; group < groups; ++group) {
    const std::string name = name_of_group(lists.is(), group);
    const std::vector<std::size_t> is = members_of(lists.is().favourites[group]);
    std::vector<std::size_t> wanted = members_of(lists.wanted().favourites[group]);
    std::ranges::transform(wanted, wanted.begin(), [&](std::size_t each) { return lists.place_of_wanted(each); });
    std::erase(wanted, nowhere);
    add_lines(lines, "remove", name, lists, without(is, wanted));
    add_lines(lines, "add", name, lists, without(wanted, is));
  }
  return lines;
}

}  // namespace chlist
