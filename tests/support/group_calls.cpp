// Groups, providers, service lists and favourites.
#include <channel/channel.h>

#include <array>

#include "exported_calls.h"

namespace extremes {
namespace {

// Every accepted call writes a file and waits for the disk: the counts that matter, and no more.
void set_group_lists(bases tried) {
  const group_st *table = value_at<const group_st *>(base::one);
  constexpr std::array<std::int16_t, 9> counts = {-32768,          -1,   0, 1, MAX_GENRE, MAX_GENRE + 1, MAX_COUNTRY,
                                                  MAX_COUNTRY + 1, 32767};
  for (const std::int16_t count : counts) {
    set_group_list(GROUP_GENRE, table, count);
    set_group_list(GROUP_COUNTRY, table, count);
  }
  set_group_list(GROUP_GENRE, nullptr, 1);
  call_with(set_group_list, tried.first(1));
}

}  // namespace

std::vector<exported_call> group_calls() {
  constexpr test_support::promises leaves_copies = {.zeros_behind_counts = false};
  constexpr test_support::promises leaves_copies_within = {.zeros_behind_counts = false, .distinct_favourites = false};
  return {
      QUERY(get_use_group_list),
      QUERY(get_current_service_type),
      QUERY(get_current_sub_group_id),
      QUERY(get_group_list),
      QUERY(get_group_st_by_id),
      QUERY(find_genre_id),
      QUERY(find_country_id),
      QUERY(get_group_id),
      QUERY(set_group_id),
      at_extremes(EDIT(set_group_list), set_group_lists),
      EDIT(load_group_list),
      QUERY(save_group_list),
      QUERY(get_country_id_by_service_type),
      QUERY(get_genre_id_by_service_type),

      EDIT(add_provider_info),
      QUERY(find_provider_info),
      QUERY(find_provider_id),
      QUERY(get_provider_info_by_index),
      QUERY(get_provider_number),
      EDIT(remove_provider_index),
      EDIT(remove_invalid_provider_info),
      QUERY(get_provider_id_by_service_type),

      EDIT(create_service_by_group_list_id),
      RELEASE(remove_service_by_group_list_id),
      QUERY(get_group_id_by_service_type),
      EDIT(add_fav_ch_group),

      QUERY(get_fav_group_number),
      QUERY(get_fav_group_info),
      QUERY(get_fav_group_info_by_fav_id),
      QUERY(get_fav_index),
      QUERY(get_fav_vch),
      QUERY(get_fav_vch_number),
      QUERY(get_fav_vindex_by_number),
      QUERY(get_fav_index_by_number),
      QUERY(get_fav_vch_by_group_name),
      EDIT(add_fav_group_info),
      EDIT(rename_favorite_group),
      EDIT(remove_fav_group),
      EDIT_KEEPING(move_fav_ch_group, leaves_copies),
      EDIT(add_fav_virtual_channel),
      EDIT(remove_fav_virtual_channel),
      EDIT(remove_fav_virtual_channel_by_ts_info),
      EDIT_KEEPING(move_fav_channel, leaves_copies_within),
  };
}

}  // namespace extremes
