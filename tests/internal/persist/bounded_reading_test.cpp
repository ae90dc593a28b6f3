// Files that claim far more records than they hold: what a reader allocates, and how often it reads, is bounded by the
// bytes that are there, whatever the counts say.
#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "channel/persist/file.h"
#include "channel/persist/merge.h"
#include "support/channel_file.h"
#include "support/log_capture.h"
#include "support/old_channel_file.h"

// Only under a sanitizer, whose allocator the C library knows nothing of.
extern "C" __attribute__((weak)) std::size_t __sanitizer_get_current_allocated_bytes();

namespace {

namespace list_field = test_support::list_field;
namespace network_field = test_support::network_field;
namespace transponder_field = test_support::transponder_field;
using test_support::bytes;
using test_support::channel_file;
using test_support::file_test;
using test_support::old_version_of;
using test_support::record_kind;

std::size_t allocated_bytes() {
  if (__sanitizer_get_current_allocated_bytes != nullptr) {
    return __sanitizer_get_current_allocated_bytes();
  }
  const auto info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

// The real door, which measures before every read.
class measuring_door {
 public:
  measuring_door() : before_(channel::persist::door) {
    reads = 0;
    most_allocated = 0;
    channel::persist::door = &functions;
  }
  ~measuring_door() { channel::persist::door = before_; }
  measuring_door(const measuring_door &) = delete;
  measuring_door &operator=(const measuring_door &) = delete;

  static inline std::size_t reads = 0;
  static inline std::size_t most_allocated = 0;

 private:
  static std::FILE *open(const char *path, const char *mode, std::span<char> buffer) {
    return channel::persist::system_door.open(path, mode, buffer);
  }
  static std::size_t read(void *data, std::size_t size, std::size_t items, std::FILE *file) {
    ++reads;
    most_allocated = std::max(most_allocated, allocated_bytes());
    return channel::persist::system_door.read(data, size, items, file);
  }

  static constexpr channel::persist::file_door functions = {open, read, std::fwrite, std::fflush, std::fclose, [] {}};
  const channel::persist::file_door *before_;
};

struct reader {
  std::string name;
  int version;
  void (*read)(const std::string &path);
};

template <int version>
void read_beside_the_list(const std::string &path) {
  const auto list = test_support::read_old(old_version_of(version), path);
}

template <int version>
void repair(const std::string &path) {
  repair_channel(version, path.c_str());
}

const std::vector<reader> readers = {
    {"Load", 10, [](const std::string &) { load_channel("list.dat", 255); }},
    {"Merge", 10, [](const std::string &path) { channel::persist::merge_new_list(path.c_str()); }},
    {"Version9", 9, read_beside_the_list<9>},
    {"Version8", 8, read_beside_the_list<8>},
    {"Version7", 7, read_beside_the_list<7>},
    {"RepairFrom9", 9, repair<9>},
    {"RepairFrom8", 8, repair<8>},
    {"RepairFrom7", 7, repair<7>},
};

void PrintTo(const reader &shown, std::ostream *out) { *out << shown.name; }

constexpr std::uint64_t most = 0xFFFF;

channel_file two_services() { return channel_file().service({.service_id = 1}).service({.service_id = 2}); }

channel_file claiming_everything() {
  channel_file file = two_services().set(list_field::network_num, 2, most);
  for (const auto *places : {&test_support::view_places(), &test_support::group_places()}) {
    for (const auto &place : *places) {
      file.set(place.count, 2, 0x7FFF);
    }
  }
  return file.set_last(record_kind::network, network_field::tp_num, 2, most)
      .set_last(record_kind::transponder, transponder_field::rch_num, 2, most);
}

std::vector<channel_file> claiming_files() {
  return {channel_file().set(list_field::network_num, 2, most),
          two_services().set(list_field::network_num, 2, most),
          two_services().set_last(record_kind::network, network_field::tp_num, 2, most),
          two_services().set_last(record_kind::transponder, transponder_field::rch_num, 2, most),
          two_services().transponder(2, 2, 0).set_last(record_kind::transponder, transponder_field::rch_num, 2, most),
          claiming_everything()};
}

class bounded_reading_test : public file_test, public ::testing::WithParamInterface<reader> {
 protected:
  // In the reader's version.
  static bytes in_version(const channel_file &file) {
    const int version = GetParam().version;
    return version == 10 ? file.data : test_support::in_version(old_version_of(version), file).data;
  }

  void expect_bounded(const bytes &file, std::size_t records) {
    test_support::write_file(path(), file);
    read_measured();
    const std::size_t before = allocated_bytes();

    read_measured();

    // One read for each record, and one that finds the end. There are no side files.
    EXPECT_LE(measuring_door::reads, records + 1);
    // With 64-bit pointers a record is at most a third larger than its image, and the allocator adds to each.
    constexpr std::size_t room_for_a_stream = 16'384;
    EXPECT_LE(measuring_door::most_allocated,
              before + 3 * std::max(file.size(), test_support::list_size) + room_for_a_stream);
  }

 private:
  void read_measured() {
    const test_support::fd_capture printed(STDOUT_FILENO);
    const measuring_door door;
    GetParam().read(path());
  }
};

TEST_P(bounded_reading_test, TakesNoMoreThanTheRecordsThatAreThere) {
  for (const channel_file &file : claiming_files()) {
    expect_bounded(in_version(file), file.records.size());
  }
}

TEST_P(bounded_reading_test, TakesNoMoreThanAHeaderOfAFileThatEndsInIt) {
  const bytes file = in_version(claiming_everything());

  for (const std::size_t size : {std::size_t{0}, std::size_t{2}, test_support::list_size - 1}) {
    expect_bounded(file.substr(0, size), 0);
  }
}

INSTANTIATE_TEST_SUITE_P(Every, bounded_reading_test, ::testing::ValuesIn(readers),
                         [](const auto &tested) { return tested.param.name; });

}  // namespace
