// The floors. Nothing is checked in them but that they did their work.
#include "floors.h"

#include <channel/channel.h>
#include <fcntl.h>
#include <strings.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>
#include <vector>

#include "channel/identity.h"
#include "channel/store/hierarchy.h"
#include "full_store.h"
#include "trace_line.h"

namespace bench::floors {
namespace {

std::array<char, header_bytes> header;
std::array<char, 4096> file_buffer;
std::array<std::int16_t, MAX_CHANNEL> numbers;
std::vector<const char *> shuffled_names;
std::vector<const char *> names;
std::vector<virtual_channel_st> entries_to_sort;
std::vector<virtual_channel_st> viewed;
std::vector<channel_st *> linked;

// The last record read; each points to the one before it.
void *last_record = nullptr;

// The work that led to a value is not optimised away.
template <class Value>
void keep(const Value &value) {
  asm volatile("" : : "g"(&value) : "memory");
}

// The next record of the file, into memory as large as the library's.
template <class Record>
void read_record(std::FILE *file, std::size_t in_file) {
  void *record = std::calloc(1, sizeof(Record));
  require(record != nullptr && std::fread(record, in_file, 1, file) == 1, "reading a record");
  // The record's link slot.
  std::memcpy(record, &last_record, sizeof last_record);
  last_record = record;
}

const list_head *follow(const list_head &head, int links) {
  const list_head *node = &head;
  for (; links > 0; --links) {
    node = node->next;
  }
  return node;
}

int compare_names(const void *a, const void *b) {
  return ::strcasecmp(*static_cast<const char *const *>(a), *static_cast<const char *const *>(b));
}

int compare_numbers(const void *a, const void *b) {
  return static_cast<const virtual_channel_st *>(a)->major_ch_num -
         static_cast<const virtual_channel_st *>(b)->major_ch_num;
}

// A view with as many entries as it had when the floors took their part of the store.
struct filled_view {
  virtual_channel_st *entries;
  std::int16_t *count;
  std::int16_t taken;
};
std::vector<filled_view> filled_views;

void take_views() {
  filled_views.clear();
  for (int type = VIEW_ALL; type <= VIEW_FAVOURITE_LAST; ++type) {
    const auto code = static_cast<std::int8_t>(type);
    if (type != VIEW_WORK && (type <= VIEW_PROMOTION || type >= VIEW_FAVOURITE)) {
      std::int16_t *count = get_virtual_channel_vnumber(code);
      filled_views.push_back({get_virtual_channel_st(code), count, *count});
    }
  }
}

// The service of an entry, met by walking everything from the first network on; null when it is not there.
channel_st *walk_to_service(const virtual_channel_st &entry) {
  for (network_ch_st &network : channel::networks_of(get_channel_list()->network_list)) {
    if (network.net_index != entry.net_index || network.network_id != entry.network_id) {
      continue;
    }
    for (tp_ch_st &transponder : channel::transponders_of(network)) {
      if (!channel::is_transponder(transponder, entry.ts_id, entry.frequency, entry.polarisation)) {
        continue;
      }
      for (channel_st &service : channel::services_of(transponder)) {
        if (service.service_id == entry.service_id) {
          return &service;
        }
      }
    }
  }
  return nullptr;
}

}  // namespace

void take_from_store() {
  const virtual_channel_st *all = get_virtual_channel_st(VIEW_ALL);
  std::transform(all, all + MAX_CHANNEL, numbers.begin(),
                 [](const virtual_channel_st &entry) { return entry.major_ch_num; });
  const auto shuffled = shuffled_entries();
  shuffled_names.resize(shuffled.size());
  std::transform(shuffled.begin(), shuffled.end(), shuffled_names.begin(),
                 [](const virtual_channel_st &entry) { return entry.rch->name[0].text; });
  take_views();
  viewed.clear();
  for (const auto &[entries, count, taken] : filled_views) {
    viewed.insert(viewed.end(), entries, entries + taken);
  }
  linked.resize(viewed.size());
  std::transform(viewed.begin(), viewed.end(), linked.begin(),
                 [](const virtual_channel_st &entry) { return entry.rch; });
  require(services_in_store() != MAX_CHANNEL || linked.size() == entries_of_all_views, "filling every view");
}

void copy_header() {
  std::memcpy(header.data(), file_contents().data(), header.size());
  keep(header);
}

void read_records_of(const char *path) {
  std::FILE *file = std::fopen(path, "r");
  require(file != nullptr && std::setvbuf(file, file_buffer.data(), _IOFBF, file_buffer.size()) == 0, "opening a file");
  require(std::fread(header.data(), header.size(), 1, file) == 1, "reading the header");
  for (int network = 0; network < networks; ++network) {
    read_record<network_ch_st>(file, network_bytes);
    for (int transponder = 0; transponder < transponders_per_network; ++transponder) {
      read_record<tp_ch_st>(file, transponder_bytes);
      for (int service = 0; service < services_per_transponder; ++service) {
        read_record<channel_st>(file, service_bytes);
      }
    }
  }
  require(std::fclose(file) == 0, "closing the file");
}

void read_records() {
  static const std::string path = scratch_path(list_file);
  read_records_of(path.c_str());
}

void free_records() {
  while (last_record != nullptr) {
    void *record = last_record;
    std::memcpy(&last_record, record, sizeof last_record);
    std::free(record);
  }
}

void write_at_once() {
  static const std::string path = scratch_path("at_once.dat");
  const auto bytes = file_contents();
  const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC, 0600);
  require(::write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()), "writing at once");
  require(::close(file) == 0, "closing the file");
}

