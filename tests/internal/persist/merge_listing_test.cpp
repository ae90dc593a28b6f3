// Where a merge lists what it adds: the views of the service type and of the number, at their ends, and what is said.
#include "merge_test.h"

#include <array>
#include <cstring>

namespace {

using test_support::append_entry;
using test_support::channel_file;
using test_support::entry_of;
using test_support::file_service;
using test_support::lines;
using test_support::log_capture;
using test_support::service_data;
using test_support::view_sizes;
using test_support::writes_at_levels;
using sizes = std::vector<int>;

class MergeListing : public test_support::merge_test {
 protected:
  // Merges one new service into an empty list; what is said when the scan's lines are on.
  lines add(const service_data &data, int level = -1, int scan_level = 5) {
    reset_channel_list();
    return writes_at_levels(level, scan_level, [&] { EXPECT_EQ(merge(channel_file().service(data)), 1); });
  }
};

TEST_F(MergeListing, ListsTelevision) {
  for (const std::uint8_t type : std::to_array<std::uint8_t>({0x01, 0x80, 0x81})) {
    for (const std::uint8_t source : std::to_array<std::uint8_t>({0, 4, 9})) {
      EXPECT_EQ(add({.service_type = type, .source_type = source}), lines{});
      EXPECT_EQ(view_sizes(), (sizes{1, 1, 0, 0, 0, 0})) << int{type};
    }
  }
}

TEST_F(MergeListing, ListsRadio) {
  EXPECT_EQ(add({.service_id = 5, .service_type = 2, .source_type = 1}),
            lines{"\t\tradio_channel_number 5, type 102\n\n"});
  EXPECT_EQ(view_sizes(), (sizes{1, 0, 1, 0, 0, 0}));
}

TEST_F(MergeListing, ListsTypeThreeOfSourceNineInTheAllView) {
  EXPECT_EQ(add({.service_type = 3, .source_type = 9}), lines{});
  EXPECT_EQ(view_sizes(), (sizes{1, 0, 0, 0, 0, 0}));
}

TEST_F(MergeListing, ListsTypeThreeOfOtherSourcesNowhere) {
  for (const std::uint8_t source : std::to_array<std::uint8_t>({0, 4, 8, 10, 0x89})) {
    EXPECT_EQ(add({.service_type = 3, .source_type = source}), lines{"WARNING: service_type 03 :"});
    EXPECT_EQ(view_sizes(), (sizes{0, 0, 0, 0, 0, 0})) << int{source};
    EXPECT_NE(find({}), nullptr);
  }
}

TEST_F(MergeListing, ListsOtherTypesNowhere) {
  const std::pair<std::uint8_t, const char *> types[] = {{0x00, "00"}, {0x04, "04"}, {0x0C, "0c"}, {0x7F, "7f"},
                                                         {0x82, "82"}, {0x83, "83"}, {0xFF, "ff"}};
  for (const auto &[type, text] : types) {
    EXPECT_EQ(add({.service_type = type, .source_type = 9}),
              lines{std::string("WARNING: service_type ") + text + " :"});
    EXPECT_EQ(view_sizes(), (sizes{0, 0, 0, 0, 0, 0})) << text;
    EXPECT_NE(find({}), nullptr);
  }
}

TEST_F(MergeListing, ListsPromotionOfAnyType) {
  EXPECT_EQ(add({.service_id = 200, .service_type = 0x0C, .source_type = 1}),
            (lines{"WARNING: service_type 0c :", "\t\tprom_channel_number 200, type 10c\n\n"}));
  EXPECT_EQ(view_sizes(), (sizes{0, 0, 0, 0, 0, 1}));
  EXPECT_NE(find({.service_id = 200}), nullptr);

  EXPECT_EQ(add({.service_id = 202, .service_type = 2, .source_type = 0}),
            (lines{"\t\tradio_channel_number 202, type 02\n\n", "\t\tprom_channel_number 202, type 02\n\n"}));
  EXPECT_EQ(view_sizes(), (sizes{1, 0, 1, 0, 0, 1}));

  EXPECT_EQ(add({.service_id = 606, .service_type = 0x81, .source_type = 0xFF}),
            lines{"\t\tprom_channel_number 606, type ff81\n\n"});
  EXPECT_EQ(view_sizes(), (sizes{1, 1, 0, 0, 0, 1}));
}

// The scan's own level gates these three; the channel list's does not.
TEST_F(MergeListing, TellsOfKindsAtTheLevelsOfTheScan) {
  const service_data unlisted = {.service_id = 200, .service_type = 0};
  const service_data radio = {.service_id = 200, .service_type = 2};
  EXPECT_EQ(add(unlisted, -1, 0), lines{});
  EXPECT_EQ(add(unlisted, -1, 1), lines{"WARNING: service_type 00 :"});
  EXPECT_EQ(add(unlisted, -1, 4), lines{"WARNING: service_type 00 :"});
  EXPECT_EQ(add(unlisted, 1, 0), lines{});
  EXPECT_EQ(add(radio, -1, 4), lines{});
  EXPECT_EQ(add(radio, -1, 5).size(), 2U);
  EXPECT_EQ(add(radio, 1, 4), lines{});
}

TEST_F(MergeListing, FillsEveryFieldOfAnEntry) {
  const service_data data = {.net_index = 201,
                             .network_id = 50'002,
                             .ts_id = 50'003,
                             .frequency = 0x1'FFFF'FFF0,
                             .service_id = 0xC005,
                             .polarisation = 204,
                             .service_type = 0x80};
  virtual_channel_st left_over;
  std::memset(&left_over, 0x5A, sizeof left_over);
  list.vch[0] = list.tv_vch[0] = left_over;

  EXPECT_EQ(merge(channel_file().service(data)), 1);

  for (const virtual_channel_st *entry : {&list.vch[0], &list.tv_vch[0]}) {
    EXPECT_EQ(entry->vch_tag, 0);
    EXPECT_EQ(entry->favorite_id, 0x5A) << "left as it was";
    EXPECT_EQ(entry->reserved_7, 0x5A) << "left as it was";
    EXPECT_EQ(entry->reserved_13, 0x5A) << "left as it was";
    EXPECT_EQ(entry->major_ch_num, 5);
    EXPECT_EQ(entry->minor_ch_num, 0);
    EXPECT_EQ(entry->net_index, 201);
    EXPECT_EQ(entry->frequency, 0xFFFF'FFF0);
    EXPECT_EQ(entry->polarisation, 204);
    EXPECT_EQ(entry->service_id, 0xC005);
    EXPECT_EQ(entry->network_id, 50'002);
    EXPECT_EQ(entry->ts_id, 50'003);
    ASSERT_NE(entry->rch, nullptr);
    EXPECT_EQ(entry->rch, find(data));
  }
}

TEST_F(MergeListing, FillsEntriesOfRadioAndPromotionAlike) {
  const service_data data = {.net_index = 2, .network_id = 3, .ts_id = 4, .service_id = 0x40C8, .service_type = 2};
  list.radio_vch[0].favorite_id = list.promo_vch[0].favorite_id = 7;

  merge(channel_file().service(data));

  for (const std::int8_t view : std::to_array<std::int8_t>({VIEW_ALL, VIEW_RADIO, VIEW_PROMOTION})) {
    const virtual_channel_st &entry = get_virtual_channel_st(view)[0];
    const virtual_channel_st expected = entry_of(*find(data), 200);
    EXPECT_EQ(entry.favorite_id, view == VIEW_ALL ? 0 : 7);
    EXPECT_EQ(entry.major_ch_num, expected.major_ch_num);
    EXPECT_EQ(entry.net_index, 2);
    EXPECT_EQ(entry.network_id, 3);
    EXPECT_EQ(entry.ts_id, 4);
    EXPECT_EQ(entry.service_id, 0x40C8);
    EXPECT_EQ(entry.frequency, expected.frequency);
    EXPECT_EQ(entry.rch, expected.rch);
  }
}

TEST_F(MergeListing, AppendsBehindWhatIsListed) {
  channel_st *old = file_service({.service_id = 1});
  append_entry(VIEW_ALL, entry_of(*old, 40));
  append_entry(VIEW_USER, entry_of(*old, 41));

  EXPECT_EQ(merge(channel_file().service({.service_id = 2}).service({.service_id = 1})), 1);

  EXPECT_EQ(test_support::majors(VIEW_ALL), (std::vector<int>{40, 2}));
  EXPECT_EQ(test_support::majors(VIEW_USER), (std::vector<int>{41}));
}

TEST_F(MergeListing, TellsZeroOfANumberThatCameFromTheCount) {
  const log_capture log(2);

  merge(channel_file().service({.service_id = 0x8000}));

  EXPECT_EQ(log.writes_with("add : "),
            lines{"ChannelAPI check_load_channel:# add : 1, 1, 100, 11000000, 32768, 0, major_number 0 \n"});
  EXPECT_EQ(list.vch[0].major_ch_num, 1);
}

TEST_F(MergeListing, TellsOfNoEntryWhereThereIsNone) {
  const log_capture log(2);

  merge(channel_file().service({.service_type = 0}));

  EXPECT_EQ(log.writes_with("add : "), lines{});
  EXPECT_EQ(log.writes_with("add_count"), lines{"ChannelAPI check_load_channel:# add_count 1 , delete_count 0 \n"});
}

TEST_F(MergeListing, LeavesTheCurrentViewWhichShowsTheNewEntries) {
  test_support::fill_view(VIEW_TV, 1);
  change_vindex_type(VIEW_TV);

  merge(channel_file().service({.service_id = 1}).service({.service_id = 2}));

  EXPECT_EQ(list.vch_type, VIEW_TV);
  EXPECT_EQ(list.cur_vch, list.tv_vch);
  EXPECT_EQ(list.cur_vnumber, &list.tv_vnumber);
  EXPECT_EQ(*list.cur_vnumber, 2);
}

TEST_F(MergeListing, DoesNotSort) {
  test_support::fill_view(VIEW_ALL, 1);

  merge(channel_file().service({.service_id = 1}).service({.service_id = 300}).service({.service_id = 20}));

  EXPECT_EQ(test_support::majors(VIEW_ALL), (std::vector<int>{1, 300, 20}));
}

}  // namespace
