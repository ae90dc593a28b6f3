// The group selection in use, the group tables, and the group ids that services carry.
#include <channel/groups.h>

#include <algorithm>

#include "channel/log.h"
#include "channel/store/channel_list.h"
#include "channel/store/group_table.h"
#include "channel/store/view.h"

using channel::channel_list;

namespace channel {
namespace {

// The field of a real channel that holds its id for a group kind with a table; null for every other kind.
std::int16_t *group_id_field(channel_st &service, int kind) {
  switch (kind) {
    case GROUP_GENRE:
      return &service.genre_id;
    case GROUP_PROVIDER:
      return &service.provider_id;
    case GROUP_COUNTRY:
      return &service.country_id;
    default:
      return nullptr;
  }
}

bool has_service(const virtual_channel_st *entry) { return entry != nullptr && entry->rch != nullptr; }

// Compatibility: the answer is 0 for every view; hosts still ask, and an unknown view is warned of.
int no_group_of(std::int8_t view_type) {
  static_cast<void>(fetch_view(view_type));
  return 0;
}

}  // namespace
}  // namespace channel

extern "C" {

int8_t get_use_group_list(void) { return channel_list.use_group_list; }

int8_t get_current_service_type(void) { return channel_list.service_type; }

int16_t get_current_sub_group_id(void) { return channel_list.sub_group_id; }

group_st *get_group_list(int8_t kind, uint16_t *count) {
  if (count == nullptr) {
    LOG_ERROR("count is null\n");
    return nullptr;
  }
  // Satellites have no table; hosts count on finding their own number untouched.
  if (kind == GROUP_SATELLITE) {
    return nullptr;
  }
  const channel::group_table table = channel::table_of_kind(kind);
  *count = static_cast<uint16_t>(table ? table.size() : 0);
  return *count != 0 ? table.groups : nullptr;
}

group_st *get_group_st_by_id(int8_t kind, int16_t id) {
  const channel::group_table table = channel::table_of_kind(kind);
  return table ? table.find(id) : nullptr;
}

group_st *find_genre_id(int16_t id) { return channel::genre_table().find(id); }

group_st *find_country_id(int16_t id) { return channel::country_table().find(id); }

int get_group_id(int8_t kind, const virtual_channel_st *vch) {
  if (!channel::has_service(vch)) {
    return -1;
  }
  if (kind == GROUP_SATELLITE) {
    return vch->rch->net_index;
  }
  const int16_t *field = channel::group_id_field(*vch->rch, kind);
  return field != nullptr ? *field : -1;
}

int set_group_id(int8_t kind, virtual_channel_st *vch, int16_t id) {
  if (!channel::has_service(vch)) {
    return -1;
  }
  if (kind == GROUP_SATELLITE) {
    vch->rch->net_index = static_cast<uint8_t>(id);
    return vch->rch->net_index;
  }
  int16_t *field = channel::group_id_field(*vch->rch, kind);
  if (field == nullptr) {
    return -1;
  }
  if (kind == GROUP_GENRE) {
    LOG_TRACE(2, "id ----- %d \n", id);
  }
  *field = id;
  return id;
}

int set_group_list(int8_t kind, const group_st *table, int16_t count) {
  if (kind != GROUP_GENRE && kind != GROUP_COUNTRY) {
    LOG_WARNING("unknown 'group_list'\n");
    return 1;
  }
  if (table == nullptr) {
    LOG_ERROR("table is null\n");
    return 1;
  }
  const channel::group_table replaced = channel::table_of_kind(kind);
  *replaced.count = count;
  std::copy_n(table, replaced.capacity, replaced.groups);
  static_cast<void>(save_group_list(kind));
  return 1;
}

int get_country_id_by_service_type(int8_t view_type) { return channel::no_group_of(view_type); }

int get_genre_id_by_service_type(int8_t view_type) { return channel::no_group_of(view_type); }
}
