// What a merge deletes: unmarked services that the new list lacks, with every entry that shows them; nothing above
// them.
#include "merge_test.h"

namespace {

using test_support::append_entry;
using test_support::channel_file;
using test_support::counts_match_lists;
using test_support::entry_of;
using test_support::file_service;
using test_support::lines;
using test_support::log_capture;
using test_support::majors;
using test_support::service_data;
using numbers = std::vector<int>;

class MergeDeleting : public test_support::merge_test {
 protected:
  // Services 1 to n, each in every saved view; numbers are 10 times the service ids.
  static std::vector<channel_st *> list_everywhere(int n) {
    std::vector<channel_st *> services;
    for (int i = 1; i <= n; ++i) {
      services.push_back(file_service({.service_id = static_cast<std::uint16_t>(i)}));
      for (const auto &view : test_support::view_places()) {
        append_entry(static_cast<std::int8_t>(view.code),
                     entry_of(*services.back(), static_cast<std::int16_t>(10 * i)));
      }
    }
    return services;
  }

  static const tp_ch_st &first_transponder() {
    return *test_support::transponders(*test_support::networks().front()).front();
  }
};

TEST_F(MergeDeleting, TakesTheServiceAndEveryEntry) {
  list_everywhere(3);
  const log_capture log(0);

  EXPECT_EQ(merge(channel_file().service({.service_id = 1}).service({.service_id = 3})), 1);

  EXPECT_EQ(find({.service_id = 2}), nullptr);
  for (const auto &view : test_support::view_places()) {
    const auto code = static_cast<std::int8_t>(view.code);
    EXPECT_EQ(majors(code), (numbers{10, 30})) << view.code;
    EXPECT_TRUE(test_support::slots_behind_count_are_zero(code, view.capacity)) << view.code;
    EXPECT_EQ(get_virtual_channel_st(code)[1].rch, find({.service_id = 3})) << view.code;
  }
  EXPECT_EQ(log.writes(), lines{});
}

TEST_F(MergeDeleting, CountsTheTransponderDown) {
  list_everywhere(3);

  merge(channel_file().service({.service_id = 2}));

  EXPECT_EQ(first_transponder().rch_num, 1);
  EXPECT_TRUE(counts_match_lists());
}

TEST_F(MergeDeleting, LeavesEmptyTranspondersAndNetworks) {
  file_service({.service_id = 1});
  file_service({.frequency = 12'000'000, .service_id = 2});
  file_service({.net_index = 2, .service_id = 3});
  const std::vector<network_ch_st *> before = test_support::networks();

  EXPECT_EQ(merge(channel_file().service({.service_id = 1})), 2);

  EXPECT_EQ(test_support::networks(), before);
  EXPECT_EQ(list.network_num, 2);
  EXPECT_EQ(before[0]->tp_num, 2);
  EXPECT_EQ(test_support::transponders(*before[0])[1]->rch_num, 0);
  EXPECT_EQ(before[1]->tp_num, 1);
  EXPECT_EQ(test_support::transponders(*before[1])[0]->rch_num, 0);
  EXPECT_TRUE(counts_match_lists());
}

TEST_F(MergeDeleting, FollowsAnEmptyNewList) {
  list_everywhere(3);

  EXPECT_EQ(merge(channel_file()), 3);

  EXPECT_EQ(first_transponder().rch_num, 0);
  EXPECT_EQ(list.vnumber, 0);
  EXPECT_EQ(list.network_num, 1);
  EXPECT_TRUE(counts_match_lists());
}

TEST_F(MergeDeleting, CountsTogetherWithAdding) {
  list_everywhere(3);
  const log_capture log(2);

  EXPECT_EQ(merge(channel_file().service({.service_id = 7}).service({.service_id = 8})), 5);

  EXPECT_EQ(log.writes_with("add_count"), lines{"ChannelAPI check_load_channel:# add_count 2 , delete_count 3 \n"});
  EXPECT_EQ(majors(VIEW_ALL), (numbers{7, 8}));
}

TEST_F(MergeDeleting, TellsAtLevelTwoAndNotBelow) {
  const service_data data = {.net_index = 200,
                             .network_id = 40'000,
                             .ts_id = 50'000,
                             .frequency = 5'000'000'000,
                             .service_id = 0xC005,
                             .polarisation = 3};
  file_service(data);

  const lines all = test_support::writes_at(2, [&] { return merge(channel_file()); });

  EXPECT_EQ(lines(all.end() - 4, all.end()),
            (lines{"ChannelAPI check_load_channel:# delete : 200, 40000, 50000, 5000000000, 49157, 3, major_number 5 "
                   "\n",
                   "ChannelAPI remove_invalid_virtual_channel:# \n", "ChannelAPI link_rch_info:# \n",
                   "ChannelAPI check_load_channel:# add_count 0 , delete_count 1 \n"}));
  file_service(data);
  EXPECT_EQ(test_support::writes_at(1, [&] { return merge(channel_file()); }), lines{});
}

TEST_F(MergeDeleting, GoesInListOrder) {
  list_everywhere(2);
  file_service({.net_index = 2, .service_id = 3});
  const log_capture log(2);

  merge(channel_file());

  const std::string rest = ", 1, 100, 11000000, ";
  const std::string line = "ChannelAPI check_load_channel:# delete : ";
  EXPECT_EQ(log.writes_with("delete : "),
            (lines{line + "1" + rest + "1, 0, major_number 1 \n", line + "1" + rest + "2, 0, major_number 2 \n",
                   line + "2" + rest + "3, 0, major_number 3 \n"}));
}

TEST_F(MergeDeleting, SparesWhatWasMarkedBefore) {
  const std::vector<channel_st *> services = list_everywhere(3);
  services[0]->country_id = 1;
  services[1]->country_id = -1;

  EXPECT_EQ(merge(channel_file()), 1);

  EXPECT_EQ(majors(VIEW_USER), (numbers{10, 20}));
  EXPECT_EQ(services[0]->country_id, 1);
  EXPECT_EQ(services[1]->country_id, -1) << "not seen, not marked";
}

// Marks stay behind a merge: only a load takes them away.
TEST_F(MergeDeleting, DoesNothingInASecondMergeWithoutLoad) {
  merge(channel_file().service({.service_id = 1}).service({.service_id = 2}));

  EXPECT_EQ(merge(channel_file().service({.service_id = 1})), 0);

  EXPECT_NE(find({.service_id = 2}), nullptr);
  EXPECT_EQ(list.vnumber, 2);
}

TEST_F(MergeDeleting, IsDueAgainAfterALoad) {
  merge(channel_file().service({.service_id = 1}).service({.service_id = 2}));
  const test_support::bytes saved = save();
  reset_channel_list();
  load(saved);

  EXPECT_EQ(merge(channel_file().service({.service_id = 1})), 1);

  EXPECT_EQ(find({.service_id = 2}), nullptr);
  EXPECT_EQ(list.vnumber, 1);
}

TEST_F(MergeDeleting, TakesEntriesThatHadNoServiceBefore) {
  channel_st *service = file_service({.service_id = 1});
  virtual_channel_st lost = entry_of(*service, 5);
  lost.service_id = 99;
  append_entry(VIEW_USER, lost);
  append_entry(VIEW_USER, entry_of(*service, 6));

  EXPECT_EQ(merge(channel_file().service({.service_id = 1})), 0);

  EXPECT_EQ(majors(VIEW_USER), numbers{6});
}

// The first transponder within the tolerance is the entry's, though the service hangs from the next one now.
TEST_F(MergeDeleting, TakesAnEntryWhoseServiceCameBackOnAnotherTransponder) {
  channel_st *service = file_service({.frequency = 11'000'000});
  virtual_channel_st entry = entry_of(*service, 5);
  entry.frequency = 11'002'000;
  append_entry(VIEW_USER, entry);
  const service_data moved = {.frequency = 11'003'000};

  EXPECT_EQ(merge(channel_file().service(moved)), 2);

  ASSERT_EQ(majors(VIEW_USER), numbers{});
  EXPECT_NE(find(moved), nullptr);
}

// The work view is not swept; its entry loses the pointer and is reported.
TEST_F(MergeDeleting, LeavesEntriesOfTheWorkViewWithoutService) {
  const std::vector<channel_st *> services = list_everywhere(2);
  append_entry(VIEW_WORK, entry_of(*services[1], 5));
  append_entry(VIEW_WORK, entry_of(*services[0], 6));
  const log_capture log(0);

  EXPECT_EQ(merge(channel_file().service({.service_id = 1})), 1);

  EXPECT_EQ(log.writes(), lines{"ERROR: link...[4][0]-n_in 1, on 1, ts 100, freq 11000000, sid 2, polr 0\n"});
  EXPECT_EQ(majors(VIEW_WORK), (numbers{5, 6}));
  EXPECT_EQ(get_virtual_channel_st(VIEW_WORK)[0].rch, nullptr);
  EXPECT_EQ(get_virtual_channel_st(VIEW_WORK)[1].rch, services[0]);
}

TEST_F(MergeDeleting, LeavesNoPointerInTheHistory) {
  const std::vector<channel_st *> services = list_everywhere(2);
  get_return_channel()[3].vch.rch = services[1];
  get_return_channel()[4].vch.rch = services[0];

  merge(channel_file().service({.service_id = 1}));

  EXPECT_EQ(get_return_channel()[3].vch.rch, nullptr);
  EXPECT_EQ(get_return_channel()[4].vch.rch, services[0]);
}

TEST_F(MergeDeleting, RenewsStalePointersOfWhatStays) {
  const std::vector<channel_st *> services = list_everywhere(1);
  for (const auto &view : test_support::view_places()) {
    get_virtual_channel_st(static_cast<std::int8_t>(view.code))->rch = nullptr;
  }
  list.favorite_group_num = MAX_FAV;

  merge(channel_file().service({.service_id = 1}));

  for (const auto &view : test_support::view_places()) {
    EXPECT_EQ(get_virtual_channel_st(static_cast<std::int8_t>(view.code))->rch, services[0]) << view.code;
  }
}

TEST_F(MergeDeleting, LeavesTheCurrentViewEvenEmpty) {
  list_everywhere(1);
  change_vindex_type(VIEW_USER);

  merge(channel_file());

  EXPECT_EQ(list.vch_type, VIEW_USER);
  EXPECT_EQ(list.cur_vch, list.user_vch);
  EXPECT_EQ(*list.cur_vnumber, 0);
}

TEST_F(MergeDeleting, LeavesTheGroupsOfFavourites) {
  list_everywhere(1);
  list.favorite_group_num = 2;

  merge(channel_file());

  EXPECT_EQ(list.favorite_group_num, 2);
  EXPECT_EQ(list.favorite_vnumber[0], 0);
}

// Records that stand for one service twice, as a host may file them by hand, are marked one at a time.
TEST_F(MergeDeleting, TakesTheSecondOfTwins) {
  channel_st *first = file_service({.service_id = 1});
  channel_st *second = test_support::make_service({.service_id = 1});
  tp_ch_st *transponder = test_support::transponders(*test_support::networks().front()).front();
  list_add_tail(&second->list, &transponder->rch_list);
  ++transponder->rch_num;

  EXPECT_EQ(merge(channel_file().service({.service_id = 1})), 1);

  EXPECT_EQ(test_support::services(*transponder), std::vector{first});
  EXPECT_TRUE(counts_match_lists());
}

TEST_F(MergeDeleting, OfAFullListLeavesNothing) {
  test_support::fill_everything();

  EXPECT_EQ(merge(channel_file()), MAX_CHANNEL);

  EXPECT_EQ(list.network_num, 2);
  EXPECT_EQ(list.vnumber, 0);
  EXPECT_EQ(list.user_vnumber, 0);
  EXPECT_EQ(list.favorite_vnumber[19], 0);
  EXPECT_TRUE(counts_match_lists());
}

}  // namespace
