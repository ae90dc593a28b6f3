// Views by name.
#include "chlist/line_up/line_up.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "chlist/position.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

constexpr view_facts table_of_views[] = {
    {view_kind::all, "ALL", "all", "all services", VIEW_ALL, MAX_CHANNEL},
    {view_kind::tv, "TV", "tv", "television", VIEW_TV, MAX_TV_CHANNEL},
    {view_kind::radio, "radio", "radio", "radio", VIEW_RADIO, MAX_RADIO_CHANNEL},
    {view_kind::user, "USER", "user", "the user's own list", VIEW_USER, MAX_CHANNEL},
    {view_kind::promotion, "promotion", "promo", "services that are advertised", VIEW_PROMOTION, MAX_PROMO_CHANNEL}};
static_assert(std::size(table_of_views) == view_kinds);

constexpr group_facts table_of_groups[] = {
    {group_kind::provider, "provider", "providers", GROUP_PROVIDER, MAX_PROVIDER, -1, &channel_st::provider_id,
     &line_up_service::provider},
    {group_kind::genre, "genre", "genres", GROUP_GENRE, MAX_GENRE, 0, &channel_st::genre_id, &line_up_service::genre},
    {group_kind::country, "country", "countries", GROUP_COUNTRY, MAX_COUNTRY, 0, &channel_st::country_id,
     &line_up_service::country}};
static_assert(std::size(table_of_groups) == group_kinds);

}  // namespace

std::span<const group_facts> all_group_kinds() { return table_of_groups; }

const group_facts &facts_of(group_kind kind) { return table_of_groups[static_cast<std::size_t>(kind)]; }

std::span<const view_facts> all_views() { return table_of_views; }

const view_facts &facts_of(view_kind kind) { return *std::ranges::find(table_of_views, kind, &view_facts::kind); }

std::string_view name_of(view_kind kind) { return facts_of(kind).name; }

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
    const view_facts &facts = facts_of(static_cast<view_kind>(kind));
    views.push_back({{facts.name}, list.views[kind].entries, list.views[kind].count, facts.capacity});
  }
  int place = 0;
  for (const favourite_group &group : list.favourites) {
    views.push_back({{favourites_view, place++, group.name}, group.entries, group.count, MAX_FAV_NUM});
  }
  return views;
}

}  // namespace chlist
