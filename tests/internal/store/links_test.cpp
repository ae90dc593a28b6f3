// Refreshing the cached pointers of view entries: which views are visited, what an unresolved entry gets, and the lines
// that are logged.
#include "channel/store/links.h"

#include <channel/channel.h>
#include <gtest/gtest.h>

#include "support/log_capture.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;
using channel::link_rch_info;

const int all_views[] = {0,  1,  2,  3,  4,  5,  10, 11, 12, 13, 14, 15, 16,
                         17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29};

class Links : public store_test {
 protected:
  // An entry whose cached pointer leads elsewhere than its identity.
  static virtual_channel_st misled_entry(channel_st *service) {
    virtual_channel_st entry = entry_of(*service, 1);
    entry.rch = reinterpret_cast<channel_st *>(get_channel_list());
    return entry;
  }
  static const channel_st *linked(int view, int index = 0) {
    return get_virtual_channel_st(static_cast<std::int8_t>(view))[index].rch;
  }
};

TEST_F(Links, EveryEntryOfEveryViewGetsItsChannel) {
  channel_st *first = file_service({.service_id = 1});
  channel_st *second = file_service({.frequency = 12'000'000, .service_id = 2});
  list.favorite_group_num = MAX_FAV;
  for (const int view : all_views) {
    append_entry(static_cast<std::int8_t>(view), misled_entry(first));
    append_entry(static_cast<std::int8_t>(view), misled_entry(second));
  }

  EXPECT_EQ(link_rch_info(), 0);

  for (const int view : all_views) {
    EXPECT_EQ(linked(view, 0), first) << "view " << view;
    EXPECT_EQ(linked(view, 1), second) << "view " << view;
  }
}

TEST_F(Links, FullViewsAreLinkedToTheirLastEntry) {
  fill_everything();
  append_entry(VIEW_WORK, list.vch[MAX_CHANNEL - 1]);
  for (const int view : all_views) {
    const auto type = static_cast<std::int8_t>(view);
    get_virtual_channel_st(type)[*get_virtual_channel_vnumber(type) - 1].rch = nullptr;
  }

  EXPECT_EQ(writes_at(0, link_rch_info), lines{});

  for (const int view : all_views) {
    const auto type = static_cast<std::int8_t>(view);
    EXPECT_NE(linked(view, *get_virtual_channel_vnumber(type) - 1), nullptr) << "view " << view;
  }
}

TEST_F(Links, EntriesWithoutAFrequencyAreLinkedByTheirTransportStream) {
  channel_st *service = file_service({});
  virtual_channel_st entry = misled_entry(service);
  entry.frequency = 0;
  append_entry(VIEW_ALL, entry);

  link_rch_info();

  EXPECT_EQ(linked(VIEW_ALL), service);
}

TEST_F(Links, SlotsBehindTheCountAreLeftAlone) {
  channel_st *service = file_service({});
  append_entry(VIEW_TV, misled_entry(service));
  list.tv_vch[1] = misled_entry(service);

  link_rch_info();

  EXPECT_EQ(linked(VIEW_TV, 0), service);
  EXPECT_NE(linked(VIEW_TV, 1), service);
  list.tv_vch[1] = {};
}

TEST_F(Links, AnEntryThatDoesNotResolveGetsNullAndIsReported) {
  file_service({});
  virtual_channel_st lost = {};
  lost.net_index = 255;
  lost.network_id = 0xFFFF;
  lost.ts_id = 0xFFFE;
  lost.frequency = 0xFFFFFFFF;
  lost.service_id = 0xFFFD;
  lost.polarisation = 254;
  lost.rch = reinterpret_cast<channel_st *>(&list);
  append_entry(VIEW_WORK, entry_of(*file_service({.service_id = 2}), 1));
  append_entry(VIEW_WORK, lost);

  EXPECT_EQ(writes_at(0, link_rch_info),
            lines{"ERROR: link...[4][1]-n_in 255, on 65535, ts 65534, freq -1, sid 65533, polr 254\n"});

  EXPECT_EQ(linked(VIEW_WORK, 1), nullptr);
  EXPECT_EQ(writes_at(-1, link_rch_info), lines{});
  EXPECT_EQ(link_rch_info(), 0);
}

TEST_F(Links, ViewsAreVisitedInTheOrderOfTheirCodes) {
  list.favorite_group_num = 2;
  for (const int view : {11, 10, 5, 4, 3, 2, 1, 0}) {
    append_entry(static_cast<std::int8_t>(view), {});
  }
  lines expected;
  for (const int view : {0, 1, 2, 3, 4, 5, 10, 11}) {
    expected.push_back("ERROR: link...[" + std::to_string(view) + "][0]-n_in 0, on 0, ts 0, freq 0, sid 0, polr 0\n");
  }

  EXPECT_EQ(writes_at(0, link_rch_info), expected);
}