void write_records() {
  static const std::string path = scratch_path("records.dat");
  const char *from = file_contents().data();
  std::FILE *file = std::fopen(path.c_str(), "w+");
  const auto write = [file, &from](std::size_t size) {
    require(std::fwrite(from, size, 1, file) == 1, "writing a record");
    from += size;
  };
  require(file != nullptr, "opening a file");
  write(header_bytes);
  std::for_each(record_sizes().begin(), record_sizes().end(), write);
  require(std::fclose(file) == 0, "closing the file");
}

template <int Steps>
void walk_numbers() {
  const auto found = std::find(numbers.begin(), numbers.end(), static_cast<std::int16_t>(Steps));
  require(found - numbers.begin() == Steps - 1, "walking the numbers");
}

// The hierarchy is walked to the first service of the first transponder, and to the last of the last.
template void walk_numbers<1>();
template void walk_numbers<3>();
template void walk_numbers<networks + transponders_per_network + services_per_transponder>();
template void walk_numbers<MAX_CHANNEL>();

void walk_entries() {
  const virtual_channel_st *all = get_virtual_channel_st(VIEW_ALL);
  const virtual_channel_st *found = std::find_if(
      all, all + MAX_CHANNEL, [](const virtual_channel_st &entry) { return entry.major_ch_num == MAX_CHANNEL; });
  require(found - all == MAX_CHANNEL - 1, "walking the entries");
}

void follow_links() {
  const list_head *node = follow(get_channel_list()->network_list, networks);
  node = follow(reinterpret_cast<const network_ch_st *>(node)->tp_list, transponders_per_network);
  node = follow(reinterpret_cast<const tp_ch_st *>(node)->rch_list, services_per_transponder);
  keep(node);
}

void shuffle_names() { names = shuffled_names; }

void sort_names() {
  std::qsort(names.data(), names.size(), sizeof names[0], compare_names);
  keep(names);
}

void shuffle_entries() {
  const auto shuffled = shuffled_entries();
  entries_to_sort.assign(shuffled.begin(), shuffled.end());
}

void sort_entries() {
  std::qsort(entries_to_sort.data(), entries_to_sort.size(), sizeof entries_to_sort[0], compare_numbers);
  keep(entries_to_sort);
}

void walk_hierarchy() {
  int sum = 0;
  for (network_ch_st &network : channel::networks_of(get_channel_list()->network_list)) {
    for (tp_ch_st &transponder : channel::transponders_of(network)) {
      for (const channel_st &service : channel::services_of(transponder)) {
        sum += service.provider_id;
      }
    }
  }
  keep(sum);
}

void link_by_nested_walks() {
  for (const auto &[entries, count, taken] : filled_views) {
    for (virtual_channel_st &entry : std::span(entries, static_cast<std::size_t>(taken))) {
      entry.rch = walk_to_service(entry);
      require(entry.rch != nullptr, "walking to a service");
    }
  }
}

void store_pointers() {
  const auto *service = linked.data();
  for (const auto &[entries, count, taken] : filled_views) {
    for (virtual_channel_st &entry : std::span(entries, static_cast<std::size_t>(taken))) {
      entry.rch = *service++;
    }
  }
  keep(*get_channel_list());
}

void restore_views() {
  const virtual_channel_st *entry = viewed.data();
  for (const auto &[entries, count, taken] : filled_views) {
    std::copy_n(entry, taken, entries);
    *count = taken;
    entry += taken;
  }
}

void compact_views() {
  const std::uint8_t first_network = get_virtual_channel_st(VIEW_ALL)->net_index;
  for (const auto &[entries, count, taken] : filled_views) {
    const auto *end = std::remove_if(entries, entries + taken, [first_network](const virtual_channel_st &entry) {
      return entry.net_index != first_network;
    });
    *count = static_cast<std::int16_t>(end - entries);
  }
}

void call_nothing() {
  for (int i = 0; i < lines_per_run; ++i) {
    do_nothing(i);
  }
}

}  // namespace bench::floors
