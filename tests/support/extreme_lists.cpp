#include "extreme_lists.h"

#include <channel/channel.h>

#include <cstring>

#include "extreme_values.h"
#include "full_list.h"

namespace extremes {
namespace {

using test_support::service_data;

// The identity that the base value 1 names.
service_data service_of_ones(std::uint16_t service_id) {
  service_data data;
  data.ts_id = 1;
  data.frequency = 1;
  data.polarisation = 1;
  data.service_id = service_id;
  data.service_type = service_id % 2 == 1 ? SERVICE_TYPE_TV : SERVICE_TYPE_RADIO;
  return data;
}

group_st group_named(const char *name) {
  group_st group = {};
  group.name_len = static_cast<std::int16_t>(std::strlen(name));
  std::memcpy(group.name, name, std::strlen(name));
  return group;
}

void fill_history(int count) {
  const virtual_channel_st *entries = get_channel_list_vch();
  for (int i = 0; i < count; ++i) {
    const virtual_channel_st &seen = entries[i];
    add_return_channel(seen.vch_tag, seen.net_index, seen.network_id, seen.ts_id, seen.frequency, seen.service_id,
                       seen.polarisation);
  }
}

// A name that fills its field, without a terminator, and claims to be longer still.
group_st group_with_endless_name() {
  group_st group = {};
  group.name_len = 127;
  std::memset(group.name, 'x', sizeof group.name);
  return group;
}

}  // namespace

void make_nothing() {}

void make_small() {
  for (const group_st &group : {group_named("Ant"), group_named("Bee"), group_with_endless_name()}) {
    add_provider_info(group);
    add_fav_group_info(group);
  }
  for (std::uint16_t id = 1; id <= 6; ++id) {
    channel_st &service = *test_support::file_service(service_of_ones(id));
    service.provider_id = 1;
    service.genre_id = 1;
    for (const int type : {0, 1, 2, 3, 4, 5, 10, 11}) {
      test_support::append_entry(static_cast<std::int8_t>(type),
                                 test_support::entry_of(service, static_cast<std::int16_t>(id), 1, 1));
    }
  }
  change_vindex_type(VIEW_TV);
  fill_history(3);
}

// The first transponder's services take the identity that the base value 1 names.
void make_full() {
  test_support::fill_everything();
  tp_ch_st &first = *value_at<tp_ch_st *>(base::one);
  first.ts_id = 1;
  first.frequency = 1;
  first.polarisation = 1;
  for (std::uint16_t id = 1; id <= first.rch_num; ++id) {
    channel_st &service = *get_rch_ch_info_by_tp_ch(&first, id);
    service.ts_id = 1;
    service.frequency = 1;
    service.polarisation = 1;
  }
  for (int type = VIEW_ALL; type <= VIEW_FAVOURITE_LAST; ++type) {
    virtual_channel_st *entries = type > VIEW_PROMOTION && type < VIEW_FAVOURITE
                                      ? nullptr
                                      : get_virtual_channel_st(static_cast<std::int8_t>(type));
    for (int i = 0; entries != nullptr && i < *get_virtual_channel_vnumber(static_cast<std::int8_t>(type)); ++i) {
      entries[i].ts_id = entries[i].rch->ts_id;
      entries[i].frequency = static_cast<std::uint32_t>(entries[i].rch->frequency);
      entries[i].polarisation = entries[i].rch->polarisation;
    }
  }
  change_vindex_type(VIEW_TV);
  fill_history(MAX_RETURN_CHANNEL);
}

void make_destroyed() {
  make_small();
  destroy_channel_list();
}

}  // namespace extremes
