#include "observe.h"

#include <channel/channel.h>

#include <algorithm>
#include <cstring>
#include <span>
#include <unordered_map>

#include "model.h"

namespace model_tests {
namespace {

using serial_numbers = std::unordered_map<const channel_st *, int>;

int serial_of(const channel_st &service) {
  int serial = 0;
  std::memcpy(&serial, service.reserved_300, sizeof serial);
  return serial;
}

// A text of at most size bytes, up to its terminator.
std::string text_of(const char *text, std::size_t size) { return {text, strnlen(text, size)}; }

service read_service(const channel_st &read) {
  service made;
  made.serial = serial_of(read);
  made.id = {read.net_index,  read.network_id,  read.ts_id, static_cast<std::uint32_t>(read.frequency),
             read.service_id, read.polarisation};
  made.service_type = read.service_type;
  made.flag = read.flag;
  made.genre_id = read.genre_id;
  made.provider_id = read.provider_id;
  made.country_id = read.country_id;
  made.user_order_key = read.user_order_key;
  for (std::size_t slot = 0; slot < made.names.size(); ++slot) {
    made.names[slot] = text_of(read.name[slot].text, sizeof read.name[slot].text);
    made.name_lengths[slot] = read.name[slot].name_len;
  }
  return made;
}

std::vector<network> read_networks(serial_numbers &serials) {
  std::vector<network> networks;
  for_each_below<network_ch_st>(get_channel_list()->network_list, [&](const network_ch_st &read) {
    network &made = networks.emplace_back(network{read.net_index, read.network_id, read.tp_num, {}});
    for_each_below<tp_ch_st>(read.tp_list, [&](const tp_ch_st &below) {
      transponder &added = made.transponders.emplace_back(
          transponder{below.ts_id, below.frequency, below.polarisation, below.rch_num, {}});
      for_each_below<channel_st>(below.rch_list, [&](const channel_st &filed) {
        added.services.push_back(read_service(filed));
        serials.emplace(&filed, serial_of(filed));
      });
    });
  });
  return networks;
}

entry read_entry(const virtual_channel_st &read, const serial_numbers &serials) {
  entry made;
  made.tag = read.vch_tag;
  made.favorite_id = read.favorite_id;
  made.major = read.major_ch_num;
  made.minor = read.minor_ch_num;
  made.id = {read.net_index, read.network_id, read.ts_id, read.frequency, read.service_id, read.polarisation};
  if (read.rch != nullptr) {
    const auto found = serials.find(read.rch);
    made.rch = found != serials.end() ? found->second : -1;
  }
  return made;
}

template <class Record>
bool is_zero(const Record &record) {
  static const Record zero = {};
  return std::memcmp(&record, &zero, sizeof zero) == 0;
}

// How many slots are in use or, behind the count, not zero.
template <class Record>
std::size_t slots_to_read(std::span<const Record> array, int count) {
  const auto used = static_cast<std::size_t>(std::max(count, 0));
  const auto behind = std::as_bytes(array.subspan(used));
  if (behind.empty() || (behind[0] == std::byte{0} && std::memcmp(&behind[0], &behind[1], behind.size() - 1) == 0)) {
    return used;
  }
  std::size_t end = array.size();
  while (end > used && is_zero(array[end - 1])) {
    --end;
  }
  return end;
}

view read_view(int code, const serial_numbers &serials) {
  const auto type = static_cast<std::int8_t>(code);
  const std::span<const virtual_channel_st> array(get_virtual_channel_st(type),
                                                  static_cast<std::size_t>(capacity_of(code)));
  view made;
  made.count = *get_virtual_channel_vnumber(type);
  for (const virtual_channel_st &slot : array.first(slots_to_read(array, made.count))) {
    made.slots.push_back(read_entry(slot, serials));
  }
  return made;
}

group_table read_groups(std::span<const group_st> array, int count) {
  group_table made;
  made.count = count;
  for (const group_st &slot : array.first(slots_to_read(array, count))) {
    made.slots.push_back({slot.id, slot.name_len, text_of(slot.name, sizeof slot.name)});
  }
  return made;
}

selection read_selection(const channel_list_st &list) {
  selection made;
  made.current = -1;
  for (const int code : view_codes()) {
    if (get_virtual_channel_st(static_cast<std::int8_t>(code)) == list.cur_vch) {
      made.current = code;
    }
  }
  made.vch_type = list.vch_type;
  made.ch_type = list.ch_type;
  made.use_group_list = list.use_group_list;
  made.service_type = list.service_type;
  made.net_index = list.net_index;
  made.sub_group_id = list.sub_group_id;
  return made;
}

watched read_watched(const return_channel_st &read, const serial_numbers &serials) {
  return {read.group,
          read.service_type,
          read.sub_group,
          read.vindex,
          static_cast<std::int8_t>(read.tag),
          read.net_index,
          read_entry(read.vch, serials)};
}

}  // namespace

void set_serial(channel_st &service, int serial) {
  static_assert(sizeof serial <= sizeof service.reserved_300);
  std::memcpy(service.reserved_300, &serial, sizeof serial);
}

state observe() {
  const channel_list_st &list = *get_channel_list();
  serial_numbers serials;
  state seen;
  seen.networks = read_networks(serials);
  seen.network_count = list.network_num;
  for (const int code : view_codes()) {
    seen.views[code] = read_view(code, serials);
  }
  seen.selected = read_selection(list);
  seen.providers = read_groups(list.provider, list.provider_num);
  seen.favourites = read_groups(list.favorite_group, list.favorite_group_num);
  seen.history_count = get_return_channel_num();
  for (std::size_t i = 0; i < seen.history.size(); ++i) {
    seen.history[i] = read_watched(get_return_channel()[i], serials);
  }
  normalise(seen);
  return seen;
}

}  // namespace model_tests
