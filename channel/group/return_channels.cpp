// The history of watched channels, where the promotion channels stand, and limited channels. The limited switch lives
// outside the channel list, as the history does, and is never saved.
#include <channel/return_channels.h>

#include <algorithm>
#include <channel/groups.h>
#include <channel/lookups.h>
#include <iterator>

#include "channel/identity.h"
#include "channel/log.h"
#include "channel/store/view.h"
#include "channel/text.h"
#include "channel/vindex/lookups.h"

namespace channel {
namespace {

std::int16_t history_num;
std::uint8_t limited_switch;

constexpr int not_listed = -1;
constexpr int not_listed_and_full = -2;
constexpr std::uint8_t lifts_every_limit = 1;

// The name that a diagnostic prints for a listed channel; empty when the channel is gone.
auto listed_name(const virtual_channel_st &entry) {
  static constexpr char nameless[sizeof(name_slot_st::text)] = {};
  return entry.rch != nullptr ? name_of(*entry.rch) : field_text(nameless);
}

int find_listed(const tagged_identity &id) {
  for (int index = 0; index < history_num; ++index) {
    if (same_entry(history[index].vch, id)) {
      return index;
    }
  }
  return history_num < MAX_RETURN_CHANNEL ? not_listed : not_listed_and_full;
}

// Moves the entries in front of a place down by one, over whatever stood at the place.
void open_top(int place) { std::move_backward(history, history + place, history + place + 1); }

// Makes room at the top for a channel that is listed at a place, or not listed.
void make_room(int listed, int vindex, const char *operation) {
  if (listed == not_listed_and_full) {
    LOG_TRACE_AS(operation, 2, "return ch count is full.\n");
    open_top(MAX_RETURN_CHANNEL - 1);
  } else if (listed == not_listed) {
    LOG_TRACE_AS(operation, 2, "ch(%d) not exist.\n", vindex);
    open_top(MAX_RETURN_CHANNEL - 1);
    ++history_num;
  } else {
    LOG_TRACE_AS(operation, 2, "ch(%d) already exist index(%d).\n", vindex, listed);
    open_top(listed);
  }
}

}  // namespace
}  // namespace channel

using channel::history;
using channel::history_num;

extern "C" {

void init_return_channel(void) {
  std::fill(std::begin(history), std::end(history), return_channel_st{});
  history_num = 0;
}

return_channel_st *get_return_channel(void) { return history; }

int16_t get_return_channel_num(void) { return history_num; }

return_channel_st *get_return_channel_by_index(int16_t index) {
  if (index < 0 || index >= MAX_RETURN_CHANNEL) {
    LOG_ERROR("index %d outside the history\n", index);
    return nullptr;
  }
  return &history[index];
}

int check_same_return_channel(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency,
                              uint16_t service_id, uint8_t polarisation) {
  const int found = channel::find_listed({{net_index, network_id, ts_id, frequency, service_id, polarisation}, tag});
  if (found >= 0) {
    const virtual_channel_st &listed = history[found].vch;
    LOG_TRACE(2, "param ni(%d), net_id(%d), ti(%d), f(%ld), si(%d), po(%d)\n", net_index, network_id, ts_id,
              channel::as_long(frequency), service_id, polarisation);
    LOG_TRACE(2, "vch ni(%d), net_id(%d), ti(%d), f(%ld), si(%d), po(%d), name(%s)\n", listed.net_index,
              listed.network_id, listed.ts_id, channel::as_long(listed.frequency), listed.service_id,
              listed.polarisation, channel::listed_name(listed).c_str());
  }
  return found;
}

void add_return_channel(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency,
                        uint16_t service_id, uint8_t polarisation) {
  const channel::tagged_identity id = {{net_index, network_id, ts_id, frequency, service_id, polarisation}, tag};
  const int16_t vindex = channel::find_in_current_view(id);
  const virtual_channel_st *entry = vindex >= 0 ? get_vchannel_by_vindex(vindex) : nullptr;
  if (entry == nullptr) {
    LOG_ERROR("Can't find vchannel index(%d).\n", vindex);
    return;
  }
  const int listed = check_same_return_channel(tag, net_index, network_id, ts_id, frequency, service_id, polarisation);
  if (listed == 0) {
    LOG_TRACE(2, "latest ch is same with this ch.\n");
    return;
  }
  channel::make_room(listed, vindex, __func__);
  history[0] = {get_use_group_list(),
                get_current_service_type(),
                get_current_sub_group_id(),
                vindex,
                static_cast<uint8_t>(tag),
                net_index,
                *entry};
  LOG_TRACE(2, "Add Return CH(%d), ma(%d), mi(%d), group(%d), sub_group(%d)\n", vindex, entry->major_ch_num,
            entry->minor_ch_num, history[0].group, history[0].sub_group);
}

int remove_return_channel(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency,
                          uint16_t service_id, uint8_t polarisation) {
  const int listed = check_same_return_channel(tag, net_index, network_id, ts_id, frequency, service_id, polarisation);
  if (listed < 0) {
    return -1;
  }
  CHANNEL_LOG_ENTRY(channel::log_module_history, 2, "ChannelAPI %s:%d >>>>>>remove returh channel. index(%d).\n",
                    __func__, __LINE__, listed);
  std::move(history + listed + 1, history + history_num, history + listed);
  --history_num;
  for (return_channel_st *left = history; left != history + history_num; ++left) {
    left->vindex = channel::find_in_current_view(channel::tagged_identity_of(left->vch));
  }
  return listed;
}

int get_promo_channel_vindex(uint16_t *out, uint16_t *count) {
  LOG_TRACE(5, "\n");
  if (out == nullptr || count == nullptr) {
    LOG_ERROR("out or count is null\n");
    return -1;
  }
  const channel::view promotion = channel::find_view(VIEW_PROMOTION);
  const channel::view all = channel::find_view(VIEW_ALL);
  *count = static_cast<uint16_t>(*promotion.count < 1 ? *promotion.count : promotion.size());
  for (const virtual_channel_st &promoted : promotion) {
    const auto id = channel::identity_of(promoted);
    const auto position = &promoted - promotion.entries;
    // The walk does not stop at a match: the last one counts.
    for (const virtual_channel_st &entry : all) {
      if (channel::same_service(entry, id)) {
        out[position] = static_cast<uint16_t>(&entry - all.entries);
        LOG_TRACE(5, " channel_list.promo_vch[%d].major_ch_num %d\n", static_cast<int>(position),
                  promoted.major_ch_num);
      }
    }
  }
  return 0;
}

int check_limited_channel(const channel_st *rch) {
  if (channel::limited_switch == channel::lifts_every_limit) {
    return 1;
  }
  if (rch == nullptr) {
    LOG_ERROR("channel is null\n");
    return 1;
  }
  return (rch->flag & CHANNEL_FLAG_LOCKED) == 0 ? 1 : 0;
}

uint8_t get_limited_channel_flag(void) { return channel::limited_switch; }

void set_limited_channel_flag(uint8_t value) { channel::limited_switch = value; }
}
