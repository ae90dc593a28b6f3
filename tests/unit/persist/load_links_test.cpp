// After a load every entry points to its real channel, or to none, and then a line says so.
#include "support/channel_file.h"
#include "support/log_capture.h"

namespace {

namespace list_field = test_support::list_field;
using test_support::channel_file;
using test_support::file_test;
using test_support::log_capture;
using test_support::service_data;
using lines = std::vector<std::string>;

class LoadedLinks : public file_test {
 protected:
  static channel_file file_with_groups() {
    return channel_file().group(GROUP_GENRE, 1, "News").group(GROUP_COUNTRY, 1, "Malta");
  }

  static inline const service_data present = {.service_id = 7};
  static inline const service_data absent = {.net_index = 3,
                                             .network_id = 40000,
                                             .ts_id = 50000,
                                             .frequency = 0xFFFFFFFF,
                                             .service_id = 60000,
                                             .polarisation = 2};
};

// Compatibility: the link looks one view further than the last favourite group, behind a full table at an unknown code.
TEST_F(LoadedLinks, WarnOfTheCodeBehindTwentyFavouriteGroups) {
  const auto load_full_table = [this] { return load(file_with_groups().set(80'098, 2, 20).data); };

  EXPECT_EQ(test_support::writes_at(1, load_full_table),
            (lines{"WARNING: get_virtual_channel_st:# unknown vch_type=30\n",
                   "WARNING: get_virtual_channel_vnumber:# unknown vch_type=30\n"}));
  EXPECT_EQ(test_support::writes_at(0, load_full_table), lines{});
}

TEST_F(LoadedLinks, PointEveryEntryOfEveryViewToItsService) {
  channel_file file = file_with_groups();
  file.service(present);
  for (const auto &view : test_support::view_places()) {
    file.entry(view.code, present, 1);
  }
  file.set(list_field::favorite_group_num, 2, 20);
  const log_capture log(0);

  load(file.data);

  channel_st *service = get_channel_st(1, 1, 100, 11'000'000, 7, 0);
  ASSERT_NE(service, nullptr);
  for (const auto &view : test_support::view_places()) {
    EXPECT_EQ(get_virtual_channel_st(static_cast<std::int8_t>(view.code))->rch, service) << view.code;
  }
  EXPECT_EQ(log.writes(), lines{});
}

TEST_F(LoadedLinks, ReportEveryEntryWithoutServiceAndKeepIt) {
  channel_file file = file_with_groups();
  file.service(present).entry(VIEW_ALL, present, 1);
  for (const int view : {0, 1, 2, 3, 5, 10, 11, 12}) {
    file.entry(view, absent, 2);
  }
  file.set(list_field::favorite_group_num, 2, 2);
  const log_capture log(0);

  EXPECT_EQ(load(file.data), 10);

  const std::string rest = "-n_in 3, on 40000, ts 50000, freq -1, sid 60000, polr 2\n";
  EXPECT_EQ(log.writes(),
            (lines{"ERROR: link...[0][1]" + rest, "ERROR: link...[1][0]" + rest, "ERROR: link...[2][0]" + rest,
                   "ERROR: link...[3][0]" + rest, "ERROR: link...[5][0]" + rest, "ERROR: link...[10][0]" + rest,
                   "ERROR: link...[11][0]" + rest, "ERROR: link...[12][0]" + rest}));
  EXPECT_EQ(list.vnumber, 2);
  EXPECT_EQ(list.vch[1].rch, nullptr);
  EXPECT_NE(list.vch[0].rch, nullptr);
}

TEST_F(LoadedLinks, AreNotReportedBelowLevelZero) {
  const log_capture log(-1);

  load(file_with_groups().service(present).entry(VIEW_ALL, absent, 1).data);

  EXPECT_EQ(log.writes(), lines{});
}

TEST_F(LoadedLinks, ReachOneFavouriteViewPastTheLastGroup) {
  channel_file file = file_with_groups();
  file.service(present).set(list_field::favorite_group_num, 2, 2);
  file.entry(11, present, 1).entry(12, present, 1).entry(13, present, 1);

  load(file.data);

  EXPECT_NE(list.favorite_vch[1][0].rch, nullptr);
  EXPECT_NE(list.favorite_vch[2][0].rch, nullptr);
  EXPECT_EQ(list.favorite_vch[3][0].rch, nullptr);
}

TEST_F(LoadedLinks, FindNoViewPastAFullTableOfGroups) {
  const log_capture log(1);

  load(file_with_groups().service(present).entry(29, present, 1).set(list_field::favorite_group_num, 2, 20).data);

  EXPECT_EQ(log.writes(), (lines{"WARNING: get_virtual_channel_st:# unknown vch_type=30\n",
                                 "WARNING: get_virtual_channel_vnumber:# unknown vch_type=30\n"}));
  EXPECT_NE(list.favorite_vch[19][0].rch, nullptr);
}

TEST_F(LoadedLinks, CoverTheWorkView) {
  test_support::append_entry(VIEW_WORK, test_support::entry_of(*file_service(present), 1));
  reset_channel_list();

  load(file_with_groups().service(present).data);

  EXPECT_EQ(get_virtual_channel_st(VIEW_WORK)->rch, get_channel_st(1, 1, 100, 11'000'000, 7, 0));
  EXPECT_NE(get_virtual_channel_st(VIEW_WORK)->rch, nullptr);
}

TEST_F(LoadedLinks, DoNotTrustThePointersOfTheFile) {
  channel_file file = file_with_groups();
  file.service(present).entry(VIEW_ALL, present, 1).entry(VIEW_ALL, absent, 2);
  test_support::fill_pointer_slots(file.data, file.records, '\x5A');

  EXPECT_EQ(load(file.data), 10);

  EXPECT_EQ(list.vch[0].rch, get_channel_st(1, 1, 100, 11'000'000, 7, 0));
  EXPECT_EQ(list.vch[1].rch, nullptr);
  EXPECT_EQ(list.cur_vch, list.vch);
  EXPECT_EQ(list.cur_vnumber, &list.vnumber);
  EXPECT_EQ(list.spare_list_a.next, &list.spare_list_a);
  EXPECT_EQ(list.spare_list_b.prev, &list.spare_list_b);
  EXPECT_EQ(list.user_vch[4999].rch, nullptr);
}

TEST_F(LoadedLinks, MatchFrequenciesLessThanTheToleranceApart) {
  service_data near = present;
  near.frequency += 2499;
  service_data far = present;
  far.frequency += 2500;

  load(file_with_groups().service(present).entry(VIEW_ALL, near, 1).entry(VIEW_ALL, far, 2).data);

  EXPECT_NE(list.vch[0].rch, nullptr);
  EXPECT_EQ(list.vch[1].rch, nullptr);
}

}  // namespace
