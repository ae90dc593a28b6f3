// The store, dumps, files, removal, the history and transport queries.
#include <channel/channel.h>

#include <algorithm>
#include <cstdlib>

#include "exported_calls.h"
#include "hierarchy_walk.h"
#include "old_channel_file.h"

namespace extremes {
namespace {

// A list that is replaced is emptied first: its records would be lost.
int init_emptied_list() {
  reset_channel_list();
  return init_channel_list();
}

int load_into_emptied_list(const char *name, std::uint8_t sort_mode) {
  reset_channel_list();
  return load_channel(name, sort_mode);
}

int repair_emptied_list(int version, const char *path) {
  reset_channel_list();
  return repair_channel(version, path);
}

// A list that was read is its caller's.
template <auto load>
void load_and_release(const char *path) {
  const test_support::owned_list read(reinterpret_cast<channel_list_st *>(load(path)));
}

// A cleared record is in no list.
void reset_unfiled(const channel_st *which) {
  channel_st *service = which != nullptr ? alloc_channel_info() : nullptr;
  reset_channel(service);
  std::free(service);
}

void alloc_and_free_channel() { std::free(alloc_channel_info()); }

void alloc_and_free_transponder(std::uint16_t ts_id, std::uint32_t frequency, std::uint8_t polarisation) {
  std::free(alloc_tp_ch_info(ts_id, frequency, polarisation));
}

// A record that was refused is the host's to free.
void add_new_channel(std::uint8_t net_index, std::uint16_t network_id, std::uint16_t ts_id, std::uint32_t frequency,
                     std::uint16_t service_id, std::uint8_t polarisation, const char *network_name) {
  channel_st *service = alloc_channel_info();
  service->net_index = net_index;
  service->network_id = network_id;
  service->ts_id = ts_id;
  // Both halves: a frequency of 64 bits is cut to its low 32 where the transponder is looked for.
  service->frequency = static_cast<std::int64_t>(frequency) << 32 | frequency;
  service->service_id = service_id;
  service->polarisation = polarisation;
  add_rch_info(service, network_name);
  if (service->list.next == &service->list) {
    std::free(service);
  }
  add_rch_info(nullptr, network_name);
}

// The network that a transponder hangs from.
network_ch_st *network_of(const tp_ch_st *transponder) {
  for (network_ch_st *network : test_support::networks()) {
    if (std::ranges::count(test_support::transponders(*network), transponder) != 0) {
      return network;
    }
  }
  return nullptr;
}

// The network's count of transponders is the host's to lower.
void release_transponder(tp_ch_st *transponder) {
  network_ch_st *network = network_of(transponder);
  release_tp_ch_info(transponder);
  if (network != nullptr) {
    --network->tp_num;
  }
}

// The table has 500 records.
int print_groups(const group_st *groups, std::int16_t count) {
  return print_group_info(count > MAX_PROVIDER ? nullptr : groups, count);
}

}  // namespace

std::vector<exported_call> store_calls() {
  constexpr test_support::promises history_may_repeat = {.distinct_history = false};
  return {
      HOSTED(init_channel_list, init_emptied_list),
      EDIT(reset_channel_list),
      EDIT(destroy_channel_list),
      HOSTED(reset_channel, reset_unfiled),
      HOSTED(alloc_channel_info, alloc_and_free_channel),
      HOSTED(alloc_tp_ch_info, alloc_and_free_transponder),
      EDIT(alloc_network_ch_info),
      HOSTED(add_rch_info, add_new_channel),
      RELEASE(release_rch_info),
      HOSTED(release_tp_ch_info, release_transponder),
      EDIT(release_network_ch_info),
      QUERY(get_channel_st),
      QUERY(get_network_ch_info),
      QUERY(get_tp_ch_info_by_network_ch),
      QUERY(get_rch_ch_info_by_tp_ch),

      QUERY(channel_version_info),
      QUERY(print_channel_list),
      QUERY(print_channel_info),
      QUERY(print_channel_status),
      QUERY(print_virtual_channel_list),
      HOSTED(print_group_info, print_groups),
      QUERY(print_provider_info),
      QUERY(print_fav_list),

      QUERY(set_target_dir),
      HOSTED(load_channel, load_into_emptied_list),
      QUERY(save_channel),
      EDIT(check_load_channel),
      HOSTED(v9_load_channel, load_and_release<v9_load_channel>),
      HOSTED(v8_load_channel, load_and_release<v8_load_channel>),
      HOSTED(v7_load_channel, load_and_release<v7_load_channel>),
      HOSTED(repair_channel, repair_emptied_list),

      EDIT(vtype_remove_by_vindex),
      EDIT(vtype_remove_by_net_index),
      EDIT(vtype_remove_vch),
      EDIT(vtype_remove_virtual_channel_st),
      EDIT(remove_invalid_virtual_channel),
      EDIT(remove_channel_st),
      EDIT(remove_virtual_channel_st),
      EDIT(remove_channel_info_by_net_index),
      EDIT(remove_channel_info_by_frequency),

      QUERY(init_return_channel),
      QUERY(get_return_channel),
      QUERY(get_return_channel_num),
      QUERY(get_return_channel_by_index),
      QUERY(check_same_return_channel),
      EDIT_KEEPING(add_return_channel, history_may_repeat),
      QUERY(remove_return_channel),
      QUERY(get_promo_channel_vindex),
      QUERY(check_limited_channel),
      QUERY(get_limited_channel_flag),
      QUERY(set_limited_channel_flag),

      QUERY(get_tp_ch_info),
      QUERY(get_tp_ch_simple),
      QUERY(get_rch_ch_info_by_tp_ch_and_avpid),
      QUERY(get_ipchannel),
      QUERY(get_frequency_by_ts_id),
      QUERY(get_polarisation_by_ts_id),
      QUERY(get_frequency_by_service_id),
      QUERY(get_polarisation_by_service_id),
      QUERY(is_ip_channel),
      QUERY(is_same_channel),
      QUERY(is_same_vchannel),
      QUERY(get_dsmcc_channel),
      QUERY(get_channel_list_version),
  };
}

}  // namespace extremes
