// Lists of the services of one group: building them into the USER or the work view, removing them, and naming the
// groups that occur in a view.
#include <channel/service_lists.h>

#include <channel/favourites.h>
#include <channel/groups.h>
#include <channel/removal.h>
#include <channel/views.h>
#include <cstdlib>

#include "channel/log.h"
#include "channel/store/channel_list.h"
#include "channel/store/group_table.h"
#include "channel/store/release.h"
#include "channel/store/view.h"

using channel::channel_list;

namespace channel {
namespace {

// Groups of GROUP_FTACAS. The third is the host's: it marks services with a bit that means nothing to the library.
enum : std::int16_t { free_to_air = 0, scrambled = 1, marked_by_host = 2 };
constexpr std::uint8_t host_mark = 0x40;

bool has_access(const channel_st &service, std::int16_t id) {
  switch (id) {
    case free_to_air:
      return (service.flag & CHANNEL_FLAG_FTA) == 0;
    case scrambled:
      return (service.flag & CHANNEL_FLAG_FTA) != 0;
    case marked_by_host:
      return (service.flag & host_mark) != 0;
    default:
      return false;
  }
}

// Whether an entry, which has a real channel, belongs to a group. A satellite is known by the entry's own byte.
bool belongs(const virtual_channel_st &entry, int kind, std::int16_t id) {
  switch (kind) {
    case GROUP_SATELLITE:
      return entry.net_index == id;
    case GROUP_GENRE:
      return entry.rch->genre_id == id;
    case GROUP_PROVIDER:
      return entry.rch->provider_id == id;
    case GROUP_COUNTRY:
      return entry.rch->country_id == id;
    case GROUP_FTACAS:
      return has_access(*entry.rch, id);
    default:
      return false;
  }
}

// Each entry of a group, in order. Entries without a real channel are reported in the operation's name.
template <class Action>
void for_each_of_group(const view &source, int kind, std::int16_t id, const char *operation, const Action &action) {
  for (const virtual_channel_st &entry : source) {
    if (entry.rch == nullptr) {
      LOG_ERROR_AS(operation, " r_ch NULL......\n");
    } else if (belongs(entry, kind, id)) {
      action(entry);
    }
  }
}

void copy_favourites(std::int16_t id, int walked, const view &target, const char *operation) {
  const std::int16_t group = get_fav_index(id);
  if (group < 0) {
    return;
  }
  const view favourites = find_view(VIEW_FAVOURITE + group);
  *target.count = favourites.size();
  for (int position = 0; position < favourites.size(); ++position) {
    target.entries[position] = favourites.entries[position];
    LOG_TRACE_AS(operation, 2,
                 " [create_service_by_group_list_id]  des_vch[%d].favorite_id : %d, id : %d, index : %d, "
                 "*des_vnumber : %d\n",
                 walked, target.entries[position].favorite_id, id, group, *target.count);
  }
}

void record_selection(int kind, std::int16_t id, std::int8_t source_type) {
  channel_list.use_group_list = static_cast<std::int8_t>(kind);
  if (kind == GROUP_SATELLITE) {
    channel_list.net_index = static_cast<std::int8_t>(id);
  } else {
    channel_list.sub_group_id = id;
  }
  channel_list.service_type = source_type;
}

// Copies the groups of a kind that occur in a view, each once, and returns their number. A group is the first record
// with its id, so that equal records are those of one id. Compatibility: id 0 is never listed.
int copy_groups(std::int8_t kind, const view &listed, group_st *out, const char *operation) {
  id_set seen;
  seen.add(0);
  int count = 0;
  for (const virtual_channel_st &entry : listed) {
    if (entry.rch == nullptr) {
      LOG_ERROR_AS(operation, "r_ch == NULL\n");
      continue;
    }
    const auto id = static_cast<std::int16_t>(get_group_id(kind, &entry));
    if (!seen.add(id)) {
      continue;
    }
    if (const group_st *group = get_group_st_by_id(kind, id); group != nullptr) {
      out[count++] = *group;
    }
  }
  return count;
}

int compare_groups_untyped(const void *a, const void *b) {
  return compare_group_name(*static_cast<const group_st *>(a), *static_cast<const group_st *>(b));
}

}  // namespace
}  // namespace channel

using channel::view;

extern "C" {

int create_service_by_group_list_id(int8_t kind, int16_t id, int8_t source_type, uint8_t make_current) {
  const view source = channel::fetch_view(source_type);
  if (!source || source.size() == 0) {
    return -1;
  }
  const int8_t target_type = make_current != 0 ? VIEW_USER : VIEW_WORK;
  init_vindex(target_type);
  const view target = channel::find_view(target_type);
  const int walked = source.size();
  channel::for_each_of_group(source, kind, id, __func__,
                             [&target](const virtual_channel_st &entry) { target.append(entry); });
  if (kind == GROUP_FAV) {
    channel::copy_favourites(id, walked, target, __func__);
  }
  if (target.size() == 0) {
    LOG_ERROR("Can not find 'id %04x' 'service_type %d \n", static_cast<unsigned>(id), source_type);
  }
  if (make_current != 0) {
    channel::record_selection(kind, id, source_type);
    change_vindex_type(VIEW_USER);
  }
  return 0;
}

int remove_service_by_group_list_id(int8_t kind, int16_t id, int8_t view_type) {
  const view source = channel::fetch_view(view_type);
  if (!source || source.size() == 0) {
    return -1;
  }
  {
    const channel::transponder_matches matches;
    channel::doomed_services doomed;
    channel::for_each_of_group(source, kind, id, __func__, [&matches, &doomed](const virtual_channel_st &entry) {
      channel::release_service(*entry.rch, matches, doomed);
    });
  }
  LOG_TRACE(2, " type :  %s provider_id  %d \n", channel::view_name(view_type), id);
  remove_invalid_virtual_channel();
  return 0;
}

int get_group_id_by_service_type(int8_t kind, int8_t view_type, group_st *out) {
  const view listed = channel::fetch_view(view_type);
  if (!listed || listed.size() == 0) {
    LOG_ERROR("\n");
    return 0;
  }
  if (out == nullptr) {
    LOG_ERROR("out is null\n");
    return 0;
  }
  const int count = channel::copy_groups(kind, listed, out, __func__);
  std::qsort(out, static_cast<std::size_t>(count), sizeof *out, channel::compare_groups_untyped);
  return count;
}

// Compatibility: when the source cannot be listed, what an earlier call left in the work view is added.
int add_fav_ch_group(int16_t fav_id, int8_t source_type, int8_t kind, int16_t kind_id) {
  const bool built = create_service_by_group_list_id(kind, kind_id, source_type, 0) != -1;
  const view work = channel::find_view(VIEW_WORK);
  if (work.size() == 0) {
    return -2;
  }
  for (const virtual_channel_st &entry : work) {
    if (add_fav_virtual_channel(fav_id, &entry) == -1) {
      break;
    }
  }
  return built ? 1 : 0;
}
}
