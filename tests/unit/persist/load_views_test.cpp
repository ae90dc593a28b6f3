// Which view is current after a load, and how the views are sorted on request.
#include "support/channel_file.h"
#include "support/log_capture.h"

namespace {

namespace group_field = test_support::group_field;
namespace list_field = test_support::list_field;
using test_support::channel_file;
using test_support::file_test;
using test_support::log_capture;
using test_support::majors;
using lines = std::vector<std::string>;

channel_file file_without_views() {
  channel_file file;
  file.service({.service_id = 3, .name = "charlie"}).service({.service_id = 2, .name = "Alpha"});
  file.service({.service_id = 1, .name = "bravo"});
  return file.group(GROUP_GENRE, 1, "News").group(GROUP_COUNTRY, 1, "Malta");
}

// The three services, numbered 30, 10 and 20.
void fill(channel_file &file, int view) {
  file.entry(view, {.service_id = 3}, 30, 1).entry(view, {.service_id = 2}, 10, 2);
  file.entry(view, {.service_id = 1}, 20, 3);
}

class LoadedCurrentView : public file_test {
 protected:
  // A file with the ALL view and, unless it is that, one other view filled; the settings hold values to recognise.
  static channel_file file_with(int filled_view, int current) {
    channel_file file = file_without_views();
    fill(file, VIEW_ALL);
    if (filled_view != VIEW_ALL) {
      fill(file, filled_view);
    }
    file.set(list_field::ch_type, 1, 0x33)
        .set(list_field::use_group_list, 1, GROUP_GENRE)
        .set(list_field::service_type, 1, 0x44)
        .set(list_field::net_index, 1, 0x55)
        .set(list_field::sub_group_id, 2, 0x66);
    return file.set(list_field::vch_type, 2, static_cast<std::uint64_t>(current));
  }

