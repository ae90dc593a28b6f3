// Channel files of the versions 9, 8 and 7, made from a file of today's, and the lists that the readers of those
// versions hand out. Free of the library's internals.
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "channel_file.h"

namespace test_support {

// What versions 8 and 7 have behind every record of today.
constexpr std::size_t extra_size = 168;

// Where a service of versions 8 and 7 has what today's has from its reserved id on.
constexpr std::size_t service_tail_of_long_records = 460;

// An earlier version: its reader, the name that the reader's log lines carry, and the sizes of its records.
struct old_version {
  int number;
  channel_list_st *(*read)(const char *path);
  std::string reader;
  std::size_t extra;

  [[nodiscard]] std::size_t size_of(record_kind kind) const;
  // Where a service has its reserved id, behind it the flag and one byte more.
  [[nodiscard]] std::size_t tail_at() const {
    return extra == 0 ? service_field::reserved_id : service_tail_of_long_records;
  }
};

constexpr std::size_t tail_size = 4;

inline void PrintTo(const old_version &version, std::ostream *out) { *out << "version " << version.number; }

// Versions 9, 8 and 7.
const std::vector<old_version> &old_versions();
const old_version &old_version_of(int number);

struct old_file {
  bytes data;
  std::vector<record_place> records;
};

// The same records in an earlier version: the version's number in front, and in versions 8 and 7 the bytes of extra()
// behind every record; a service has its tail fields there, and those bytes where they stand today.
old_file in_version(const old_version &version, const channel_file &file);

// What stands in the additional bytes of a record: all different from 0, and from their neighbours.
bytes extra();

// Releases a list as its owner does, record by record.
struct release_list {
  void operator()(channel_list_st *list) const;
};

using owned_list = std::unique_ptr<channel_list_st, release_list>;

// Reads a file as a host does. What a v8_ record has behind its base follows the record in memory.
owned_list read_old(const old_version &version, const std::string &path);

// For names of parameterised tests.
constexpr auto name_of_version = [](const auto &tested) { return "Version" + std::to_string(tested.param.number); };

}  // namespace test_support
