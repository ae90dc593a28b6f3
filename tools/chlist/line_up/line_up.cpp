// Views by name.
#include "chlist/line_up/line_up.h"

#include <fmt/format.h>

#include "chlist/position.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

struct kind_of_view {
  std::string_view name;
  std::size_t capacity;
};

constexpr std::array<kind_of_view, view_kinds> kinds_of_views = {{{"ALL", MAX_CHANNEL},
                                                                  {"TV", MAX_TV_CHANNEL},
                                                                  {"radio", MAX_RADIO_CHANNEL},
                                                                  {"promotion", MAX_PROMO_CHANNEL},
                                                                  {"USER", MAX_CHANNEL}}};

}  // namespace

std::string_view name_of(view_kind kind) { return kinds_of_views[static_cast<std::size_t>(kind)].name; }

std::string label_of(const view_name &view) {
  if (!view.is_favourites()) {
    return std::string(view.kind);
  }
  return fmt::format("{} {}{}", view.kind, position_of(view.group),
                     view.group_name.empty() ? "" : ' ' + shown(view.group_name));
}

std::vector<named_view> views_of(const line_up &list) {
  std::vector<named_view> views;
  for (std::size_t kind = 0; kind < view_kinds; ++kind) {
    const auto &[name, capacity] = kinds_of_views[kind];
    views.push_back({{name}, list.views[kind].entries, list.views[kind].count, capacity});
  }
  int place = 0;
  for (const favourite_group &group : list.favourites) {
    views.push_back({{favourites_view, place++, group.name}, group.entries, group.count, MAX_FAV_NUM});
  }
  return views;
}

}  // namespace chlist
