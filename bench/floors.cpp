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

#include "full_store.h"

namespace bench::floors {
namespace {

std::array<char, header_bytes> header;
std::array<std::int16_t, MAX_CHANNEL> numbers;
std::array<const char *, MAX_CHANNEL> shuffled_names;
std::array<const char *, MAX_CHANNEL> names;
std::vector<channel_st *> linked;

// The last record read; each points to the one before it.
void *last_record = nullptr;

// The work that led to a value is not optimised away.
template <class Value>
void keep(const Value &value) {
  asm volatile("" : : "g"(&value) : "memory");
}

// Calls for every record of the hierarchy in the file's order.
template <class Use>
void for_every_record(const Use &use) {
  for (int network = 0; network < networks; ++network) {
    use(network_bytes);
    for (int transponder = 0; transponder < transponders_per_network; ++transponder) {
      use(transponder_bytes);
      for (int service = 0; service < services_per_transponder; ++service) {
        use(service_bytes);
      }
    }
  }
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

std::vector<std::span<virtual_channel_st>> full_views() {
  std::vector<std::span<virtual_channel_st>> views;
  for (int type = VIEW_ALL; type <= VIEW_FAVOURITE_LAST; ++type) {
    if (type != VIEW_WORK && (type <= VIEW_PROMOTION || type >= VIEW_FAVOURITE)) {
      const auto code = static_cast<std::int8_t>(type);
      views.emplace_back(get_virtual_channel_st(code), static_cast<std::size_t>(*get_virtual_channel_vnumber(code)));
    }
  }
  return views;
}

}  // namespace

void take_from_store() {
  const virtual_channel_st *all = get_virtual_channel_st(VIEW_ALL);
  std::transform(all, all + MAX_CHANNEL, numbers.begin(),
                 [](const virtual_channel_st &entry) { return entry.major_ch_num; });
  const auto shuffled = shuffled_entries();
  std::transform(shuffled.begin(), shuffled.end(), shuffled_names.begin(),
                 [](const virtual_channel_st &entry) { return entry.rch->name[0].text; });
  linked.clear();
  for (const auto entries : full_views()) {
    std::transform(entries.begin(), entries.end(), std::back_inserter(linked),
                   [](const virtual_channel_st &entry) { return entry.rch; });
  }
  require(linked.size() == entries_of_all_views, "filling every view");
}

void copy_header() {
  std::memcpy(header.data(), file_contents().data(), header.size());
  keep(header);
}

void read_records() {
  static const std::string path = scratch_path(list_file);
  std::FILE *file = std::fopen(path.c_str(), "r");
  require(file != nullptr && std::fread(header.data(), header.size(), 1, file) == 1, "reading the header");
  for_every_record([file](std::size_t size) {
    void *record = std::calloc(1, size);
    require(record != nullptr && std::fread(record, size, 1, file) == 1, "reading a record");
    // The record's link slot.
    std::memcpy(record, &last_record, sizeof last_record);
    last_record = record;
  });
  require(std::fclose(file) == 0, "closing the file");
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
  for_every_record(write);
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

void store_pointers() {
  static const auto views = full_views();
  const auto *service = linked.data();
  for (const auto entries : views) {
    for (virtual_channel_st &entry : entries) {
      entry.rch = *service++;
    }
  }
  keep(*get_channel_list());
}

}  // namespace bench::floors
