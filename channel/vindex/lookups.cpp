// Lookups by position, by number and by transport identity. They walk the view; the first match wins.
#include "channel/vindex/lookups.h"

#include <algorithm>
#include <channel/lookups.h>

#include "channel/identity.h"
#include "channel/log.h"
#include "channel/store/finders.h"
#include "channel/store/view.h"

namespace channel {
namespace {

// The absence of a view is reported in the operation's name.
view require(const view &found, const char *operation) {
  if (!found) {
    LOG_ERROR_AS(operation, " channel_list NULL !! ");
  }
  return found;
}

view require_current_view(const char *operation) { return require(current_view(), operation); }

view require_view(std::int8_t type, const char *operation) { return require(fetch_view(type), operation); }

// A position behind the count is readable as far as the array reaches.
virtual_channel_st *slot_of(const view &searched, int vindex, const char *operation) {
  if (!searched) {
    return nullptr;
  }
  virtual_channel_st *slot = searched.slot(vindex);
  if (slot == nullptr) {
    LOG_ERROR_AS(operation, "vindex %d outside the view\n", vindex);
  }
  return slot;
}

// The first entry that a rule matches; null when there is none, and when there is no view.
template <class Rule>
virtual_channel_st *find_entry(const view &searched, const Rule &matches) {
  if (!searched) {
    return nullptr;
  }
  virtual_channel_st *found = std::find_if(searched.begin(), searched.end(), matches);
  return found != searched.end() ? found : nullptr;
}

std::int16_t index_of(const view &searched, const virtual_channel_st *entry) {
  return static_cast<std::int16_t>(entry != nullptr ? entry - searched.entries : -1);
}

virtual_channel_st *find_number(const view &searched, std::int16_t major, std::int16_t minor, const char *operation) {
  virtual_channel_st *found = find_entry(searched, [=](const virtual_channel_st &entry) {
    return entry.major_ch_num == major && entry.minor_ch_num == minor;
  });
  if (found == nullptr) {
    LOG_ERROR_AS(operation, "Fail to find channel number %d-%d\n", major, minor);
  }
  return found;
}

// The entry at a position of the current view; a position outside it is reported in the operation's name.
const virtual_channel_st *entry_at(std::int16_t vindex, const char *operation) {
  const view current = require_current_view(operation);
  if (!current) {
    return nullptr;
  }
  if (vindex < 0 || vindex >= current.size()) {
    LOG_TRACE_AS(operation, 5, "virtual index = %d\n", vindex);
    return nullptr;
  }
  const virtual_channel_st *entry = current.entries + vindex;
  LOG_TRACE_AS(operation, 5, "vch %d net %d on_id 0x%02x tid 0x%02x freq %ld sid 0x%02x\n", vindex, entry->net_index,
               entry->network_id, entry->ts_id, as_long(entry->frequency), entry->service_id);
  return entry;
}

channel_st *service_at(std::int16_t vindex, const char *operation) {
  const virtual_channel_st *entry = entry_at(vindex, operation);
  return entry != nullptr ? resolve(*entry) : nullptr;
}

}  // namespace

std::int16_t find_in_view(const view &searched, const tagged_identity &id) {
  const auto matches = [&id](const virtual_channel_st &entry) { return same_entry_or_ids(entry, id); };
  return index_of(searched, find_entry(searched, matches));
}

std::int16_t find_in_current_view(const tagged_identity &id) {
  const view current = current_view();
  if (!current) {
    return -1;
  }
  for (const virtual_channel_st &entry : current) {
    LOG_PLAIN(3, "ni(%d-%d) on_id(0x%x-0x%x), ts_id(0x%x-0x%x), freq(%ld-%ld) sid(0x%x-0x%x) polar(%d,%d)\n",
              entry.net_index, id.net_index, entry.network_id, id.network_id, entry.ts_id, id.ts_id,
              as_long(entry.frequency), as_long(id.frequency), entry.service_id, id.service_id, entry.polarisation,
              id.polarisation);
    if (same_entry_any_frequency(entry, id)) {
      return index_of(current, &entry);
    }
  }
  return -1;
}

channel_st *channel_by_vindex(std::int16_t vindex, service_index &index) {
  const virtual_channel_st *entry = entry_at(vindex, "get_channel_by_vindex");
  return entry != nullptr ? index.resolve(*entry) : nullptr;
}

}  // namespace channel

using channel::identity;
using channel::tagged_identity;
using channel::view;

