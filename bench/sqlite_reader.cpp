// Loading the list from the database into records of their own.
#include <base/list.h>

#include <algorithm>
#include <cstring>

#include "channel/store/hierarchy.h"
#include "full_store.h"
#include "sqlite_list.h"

namespace bench::sqlite {
namespace {

// A zeroed record that is found by its key from now on.
template <class Record>
Record &add(loaded_list::by_key<Record> &records, std::int64_t key) {
  const auto place = static_cast<std::size_t>(key);
  if (records.size() <= place) {
    records.resize(place + 1);
  }
  records[place].reset(static_cast<Record *>(std::calloc(1, sizeof(Record))));
  require(records[place] != nullptr, "calloc");
  return *records[place];
}

template <class Record>
Record &find(const loaded_list::by_key<Record> &records, std::int64_t key) {
  return *records[static_cast<std::size_t>(key)];
}

void take_place(channel_st &service, const tp_ch_st &transponder, const network_ch_st &network) {
  service.net_index = network.net_index;
  service.network_id = network.network_id;
  service.ts_id = transponder.ts_id;
  service.frequency = transponder.frequency;
  service.polarisation = transponder.polarisation;
}

void take_identity(virtual_channel_st &entry, channel_st &service) {
  entry.net_index = service.net_index;
  entry.network_id = service.network_id;
  entry.ts_id = service.ts_id;
  entry.frequency = static_cast<std::uint32_t>(service.frequency);
  entry.polarisation = service.polarisation;
  entry.service_id = service.service_id;
  entry.rch = &service;
}

template <class Record>
std::size_t records_in(const loaded_list::by_key<Record> &records) {
  return static_cast<std::size_t>(
      std::count_if(records.begin(), records.end(), [](const auto &record) { return record != nullptr; }));
}

bool is_same(const channel_st &loaded, const channel_st &stored) {
  return loaded.service_id == stored.service_id && loaded.ts_id == stored.ts_id &&
         loaded.frequency == stored.frequency && loaded.polarisation == stored.polarisation &&
         loaded.network_id == stored.network_id && loaded.provider_id == stored.provider_id &&
         loaded.service_type == stored.service_type && loaded.video_pid == stored.video_pid &&
         std::strcmp(loaded.name[0].text, stored.name[0].text) == 0;
}

}  // namespace

void loaded_list::clear() {
  networks.clear();
  transponders.clear();
  network_of.clear();
  services.clear();
  for (auto &view : views) {
    view.clear();
  }
  for (auto &table : groups) {
    table.clear();
  }
}

reader::reader(const database &source)
    : begin_(source, "BEGIN"), networks_(source, "SELECT id, net_index, network_id, name FROM network ORDER BY id"),
      transponders_(source, "SELECT id, network, ts_id, frequency, polarisation FROM transponder ORDER BY id"),
      services_(source, "SELECT * FROM service ORDER BY id"),
      entries_(source, "SELECT view, tag, favourite, major, minor, service FROM entry ORDER BY view, position"),
      groups_(source, "SELECT kind, id, name FROM groups ORDER BY kind, position"), commit_(source, "COMMIT") {}

void reader::load(loaded_list &list) {
  begin_.run();
  load_networks(list);
  load_transponders(list);
  load_services(list);
  load_entries(list);
  load_groups(list);
  commit_.run();
}

void reader::load_networks(loaded_list &list) {
  channel::clear_link(list.network_list);
  while (networks_.next()) {
    network_ch_st &network = add(list.networks, networks_.number(0));
    networks_.take(1, network.net_index);
    networks_.take(2, network.network_id);
    networks_.take_text(3, network.network_name);
    channel::clear_link(network.tp_list);
    list_add_tail(&network.list, &list.network_list);
  }
}

void reader::load_transponders(loaded_list &list) {
  while (transponders_.next()) {
    tp_ch_st &transponder = add(list.transponders, transponders_.number(0));
    network_ch_st &network = find(list.networks, transponders_.number(1));
    transponders_.take(2, transponder.ts_id);
    transponders_.take(3, transponder.frequency);
    transponders_.take(4, transponder.polarisation);
    channel::clear_link(transponder.rch_list);
    list_add_tail(&transponder.list, &network.tp_list);
    ++network.tp_num;
    list.network_of.resize(list.transponders.size());
    list.network_of.back() = &network;
  }
}

void take_service(const statement &row, channel_st &service) {
  row.take(2, service.service_id);
  row.take_text(3, service.name[0].text);
  row.take_text(4, service.name[1].text);
  row.take(5, service.genre_id);
  row.take(6, service.provider_id);
  row.take(7, service.service_type);
  row.take(8, service.source_type);
  row.take(9, service.pmt_pid);
  row.take(10, service.pcr_pid);
  row.take(11, service.video_tag);
  row.take(12, service.video_pid);
  row.take(13, service.video_ecm_pid);
  row.take(14, service.audio_tag);
  row.take(15, service.audio_pid);
  row.take(16, service.flag);
  row.take(17, service.user_order_key);
}

void reader::load_services(loaded_list &list) {
  while (services_.next()) {
    channel_st &service = add(list.services, services_.number(0));
    const std::int64_t transponder_key = services_.number(1);
    tp_ch_st &transponder = find(list.transponders, transponder_key);
    take_place(service, transponder, *list.network_of[static_cast<std::size_t>(transponder_key)]);
    take_service(services_, service);
    list_add_tail(&service.list, &transponder.rch_list);
    ++transponder.rch_num;
  }
}

void reader::load_entries(loaded_list &list) {
  while (entries_.next()) {
    virtual_channel_st &entry = list.views[static_cast<std::size_t>(entries_.number(0))].emplace_back();
    entries_.take(1, entry.vch_tag);
    entries_.take(2, entry.favorite_id);
    entries_.take(3, entry.major_ch_num);
    entries_.take(4, entry.minor_ch_num);
    take_identity(entry, find(list.services, entries_.number(5)));
  }
}

void reader::load_groups(loaded_list &list) {
  while (groups_.next()) {
    group_st &group = list.groups[static_cast<std::size_t>(groups_.number(0))].emplace_back();
    groups_.take(1, group.id);
    groups_.take_text(2, group.name);
    group.name_len = static_cast<std::int16_t>(std::strlen(group.name));
  }
}

bool is_store(const loaded_list &list, const keyed_list &store) {
  const auto is_loaded = [&list](const keyed_list::keyed_entry &stored) {
    const auto &view = list.views[static_cast<std::size_t>(stored.view)];
    const auto position = static_cast<std::size_t>(stored.position);
    return position < view.size() && view[position].major_ch_num == stored.entry->major_ch_num &&
           is_same(*view[position].rch, *stored.entry->rch);
  };
  const auto is_linked = [&list](const keyed_list::keyed<channel_st> &stored, std::size_t key) {
    return key < list.services.size() && is_same(*list.services[key], *stored.record);
  };
  std::size_t key = 0;
  return records_in(list.networks) == store.networks.size() &&
         records_in(list.transponders) == store.transponders.size() &&
         records_in(list.services) == store.services.size() &&
         std::all_of(store.services.begin(), store.services.end(),
                     [&](const auto &stored) { return is_linked(stored, ++key); }) &&
         std::all_of(store.entries.begin(), store.entries.end(), is_loaded);
}

}  // namespace bench::sqlite
