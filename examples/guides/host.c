/* A host in fifty lines: makes a list when there is none, zaps through it, and remembers what was watched. */
#include <channel/channel.h>
#include <stdio.h>
#include <string.h>

static void add_service(int16_t number, uint16_t service_id, uint8_t service_type, const char *name) {
  channel_st *service = alloc_channel_info();
  service->net_index = 1;
  service->network_id = 133;
  service->ts_id = 1101;
  service->frequency = 11362000;
  service->service_id = service_id;
  service->service_type = service_type;
  service->pmt_pid = (uint16_t)(100 + number);
  service->name[0].name_len = (uint16_t)strlen(name);
  memcpy(service->name[0].text, name, service->name[0].name_len);
  add_rch_info(service, NULL);

  channel_list_st *list = get_channel_list();
  list->vch[list->vnumber++] = (virtual_channel_st){.major_ch_num = number,
                                                    .net_index = service->net_index,
                                                    .network_id = service->network_id,
                                                    .ts_id = service->ts_id,
                                                    .frequency = (uint32_t)service->frequency,
                                                    .service_id = service_id,
                                                    .rch = service};
}

static void zap(int16_t number) {
  int16_t vindex = get_channel_index(number);
  if (vindex < 0 || !check_available_channel(vindex) || check_skip_channel_index(vindex)) {
    printf("%d is not there\n", number);
    return;
  }
  const channel_st *service = get_channel(vindex);
  printf("%d %.96s: PMT PID %u\n", number, service->name[0].text, service->pmt_pid);
  const virtual_channel_st *entry = get_vchannel_by_vindex(vindex);
  add_return_channel(entry->vch_tag, entry->net_index, entry->network_id, entry->ts_id, entry->frequency,
                     entry->service_id, entry->polarisation);
}

int main(void) {
  set_target_dir("./");
  if (load_channel("channels.dat", 255) != CHANNEL_LIST_VERSION) {
    reset_channel_list();
    add_service(1, 11100, SERVICE_TYPE_TV, "News");
    add_service(7, 11110, SERVICE_TYPE_TV, "Films");
    add_service(900, 11120, SERVICE_TYPE_RADIO, "Concerts");
    create_vindex_type(VIEW_TV, -1);
    create_vindex_type(VIEW_RADIO, -1);
    save_channel("channels.dat");
  }
  change_vindex_type(VIEW_TV);
  zap(1);
  zap(7);
  zap(8);
  printf("watched before: %d\n", get_return_channel_by_index(1)->vch.major_ch_num);
  reset_channel_list();
  return 0;
}
