// A list in memory, a new list in a file beside it, and the merge of the two.
#pragma once

#include <cstddef>

#include "channel/persist/merge.h"
#include "support/channel_file.h"
#include "support/hierarchy_walk.h"
#include "support/merge_results.h"

namespace test_support {

class merge_test : public file_test {
 protected:
  [[nodiscard]] std::string new_path() const { return path("new.dat"); }

  // Writes a new list and merges it.
  int merge(const bytes &new_list) {
    write_file(new_path(), new_list);
    return channel::persist::merge_new_list(new_path().c_str());
  }
  int merge(const channel_file &new_list) { return merge(new_list.data); }

  static channel_st *find(const service_data &data) {
    return get_channel_st(data.net_index, data.network_id, data.ts_id, static_cast<std::uint32_t>(data.frequency),
                          data.service_id, data.polarisation);
  }

  // The records of the list as they stand in a file.
  bytes saved_records() { return save().substr(list_size); }
};

// Records of every kind in every order: networks, transponders and services, some of them empty.
inline channel_file three_networks() {
  channel_file file;
  file.network(1, 1, "First").transponder(100, 11'000'000, 0).service({.service_id = 1}).service({.service_id = 2});
  file.transponder(2, 12'000'000, 0);
  file.network(2, 2, "Second").transponder(3, 13'000'000, 0);
  file.service({.net_index = 2, .network_id = 2, .ts_id = 3, .frequency = 13'000'000, .service_id = 3});
  return file.transponder(4, 14'000'000, 1).network(3, 3, "Third");
}

// The entries in use of a view as bytes, the pointers to their real channels left out.
inline std::vector<bytes> entries_of(std::int8_t view) {
  std::vector<bytes> entries;
  for (int i = 0; i < *get_virtual_channel_vnumber(view); ++i) {
    const virtual_channel_st &entry = get_virtual_channel_st(view)[i];
    entries.emplace_back(reinterpret_cast<const char *>(&entry),
                         offsetof(virtual_channel_st, ts_id) + sizeof entry.ts_id);
  }
  return entries;
}

}  // namespace test_support
