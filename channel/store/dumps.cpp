// Dumps for developers. Each line is a write of its own and tests the level again, so that a level lowered by another
// module cuts a dump short. Sizes are those of the channel file on every target.
#include "channel/store/dumps.h"

#include <channel/dumps.h>

#include "channel/log.h"
#include "channel/store/channel_list.h"
#include "channel/store/group_table.h"
#include "channel/store/hierarchy.h"
#include "channel/store/image_sizes.h"
#include "channel/store/service_index.h"
#include "channel/store/view.h"
#include "channel/text.h"

// Every line of a dump.
#define PRINT(...) LOG_PLAIN(::channel::dump_level, __VA_ARGS__)

#define RULE_10(sign) sign sign sign sign sign sign sign sign sign sign
#define RULE_74(sign) \
  RULE_10(sign)       \
  RULE_10(sign) RULE_10(sign) RULE_10(sign) RULE_10(sign) RULE_10(sign) RULE_10(sign) sign sign sign sign "\n"

namespace channel {
namespace {

constexpr int dump_level = 2;

const char *polarisation_letter(const virtual_channel_st &entry) { return entry.polarisation != 0 ? "V" : "H"; }

const char *satellite_name(const virtual_channel_st &entry) { return entry.net_index == 'U' ? "JSAT3" : "JSAT4"; }

void print_transponder(const tp_ch_st &transponder) {
  PRINT(RULE_74("="));
  PRINT("\t\t * frequency: %ld\n", as_long(transponder.frequency));
  PRINT("\t\t * rech_num: %d\n", transponder.rch_num);
  PRINT(RULE_74("="));
}

void print_entry(const virtual_channel_st &entry) {
  PRINT("%d,", entry.major_ch_num);
  PRINT("\t%ld,", as_long(entry.frequency));
  PRINT("\t%s,", polarisation_letter(entry));
  PRINT("\t%s,", satellite_name(entry));
  PRINT("\t0x%04x,", entry.network_id);
  PRINT("\t0x%04x,", entry.ts_id);
  PRINT("\t0x%04x\n", entry.service_id);
}

void print_favourite_group(const group_st &group, int index, const view &entries, bool shows_entries) {
  PRINT("\t\t=================== %d ====================================\n", index);
  PRINT("\t\t * index: %d\n", index);
  PRINT("\t\t * id: %d\n", group.id);
  PRINT("\t\t * vnumber: %d\n", *entries.count);
  PRINT("\t\t * name: %s\n", name_of(group).c_str());
  PRINT("\t\t * name_len: %d\n", group.name_len);
  PRINT("\t\t=========================================================\n");
  if (shows_entries) {
    for (const virtual_channel_st &entry : entries) {
      PRINT("\t\t * major: %d-%d\n", entry.major_ch_num, entry.minor_ch_num);
    }
  }
}

}  // namespace

void print_list_header(const channel_list_st &list, long version) {
  PRINT("********************************   CHANNEL LIST    *****************************\n");
  PRINT("\t\t * version: %ld\n", version);
  PRINT("\t\t * bouquet_id: %d\n", list.bouquet_id);
  PRINT("\t\t * vch_type: '%s'\n", view_name(list.vch_type));
  PRINT("\t\t * network_num: %d\n", list.network_num);
  PRINT(RULE_74("*"));
}

void print_network(const network_ch_st &network) {
  PRINT(RULE_74("+"));
  PRINT("\t\t * net_index: %d\n", network.net_index);
  PRINT("\t\t * network_id: %d\n", network.network_id);
  PRINT("\t\t * network_name: %s\n", name_of(network).c_str());
  PRINT("\t\t * tp_num: %d\n", network.tp_num);
  PRINT(RULE_74("+"));
}

void print_load_settings(const channel_list_st &list) {
  PRINT("load \tservice_type : %d\n", list.service_type);
  PRINT("load \tuse_group_list : '%s'\n", group_kind_name(list.use_group_list));
  PRINT("load \tbouquet : %d\n", list.bouquet_id);
  PRINT("load \tnet_index : %d\n", list.net_index);
  PRINT("load \toriginal channel number : %d\n", list.vnumber);
  PRINT("load \ttv channel number : %d\n", list.tv_vnumber);
  PRINT("load \tradio channel number : %d\n", list.radio_vnumber);
  PRINT("load \tuser channel number : %d\n", list.user_vnumber);
  PRINT("load \tvch_type : '%s'\n", view_name(list.vch_type));
  PRINT("load \tpromotion channel number : %d\n", list.promo_vnumber);
}

void print_load_status(const char *operation, const channel_list_st &list) {
  LOG_TRACE_AS(operation, 2, "#######################\n");
  PRINT(" channel list version : %d\n", list.version);
  print_load_settings(list);
  LOG_TRACE_AS(operation, 2, "#######################\n");
}

}  // namespace channel

