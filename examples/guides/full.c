/* What happens at the limits: one more than fits is refused, and what was there stays. */
#include <channel/channel.h>
#include <stdio.h>

static virtual_channel_st numbered(int number) {
  return (virtual_channel_st){.major_ch_num = (int16_t)number, .service_id = (uint16_t)number};
}

static void fill_a_favourite_group(void) {
  group_st group = {.name_len = 7, .name = "Evening"};
  int16_t id = (int16_t)add_fav_group_info(group);
  int result = 0;
  for (int number = 1; number <= MAX_FAV_NUM + 1; ++number) {
    const virtual_channel_st entry = numbered(number);
    result = add_fav_virtual_channel(id, &entry);
  }
  printf("entry %d of a favourite group: %d, holds %d\n", MAX_FAV_NUM + 1, result, get_fav_vch_number(0));
}

static void fill_the_favourite_groups(void) {
  int result = 0;
  for (int number = 2; number <= MAX_FAV + 1; ++number) {
    group_st group = {0};
    group.name_len = (int16_t)snprintf(group.name, sizeof group.name, "Group %d", number);
    result = add_fav_group_info(group);
  }
  printf("favourite group %d: %d, there are %d\n", MAX_FAV + 1, result, get_fav_group_number());
}

static void fill_the_providers(void) {
  int result = 0;
  for (int number = 1; number <= MAX_PROVIDER + 1; ++number) {
    group_st provider = {0};
    provider.name_len = (int16_t)snprintf(provider.name, sizeof provider.name, "Provider %d", number);
    result = add_provider_info(provider);
  }
  printf("provider %d: %d, there are %d\n", MAX_PROVIDER + 1, result, get_provider_number());
}

static void fill_the_user_view(void) {
  channel_list_st *list = get_channel_list();
  for (int number = 0; number < MAX_CHANNEL; ++number) {
    list->user_vch[number] = numbered(number + 1);
  }
  list->user_vnumber = MAX_CHANNEL;
  list->vch[0] = numbered(MAX_CHANNEL + 1);
  list->vnumber = 1;
  printf("entry %d of the USER view: %d, holds %d\n", MAX_CHANNEL + 1, insert_user_vch_vindex(0), list->user_vnumber);
}

int main(void) {
  init_channel_list();
  fill_a_favourite_group();
  fill_the_favourite_groups();
  fill_the_providers();
  fill_the_user_view();
  printf("entry 5000 of the ALL view: %s\n", get_vchannel_by_vindex(MAX_CHANNEL) == NULL ? "null" : "there");
  printf("target directory of 32 characters: still %s\n", set_target_dir("/mnt/data/receiver/channel-lists/"));
  return 0;
}
