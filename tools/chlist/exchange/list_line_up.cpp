// Walks the ALL view, the store and the favourite groups of the list in memory. What a line-up leaves behind is counted
// in record_losses.cpp.
#include "chlist/exchange/list_line_up.h"

#include <channel/channel.h>

#include <algorithm>
#include <map>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "channel/store/group_table.h"
#include "chlist/exchange/record_losses.h"
#include "chlist/list_contents.h"
#include "chlist/text/broadcast_text.h"

namespace chlist {
namespace {

channel_number number_of(const virtual_channel_st &entry) { return {entry.major_ch_num, entry.minor_ch_num}; }

// Names and ids of groups have places of their own.
channel_st fields_of(const channel_st &service) {
  channel_st fields = service;
  fields.list = {};
  std::ranges::fill(fields.name, name_slot_st{});
  fields.provider_id = 0;
  fields.genre_id = 0;
  fields.country_id = 0;
  return fields;
}

class taker {
 public:
  explicit taker(loss_counts &lost) : list_(*get_channel_list()), lost_(lost) {}

  line_up take() {
    take_listed();
    take_unlisted();
    take_favourites();
    count_views();
    count_groups();
    count_the_rest();
    return std::move(taken_);
  }

 private:
  void take_listed() {
    for (const virtual_channel_st &entry : std::span(list_.vch).first(count_of(list_.vnumber, MAX_CHANNEL))) {
      lost_.add("tags of entries", entry.vch_tag != 0 ? 1 : 0);
      if (entry.rch == nullptr) {
        lost_.add("entries of the ALL view that show no service");
      } else if (positions_.contains(entry.rch)) {
        lost_.add("further entries of a service in the ALL view");
      } else {
        take(*entry.rch).number = number_of(entry);
      }
    }
  }

  void take_unlisted() {
    for (const channel_st *service : services_of(list_)) {
      if (!positions_.contains(service)) {
        take(*service).is_listed = false;
      }
    }
  }

  line_up_service &take(const channel_st &service) {
    positions_[&service] = taken_.services.size();
    line_up_service &added = taken_.services.emplace_back();
    added.name = plain(service.name[0].text);
    added.short_name = plain(service.name[1].text);
    added.provider = group_name(GROUP_PROVIDER, service.provider_id);
    added.genre = group_name(GROUP_GENRE, service.genre_id);
    // A receiver takes 0 for no country.
    added.country = service.country_id != 0 ? group_name(GROUP_COUNTRY, service.country_id) : "";
    added.source = source_of(service);
    count_group_ids(service);
    added.fields = fields_of(service);
    return added;
  }

  // A text as all formats have it; what it was and cannot be again is counted.
  std::string plain(std::span<const char> field) {
    const std::string_view encoded = encoded_text(field);
    decoded_text made = decode_text(encoded);
    lost_.add("character tables of names, which are written in UTF-8", made.text != encoded ? 1 : 0);
    lost_.add("characters of names that their table does not have, or of an unknown table", made.is_whole ? 0 : 1);
    return std::move(made.text);
  }

  std::string group_name(std::int8_t kind, std::int16_t id) {
    const group_st *group = channel::table_of_kind(kind).find(id);
    if (group == nullptr) {
      return "";
    }
    used_groups_.insert(group);
    return plain(group->name);
  }

  // An import numbers groups as they come up: providers from 0, the others from 1, where 0 is none.
  void count_group_ids(const channel_st &service) {
    const struct {
      std::int8_t kind;
      std::int16_t id;
      std::int16_t none;
    } groups[] = {{GROUP_PROVIDER, service.provider_id, -1},
                  {GROUP_GENRE, service.genre_id, 0},
                  {GROUP_COUNTRY, service.country_id, 0}};
    for (const auto &[kind, id, none] : groups) {
      const group_st *group = id != none || kind == GROUP_PROVIDER ? channel::table_of_kind(kind).find(id) : nullptr;
      const std::string name = group != nullptr ? name_in(group->name) : "";
      auto &ids = ids_[kind];
      const auto next = static_cast<std::int16_t>(none + 1 + static_cast<std::int16_t>(ids.size()));
      const std::int16_t expected = name.empty() ? none : ids.try_emplace(name, next).first->second;
      lost_.add("ids of groups of services", id != expected ? 1 : 0);
    }
  }

