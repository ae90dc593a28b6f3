// Favourite groups and the history of watched channels in the model.
#include <strings.h>

#include <cstring>

#include "model.h"
#include "slots.h"

namespace model_tests {
namespace {

constexpr int max_groups = 20;
constexpr int max_entries = 40;
constexpr int max_watched = 20;
constexpr int first_group_view = 10;

bool same_entry(const entry &a, const entry &b) { return a.tag == b.tag && same_service(a.id, b.id); }

}  // namespace

int model::favourite_index(int id) const {
  for (int i = 0; i < favourites.count; ++i) {
    if (favourites.slots[static_cast<std::size_t>(i)].id == id) {
      return i;
    }
  }
  return -1;
}

int model::add_fav_group(int name) {
  if (favourites.count >= max_groups) {
    return -1;
  }
  group added = {0, static_cast<int>(std::strlen(name_number(name))), name_number(name)};
  for (int i = 0; i < favourites.count; ++i) {
    if (group &same = slot(favourites, i); strcasecmp(same.name.c_str(), added.name.c_str()) == 0) {
      same.name_length = static_cast<int>(same.name.size());
      return same.id;
    }
  }
  while (favourite_index(added.id) >= 0) {
    ++added.id;
  }
  views.at(first_group_view + favourites.count) = {};
  push(favourites, added);
  return added.id;
}

int model::rename_fav_group(int id, int name, int length) {
  const int index = favourite_index(id);
  if (index < 0) {
    return -1;
  }
  group &renamed = slot(favourites, index);
  renamed.name.clear();
  if (length < 1) {
    return -1;
  }
  renamed.name = std::string(name_number(name)).substr(0, static_cast<std::size_t>(length));
  renamed.name_length = length;
  return 0;
}

int model::remove_fav_group(int id) {
  const int index = favourite_index(id);
  if (index < 0) {
    return -1;
  }
  for (int i = index; i + 1 < favourites.count; ++i) {
    views.at(first_group_view + i) = views.at(first_group_view + i + 1);
  }
  views.at(first_group_view + favourites.count - 1) = {};
  remove_at(favourites, index);
  return 0;
}

// The last slot of the shift up lies behind the table's end, and keeps its copy; a full table has none there.
int model::move_fav_ch_group(int destination, int source) {
  const int count = favourites.count;
  if (destination < 0 || destination >= count || source < 0 || source >= count) {
    return -1;
  }
  const group record = slot(favourites, source);
  const view entries = views.at(first_group_view + source);
  const int shifted = std::min(count, max_groups - 1) - destination;
  shift(favourites, source, source + 1, count - source - 1);
  shift(favourites, destination + 1, destination, shifted);
  slot(favourites, destination) = record;
  for (int i = source; i + 1 < count; ++i) {
    views.at(first_group_view + i) = views.at(first_group_view + i + 1);
  }
  for (int i = destination + shifted; i > destination; --i) {
    views.at(first_group_view + i) = views.at(first_group_view + i - 1);
  }
  views.at(first_group_view + destination) = entries;
  kept.zeros_behind_counts = false;
  return 0;
}

int model::add_favourite(int id, int type, int vindex) {
  view *source = find_view(type);
  if (source == nullptr || vindex < 0 || vindex >= capacity_of(type)) {
    return -1;
  }
  entry added = slot(*source, vindex);
  const int index = favourite_index(id);
  if (index < 0) {
    return -1;
  }
  view &extended = views.at(first_group_view + index);
  if (extended.count >= max_entries) {
    return -1;
  }
  for (int i = 0; i < extended.count; ++i) {
    if (same_entry(slot(extended, i), added)) {
      return 0;
    }
  }
  added.favorite_id = extended.count;
  push(extended, added);
  return 0;
}

int model::remove_fav_virtual_channel(int id, int index) {
  const int group = favourite_index(id);
  return group >= 0 ? vtype_remove_by_vindex(index, first_group_view + group) : -1;
}

int model::remove_fav_virtual_channel_by_ts_info(int tag, int id, int net_index, int frequency, int polarisation,
                                                 int network_id, int ts_id, int service_id) {
  const int group = favourite_index(id);
  if (group < 0) {
    return -1;
  }
  entry wanted;
  wanted.tag = tag;
  wanted.id = make_identity(net_index, network_id, ts_id, frequency, service_id, polarisation);
  view &cleaned = views.at(first_group_view + group);
  for (int i = 0; i < cleaned.count; ++i) {
    const entry removed = slot(cleaned, i);
    if (!same_entry(removed, wanted)) {
      continue;
    }
    remove_at(cleaned, i);
    for (int left = 0; left < cleaned.count; ++left) {
      entry &lowered = slot(cleaned, left);
      lowered.major -= lowered.major > removed.major ? 1 : 0;
      lowered.favorite_id -= lowered.favorite_id > removed.favorite_id ? 1 : 0;
    }
    break;
  }
  return 0;
}

int model::init_return_channel() {
  history = {};
  history_count = 0;
  kept.distinct_history = true;
  return 0;
}

int model::check_same_return_channel(int tag, int net_index, int network_id, int ts_id, int frequency, int service_id,
                                     int polarisation) {
  entry wanted;
  wanted.tag = tag;
  wanted.id = make_identity(net_index, network_id, ts_id, frequency, service_id, polarisation);
  for (int i = 0; i < history_count; ++i) {
    if (same_entry(history[static_cast<std::size_t>(i)].vch, wanted)) {
      return i;
    }
  }
  return history_count < max_watched ? -1 : -2;
}

int model::add_return_channel(int tag, int net_index, int network_id, int ts_id, int frequency, int service_id,
                              int polarisation) {
  const int vindex = get_vch_index_by_ts_info(tag, net_index, network_id, ts_id, frequency, service_id, polarisation);
  if (vindex < 0) {
    return 0;
  }
  const entry seen = slot(current(), vindex);
  const int listed = check_same_return_channel(tag, net_index, network_id, ts_id, frequency, service_id, polarisation);
  if (listed == 0) {
    return 0;
  }
  kept.distinct_history = kept.distinct_history && seen.id.frequency == static_cast<std::uint32_t>(frequency);
  const auto last_overwritten = history.begin() + (listed > 0 ? listed : max_watched - 1);
  std::move_backward(history.begin(), last_overwritten, last_overwritten + 1);
  history_count += listed == -1 ? 1 : 0;
  history[0] = {selected.use_group_list, selected.service_type, selected.sub_group_id, vindex, tag, net_index, seen};
  return 0;
}

int model::remove_return_channel(int tag, int net_index, int network_id, int ts_id, int frequency, int service_id,
                                 int polarisation) {
  const int listed = check_same_return_channel(tag, net_index, network_id, ts_id, frequency, service_id, polarisation);
  if (listed < 0) {
    return -1;
  }
  --history_count;
  for (int i = listed; i < history_count; ++i) {
    history[static_cast<std::size_t>(i)] = history[static_cast<std::size_t>(i) + 1];
  }
  for (int i = 0; i < history_count; ++i) {
    watched &left = history[static_cast<std::size_t>(i)];
    left.vindex = get_vch_index_by_ts_info(left.vch.tag, left.vch.id.net_index, left.vch.id.network_id,
                                           left.vch.id.ts_id, static_cast<int>(left.vch.id.frequency),
                                           left.vch.id.service_id, left.vch.id.polarisation);
  }
  return listed;
}

}  // namespace model_tests
