// The operations, their floors, and what they handle.
#include "operations.h"

#include <channel/records.h>

#include <algorithm>

#include "floors.h"
#include "full_store.h"
#include "hostile.h"
#include "requests.h"
#include "trace_line.h"
#include "whole_list.h"

namespace bench {
namespace {

constexpr int steps_to_first = 3;
constexpr int steps_to_last = networks + transponders_per_network + services_per_transponder;

void read_and_free_records() {
  floors::read_records();
  floors::free_records();
}

constexpr std::int64_t list_bytes = file_bytes;

constexpr floor_names reading = {"floor:read_records"};
constexpr floor_names reading_and_freeing = {"floor:read_and_free_records"};
constexpr floor_names writing = {"floor:write_at_once", "floor:write_records"};
constexpr floor_names linking = {"floor:store_pointers", "floor:link_by_nested_walks"};
constexpr floor_names storing = {"floor:store_pointers"};
constexpr floor_names compacting = {"floor:compact_views"};
constexpr floor_names one_step = {"floor:walk_1_number"};
constexpr floor_names steps_to_first_service = {"floor:walk_3_numbers"};
constexpr floor_names steps_to_last_service = {"floor:walk_262_numbers", "floor:follow_262_links"};
constexpr floor_names steps_to_last_entry = {"floor:walk_5000_numbers", "floor:walk_5000_entries"};
constexpr floor_names lookup_and_walks = {"floor:walk_5000_entries", "floor:follow_262_links"};
constexpr floor_names calling = {"floor:call_nothing"};
constexpr floor_names walking = {"floor:walk_hierarchy"};
constexpr floor_names sorting_entries = {"floor:sort_entries"};
constexpr floor_names sorting = {"floor:sort_names"};

constexpr bool allocates = true;
constexpr growth grows = growth::near_linear;
constexpr growth grows_with_view = growth::with_view;
constexpr growth sorts = growth::as_sorting;

constexpr std::array catalogue = {
    operation{"floor:copy_header", {}, nullptr, floors::copy_header, 1, header_bytes},
    operation{"floor:read_records", {}, floors::free_records, floors::read_records, records, list_bytes, allocates},
    operation{"floor:read_and_free_records", {}, nullptr, read_and_free_records, records, list_bytes, allocates},
    operation{"load_channel", reading, release, load, records, list_bytes, allocates, grows},
    operation{"load_channel+reset_channel_list", reading_and_freeing, release, load_and_reset, records, list_bytes,
              allocates},
    operation{"floor:write_at_once", {}, nullptr, floors::write_at_once, records, list_bytes},
    operation{"floor:write_records", {}, nullptr, floors::write_records, records, list_bytes, allocates},
    operation{"save_channel_without_sync", writing, nullptr, save, records, list_bytes, allocates, grows},

    operation{"check_load_channel:scan", reading_and_freeing, restore_full_store, merge, records, list_bytes, allocates,
              grows},
    operation{"repair_channel:version_8", reading, release, repair, records, list_bytes, allocates, grows},

    operation{"floor:store_pointers", {}, nullptr, floors::store_pointers, entries_of_all_views},
    operation{"floor:link_by_nested_walks", {}, nullptr, floors::link_by_nested_walks, entries_of_all_views},
    operation{"link_rch_info", linking, nullptr, link, entries_of_all_views, 0, allocates, grows},
    operation{"floor:compact_views", {}, floors::restore_views, floors::compact_views, entries_of_all_views},
    operation{"remove_invalid_virtual_channel:network", compacting, drop_network, prune, entries_of_all_views, 0,
              allocates, grows},
    operation{"floor:walk_hierarchy", {}, nullptr, floors::walk_hierarchy, records},
    operation{"remove_invalid_provider_info", walking, bring_provider_back, clean_providers, records, 0, false, grows},

    operation{"set_channel_flag_by_bit:one_transponder", walking, hang_on_one_transponder, flag_view, MAX_CHANNEL, 0,
              allocates, grows},
    operation{"clear_channel_flag_by_bit:one_transponder", walking, hang_flagged_on_one_transponder,
              clear_flags_of_view, MAX_CHANNEL, 0, allocates, grows},
    operation{"move_channel:whole_view_followed", storing, show_followed_view, move_whole_view, MAX_TV_CHANNEL, 0,
              allocates, grows_with_view},
    operation{"remove_service_by_group_list_id:transponder_each", walking, hang_on_a_transponder_each, remove_shown,
              MAX_CHANNEL, 0, allocates, grows},
    operation{"print_virtual_channel_list:level_2", walking, hang_on_a_transponder_each, dump_view, MAX_CHANNEL, 0,
              allocates, grows},
    operation{"link_rch_info:far_apart", storing, hang_on_a_transponder_each, link_shown, MAX_CHANNEL, 0, allocates,
              grows},
    operation{"link_rch_info:1_khz_apart", storing, hang_1_khz_apart, link_shown, MAX_CHANNEL, 0, allocates, grows},
    operation{"link_rch_info:crafted", storing, hang_crafted, link_shown, MAX_CHANNEL, 0, allocates, grows},

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
    operation{"zapping_request:last", lookup_and_walks, nullptr, zap_to_last, 1},

    operation{"floor:sort_names", {}, floors::shuffle_names, floors::sort_names, MAX_CHANNEL},
    operation{"floor:sort_entries", {}, floors::shuffle_entries, floors::sort_entries, MAX_CHANNEL},
    operation{"sort_vch_type:name", sorting, shuffle_view, sort_all_view<SORT_CH_NAME>, MAX_CHANNEL, 0, false, sorts},
    operation{"sort_vch_type:transponder", sorting_entries, shuffle_view, sort_all_view<SORT_TRANSPONDER>, MAX_CHANNEL,
              0, false, sorts},
    operation{"sort_vch_type:number", sorting_entries, shuffle_view, sort_all_view<SORT_NUMBER>, MAX_CHANNEL, 0, false,
              sorts},
    operation{"sort_vch_type:service_id", sorting_entries, shuffle_view, sort_all_view<SORT_SERVICE_ID>, MAX_CHANNEL, 0,
              false, sorts},
    operation{"sort_vindex_by_number", sorting_entries, shuffle_view, sort_by_bytes, MAX_CHANNEL, 0, false, sorts},

    operation{"floor:call_nothing", {}, nullptr, floors::call_nothing, lines_per_run},
    operation{"trace_line:level_0", calling, nullptr, write_trace_lines, lines_per_run},
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

void set_the_scene(int services) {
  build_full_store(services);
  reset_the_scene();
}

void reset_the_scene() {
  floors::free_records();
  restore_full_store();
  floors::take_from_store();
}

}  // namespace bench
