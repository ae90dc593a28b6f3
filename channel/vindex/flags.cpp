// The flag byte of real channels, whether zapping may stop at a position, and renaming.
#include <channel/flags.h>

#include <algorithm>
#include <channel/lookups.h>
#include <channel/store.h>
#include <cstddef>
#include <iterator>

#include "channel/identity.h"
#include "channel/log.h"
#include "channel/store/channel_list.h"
#include "channel/store/finders.h"
#include "channel/store/service_index.h"
#include "channel/store/view.h"
#include "channel/vindex/lookups.h"

using channel::channel_list;

namespace channel {
namespace {

// What the two getters answer when there is no channel; a host never sets every bit at once.
constexpr std::uint8_t no_channel = 255;

void apply(channel_st &service, std::uint8_t bits, bool set) {
  service.flag = static_cast<std::uint8_t>(set ? service.flag | bits : service.flag & ~bits);
}

int apply_if_found(channel_st *service, std::uint8_t bits, bool set) {
  if (service == nullptr) {
    return -1;
  }
  apply(*service, bits, set);
  return 0;
}

// Compatibility: the ALL view's count bounds the walk over the current view, whichever that is.
int apply_to_current_view(std::uint8_t bits, bool set) {
  const std::int16_t positions = find_view(VIEW_ALL).size();
  if (positions == 0) {
    return 0;
  }
  service_index index;
  for (std::int16_t vindex = 0; vindex < positions; ++vindex) {
    apply_if_found(channel_by_vindex(vindex, index), bits, set);
  }
  return 0;
}

struct new_name {
  const char *text;
  std::int16_t length;
};

// The slot whose text was replaced, or null: no channel, a slot or name that is refused, or a length below 1, which
// clears the text.
name_slot_st *rename(channel_st *service, std::uint8_t slot, const new_name &name, const char *operation) {
  if (service == nullptr) {
    return nullptr;
  }
  if (slot >= std::size(service->name)) {
    LOG_ERROR_AS(operation, "name slot %d unknown\n", slot);
    return nullptr;
  }
  if (name.text == nullptr && name.length >= 1) {
    LOG_ERROR_AS(operation, "name is null\n");
    return nullptr;
  }
  name_slot_st &renamed = service->name[slot];
  std::ranges::fill(renamed.text, '\0');
  if (name.length < 1) {
    return nullptr;
  }
  std::copy_n(name.text, std::min<std::size_t>(static_cast<std::size_t>(name.length), sizeof renamed.text),
              renamed.text);
  return &renamed;
}

}  // namespace
}  // namespace channel

extern "C" {

int set_channel_flag(uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency, uint16_t service_id,
                     uint8_t polarisation, uint8_t bits, int set) {
  if (channel_list.network_num == 0) {
    return 0;
  }
  const auto found = channel::locate({net_index, network_id, ts_id, frequency, service_id, polarisation},
                                     channel::misses_of{__func__});
  return channel::apply_if_found(found.service, bits, set != 0) == 0 ? 1 : 0;
}

int set_channel_flag_by_bit(uint8_t bits) { return channel::apply_to_current_view(bits, true); }

int clear_channel_flag_by_bit(uint8_t bits) { return channel::apply_to_current_view(bits, false); }

int set_channel_flag_by_vindex(int16_t vindex, uint8_t bits, int set) {
  return channel::apply_if_found(get_channel_by_vindex(vindex), bits, set != 0);
}

uint8_t get_channel_flag_by_vindex(int16_t vindex) {
  const channel_st *service = get_channel_by_vindex(vindex);
  return service != nullptr ? service->flag : channel::no_channel;
}

int vtype_set_channel_flag_by_vindex(int16_t vindex, uint8_t bits, int set, int8_t type) {
  return channel::apply_if_found(vtype_get_channel_by_vindex(vindex, type), bits, set != 0);
}

uint8_t vtype_get_channel_flag_by_vindex(int16_t vindex, int8_t type) {
  const channel_st *service = vtype_get_channel_by_vindex(vindex, type);
  return service != nullptr ? service->flag : channel::no_channel;
}

int check_skip_channel_index(int16_t vindex) {
  const channel_st *service = get_channel_by_vindex(vindex);
  return service != nullptr && (service->flag & CHANNEL_FLAG_SKIP) != 0 ? 1 : 0;
}

int check_available_channel(int16_t vindex) {
  const channel::view current = channel::current_view();
  if (!current) {
    LOG_ERROR(" channel_list NULL !! ");
    return 0;
  }
  if (get_channel_by_vindex(vindex) == nullptr) {
    LOG_TRACE(5, "channel is null vindex %d\n", vindex);
    return 0;
  }
  const virtual_channel_st &entry = current.entries[vindex];
  if (entry.major_ch_num == 0 && entry.minor_ch_num == 0) {
    LOG_ERROR("major channel number is 0(vindex %d )\n", vindex);
    return 0;
  }
  return 1;
}

int rename_channel_info(uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency, uint16_t service_id,
                        uint8_t polarisation, uint8_t slot, const char *name, int16_t length) {
  channel_st *service = get_channel_st(net_index, network_id, ts_id, frequency, service_id, polarisation);
  name_slot_st *renamed = channel::rename(service, slot, {name, length}, __func__);
  if (renamed == nullptr) {
    return -1;
  }
  renamed->name_len =
      static_cast<uint16_t>(std::min<std::size_t>(static_cast<std::size_t>(length), sizeof renamed->text));
  return 0;
}

// Compatibility: a rename by position changes the text alone; hosts read the length that the channel came with.
int vtype_rename_channel_info(int16_t vindex, uint8_t slot, const char *name, int16_t length, int8_t type) {
  channel_st *service = vtype_get_channel_by_vindex(vindex, type);
  return channel::rename(service, slot, {name, length}, __func__) != nullptr ? 0 : -1;
}
}
