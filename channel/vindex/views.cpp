// The numbered views: clearing, building from the ALL view, inserting, and which one is current.
#include <channel/views.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "channel/identity.h"
#include "channel/log.h"
#include "channel/store/channel_list.h"
#include "channel/store/finders.h"
#include "channel/store/hierarchy.h"
#include "channel/store/view.h"

using channel::channel_list;

extern "C" {

channel_list_st *get_channel_list(void) { return &channel_list; }

int8_t get_vindex_type(void) { return static_cast<int8_t>(channel_list.vch_type); }

int8_t get_ch_type(void) { return channel_list.ch_type; }

void set_bouquet_id(uint16_t bouquet_id) { channel_list.bouquet_id = bouquet_id; }

uint16_t get_bouquet_id(void) { return channel_list.bouquet_id; }

void CHAPI_set_use_tuner(int8_t use_tuner) { channel_list.use_tuner = use_tuner; }

int8_t CHAPI_get_use_tuner(void) { return channel_list.use_tuner; }

int8_t get_channel_list_net_index(void) { return channel_list.net_index; }

virtual_channel_st *get_virtual_channel_st(int8_t type) { return channel::find_view_as(__func__, type).entries; }

int16_t *get_virtual_channel_vnumber(int8_t type) { return channel::find_view_as(__func__, type).count; }

int init_vindex(int8_t type) {
  const channel::view cleared = channel::find_view(type);
  if (!cleared) {
    LOG_ERROR("unknown vch_type=%d\n", type);
    return 0;
  }
  *cleared.count = 0;
  channel::clear_entries(cleared.entries, cleared.entries + cleared.capacity);
  return 0;
}
}

namespace channel {
namespace {

// False when an entry did not fit any more.
bool take_services(const view &all, const view &target, std::uint8_t service_type, std::int8_t net_filter) {
  const auto is_taken = [=](const virtual_channel_st &entry) {
    return entry.rch != nullptr && entry.rch->service_type == service_type &&
           (net_filter == -1 || entry.vch_tag == net_filter);
  };
  return std::all_of(all.begin(), all.end(),
                     [&](const virtual_channel_st &entry) { return !is_taken(entry) || target.append(entry); });
}

}  // namespace
}  // namespace channel

extern "C" {

int create_vindex_type(int8_t type, int8_t net_filter) {
  const channel::view all = channel::fetch_view(VIEW_ALL);
  if (all.size() == 0) {
    return -1;
  }
  if (type != VIEW_TV && type != VIEW_RADIO) {
    LOG_ERROR("Can't find service_type %d \n", type);
    return -1;
  }
  static_assert(VIEW_TV == int{SERVICE_TYPE_TV} && VIEW_RADIO == int{SERVICE_TYPE_RADIO});
  init_vindex(type);
  const channel::view target = channel::find_view(type);
  if (!channel::take_services(all, target, static_cast<uint8_t>(type), net_filter)) {
    LOG_ERROR("view is full, %d entries\n", target.capacity);
    return -1;
  }
  if (target.size() == 0) {
    LOG_ERROR("Can not find 'service_type %d \n", type);
    return -1;
  }
  LOG_TRACE(2, " create des_vnumber %d \n", target.size());
  return 0;
}
}

