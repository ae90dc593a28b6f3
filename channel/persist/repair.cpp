// Rebuilds the list from a channel file of an earlier version, field by field: what is not named here keeps its zero or
// reset value.
#include "channel/persist/repair.h"

#include <algorithm>
#include <channel/files.h>
#include <channel/store.h>
#include <cstdlib>
#include <cstring>
#include <new>
#include <span>
#include <utility>

#include "channel/log.h"
#include "channel/persist/counts.h"
#include "channel/store/channel_list.h"
#include "channel/store/dumps.h"
#include "channel/store/filing.h"
#include "channel/store/hierarchy.h"
#include "channel/store/service_index.h"

namespace channel::persist {
namespace {

constexpr char repairing[] = "repair_channel";

// Network indexes above this one carry tagged entries.
constexpr std::uint8_t last_untagged_net_index = 0xEF;

void convert_groups(std::span<group_st> groups, std::int16_t count, std::span<const group_st> old_groups) {
  constexpr std::size_t carried_name = sizeof(group_st::name) - 1;
  for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
    groups[i].reserved_0 = old_groups[i].reserved_0 & 0xFF;
    groups[i].id = old_groups[i].id;
    groups[i].name_len = old_groups[i].name_len;
    std::copy_n(old_groups[i].name, carried_name, groups[i].name);
  }
}

void convert_entries(std::span<virtual_channel_st> entries, std::int16_t count,
                     std::span<const virtual_channel_st> old_entries) {
  for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
    const virtual_channel_st &old = old_entries[i];
    virtual_channel_st &entry = entries[i];
    entry.vch_tag = old.net_index > last_untagged_net_index ? 1 : 0;
    entry.major_ch_num = old.major_ch_num;
    entry.minor_ch_num = old.minor_ch_num;
    entry.net_index = old.net_index;
    entry.frequency = old.frequency;
    entry.polarisation = old.polarisation;
    entry.service_id = old.service_id;
    entry.network_id = old.network_id;
    entry.ts_id = old.ts_id;
    entry.rch = nullptr;
  }
}

void convert_counts(const channel_list_st &old) {
  channel_list.provider_num = old.provider_num;
  channel_list.genre_num = old.genre_num;
  channel_list.country_num = old.country_num;
  channel_list.favorite_group_num = old.favorite_group_num;
  channel_list.vnumber = old.vnumber;
  channel_list.tv_vnumber = old.tv_vnumber;
  channel_list.radio_vnumber = old.radio_vnumber;
  std::ranges::copy(old.favorite_vnumber, channel_list.favorite_vnumber);
  channel_list.user_vnumber = old.user_vnumber;
  channel_list.promo_vnumber = old.promo_vnumber;
  bring_counts_into_arrays(repairing);
}

// ch_type, bouquet_id and version keep their defaults.
void convert_header(const channel_list_st &old, int version) {
  channel_list.use_tuner = version == 9 ? old.use_tuner : std::int8_t{-1};
  channel_list.use_group_list = old.use_group_list;
  channel_list.service_type = old.service_type;
  channel_list.net_index = old.net_index;
  channel_list.sub_group_id = old.sub_group_id;
  channel_list.vch_type = old.vch_type;
  convert_counts(old);
  convert_groups(channel_list.provider, channel_list.provider_num, old.provider);
  convert_groups(channel_list.genre, channel_list.genre_num, old.genre);
  convert_groups(channel_list.country, channel_list.country_num, old.country);
  convert_groups(channel_list.favorite_group, channel_list.favorite_group_num, old.favorite_group);
}

void convert_views(const channel_list_st &old) {
  convert_entries(channel_list.vch, channel_list.vnumber, old.vch);
  convert_entries(channel_list.tv_vch, channel_list.tv_vnumber, old.tv_vch);
  convert_entries(channel_list.radio_vch, channel_list.radio_vnumber, old.radio_vch);
  for (std::size_t group = 0; group < MAX_FAV; ++group) {
    convert_entries(channel_list.favorite_vch[group], channel_list.favorite_vnumber[group], old.favorite_vch[group]);
  }
  convert_entries(channel_list.user_vch, channel_list.user_vnumber, old.user_vch);
  convert_entries(channel_list.promo_vch, channel_list.promo_vnumber, old.promo_vch);
}

