// Full views: the service is filed, the entry skipped and a line says so; the other views still take theirs.
#include "merge_test.h"

#include <algorithm>
#include <array>

namespace {

using test_support::channel_file;
using test_support::entry_of;
using test_support::file_service;
using test_support::lines;
using test_support::log_capture;
using test_support::service_data;

struct limit {
  std::int8_t view;
  std::int16_t capacity;
  service_data added;  // a service whose number in that view comes from the count, where there is such a number
};

class MergeLimits : public test_support::merge_test {
 protected:
  static inline const limit limits[] = {{VIEW_ALL, 5000, {.service_id = 0x4000, .service_type = 1}},
                                        {VIEW_TV, 4000, {.service_id = 0x4000, .service_type = 0x81}},
                                        {VIEW_RADIO, 1000, {.service_id = 0x4000, .service_type = 2}},
                                        {VIEW_PROMOTION, 10, {.service_id = 200, .service_type = 0}}};
  static inline const service_data listed = {.service_id = 1};

  static std::string full_line(const limit &each) {
    return "ERROR: check_load_channel:# view " + std::to_string(each.view) + " is full, " +
           std::to_string(each.capacity) + " entries\n";
  }

  // A view of n entries that all show the one service of the list.
  static void fill(const limit &each, int n) {
    reset_channel_list();
    const virtual_channel_st entry = entry_of(*file_service(listed), 9);
    std::fill_n(get_virtual_channel_st(each.view), n, entry);
    *get_virtual_channel_vnumber(each.view) = static_cast<std::int16_t>(n);
  }

