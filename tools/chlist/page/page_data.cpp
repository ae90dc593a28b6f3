// Records become arrays, whose fields model.js knows by position: a list of thousands of services stays small that way.
#include "chlist/page/page.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <utility>

#include "chlist/fields/service_fields.h"
#include "chlist/fields/service_types.h"
#include "chlist/position.h"
#include "chlist/report.h"

namespace chlist {
namespace {

constexpr int none = -1;

// Where each id of a table stands in it.
std::unordered_map<int, int> places_of_ids(const line_up_groups &groups) {
  std::unordered_map<int, int> places;
  for (std::size_t place = 0; place < groups.groups.size(); ++place) {
    places.try_emplace(groups.groups[place].id, static_cast<int>(place));
  }
  return places;
}

int place_of(const std::unordered_map<int, int> &places, int id) {
  const auto found = places.find(id);
  return found == places.end() ? none : found->second;
}

json names_of(const line_up_groups &groups) {
  json names = json::array();
  for (const line_up_group &group : groups.groups) {
    names.push_back(group.name);
  }
  return names;
}

json fields_of(const channel::identity &id) {
  return json::array({id.net_index, id.network_id, id.ts_id, id.frequency, id.polarisation, id.service_id});
}

json networks_of(const line_up &list) {
  json networks = json::array();
  for (const line_up_network &network : list.networks) {
    networks.push_back(json::array({network.net_index, network.network_id, network.name}));
  }
  return networks;
}

json transponders_of(const line_up &list) {
  json transponders = json::array();
  for (const line_up_transponder &each : list.transponders) {
    transponders.push_back(json::array({each.network, each.ts_id, each.frequency, each.polarisation}));
  }
  return transponders;
}

json services_of(const line_up &list) {
  const auto providers = places_of_ids(list.groups_of(group_kind::provider));
  const auto genres = places_of_ids(list.groups_of(group_kind::genre));
  const auto countries = places_of_ids(list.groups_of(group_kind::country));
  json services = json::array();
  for (const line_up_service &service : list.services) {
    const channel_st &fields = service.fields;
    services.push_back(json::array(
        {service.name, service.short_name, service.transponder, fields_of(service.id()), fields.service_type,
         fields.source_type, fields.flag, place_of(providers, fields.provider_id), place_of(genres, fields.genre_id),
         place_of(countries, fields.country_id), fields.user_order_key,
         json::array({fields.pmt_pid, fields.pcr_pid, fields.video_pid, fields.video_ecm_pid, fields.audio_pid}),
         json::array({fields.video_tag, fields.audio_tag})}));
  }
  return services;
}

// Only types that occur have a name on the page.
json names_of_service_types(const line_up &list) {
  json names = json::object();
  for (const line_up_service &service : list.services) {
    names[std::to_string(service.fields.service_type)] = service_type_name(service.fields.service_type);
  }
  return names;
}

// What fields are called: their titles, and what is said of them.
json words_of_fields() {
  json words = json::object();
  for (const field &each : service_fields()) {
    words[std::string(each.name)] = json::array({each.title, each.about});
  }
  return words;
}

// An entry without a service tells what it looks for.
json fields_of(const line_up_entry &entry) {
  json fields = json::array({entry.number.major, entry.number.minor});
  if (entry.service != nowhere) {
    fields.push_back(entry.service);
  } else {
    fields.push_back(none);
    fields.push_back(fields_of(entry.id));
  }
  return fields;
}

json views_in(const line_up &list) {
  json views = json::array();
  for (const named_view &view : views_of(list)) {
    json entries = json::array();
    for (const line_up_entry &entry : view.entries) {
      entries.push_back(fields_of(entry));
    }
    views.push_back({{"kind", view.name.kind},
                     {"group", view.name.is_favourites() ? json(position_of(view.name.group)) : json()},
                     {"name", view.name.group_name},
                     {"entries", std::move(entries)}});
  }
  return views;
}

json json_of_finding(const finding &found) {
  return {{"severity", name_of(found.level)},
          {"kind", found.kind},
          {"what", found.what},
          {"consequence", found.consequence},
          {"offset", found.offset},
          {"entry", found.place.view ? json(json::array({*found.place.view, found.place.entry})) : json()},
          {"service", found.place.service ? json(*found.place.service) : json()}};
}

}  // namespace

json page_data(const std::string &file_name, const line_up &list, const file_findings &found) {
  return {{"file", {{"name", file_name}, {"version", found.version}, {"size", found.size}}},
          {"fields", words_of_fields()},
          {"networks", networks_of(list)},
          {"transponders", transponders_of(list)},
          {"services", services_of(list)},
          {"service_types", names_of_service_types(list)},
          {"providers", names_of(list.groups_of(group_kind::provider))},
          {"genres", names_of(list.groups_of(group_kind::genre))},
          {"countries", names_of(list.groups_of(group_kind::country))},
          {"views", views_in(list)},
          {"favourite_groups", std::ranges::count_if(list.favourites, &favourite_group::is_counted)},
          {"findings", array_of(found.findings, json_of_finding)}};
}

}  // namespace chlist
