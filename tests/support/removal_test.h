// Removals by one value, and what must hold behind every removal: counts are lengths, slots behind counts are zero, and
// no slot points to a channel that is gone. The fixture checks it after each test.
#pragma once

#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "support/channel_key.h"
#include "support/hierarchy_walk.h"
#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace test_support {

inline int remove_from(std::int8_t view, const channel_key &key) { return key.call(vtype_remove_vch, view); }

inline int remove_silently_from(std::int8_t view, const channel_key &key) {
  return key.call(vtype_remove_virtual_channel_st, view);
}

inline int remove_everywhere(const channel_key &key) { return key.call(remove_virtual_channel_st); }

inline int remove_service(const channel_key &key) { return key.call_untagged(remove_channel_st); }

// An entry as a host writes it, of a service that need not exist.
inline virtual_channel_st entry_with(const channel_key &key, int major = 1) {
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

// What a sweep says at level 2 when it finds nothing.
inline const std::string sweep_line = "ChannelAPI remove_invalid_virtual_channel:# \n";

inline int count_of(std::int8_t view) { return *get_virtual_channel_vnumber(view); }

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

  // Makes every view hold two entries of a service that goes, numbered 1 and 3, around one of a service that stays.
  static void list_around(channel_st &gone, channel_st &kept) {
    for (const view_case &each : every_view()) {
      append_entry(each.code, entry_of(gone, 1));
      append_entry(each.code, entry_of(kept, 2));
      append_entry(each.code, entry_of(gone, 3));
    }
  }
  // What such views hold when the service has gone: the work view is not swept, but points to it no more.
  static void expect_gone_from_swept_views(const channel_st *kept) {
    for (const view_case &each : swept_views()) {
      EXPECT_EQ(majors(each.code), (std::vector<int>{2})) << int{each.code};
      EXPECT_EQ(get_virtual_channel_st(each.code)[0].rch, kept) << int{each.code};
    }
    EXPECT_EQ(majors(VIEW_WORK), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(get_virtual_channel_st(VIEW_WORK)[0].rch, nullptr);
    EXPECT_EQ(get_virtual_channel_st(VIEW_WORK)[1].rch, kept);
    EXPECT_EQ(get_virtual_channel_st(VIEW_WORK)[2].rch, nullptr);
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
