#include "full_list.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

namespace test_support {
namespace {

constexpr int services_per_transponder = 10;

void name_group(group_st &group, int id, const char *kind) {
  group.id = static_cast<std::int16_t>(id);
  group.name_len = static_cast<std::int16_t>(std::snprintf(group.name, sizeof group.name, "%s %03d", kind, id));
}

template <std::size_t Size>
void fill_groups(group_st (&groups)[Size], std::int16_t &count, const char *kind) {
  for (std::size_t i = 0; i < Size; ++i) {
    name_group(groups[i], static_cast<int>(i), kind);
  }
  count = static_cast<std::int16_t>(Size);
}

// The entry at a position of the ALL view goes to the views that begin with the same entries.
void append_to_views(const virtual_channel_st &entry, int position) {
  append_entry(VIEW_ALL, entry);
  append_entry(position < MAX_TV_CHANNEL ? VIEW_TV : VIEW_RADIO, entry);
  append_entry(VIEW_USER, entry);
  if (position < MAX_PROMO_CHANNEL) {
    append_entry(VIEW_PROMOTION, entry);
  }
}

service_data numbered_service(int number, int transponders_per_network) {
  const int transponder = number / services_per_transponder;
  const int place = transponder % transponders_per_network;
  service_data data;
  data.net_index = static_cast<std::uint8_t>(1 + transponder / transponders_per_network);
  data.network_id = data.net_index;
  data.ts_id = static_cast<std::uint16_t>(1000 + transponder);
  data.frequency = 10'700'000 + place / 2 * 20'000;
  data.polarisation = static_cast<std::uint8_t>(transponder % 2);
  data.service_id = static_cast<std::uint16_t>(1 + number);
  data.name = "Service " + std::to_string(number * 7919 % MAX_CHANNEL);
  return data;
}

std::vector<channel_st *> file_services(int services) {
  constexpr int services_per_pair = 2 * services_per_transponder;
  const int transponders_per_network = (services + services_per_pair - 1) / services_per_pair;
  const int services_per_entry = (services + MAX_CHANNEL - 1) / MAX_CHANNEL;
  std::vector<channel_st *> filed;
  for (int i = 0; i < services; ++i) {
    const int position = i / services_per_entry;
    service_data data = numbered_service(i, transponders_per_network);
    data.service_type = position < MAX_TV_CHANNEL ? SERVICE_TYPE_TV : SERVICE_TYPE_RADIO;
    filed.push_back(file_service(data));
    if (i % services_per_entry == 0) {
      append_to_views(entry_of(*filed.back(), static_cast<std::int16_t>(position + 1)), position);
    }
  }
  return filed;
}

void fill_favourite_groups(const std::vector<channel_st *> &services) {
  for (int group = 0; group < MAX_FAV; ++group) {
    for (int i = 0; i < MAX_FAV_NUM; ++i) {
      const auto number = static_cast<std::size_t>(group * MAX_FAV_NUM + i) % services.size();
      virtual_channel_st entry = entry_of(*services[number], static_cast<std::int16_t>(number + 1));
      entry.favorite_id = static_cast<std::uint8_t>(i);
      append_entry(static_cast<std::int8_t>(VIEW_FAVOURITE + group), entry);
    }
  }
}

}  // namespace

void set_name(channel_st &service, const std::string &name) {
  std::memset(service.name[0].text, 0, sizeof service.name[0].text);
  std::memcpy(service.name[0].text, name.data(), std::min(name.size(), sizeof service.name[0].text));
  service.name[0].name_len = static_cast<std::uint16_t>(name.size());
}

channel_st *make_service(const service_data &data) {
  channel_st *service = alloc_channel_info();
  service->net_index = data.net_index;
  service->network_id = data.network_id;
  service->ts_id = data.ts_id;
  service->frequency = data.frequency;
  service->service_id = data.service_id;
  service->polarisation = data.polarisation;
  service->service_type = data.service_type;
  service->source_type = data.source_type;
  service->flag = data.flag;
  set_name(*service, data.name);
  return service;
}

channel_st *file_service(const service_data &data) {
  static const char network_name[64] = "Network";
  channel_st *service = make_service(data);
  add_rch_info(service, network_name);
  return service;
}

virtual_channel_st entry_of(channel_st &service, std::int16_t major, std::int16_t minor, std::int8_t tag) {
  virtual_channel_st entry = {};
  entry.vch_tag = tag;
  entry.major_ch_num = major;
  entry.minor_ch_num = minor;
  entry.net_index = service.net_index;
  entry.frequency = static_cast<std::uint32_t>(service.frequency);
  entry.polarisation = service.polarisation;
  entry.service_id = service.service_id;
  entry.network_id = service.network_id;
  entry.ts_id = service.ts_id;
  entry.rch = &service;
  return entry;
}

virtual_channel_st &append_entry(std::int8_t view_type, const virtual_channel_st &entry) {
  std::int16_t &count = *get_virtual_channel_vnumber(view_type);
  virtual_channel_st &slot = get_virtual_channel_st(view_type)[count];
  slot = entry;
  ++count;
  return slot;
}

void fill_everything() { fill_list(MAX_CHANNEL); }

void fill_list(int services) {
  channel_list_st &list = *get_channel_list();
  const std::vector<channel_st *> filed = file_services(services);
  fill_favourite_groups(filed);
  fill_groups(list.provider, list.provider_num, "Provider");
  fill_groups(list.genre, list.genre_num, "Genre");
  fill_groups(list.country, list.country_num, "Country");
  fill_groups(list.favorite_group, list.favorite_group_num, "Favourites");
}

}  // namespace test_support
