// The records of a list as JSON: every field under its name, arrays as long as their counts say.
#include <algorithm>
#include <utility>

#include "channel/store/hierarchy.h"
#include "chlist/exchange/json/list_json_records.h"

namespace chlist {
namespace {

// As many records as are counted; bytes behind them are no records.
json json_of_array(const_record_bytes array, std::int64_t count, std::size_t stride,
                   std::span<const json_field> fields) {
  const auto capacity = static_cast<std::int64_t>(array.size() / stride);
  const auto used = static_cast<std::size_t>(std::clamp<std::int64_t>(count, 0, capacity));
  json records = json::array();
  for (std::size_t at = 0; at < used; ++at) {
    records.push_back(json_of_record(array.subspan(at * stride, stride), fields));
  }
  return records;
}

void put_array(json &object, const_record_bytes list, const json_array &array) {
  const std::int64_t count = number_in(list, count_field(array.count_offset));
  json records =
      json_of_array(list.subspan(array.offset, array.capacity * array.stride), count, array.stride, array.fields());
  const bool is_counted = count == static_cast<std::int64_t>(records.size());
  object.put(std::string(array.name), std::move(records));
  if (!is_counted) {
    object.put(std::string(array.count_name), count);
  }
}

void put_favourites(json &object, const channel_list_st &list) {
  json groups = json::array();
  json counts = json::array();
  bool are_counted = true;
  for (std::size_t group = 0; group < MAX_FAV; ++group) {
    const std::int16_t count = list.favorite_vnumber[group];
    groups.push_back(json_of_array(std::as_bytes(std::span(list.favorite_vch[group])), count,
                                   sizeof(virtual_channel_st), fields_of_entry()));
    are_counted = are_counted && count == static_cast<std::int64_t>(groups[groups.size() - 1].size());
    counts.push_back(count);
  }
  while (!groups.empty() && groups[groups.size() - 1].empty()) {
    groups.pop_back();
  }
  object.put(std::string(favourites_key), std::move(groups));
  if (!are_counted) {
    object.put(std::string(favourite_counts_key), std::move(counts));
  }
}

json json_of_network(network_ch_st &network) {
  json transponders = json::array();
  for (tp_ch_st &transponder : channel::transponders_of(network)) {
    json services = json::array();
    for (const channel_st &service : channel::services_of(transponder)) {
      services.push_back(json_of_record(bytes_of(service), fields_of_service()));
    }
    json object = json_of_record(bytes_of(std::as_const(transponder)), fields_of_transponder());
    object.put(std::string(services_key), std::move(services));
    transponders.push_back(std::move(object));
  }
  json object = json_of_record(bytes_of(std::as_const(network)), fields_of_network());
  object.put(std::string(transponders_key), std::move(transponders));
  return object;
}

}  // namespace

json json_of_list(channel_list_st &list) {
  const const_record_bytes bytes = bytes_of(std::as_const(list));
  json object = {{std::string(mark_key), mark}};
  object.put(json_of_record(bytes, fields_of_list()));
  for (const json_array &groups : groups_of_list()) {
    put_array(object, bytes, groups);
  }
  for (const json_array &view : views_of_list()) {
    put_array(object, bytes, view);
  }
  put_favourites(object, list);
  json networks = json::array();
  for (network_ch_st &network : channel::networks_of(list.network_list)) {
    networks.push_back(json_of_network(network));
  }
  object.put(std::string(networks_key), std::move(networks));
  return object;
}

}  // namespace chlist
