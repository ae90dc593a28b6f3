/* Loading, switching views and zapping, with the library's calls in the order in which a receiver makes them. */
#include "zapper.h"

#include <stdio.h>

bool load_list(receiver *host) {
  enum { keep_order = 255 };
  host->vindex = -1;
  host->favourite = -1;
  init_return_channel(); /* the history points into the list that goes */
  reset_channel_list();
  const int version = load_channel(host->file, keep_order);
  if (version != CHANNEL_LIST_VERSION) {
    reset_channel_list(); /* whatever another version was read as */
    printf(version == 1    ? "%s cannot be opened.\n"
           : version == -1 ? "%s is too short: damaged, or no channel file.\n"
                           : "%s is of another version and must be converted first.\n",
           host->file);
    return false;
  }
  const channel_list_st *list = get_channel_list();
  printf("%s: %d channels, %d TV, %d radio\n", host->file, list->vnumber, list->tv_vnumber, list->radio_vnumber);
  zap_by(host, 1);
  return true;
}

bool save_list(const receiver *host) {
  const bool saved = save_channel(host->file) == 1;
  printf(saved ? "%s is saved.\n" : "%s could not be saved.\n", host->file);
  return saved;
}

channel_st *service_of(const virtual_channel_st *entry) {
  return get_channel_st(entry->net_index, entry->network_id, entry->ts_id, entry->frequency, entry->service_id,
                        entry->polarisation);
}

int16_t place_of(const virtual_channel_st *entry) {
  return get_vch_index_by_ts_info(entry->vch_tag, entry->net_index, entry->network_id, entry->ts_id, entry->frequency,
                                  entry->service_id, entry->polarisation);
}

void find_again(receiver *host) {
  if (host->vindex >= 0) {
    host->vindex = place_of(&host->tuned);
  }
}

/* Taken out first, because the newest channel of the history would keep the list that it was watched in before. */
static void remember(const receiver *host) {
  const virtual_channel_st *on = &host->tuned;
  remove_return_channel(on->vch_tag, on->net_index, on->network_id, on->ts_id, on->frequency, on->service_id,
                        on->polarisation);
  add_return_channel(on->vch_tag, on->net_index, on->network_id, on->ts_id, on->frequency, on->service_id,
                     on->polarisation);
}

/* The end of the road of one zapping request: from a position in the current view to the PIDs. */
void zap_to(receiver *host, int16_t vindex) {
  const channel_st *service = get_channel(vindex);
  if (service == NULL || !check_available_channel(vindex)) {
    printf("Channel %d cannot be received.\n", get_channel_number(vindex));
    return;
  }
  host->vindex = vindex;
  host->tuned = *get_vchannel_by_vindex(vindex);
  print_banner(vindex, true);
  if (!check_limited_channel(service)) {
    puts("         Locked: here a receiver asks for the PIN.");
    return;
  }
  /* Here a receiver tunes to service->frequency and opens service->video_pid and service->audio_pid. */
  remember(host);
}

void zap_to_number(receiver *host, long number) {
  const int16_t vindex = (int16_t)(number <= INT16_MAX ? get_channel_index((int16_t)number) : -1);
  if (vindex < 0) {
    printf("There is no channel %ld in the %s view.\n", number, view_name(get_vindex_type()).text);
    return;
  }
  zap_to(host, vindex);
}

/* Every position is tried once, the one that it starts from last, so that it ends when all are skipped. */
static void zap_from(receiver *host, int start, int direction) {
  const int count = get_channel_list_number();
  for (int step = 1; step <= count; ++step) {
    const int16_t vindex = (int16_t)((start + direction * step + count) % count);
    if (!check_skip_channel_index(vindex) && check_available_channel(vindex)) {
      zap_to(host, vindex);
      return;
    }
  }
  printf("The %s view has no channel to stop at.\n", view_name(get_vindex_type()).text);
}

void zap_by(receiver *host, int direction) {
  zap_from(host, host->vindex < 0 && direction < 0 ? 0 : host->vindex, direction);
}

void stay_or_zap(receiver *host) {
  find_again(host);
  if (host->vindex < 0) {
    zap_by(host, 1);
    return;
  }
  host->tuned = *get_vchannel_by_vindex(host->vindex);
  if (check_limited_channel(get_channel(host->vindex))) {
    remember(host);
  }
}

void switch_view(receiver *host, int8_t view) {
  /* Asked first, because ALL and the favourite groups become current even when they are empty. */
  if (*get_virtual_channel_vnumber(view) < 1 || change_vindex_type(view) != 0) {
    printf("The %s view is empty.\n", view_name(view).text);
    return;
  }
  stay_or_zap(host);
}

void close_ranks(receiver *host) {
  const int16_t place = host->vindex;
  if (get_channel_list_number() < 1) {
    printf("The %s view is empty now.\n", view_name(get_vindex_type()).text);
    change_vindex_type(VIEW_ALL);
  }
  find_again(host);
  if (host->vindex < 0) {
    zap_from(host, place - 1, 1);
  }
}
