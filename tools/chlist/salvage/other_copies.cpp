#include "chlist/salvage/other_copies.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <string_view>
#include <utility>

#include "channel/store/channel_list.h"

namespace chlist {
namespace {

// What stays of an identity when networks are numbered anew and frequencies differ.
std::uint64_t service_key(const channel::identity &id) {
  return std::uint64_t{id.network_id} << 32U | std::uint64_t{id.ts_id} << 16U | id.service_id;
}

std::uint32_t network_key(int net_index, int network_id) {
  return static_cast<std::uint32_t>(network_id) << 8U | static_cast<std::uint32_t>(net_index);
}

std::size_t place_in_list(const void *field) {
  return static_cast<std::size_t>(static_cast<const char *>(field) -
                                  reinterpret_cast<const char *>(&channel::channel_list));
}

template <class Value>
const Value *at_place(const channel_list_st &list, std::size_t place) {
  return reinterpret_cast<const Value *>(reinterpret_cast<const char *>(&list) + place);
}

}  // namespace

list_copy::list_copy(std::string name, const file_records &records)
    : name_(std::move(name)), list_(std::make_unique<channel_list_st>(records.list())) {
  for (const framed_record<channel_st> &service : records.services()) {
    services_.try_emplace(service_key(channel::identity_of(*service.record)),
                          service_groups{service.record->provider_id, service.record->genre_id});
  }
  for (const framed_record<network_ch_st> &network : records.networks()) {
    const char *text = network.record->network_name;
    networks_.try_emplace(network_key(network.record->net_index, network.record->network_id),
                          std::string_view(text, strnlen(text, sizeof network.record->network_name)));
  }
}

std::span<const group_st> list_copy::groups_like(const channel::group_table &table) const {
  const auto *groups = at_place<group_st>(*list_, place_in_list(table.groups));
  const auto *count = at_place<std::int16_t>(*list_, place_in_list(table.count));
  const int counted = table.is_counted_in_low_byte ? channel::counted_in_low_byte(*count) : *count;
  return {groups, static_cast<std::size_t>(std::clamp<int>(counted, 0, table.capacity))};
}

const group_st *list_copy::group_of(std::span<const channel::identity> services, group_field field,
                                    const channel::group_table &table) const {
  std::map<std::int16_t, std::size_t> votes;
  for (const channel::identity &id : services) {
    if (const auto found = services_.find(service_key(id)); found != services_.end()) {
      ++votes[field == &channel_st::provider_id ? found->second.provider : found->second.genre];
    }
  }
  const auto most = std::ranges::max_element(votes, {}, [](const auto &vote) { return vote.second; });
  const auto groups = groups_like(table);
  const auto group = most != votes.end() ? std::ranges::find(groups, most->first, &group_st::id) : groups.end();
  return group != groups.end() ? &*group : nullptr;
}

std::string list_copy::network_name(int net_index, int network_id) const {
  const auto found = networks_.find(network_key(net_index, network_id));
  return found != networks_.end() ? found->second : "";
}

}  // namespace chlist
