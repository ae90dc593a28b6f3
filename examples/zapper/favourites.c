/*
 * Favourite groups. On the screen a group has the number of its place in the table, which is also its view; in between
 * it is known by its id, which stays with it when groups move.
 */
#include "zapper.h"

#include <stdio.h>
#include <string.h>
#include <strings.h>

static short_text group_name(int16_t id) {
  const group_st *group = get_fav_group_info_by_fav_id(id);
  return readable(group->name, sizeof group->name);
}

static int8_t view_of(int16_t id) { return (int8_t)(VIEW_FAVOURITE + get_fav_index(id)); }

static const group_st *group_at(int index) { return get_fav_group_info((int16_t)index); }

/* The id of the group on the screen, or -1. */
static int16_t group_on_screen(void) {
  const int index = get_vindex_type() - VIEW_FAVOURITE;
  return (int16_t)(index >= 0 && index < get_fav_group_number() ? group_at(index)->id : -1);
}

/* The group on the screen, or else the one that was shown, made or added to last, or -1. */
static int16_t current_group(const receiver *host) {
  const int16_t on_screen = group_on_screen();
  if (on_screen < 0 && get_fav_group_info_by_fav_id(host->favourite) != NULL) {
    return host->favourite;
  }
  return on_screen;
}

static void list_groups(choices *groups) {
  groups->count = 0;
  for (int index = 0; index < get_fav_group_number(); ++index) {
    add_choice(groups, group_at(index)->id, group_name(group_at(index)->id));
    groups->at[index].channels = get_fav_vch_number((int16_t)index);
  }
}

static void ask_for_group(void) {
  puts(get_fav_group_number() < 1 ? "There is no favourite group yet; fav new NAME makes one."
                                  : "Which group? fav lists them.");
}

/* The group that was typed, or -1 and a hint. */
static int16_t typed_group(const char *typed) {
  choices groups;
  list_groups(&groups);
  const choice *picked = pick(&groups, typed);
  if (picked == NULL) {
    printf("There is no favourite group %s; fav lists them.\n", readable(typed, strlen(typed)).text);
    return -1;
  }
  return picked->id;
}

void show_favourites(receiver *host, const char *group) {
  if (*group != '\0') {
    const int16_t id = typed_group(group);
    if (id >= 0) {
      host->favourite = id;
      switch_view(host, view_of(id));
    }
  } else if (get_fav_group_number() < 1) {
    ask_for_group();
  } else {
    choices groups;
    list_groups(&groups);
    print_choices(&groups, current_group(host));
  }
}

/* A record with a name, which is cut to the length of channel names. */
static group_st group_named(const char *name) {
  group_st group = {.name_len = (int16_t)fitting_length(name, sizeof((channel_st *)0)->name[0].text)};
  memcpy(group.name, name, (size_t)group.name_len);
  return group;
}

/* The library gives a group of the same name instead of a new one, and renames without looking. */
static bool is_taken(const group_st *wanted) {
  for (int index = 0; index < get_fav_group_number(); ++index) {
    if (strncasecmp(group_at(index)->name, wanted->name, sizeof wanted->name) == 0) {
      printf("There is a favourite group %s already.\n", readable(wanted->name, sizeof wanted->name).text);
      return true;
    }
  }
  return false;
}

void new_favourites(receiver *host, const char *name) {
  const group_st group = group_named(name);
  if (*name == '\0') {
    puts("What name? fav new NAME");
  } else if (!is_taken(&group)) {
    const int id = add_fav_group_info(group);
    if (id < 0) {
      printf("There is no room for another favourite group; %d are the most.\n", MAX_FAV);
      return;
    }
    host->favourite = (int16_t)id;
    printf("%s is favourite group %d; fav add puts the channel on the screen there.\n",
           group_name(host->favourite).text, get_fav_group_number());
  }
}

/* Where the channel on the screen stands in a group, or -1. */
static int16_t place_in_group(const receiver *host, int16_t index) {
  for (int16_t place = 0; place < get_fav_vch_number(index); ++place) {
    if (is_same_vchannel(get_fav_vch(index, place), &host->tuned)) {
      return place;
    }
  }
  return -1;
}

void add_favourite(receiver *host, const char *group) {
  const bool is_typed = *group != '\0';
  const int16_t id = (int16_t)(is_typed ? typed_group(group) : current_group(host));
  if (id < 0) {
    if (!is_typed) {
      ask_for_group();
    }
    return;
  }
  host->favourite = id;
  /* A channel that the group holds already counts as added, also when the group is full. */
  const bool is_new = place_in_group(host, get_fav_index(id)) < 0;
  if (is_new && add_fav_virtual_channel(id, &host->tuned) != 0) {
    printf("%s is full; %d channels are the most.\n", group_name(id).text, MAX_FAV_NUM);
    return;
  }
  printf("%s is %s %s.\n", channel_name(&host->tuned).text, is_new ? "now in" : "already in", group_name(id).text);
}

/* By place, because a removal by identity would also renumber the channels behind. */
void delete_favourite(receiver *host) {
  const int16_t id = current_group(host);
  if (id < 0) {
    ask_for_group();
    return;
  }
  const int16_t place = place_in_group(host, get_fav_index(id));
  printf("%s is %s %s.\n", channel_name(&host->tuned).text, place < 0 ? "not in" : "no longer in", group_name(id).text);
  if (place >= 0) {
    remove_fav_virtual_channel(id, place);
    close_ranks(host);
  }
}

/* A group's view follows the group's place, so that the group that was on the screen has to be made current anew. */
static void follow_group(receiver *host, int16_t was_on_screen) {
  if (was_on_screen >= 0) {
    const bool is_there = get_fav_group_info_by_fav_id(was_on_screen) != NULL;
    switch_view(host, (int8_t)(is_there ? view_of(was_on_screen) : VIEW_ALL));
  }
}

void move_favourites(receiver *host, const char *places) {
  const int count = get_fav_group_number();
  long from = 0;
  long to = 0;
  const char *rest = read_number(places, &from);
  rest = rest == NULL ? NULL : read_number(rest, &to);
  if (rest == NULL || *rest != '\0' || from < 1 || from > count || to < 1 || to > count) {
    puts("Which group, and where to? fav move FROM TO, with the numbers that fav shows");
    return;
  }
  const int16_t on_screen = group_on_screen();
  move_fav_ch_group((int16_t)(to - 1), (int16_t)(from - 1));
  follow_group(host, on_screen);
  show_favourites(host, "");
}

void rename_favourites(receiver *host, const char *name) {
  const int16_t id = current_group(host);
  const group_st named = group_named(name);
  if (*name == '\0') {
    puts("To what? fav rename NAME");
  } else if (id < 0) {
    ask_for_group();
  } else if (!is_taken(&named)) {
    rename_favorite_group(id, named.name, named.name_len);
    printf("Favourite group %d is now %s.\n", get_fav_index(id) + 1, group_name(id).text);
  }
}

void drop_favourites(receiver *host, const char *group) {
  if (*group == '\0') {
    puts("Which group? fav drop GROUP");
    return;
  }
  const int16_t id = typed_group(group);
  if (id >= 0) {
    printf("The favourite group %s is dropped; its channels stay.\n", group_name(id).text);
    const int16_t on_screen = group_on_screen();
    remove_fav_group(id);
    host->favourite = -1; /* the id is free for another group */
    follow_group(host, on_screen);
  }
}