void copy_tail(channel_st &service, const channel_st &old) {
  service.reserved_id = old.reserved_id;
  service.flag = old.flag;
  service.reserved_289[0] = old.reserved_289[0];
}

void copy_tail(channel_st &service, const v8_channel_st &old) {
  service.reserved_id = old.reserved_id;
  service.flag = old.flag;
  service.reserved_289[0] = old.reserved_463;
}

template <class OldService>
void convert_service(channel_st &service, const OldService &old) {
  std::ranges::copy(old.name, service.name);
  std::ranges::copy(old.reserved_208, service.reserved_208);
  service.country_id = old.country_id;
  service.genre_id = old.genre_id;
  // Compatibility: the provider comes from the genre, where receivers of the time filed it.
  service.provider_id = old.genre_id;
  service.net_index = old.net_index;
  service.frequency = old.frequency;
  service.service_type = old.service_type;
  service.source_type = old.source_type;
  service.ts_id = old.ts_id;
  std::ranges::copy(old.reserved_236, service.reserved_236);
  service.network_id = old.network_id;
  service.service_id = old.service_id;
  service.polarisation = old.polarisation;
  service.pmt_pid = old.pmt_pid;
  service.pcr_pid = old.pcr_pid;
  service.video_tag = old.video_tag;
  service.video_pid = old.video_pid;
  service.video_ecm_pid = old.video_ecm_pid;
  service.audio_tag = old.audio_tag;
  service.audio_pid = old.audio_pid;
  service.reserved_pid = old.reserved_pid;
  constexpr std::size_t carried_behind_reserved_pid = 4;
  std::copy_n(old.reserved_262, carried_behind_reserved_pid, service.reserved_262);
  copy_tail(service, old);
}

// A service becomes one of today in its own memory, so that the two lists never stand beside each other there. What
// earlier versions put behind a record stays with it until the list is loaded again.
template <class OldService>
channel_st &convert_in_place(OldService &old) {
  static_assert(sizeof(OldService) >= sizeof(channel_st) && alignof(OldService) >= alignof(channel_st));
  list_del_init(&old.list);
  channel_st converted = unset_service;
  convert_service(converted, old);
  auto *service = new (&old) channel_st(converted);
  clear_link(service->list);
  return *service;
}

// A second service of the same identity is not filed.
template <class Format>
void file_converted(service_index &index, channel_st &record, const network_ch_st &old_network) {
  channel_st &service = convert_in_place(reinterpret_cast<typename Format::service &>(record));
  if (file_service(index, service, old_network.network_name) != &service) {
    std::free(&service);
  }
}

template <class Format>
void convert_hierarchy(channel_list_st &old) {
  service_index index(count_records(old.network_list).services);
  for (network_ch_st &network : networks_of(old.network_list)) {
    print_network(network);
    for (const filed_service &filed : all_services_of(network)) {
      file_converted<Format>(index, filed.service, network);
    }
  }
}

void print_old_header(const channel_list_st &old) {
  std::int32_t first_word = 0;
  std::memcpy(&first_word, &old, sizeof first_word);
  print_list_header(old, first_word);
}

template <class Format>
void take_over(detached_list<Format> list, int version) {
  channel_list_st &old = base_of(*list);
  convert_header(old, version);
  convert_views(old);
  print_old_header(old);
  convert_hierarchy<Format>(old);
}

template <class Format>
int convert(typename Format::list *read, int version) {
  detached_list<Format> list(read);
  if (list == nullptr) {
    return -1;
  }
  convert_list(std::move(list), version);
  return 0;
}

}  // namespace

void convert_list(detached_list<current_format> old, int version) {
  take_over<current_format>(std::move(old), version);
}
void convert_list(detached_list<version_8_format> old, int version) {
  take_over<version_8_format>(std::move(old), version);
}

}  // namespace channel::persist

extern "C" {

// Compatibility: the list is emptied before anything is tested, and the current version is refused like an unknown one.
int repair_channel(int version, const char *path) {
  LOG_TRACE(2, "(%s)\n", path != nullptr ? path : "(null)");
  init_channel_list();
  switch (version) {
    case 9:
      return channel::persist::convert<channel::persist::current_format>(v9_load_channel(path), version);
    case 8:
      return channel::persist::convert<channel::persist::version_8_format>(v8_load_channel(path), version);
    case 7:
      return channel::persist::convert<channel::persist::version_8_format>(v7_load_channel(path), version);
    default:
      return -1;
  }
}
}