  std::string source_of(const channel_st &service) {
    const network_ch_st *network = get_network_ch_info(service.net_index, service.network_id);
    return network != nullptr ? plain(network->network_name) : "";
  }

  void take_favourites() {
    const channel::group_table groups = channel::favourite_table();
    for (std::int16_t index = 0; index < MAX_FAV; ++index) {
      const auto entries =
          std::span(list_.favorite_vch[index]).first(count_of(list_.favorite_vnumber[index], MAX_FAV_NUM));
      if (index >= groups.size()) {
        lost_.add("favourites of no group", entries.size());
      } else {
        take_favourites(plain(groups.groups[index].name), entries);
      }
    }
  }

  void take_favourites(std::string name, std::span<const virtual_channel_st> entries) {
    favourite_group group = {std::move(name), {}};
    for (const virtual_channel_st &entry : entries) {
      if (entry.rch != nullptr) {
        group.entries.push_back({positions_.at(entry.rch), number_of(entry)});
      } else {
        lost_.add("favourites that show no service");
      }
    }
    taken_.favourites.push_back(std::move(group));
  }

  // The TV and radio views are built anew from the ALL view where a list is made.
  void count_views() {
    count_own_order({list_.tv_vch, count_of(list_.tv_vnumber, MAX_TV_CHANNEL)}, SERVICE_TYPE_TV,
                    "entries of the TV view, which differs from the ALL view");
    count_own_order({list_.radio_vch, count_of(list_.radio_vnumber, MAX_RADIO_CHANNEL)}, SERVICE_TYPE_RADIO,
                    "entries of the radio view, which differs from the ALL view");
    lost_.add("entries of the USER view", count_of(list_.user_vnumber, MAX_CHANNEL));
    lost_.add("entries of the promotion view", count_of(list_.promo_vnumber, MAX_PROMO_CHANNEL));
  }

  void count_own_order(std::span<const virtual_channel_st> view, std::uint8_t type, std::string_view what) {
    std::vector<std::pair<const channel_st *, channel_number>> given;
    std::vector<std::pair<const channel_st *, channel_number>> built;
    for (const virtual_channel_st &entry : view) {
      given.emplace_back(entry.rch, number_of(entry));
    }
    for (const virtual_channel_st &entry : std::span(list_.vch).first(count_of(list_.vnumber, MAX_CHANNEL))) {
      if (entry.rch != nullptr && entry.rch->service_type == type) {
        built.emplace_back(entry.rch, number_of(entry));
      }
    }
    lost_.add(what, given == built ? 0 : view.size());
  }

  void count_groups() {
    for (const std::int8_t kind : {GROUP_PROVIDER, GROUP_GENRE, GROUP_COUNTRY}) {
      for (const group_st &group : channel::table_of_kind(kind)) {
        lost_.add("groups that no service is in", used_groups_.contains(&group) ? 0 : 1);
      }
    }
  }

  void count_the_rest() {
    const hierarchy_counts counts = count_hierarchy(list_);
    lost_.add("networks without services", counts.networks_without_services);
    lost_.add("transponders without services", counts.transponders_without_services);
    count_record_losses(list_, lost_);
  }

  static std::size_t count_of(std::int16_t count, std::size_t capacity) {
    return count < 0 ? 0 : std::min(static_cast<std::size_t>(count), capacity);
  }

  channel_list_st &list_;
  loss_counts &lost_;
  line_up taken_;
  std::unordered_map<const channel_st *, std::size_t> positions_;
  std::unordered_set<const group_st *> used_groups_;
  std::map<std::int8_t, std::unordered_map<std::string, std::int16_t>> ids_;  // by kind, of the groups that came up
};

}  // namespace

line_up take_line_up(loss_counts &lost) { return taker(lost).take(); }

}  // namespace chlist