extern "C" {

virtual_channel_st *get_channel_list_vch(void) { return channel::require_current_view(__func__).entries; }

int16_t get_channel_list_number(void) {
  const view current = channel::require_current_view(__func__);
  return current ? current.size() : int16_t{0};
}

// Compatibility: the number of entries, not the largest number; hosts use it as the length of the view.
uint16_t find_max_channel_number(void) {
  const view current = channel::require_current_view(__func__);
  return static_cast<uint16_t>(current ? current.size() : 0);
}

virtual_channel_st *get_vchannel_by_vindex(int16_t vindex) {
  return channel::slot_of(channel::require_current_view(__func__), vindex, __func__);
}

virtual_channel_st *vtype_get_vchannel_by_vindex(int16_t vindex, int8_t type) {
  return channel::slot_of(channel::require_view(type, __func__), vindex, __func__);
}

int16_t get_channel_number(int16_t vindex) {
  const virtual_channel_st *slot = channel::slot_of(channel::require_current_view(__func__), vindex, __func__);
  return slot != nullptr ? slot->major_ch_num : int16_t{-1};
}

int16_t get_channel_minor_number(int16_t vindex) {
  const virtual_channel_st *slot = channel::slot_of(channel::require_current_view(__func__), vindex, __func__);
  return slot != nullptr ? slot->minor_ch_num : int16_t{-1};
}

int16_t get_channel_index(int16_t major) {
  const view current = channel::current_view();
  const virtual_channel_st *found =
      channel::find_entry(current, [major](const virtual_channel_st &entry) { return entry.major_ch_num == major; });
  if (found == nullptr) {
    LOG_ERROR("Fail to find channel number %d\n", major);
  }
  return channel::index_of(current, found);
}

int16_t get_channel_index_by_number(int16_t major, int16_t minor) {
  const view current = channel::current_view();
  return channel::index_of(current, channel::find_number(current, major, minor, __func__));
}

int16_t vtype_get_vindex_by_number(int16_t major, int16_t minor, int8_t type) {
  const view named = channel::fetch_view(type);
  return channel::index_of(named, channel::find_number(named, major, minor, __func__));
}

virtual_channel_st *vtype_get_vch_by_number(int16_t major, int16_t minor, int8_t type) {
  return channel::find_number(channel::fetch_view(type), major, minor, __func__);
}

int16_t get_vch_index_by_service_id(uint16_t service_id) {
  const view current = channel::current_view();
  return channel::index_of(current, channel::find_entry(current, [service_id](const virtual_channel_st &entry) {
                             return entry.service_id == service_id;
                           }));
}

int16_t get_vch_index_by_ts_info(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id, uint32_t frequency,
                                 uint16_t service_id, uint8_t polarisation) {
  return channel::find_in_current_view({{net_index, network_id, ts_id, frequency, service_id, polarisation}, tag});
}

virtual_channel_st *vtype_get_vch_by_ts_info(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id,
                                             uint32_t frequency, uint16_t service_id, uint8_t polarisation,
                                             int8_t type) {
  const tagged_identity id = {{net_index, network_id, ts_id, frequency, service_id, polarisation}, tag};
  return channel::find_entry(channel::fetch_view(type), [&id](const virtual_channel_st &entry) {
    return channel::same_entry_or_tagged_ids(entry, id);
  });
}

int16_t vtype_get_vch_index_by_ts_info(int8_t tag, uint8_t net_index, uint16_t network_id, uint16_t ts_id,
                                       uint32_t frequency, uint16_t service_id, uint8_t polarisation, int8_t type) {
  return channel::find_in_view(channel::fetch_view(type),
                               {{net_index, network_id, ts_id, frequency, service_id, polarisation}, tag});
}

virtual_channel_st *vtype_get_vch_by_frequency(int8_t tag, uint8_t net_index, uint32_t frequency, uint8_t polarisation,
                                               int8_t type) {
  return channel::find_entry(channel::fetch_view(type), [=](const virtual_channel_st &entry) {
    return channel::on_transponder(entry, tag, net_index, frequency, polarisation);
  });
}

channel_st *get_channel(int16_t vindex) { return channel::service_at(vindex, __func__); }

channel_st *get_channel_by_vindex(int16_t vindex) { return channel::service_at(vindex, __func__); }

channel_st *vtype_get_channel_by_vindex(int16_t vindex, int8_t type) {
  if (vindex < 0) {
    return nullptr;
  }
  const virtual_channel_st *entry = channel::slot_of(channel::fetch_view(type), vindex, __func__);
  if (entry == nullptr) {
    return nullptr;
  }
  // Compatibility: "%2x" where the lines of the current view print "%02x"; tools in the field match either.
  LOG_TRACE(5, "vch %d net %d on_id 0x%2x tid 0x%02x freq %ld sid 0x%02x\n", vindex, entry->net_index,
            entry->network_id, entry->ts_id, channel::as_long(entry->frequency), entry->service_id);
  return channel::resolve(*entry);
}
}
