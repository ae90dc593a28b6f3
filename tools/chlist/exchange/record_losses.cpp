// Everything is compared with what an import makes: zeros, and the values of a new list.
#include "chlist/exchange/record_losses.h"

#include <algorithm>
#include <array>
#include <span>

#include "channel/store/hierarchy.h"
#include "channel/store/service_index.h"
#include "chlist/exchange/service_traits.h"
#include "chlist/list_contents.h"
#include "chlist/text/broadcast_text.h"

namespace chlist {
namespace {

std::size_t settings_of(const channel_list_st &list) {
  constexpr std::int8_t none = -1;
  const std::array are_set = {list.use_tuner != none,
                              list.bouquet_id != 0xFFFF,
                              list.ch_type != 0,
                              list.use_group_list != GROUP_ALL,
                              list.service_type != SERVICE_TYPE_TV,
                              list.net_index != none,
                              list.sub_group_id != none,
                              list.vch_type != VIEW_ALL};
  return static_cast<std::size_t>(std::ranges::count(are_set, true));
}

bool has_reserved(const channel_list_st &list) {
  return list.reserved_9 != 0 || is_used(list.reserved_80102) || is_used(list.reserved_200114) ||
         is_used(list.reserved_296118) || is_used(list.reserved_320122) || is_used(list.reserved_459366) ||
         is_used(list.reserved_459612) || is_used(list.reserved_459624) || is_used(list.reserved_459704) ||
         is_used(list.reserved_459728);
}

bool has_reserved(const network_ch_st &network) {
  return network.reserved_9 != 0 || is_used(network.reserved_78) || is_used(network.reserved_88);
}

bool has_reserved(const tp_ch_st &transponder) {
  return is_used(transponder.reserved_10) || transponder.reserved_17 != 0 || is_used(transponder.reserved_20) ||
         is_used(transponder.reserved_32);
}

bool has_reserved(const name_slot_st &name) { return name.reserved_0 != 0 || name.reserved_97 != 0; }

bool is_of_another_length(const name_slot_st &name) { return name.name_len != encoded_text(name.text).size(); }

bool is_same_transponder(const tp_ch_st &transponder, const channel_st &service) {
  return transponder.ts_id == service.ts_id && transponder.frequency == service.frequency &&
         transponder.polarisation == service.polarisation;
}

bool is_same_service(const virtual_channel_st &entry, const channel_st &service) {
  return entry.net_index == service.net_index && entry.network_id == service.network_id &&
         entry.ts_id == service.ts_id && entry.frequency == service.frequency &&
         entry.polarisation == service.polarisation && entry.service_id == service.service_id;
}

class counter {
 public:
  counter(channel_list_st &list, loss_counts &lost) : list_(list), index_(list), lost_(lost) {}

  void count() {
    lost_.add("settings of the receiver", settings_of(list_));
    lost_.add("reserved bytes of the list", has_reserved(list_) ? 1 : 0);
    count_groups();
    count_entries();
    count_hierarchy();
  }

 private:
  void count_groups() {
    const std::vector<group_table> tables = groups_of(list_);
    for (const group_table &table : tables) {
      for (const group_st &group : table.used()) {
        count_group(group);
      }
    }
    std::int16_t place = 0;
    for (const group_st &group : tables.back().used()) {
      lost_.add("ids of favourite groups", group.id != place++ ? 1 : 0);
    }
  }

  void count_group(const group_st &group) {
    lost_.add("reserved bytes of groups", group.reserved_0 != 0 ? 1 : 0);
    lost_.add("lengths that are not those of their texts",
              group.name_len != static_cast<int>(encoded_text(group.name).size()) ? 1 : 0);
    count_text(group.name);
  }

  // All formats have UTF-8.
  void count_text(std::span<const char> field) {
    const std::string_view encoded = encoded_text(field);
    const decoded_text made = decode_text(encoded);
    lost_.add("character tables of names, which are written in UTF-8", made.text != encoded ? 1 : 0);
    lost_.add("characters of names that their table does not have, or of an unknown table", made.is_whole ? 0 : 1);
  }

  // Entries of the ALL view and of favourites; the others have no place in a line-up at all.
  void count_entries() {
    for (const virtual_channel_st &entry : used(list_.vch, list_.vnumber)) {
      count_entry(entry, 0);
    }
    for (std::size_t group = 0; group < MAX_FAV; ++group) {
      std::uint8_t place = 0;
      for (const virtual_channel_st &entry : used(list_.favorite_vch[group], list_.favorite_vnumber[group])) {
        count_entry(entry, place++);
      }
    }
  }

  template <std::size_t Capacity>
  static std::span<const virtual_channel_st> used(const virtual_channel_st (&entries)[Capacity], std::int16_t count) {
    return std::span(entries).first(count < 0 ? 0 : std::min(static_cast<std::size_t>(count), Capacity));
  }

  void count_entry(const virtual_channel_st &entry, std::uint8_t key) {
    lost_.add("reserved bytes of entries", entry.reserved_7 != 0 || entry.reserved_13 != 0 ? 1 : 0);
    lost_.add("position keys of entries", entry.favorite_id != key ? 1 : 0);
    const channel_st *service = index_.look_up(channel::identity_of(entry));
    lost_.add("identities of entries that differ from their service's",
              service != nullptr && !is_same_service(entry, *service) ? 1 : 0);
  }

  void count_hierarchy() {
    for (network_ch_st &network : channel::networks_of(list_.network_list)) {
      count_text(network.network_name);
      lost_.add("reserved bytes of networks", has_reserved(network) ? 1 : 0);
      for (tp_ch_st &transponder : channel::transponders_of(network)) {
        lost_.add("reserved bytes of transponders", has_reserved(transponder) ? 1 : 0);
        for (const channel_st &service : channel::services_of(transponder)) {
          count_service(network, transponder, service);
        }
      }
    }
  }

  void count_service(const network_ch_st &network, const tp_ch_st &transponder, const channel_st &service) {
    lost_.add("identities of transponders and networks that differ from their service's",
              is_same_transponder(transponder, service) && network.net_index == service.net_index &&
                      network.network_id == service.network_id
                  ? 0
                  : 1);
    for (const name_slot_st &name : service.name) {
      count_text(name.text);
      lost_.add("reserved bytes of names", has_reserved(name) ? 1 : 0);
      lost_.add("lengths that are not those of their texts", is_of_another_length(name) ? 1 : 0);
    }
  }

  channel_list_st &list_;
  channel::service_index index_;
  loss_counts &lost_;
};

}  // namespace

void count_record_losses(channel_list_st &list, loss_counts &lost) { counter(list, lost).count(); }

}  // namespace chlist
