// Replaces the list by the contents of a channel file. A load always starts from an initialised list; a file that ends
// early leaves one.
#include <channel/dumps.h>
#include <channel/files.h>
#include <channel/groups.h>
#include <channel/sorting.h>
#include <channel/store.h>
#include <channel/views.h>
#include <cstdio>

#include "channel/log.h"
#include "channel/persist/counts.h"
#include "channel/persist/data_path.h"
#include "channel/persist/image.h"
#include "channel/persist/record_reader.h"
#include "channel/store/channel_list.h"
#include "channel/store/dumps.h"
#include "channel/store/hierarchy.h"
#include "channel/store/links.h"
#include "channel/store/view.h"
#include "channel/text.h"

namespace channel::persist {
namespace {

constexpr char loading[] = "load_channel_internal";
constexpr int unopened = 1;
constexpr int short_file = -1;
constexpr std::uint8_t keep_file_order = 255;

// What the walk over a channel file says, and where it stopped: a debugger finds the failing read in the marker.
class channel_file_reader {
 public:
  explicit channel_file_reader(const data_path &path) : path_(path.c_str()) {}

  void short_header(int size) {
    LOG_ERROR_AS(loading, "Fail to read the channel_list to '%s' size %d \n", path_, size);
    mark(__LINE__);
  }
  void short_network() {
    LOG_ERROR_AS(loading, "Fail to read the channel_list to '%s'\n", path_);
    mark(__LINE__);
  }
  void short_transponder() {
    LOG_ERROR_AS(loading, "Fail to read the channel_list to '%s'\n", path_);
    mark(__LINE__);
  }
  void short_service() {
    LOG_ERROR_AS(loading, "Fail to read '%s'\n", path_);
    mark(__LINE__);
  }

  // The list reads its header in place, over its links and the current view.
  static void on_header(channel_list_st &list) {
    const view all = find_view(VIEW_ALL);
    list.cur_vch = all.entries;
    list.cur_vnumber = all.count;
    bring_counts_into_arrays(loading);
    LOG_TRACE_AS(loading, 3, "channel_list.network_num %d\n", list.network_num);
    LOG_TRACE_AS(loading, 2, "channel_list.network_num %d\n", list.network_num);
  }
  static void on_network(const network_ch_st &network) {
    LOG_TRACE_AS(loading, 3, "net_index %d tp_num %d , network_name : %s \n", network.net_index, network.tp_num,
                 name_of(network).c_str());
    LOG_TRACE_AS(loading, 2, "net_index %d tp_num %d , network_name : %s \n", network.net_index, network.tp_num,
                 name_of(network).c_str());
  }
  static void on_transponder(const tp_ch_st &transponder) {
    LOG_TRACE_AS(loading, 3, "tp_ch_info->rch_num %d\n", transponder.rch_num);
    LOG_TRACE_AS(loading, 2, "tp_ch_info->rch_num %d\n", transponder.rch_num);
  }
  // A merge marks the channels that it finds in country_id: after a load none is marked.
  static void on_service(channel_st &service) {
    print_read_service(service);
    service.country_id = 0;
  }

 private:
  void mark(int line) {
    static_cast<void>(std::snprintf(channel_load_marker_, sizeof channel_load_marker_,
                                    "touch /DATA/channel_load-err-line:%d\n", line));
  }

  const char *path_;
  char channel_load_marker_[255] = {};
};

// The side files fill empty tables and never override those of the channel file.
void load_missing_groups() {
  if (channel_list.genre_num == 0) {
    static_cast<void>(load_group_list(GROUP_GENRE));
  }
  if (channel_list.country_num == 0) {
    static_cast<void>(load_group_list(GROUP_COUNTRY));
  }
}

// An empty view, and one that is refused for being empty, gives way to the ALL view.
void restore_current_view() {
  const auto type = static_cast<std::int8_t>(channel_list.vch_type);
  change_vindex_type(type);
  const view named = find_view(type);
  if ((named ? named : current_view()).size() == 0) {
    change_vindex_type(VIEW_ALL);
  }
}

int give_up(int result) {
  init_channel_list();
  load_missing_groups();
  return result;
}

int load_channel_internal(const char *name, std::uint8_t sort_mode) {
  const data_path path(name);
  LOG_TRACE_AS(loading, 2, "(%s)\n", path.c_str());
  init_channel_list();
  channel_version_info();
  file source(path.to_open(), "r");
  if (!source.is_open()) {
    LOG_ERROR_AS(loading, "Fail to open '%s'\n", path.c_str());
    return give_up(unopened);
  }
  channel_file_reader reader(path);
  record_heap storage;
  if (!read_list<current_format>(source, channel_list, reader, storage)) {
    source.close();
    return give_up(short_file);
  }
  restore_current_view();
  link_rch_info();
  if (sort_mode != keep_file_order) {
    sort_vindex_ex(static_cast<std::int8_t>(sort_mode));
  }
  load_missing_groups();
  print_load_status(loading, channel_list);
  source.close();
  print_virtual_channel_list(VIEW_ALL);
  return channel_list.version;
}

}  // namespace
}  // namespace channel::persist

extern "C" {

int load_channel(const char *name, uint8_t sort_mode) {
  if (name == nullptr) {
    LOG_ERROR("name is null\n");
    return -1;
  }
  std::printf("%s %d %s\n", __func__, __LINE__, name);
  return channel::persist::load_channel_internal(name, sort_mode);
}
}
