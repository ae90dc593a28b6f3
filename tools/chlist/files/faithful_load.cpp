// The file is read twice: by the load, and beside it as it stands, for what the load changed.
#include "chlist/files/faithful_load.h"

#include <channel/files.h>
#include <channel/views.h>
#include <fmt/format.h>

#include <cstddef>
#include <filesystem>

#include "channel/persist/detached_list.h"
#include "channel/store/hierarchy.h"
#include "chlist/files/record_image.h"
#include "chlist/list_contents.h"
#include "chlist/report.h"

namespace chlist {
namespace {

using channel::persist::current_format;
using channel::persist::detached_list;

// Both lists have the services of one file, in its order, unless somebody writes to it at the same time.
void restore_countries(channel_list_st &as_it_stands) {
  const std::vector<const channel_st *> originals = services_of(as_it_stands);
  auto original = originals.begin();
  for (const channel::filed_service &filed : channel::all_services_of(get_channel_list()->network_list)) {
    if (original != originals.end()) {
      filed.service.country_id = (*original++)->country_id;
    }
  }
}

void restore_position_keys(const channel_list_st &as_it_stands) {
  for (std::size_t group = 0; group < MAX_FAV; ++group) {
    for (std::size_t i = 0; i < MAX_FAV_NUM; ++i) {
      get_channel_list()->favorite_vch[group][i].favorite_id = as_it_stands.favorite_vch[group][i].favorite_id;
    }
  }
}

// Counts that the load brought into their arrays.
void find_cut_counts(const channel_list_st &as_it_stands, std::vector<std::string> &lost) {
  for (const list_view &view : views_of(as_it_stands)) {
    if (view.count != static_cast<int>(view.size())) {
      lost.push_back(
          fmt::format("the {} view counts {} entries: saved as {}", label_of(view.name), view.count, view.size()));
    }
  }
  const std::vector<group_table> before = groups_of(as_it_stands);
  const std::vector<group_table> after = groups_of(*get_channel_list());
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (before[i].count != after[i].count) {
      lost.push_back(
          fmt::format("the table of {} counts {}: saved as {}", before[i].name, before[i].count, after[i].count));
    }
  }
}

void find_bytes_behind(const channel_input &input, std::vector<std::string> &lost) {
  const std::uintmax_t size = std::filesystem::file_size(input.library_path());
  const std::size_t carried = image_of(*get_channel_list()).size();
  if (size > carried) {
    lost.push_back(fmt::format("{} behind the last record: not saved", counted(size - carried, "byte")));
  }
}

}  // namespace

std::vector<std::string> load_faithfully(const channel_input &input) {
  input.load();
  // Records of version 9 are those of today, so its reader reads both.
  const detached_list<current_format> as_it_stands(v9_load_channel(input.library_path().c_str()));
  if (as_it_stands == nullptr) {
    input.refuse("ends too early for a channel file of its version");
  }
  restore_countries(*as_it_stands);
  restore_position_keys(*as_it_stands);
  view_settings::of(*as_it_stands).restore();
  std::vector<std::string> lost;
  find_cut_counts(*as_it_stands, lost);
  find_bytes_behind(input, lost);
  return lost;
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
