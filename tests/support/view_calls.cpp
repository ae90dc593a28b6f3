// Views, lookups, flags, sorting and moving.
#include <channel/channel.h>

#include "exported_calls.h"

namespace extremes {
namespace {

// The base value 1 names no sort: every view is sorted by number as well.
void sort_view_by_number(std::int8_t view_type) { sort_vch_type(SORT_NUMBER, view_type); }

void sort_view_by_lock(std::int8_t view_type) { sort_vindex_by_flag(view_type, SORT_LOCK); }

}  // namespace

std::vector<exported_call> view_calls() {
  constexpr test_support::promises leaves_copies = {.zeros_behind_counts = false, .distinct_favourites = false};
  constexpr test_support::promises may_repeat = {.distinct_favourites = false};
  return {
      QUERY(get_channel_list),
      QUERY(get_vindex_type),
      QUERY(get_ch_type),
      EDIT(set_bouquet_id),
      QUERY(get_bouquet_id),
      EDIT(CHAPI_set_use_tuner),
      QUERY(CHAPI_get_use_tuner),
      QUERY(get_channel_list_net_index),
      QUERY(get_virtual_channel_st),
      QUERY(get_virtual_channel_vnumber),
      EDIT(init_vindex),
      EDIT(create_vindex_type),
      EDIT(change_vindex_type),
      EDIT_KEEPING(insert_vch_vindex_type, may_repeat),
      EDIT(insert_user_vch_vindex),

      QUERY(get_channel_list_vch),
      QUERY(get_channel_list_number),
      QUERY(find_max_channel_number),
      QUERY(get_vchannel_by_vindex),
      QUERY(vtype_get_vchannel_by_vindex),
      QUERY(get_channel_number),
      QUERY(get_channel_minor_number),
      QUERY(get_channel_index),
      QUERY(get_channel_index_by_number),
      QUERY(vtype_get_vindex_by_number),
      QUERY(vtype_get_vch_by_number),
      QUERY(get_vch_index_by_service_id),
      QUERY(get_vch_index_by_ts_info),
      QUERY(vtype_get_vch_by_ts_info),
      QUERY(vtype_get_vch_index_by_ts_info),
      QUERY(vtype_get_vch_by_frequency),
      QUERY(get_channel),
      QUERY(get_channel_by_vindex),
      QUERY(vtype_get_channel_by_vindex),

      QUERY(set_channel_flag),
      QUERY(set_channel_flag_by_bit),
      QUERY(clear_channel_flag_by_bit),
      QUERY(set_channel_flag_by_vindex),
      QUERY(get_channel_flag_by_vindex),
      QUERY(vtype_set_channel_flag_by_vindex),
      QUERY(vtype_get_channel_flag_by_vindex),
      QUERY(check_skip_channel_index),
      QUERY(check_available_channel),
      QUERY(rename_channel_info),
      QUERY(vtype_rename_channel_info),

      at_extremes(EDIT(sort_vch_type),
                  [](bases tried) {
                    call_with(sort_vch_type, tried);
                    call_with(sort_view_by_number, tried);
                  }),
      EDIT(sort_vindex_ex),
      EDIT(sort_vindex_by_number),
      EDIT(sort_vindex),
      at_extremes(EDIT_KEEPING(sort_vindex_by_flag, leaves_copies),
                  [](bases tried) {
                    call_with(sort_vindex_by_flag, tried);
                    call_with(sort_view_by_lock, tried);
                  }),

      EDIT_KEEPING(move_channel, leaves_copies),
  };
}

}  // namespace extremes
