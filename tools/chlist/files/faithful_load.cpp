// The library reads; what a load adjusts for a receiver is left out.
#include "chlist/files/faithful_load.h"

#include <channel/store.h>
#include <channel/views.h>
#include <fmt/format.h>

#include <cstddef>
#include <utility>

#include "channel/persist/counts.h"
#include "channel/persist/detached_list.h"
#include "channel/store/channel_list.h"
#include "channel/store/hierarchy.h"
#include "channel/store/links.h"
#include "chlist/files/record_image.h"
#include "chlist/line_up/list_contents.h"
#include "chlist/text/shown.h"

namespace chlist {
namespace {

namespace persist = channel::persist;

class faithful_reader : public persist::silent_reader {
 public:
  void on_header(const channel_list_st &list) {
    lost_ = cut_counts(list);
    persist::bring_counts_into_arrays("load");
  }
  [[nodiscard]] std::vector<std::string> &lost() { return lost_; }

 private:
  std::vector<std::string> lost_;
};

}  // namespace

std::vector<std::string> load_faithfully(const channel_file &input) {
  reset_channel_list();
  persist::byte_source source(input.bytes());
  faithful_reader reader;
  persist::record_heap storage;
  if (!persist::read_list<persist::current_format>(source, channel::channel_list, reader, storage)) {
    init_channel_list();
    input.refuse_as_short();
  }
  const kept_view_settings settings;
  change_vindex_type(VIEW_ALL);
  channel::link_rch_info();
  if (source.left() > 0) {
    reader.lost().push_back(fmt::format("{} behind the last record: not saved", counted(source.left(), "byte")));
  }
  return std::move(reader.lost());
}

std::string image_of(channel_list_st &list) {
  std::string bytes;
  append_image(bytes, list);
  for (network_ch_st &network : channel::networks_of(list.network_list)) {
    append_image(bytes, network);
    for (tp_ch_st &transponder : channel::transponders_of(network)) {
      append_image(bytes, transponder);
      for (const channel_st &service : channel::services_of(transponder)) {
        append_image(bytes, service);
      }
    }
  }
  return bytes;
}

view_settings view_settings::of(const channel_list_st &list) {
  return {list.ch_type, list.use_group_list, list.service_type, list.net_index, list.sub_group_id, list.vch_type};
}

void view_settings::restore() const {
  channel_list_st &list = *get_channel_list();
  list.ch_type = ch_type;
  list.use_group_list = use_group_list;
  list.service_type = service_type;
  list.net_index = net_index;
  list.sub_group_id = sub_group_id;
  list.vch_type = vch_type;
}

kept_view_settings::kept_view_settings() : settings_(view_settings::of(*get_channel_list())) {}

}  // namespace chlist
