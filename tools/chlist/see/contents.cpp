// Counts the records of a list of its own, as the file has them.
#include "chlist/see/contents.h"

#include <channel/views.h>
#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <span>

#include "channel/persist/detached_list.h"
#include "channel/store/group_table.h"
#include "chlist/see/settings.h"
#include "chlist/service/names.h"
#include "chlist/text/broadcast_text.h"

namespace chlist {
namespace {

using channel::persist::current_format;
using channel::persist::version_8_format;

struct named_flag {
  std::string_view name;
  int bit;
};

constexpr named_flag flags[] = {{"locked", CHANNEL_FLAG_LOCKED},
                                {"skipped", CHANNEL_FLAG_SKIP},
                                {"scrambled", CHANNEL_FLAG_FTA},
                                {"data", CHANNEL_FLAG_DSMCC}};

file_contents::groups groups_in(std::string_view table, std::span<const group_st> groups, int count) {
  file_contents::groups found = {table, count, groups.size(), {}};
  for (const group_st &group :
       groups.first(static_cast<std::size_t>(std::clamp(count, 0, static_cast<int>(groups.size()))))) {
    found.used.push_back({group.id, name_in(group.name)});
  }
  return found;
}

void count_header(file_contents &contents, const channel_list_st &list) {
  contents.version = list.version;
  for (const setting &each : all_settings()) {
    contents.settings.push_back(each.value(list));
  }
  for (const list_view &view : views_of(list)) {
    contents.views.push_back({view.name, view.count, view.slots.size()});
  }
  contents.tables = {
      groups_in("providers", list.provider, list.provider_num), groups_in("genres", list.genre, list.genre_num),
      groups_in("countries", list.country, list.country_num),
      groups_in("favourite groups", list.favorite_group, channel::counted_in_low_byte(list.favorite_group_num))};
}

// Versions differ in where a service has its flags.
template <class Format>
void count_service(file_contents &contents, channel_st &record) {
  const auto &service = reinterpret_cast<const typename Format::service &>(record);
  ++contents.services_by_type[service.service_type];
  for (std::size_t i = 0; i < std::size(flags); ++i) {
    contents.flags[i].services += (service.flag & flags[i].bit) != 0 ? 1 : 0;
  }
}

template <class Format>
file_contents::network count_network(file_contents &contents, network_ch_st &network) {
  file_contents::network counted = {network.net_index, network.network_id, name_in(network.network_name), {}};
  for (tp_ch_st &transponder : channel::transponders_of(network)) {
    counted.transponders.push_back({transponder.ts_id, transponder.frequency, transponder.polarisation, 0});
    for (channel_st &service : channel::services_of(transponder)) {
      ++counted.transponders.back().services;
      count_service<Format>(contents, service);
    }
  }
  return counted;
}

template <class Format>
file_contents count(channel_list_st &list) {
  file_contents contents;
  count_header(contents, list);
  for (const named_flag &flag : flags) {
    contents.flags.push_back({flag.name, 0});
  }
  for (network_ch_st &network : channel::networks_of(list.network_list)) {
    contents.networks.push_back(count_network<Format>(contents, network));
  }
  return contents;
}

template <class Format>
file_contents count_records(const channel_file &input) {
  const auto list = channel::persist::read_detached<Format>(input.bytes());
  if (list == nullptr) {
    input.refuse_as_short();
  }
  return count<Format>(channel::persist::base_of(*list));
}

file_contents count_file(const channel_file &input) {
  switch (input.version()) {
    case CHANNEL_LIST_VERSION:
    case 9:
      return count_records<current_format>(input);
    case 8:
    case 7:
      return count_records<version_8_format>(input);
    default:
      input.refuse_version(fmt::format(": only 7 to {} are known", +CHANNEL_LIST_VERSION));
  }
}

template <class Range, class Count>
std::size_t sum(const Range &range, const Count &count) {
  return std::accumulate(range.begin(), range.end(), std::size_t{0},
                         [&count](std::size_t before, const auto &each) { return before + count(each); });
}

}  // namespace

std::size_t file_contents::network::services() const {
  return sum(transponders, [](const transponder &each) { return each.services; });
}

std::size_t file_contents::services() const {
  return sum(networks, [](const network &each) { return each.services(); });
}

std::size_t file_contents::transponders() const {
  return sum(networks, [](const network &each) { return each.transponders.size(); });
}

file_contents read_contents(const channel_file &input) {
  file_contents contents = count_file(input);
  contents.bytes = input.bytes().size();
  return contents;
}

}  // namespace chlist
