/* How channels look on the screen. */
#include "zapper.h"

#include <stdio.h>

short_text view_name(int8_t view) {
  static const char *const names[] = {"ALL", "TV", "RADIO", "USER", "WORK", "PROMOTION"};
  short_text name;
  if (view >= VIEW_ALL && view <= VIEW_PROMOTION) {
    snprintf(name.text, sizeof name.text, "%s", names[view]);
  } else {
    snprintf(name.text, sizeof name.text, "FAV %d", view - VIEW_FAVOURITE + 1);
  }
  return name;
}

short_text readable(const char *field, size_t size) {
  short_text shown = {""};
  for (size_t i = 0; i < size && i < sizeof shown.text - 1 && field[i] != '\0'; ++i) {
    const unsigned char c = (unsigned char)field[i];
    shown.text[i] = (char)(c < ' ' || c == 0x7F ? '?' : c);
  }
  return shown;
}

static short_text literal(const char *text) {
  short_text shown;
  snprintf(shown.text, sizeof shown.text, "%s", text);
  return shown;
}

/* A first byte below 0x20 selects a character table and is no part of the name. */
static short_text service_name(const channel_st *service) {
  const name_slot_st *slot = &service->name[0];
  const size_t begin = slot->text[0] > 0 && slot->text[0] < ' ' ? 1 : 0;
  const short_text name = readable(slot->text + begin, sizeof slot->text - begin);
  return name.text[0] == '\0' ? literal("(no name)") : name;
}

short_text channel_name(const virtual_channel_st *entry) {
  const channel_st *service = service_of(entry);
  return service == NULL ? literal("(no service)") : service_name(service);
}

short_text network_name(uint8_t net_index, uint16_t network_id) {
  const network_ch_st *network = get_network_ch_info(net_index, network_id);
  return network == NULL ? literal("?") : readable(network->network_name, sizeof network->network_name);
}

static short_text pid(uint16_t value) {
  enum { unset = 0xFFFF };
  short_text shown = {"-"};
  if (value != unset) {
    snprintf(shown.text, sizeof shown.text, "%d", value);
  }
  return shown;
}

/* printf pads by bytes, but in UTF-8 the bytes behind a character's first take no room. */
void print_name(const char *name, int columns) {
  for (const char *c = name; *c != '\0'; ++c) {
    columns += ((unsigned char)*c & 0xC0) == 0x80;
  }
  printf("%-*s", columns, name);
}

void print_entry(const virtual_channel_st *entry, bool on_screen) {
  printf("%c %5d  ", on_screen ? '>' : ' ', entry->major_ch_num);
  const channel_st *service = service_of(entry);
  if (service == NULL) {
    puts("(no service)");
    return;
  }
  print_name(service_name(service).text, 26);
  printf("  %-7s %8.8g MHz %c  V %4s  A %4s  PCR %4s%s%s%s\n",
         network_name(service->net_index, service->network_id).text, (double)service->frequency / 1000,
         service->polarisation == 0 ? 'H' : 'V', pid(service->video_pid).text, pid(service->audio_pid).text,
         pid(service->pcr_pid).text, (service->flag & CHANNEL_FLAG_LOCKED) != 0 ? "  locked" : "",
         (service->flag & CHANNEL_FLAG_SKIP) != 0 ? "  skipped" : "",
         (service->flag & CHANNEL_FLAG_FTA) != 0 ? "  scrambled" : "");
}

void print_banner(int16_t vindex, bool on_screen) { print_entry(get_vchannel_by_vindex(vindex), on_screen); }

void print_details(int16_t vindex) {
  const channel_st *service = get_channel(vindex);
  print_banner(vindex, true);
  printf("         place %d of %d in the %s view, short name '%s', service type %d\n", vindex + 1,
         get_channel_list_number(), view_name(get_vindex_type()).text,
         readable(service->name[1].text, sizeof service->name[1].text).text, service->service_type);
  const group_st *provider = find_provider_id(service->provider_id);
  if (provider != NULL) {
    printf("         provider %s\n", readable(provider->name, sizeof provider->name).text);
  }
  printf("         network index %d, network %d, transport stream %d, service %d, PMT PID %s\n", service->net_index,
         service->network_id, service->ts_id, service->service_id, pid(service->pmt_pid).text);
}
