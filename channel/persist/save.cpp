// Writes the list to a channel file, in place: the header, then every network with its transponders and their channels,
// in list order. Counts are reported when they are wrong, never repaired.
#include <channel/files.h>

#include "channel/log.h"
#include "channel/persist/data_path.h"
#include "channel/persist/file.h"
#include "channel/persist/image.h"
#include "channel/store/channel_list.h"
#include "channel/store/hierarchy.h"
#include "channel/store/memory.h"

namespace channel::persist {
namespace {

constexpr char saving[] = "save_channel_internal";

template <class Record>
bool write_record(file &target, const Record &record) {
  image<Record> bytes{};
  to_image(record, bytes);
  return target.write(bytes.data(), bytes.size());
}

using header_image = image<channel_list_st>;

bool write_header(file &target, const data_path &path, header_image &header) {
  to_image(channel_list, header);
  if (!target.write(header.data(), header.size())) {
    LOG_ERROR_AS(saving, "Fail to write the channel_list to '%s'\n", path.c_str());
    return false;
  }
  LOG_TRACE_AS(saving, 2, " sizeof(struct channel_list_st) %d \n", list_image_size);
  return true;
}

bool write_services(file &target, const data_path &path, tp_ch_st &transponder) {
  int count = 0;
  for (const channel_st &service : services_of(transponder)) {
    if (!write_record(target, service)) {
      LOG_ERROR_AS(saving, "Fail to write the rch_info to '%s'\n", path.c_str());
      return false;
    }
    if (++count > transponder.rch_num) {
      LOG_ERROR_AS(saving, "nindex %d, on_id 0x%02x, ts_id 0x%02x, s_id 0x%02x\n", service.net_index,
                   service.network_id, service.ts_id, service.service_id);
    }
  }
  if (count != transponder.rch_num) {
    LOG_ERROR_AS(saving, "tp_num = %d, tp_ch_info->rch_num = %d \n", count, transponder.rch_num);
  }
  return true;
}

bool write_transponders(file &target, const data_path &path, network_ch_st &network) {
  for (tp_ch_st &transponder : transponders_of(network)) {
    if (!write_record(target, transponder)) {
      LOG_ERROR_AS(saving, "Fail to write the tp_ch_info to '%s'\n", path.c_str());
      return false;
    }
    LOG_TRACE_AS(saving, 2, " sizeof(struct tp_ch_st) %d \n", transponder_image_size);
    if (!write_services(target, path, transponder)) {
      return false;
    }
  }
  return true;
}

// Compatibility: a network that cannot be written is reported in the transponder's words, which tools in the field
// match.
bool write_networks(file &target, const data_path &path) {
  for (network_ch_st &network : networks_of(channel_list.network_list)) {
    if (!write_record(target, network)) {
      LOG_ERROR_AS(saving, "Fail to write the tp_ch_info to '%s'\n", path.c_str());
      return false;
    }
    LOG_TRACE_AS(saving, 2, " sizeof(struct network_ch_st) %d \n", network_image_size);
    if (!write_transponders(target, path, network)) {
      return false;
    }
  }
  return true;
}

// A write error may show only when the buffered bytes go out.
bool reached_the_file(bool went_out, const data_path &path) {
  if (!went_out) {
    LOG_ERROR_AS(saving, "Fail to write the channel_list to '%s'\n", path.c_str());
  }
  return went_out;
}

bool write_list(file &target, const data_path &path, header_image &header) {
  return write_header(target, path, header) && write_networks(target, path) && reached_the_file(target.flush(), path);
}

void print_save_status() {
  LOG_TRACE_AS(saving, 2, "#######################\n");
  LOG_PLAIN(2, "channel list version : %d\n", channel_list.version);
  LOG_PLAIN(2, "save \tservice_type : %d\n", channel_list.service_type);
  LOG_PLAIN(2, "save \tuse_group_list : '%s'\n", group_kind_name(channel_list.use_group_list));
  LOG_PLAIN(2, "save \tbouquet : %d\n", channel_list.bouquet_id);
  LOG_PLAIN(2, "save \toriginal channel number : %d\n", channel_list.vnumber);
  LOG_PLAIN(2, "save \ttv channel number : %d\n", channel_list.tv_vnumber);
  LOG_PLAIN(2, "save \tradio channel number : %d\n", channel_list.radio_vnumber);
  LOG_PLAIN(2, "save \tuser channel number : %d\n", channel_list.user_vnumber);
  LOG_PLAIN(2, "save \tvch_type : '%s'\n", view_name(channel_list.vch_type));
  LOG_PLAIN(2, "save \tpromotion channel number : %d\n", channel_list.promo_vnumber);
  LOG_TRACE_AS(saving, 2, "#######################\n");
}

int save_channel_internal(const char *name) {
  const data_path path(name);
  const int current_count = channel_list.cur_vnumber != nullptr ? *channel_list.cur_vnumber : 0;
  LOG_TRACE_AS(saving, 2, "(%s)\n", path.c_str());
  LOG_TRACE_AS(saving, 2, "          SAVE CHANNEL       \n");
  LOG_TRACE_AS(saving, 2, "vch_type : '%s'\tchannel list (%s) - %d channels\n", view_name(channel_list.vch_type),
               path.c_str(), current_count);
  // Asked for before the file is truncated: when there is no memory, the file of the last save is still whole.
  const transient<header_image> header(allocate_record<header_image>());
  file target(path.to_open(), "w+");
  if (!target.is_open()) {
    LOG_ERROR_AS(saving, "Fail to open '%s'\n", path.c_str());
    return 0;
  }
  LOG_TRACE_AS(saving, 2, "\n\t\t NETWORK LIST : %d\n", channel_list.network_num);
  bool saved = write_list(target, path, *header);
  if (saved) {
    print_save_status();
  }
  const bool closed = target.close();
  saved = saved && reached_the_file(closed, path);
  door->sync();
  return saved ? 1 : 0;
}

}  // namespace
}  // namespace channel::persist

extern "C" {

int save_channel(const char *name) {
  if (name == nullptr) {
    LOG_ERROR("name is null\n");
    return 0;
  }
  return channel::persist::save_channel_internal(name);
}
}
