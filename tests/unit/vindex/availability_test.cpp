// Whether a position of the current view holds a channel that can be zapped to.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/log_capture.h"
#include "support/missing_current_view.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

class Availability : public store_test {};

TEST_F(Availability, OneOfTheTwoNumbersIsEnough) {
  fill_view(VIEW_ALL, 1);
  for (const auto &[major, minor] : std::vector<std::pair<int, int>>{{0, 3}, {3, 0}, {3, 3}, {-1, 0}, {0, -1}}) {
    list.vch[0].major_ch_num = static_cast<std::int16_t>(major);
    list.vch[0].minor_ch_num = static_cast<std::int16_t>(minor);

    EXPECT_EQ(writes_at(4, [] { EXPECT_EQ(check_available_channel(0), 1); }), lines{}) << major << '-' << minor;
  }
}

TEST_F(Availability, AnEntryWithoutNumbersIsAnError) {
  fill_view(VIEW_ALL, 3);
  list.vch[2].major_ch_num = 0;

  EXPECT_EQ(writes_at(0, [] { EXPECT_EQ(check_available_channel(2), 0); }),
            lines{"ERROR: check_available_channel:# major channel number is 0(vindex 2 )\n"});
  EXPECT_EQ(writes_at(-1, [] { return check_available_channel(2); }), lines{});
}

TEST_F(Availability, APositionOutsideTheCountIsLoggedAtLevelFive) {
  fill_view(VIEW_ALL, 2);
  list.vch[2] = list.vch[0];
  for (const int position : {-32768, -1, 2, 5000, 32767}) {
    const std::string number = std::to_string(position);
    const auto check = [&] { EXPECT_EQ(check_available_channel(static_cast<std::int16_t>(position)), 0); };
    EXPECT_EQ(writes_at(5, check),
              (lines{"ChannelAPI get_channel_by_vindex:# virtual index = " + number + "\n",
                     "ChannelAPI check_available_channel:# channel is null vindex " + number + "\n"}));
    EXPECT_EQ(writes_at(4, check), lines{});
  }
}

TEST_F(Availability, AnEntryThatDoesNotResolveIsNotAvailable) {
  fill_view(VIEW_ALL, 2);
  list.vch[1].service_id = 999;

  const log_capture log(5);
  EXPECT_EQ(check_available_channel(1), 0);

  EXPECT_EQ(log.writes().back(), "ChannelAPI check_available_channel:# channel is null vindex 1\n");
}

TEST_F(Availability, TheCachedPointerDoesNotMatter) {
  const std::vector<channel_st *> services = fill_view(VIEW_ALL, 2);
  list.vch[0].rch = nullptr;
  list.vch[1].service_id = 999;
  list.vch[1].rch = services[0];

  EXPECT_EQ(check_available_channel(0), 1);
  EXPECT_EQ(check_available_channel(1), 0);
}

TEST_F(Availability, AnEntryThatNeitherResolvesNorHasNumbersIsNoError) {
  fill_view(VIEW_ALL, 1);
  list.vch[0].service_id = 999;
  list.vch[0].major_ch_num = 0;

  EXPECT_EQ(writes_at(1, [] { EXPECT_EQ(check_available_channel(0), 0); }), lines{});
}

TEST_F(Availability, TheCurrentViewIsAsked) {
  const std::vector<channel_st *> services = fill_view(VIEW_ALL, 2);
  append_entry(VIEW_TV, entry_of(*services[0], 0));
  change_vindex_type(VIEW_TV);

  EXPECT_EQ(writes_at(-1, [] { EXPECT_EQ(check_available_channel(0), 0); }), lines{});
  EXPECT_EQ(check_available_channel(1), 0);
}

TEST_F(Availability, AReleasedChannelIsNotAvailable) {
  const std::vector<channel_st *> services = fill_view(VIEW_ALL, 2);
  release_rch_info(services[0]);

  EXPECT_EQ(check_available_channel(0), 0);
  EXPECT_EQ(check_available_channel(1), 1);
}

TEST_F(Availability, WithoutACurrentViewNothingIsAvailable) {
  fill_view(VIEW_ALL, 1);
  const auto expect_error = [] {
    EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(check_available_channel(0), 0); }),
              lines{"ERROR: check_available_channel:#  channel_list NULL !! "});
    EXPECT_EQ(writes_at(-1, [] { return check_available_channel(0); }), lines{});
  };

  without_current_view(expect_error);
}

TEST_F(Availability, TheLastEntryOfAFullViewIsAsked) {
  file_service({});
  fill_unfiled(VIEW_ALL, 5000);
  list.vch[4999].service_id = 1;

  EXPECT_EQ(check_available_channel(4999), 1);
  EXPECT_EQ(check_available_channel(4998), 0);

  list.vnumber = 4999;
  EXPECT_EQ(check_available_channel(4999), 0);
}

}  // namespace
