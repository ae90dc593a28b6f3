// Places are kept: whatever is found again is at its old one.
#include "chlist/scan/found_services.h"

#include <algorithm>
#include <utility>

#include "channel/identity.h"

namespace chlist {
namespace {

// One of which the frequency is not known may be any of its ids.
bool is_same_place(const delivery_facts &a, const delivery_facts &b) {
  return a.frequency_khz == 0 || b.frequency_khz == 0 ||
         (channel::same_frequency(a.frequency_khz, b.frequency_khz) && a.is_vertical == b.is_vertical);
}

}  // namespace

std::size_t found_services::stream(const scanned_stream &found) {
  const std::tuple key(found.source, found.network_id, found.ts_id);
  const auto [first, last] = stream_places_.equal_range(key);
  for (auto known = first; known != last; ++known) {
    if (delivery_facts &where = streams_[known->second].where; is_same_place(where, found.where)) {
      where = where.frequency_khz == 0 ? found.where : where;
      return known->second;
    }
  }
  stream_places_.emplace(key, streams_.size());
  streams_.push_back(found);
  return streams_.size() - 1;
}

std::optional<std::size_t> found_services::find_stream(const std::string &source, std::uint16_t network_id,
                                                       std::uint16_t ts_id) const {
  const auto known = stream_places_.lower_bound({source, network_id, ts_id});
  return known != stream_places_.end() && known->first == std::tuple(source, network_id, ts_id)
             ? std::optional(known->second)
             : std::nullopt;
}

std::optional<std::size_t> found_services::find(std::size_t stream, std::uint16_t service_id) const {
  const auto known = places_.find({stream, service_id});
  return known != places_.end() ? std::optional(known->second) : std::nullopt;
}

scanned_service &found_services::service(std::size_t stream, std::uint16_t service_id) {
  const auto [place, is_new] = places_.try_emplace({stream, service_id}, services_.size());
  if (is_new) {
    scanned_service &made = services_.emplace_back();
    made.stream = stream;
    made.service_id = service_id;
  }
  return services_[place->second];
}

void found_services::describe(std::size_t stream, const service_description &table) {
  for (const described_service &each : table.services) {
    if (scanned_service &known = service(stream, each.service_id); table.is_actual || !known.is_described_at_home) {
      known.described = each;
      known.is_described_at_home = table.is_actual;
    }
  }
}

void found_services::add_network(const std::string &source, const network_or_bouquet &table) {
  for (const described_stream &each : table.streams) {
    const auto found = find_stream(source, each.original_network_id, each.ts_id);
    if (!found) {
      continue;
    }
    for (const listed_service &listed : service_list_in(each.descriptors)) {
      if (const auto place = find(*found, listed.service_id)) {
        services_[*place].listed_type = listed.type;
      }
    }
    for (const logical_channel &channel : logical_channels_in(each.descriptors)) {
      claim(*found, channel);
    }
  }
}

// The first number of a service counts.
void found_services::claim(std::size_t stream, const logical_channel &channel) {
  const auto place = find(stream, channel.service_id);
  if (!place) {
    return;
  }
  scanned_service &claiming = services_[*place];
  std::optional<int> &number = channel.is_simulcast ? claiming.claim.simulcast : claiming.claim.number;
  if (!number) {
    number = channel.number;
    claiming.is_hidden = claiming.is_hidden || !channel.is_visible;
  }
}

std::vector<std::size_t> found_services::services_of(const std::string &source, const described_stream &stream) const {
  std::vector<std::size_t> places;
  const auto known = find_stream(source, stream.original_network_id, stream.ts_id);
  if (!known) {
    return places;
  }
  for (const listed_service &listed : service_list_in(stream.descriptors)) {
    if (const auto place = find(*known, listed.service_id)) {
      places.push_back(*place);
    }
  }
  return places;
}

void found_services::add_bouquet(const std::string &source, const network_or_bouquet &table) {
  const std::string name = bouquet_name_in(table.descriptors);
  auto bouquet = std::ranges::find(bouquets_, name, &scanned_bouquet::name);
  for (const described_stream &each : table.streams) {
    for (const std::size_t place : services_of(source, each)) {
      if (bouquet == bouquets_.end()) {
        bouquet = bouquets_.insert(bouquet, {name, {}});
      }
      if (in_bouquets_.emplace(name, place).second) {
        bouquet->services.push_back(place);
      }
    }
  }
}

}  // namespace chlist