namespace channel {
namespace {

constexpr int chosen_but_empty = -4;

#define BANNER "+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=\n"

void make_current(const view &chosen, int code) {
  channel_list.cur_vch = chosen.entries;
  channel_list.cur_vnumber = chosen.count;
  channel_list.vch_type = static_cast<std::int16_t>(code);
}

bool has_duplicate_favourite_id(const view &group, const char *operation) {
  std::array<bool, 256> seen{};
  for (const virtual_channel_st &entry : group) {
    LOG_WARNING_AS(operation, "channel_list.vch[i]->favorite_id : %d, channel_list.vch[i]->service_id : %d\n",
                   entry.favorite_id, entry.service_id);
    if (std::exchange(seen[entry.favorite_id], true)) {
      return true;
    }
  }
  return false;
}

// An empty favourite group becomes current all the same: the user has to see that it is empty.
void make_favourite_current(const view &chosen, int code, const char *operation) {
  const int group = code - VIEW_FAVOURITE;
  if (chosen.size() < 1) {
    LOG_WARNING_AS(operation, "channel_list.favorite_vnumber[%d] %d  \n", group, *chosen.count);
  }
  make_current(chosen, code);
  channel_list.use_group_list = GROUP_FAV;
  channel_list.sub_group_id = channel_list.favorite_group[group].id;
  channel_list.ch_type = static_cast<std::int8_t>(code);
  if (has_duplicate_favourite_id(chosen, operation)) {
    LOG_WARNING_AS(operation, "Need Fav_id Resorting.\n");
    for (virtual_channel_st &entry : chosen) {
      entry.favorite_id = static_cast<std::uint8_t>(&entry - chosen.entries);
    }
  }
}

// Makes a view current, with the settings that the choice brings. USER and promotion bring none: the settings stay
// those of the list that they were made from.
void choose(const view &chosen, std::int8_t code, const char *operation) {
  if (code >= VIEW_FAVOURITE) {
    make_favourite_current(chosen, code, operation);
    return;
  }
  make_current(chosen, code);
  if (code == VIEW_ALL) {
    channel_list.use_group_list = GROUP_ALL;
    channel_list.ch_type = 0;
  } else if (code == VIEW_TV || code == VIEW_RADIO) {
    channel_list.net_index = -1;
    channel_list.use_group_list = GROUP_ALL;
    channel_list.service_type = code;
  }
}

void print_choice(const char *operation) {
  LOG_PLAIN(2, BANNER);
  LOG_TRACE_AS(operation, 2, "\t USE LIST CHANGE CHANNEL LIST : %d  type('%s') \n", channel_list.service_type,
               view_name(channel_list.vch_type));
  LOG_PLAIN(2, BANNER);
}

// The views that are refused when empty, and what their count is called.
const char *refused_when_empty(int code) {
  static constexpr std::array<const char *, VIEW_PROMOTION + 1> counts = {
      nullptr, "tv_vnumber", "radio_vnumber", "user_vnumber", nullptr, "promo_vnumber"};
  const auto index = static_cast<std::size_t>(code);
  return index < counts.size() ? counts[index] : nullptr;
}

// The entry that a host passes as the words of its fields. Its pointer is never taken from there.
virtual_channel_st entry_of(const std::array<std::uint32_t, 5> &words) {
  virtual_channel_st entry = {};
  std::memcpy(&entry, words.data(), sizeof words);
  entry.rch = resolve(entry);
  return entry;
}

void insert_entry(const view &target, int position, const virtual_channel_st &entry) {
  std::move_backward(target.begin() + position, target.end(), target.end() + 1);
  target.entries[position] = entry;
  *target.count = static_cast<std::int16_t>(target.size() + 1);
}

}  // namespace
}  // namespace channel

extern "C" {

int change_vindex_type(int8_t type) {
  const channel::view chosen = channel::find_view(type);
  if (!chosen || type == VIEW_WORK) {
    // Compatibility: the code is stored although the ALL view is used; hosts rely on reading their code back.
    channel::make_current(channel::find_view(VIEW_ALL), type);
    channel_list.use_group_list = GROUP_ALL;
    LOG_ERROR("Unknown vch_type=%d", type);
    return -1;
  }
  if (const char *count_name = channel::refused_when_empty(type); count_name != nullptr && chosen.size() < 1) {
    LOG_WARNING("channel_list.%s %d \n", count_name, *chosen.count);
    return -1;
  }
  channel::choose(chosen, type, __func__);
  if (chosen.size() == 0) {
    return channel::chosen_but_empty;
  }
  channel::print_choice(__func__);
  return 0;
}

int insert_vch_vindex_type(uint32_t w0, uint32_t w1, uint32_t w2, uint32_t w3, uint32_t w4, uint32_t w5, int16_t vindex,
                           int8_t type) {
  static_cast<void>(w5);
  const channel::view target = channel::find_view_as("get_virtual_channel_st", type);
  if (!target) {
    LOG_ERROR("Fail to find vch\n");
    return -1;
  }
  if (vindex < 0) {
    LOG_ERROR("vindex is small than zero\n");
    return -1;
  }
  // Compatibility: appending is refused as well; hosts append to a view by writing its array.
  if (vindex >= target.size()) {
    LOG_ERROR("vindex is so big %d total %d\n", vindex, *target.count);
    return -1;
  }
  if (target.is_full()) {
    LOG_ERROR("view is full, %d entries\n", target.capacity);
    return -1;
  }
  channel::insert_entry(target, vindex, channel::entry_of({w0, w1, w2, w3, w4}));
  return 0;
}

int insert_user_vch_vindex(int16_t all_index) {
  if (all_index == -1) {
    return 0;
  }
  const virtual_channel_st *entry = channel::find_view(VIEW_ALL).slot(all_index);
  if (entry == nullptr) {
    LOG_ERROR("vindex %d outside the view\n", all_index);
    return -1;
  }
  const channel::view user = channel::find_view(VIEW_USER);
  const auto is_same = [id = channel::identity_of(*entry)](const virtual_channel_st &other) {
    return channel::same_service(other, id);
  };
  if (std::any_of(user.begin(), user.end(), is_same)) {
    LOG_TRACE(5, "same - %d\n", all_index);
    return -1;
  }
  if (!user.append(*entry)) {
    LOG_ERROR("view is full, %d entries\n", user.capacity);
    return -1;
  }
  return 0;
}
}
