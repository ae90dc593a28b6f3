// Removals by one value, and what must hold behind every removal: counts are lengths, slots behind counts are zero, and
// no slot points to a channel that is gone. The fixture checks it after each test.
#pragma once

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

#include "support/hierarchy_walk.h"
#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace test_support {

// The seven values that an entry is known by.
struct entry_key {
  int tag = 0;
  int net_index = 1;
  int network_id = 1;
  int ts_id = 100;
  std::uint32_t frequency = 11'000'000;
  int service_id = 1;
  int polarisation = 0;
};

inline int remove_from(std::int8_t view, const entry_key &key) {
  return vtype_remove_vch(static_cast<std::int8_t>(key.tag), static_cast<std::uint8_t>(key.net_index),
                          static_cast<std::uint16_t>(key.network_id), static_cast<std::uint16_t>(key.ts_id),
                          key.frequency, static_cast<std::uint16_t>(key.service_id),
                          static_cast<std::uint8_t>(key.polarisation), view);
}

inline int remove_silently_from(std::int8_t view, const entry_key &key) {
  return vtype_remove_virtual_channel_st(
      static_cast<std::int8_t>(key.tag), static_cast<std::uint8_t>(key.net_index),
      static_cast<std::uint16_t>(key.network_id), static_cast<std::uint16_t>(key.ts_id), key.frequency,
      static_cast<std::uint16_t>(key.service_id), static_cast<std::uint8_t>(key.polarisation), view);
}

inline int remove_everywhere(const entry_key &key) {
  return remove_virtual_channel_st(static_cast<std::int8_t>(key.tag), static_cast<std::uint8_t>(key.net_index),
                                   static_cast<std::uint16_t>(key.network_id), static_cast<std::uint16_t>(key.ts_id),
                                   key.frequency, static_cast<std::uint16_t>(key.service_id),
                                   static_cast<std::uint8_t>(key.polarisation));
}

// The real channel; the tag is not part of what it is known by.
inline int remove_service(const entry_key &key) {
  return remove_channel_st(static_cast<std::uint8_t>(key.net_index), static_cast<std::uint16_t>(key.network_id),
                           static_cast<std::uint16_t>(key.ts_id), key.frequency,
                           static_cast<std::uint16_t>(key.service_id), static_cast<std::uint8_t>(key.polarisation));
}

// An entry as a host writes it, of a service that need not exist.
inline virtual_channel_st entry_with(const entry_key &key, int major = 1) {
  virtual_channel_st entry = {};
  entry.vch_tag = static_cast<std::int8_t>(key.tag);
  entry.major_ch_num = static_cast<std::int16_t>(major);
  entry.net_index = static_cast<std::uint8_t>(key.net_index);
  entry.network_id = static_cast<std::uint16_t>(key.network_id);
  entry.ts_id = static_cast<std::uint16_t>(key.ts_id);
  entry.frequency = key.frequency;
  entry.service_id = static_cast<std::uint16_t>(key.service_id);
  entry.polarisation = static_cast<std::uint8_t>(key.polarisation);
  return entry;
}

// The views that removals and the sweep cover, in their order: all but the work view.
inline std::vector<view_case> swept_views() {
  std::vector<view_case> views = every_view();
  std::erase_if(views, [](const view_case &each) { return each.code == VIEW_WORK; });
  return views;
}

inline int count_of(std::int8_t view) { return *get_virtual_channel_vnumber(view); }

inline lines joined(lines first, const lines &second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

// The lines of a channel's dump.
inline lines dump_of(const channel_st *service, int level = 2) {
  return writes_at(level, [service] {
    print_channel_info(service);
    return 0;
  });
}

class removal_test : public store_test {
 protected:
  void TearDown() override {
    EXPECT_TRUE(counts_match_lists());
    const std::set<const channel_st *> filed = filed_services();
    for (const view_case &each : every_view()) {
      EXPECT_TRUE(slots_behind_count_are_zero(each.code, each.capacity)) << "view " << int{each.code};
      const virtual_channel_st *entries = get_virtual_channel_st(each.code);
      EXPECT_TRUE(std::all_of(
          entries, entries + each.capacity,
          [&filed](const virtual_channel_st &entry) { return entry.rch == nullptr || filed.count(entry.rch) != 0; }))
          << "view " << int{each.code} << " points to a channel that is gone";
    }
    store_test::TearDown();
  }

  // Makes one filed service, in no view.
  static channel_st *file(int service_id) {
    return file_service({.service_id = static_cast<std::uint16_t>(service_id)});
  }

 private:
  static std::set<const channel_st *> filed_services() {
    std::set<const channel_st *> filed;
    for (const network_ch_st *network : networks()) {
      for (const tp_ch_st *transponder : transponders(*network)) {
        for (const channel_st *service : services(*transponder)) {
          filed.insert(service);
        }
      }
    }
    return filed;
  }
};

}  // namespace test_support
