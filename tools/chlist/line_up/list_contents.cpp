// Walks over the records of channel lists, by the library's own ranges and finders.
#include "chlist/line_up/list_contents.h"

#include <channel/store.h>
#include <channel/views.h>

#include <fmt/format.h>

#include <unordered_set>

#include "channel/store/finders.h"
#include "channel/store/group_table.h"
#include "channel/store/hierarchy.h"
#include "chlist/line_up/line_up.h"
#include "chlist/text/broadcast_text.h"

namespace chlist {
namespace {

template <class Record>
std::size_t length(const channel::records<Record> &range) {
  std::size_t records = 0;
  for (const Record &record : range) {
    static_cast<void>(record);
    ++records;
  }
  return records;
}

void count_transponder(hierarchy_counts &counts, tp_ch_st &transponder) {
  const std::size_t services = length(channel::services_of(transponder));
  ++counts.transponders;
  counts.services += services;
  counts.transponders_without_services += services == 0 ? 1 : 0;
}

}  // namespace

std::vector<list_view> views_of(const channel_list_st &list) {
  const auto shown_as = [](view_kind kind, std::span<const virtual_channel_st> slots, const std::int16_t &count) {
    const view_facts &facts = facts_of(kind);
    return list_view{{facts.name}, facts.code, slots, &count, count};
  };
  std::vector<list_view> views = {shown_as(view_kind::all, list.vch, list.vnumber),
                                  shown_as(view_kind::tv, list.tv_vch, list.tv_vnumber),
                                  shown_as(view_kind::radio, list.radio_vch, list.radio_vnumber),
                                  shown_as(view_kind::promotion, list.promo_vch, list.promo_vnumber),
                                  shown_as(view_kind::user, list.user_vch, list.user_vnumber)};
  for (int group = 0; group < MAX_FAV; ++group) {
    const std::string name =
        group < channel::counted_in_low_byte(list.favorite_group_num) ? name_in(list.favorite_group[group].name) : "";
    views.push_back({{favourites_view, group, name},
                     static_cast<std::int8_t>(VIEW_FAVOURITE + group),
                     list.favorite_vch[group],
                     &list.favorite_vnumber[group],
                     list.favorite_vnumber[group]});
  }
  return views;
}

channel::view view_with(const list_view &named) { return channel::find_view(named.code); }

std::vector<group_table> groups_of(const channel_list_st &list) {
  const auto table_of = [](group_kind kind, std::span<const group_st> slots, const std::int16_t &count) {
    const group_facts &facts = facts_of(kind);
    return group_table{facts.many, facts.one, slots, &count, count};
  };
  return {table_of(group_kind::provider, list.provider, list.provider_num),
          table_of(group_kind::genre, list.genre, list.genre_num),
          table_of(group_kind::country, list.country, list.country_num),
          {"favourite groups", "favourite group", list.favorite_group, &list.favorite_group_num,
           channel::counted_in_low_byte(list.favorite_group_num)}};
}

std::vector<std::string> cut_counts(const channel_list_st &list) {
  std::vector<std::string> cut;
  for (const list_view &view : views_of(list)) {
    if (view.count != static_cast<int>(view.size())) {
      cut.push_back(
          fmt::format("the {} view counts {} entries: saved as {}", label_of(view.name), view.count, view.size()));
    }
  }
  for (const group_table &table : groups_of(list)) {
    if (*table.field != static_cast<int>(table.used().size())) {
      cut.push_back(
          fmt::format("the table of {} counts {}: saved as {}", table.name, *table.field, table.used().size()));
    }
  }
  return cut;
}

hierarchy_counts count_hierarchy(channel_list_st &list) {
  hierarchy_counts counts;
  for (network_ch_st &network : channel::networks_of(list.network_list)) {
    ++counts.networks;
    const std::size_t services_before = counts.services;
    for (tp_ch_st &transponder : channel::transponders_of(network)) {
      count_transponder(counts, transponder);
    }
    counts.networks_without_services += counts.services == services_before ? 1 : 0;
  }
  return counts;
}

std::vector<const channel_st *> services_of(channel_list_st &list) {
  std::vector<const channel_st *> services;
  for (const channel::filed_service &filed : channel::all_services_of(list.network_list)) {
    services.push_back(&filed.service);
  }
  return services;
}

known_service known_as(const channel_st &service) {
  return {name_in(service.name[0].text), channel::identity_of(service)};
}

virtual_channel_st entry_of(channel_st &service, int major, int minor) {
  const channel::identity id = channel::identity_of(service);
  virtual_channel_st entry = {};
  entry.major_ch_num = static_cast<std::int16_t>(major);
  entry.minor_ch_num = static_cast<std::int16_t>(minor);
  entry.net_index = id.net_index;
  entry.frequency = id.frequency;
  entry.polarisation = id.polarisation;
  entry.service_id = id.service_id;
  entry.network_id = id.network_id;
  entry.ts_id = id.ts_id;
  entry.rch = &service;
  return entry;
}

std::vector<placed_entry> unresolved_entries() {
  std::vector<placed_entry> unresolved;
  for (const list_view &view : views_of(*get_channel_list())) {
    const auto entries = view.entries();
    for (std::size_t i = 0; i < entries.size(); ++i) {
      // Entries that no view counts are not linked.
      if (entries[i].rch == nullptr && channel::resolve(entries[i]) == nullptr) {
        unresolved.push_back({view.name, i, entries[i].major_ch_num, channel::identity_of(entries[i])});
      }
    }
  }
  return unresolved;
}

std::vector<match> match_services(channel_list_st &other) {
  std::vector<match> matches;
  std::unordered_set<const channel_st *> seen;
  for (const channel_st *service : services_of(other)) {
    const channel::identity id = channel::identity_of(*service);
    const channel_st *filed =
        get_channel_st(id.net_index, id.network_id, id.ts_id, id.frequency, id.service_id, id.polarisation);
    matches.push_back({service, filed, filed == nullptr || !seen.insert(filed).second});
  }
  return matches;
}

std::vector<known_service> dropped_among(const std::vector<match> &matches) {
  std::vector<known_service> dropped;
  for (const match &each : matches) {
    if (each.is_dropped) {
      dropped.push_back(known_as(*each.other));
    }
  }
  return dropped;
}

}  // namespace chlist
