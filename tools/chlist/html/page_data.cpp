// Records become arrays, whose fields page.js knows by position: a list of thousands of services stays small that way.
#include "chlist/html/page_data.h"

#include <channel/views.h>

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "channel/store/hierarchy.h"
#include "chlist/list_contents.h"
#include "chlist/service/names.h"
#include "chlist/service/service_types.h"
#include "chlist/text/broadcast_text.h"

namespace chlist {
namespace {

constexpr int none = -1;

// A table of groups: the names, and where each id stands among them.
class known_groups {
 public:
  known_groups(std::span<const group_st> table, int count) {
    const std::size_t used = std::min(table.size(), static_cast<std::size_t>(std::max(count, 0)));
    for (const group_st &group : table.first(used)) {
      places_.try_emplace(group.id, static_cast<int>(names_.size()));
      names_.push_back(name_in(group.name));
    }
  }

  [[nodiscard]] int place_of(int id) const {
    const auto found = places_.find(id);
    return found == places_.end() ? none : found->second;
  }
  [[nodiscard]] const json &names() const { return names_; }

 private:
  json names_ = json::array();
  std::unordered_map<int, int> places_;
};

json identity_fields(const channel::identity &id) {
  return json::array({id.net_index, id.network_id, id.ts_id, id.frequency, id.polarisation, id.service_id});
}

class page_records {
 public:
  explicit page_records(channel_list_st &list)
      : providers(list.provider, list.provider_num), genres(list.genre, list.genre_num),
        countries(list.country, list.country_num) {
    for (network_ch_st &network : channel::networks_of(list.network_list)) {
      add(network);
    }
    for (const list_view &view : views_of(list)) {
      add(view);
    }
  }

  known_groups providers;
  known_groups genres;
  known_groups countries;
  json networks = json::array();
  json transponders = json::array();
  json services = json::array();
  json service_types = json::object();  // the names of those that occur
  json views = json::array();

 private:
  void add(network_ch_st &network) {
    for (tp_ch_st &transponder : channel::transponders_of(network)) {
      for (const channel_st &service : channel::services_of(transponder)) {
        add(service);
      }
      transponders.push_back(
          json::array({networks.size(), transponder.ts_id, transponder.frequency, transponder.polarisation}));
    }
    networks.push_back(json::array({network.net_index, network.network_id, name_in(network.network_name)}));
  }

  void add(const channel_st &service) {
    places_[&service] = services.size();
    service_types[std::to_string(service.service_type)] = service_type_name(service.service_type);
    services.push_back(json::array(
        {name_in(service.name[0].text), name_in(service.name[1].text), transponders.size(),
         identity_fields(channel::identity_of(service)), service.service_type, service.source_type, service.flag,
         providers.place_of(service.provider_id), genres.place_of(service.genre_id),
         countries.place_of(service.country_id), service.user_order_key,
         json::array({service.pmt_pid, service.pcr_pid, service.video_pid, service.video_ecm_pid, service.audio_pid}),
         json::array({service.video_tag, service.audio_tag})}));
  }

  void add(const list_view &view) {
    json entries = json::array();
    for (const virtual_channel_st &entry : view.entries()) {
      entries.push_back(fields_of(entry));
    }
    views.push_back({{"kind", view.name.kind},
                     {"group", view.name.group},
                     {"name", view.name.group_name},
                     {"entries", std::move(entries)}});
  }

  // An entry without a service tells what it looks for.
  [[nodiscard]] json fields_of(const virtual_channel_st &entry) const {
    json fields = json::array({entry.major_ch_num, entry.minor_ch_num});
    if (const auto found = places_.find(entry.rch); found != places_.end()) {
      fields.push_back(found->second);
    } else {
      fields.push_back(none);
      fields.push_back(identity_fields(channel::identity_of(entry)));
    }
    return fields;
  }

  std::unordered_map<const channel_st *, std::size_t> places_;
};

json json_of_finding(const finding &found) {
  return {{"severity", name_of(found.level)},
          {"kind", found.kind},
          {"what", found.what},
          {"consequence", found.consequence},
          {"offset", found.offset}};
}

}  // namespace

json page_data(const std::string &file_name, const file_findings &found) {
  page_records records(*get_channel_list());
  return {{"file", {{"name", file_name}, {"version", found.version}, {"size", found.size}}},
          {"networks", std::move(records.networks)},
          {"transponders", std::move(records.transponders)},
          {"services", std::move(records.services)},
          {"service_types", std::move(records.service_types)},
          {"providers", records.providers.names()},
          {"genres", records.genres.names()},
          {"countries", records.countries.names()},
          {"views", std::move(records.views)},
          {"findings", array_of(found.findings, json_of_finding)}};
}

}  // namespace chlist
