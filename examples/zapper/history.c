/* The channels that were watched, and the way back to them and to the lists that they were watched in. */
#include "zapper.h"

#include <stdio.h>

static bool is_on_screen(const receiver *host, const return_channel_st *watched) {
  return host->vindex >= 0 && is_same_vchannel(&watched->vch, &host->tuned);
}

void show_history(receiver *host) {
  if (get_return_channel_num() < 1) {
    puts("No channel was watched yet.");
  }
  for (int16_t i = 0; i < get_return_channel_num(); ++i) {
    const return_channel_st *watched = get_return_channel_by_index(i);
    print_entry(&watched->vch, is_on_screen(host, watched));
  }
}

static bool is_list_current(const return_channel_st *watched) {
  return watched->group == get_use_group_list() && watched->service_type == get_current_service_type() &&
         (watched->group == GROUP_ALL || watched->sub_group == get_current_sub_group_id()) &&
         place_of(&watched->vch) >= 0;
}

/* The favourite group or group list that a channel was watched in; without one, the plain view of its time. */
static void restore_list(const return_channel_st *watched) {
  const bool had_plain_view = watched->service_type == VIEW_TV || watched->service_type == VIEW_RADIO;
  if (is_list_current(watched)) {
    return;
  }
  if (watched->group == GROUP_ALL) {
    change_vindex_type((int8_t)(had_plain_view ? watched->service_type : VIEW_ALL));
  } else if (watched->group == GROUP_FAV && get_fav_group_info_by_fav_id(watched->sub_group) != NULL) {
    change_vindex_type((int8_t)(VIEW_FAVOURITE + get_fav_index(watched->sub_group)));
  } else {
    const int id = watched->group == GROUP_SATELLITE ? watched->net_index : watched->sub_group;
    show_group(watched->group, (int16_t)id, watched->service_type);
  }
}

/* A locked channel is not in the history, so that the last one that is may be the newest or the one before it. */
void go_back(receiver *host) {
  const int16_t index = get_return_channel_num() > 0 && is_on_screen(host, get_return_channel()) ? 1 : 0;
  if (index >= get_return_channel_num()) {
    puts("There is no channel to go back to.");
    return;
  }
  const return_channel_st watched = *get_return_channel_by_index(index);
  restore_list(&watched);
  if (place_of(&watched.vch) < 0) {
    change_vindex_type(VIEW_ALL); /* the list has changed since */
  }
  find_again(host);
  const int16_t place = place_of(&watched.vch);
  if (place < 0) {
    puts("That channel is no longer in the list.");
    stay_or_zap(host);
    return;
  }
  zap_to(host, place);
}