  void expect_current(int code, int array_of) const {
    EXPECT_EQ(list.vch_type, code);
    EXPECT_EQ(list.cur_vch, get_virtual_channel_st(static_cast<std::int8_t>(array_of)));
    EXPECT_EQ(list.cur_vnumber, get_virtual_channel_vnumber(static_cast<std::int8_t>(array_of)));
  }
};

TEST_F(LoadedCurrentView, IsAll) {
  load(file_with(VIEW_ALL, VIEW_ALL).data);

  expect_current(VIEW_ALL, VIEW_ALL);
  EXPECT_EQ(list.use_group_list, GROUP_ALL);
  EXPECT_EQ(list.ch_type, 0);
  EXPECT_EQ(list.net_index, 0x55);
}

TEST_F(LoadedCurrentView, IsAllThoughItIsEmpty) {
  EXPECT_EQ(load(file_without_views().data), 10);

  expect_current(VIEW_ALL, VIEW_ALL);
}

TEST_F(LoadedCurrentView, IsTheTelevisionOrRadioView) {
  for (const int view : {VIEW_TV, VIEW_RADIO}) {
    reset_channel_list();
    load(file_with(view, view).data);

    expect_current(view, view);
    EXPECT_EQ(list.service_type, view);
    EXPECT_EQ(list.net_index, -1);
    EXPECT_EQ(list.use_group_list, GROUP_ALL);
    EXPECT_EQ(list.ch_type, 0x33);
  }
}

TEST_F(LoadedCurrentView, IsTheUserOrPromotionViewAndLeavesTheSettingsAlone) {
  for (const int view : {VIEW_USER, VIEW_PROMOTION}) {
    reset_channel_list();
    load(file_with(view, view).data);

    expect_current(view, view);
    EXPECT_EQ(list.ch_type, 0x33);
    EXPECT_EQ(list.use_group_list, GROUP_GENRE);
    EXPECT_EQ(list.service_type, 0x44);
    EXPECT_EQ(list.net_index, 0x55);
    EXPECT_EQ(list.sub_group_id, 0x66);
  }
}

TEST_F(LoadedCurrentView, IsAFavouriteGroup) {
  for (const int view : {10, 12, 29}) {
    reset_channel_list();
    channel_file file = file_with(view, view);
    file.set(list_field::favorite_group + static_cast<std::size_t>(view - 10) * test_support::group_size +
                 group_field::id,
             2, 0x123);
    load(file.data);

    expect_current(view, view);
    EXPECT_EQ(list.ch_type, view);
    EXPECT_EQ(list.use_group_list, GROUP_FAV);
    EXPECT_EQ(list.sub_group_id, 0x123);
    EXPECT_EQ(list.favorite_vch[view - 10][2].favorite_id, 3);
  }
}

TEST_F(LoadedCurrentView, CountsAFavouriteGroupAnewThatHoldsAnIdTwice) {
  channel_file file = file_with(12, 12);
  file.entry(12, {.service_id = 3}, 40, 1);
  const log_capture log(1);

  load(file.data);

  EXPECT_EQ(list.favorite_vch[2][0].favorite_id, 0);
  EXPECT_EQ(list.favorite_vch[2][3].favorite_id, 3);
  EXPECT_EQ(log.writes().back(), "WARNING: change_vindex_type:# Need Fav_id Resorting.\n");
}

TEST_F(LoadedCurrentView, IsAllWhenTheNamedOneIsEmpty) {
  for (const int view : std::initializer_list<int>{VIEW_TV, VIEW_RADIO, VIEW_USER, VIEW_PROMOTION, 10, 12, 29}) {
    reset_channel_list();
    EXPECT_EQ(load(file_with(VIEW_ALL, view).data), 10);

    expect_current(VIEW_ALL, VIEW_ALL);
    EXPECT_EQ(list.use_group_list, GROUP_ALL) << view;
    EXPECT_EQ(list.ch_type, 0) << view;
    EXPECT_EQ(list.service_type, 0x44) << view;
    EXPECT_EQ(list.net_index, 0x55) << view;
  }
}

TEST_F(LoadedCurrentView, WarnsOfAnEmptyOneAtLevelOne) {
  const std::vector<std::pair<int, std::string>> warnings = {
      {VIEW_TV, "tv_vnumber 0 \n"},           {VIEW_RADIO, "radio_vnumber 0 \n"}, {VIEW_USER, "user_vnumber 0 \n"},
      {VIEW_PROMOTION, "promo_vnumber 0 \n"}, {29, "favorite_vnumber[19] 0  \n"},
  };
  for (const auto &[view, text] : warnings) {
    reset_channel_list();
    const log_capture log(1);
    load(file_with(VIEW_ALL, view).data);
    EXPECT_EQ(log.writes(), (lines{"WARNING: change_vindex_type:# channel_list." + text}));
  }
}

TEST_F(LoadedCurrentView, IsSilentOfAnEmptyOneAtLevelZero) {
  const log_capture log(0);

  load(file_with(VIEW_ALL, VIEW_TV).data);

  EXPECT_EQ(log.writes(), lines{});
}

TEST_F(LoadedCurrentView, KeepsAnUnknownCodeAndUsesTheArrayOfAll) {
  for (const int code : {6, 9, 30, 99, 127, -1, -128}) {
    reset_channel_list();
    const log_capture log(0);
    EXPECT_EQ(load(file_with(VIEW_ALL, code).data), 10);

    expect_current(code, VIEW_ALL);
    EXPECT_EQ(get_vindex_type(), code);
    EXPECT_EQ(list.use_group_list, GROUP_ALL);
    EXPECT_EQ(log.writes(), (lines{"ERROR: change_vindex_type:# Unknown vch_type=" + std::to_string(code)}));
  }
}

TEST_F(LoadedCurrentView, IsAllWhenItIsTheWorkViewAndThatIsEmpty) {
  const log_capture log(0);

  EXPECT_EQ(load(file_with(VIEW_ALL, VIEW_WORK).data), 10);

  expect_current(VIEW_ALL, VIEW_ALL);
  EXPECT_EQ(log.writes(), (lines{"ERROR: change_vindex_type:# Unknown vch_type=4"}));
}

TEST_F(LoadedCurrentView, KeepsTheCodeOfAFilledWorkView) {
  test_support::fill_view(VIEW_WORK, 1);
  reset_channel_list();

  load(file_with(VIEW_ALL, VIEW_WORK).data);

  expect_current(VIEW_WORK, VIEW_ALL);
}

// View codes are 8 bits wide wherever they are used.
TEST_F(LoadedCurrentView, IsNamedByTheLowByteOfItsField) {
  load(file_with(VIEW_TV, 256 + VIEW_TV).data);

  expect_current(VIEW_TV, VIEW_TV);
}

class LoadedOrder : public file_test {
 protected:
  static channel_file unsorted_file() {
    channel_file file = file_without_views();
    for (const int view : sorted_views) {
      fill(file, view);
    }
    fill(file, 10);
    return file;
  }

