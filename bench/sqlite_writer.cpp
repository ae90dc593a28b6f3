// Saving the list to the database.
#include <channel/channel.h>

#include <map>
#include <span>

#include "channel/store/hierarchy.h"
#include "full_store.h"
#include "sqlite_list.h"

namespace bench::sqlite {
namespace {

void add_entries(keyed_list &list, int view, const std::map<const channel_st *, std::int64_t> &keys) {
  const auto code = static_cast<std::int8_t>(view);
  const virtual_channel_st *entries = get_virtual_channel_st(code);
  for (int position = 0; position < *get_virtual_channel_vnumber(code); ++position) {
    list.entries.push_back({view, position, entries + position, keys.at(entries[position].rch)});
  }
}

template <class Array>
std::int64_t key_of_last(const Array &array) {
  return static_cast<std::int64_t>(array.size());
}

}  // namespace

keyed_list list_in_store() {
  keyed_list list;
  std::map<const channel_st *, std::int64_t> keys;
  for (network_ch_st &network : channel::networks_of(get_channel_list()->network_list)) {
    list.networks.push_back(&network);
    for (tp_ch_st &transponder : channel::transponders_of(network)) {
      list.transponders.push_back({&transponder, key_of_last(list.networks)});
      for (const channel_st &service : channel::services_of(transponder)) {
        list.services.push_back({&service, key_of_last(list.transponders)});
        keys[&service] = key_of_last(list.services);
      }
    }
  }
  for (int view = VIEW_ALL; view <= VIEW_FAVOURITE_LAST; ++view) {
    if (view != VIEW_WORK && (view <= VIEW_PROMOTION || view >= VIEW_FAVOURITE)) {
      add_entries(list, view, keys);
    }
  }
  return list;
}

writer::writer(const database &target)
    : begin_(target, "BEGIN"), clear_{{target, "DELETE FROM network"},
                                      {target, "DELETE FROM transponder"},
                                      {target, "DELETE FROM service"},
                                      {target, "DELETE FROM entry"},
                                      {target, "DELETE FROM groups"}},
      network_(target, "INSERT INTO network VALUES(?,?,?,?)"),
      transponder_(target, "INSERT INTO transponder VALUES(?,?,?,?,?)"),
      service_(target, "INSERT INTO service VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)"),
      entry_(target, "INSERT INTO entry VALUES(?,?,?,?,?,?,?)"), group_(target, "INSERT INTO groups VALUES(?,?,?,?)"),
      commit_(target, "COMMIT") {}

void writer::save(const keyed_list &list) {
  begin_.run();
  for (statement &clear : clear_) {
    clear.run();
  }
  save_hierarchy(list);
  for (const keyed_list::keyed_entry &each : list.entries) {
    entry_.run(each.view, each.position, each.entry->vch_tag, each.entry->favorite_id, each.entry->major_ch_num,
               each.entry->minor_ch_num, each.service);
  }
  save_groups();
  commit_.run();
}

void insert_service(statement &insert, std::int64_t key, std::int64_t transponder, const channel_st &service) {
  insert.run(key, transponder, service.service_id, service.name[0].text, service.name[1].text, service.genre_id,
             service.provider_id, service.service_type, service.source_type, service.pmt_pid, service.pcr_pid,
             service.video_tag, service.video_pid, service.video_ecm_pid, service.audio_tag, service.audio_pid,
             service.flag, service.user_order_key);
}

void writer::save_hierarchy(const keyed_list &list) {
  std::int64_t key = 0;
  for (const network_ch_st *network : list.networks) {
    network_.run(++key, network->net_index, network->network_id, network->network_name);
  }
  key = 0;
  for (const auto &[transponder, network] : list.transponders) {
    transponder_.run(++key, network, transponder->ts_id, transponder->frequency, transponder->polarisation);
  }
  key = 0;
  for (const auto &[service, transponder] : list.services) {
    insert_service(service_, ++key, transponder, *service);
  }
}

void writer::save_groups() {
  const channel_list_st &list = *get_channel_list();
  const std::span<const group_st> tables[] = {{list.provider, static_cast<std::size_t>(list.provider_num)},
                                              {list.genre, static_cast<std::size_t>(list.genre_num)},
                                              {list.country, static_cast<std::size_t>(list.country_num)},
                                              {list.favorite_group, static_cast<std::size_t>(list.favorite_group_num)}};
  for (int kind = 0; const auto table : tables) {
    for (int position = 0; const group_st &group : table) {
      group_.run(kind, position++, group.id, group.name);
    }
    ++kind;
  }
}

}  // namespace bench::sqlite
