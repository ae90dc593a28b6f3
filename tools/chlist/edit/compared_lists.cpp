// Names for what a line is about.
#include "chlist/edit/compared_lists.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "chlist/line_up/selection.h"
#include "chlist/position.h"
#include "chlist/text/plain_text.h"

namespace chlist {
namespace {

bool leads_to(const line_up &list, const std::string &name, std::size_t group) {
  try {
    return favourite_group_named(list, name) == group;
  } catch (const std::runtime_error &) {
    return false;
  }
}

}  // namespace

compared_lists::compared_lists(line_up is, const line_up &wanted)
    : is_(std::move(is)), wanted_(wanted), services_(pair_services(is_, wanted)),
      places_(wanted.services.size(), nowhere) {
  for (const auto &[place, wanted_place] : services_.both) {
    places_[wanted_place] = place;
  }
}

std::string compared_lists::name_of(std::size_t place) const { return identity_text(is_.services[place].id()); }

std::vector<wanted_view> views_of(const compared_lists &lists) {
  std::vector<wanted_view> views;
  for (const view_facts &each : all_views()) {
    views.push_back(
        {std::string(each.typed), lists.is().view(each.kind).entries, lists.wanted().view(each.kind).entries});
  }
  const std::size_t groups = std::min(lists.is().favourites.size(), lists.wanted().favourites.size());
  for (std::size_t group = 0; group < groups; ++group) {
    const favourite_group &is = lists.is().favourites[group];
    const favourite_group &wanted = lists.wanted().favourites[group];
    if (is.is_counted && wanted.is_counted) {
      views.push_back({"fav:" + name_of_group(lists.is(), group), is.entries, wanted.entries});
    }
  }
  return views;
}

std::string name_of_group(const line_up &list, std::size_t group) {
  const std::string &name = list.favourites[group].name;
  return in_one_line(name) == name && leads_to(list, name, group) ? name : std::to_string(position_of(group));
}

}  // namespace chlist
