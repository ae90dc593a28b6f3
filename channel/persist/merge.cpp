// Merges a complete new channel list: what the list lacks is moved into it and numbered into the views, what the new
// list lacks is deleted, what both hold stays as it is. country_id is the mark of presence: 0 unseen, 1 present.
#include "channel/persist/merge.h"

#include <algorithm>
#include <array>
#include <channel/files.h>

#include "channel/identity.h"
#include "channel/log.h"
#include "channel/persist/detached_list.h"
#include "channel/store/channel_list.h"
#include "channel/store/filing.h"
#include "channel/store/hierarchy.h"
#include "channel/store/service_index.h"
#include "channel/store/view.h"
#include "channel/vindex/removal.h"

namespace channel::persist {
namespace {

constexpr char merging[] = "check_load_channel";
constexpr std::int16_t absent = 0;
constexpr std::int16_t present = 1;

transient<channel_list_st> new_load_channel(const char *path, record_pool &records) {
  auto list = read_whole<current_format>(path, {__func__, "new_channel_list", path}, records);
  if (list != nullptr) {
    print_list_read(__func__, "new", *list);
  }
  return list;
}

// The part of a service id that is a channel number.
std::int16_t number_in(std::uint16_t service_id) { return static_cast<std::int16_t>(service_id & 0x3fff); }

bool is_promotion(std::int16_t number) {
  static constexpr std::array<std::int16_t, 4> promotion_numbers = {200, 202, 606, 607};
  return std::find(promotion_numbers.begin(), promotion_numbers.end(), number) != promotion_numbers.end();
}

bool is_television(const channel_st &service) {
  return service.service_type == 0x01 || service.service_type == 0x80 || service.service_type == 0x81;
}

bool is_radio(const channel_st &service) { return service.service_type == 0x02; }

// One kind of service is listed in no view of its own, and only from one source.
bool is_listed_in_all_only(const channel_st &service) {
  return service.service_type == 0x03 && service.source_type == 9;
}

// Appends an entry for a service, numbered as given, or by the view's length when the number is 0. A full view takes no
// more: the service stays filed without an entry there. The slot's favorite_id keeps what it holds.
const virtual_channel_st *append_service(int type, channel_st &service, std::int16_t number) {
  const view target = find_view(type);
  if (target.is_full()) {
    LOG_ERROR_AS(merging, "view %d is full, %d entries\n", type, target.capacity);
    return nullptr;
  }
  const std::int16_t count = target.size();
  virtual_channel_st &entry = target.entries[count];
  const identity id = identity_of(service);
  entry.vch_tag = 0;
  entry.major_ch_num = number != 0 ? number : static_cast<std::int16_t>(count + 1);
  entry.minor_ch_num = 0;
  entry.net_index = id.net_index;
  entry.network_id = id.network_id;
  entry.ts_id = id.ts_id;
  entry.service_id = id.service_id;
  entry.frequency = id.frequency;
  entry.polarisation = id.polarisation;
  entry.rch = &service;
  *target.count = static_cast<std::int16_t>(count + 1);
  return &entry;
}

void append_to_all(channel_st &service, std::int16_t number) {
  if (append_service(VIEW_ALL, service, number) != nullptr) {
    LOG_TRACE_AS(merging, 2, "add : %d, %d, %d, %lld, %d, %d, major_number %d \n", service.net_index,
                 service.network_id, service.ts_id, static_cast<long long>(service.frequency), service.service_id,
                 service.polarisation, number);
  }
}

// To the radio or the promotion view, under the name that the line has for it.
void append_and_tell(int type, const char *name, channel_st &service, std::int16_t number) {
  if (const auto *entry = append_service(type, service, number); entry != nullptr) {
    CHANNEL_LOG_ENTRY(log_module_scan, 5, "\t\t%s_channel_number %d, type %02x\n\n", name, entry->major_ch_num,
                      static_cast<unsigned>(type_of(service)));
  }
}

void append_to_views(channel_st &service) {
  const std::int16_t number = number_in(service.service_id);
  if (is_television(service) || is_radio(service) || is_listed_in_all_only(service)) {
    append_to_all(service, number);
  } else {
    CHANNEL_LOG_ENTRY(log_module_scan, 1, "WARNING: service_type %02x :", service.service_type);
  }
  if (is_television(service)) {
    append_service(VIEW_TV, service, number);
  }
  if (is_radio(service)) {
    append_and_tell(VIEW_RADIO, "radio", service, number);
  }
  if (is_promotion(number)) {
    append_and_tell(VIEW_PROMOTION, "prom", service, number);
  }
}

// What get_channel_st finds once a service was filed. One that was filed would be found; of one that was refused the
// finder says what is missing.
channel_st *file_and_find(service_index &index, channel_st &service, const char *network_name) {
  channel_st *filed = file_service(index, service, network_name);
  return filed != nullptr && channel_list.network_num != 0 ? filed : index.resolve(identity_of(service));
}

// Takes a service of the new list over: a block of its own, since hosts free single services.
void add_service(service_index &index, const channel_st &new_service, const network_ch_st &new_network) {
  auto *service = allocate_record<channel_st>();
  *service = new_service;
  clear_link(service->list);
  if (channel_st *found = file_and_find(index, *service, new_network.network_name); found != nullptr) {
    append_to_views(*found);
  } else {
    LOG_ERROR_AS(merging, " can't find channel  \n");
  }
  service->country_id = present;
  if (is_empty(service->list)) {
    std::free(service);
  }
}

int add_new_services(channel_list_st &new_list, service_index &index) {
  int add_count = 0;
  for (const auto [network, transponder, service] : all_services_of(new_list.network_list)) {
    if (channel_st *known = index.resolve(identity_of(service)); known != nullptr) {
      known->country_id = present;
    } else {
      add_service(index, service, network);
      ++add_count;
    }
  }
  return add_count;
}

// Empty transponders and networks stay.
int delete_absent_services(doomed_services &doomed) {
  int delete_count = 0;
  for (const auto [network, transponder, service] : all_services_of(channel_list.network_list)) {
    if (service.country_id == absent) {
      ++delete_count;
      LOG_TRACE_AS(merging, 2, "delete : %d, %d, %d, %lld, %d, %d, major_number %d \n", service.net_index,
                   service.network_id, service.ts_id, static_cast<long long>(service.frequency), service.service_id,
                   service.polarisation, number_in(service.service_id));
      doomed.add(service);
      count_down(transponder.rch_num);
    }
  }
  return delete_count;
}

}  // namespace

// The index serves the whole merge: what is deleted is forgotten by it, and freed behind it.
int merge_list(channel_list_st &new_list) {
  doomed_services doomed;
  service_index index(count_records(new_list.network_list).services);
  const int add_count = add_new_services(new_list, index);
  const int delete_count = delete_absent_services(doomed);
  index.forget_doomed();
  sweep_and_link_views(index);
  LOG_TRACE_AS(merging, 2, "add_count %d , delete_count %d \n", add_count, delete_count);
  return add_count + delete_count;
}

int merge_new_list(const char *path) {
  record_pool records;
  const transient<channel_list_st> new_list = new_load_channel(path, records);
  return new_list != nullptr ? merge_list(*new_list) : 0;
}

}  // namespace channel::persist

extern "C" {

int check_load_channel(void) { return channel::persist::merge_new_list(channel::persist::new_list_path); }
}
