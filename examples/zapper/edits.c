/* Edits of the list: the order of the view, and the marks, the name, the place and the end of the channel on it. */
#include "zapper.h"

#include <stdio.h>
#include <string.h>
#include <strings.h>

void sort_view(receiver *host, const char *key) {
  const int sort_type = strcasecmp(key, "name") == 0          ? SORT_CH_NAME
                        : strcasecmp(key, "number") == 0      ? SORT_NUMBER
                        : strcasecmp(key, "transponder") == 0 ? SORT_TRANSPONDER
                                                              : -1;
  if (sort_type < 0) {
    puts("By what? sort name, sort number or sort transponder");
    return;
  }
  sort_vch_type((int8_t)sort_type, get_vindex_type());
  find_again(host);
  printf("The %s view is sorted by %s.\n", view_name(get_vindex_type()).text, key);
}

static void toggle_flag(const receiver *host, uint8_t bit) {
  const bool is_set = (get_channel_flag_by_vindex(host->vindex) & bit) != 0;
  set_channel_flag_by_vindex(host->vindex, bit, !is_set);
  print_banner(host->vindex, true);
}

void toggle_lock(receiver *host) { toggle_flag(host, CHANNEL_FLAG_LOCKED); }
void toggle_skip(receiver *host) { toggle_flag(host, CHANNEL_FLAG_SKIP); }

/* By identity, because a rename by position would leave the stored length of the name as it was. */
void rename_channel(receiver *host, const char *name) {
  if (*name == '\0') {
    puts("To what? rename NAME");
    return;
  }
  const virtual_channel_st *on = &host->tuned;
  const size_t length = fitting_length(name, sizeof((channel_st *)0)->name[0].text);
  rename_channel_info(on->net_index, on->network_id, on->ts_id, on->frequency, on->service_id, on->polarisation, 0,
                      name, (int16_t)length);
  print_banner(host->vindex, true);
}

/* Out of every view and of the store. The history is not part of the list and is told apart. */
void delete_channel(receiver *host) {
  const virtual_channel_st gone = host->tuned;
  printf("%s is deleted.\n", channel_name(&gone).text);
  remove_virtual_channel_st(gone.vch_tag, gone.net_index, gone.network_id, gone.ts_id, gone.frequency, gone.service_id,
                            gone.polarisation);
  remove_return_channel(gone.vch_tag, gone.net_index, gone.network_id, gone.ts_id, gone.frequency, gone.service_id,
                        gone.polarisation);
  close_ranks(host);
}

/*
 * A favourite group has a move of its own. In the list of another group move_channel() would rearrange the TV or radio
 * view as well, which the user does not see and did not ask for.
 */
void move_in_view(receiver *host, const char *place) {
  const int8_t view = get_vindex_type();
  const int count = get_channel_list_number();
  long to;
  const char *rest = read_number(place, &to);
  if (rest == NULL || *rest != '\0' || to < 1 || to > count) {
    printf("Where to? move 1 to move %d\n", count);
    return;
  }
  if (view >= VIEW_FAVOURITE) {
    const uint16_t from = (uint16_t)host->vindex;
    move_fav_channel((int16_t)(view - VIEW_FAVOURITE), (int16_t)(to - 1), 1, &from);
  } else if (get_use_group_list() == GROUP_ALL) {
    move_channel((int16_t)(to - 1), 1, &host->vindex);
  } else {
    puts("The list of a group has the order of its view; type tv, radio or all and move the channel there.");
    return;
  }
  find_again(host);
  printf("%s is at place %d of %d in the %s view.\n", channel_name(&host->tuned).text, host->vindex + 1, count,
         view_name(view).text);
}

/* Channels that the new list lacks are gone afterwards, this one perhaps among them. */
void merge_scan(receiver *host) {
  const int changed = check_load_channel();
  if (changed == 0) {
    puts("Nothing has changed: there is no new channel list, or it holds the same channels.");
    return;
  }
  printf("%d channels came or went.\n", changed);
  find_again(host);
  if (host->vindex < 0) {
    zap_by(host, 1);
  }
}
