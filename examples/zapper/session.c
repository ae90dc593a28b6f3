/* The session that plays when nobody is at a terminal. It shows every command, and looks for its edits at the end. */
#include "zapper.h"

#include <stdio.h>
#include <string.h>

static void play(receiver *host, const char *typed) {
  char line[64];
  snprintf(line, sizeof line, "%s", typed);
  print_prompt(host);
  puts(line);
  run_command(host, line);
}

static void play_all(receiver *host, const char *const *typed) {
  for (; *typed != NULL; ++typed) {
    play(host, *typed);
  }
}

static const char *const zapping[] = {"help", "radio", "all", "tv", "list 10", "+", "+", "-", "info", NULL};
static const char *const groups[] = {"satellite", "satellite 1", "provider", "provider 1", "list",    "genre", "free",
                                     "scrambled", "+",           "radio",    "back",       "history", "tv",    NULL};
static const char *const favourites[] = {"fav new Evening",
                                         "fav add Evening",
                                         "+",
                                         "fav add",
                                         "+",
                                         "fav add",
                                         "fav new Weekend",
                                         "fav add Weekend",
                                         "fav rename Sunday",
                                         "fav new Spare",
                                         "fav",
                                         "fav drop Spare",
                                         "fav move 2 1",
                                         "fav Evening",
                                         "move 1",
                                         "+",
                                         "fav del",
                                         "list",
                                         "tv",
                                         NULL};
static const char *const edits[] = {"99999", "colour", "lock", "skip", "rename Edited by zapper", "-", "+", NULL};

static bool is_same_service(const channel_st *before) {
  const channel_st *now = get_channel_st(before->net_index, before->network_id, before->ts_id,
                                         (uint32_t)before->frequency, before->service_id, before->polarisation);
  return now != NULL && now->flag == before->flag && memcmp(now->name, before->name, sizeof now->name) == 0;
}

static bool is_same_view(const virtual_channel_st *before, int count, int8_t view) {
  const virtual_channel_st *now = get_virtual_channel_st(view);
  bool is_same = *get_virtual_channel_vnumber(view) == count;
  for (int i = 0; is_same && i < count; ++i) {
    is_same = is_same_vchannel(&now[i], &before[i]) && now[i].major_ch_num == before[i].major_ch_num;
  }
  return is_same;
}

static bool are_same_favourites(const channel_list_st *before) {
  const channel_list_st *now = get_channel_list();
  bool are_same = now->favorite_group_num == before->favorite_group_num &&
                  memcmp(now->favorite_group, before->favorite_group, sizeof now->favorite_group) == 0;
  for (int i = 0; are_same && i < before->favorite_group_num; ++i) {
    are_same = is_same_view(before->favorite_vch[i], before->favorite_vnumber[i], (int8_t)(VIEW_FAVOURITE + i));
  }
  return are_same;
}

static bool prove(bool holds, const char *what) {
  printf("%s %s.\n", what, holds ? "survived" : "did not survive");
  return holds;
}

/* Saves, loads, and compares with copies, because a load replaces every record. */
static bool save_and_prove(receiver *host, const channel_st *edited, const virtual_channel_st *deleted) {
  static channel_list_st before;
  before = *get_channel_list();
  play_all(host, (const char *const[]){"save", "load", "fav", "list 3", NULL});
  bool proved = prove(is_same_service(edited), "The edited channel");
  proved &= prove(is_same_view(before.tv_vch, before.tv_vnumber, VIEW_TV), "The order of the TV view");
  proved &= prove(before.favorite_group_num > 0 && are_same_favourites(&before), "The favourites");
  proved &= prove(deleted == NULL || service_of(deleted) == NULL, "The deletion");
  return proved;
}

bool play_session(receiver *host) {
  play_all(host, zapping);
  play_all(host, groups);
  play_all(host, favourites);

  char number[16];
  snprintf(number, sizeof number, "%d", get_channel_number(get_channel_list_number() > 2 ? 2 : 0));
  play(host, number);
  play_all(host, edits);
  play_all(host, (const char *const[]){number, "sort name", "list 10", NULL});
  if (host->vindex < 0) {
    return false;
  }
  const channel_st edited = *get_channel(host->vindex);
  const virtual_channel_st kept = host->tuned;
  play(host, "+");
  const virtual_channel_st deleted = host->tuned;
  const bool deletes = !is_same_vchannel(&deleted, &kept);
  if (deletes) {
    play_all(host, (const char *const[]){"delete", "move 1", NULL});
  }
  return save_and_prove(host, &edited, deletes ? &deleted : NULL);
}
