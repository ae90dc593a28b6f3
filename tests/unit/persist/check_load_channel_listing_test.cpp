// What a merge at the fixed path adds: which views list a new service, under which number, and what is said of it.
#include "support/hierarchy_walk.h"
#include "support/merge_results.h"
#include "support/new_list_folder.h"

namespace {

using test_support::channel_file;
using test_support::entry_of;
using test_support::file_service;
using test_support::joined;
using test_support::lines;
using test_support::log_capture;
using test_support::majors;
using test_support::new_list_summary;
using test_support::service_data;
using test_support::view_sizes;
using test_support::writes_at_levels;
using sizes = std::vector<int>;

class CheckLoadListing : public test_support::new_list_test {
 protected:
  // Merges one new service into an empty list; what is said at level 0 and a level of the scan.
  static lines add(const service_data &data, int scan_level) {
    reset_channel_list();
    return writes_at_levels(0, scan_level, [&] { EXPECT_EQ(merge(channel_file().service(data)), 1); });
  }

  // A view whose slots all show the one service of the list.
  static void fill(std::int8_t view, std::int16_t capacity) {
    reset_channel_list();
    const virtual_channel_st entry = entry_of(*file_service({.service_id = 1}), 9);
    std::fill_n(get_virtual_channel_st(view), capacity, entry);
    *get_virtual_channel_vnumber(view) = capacity;
  }
};

struct listed {
  service_data service;
  sizes views;    // ALL, TV, radio, USER, work, promotion
  lines details;  // at level 5 of the scan
  lines warning;  // at its level 1
};

TEST_F(CheckLoadListing, DependsOnTheTypeTheSourceAndTheNumber) {
  const listed cases[] = {
      {{.service_type = 0x01}, {1, 1, 0, 0, 0, 0}, {}, {}},
      {{.service_type = 0x80}, {1, 1, 0, 0, 0, 0}, {}, {}},
      {{.service_type = 0x81}, {1, 1, 0, 0, 0, 0}, {}, {}},
      {{.service_id = 5, .service_type = 0x02, .source_type = 3},
       {1, 0, 1, 0, 0, 0},
       {"\t\tradio_channel_number 5, type 302\n\n"},
       {}},
      {{.service_type = 0x03, .source_type = 9}, {1, 0, 0, 0, 0, 0}, {}, {}},
      {{.service_type = 0x03, .source_type = 8},
       {0, 0, 0, 0, 0, 0},
       {"WARNING: service_type 03 :"},
       {"WARNING: service_type 03 :"}},
      {{.service_id = 0xC25F, .service_type = 0x7F, .source_type = 1},
       {0, 0, 0, 0, 0, 1},
       {"WARNING: service_type 7f :", "\t\tprom_channel_number 607, type 17f\n\n"},
       {"WARNING: service_type 7f :"}},
  };
  for (const listed &each : cases) {
    EXPECT_EQ(add(each.service, 5), each.details);
    EXPECT_EQ(view_sizes(), each.views) << int{each.service.service_type};
    EXPECT_EQ(add(each.service, 4), each.warning);
    EXPECT_EQ(add(each.service, 1), each.warning);
    EXPECT_EQ(add(each.service, 0), lines{});
    EXPECT_EQ(view_sizes(), each.views) << int{each.service.service_type};
  }
}

TEST_F(CheckLoadListing, NumbersByTheServiceIdAndElseByTheCount) {
  channel_file file;
  for (const int id : {0x0001, 0x4000, 0x8003, 0xC000, 0x3FFF}) {
    file.service({.service_id = static_cast<std::uint16_t>(id)});
  }

  EXPECT_EQ(merge(file), 5);

  EXPECT_EQ(majors(VIEW_ALL), (std::vector<int>{1, 2, 3, 4, 0x3FFF}));
  EXPECT_EQ(majors(VIEW_TV), majors(VIEW_ALL));
  EXPECT_EQ(list.vch[3].rch, get_channel_st(1, 1, 100, 11'000'000, 0xC000, 0));
}

TEST_F(CheckLoadListing, SkipsAFullViewAndFilesTheService) {
  const struct {
    std::int8_t view;
    std::int16_t capacity;
    service_data added;
  } cases[] = {{VIEW_ALL, 5000, {.service_id = 2}},
               {VIEW_TV, 4000, {.service_id = 2}},
               {VIEW_RADIO, 1000, {.service_id = 2, .service_type = 2}},
               {VIEW_PROMOTION, 10, {.service_id = 200, .service_type = 2}}};
  for (const auto &each : cases) {
    for (const int level : {0, -1}) {
      fill(each.view, each.capacity);
      const log_capture log(level);

      EXPECT_EQ(merge(channel_file().service({.service_id = 1}).service(each.added)), 1);

      const std::string line = "ERROR: check_load_channel:# view " + std::to_string(each.view) + " is full, " +
                               std::to_string(each.capacity) + " entries\n";
      EXPECT_EQ(log.writes(), level == 0 ? lines{line} : lines{});
      EXPECT_EQ(majors(each.view), std::vector<int>(static_cast<std::size_t>(each.capacity), 9));
      EXPECT_NE(get_channel_st(1, 1, 100, 11'000'000, each.added.service_id, 0), nullptr);
    }
  }
}

TEST_F(CheckLoadListing, LosesAServiceThatTheListRefusesAndSaysSo) {
  for (const int level : {0, -1}) {
    reset_channel_list();
    file_service({.service_id = 1})->country_id = 1;
    tp_ch_st *transponder = test_support::transponders(*test_support::networks().front()).front();
    transponder->rch_num = 0xFFFF;
    const log_capture log(level);

    EXPECT_EQ(merge(channel_file().service({.service_id = 2})), 1);

    EXPECT_EQ(log.writes(), level == 0 ? (lines{"ERROR: add_rch_info:# list is full, 65535 records\n",
                                                "ERROR: check_load_channel:#  can't find channel  \n"})
                                       : lines{});
    EXPECT_EQ(get_channel_st(1, 1, 100, 11'000'000, 2, 0), nullptr);
    EXPECT_EQ(view_sizes(), (sizes{0, 0, 0, 0, 0, 0}));
    transponder->rch_num = 1;
  }
}

TEST_F(CheckLoadListing, TellsEveryStepAtLevelTwo) {
  test_support::append_entry(VIEW_ALL, entry_of(*file_service({.service_id = 0xC001}), 1));
  const log_capture log(2);

  EXPECT_EQ(merge(channel_file().service({.service_id = 0x4002, .name = "New"})), 2);

  EXPECT_EQ(log.writes(),
            joined({{"ChannelAPI new_load_channel:# (/DATA/BACKUP/all_channel.dat)\n",
                     "ChannelAPI new_load_channel:# new_channel_list->network_num 1\n"},
                    new_list_summary(),
                    {"ChannelAPI add_rch_info:# rch: s_id(0x4002), n_id(0x1), ts_id(0x64), name(New), type(0x0101)\n",
                     "ChannelAPI check_load_channel:# add : 1, 1, 100, 11000000, 16386, 0, major_number 2 \n",
                     "ChannelAPI check_load_channel:# delete : 1, 1, 100, 11000000, 49153, 0, major_number 1 \n",
                     "ChannelAPI remove_invalid_virtual_channel:# \n", "ChannelAPI link_rch_info:# \n",
                     "ChannelAPI check_load_channel:# add_count 1 , delete_count 1 \n"}}));
}

}  // namespace