TEST_F(Links, OneViewPastTheLastFavouriteGroupIsVisitedAndNoMore) {
  channel_st *service = file_service({});
  for (const int groups : {0, 1, 18}) {
    list.favorite_group_num = static_cast<std::int16_t>(groups);
    for (const int group : {groups, groups + 1}) {
      list.favorite_vch[group][0] = misled_entry(service);
      list.favorite_vnumber[group] = 1;
    }

    link_rch_info();

    EXPECT_EQ(list.favorite_vch[groups][0].rch, service) << groups;
    EXPECT_NE(list.favorite_vch[groups + 1][0].rch, service) << groups;
    init_vindex(static_cast<std::int8_t>(VIEW_FAVOURITE + groups));
    init_vindex(static_cast<std::int8_t>(VIEW_FAVOURITE + groups + 1));
  }
}

TEST_F(Links, TheViewPastAFullTableOfGroupsIsUnknown) {
  list.favorite_group_num = MAX_FAV - 1;
  EXPECT_EQ(writes_at(1, link_rch_info), lines{});

  list.favorite_group_num = MAX_FAV;
  EXPECT_EQ(writes_at(1, link_rch_info), (lines{"WARNING: get_virtual_channel_st:# unknown vch_type=30\n",
                                                "WARNING: get_virtual_channel_vnumber:# unknown vch_type=30\n"}));
  EXPECT_EQ(link_rch_info(), 0);
}

TEST_F(Links, ANumberOfGroupsAboveTheTableIsReadAsAFullOne) {
  channel_st *service = file_service({});
  append_entry(VIEW_FAVOURITE_LAST, misled_entry(service));
  list.favorite_group_num = 21;

  EXPECT_EQ(writes_at(1, link_rch_info).size(), 2U);
  EXPECT_EQ(linked(VIEW_FAVOURITE_LAST), service);

  list.favorite_group_num = 0x0100 + 21;
  EXPECT_EQ(writes_at(1, link_rch_info).size(), 2U);
}

TEST_F(Links, ANumberOfGroupsBelowZeroLeavesEveryFavouriteGroupAlone) {
  channel_st *service = file_service({});
  const virtual_channel_st misled = misled_entry(service);
  append_entry(VIEW_FAVOURITE, misled);

  list.favorite_group_num = -1;
  EXPECT_EQ(writes_at(1, link_rch_info), lines{});
  EXPECT_EQ(linked(VIEW_FAVOURITE), misled.rch);

  list.favorite_group_num = 0;
  link_rch_info();
  EXPECT_EQ(linked(VIEW_FAVOURITE), service);
}

TEST_F(Links, ACountOutsideAViewIsReadAsTheNearestInside) {
  channel_st *service = file_service({});
  for (virtual_channel_st &entry : list.promo_vch) {
    entry = misled_entry(service);
  }
  list.promo_vnumber = -1;
  link_rch_info();
  EXPECT_NE(linked(VIEW_PROMOTION), service);

  list.promo_vnumber = 11;
  EXPECT_EQ(writes_at(0, link_rch_info), lines{});

  EXPECT_EQ(linked(VIEW_PROMOTION, 9), service);
}

TEST_F(Links, ThePassIsLoggedAtLevel2) {
  EXPECT_EQ(writes_at(2, link_rch_info), lines{"ChannelAPI link_rch_info:# \n"});
  EXPECT_EQ(writes_at(1, link_rch_info), lines{});
}

TEST_F(Links, MissesAreLoggedAsTheFinderLogsThem) {
  virtual_channel_st lost = entry_of(*file_service({}), 1);
  lost.frequency = 5;
  append_entry(VIEW_ALL, lost);

  EXPECT_EQ(writes_at(2, link_rch_info), (lines{"ChannelAPI link_rch_info:# \n",
                                                "ChannelAPI get_channel_st:# Fail to find tp_ch "
                                                "ni=0x1,on_id=0x1,ts_id=0x64,freq=5,sid=0x1 polar=0\n",
                                                "ERROR: link...[0][0]-n_in 1, on 1, ts 100, freq 5, sid 1, polr 0\n"}));
}

class LinksWithoutACurrentView : public Links, public ::testing::WithParamInterface<bool> {
 protected:
  void SetUp() override {
    Links::SetUp();
    if (GetParam()) {
      list.cur_vch = nullptr;
    } else {
      list.cur_vnumber = nullptr;
    }
  }
};

TEST_P(LinksWithoutACurrentView, NothingIsLinkedAndTheLineDoesNotEnd) {
  channel_st *service = file_service({});
  append_entry(VIEW_TV, misled_entry(service));

  EXPECT_EQ(link_rch_info(), -1);

  EXPECT_NE(linked(VIEW_TV), service);
  EXPECT_EQ(writes_at(0, link_rch_info), lines{"ERROR: link_rch_info:#  channel_list NULL !! "});
  EXPECT_EQ(writes_at(2, link_rch_info),
            (lines{"ChannelAPI link_rch_info:# \n", "ERROR: link_rch_info:#  channel_list NULL !! "}));
  EXPECT_EQ(writes_at(-1, link_rch_info), lines{});
  list.tv_vch[0].rch = nullptr;
}

INSTANTIATE_TEST_SUITE_P(Lacking, LinksWithoutACurrentView, ::testing::Bool(),
                         [](const auto &tested) { return tested.param ? "Array" : "Count"; });

TEST_F(Links, NothingIsLinkedInADestroyedList) {
  destroy_channel_list();

  EXPECT_EQ(link_rch_info(), -1);
}

}  // namespace