  int merge_one_more(const limit &each) { return merge(channel_file().service(listed).service(each.added)); }
};

TEST_F(MergeLimits, AreReachedByTheLastFreeSlot) {
  for (const limit &each : limits) {
    for (const int n : {0, 1, each.capacity - 2, each.capacity - 1}) {
      fill(each, n);
      const log_capture log(0);

      EXPECT_EQ(merge_one_more(each), 1);

      EXPECT_EQ(log.writes(), lines{});
      ASSERT_EQ(*get_virtual_channel_vnumber(each.view), n + 1);
      const virtual_channel_st &entry = get_virtual_channel_st(each.view)[n];
      EXPECT_EQ(entry.rch, find(each.added)) << int{each.view} << " " << n;
      EXPECT_EQ(entry.major_ch_num, each.view == VIEW_PROMOTION ? 200 : n + 1);
    }
  }
}

TEST_F(MergeLimits, SkipTheEntryAndFileTheService) {
  for (const limit &each : limits) {
    fill(each, each.capacity);
    const test_support::bytes before = test_support::list_in_memory();
    const lines all = test_support::writes_at_levels(0, 5, [&] { EXPECT_EQ(merge_one_more(each), 1); });

    EXPECT_EQ(std::ranges::count(all, full_line(each)), 1) << int{each.view};
    EXPECT_EQ(*get_virtual_channel_vnumber(each.view), each.capacity);
    ASSERT_NE(find(each.added), nullptr);
    EXPECT_EQ(find(each.added)->country_id, 1);
    EXPECT_EQ(test_support::majors(each.view), std::vector<int>(static_cast<std::size_t>(each.capacity), 9));
    EXPECT_TRUE(test_support::counts_match_lists());
  }
}

TEST_F(MergeLimits, SayNothingButThatTheyAreReached) {
  for (const limit &each : limits) {
    fill(each, each.capacity);
    EXPECT_EQ(test_support::writes_at(0, [&] { return merge_one_more(each); }), lines{full_line(each)});
    fill(each, each.capacity);
    EXPECT_EQ(test_support::writes_at(-1, [&] { return merge_one_more(each); }), lines{});
  }
}

// Lines that tell of an entry are not written where there is none.
TEST_F(MergeLimits, TellOfNoEntry) {
  const std::string tales[] = {"add : ", "", "radio_channel_number", "prom_channel_number"};
  for (std::size_t i = 0; i < std::size(limits); ++i) {
    if (tales[i].empty()) {
      continue;
    }
    fill(limits[i], limits[i].capacity);
    const lines all = test_support::writes_at_levels(2, 5, [&] { merge_one_more(limits[i]); });
    EXPECT_TRUE(std::ranges::none_of(all, [&](const auto &line) { return line.find(tales[i]) != std::string::npos; }));
  }
}

TEST_F(MergeLimits, OfOneViewLeaveTheOthersOpen) {
  fill(limits[0], 5000);
  merge_one_more(limits[0]);
  EXPECT_EQ(test_support::majors(VIEW_TV), std::vector{1});

  fill(limits[1], 4000);
  merge_one_more(limits[1]);
  EXPECT_EQ(test_support::majors(VIEW_ALL), std::vector{1});

  fill(limits[2], 1000);
  merge_one_more(limits[2]);
  EXPECT_EQ(test_support::majors(VIEW_ALL), std::vector{1});
}

TEST_F(MergeLimits, HoldForEveryServiceOfAMerge) {
  channel_file file;
  for (std::uint16_t top = 0; top < 4; ++top) {
    for (const int number : {200, 202, 606, 607}) {
      file.service({.service_id = static_cast<std::uint16_t>(top << 14 | number), .service_type = 0});
    }
  }
  const log_capture log(0);

  EXPECT_EQ(merge(file), 16);

  EXPECT_EQ(log.writes(), lines(6, full_line(limits[3])));
  EXPECT_EQ(list.promo_vnumber, 10);
}

// Entries go after others came: the room that a deletion makes is not used by the same merge.
TEST_F(MergeLimits, HoldBeforeAnythingIsDeleted) {
  fill(limits[3], 10);
  const log_capture log(0);

  EXPECT_EQ(merge(channel_file().service(limits[3].added)), 2);

  EXPECT_EQ(log.writes(), lines{full_line(limits[3])});
  EXPECT_EQ(list.promo_vnumber, 0);
}

TEST_F(MergeLimits, HoldForCountsThatAHostWroteOutsideTheArray) {
  for (const limit &each : limits) {
    for (const int count : {each.capacity + 1, 32767}) {
      fill(each, each.capacity);
      *get_virtual_channel_vnumber(each.view) = static_cast<std::int16_t>(count);
      EXPECT_EQ(test_support::writes_at(0, [&] { return merge_one_more(each); }), lines{full_line(each)});
    }
    for (const std::int16_t count : std::to_array<std::int16_t>({-1, -32768})) {
      fill(each, 0);
      *get_virtual_channel_vnumber(each.view) = count;
      EXPECT_EQ(test_support::writes_at(0, [&] { return merge_one_more(each); }), lines{});
      EXPECT_EQ(*get_virtual_channel_vnumber(each.view), 1);
      EXPECT_EQ(get_virtual_channel_st(each.view)->rch, find(each.added));
    }
  }
}

TEST_F(MergeLimits, LetAFullListBeMergedWithItself) {
  test_support::fill_everything();
  const test_support::bytes saved = save();

  EXPECT_EQ(merge(saved), 0);

  EXPECT_TRUE(save().substr(0, test_support::list_size) == saved.substr(0, test_support::list_size));
}

TEST_F(MergeLimits, LetAFullListBeAddedToAnEmptyOne) {
  test_support::fill_everything();
  const test_support::bytes saved = save();
  reset_channel_list();
  const log_capture log(0);

  EXPECT_EQ(merge(saved), 5000);

  EXPECT_EQ(log.writes(), lines{});
  EXPECT_EQ(list.vnumber, 5000);
  EXPECT_EQ(list.tv_vnumber, 4000);
  EXPECT_EQ(list.radio_vnumber, 1000);
  EXPECT_EQ(list.promo_vnumber, 4);
  EXPECT_TRUE(test_support::counts_match_lists());
}

// A transponder counts its services in 16 bits. A list of another 65,535 on it takes no more.
TEST_F(MergeLimits, OfATransponderRefuseTheService) {
  file_service(listed)->country_id = 1;
  tp_ch_st *transponder = test_support::transponders(*test_support::networks().front()).front();
  transponder->rch_num = 0xFFFF;
  const log_capture log(0);

  merge(channel_file().service({.service_id = 2}));

  EXPECT_EQ(log.writes(), (lines{"ERROR: add_rch_info:# list is full, 65535 records\n",
                                 "ERROR: check_load_channel:#  can't find channel  \n"}));
  EXPECT_EQ(find({.service_id = 2}), nullptr);
  EXPECT_EQ(list.vnumber, 0);
  transponder->rch_num = 1;
}

}  // namespace
