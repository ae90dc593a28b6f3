/*
 * A host in C11: calls into every family of the interface, from an empty list to a saved and reloaded one. Deeper tests
 * stand elsewhere; this one holds that the headers, the calling conventions and the shared library fit together in C.
 */
#define _POSIX_C_SOURCE 200809L

#include <base/verbosity.h>
#include <channel/channel.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

enum { NETWORK_ID = 0x20, TS_ID = 0x401, FREQUENCY = 11597000, NET_INDEX = 'U', TAG = 3 };

static int failures;

#define CHECK(condition)                                             \
  do {                                                               \
    if (!(condition)) {                                              \
      printf("%s:%d: failed: %s\n", __FILE__, __LINE__, #condition); \
      ++failures;                                                    \
    }                                                                \
  } while (0)

static channel_st *make_service(uint16_t service_id, uint8_t service_type, const char *name) {
  channel_st *rch = alloc_channel_info();
  rch->net_index = NET_INDEX;
  rch->network_id = NETWORK_ID;
  rch->ts_id = TS_ID;
  rch->frequency = FREQUENCY;
  rch->service_id = service_id;
  rch->service_type = service_type;
  rch->polarisation = 1;
  rch->name[0].name_len = (uint16_t)strlen(name);
  memcpy(rch->name[0].text, name, strlen(name));
  return rch;
}

static void append_entry(channel_st *rch, int16_t number) {
  channel_list_st *list = get_channel_list();
  virtual_channel_st *entry = &list->vch[list->vnumber++];
  entry->vch_tag = TAG;
  entry->major_ch_num = number;
  entry->net_index = rch->net_index;
  entry->network_id = rch->network_id;
  entry->ts_id = rch->ts_id;
  entry->frequency = (uint32_t)rch->frequency;
  entry->service_id = rch->service_id;
  entry->polarisation = rch->polarisation;
  entry->rch = rch;
}

/* The ALL view: two television services and a radio service, numbered 30, 20, 10. */
static void fill_list(void) {
  static const char network_name[64] = "Test network";
  channel_st *services[] = {make_service(7, SERVICE_TYPE_TV, "Seven"), make_service(5, SERVICE_TYPE_TV, "Five"),
                            make_service(6, SERVICE_TYPE_RADIO, "Six")};
  for (int i = 0; i < 3; ++i) {
    CHECK(add_rch_info(services[i], network_name) == 0);
    append_entry(services[i], (int16_t)(30 - 10 * i));
  }
}

static channel_st *find_service(uint16_t service_id) {
  return get_channel_st(NET_INDEX, NETWORK_ID, TS_ID, FREQUENCY, service_id, 1);
}

/* Before the first call: the history is empty, nothing is limited, and every log level is 0. */
static void check_start(void) {
  static const return_channel_st empty[MAX_RETURN_CHANNEL];
  static const int silent[sizeof verbosity_map / sizeof *verbosity_map];
  CHECK(memcmp(verbosity_map, silent, sizeof silent) == 0);
  CHECK(get_return_channel_num() == 0);
  CHECK(memcmp(get_return_channel(), empty, sizeof empty) == 0);
  CHECK(get_limited_channel_flag() == 0);
  CHECK(SID_TYPE == 0);
}

static void check_store(void) {
  CHECK(init_channel_list() == -4);
  CHECK(get_channel_list()->version == CHANNEL_LIST_VERSION);
  CHECK(SID_TYPE == 0);
  fill_list();
  CHECK(get_channel_list()->network_num == 1);
  network_ch_st *network = get_network_ch_info(NET_INDEX, NETWORK_ID);
  CHECK(network != NULL && network->tp_num == 1);
  tp_ch_st *transponder = get_tp_ch_info_by_network_ch(network, TS_ID, FREQUENCY + 2499, 1);
  CHECK(transponder != NULL && transponder->rch_num == 3);
  CHECK(get_tp_ch_info_by_network_ch(network, TS_ID, FREQUENCY + 2500, 1) == NULL);
  CHECK(get_rch_ch_info_by_tp_ch(transponder, 5) == find_service(5));

  channel_st *twice = make_service(5, SERVICE_TYPE_TV, "Five again");
  CHECK(add_rch_info(twice, NULL) == 0);
  CHECK(transponder->rch_num == 3);
  free(twice);
}

static void check_views_and_lookups(void) {
  set_bouquet_id(0x1234);
  CHECK(get_bouquet_id() == 0x1234);
  CHAPI_set_use_tuner(-2);
  CHECK(CHAPI_get_use_tuner() == -2);
  CHECK(get_channel_list_net_index() == -1);
  CHECK(create_vindex_type(VIEW_RADIO, -1) == 0);
  CHECK(create_vindex_type(VIEW_TV, -1) == 0);
  CHECK(*get_virtual_channel_vnumber(VIEW_RADIO) == 1);
  CHECK(change_vindex_type(VIEW_TV) == 0);
  CHECK(get_vindex_type() == VIEW_TV);
  CHECK(get_channel_list_vch() == get_virtual_channel_st(VIEW_TV));
  CHECK(get_channel_list_number() == 2);
  CHECK(get_channel_index(20) == 1);
  CHECK(get_channel_number(0) == 30);
  CHECK(get_channel(1) == find_service(5));
  CHECK(get_vch_index_by_ts_info(TAG, NET_INDEX, NETWORK_ID, TS_ID, FREQUENCY, 7, 1) == 0);
  CHECK(vtype_get_channel_by_vindex(0, VIEW_RADIO) == find_service(6));
  CHECK(insert_user_vch_vindex(2) == 0);
  CHECK(*get_virtual_channel_vnumber(VIEW_USER) == 1);
}

static void check_flags(void) {
  CHECK(set_channel_flag_by_vindex(0, CHANNEL_FLAG_SKIP, 1) == 0);
  CHECK(check_skip_channel_index(0) == 1);
  CHECK(check_skip_channel_index(1) == 0);
  CHECK(check_available_channel(1) == 1);
  CHECK(set_channel_flag(NET_INDEX, NETWORK_ID, TS_ID, FREQUENCY, 5, 1, CHANNEL_FLAG_LOCKED, 1) == 1);
  CHECK(get_channel_flag_by_vindex(1) == CHANNEL_FLAG_LOCKED);
  CHECK(rename_channel_info(NET_INDEX, NETWORK_ID, TS_ID, FREQUENCY, 5, 1, 0, "Fifth", 5) == 0);
  CHECK(strcmp(find_service(5)->name[0].text, "Fifth") == 0);
  CHECK(rename_channel_info(NET_INDEX, NETWORK_ID, TS_ID, FREQUENCY, 5, 1, 2, "Fifth", 5) == -1);
}

static void check_sorting(void) {
  const virtual_channel_st *view = get_virtual_channel_st(VIEW_ALL);
  CHECK(sort_vch_type(SORT_SERVICE_ID, VIEW_ALL) == 0);
  CHECK(view[0].service_id == 5 && view[1].service_id == 6 && view[2].service_id == 7);
  CHECK(sort_vindex_ex(SORT_CH_NAME) == 0);
  CHECK(view[0].service_id == 5 && view[1].service_id == 7 && view[2].service_id == 6);
  CHECK(sort_vindex_ex(SORT_BOUQUET) == -1);
}

static void check_groups(void) {
  static group_st genres[MAX_GENRE] = {{.id = 4, .name_len = 4, .name = "News"}};
  uint16_t count = 0;
  CHECK(set_group_list(GROUP_GENRE, genres, 1) == 1);
  CHECK(get_group_list(GROUP_GENRE, &count) != NULL && count == 1);
  CHECK(find_genre_id(4) == get_group_st_by_id(GROUP_GENRE, 4));
  CHECK(find_country_id(4) == NULL);
  CHECK(set_group_id(GROUP_GENRE, get_virtual_channel_st(VIEW_ALL), 4) == 4);
  CHECK(get_group_id(GROUP_GENRE, get_virtual_channel_st(VIEW_ALL)) == 4);
  CHECK(get_use_group_list() == GROUP_ALL);
}

static void check_providers(void) {
  static const group_st provider = {.name_len = 4, .name = "Free"};
  const int id = add_provider_info(provider);
  CHECK(id >= 0 && get_provider_number() == 1);
  CHECK(find_provider_info("Free", 4) == find_provider_id((int16_t)id));
  CHECK(find_provider_info("Fee", 3) == NULL);
  CHECK(get_provider_info_by_index(0)->id == id);
  CHECK(remove_provider_index(1) == -1);
  CHECK(remove_provider_index(0) == 0 && get_provider_number() == 0);
}

/* The first entry of the ALL view alone is in genre 4. */
static void check_service_lists_and_favourites(void) {
  static const group_st favourite = {.name_len = 4, .name = "Mine"};
  static group_st found[MAX_GENRE];
  const virtual_channel_st *first = get_virtual_channel_st(VIEW_ALL);
  CHECK(get_group_id_by_service_type(GROUP_GENRE, VIEW_ALL, found) == 1 && found[0].id == 4);
  CHECK(create_service_by_group_list_id(GROUP_GENRE, 4, VIEW_ALL, 0) == 0);
  CHECK(*get_virtual_channel_vnumber(VIEW_WORK) == 1);
  const int16_t id = (int16_t)add_fav_group_info(favourite);
  CHECK(get_fav_group_number() == 1 && get_fav_index(id) == 0);
  CHECK(add_fav_virtual_channel(id, first) == 0);
  CHECK(add_fav_ch_group(id, VIEW_ALL, GROUP_GENRE, 4) == 1);
  CHECK(get_fav_vch_number(0) == 1);
  CHECK(is_same_vchannel(get_fav_vch(0, 0), first) == 1);
  CHECK(remove_fav_virtual_channel(id, 0) == 0 && get_fav_vch_number(0) == 0);
  CHECK(remove_fav_group(id) == 0 && get_fav_group_number() == 0);
}

/* There and back again: the order of the ALL view is the same afterwards. */
static void check_moving(void) {
  static const int16_t last = 2;
  static const int16_t first = 0;
  CHECK(change_vindex_type(VIEW_ALL) == 0);
  CHECK(move_channel(first, 1, &last) == 1);
  CHECK(get_virtual_channel_st(VIEW_ALL)->service_id == 6);
  CHECK(move_channel(last, 1, &first) == 1);
  CHECK(get_virtual_channel_st(VIEW_ALL)->service_id == 5);
  CHECK(move_channel(3, 1, &first) == -1);
}

static void check_transport(void) {
  tp_ch_st *transponder = get_tp_ch_simple(NET_INDEX, FREQUENCY, 1);
  CHECK(transponder != NULL && get_tp_ch_info(NET_INDEX, NETWORK_ID, TS_ID, FREQUENCY, 1) == transponder);
  CHECK(get_frequency_by_ts_id(NET_INDEX, NETWORK_ID, TS_ID) == FREQUENCY);
  CHECK(get_polarisation_by_service_id(NET_INDEX, 6) == 1);
  CHECK(get_ipchannel(NET_INDEX, TS_ID, 6) == find_service(6));
  CHECK(is_same_channel(find_service(5), find_service(5)) == 1);
  CHECK(is_same_channel(find_service(5), find_service(6)) == 0);
  CHECK(get_dsmcc_channel() == -1);
  CHECK(get_channel_list_version() == CHANNEL_LIST_VERSION);
}

static void check_history(void) {
  CHECK(change_vindex_type(VIEW_ALL) == 0);
  init_return_channel();
  add_return_channel(TAG, NET_INDEX, NETWORK_ID, TS_ID, FREQUENCY, 5, 1);
  add_return_channel(TAG, NET_INDEX, NETWORK_ID, TS_ID, FREQUENCY, 7, 1);
  CHECK(get_return_channel_num() == 2);
  CHECK(get_return_channel()->vch.service_id == 7);
  CHECK(check_same_return_channel(TAG, NET_INDEX, NETWORK_ID, TS_ID, FREQUENCY, 5, 1) == 1);
  CHECK(remove_return_channel(TAG, NET_INDEX, NETWORK_ID, TS_ID, FREQUENCY, 7, 1) == 0);
  CHECK(get_return_channel_by_index(0)->vch.service_id == 5);
  CHECK(check_limited_channel(find_service(5)) == 0);
  set_limited_channel_flag(1);
  CHECK(check_limited_channel(find_service(5)) == 1);
  set_limited_channel_flag(0);
}

/* Every dump at the level at which it prints; what it prints goes to standard error. */
static void check_dumps(void) {
  verbosity_map[7] = 2;
  channel_version_info();
  print_channel_list();
  print_channel_info(find_service(5));
  print_channel_status();
  print_virtual_channel_list(VIEW_ALL);
  CHECK(print_group_info(find_genre_id(4), 1) == 0);
  CHECK(print_group_info(NULL, 1) == -1);
  print_provider_info();
  verbosity_map[7] = -1;
}

static void check_files(void) {
  CHECK(save_channel("list.dat") == 1);
  CHECK(reset_channel_list() == -4);
  CHECK(find_service(5) == NULL);
  CHECK(load_channel("list.dat", 255) == CHANNEL_LIST_VERSION);
  CHECK(get_channel_list()->vnumber == 3);
  channel_st *service = find_service(5);
  CHECK(service != NULL && service->flag == CHANNEL_FLAG_LOCKED && strcmp(service->name[0].text, "Fifth") == 0);
  CHECK(vtype_get_vchannel_by_vindex(0, VIEW_ALL)->rch == service);
  CHECK(reset_channel_list() == -4);
  CHECK(load_channel("missing.dat", 255) == 1);
}

/* What a reader hands out is its host's: every record below a head, each after what hangs from it. */
static void release_records(list_head *head, void (*release_below)(list_head *node)) {
  while (head->next != head) {
    list_head *node = head->next;
    list_del_init(node);
    if (release_below != NULL) {
      release_below(node);
    }
    free(node);
  }
}

static void release_services(list_head *node) { release_records(&((tp_ch_st *)node)->rch_list, NULL); }

static void release_transponders(list_head *node) {
  release_records(&((network_ch_st *)node)->tp_list, release_services);
}

/* The file of check_files(): the records of version 9 are today's. */
static void check_earlier_versions(const char *directory) {
  char path[64];
  snprintf(path, sizeof path, "%slist.dat", directory);
  channel_list_st *old = v9_load_channel(path);
  CHECK(old != NULL && old->vnumber == 3 && old->network_num == 1);
  if (old != NULL) {
    release_records(&old->network_list, release_transponders);
    free(old);
  }
  CHECK(v8_load_channel("/nothing/here") == NULL);
  CHECK(v7_load_channel("/nothing/here") == NULL);
  CHECK(repair_channel(9, path) == 0);
  CHECK(find_service(5) != NULL);
  CHECK(get_virtual_channel_st(VIEW_ALL)->vch_tag == 0 && get_virtual_channel_st(VIEW_ALL)->rch == NULL);
  CHECK(reset_channel_list() == -4);
  CHECK(repair_channel(CHANNEL_LIST_VERSION, path) == -1);
}

static void check_removal(void) {
  CHECK(load_channel("list.dat", 255) == CHANNEL_LIST_VERSION);
  CHECK(vtype_remove_by_vindex(0, VIEW_TV) == 0 && *get_virtual_channel_vnumber(VIEW_TV) == 1);
  CHECK(vtype_remove_by_net_index(0, VIEW_ALL) == 0 && *get_virtual_channel_vnumber(VIEW_ALL) == 3);
  CHECK(remove_virtual_channel_st(TAG, NET_INDEX, NETWORK_ID, TS_ID, FREQUENCY, 7, 1) == 0);
  CHECK(find_service(7) == NULL && *get_virtual_channel_vnumber(VIEW_ALL) == 2);
  CHECK(remove_channel_st(NET_INDEX, NETWORK_ID, TS_ID, FREQUENCY, 7, 1) == -1);
  CHECK(remove_channel_info_by_net_index(NET_INDEX) == 0);
  CHECK(get_channel_list()->network_num == 0 && *get_virtual_channel_vnumber(VIEW_ALL) == 0);
}

/* The files of this run, below a directory of its own; the genre table's file has a newline in its name. */
static void remove_files(const char *directory) {
  static const char *const names[] = {"list.dat", "genre.dat\n", "genre.dat"};
  for (size_t i = 0; i < sizeof names / sizeof *names; ++i) {
    char path[64];
    snprintf(path, sizeof path, "%s%s", directory, names[i]);
    (void)remove(path);
  }
  CHECK(rmdir(directory) == 0);
}

int main(void) {
  check_start();

  char directory[] = "/tmp/channel-XXXXXX\0";
  if (mkdtemp(directory) == NULL) {
    perror("mkdtemp");
    return 1;
  }
  directory[strlen(directory)] = '/';
  CHECK(strcmp(set_target_dir(directory), directory) == 0);

  verbosity_map[7] = -1;
  check_store();
  check_views_and_lookups();
  check_flags();
  check_sorting();
  check_groups();
  check_providers();
  check_service_lists_and_favourites();
  check_moving();
  check_transport();
  check_history();
  check_dumps();
  check_files();
  check_earlier_versions(directory);
  check_removal();
  destroy_channel_list();
  CHECK(get_channel_list()->version == 0);

  remove_files(directory);
  return failures == 0 ? 0 : 1;
}
