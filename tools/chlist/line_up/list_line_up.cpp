// Walks a channel list once, and resolves the entries of its views in linear time.
#include "chlist/line_up/list_line_up.h"

#include <channel/views.h>

#include <algorithm>
#include <memory>
#include <span>
#include <unordered_map>
#include <utility>

#include "channel/store/service_index.h"
#include "chlist/line_up/list_contents.h"
#include "chlist/text/broadcast_text.h"

namespace chlist {
namespace {

// Names of groups by their ids: the first group of an id has it.
class group_names {
 public:
  explicit group_names(const line_up_groups &groups) {
    for (const line_up_group &group : groups.groups) {
      names_.try_emplace(group.id, group.name);
    }
  }

  [[nodiscard]] std::string of(int id) const {
    const auto found = names_.find(id);
    return found != names_.end() ? std::string(found->second) : std::string();
  }

 private:
  std::unordered_map<int, std::string_view> names_;
};

line_up_groups groups_in(const group_table &table) {
  line_up_groups made{.groups = {}, .count = table.count};
  for (const group_st &group : table.used()) {
    made.groups.push_back({group.id, name_in(group.name)});
  }
  return made;
}

class list_walk {
 public:
  explicit list_walk(channel_list_st &list) : list_(list), index_(list) {}

  line_up made() {
    take_settings();
    take_groups();
    take_hierarchy();
    take_views();
    return std::move(made_);
  }

 private:
  void take_settings() {
    made_.settings = {list_.use_tuner,      list_.ch_type,      list_.bouquet_id, list_.vch_type,
                      list_.use_group_list, list_.sub_group_id, list_.net_index,  list_.service_type};
  }

  void take_groups() {
    const std::vector<group_table> tables = groups_of(list_);
    for (std::size_t kind = 0; kind < group_kinds; ++kind) {
      made_.groups[kind] = groups_in(tables[kind]);
    }
  }

  // A service has the name of the network that the finder finds first, which is not always the one it hangs from.
  void take_hierarchy() {
    const group_names providers(made_.groups_of(group_kind::provider));
    const group_names genres(made_.groups_of(group_kind::genre));
    const group_names countries(made_.groups_of(group_kind::country));
    for (network_ch_st &network : channel::networks_of(list_.network_list)) {
      network_names_.try_emplace(channel::network_key(network.net_index, network.network_id),
                                 name_in(network.network_name));
    }
    for (network_ch_st &network : channel::networks_of(list_.network_list)) {
      take(network);
    }
    for (line_up_service &service : made_.services) {
      service.provider = providers.of(service.fields.provider_id);
      service.genre = genres.of(service.fields.genre_id);
      service.country = countries.of(service.fields.country_id);
    }
  }

  void take(network_ch_st &network) {
    for (tp_ch_st &transponder : channel::transponders_of(network)) {
      for (const channel_st &service : channel::services_of(transponder)) {
        take(service);
      }
      made_.transponders.push_back(
          {made_.networks.size(), transponder.ts_id, transponder.frequency, transponder.polarisation});
    }
    made_.networks.push_back({network.net_index, network.network_id, name_in(network.network_name)});
  }

  void take(const channel_st &service) {
    places_.emplace(&service, made_.services.size());
    line_up_service &taken = made_.services.emplace_back();
    taken.name = name_in(service.name[0].text);
    taken.short_name = name_in(service.name[1].text);
    taken.name_table = table_name(encoded_text(service.name[0].text));
    taken.short_name_table = table_name(encoded_text(service.name[1].text));
    const auto network = network_names_.find(channel::network_key(service.net_index, service.network_id));
    taken.source = network != network_names_.end() ? network->second : std::string();
    taken.fields = service;
    taken.fields.list = {};
    std::ranges::fill(taken.fields.name, name_slot_st{});
    taken.transponder = made_.transponders.size();
  }

  void take_views() {
    const std::vector<list_view> views = chlist::views_of(std::as_const(list_));
    for (std::size_t kind = 0; kind < view_kinds; ++kind) {
      made_.views[kind] = {entries_of(views[kind]), views[kind].count};
    }
    const group_table groups = chlist::groups_of(list_).back();
    made_.favourites_count = groups.count;
    for (std::size_t place = 0; place < MAX_FAV; ++place) {
      const list_view &view = views[view_kinds + place];
      const bool is_counted = place < groups.used().size();
      made_.favourites.push_back(
          {view.name.group_name, entries_of(view), is_counted ? groups.slots[place].id : 0, view.count, is_counted});
    }
  }

  std::vector<line_up_entry> entries_of(const list_view &view) {
    std::vector<line_up_entry> entries;
    for (const virtual_channel_st &entry : view.entries()) {
      const channel::identity id = channel::identity_of(entry);
      const channel_st *service = index_.look_up(id);
      entries.push_back({.service = service != nullptr ? places_.at(service) : nowhere,
                         .number = {entry.major_ch_num, entry.minor_ch_num},
                         .tag = entry.vch_tag,
                         .favourite_key = entry.favorite_id,
                         .id = id});
    }
    return entries;
  }

  channel_list_st &list_;
  channel::service_index index_;
  line_up made_;
  std::unordered_map<const channel_st *, std::size_t> places_;
  std::unordered_map<std::uint32_t, std::string> network_names_;
};

}  // namespace

line_up line_up_of(channel_list_st &list) { return list_walk(list).made(); }

line_up line_up_in_memory() { return line_up_of(*get_channel_list()); }

}  // namespace chlist
