#include "old_channel_file.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "hierarchy_walk.h"

namespace test_support {
namespace {

// The base stands at the start of the record.
template <v8_channel_list_st *(*Read)(const char *)>
channel_list_st *base_of_read(const char *path) {
  return reinterpret_cast<channel_list_st *>(Read(path));
}

// A service of today as versions 8 and 7 have it.
bytes longer_service(const bytes &service) {
  constexpr std::size_t today_at = service_field::reserved_id;
  constexpr std::size_t gap = service_tail_of_long_records - today_at;
  bytes longer = service + extra();
  longer.replace(today_at, gap, extra() + extra(), 0, gap);
  return longer.replace(service_tail_of_long_records, tail_size, service, today_at, tail_size);
}

bytes longer_record(record_kind kind, const bytes &record) {
  return kind == record_kind::service ? longer_service(record) : record + extra();
}

}  // namespace

std::size_t old_version::size_of(record_kind kind) const {
  constexpr std::size_t sizes[] = {list_size, network_size, transponder_size, service_size};
  return sizes[static_cast<std::size_t>(kind)] + extra;
}

const std::vector<old_version> &old_versions() {
  static const std::vector<old_version> versions = {
      {9, v9_load_channel, "v9_load_channel", 0},
      {8, base_of_read<v8_load_channel>, "v8_load_channel", extra_size},
      {7, base_of_read<v7_load_channel>, "v7_load_channel", extra_size},
  };
  return versions;
}

const old_version &old_version_of(int number) {
  const auto found = std::ranges::find(old_versions(), number, &old_version::number);
  if (found == old_versions().end()) {
    throw std::out_of_range("no such version");
  }
  return *found;
}

old_file in_version(const old_version &version, const channel_file &file) {
  old_file old;
  for (const record_place &place : file.records) {
    const bytes record = file.data.substr(place.offset, place.size);
    const bytes converted = version.extra == 0 ? record : longer_record(place.kind, record);
    old.records.push_back({place.kind, old.data.size(), converted.size()});
    old.data += converted;
  }
  put(old.data, 0, 2, static_cast<std::uint64_t>(version.number));
  return old;
}

bytes extra() {
  bytes filling(extra_size, '\0');
  for (std::size_t i = 0; i < extra_size; ++i) {
    filling[i] = static_cast<char>(1 + i * 7 % 255);
  }
  return filling;
}

void release_list::operator()(channel_list_st *list) const {
  for (network_ch_st *network : records_below<network_ch_st>(list->network_list)) {
    free_network(network);
  }
  std::free(list);
}

owned_list read_old(const old_version &version, const std::string &path) {
  return owned_list(version.read(path.c_str()));
}

}  // namespace test_support
