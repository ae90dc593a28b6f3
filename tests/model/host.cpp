#include "host.h"

#include <channel/channel.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <cstring>

#include "model.h"
#include "observe.h"
#include "support/log_capture.h"
#include "support/store_builder.h"

namespace model_tests::host {
namespace {

int last_serial;

constexpr char file_name[] = "list.dat";

template <class To>
To to(int value) {
  return static_cast<To>(value);
}

channel_st *find(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation) {
  return get_channel_st(to<std::uint8_t>(net_index), to<std::uint16_t>(network_id), to<std::uint16_t>(ts_id),
                        to<std::uint32_t>(frequency), to<std::uint16_t>(service_id), to<std::uint8_t>(polarisation));
}

virtual_channel_st make_entry(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation,
                              int major, int tag) {
  virtual_channel_st made = {};
  made.vch_tag = to<std::int8_t>(tag);
  made.major_ch_num = to<std::int16_t>(major);
  made.net_index = to<std::uint8_t>(net_index);
  made.network_id = to<std::uint16_t>(network_id);
  made.ts_id = to<std::uint16_t>(ts_id);
  made.frequency = to<std::uint32_t>(frequency);
  made.service_id = to<std::uint16_t>(service_id);
  made.polarisation = to<std::uint8_t>(polarisation);
  made.rch = find(net_index, network_id, ts_id, frequency, service_id, polarisation);
  return made;
}

// A name with zeros behind it: lengths may reach over its end.
std::array<char, 100> padded_name(int name) {
  std::array<char, 100> padded = {};
  std::strncpy(padded.data(), name_number(name), padded.size() - 1);
  return padded;
}

group_st make_group(int name) {
  group_st made = {};
  std::strncpy(made.name, name_number(name), sizeof made.name - 1);
  made.name_len = to<std::int16_t>(static_cast<int>(std::strlen(made.name)));
  return made;
}

virtual_channel_st *slot_at(int type, int vindex) {
  const auto code = to<std::int8_t>(type);
  return get_virtual_channel_st(code) == nullptr ? nullptr
                                                 : vtype_get_vchannel_by_vindex(to<std::int16_t>(vindex), code);
}

template <class... Positions>
int move(int destination, Positions... positions) {
  const std::array<std::int16_t, sizeof...(positions) + 1> sources = {to<std::int16_t>(positions)..., 0};
  return move_channel(to<std::int16_t>(destination), to<std::int16_t>(sizeof...(positions)), sources.data());
}

bool counts_match() {
  return test_support::broken_invariant(
             {.zeros_behind_counts = false, .distinct_favourites = false, .distinct_history = false})
      .empty();
}

}  // namespace

void start(const char *directory) {
  last_serial = 0;
  set_target_dir(directory);
}

int file_service(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation,
                 int service_type) {
  test_support::service_data data;
  data.net_index = to<std::uint8_t>(net_index);
  data.network_id = to<std::uint16_t>(network_id);
  data.ts_id = to<std::uint16_t>(ts_id);
  data.frequency = frequency;
  data.service_id = to<std::uint16_t>(service_id);
  data.polarisation = to<std::uint8_t>(polarisation);
  data.service_type = to<std::uint8_t>(service_type);
  data.name = "";
  channel_st *service = test_support::make_service(data);
  set_serial(*service, ++last_serial);
  add_rch_info(service, nullptr);
  const bool filed = service->list.next != &service->list;
  if (!filed) {
    std::free(service);
  }
  return filed ? 1 : 0;
}

int add_network(int net_index, int network_id) {
  alloc_network_ch_info(to<std::uint8_t>(net_index), to<std::uint16_t>(network_id), nullptr);
  return 0;
}

int release_service(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation) {
  channel_st *found = find(net_index, network_id, ts_id, frequency, service_id, polarisation);
  if (found == nullptr) {
    return -1;
  }
  release_rch_info(found);
  return 0;
}

int release_transponder(int net_index, int network_id, int ts_id, int frequency, int polarisation) {
  network_ch_st *network = get_network_ch_info(to<std::uint8_t>(net_index), to<std::uint16_t>(network_id));
  tp_ch_st *found = network == nullptr
                        ? nullptr
                        : get_tp_ch_info_by_network_ch(network, to<std::uint16_t>(ts_id), to<std::uint32_t>(frequency),
                                                       to<std::uint8_t>(polarisation));
  if (found == nullptr) {
    return -1;
  }
  release_tp_ch_info(found);
  --network->tp_num;
  return 0;
}

int release_network(int net_index, int network_id) {
  network_ch_st *found = get_network_ch_info(to<std::uint8_t>(net_index), to<std::uint16_t>(network_id));
  if (found == nullptr) {
    return -1;
  }
  release_network_ch_info(found);
  return 0;
}

int save_and_load() {
  if (!counts_match() || save_channel(file_name) != 1) {
    return 0;
  }
  reset_channel_list();
  const test_support::fd_capture printed(STDOUT_FILENO);
  return load_channel(file_name, 255);
}

int append(int type, int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation,
           int major, int tag) {
  std::int16_t *count = get_virtual_channel_vnumber(to<std::int8_t>(type));
  if (count == nullptr || *count >= capacity_of(type)) {
    return -1;
  }
  test_support::append_entry(to<std::int8_t>(type),
                             make_entry(net_index, network_id, ts_id, frequency, service_id, polarisation, major, tag));
  return 0;
}

int insert(int type, int vindex, int net_index, int network_id, int ts_id, int frequency, int service_id,
           int polarisation, int major, int tag) {
  const virtual_channel_st made =
      make_entry(net_index, network_id, ts_id, frequency, service_id, polarisation, major, tag);
  std::array<std::uint32_t, 5> words = {};
  std::memcpy(words.data(), &made, sizeof words);
  return insert_vch_vindex_type(words[0], words[1], words[2], words[3], words[4], 0, to<std::int16_t>(vindex),
                                to<std::int8_t>(type));
}

int rename_channel(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation, int slot,
                   int name, int length) {
  return rename_channel_info(to<std::uint8_t>(net_index), to<std::uint16_t>(network_id), to<std::uint16_t>(ts_id),
                             to<std::uint32_t>(frequency), to<std::uint16_t>(service_id),
                             to<std::uint8_t>(polarisation), to<std::uint8_t>(slot), padded_name(name).data(),
                             to<std::int16_t>(length));
}

int rename_at(int vindex, int slot, int name, int length, int type) {
  return vtype_rename_channel_info(to<std::int16_t>(vindex), to<std::uint8_t>(slot), padded_name(name).data(),
                                   to<std::int16_t>(length), to<std::int8_t>(type));
}

int set_user_order(int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation, int key) {
  channel_st *found = find(net_index, network_id, ts_id, frequency, service_id, polarisation);
  if (found == nullptr) {
    return -1;
  }
  found->user_order_key = to<std::int16_t>(key);
  return 0;
}

int set_group_id(int kind, int type, int vindex, int id) {
  return ::set_group_id(to<std::int8_t>(kind), slot_at(type, vindex), to<std::int16_t>(id));
}

int move_one(int destination, int source) { return move(destination, source); }

int move_two(int destination, int first, int second) { return move(destination, first, second); }

int move_three(int destination, int first, int second, int third) { return move(destination, first, second, third); }

int move_none(int destination) { return move(destination); }

int add_provider(int name) { return add_provider_info(make_group(name)); }

int list_providers(int view_type) {
  std::array<std::int16_t, MAX_PROVIDER> ids = {};
  const int count = get_provider_id_by_service_type(to<std::int8_t>(view_type), ids.data());
  unsigned folded = 0;
  for (int i = 0; i < count; ++i) {
    folded = folded * 1000 + static_cast<unsigned>(ids[static_cast<std::size_t>(i)]) + 1;
  }
  return static_cast<int>(folded & 0x7FFFFFFF);
}

int add_fav_group(int name) { return add_fav_group_info(make_group(name)); }

int rename_fav_group(int id, int name, int length) {
  return rename_favorite_group(to<std::int16_t>(id), padded_name(name).data(), to<std::int16_t>(length));
}

int add_favourite(int id, int type, int vindex) {
  const virtual_channel_st *source = slot_at(type, vindex);
  return source != nullptr ? add_fav_virtual_channel(to<std::int16_t>(id), source) : -1;
}

int move_favourite(int group, int destination, int source) {
  const auto position = to<std::uint16_t>(source);
  return move_fav_channel(to<std::int16_t>(group), to<std::int16_t>(destination), 1, &position);
}

int move_two_favourites(int group, int destination, int first, int second) {
  const std::array<std::uint16_t, 2> positions = {to<std::uint16_t>(first), to<std::uint16_t>(second)};
  return move_fav_channel(to<std::int16_t>(group), to<std::int16_t>(destination), 2, positions.data());
}

}  // namespace model_tests::host
