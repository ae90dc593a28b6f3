// Copies what is compared out of the list in memory.
#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "channel/store/hierarchy.h"
#include "chlist/see/compared_columns.h"
#include "chlist/see/difference.h"
#include "chlist/see/settings.h"
#include "chlist/service/names.h"
#include "chlist/service/selection.h"
#include "chlist/text/broadcast_text.h"

namespace chlist {
namespace {

using places = std::unordered_map<const channel_st *, std::size_t>;

void add_service(list_snapshot &taken, const channel_st &service) {
  list_snapshot::service copy;
  copy.known = {name_in(service.name[0].text), channel::identity_of(service)};
  for (const column *each : compared_columns()) {
    copy.values.push_back(each->value({nullptr, &service, 0}));
  }
  taken.services.push_back(std::move(copy));
}

channel::identity identity_of(const network_ch_st &network) {
  channel::identity id = {};
  id.net_index = network.net_index;
  id.network_id = network.network_id;
  return id;
}

channel::identity identity_of(const network_ch_st &network, const tp_ch_st &transponder) {
  channel::identity id = identity_of(network);
  id.ts_id = transponder.ts_id;
  id.frequency = transponder.frequency;
  id.polarisation = transponder.polarisation;
  return id;
}

places take_hierarchy(list_snapshot &taken, channel_list_st &list) {
  places places_of_services;
  for (network_ch_st &network : channel::networks_of(list.network_list)) {
    taken.networks.push_back({identity_of(network), name_in(network.network_name)});
    for (tp_ch_st &transponder : channel::transponders_of(network)) {
      taken.transponders.push_back({identity_of(network, transponder)});
      for (const channel_st &service : channel::services_of(transponder)) {
        places_of_services[&service] = taken.services.size();
        add_service(taken, service);
      }
    }
  }
  return places_of_services;
}

void take_view(list_snapshot &taken, const list_view &view, const places &places_of_services) {
  list_snapshot::view copy;
  copy.name = view.name;
  for (const virtual_channel_st &entry : view.entries()) {
    const auto at = places_of_services.find(entry.rch);
    if (at == places_of_services.end()) {
      copy.row.push_back(taken.services.size() + copy.unresolved.size());
      copy.unresolved.push_back(
          fmt::format("{} {}", number_text_of(entry), identity_text(channel::identity_of(entry))));
      continue;
    }
    copy.row.push_back(at->second);
    taken.services[at->second].entries.push_back(
        {taken.views.size(), entry.major_ch_num, entry.minor_ch_num, entry.vch_tag, entry.favorite_id});
  }
  taken.views.push_back(std::move(copy));
}

void take_groups(list_snapshot &taken, std::string_view table, std::span<const group_st> groups, int count) {
  const auto in_use = groups.first(static_cast<std::size_t>(std::clamp(count, 0, static_cast<int>(groups.size()))));
  for (const group_st &group : in_use) {
    taken.groups.push_back({table, group.id, group.id, name_in(group.name)});
  }
}

// A favourite group is known by its place: so are its entries.
void take_favourite_groups(list_snapshot &taken, const channel_list_st &list) {
  const std::size_t begin = taken.groups.size();
  take_groups(taken, "favourite group", list.favorite_group, list.favorite_group_num);
  for (std::size_t i = begin; i < taken.groups.size(); ++i) {
    taken.groups[i].number = static_cast<int>(i - begin);
  }
}

}  // namespace

list_snapshot take_snapshot() {
  channel_list_st &list = *get_channel_list();
  list_snapshot taken;
  const places places_of_services = take_hierarchy(taken, list);
  for (const list_view &view : views_of(list)) {
    take_view(taken, view, places_of_services);
  }
  take_groups(taken, "provider", list.provider, list.provider_num);
  take_groups(taken, "genre", list.genre, list.genre_num);
  take_groups(taken, "country", list.country, list.country_num);
  take_favourite_groups(taken, list);
  for (const setting &each : all_settings()) {
    taken.settings.push_back(each.value(list));
  }
  return taken;
}

}  // namespace chlist
