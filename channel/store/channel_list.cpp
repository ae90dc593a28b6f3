// The one channel list, its defaults, and how it is emptied. Records that hang from it are released one at a time.
#include "channel/store/channel_list.h"

#include <array>
#include <channel/store.h>
#include <channel/views.h>
#include <cstring>

#include "channel/log.h"
#include "channel/store/hierarchy.h"
#include "channel/store/release.h"

extern "C" {

int32_t SID_TYPE = 0;
}

namespace channel {

channel_list_st channel_list;

const char *view_name(int code) {
  static constexpr std::array names = {"ALL CH", "TV CH", "RADIO CH", "USER CH"};
  if (code >= 0 && code < static_cast<int>(names.size())) {
    return names[static_cast<std::size_t>(code)];
  }
  return code >= VIEW_FAVOURITE && code <= VIEW_FAVOURITE_LAST ? "FAV CH" : "NONE";
}

const char *group_kind_name(int kind) {
  static constexpr std::array names = {"ALL", "SATELLITE", "GENRE", "PROVIDER", "COUNTRY", "FTACAS", "FAV"};
  return kind >= 0 && kind < static_cast<int>(names.size()) ? names[static_cast<std::size_t>(kind)] : "NONE";
}

}  // namespace channel

using channel::channel_list;

extern "C" {

int init_channel_list(void) {
  std::memset(&channel_list, 0, sizeof channel_list);
  channel_list.version = CHANNEL_LIST_VERSION;
  channel_list.use_tuner = -1;
  channel_list.service_type = SERVICE_TYPE_TV;
  channel_list.net_index = -1;
  channel_list.use_group_list = GROUP_ALL;
  channel_list.sub_group_id = -1;
  channel_list.bouquet_id = 0xFFFF;
  channel::init_lists(channel_list);
  return change_vindex_type(VIEW_ALL);
}

// Compatibility: a list that counts no network is not walked, so that records a host unhooked by hand are not freed.
int reset_channel_list(void) {
  LOG_TRACE(5, "reset channel\n");
  if (channel_list.network_num != 0) {
    for (network_ch_st &network : channel::networks_of(channel_list.network_list)) {
      for (const tp_ch_st &transponder : channel::transponders_of(network)) {
        LOG_TRACE(3, "delete tp_ch_info - rch_num %d\n", transponder.rch_num);
      }
    }
    channel::release_hierarchy(channel_list.network_list);
  }
  return init_channel_list();
}

void destroy_channel_list(void) {
  channel::release_hierarchy(channel_list.network_list);
  std::memset(&channel_list, 0, sizeof channel_list);
}
}