  static constexpr int sorted_views[] = {VIEW_ALL, VIEW_USER, VIEW_PROMOTION, VIEW_TV, VIEW_RADIO};
  static inline const std::vector<int> file_order = {30, 10, 20};

  static void expect_order(const std::vector<int> &order) {
    for (const int view : sorted_views) {
      EXPECT_EQ(majors(static_cast<std::int8_t>(view)), order) << view;
    }
    EXPECT_EQ(majors(VIEW_FAVOURITE), file_order);
  }
};

TEST_F(LoadedOrder, IsTheFilesWithSortMode255) {
  const log_capture log(2);

  load(unsorted_file().data, 255);

  expect_order(file_order);
  EXPECT_EQ(log.writes_with("SORT_"), lines{});
}

TEST_F(LoadedOrder, FollowsTheSortModeInEveryViewButFavourites) {
  load(unsorted_file().data, SORT_NUMBER);
  expect_order({10, 20, 30});
  reset_channel_list();
  load(unsorted_file().data, SORT_SERVICE_ID);
  expect_order({20, 10, 30});
}

TEST_F(LoadedOrder, ByNameUsesTheLinkedServices) {
  load(unsorted_file().data, SORT_CH_NAME);

  expect_order({10, 20, 30});
}

TEST_F(LoadedOrder, IsSaidFiveTimesAtLevelTwo) {
  const log_capture log(2);

  load(unsorted_file().data, SORT_NUMBER);

  EXPECT_EQ(log.writes_with("SORT_"), lines(5, "SORT_NUMBER\n"));
  EXPECT_EQ(log.writes_with("qsort_virtual_channel:# vnumber"),
            lines(5, "ChannelAPI qsort_virtual_channel:# vnumber 3 \n"));
}

TEST_F(LoadedOrder, IsTheFilesWhenTheSortIsNotSupported) {
  const log_capture log(2);

  EXPECT_EQ(load(unsorted_file().data, SORT_BOUQUET), 10);

  expect_order(file_order);
  EXPECT_EQ(log.writes_with("SORT_"), lines(5, "SORT_BOUQUET\n"));
  EXPECT_EQ(log.writes_with("ERROR"), lines{});
}

TEST_F(LoadedOrder, IsTheFilesWhenTheSortIsUnknown) {
  for (const int sort_mode : {0, 1, 4, 5, 9, 12, 200, 254}) {
    reset_channel_list();
    const log_capture log(0);
    EXPECT_EQ(load(unsorted_file().data, sort_mode), 10);

    expect_order(file_order);
    EXPECT_EQ(log.writes(), lines(5, "ERROR: qsort_virtual_channel:# Unknown sort_type\n")) << sort_mode;
  }
}

TEST_F(LoadedOrder, DoesNotMatterToAMissingFile) { EXPECT_EQ(load_named("missing.dat", SORT_NUMBER), 1); }

}  // namespace
