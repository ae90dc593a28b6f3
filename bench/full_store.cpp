// Builds the full list once, and brings it back after operations that empty or reorder it.
#include "full_store.h"

#include <base/verbosity.h>
#include <channel/channel.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <utility>
#include <vector>

#include "channel/log.h"
#include "channel/persist/file.h"
#include "channel/store/hierarchy.h"
#include "tests/support/full_list.h"
#include "tests/support/temp_dir.h"

namespace bench {
namespace {

// A disk would be measured instead of the library; where there is no file system in memory, it has to be the disk.
const test_support::temp_dir &scratch() {
  static const test_support::temp_dir directory;
  return directory;
}

std::string &contents() {
  static std::string bytes;
  return bytes;
}

std::vector<virtual_channel_st> shuffled;

int services_built = 0;
std::vector<std::size_t> sizes;

// The counts of records below a record, in its image.
constexpr std::size_t transponders_at = 76;
constexpr std::size_t services_at = 18;

std::size_t count_at(const std::string &file, std::size_t at) {
  const auto byte = [&file](std::size_t place) {
    return static_cast<std::size_t>(static_cast<unsigned char>(file[place]));
  };
  return byte(at) | byte(at + 1) << 8;
}

// Walks the records of the channel file, depth first: visit(bytes of the record).
template <class Visit>
void for_each_record(const std::string &file, const Visit &visit) {
  std::size_t at = header_bytes;
  const auto next = [&](std::size_t size) {
    visit(file.substr(at, size));
    at += size;
    return at - size;
  };
  while (at < file.size()) {
    for (std::size_t transponders = count_at(file, next(network_bytes) + transponders_at); transponders > 0;
         --transponders) {
      for (std::size_t services = count_at(file, next(transponder_bytes) + services_at); services > 0; --services) {
        next(service_bytes);
      }
    }
  }
}

std::string make_scan(const std::string &file) {
  constexpr std::size_t service_id_at = 242;
  std::string scan = file.substr(0, header_bytes);
  std::size_t record_before = 0;
  for_each_record(file, [&](std::string record) {
    if (record.size() == service_bytes && record_before == transponder_bytes) {
      record[service_id_at + 1] = static_cast<char>(record[service_id_at + 1] + (to_replacing_id >> 8));
    }
    record_before = record.size();
    scan += record;
  });
  return scan;
}

void note_sizes(const std::string &file) {
  for_each_record(file, [](const std::string &record) { sizes.push_back(record.size()); });
}

// Version 8 put 168 bytes more behind every record, and a service's last fields behind those.
std::string make_version_8(const std::string &file) {
  constexpr std::size_t extra_bytes = 168;
  constexpr std::size_t tail_at = 286;
  constexpr std::size_t tail_bytes = 4;
  constexpr std::size_t old_tail_at = 460;
  std::string old = file.substr(0, header_bytes) + std::string(extra_bytes, '\0');
  old[0] = 8;
  for_each_record(file, [&](std::string record) {
    const bool is_service = record.size() == service_bytes;
    const std::string tail = is_service ? record.substr(tail_at, tail_bytes) : "";
    record.resize(record.size() + extra_bytes);
    old += record.replace(is_service ? old_tail_at : 0, tail.size(), tail);
  });
  return old;
}

// Every provider but the last has services: its removal looks at all of them and finds one.
void give_providers() {
  std::int16_t provider = 0;
  for (const channel::filed_service &filed : channel::all_services_of(get_channel_list()->network_list)) {
    filed.service.provider_id = filed.service.genre_id = provider;
    provider = static_cast<std::int16_t>((provider + 1) % (MAX_PROVIDER - 1));
  }
}

void leave_out_sync() {
  static channel::persist::file_door quick = channel::persist::system_door;
  quick.sync = [] {};
  channel::persist::door = &quick;
}

void shuffle_entries() {
  const virtual_channel_st *all = get_virtual_channel_st(VIEW_ALL);
  shuffled.assign(all, all + get_channel_list_number());
  std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(1));
}

}  // namespace

void require(bool succeeded, const char *what) {
  if (!succeeded) {
    static_cast<void>(std::fprintf(stderr, "%s failed\n", what));
    std::abort();
  }
}

void build_full_store(int services) {
  leave_out_sync();
  set_target_dir(scratch().path().c_str());
  init_channel_list();
  test_support::fill_list(services);
  services_built = services;
  give_providers();
  require(save_channel(list_file) == 1, "saving the list");
  contents() = test_support::read_file(scratch_path(list_file));
  require(services != MAX_CHANNEL || contents().size() == file_bytes, "building the full list");
  note_sizes(contents());
  test_support::write_file(scratch_path(scan_file), make_scan(contents()));
  test_support::write_file(scratch_path(version_8_file), make_version_8(contents()));
  restore_full_store();
}

void restore_full_store() {
  const muted_stdout muted;
  reset_channel_list();
  require(load_channel(list_file, 255) == CHANNEL_LIST_VERSION, "loading the list");
  require(get_channel_list_number() == std::min<int>(services_built, MAX_CHANNEL), "making the ALL view current");
  shuffle_entries();
}

int services_in_store() { return services_built; }

int replaced_services() { return (services_built + services_per_transponder - 1) / services_per_transponder; }

std::string scratch_path(const char *name) { return scratch().path() + name; }

std::span<const std::size_t> record_sizes() { return sizes; }

std::span<const char> file_contents() { return contents(); }

std::span<const virtual_channel_st> shuffled_entries() { return shuffled; }

muted_descriptor::muted_descriptor(int descriptor) : descriptor_(descriptor), saved_(::dup(descriptor)) {
  static_cast<void>(std::fflush(stdout));
  const int nowhere = ::open("/dev/null", O_WRONLY);
  ::dup2(nowhere, descriptor_);
  ::close(nowhere);
}

muted_descriptor::~muted_descriptor() {
  static_cast<void>(std::fflush(stdout));
  ::dup2(saved_, descriptor_);
  ::close(saved_);
}

silenced_log::silenced_log() : level_(std::exchange(verbosity_map[channel::log_module], -1)) {}

silenced_log::~silenced_log() { verbosity_map[channel::log_module] = level_; }

}  // namespace bench
