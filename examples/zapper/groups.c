/*
 * Services by satellite, genre, provider and access: which groups occur in the TV or radio view, and the list of one
 * group, which becomes the USER view.
 */
#include "zapper.h"

#include <stdio.h>
#include <string.h>

/* Radio for one who listens to the radio, else TV. */
static int8_t source_view(const receiver *host) {
  const channel_st *service = host->vindex >= 0 ? get_channel(host->vindex) : NULL;
  return service != NULL && service->service_type == SERVICE_TYPE_RADIO ? VIEW_RADIO : VIEW_TV;
}

static choice *find_choice(choices *offered, int id) {
  for (int i = 0; i < offered->count; ++i) {
    if (offered->at[i].id == id) {
      return &offered->at[i];
    }
  }
  return NULL;
}

/* Satellites have no table; each goes by the name of its first network. */
static void offer_satellites(choices *offered, int8_t source) {
  const virtual_channel_st *entries = get_virtual_channel_st(source);
  for (int i = 0; i < *get_virtual_channel_vnumber(source); ++i) {
    const virtual_channel_st *entry = &entries[i];
    if (offered->count < MAX_PROVIDER && find_choice(offered, entry->net_index) == NULL) {
      add_choice(offered, entry->net_index, network_name(entry->net_index, entry->network_id));
    }
  }
}

static void offer_genres(choices *offered, int8_t source) {
  group_st genres[MAX_GENRE];
  const int count = get_group_id_by_service_type(GROUP_GENRE, source, genres);
  for (int i = 0; i < count; ++i) {
    add_choice(offered, genres[i].id, readable(genres[i].name, sizeof genres[i].name));
  }
}

/* Not by get_group_id_by_service_type(), which never lists an id of 0: the first provider has it. */
static void offer_providers(choices *offered, int8_t source) {
  int16_t ids[MAX_PROVIDER];
  const int count = get_provider_id_by_service_type(source, ids);
  for (int i = 0; i < count; ++i) {
    const group_st *provider = find_provider_id(ids[i]);
    add_choice(offered, provider->id, readable(provider->name, sizeof provider->name));
  }
}

static void offer(choices *offered, int8_t kind, int8_t source) {
  offered->count = 0;
  if (kind == GROUP_SATELLITE) {
    offer_satellites(offered, source);
  } else if (kind == GROUP_GENRE) {
    offer_genres(offered, source);
  } else {
    offer_providers(offered, source);
  }
  const virtual_channel_st *entries = get_virtual_channel_st(source);
  for (int i = 0; i < *get_virtual_channel_vnumber(source); ++i) {
    choice *group = find_choice(offered, get_group_id(kind, &entries[i]));
    if (group != NULL) {
      ++group->channels;
    }
  }
}

/* The id of the group on the screen, or -1. */
static int16_t group_on_screen(int8_t kind) {
  if (get_vindex_type() != VIEW_USER || get_use_group_list() != kind) {
    return -1;
  }
  /* The list keeps a network index in a signed byte. */
  return (int16_t)(kind == GROUP_SATELLITE ? (uint8_t)get_channel_list_net_index() : get_current_sub_group_id());
}

/* Built into the work view first, because an empty list would still take the place of the one on the screen. */
bool show_group(int8_t kind, int16_t id, int8_t source) {
  if (create_service_by_group_list_id(kind, id, source, 0) != 0 || *get_virtual_channel_vnumber(VIEW_WORK) < 1) {
    return false;
  }
  create_service_by_group_list_id(kind, id, source, 1);
  return true;
}

static void show_group_named(receiver *host, int8_t kind, int16_t id, const char *name) {
  const int8_t source = source_view(host);
  const short_text source_name = view_name(source);
  if (!show_group(kind, id, source)) {
    printf("The %s view has no channel that is %s.\n", source_name.text, name);
    return;
  }
  printf("%s: %d of %d channels of the %s view\n", name, get_channel_list_number(),
         *get_virtual_channel_vnumber(source), source_name.text);
  stay_or_zap(host);
}

static void choose(receiver *host, int8_t kind, const char *word, const char *typed) {
  const int8_t source = source_view(host);
  choices groups;
  offer(&groups, kind, source);
  if (groups.count == 0) {
    printf("The %s view has no %ss.\n", view_name(source).text, word);
  } else if (*typed == '\0') {
    print_choices(&groups, group_on_screen(kind));
  } else {
    const choice *picked = pick(&groups, typed);
    if (picked == NULL) {
      printf("The %s view has no %s %s; %s lists them.\n", view_name(source).text, word,
             readable(typed, strlen(typed)).text, word);
      return;
    }
    show_group_named(host, kind, picked->id, picked->name.text);
  }
}

void choose_satellite(receiver *host, const char *group) { choose(host, GROUP_SATELLITE, "satellite", group); }
void choose_genre(receiver *host, const char *group) { choose(host, GROUP_GENRE, "genre", group); }
void choose_provider(receiver *host, const char *group) { choose(host, GROUP_PROVIDER, "provider", group); }

/* The flag's bit makes groups 0 and 1. */
void choose_free(receiver *host) { show_group_named(host, GROUP_FTACAS, 0, "free"); }
void choose_scrambled(receiver *host) { show_group_named(host, GROUP_FTACAS, 1, "scrambled"); }
