// The operations, each checked while it is measured: a lookup must find what it looks for.
#include "operations.h"

#include <base/verbosity.h>
#include <channel/channel.h>

#include <algorithm>
#include <string>
#include <utility>

#include "channel/persist/merge.h"
#include "channel/store/links.h"
#include "floors.h"
#include "full_store.h"

namespace bench {
namespace {

constexpr std::uint8_t file_order = 255;
constexpr int steps_to_first = 3;
constexpr int steps_to_last = networks + transponders_per_network + services_per_transponder;

void release() { reset_channel_list(); }

void load() { require(load_channel(list_file, file_order) == CHANNEL_LIST_VERSION, "load_channel"); }

// As a host does between two lists.
void load_and_reset() {
  load();
  release();
}

void save() { require(save_channel(saved_file) == 1, "save_channel"); }

// The views are full when the new services come, and an ERROR line for each would be measured: the log is off.
void merge() {
  static const std::string path = scratch_path(scan_file);
  int &log_level = verbosity_map[7];
  const int before = std::exchange(log_level, -1);
  const int changed = channel::persist::merge_new_list(path.c_str());
  log_level = before;
  require(changed == 2 * replaced_services, "merge_new_list");
}

void repair() {
  static const std::string path = scratch_path(version_8_file);
  require(repair_channel(8, path.c_str()) == 0, "repair_channel");
}

// One of the two networks went, and half of every view's entries lead nowhere.
void release_a_network() {
  restore_full_store();
  release_network_ch_info(reinterpret_cast<network_ch_st *>(get_channel_list()->network_list.prev));
}

void sweep() {
  require(remove_invalid_virtual_channel() == 0 && *get_virtual_channel_vnumber(VIEW_ALL) == MAX_CHANNEL / 2,
          "remove_invalid_virtual_channel");
}

void clean_up_providers() {
  require(remove_invalid_provider_info() == 0 && get_provider_number() == 1, "remove_invalid_provider_info");
}

void link() { require(channel::link_rch_info() == 0, "link_rch_info"); }

template <std::int16_t Number>
void index_of_number() {
  require(get_channel_index(Number) == Number - 1, "get_channel_index");
}

template <std::int16_t Vindex>
void channel_at() {
  const channel_st *found = get_channel(Vindex);
  require(found != nullptr && found->service_id == Vindex + 1, "get_channel");
}

void index_by_ts_info() {
  const virtual_channel_st &last = get_virtual_channel_st(VIEW_ALL)[MAX_CHANNEL - 1];
  require(get_vch_index_by_ts_info(last.vch_tag, last.net_index, last.network_id, last.ts_id, last.frequency,
                                   last.service_id, last.polarisation) == MAX_CHANNEL - 1,
          "get_vch_index_by_ts_info");
}

// Everything that a host asks before it tunes to the last channel of the TV view.
void zap() {
  require(change_vindex_type(VIEW_TV) == 0, "change_vindex_type");
  const std::int16_t vindex = get_channel_index(MAX_TV_CHANNEL);
  require(check_skip_channel_index(vindex) == 0 && check_available_channel(vindex) == 1, "asking for the channel");
  const channel_st *found = get_channel(vindex);
  require(check_limited_channel(found) == 1 && found->service_id == MAX_TV_CHANNEL, "get_channel");
}

void shuffle_view() {
  const auto shuffled = shuffled_entries();
  std::copy(shuffled.begin(), shuffled.end(), get_virtual_channel_st(VIEW_ALL));
}

void sort_by_name() { require(sort_vch_type(SORT_CH_NAME, VIEW_ALL) == 0, "sort_vch_type"); }

void read_and_free_records() {
  floors::read_records();
  floors::free_records();
}

constexpr std::int64_t list_bytes = file_bytes;

constexpr floor_names reading = {"floor:read_records"};
constexpr floor_names reading_and_freeing = {"floor:read_and_free_records"};
constexpr floor_names writing = {"floor:write_at_once", "floor:write_records"};
constexpr floor_names storing = {"floor:store_pointers"};
constexpr floor_names one_step = {"floor:walk_1_number"};
constexpr floor_names steps_to_first_service = {"floor:walk_3_numbers"};
constexpr floor_names steps_to_last_service = {"floor:walk_262_numbers", "floor:follow_262_links"};
constexpr floor_names steps_to_last_entry = {"floor:walk_5000_numbers", "floor:walk_5000_entries"};
constexpr floor_names sorting = {"floor:sort_names"};

constexpr std::array catalogue = {
    operation{"floor:copy_header", {}, nullptr, floors::copy_header, 1, header_bytes},
    operation{"floor:read_records", {}, floors::free_records, floors::read_records, records, list_bytes, true},
    operation{"floor:read_and_free_records", {}, nullptr, read_and_free_records, records, list_bytes, true},
    operation{"load_channel", reading, release, load, records, list_bytes, true},
    operation{"load_channel+reset_channel_list", reading_and_freeing, release, load_and_reset, records, list_bytes,
              true},
    operation{"floor:write_at_once", {}, nullptr, floors::write_at_once, records, list_bytes},
    operation{"floor:write_records", {}, nullptr, floors::write_records, records, list_bytes, true},
    operation{"save_channel_without_sync", writing, nullptr, save, records, list_bytes, true},

    operation{"check_load_channel:scan", reading_and_freeing, restore_full_store, merge, records, list_bytes, true},
    operation{"repair_channel:version_8", reading, release, repair, records, list_bytes, true},

    operation{"floor:store_pointers", {}, nullptr, floors::store_pointers, entries_of_all_views},
    operation{"remove_invalid_virtual_channel", storing, release_a_network, sweep, entries_of_all_views, 0, true},
    operation{"remove_invalid_provider_info", steps_to_last_entry, restore_full_store, clean_up_providers, MAX_CHANNEL},
    operation{"link_rch_info", storing, nullptr, link, entries_of_all_views, 0, true},

    operation{"floor:walk_1_number", {}, nullptr, floors::walk_numbers<1>, 1},
    operation{"floor:walk_3_numbers", {}, nullptr, floors::walk_numbers<steps_to_first>, steps_to_first},
    operation{"floor:walk_262_numbers", {}, nullptr, floors::walk_numbers<steps_to_last>, steps_to_last},
    operation{"floor:follow_262_links", {}, nullptr, floors::follow_links, steps_to_last},
    operation{"floor:walk_5000_numbers", {}, nullptr, floors::walk_numbers<MAX_CHANNEL>, MAX_CHANNEL},
    operation{"floor:walk_5000_entries", {}, nullptr, floors::walk_entries, MAX_CHANNEL},
    operation{"get_channel_index:first", one_step, nullptr, index_of_number<1>, 1},
    operation{"get_channel_index:last", steps_to_last_entry, nullptr, index_of_number<MAX_CHANNEL>, MAX_CHANNEL},
    operation{"get_channel:first", steps_to_first_service, nullptr, channel_at<0>, steps_to_first},
    operation{"get_channel:last", steps_to_last_service, nullptr, channel_at<MAX_CHANNEL - 1>, steps_to_last},
    operation{"get_vch_index_by_ts_info:last", steps_to_last_entry, nullptr, index_by_ts_info, MAX_CHANNEL},

    operation{"zapping_request:last", steps_to_last_entry, nullptr, zap, MAX_TV_CHANNEL},

    operation{"floor:sort_names", {}, floors::shuffle_names, floors::sort_names, MAX_CHANNEL, 0, true},
    operation{"sort_vch_type:name", sorting, shuffle_view, sort_by_name, MAX_CHANNEL, 0, true},
};

// The names of floors carry the number of their steps.
static_assert(steps_to_last == 262 && MAX_CHANNEL == 5000);

}  // namespace

std::span<const operation> operations() { return catalogue; }

const operation *find_operation(std::string_view name) {
  const auto *found = std::find_if(catalogue.begin(), catalogue.end(),
                                   [name](const operation &candidate) { return candidate.name == name; });
  return found != catalogue.end() ? found : nullptr;
}

void set_the_scene() {
  build_full_store();
  reset_the_scene();
}

void reset_the_scene() {
  floors::free_records();
  restore_full_store();
  floors::take_from_store();
}

}  // namespace bench
