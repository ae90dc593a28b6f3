// Builds the full list once, and brings it back after operations that empty or reorder it.
#include "full_store.h"

#include <channel/channel.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include "channel/persist/file.h"
#include "tests/support/full_list.h"
#include "tests/support/temp_dir.h"

namespace bench {
namespace {

// A disk would be measured instead of the library; where there is no file system in memory, it has to be the disk.
const test_support::temp_dir &scratch() {
  static const test_support::temp_dir directory(::access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp");
  return directory;
}

std::string &contents() {
  static std::string bytes;
  return bytes;
}

std::vector<virtual_channel_st> shuffled;

// Walks the records of the channel file, depth first: visit(bytes of the record).
template <class Visit>
void for_each_record(const std::string &file, const Visit &visit) {
  std::size_t at = header_bytes;
  const auto next = [&](std::size_t size) {
    visit(file.substr(at, size));
    at += size;
  };
  for (int network = 0; network < networks; ++network) {
    next(network_bytes);
    for (int transponder = 0; transponder < transponders_per_network; ++transponder) {
      next(transponder_bytes);
      for (int service = 0; service < services_per_transponder; ++service) {
        next(service_bytes);
      }
    }
  }
}

std::string make_scan(const std::string &file) {
  constexpr std::size_t service_id_at = 242;
  constexpr char other_ids = 0x20;  // in the high byte: 8,192 above
  std::string scan = file.substr(0, header_bytes);
  int services = 0;
  for_each_record(file, [&](std::string record) {
    if (record.size() == service_bytes && services++ % 10 == 0) {
      record[service_id_at + 1] = static_cast<char>(record[service_id_at + 1] + other_ids);
    }
    scan += record;
  });
  return scan;
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

void leave_out_sync() {
  static channel::persist::file_door quick = channel::persist::system_door;
  quick.sync = [] {};
  channel::persist::door = &quick;
}

void shuffle_entries() {
  const virtual_channel_st *all = get_virtual_channel_st(VIEW_ALL);
  shuffled.assign(all, all + MAX_CHANNEL);
  std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(1));
}

}  // namespace

void require(bool succeeded, const char *what) {
  if (!succeeded) {
    static_cast<void>(std::fprintf(stderr, "%s failed\n", what));
    std::abort();
  }
}

void build_full_store() {
  leave_out_sync();
  set_target_dir(scratch().path().c_str());
  init_channel_list();
  test_support::fill_everything();
  require(save_channel(list_file) == 1, "saving the full list");
  contents() = test_support::read_file(scratch_path(list_file));
  require(contents().size() == file_bytes, "building the full list");
  test_support::write_file(scratch_path(scan_file), make_scan(contents()));
  test_support::write_file(scratch_path(version_8_file), make_version_8(contents()));
  restore_full_store();
}

void restore_full_store() {
  const muted_stdout muted;
  reset_channel_list();
  require(load_channel(list_file, 255) == CHANNEL_LIST_VERSION, "loading the full list");
  require(get_channel_list_number() == MAX_CHANNEL, "making the ALL view current");
  shuffle_entries();
}

std::string scratch_path(const char *name) { return scratch().path() + name; }

std::span<const char> file_contents() { return contents(); }

std::span<const virtual_channel_st> shuffled_entries() { return shuffled; }

muted_stdout::muted_stdout() : saved_(::dup(STDOUT_FILENO)) {
  static_cast<void>(std::fflush(stdout));
  const int nowhere = ::open("/dev/null", O_WRONLY);
  ::dup2(nowhere, STDOUT_FILENO);
  ::close(nowhere);
}

muted_stdout::~muted_stdout() {
  static_cast<void>(std::fflush(stdout));
  ::dup2(saved_, STDOUT_FILENO);
  ::close(saved_);
}

}  // namespace bench