using channel::channel_list;

extern "C" {

void channel_version_info(void) {
  constexpr long all_channels = long{channel::service_image_size} * MAX_CHANNEL;
  constexpr long list_size = channel::list_image_size;
  PRINT("\t\tMAX_CHANNEL\t\t%d\n", MAX_CHANNEL);
  PRINT("\t\tFAV GROUP\t\t%d\n", MAX_FAV);
  PRINT("\t\tFAV\t\t\t%d\n", MAX_FAV_NUM);
  PRINT("\t\tchannel list version : %d\n", channel_list.version);
  PRINT("\t\tchannel_st (%ld) * %d  : %ld\n", long{channel::service_image_size}, MAX_CHANNEL, all_channels);
  PRINT("\t\tchannel_list_st (%ld) + channel_st %ld  : %ld\n", list_size, all_channels, list_size + all_channels);
}

void print_channel_list(void) {
  channel::print_list_header(channel_list, channel_list.version);
  for (network_ch_st &network : channel::networks_of(channel_list.network_list)) {
    channel::print_network(network);
    for (const tp_ch_st &transponder : channel::transponders_of(network)) {
      channel::print_transponder(transponder);
    }
  }
}

void print_channel_info(const channel_st *rch) {
  if (rch == nullptr) {
    return;
  }
  PRINT(RULE_74("-"));
  PRINT("\t\t + name: %s\n", channel::name_of(*rch).c_str());
  PRINT("\t\t + freq: %lld\n", static_cast<long long>(rch->frequency));
  PRINT("\t\t + polarisation: %d\n", rch->polarisation);
  PRINT("\t\t + service_id: %02x\n", rch->service_id);
  PRINT("\t\t + source type: %d\n", rch->source_type);
  PRINT("\t\t + service type: %d\n", rch->service_type);
  PRINT("\t\t + pmt_pid: %02x(%d)\n", rch->pmt_pid, rch->pmt_pid);
  PRINT("\t\t + pcr_pid: %02x(%d)\n", rch->pcr_pid, rch->pcr_pid);
  PRINT("\t\t + video_pid: %02x(%d)\n", rch->video_pid, rch->video_pid);
  PRINT("\t\t + video_tag: %02x(%d)\n", rch->video_tag, rch->video_tag);
  PRINT("\t\t + audio_pid: %02x(%d)\n", rch->audio_pid, rch->audio_pid);
  PRINT("\t\t + audio_tag: %02x(%d)\n", rch->audio_tag, rch->audio_tag);
  PRINT(RULE_74("-"));
}

void print_channel_status(void) { channel::print_load_status(__func__, channel_list); }

// Each entry is resolved before its line for the diagnostics of the lookup alone, which are at level 2 or above too.
void print_virtual_channel_list(int8_t type) {
  const channel::view listed = channel::fetch_view(type);
  if (!listed || verbosity_map[channel::log_module] < channel::dump_level) {
    return;
  }
  PRINT("ch_number,\tfrequency,\tpolarisationt,\tnet_index,\tnetwork_id,\ttransport_id,\tservice_id\n");
  channel::service_index index;
  for (const virtual_channel_st &entry : listed) {
    static_cast<void>(index.resolve(entry));
    channel::print_entry(entry);
  }
}

int print_group_info(const group_st *groups, int16_t count) {
  if (groups == nullptr && count > 0) {
    LOG_ERROR("groups is null\n");
    return -1;
  }
  for (int index = 0; index < count; ++index) {
    LOG_TRACE(2, "| %d |id %d |name %s |\n", index, groups[index].id, channel::name_of(groups[index]).c_str());
  }
  return 0;
}

void print_fav_list(int show_channels) {
  PRINT("********************************   FAVORITE LIST    *****************************\n");
  for (const group_st &group : channel::favourite_table()) {
    if (group.name_len != 0) {
      const auto index = static_cast<int>(&group - channel_list.favorite_group);
      channel::print_favourite_group(group, index, channel::find_view(VIEW_FAVOURITE + index), show_channels != 0);
    }
  }
  PRINT(RULE_74("*"));
}

void print_provider_info(void) {
  PRINT("=================== PROVIDER LIST : %d =======================\n", channel_list.provider_num);
  for (const group_st &provider : channel::provider_table()) {
    PRINT("\t\t + id : %d name: %s len : %d \n", provider.id, channel::name_of(provider).c_str(), provider.name_len);
  }
}
}
