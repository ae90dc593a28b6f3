// Views in the model: clearing, building, appending, inserting, switching and searching.
#include <set>

#include "model.h"
#include "slots.h"

namespace model_tests {
namespace {

constexpr int favourites_begin = 10;

// The keys of a favourite group count from 0 again when one of them occurs twice.
void number_anew(view &group) {
  std::set<int> keys;
  for (int i = 0; i < group.count; ++i) {
    keys.insert(slot(group, i).favorite_id);
  }
  if (static_cast<int>(keys.size()) < group.count) {
    for (int i = 0; i < group.count; ++i) {
      slot(group, i).favorite_id = i;
    }
  }
}

}  // namespace

int model::append(int type, int net_index, int network_id, int ts_id, int frequency, int service_id, int polarisation,
                  int major, int tag) {
  view *extended = find_view(type);
  if (extended == nullptr || extended->count >= capacity_of(type)) {
    return -1;
  }
  entry added;
  added.tag = tag;
  added.major = major;
  added.id = make_identity(net_index, network_id, ts_id, frequency, service_id, polarisation);
  const service *found = resolve(added.id);
  added.rch = found != nullptr ? found->serial : 0;
  push(*extended, added);
  kept.distinct_favourites = kept.distinct_favourites && type < favourites_begin;
  return 0;
}

int model::insert(int type, int vindex, int net_index, int network_id, int ts_id, int frequency, int service_id,
                  int polarisation, int major, int tag) {
  view *extended = find_view(type);
  if (extended == nullptr || vindex < 0 || vindex >= extended->count || extended->count >= capacity_of(type)) {
    return -1;
  }
  append(type, net_index, network_id, ts_id, frequency, service_id, polarisation, major, tag);
  const entry added = extended->slots[static_cast<std::size_t>(extended->count - 1)];
  shift(*extended, vindex + 1, vindex, extended->count - 1 - vindex);
  slot(*extended, vindex) = added;
  return 0;
}

int model::insert_user_vch_vindex(int all_index) {
  if (all_index == -1) {
    return 0;
  }
  view &user = views.at(3);
  if (all_index < 0 || all_index >= capacity_of(0)) {
    return -1;
  }
  const entry copied = slot(views.at(0), all_index);
  for (int i = 0; i < user.count; ++i) {
    if (same_service(slot(user, i).id, copied.id)) {
      return -1;
    }
  }
  push(user, copied);
  return 0;
}

int model::init_vindex(int type) {
  if (view *cleared = find_view(type); cleared != nullptr) {
    *cleared = {};
  }
  return 0;
}

int model::create_vindex_type(int type, int net_filter) {
  view &all = views.at(0);
  if (all.count == 0 || (type != 1 && type != 2)) {
    return -1;
  }
  view &built = views.at(type);
  built = {};
  for (int i = 0; i < all.count; ++i) {
    const entry &taken = slot(all, i);
    const service *shown = service_of(taken.rch);
    if (shown != nullptr && shown->service_type == type && (net_filter == -1 || taken.tag == net_filter)) {
      push(built, taken);
    }
  }
  return built.count == 0 ? -1 : 0;
}

int model::change_vindex_type(int type) {
  const bool refused_when_empty = type == 1 || type == 2 || type == 3 || type == 5;
  view *chosen = find_view(type);
  if (chosen == nullptr || type == 4) {
    selected.current = 0;
    selected.vch_type = type;
    selected.use_group_list = 0;
    return -1;
  }
  if (refused_when_empty && chosen->count == 0) {
    return -1;
  }
  selected.current = type;
  selected.vch_type = type;
  if (type <= 2) {
    selected.use_group_list = 0;
  }
  if (type == 0) {
    selected.ch_type = 0;
  } else if (type <= 2) {
    selected.net_index = -1;
    selected.service_type = type;
  } else if (type >= favourites_begin) {
    selected.use_group_list = 6;
    selected.ch_type = type;
    selected.sub_group_id = slot(favourites, type - favourites_begin).id;
    number_anew(*chosen);
  }
  return chosen->count == 0 ? -4 : 0;
}

int model::get_vch_index_by_ts_info(int tag, int net_index, int network_id, int ts_id, int frequency, int service_id,
                                    int polarisation) {
  const identity id = make_identity(net_index, network_id, ts_id, frequency, service_id, polarisation);
  for (int i = 0; i < current().count; ++i) {
    const entry &searched = slot(current(), i);
    if (searched.tag == tag && same_ids(searched.id, id) && searched.id.polarisation == polarisation &&
        (frequency == 0 || same_frequency(searched.id.frequency, id.frequency))) {
      return i;
    }
  }
  return -1;
}

int model::vtype_get_vch_index_by_ts_info(int tag, int net_index, int network_id, int ts_id, int frequency,
                                          int service_id, int polarisation, int type) {
  const identity id = make_identity(net_index, network_id, ts_id, frequency, service_id, polarisation);
  view *named = find_view(type);
  for (int i = 0; named != nullptr && i < named->count; ++i) {
    const entry &searched = slot(*named, i);
    if (frequency == 0 ? same_ids(searched.id, id) : searched.tag == tag && same_service(searched.id, id)) {
      return i;
    }
  }
  return -1;
}

}  // namespace model_tests
