// Turns parsed services into records of the channel list, through the library's own calls.
#include "chlist/exchange/list_builder.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>
#include <memory>

namespace chlist {
namespace {

// One network index for each source; 255 stands for all of them.
constexpr std::size_t max_sources = 254;

// Ids of providers begin at 0.
constexpr std::int16_t no_provider = -1;

constexpr std::uint8_t broadcast_source = 1;
constexpr std::uint8_t service_type_data = 12;  // EN 300 468: data broadcast service

struct free_record {
  void operator()(channel_st *record) const { std::free(record); }
};
using owned_channel = std::unique_ptr<channel_st, free_record>;

std::uint8_t service_type_of(const vdr_service &service) {
  if (service.has_video()) {
    return SERVICE_TYPE_TV;
  }
  return service.has_audio() ? std::uint8_t{SERVICE_TYPE_RADIO} : service_type_data;
}

void set_name(name_slot_st &slot, std::string_view name) {
  const std::string_view cut = cut_utf8(name, sizeof slot.text);
  std::ranges::copy(cut, slot.text);
  slot.name_len = static_cast<std::uint16_t>(cut.size());
}

// A service that has Dolby alone is heard through its first Dolby stream.
void set_pids(channel_st &record, const vdr_service &service) {
  if (service.has_video()) {
    record.video_pid = service.video_pid;
    record.pcr_pid = service.video_pid;
  }
  if (service.pcr_pid != 0) {
    record.pcr_pid = service.pcr_pid;
  }
  if (service.has_audio()) {
    record.audio_pid = service.audio.empty() ? service.dolby.front().pid : service.audio.front().pid;
  }
}

owned_channel make_record(const vdr_service &service, std::uint8_t net_index) {
  owned_channel record(alloc_channel_info());
  record->net_index = net_index;
  record->network_id = service.network_id;
  record->ts_id = service.transport_id;
  record->frequency = service.frequency_khz;
  record->service_id = service.service_id;
  record->polarisation = service.is_vertical ? 1 : 0;
  record->service_type = service_type_of(service);
  record->source_type = broadcast_source;
  record->flag = service.is_scrambled() ? CHANNEL_FLAG_FTA : 0;
  set_name(record->name[0], service.name);
  set_name(record->name[1], service.short_name);
  set_pids(*record, service);
  return record;
}

// add_rch_info() tells a service that it refused by leaving the record in no list.
bool is_filed(const channel_st &record) { return record.list.next != &record.list; }

channel_st *find_same(const channel_st &record) {
  return get_channel_st(record.net_index, record.network_id, record.ts_id, static_cast<std::uint32_t>(record.frequency),
                        record.service_id, record.polarisation);
}

virtual_channel_st entry_of(channel_st &filed, int number) {
  virtual_channel_st entry = {};
  entry.major_ch_num = static_cast<std::int16_t>(number);
  entry.net_index = filed.net_index;
  entry.frequency = static_cast<std::uint32_t>(filed.frequency);
  entry.polarisation = filed.polarisation;
  entry.service_id = filed.service_id;
  entry.network_id = filed.network_id;
  entry.ts_id = filed.ts_id;
  entry.rch = &filed;
  return entry;
}

// The entries of the ALL view with a service type.
std::size_t count_type(const channel_list_st &list, std::uint8_t type) {
  return static_cast<std::size_t>(
      std::count_if(list.vch, list.vch + list.vnumber,
                    [type](const virtual_channel_st &entry) { return entry.rch->service_type == type; }));
}

}  // namespace

std::string_view cut_utf8(std::string_view text, std::size_t most) {
  constexpr std::size_t longest_tail = 3;
  if (text.size() <= most) {
    return text;
  }
  const auto continues = [&](std::size_t at) { return (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U; };
  std::size_t end = most;
  while (end > 0 && most - end < longest_tail && continues(end)) {
    --end;
  }
  // More continuation bytes than a character has: not UTF-8, so any place is as good.
  return text.substr(0, continues(end) ? most : end);
}

list_builder::list_builder() : list_(*get_channel_list()) { reset_channel_list(); }

std::optional<std::string> list_builder::add(const vdr_service &service) {
  next_number_ = std::max(next_number_, service.lowest_number);
  if (list_.vnumber >= MAX_CHANNEL) {
    return fmt::format("the list is full: it holds {} services", +MAX_CHANNEL);
  }
  if (next_number_ > largest_channel_number) {
    return fmt::format("no channel number is left: the largest is {}", largest_channel_number);
  }
  const std::optional<std::uint8_t> net_index = net_index_of(service.source);
  if (!net_index) {
    return fmt::format("source {} is one too many: a list holds {}", service.source, max_sources);
  }
  return file(service, *net_index);
}

std::optional<std::string> list_builder::file(const vdr_service &service, std::uint8_t net_index) {
  std::array<char, sizeof(network_ch_st::network_name)> network_name{};
  std::ranges::copy(service.source, network_name.begin());
  owned_channel record = make_record(service, net_index);
  if (add_rch_info(record.get(), network_name.data()) != 0) {
    return "the store refuses it";
  }
  if (!is_filed(*record)) {
    return fmt::format("is the same service as line {}", lines_.at(find_same(*record)));
  }
  channel_st &filed = *record.release();
  filed.provider_id = provider_id_of(service.provider);
  lines_[&filed] = service.line;
  append(filed, next_number_++);
  return std::nullopt;
}

std::optional<std::uint8_t> list_builder::net_index_of(const std::string &source) {
  if (const auto known = net_indexes_.find(source); known != net_indexes_.end()) {
    return known->second;
  }
  if (net_indexes_.size() >= max_sources) {
    return std::nullopt;
  }
  return net_indexes_[source] = static_cast<std::uint8_t>(net_indexes_.size() + 1);
}

// Looked up first, because adding a provider does not ask whether it is there.
std::int16_t list_builder::provider_id_of(std::string_view provider) {
  const std::string_view name = cut_utf8(provider, longest_provider_name);
  if (name.empty()) {
    return no_provider;
  }
  static_assert(longest_provider_name <= std::numeric_limits<std::int8_t>::max());
  if (const group_st *known = find_provider_info(name.data(), static_cast<std::int8_t>(name.size()))) {
    return known->id;
  }
  group_st added = {};
  added.name_len = static_cast<std::int16_t>(name.size());
  std::ranges::copy(name, added.name);
  const int id = add_provider_info(added);
  if (id < 0) {
    providers_left_out_.emplace(name);
  }
  return static_cast<std::int16_t>(id < 0 ? no_provider : id);
}

void list_builder::append(channel_st &filed, int number) {
  list_.vch[list_.vnumber] = entry_of(filed, number);
  ++list_.vnumber;
}

std::vector<std::string> list_builder::build_views() {
  struct {
    std::int8_t code;
    std::uint8_t type;
    const char *name;
    const std::int16_t &taken;
  } const views[] = {{VIEW_TV, SERVICE_TYPE_TV, "TV", list_.tv_vnumber},
                     {VIEW_RADIO, SERVICE_TYPE_RADIO, "radio", list_.radio_vnumber}};
  std::vector<std::string> left_out;
  for (const auto &view : views) {
    const std::size_t wanted = count_type(list_, view.type);
    if (wanted > 0 && create_vindex_type(view.code, -1) != 0) {
      left_out.push_back(fmt::format("the {} view is full: it holds {}, {} more services are in the ALL view only",
                                     view.name, view.taken, wanted - static_cast<std::size_t>(view.taken)));
    }
  }
  return left_out;
}

std::optional<std::string> list_builder::providers_left_out() const {
  if (providers_left_out_.empty()) {
    return std::nullopt;
  }
  return fmt::format("the list of providers is full: it holds {}, {} more are left out", +MAX_PROVIDER,
                     providers_left_out_.size());
}

list_counts list_builder::counts() const {
  list_counts counts;
  counts.services = static_cast<std::size_t>(list_.vnumber);
  counts.tv = count_type(list_, SERVICE_TYPE_TV);
  counts.radio = count_type(list_, SERVICE_TYPE_RADIO);
  counts.providers = static_cast<std::size_t>(get_provider_number());
  counts.sources = net_indexes_.size();
  for (const list_head *node = list_.network_list.next; node != &list_.network_list; node = node->next) {
    counts.transponders += reinterpret_cast<const network_ch_st *>(node)->tp_num;
  }
  return counts;
}

}  // namespace chlist
