// Making a view current: what is refused, what changes, what is logged, and the codes that are no view.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "switching_test.h"

namespace {

using namespace test_support;

class ViewSwitching : public switching_test {};

const std::string banner = "+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=+=\n";

lines switch_trace(int service_type, const std::string &name) {
  return {banner,
          "ChannelAPI change_vindex_type:# \t USE LIST CHANGE CHANNEL LIST : " + std::to_string(service_type) +
              "  type('" + name + "') \n",
          banner};
}

struct refused_view {
  std::int8_t code;
  const char *count;
};

const std::vector<refused_view> refused_when_empty = {{VIEW_TV, "tv_vnumber"},
                                                      {VIEW_RADIO, "radio_vnumber"},
                                                      {VIEW_USER, "user_vnumber"},
                                                      {VIEW_PROMOTION, "promo_vnumber"}};

TEST_F(ViewSwitching, RefusesAnEmptyViewAndKeepsTheCurrentOne) {
  fill_unfiled(12, 1);
  change_vindex_type(12);
  const auto before = std::make_unique<channel_list_st>(list);

  for (const refused_view &each : refused_when_empty) {
    EXPECT_EQ(change_vindex_type(each.code), -1) << each.count;
    EXPECT_EQ(std::memcmp(&list, before.get(), sizeof list), 0) << each.count;
  }
}

TEST_F(ViewSwitching, WarnsOfAnEmptyView) {
  for (const refused_view &each : refused_when_empty) {
    EXPECT_EQ(writes_at(1, [&] { return change_vindex_type(each.code); }),
              lines{std::string("WARNING: change_vindex_type:# channel_list.") + each.count + " 0 \n"});
    EXPECT_EQ(writes_at(0, [&] { return change_vindex_type(each.code); }), lines{});
    EXPECT_EQ(writes_at(5, [&] { return change_vindex_type(each.code); }).size(), 1U);
  }
}

TEST_F(ViewSwitching, ACountBelowZeroIsAnEmptyView) {
  for (const refused_view &each : refused_when_empty) {
    *get_virtual_channel_vnumber(each.code) = -5;

    EXPECT_EQ(writes_at(1, [&] { EXPECT_EQ(change_vindex_type(each.code), -1); }),
              lines{std::string("WARNING: change_vindex_type:# channel_list.") + each.count + " -5 \n"});
    EXPECT_EQ(get_vindex_type(), VIEW_ALL);
  }
}

TEST_F(ViewSwitching, OneEntryIsEnough) {
  for (const refused_view &each : refused_when_empty) {
    fill_unfiled(each.code, 1);

    EXPECT_EQ(change_vindex_type(each.code), 0) << each.count;
    EXPECT_EQ(get_vindex_type(), each.code) << each.count;
  }
}

TEST_F(ViewSwitching, PointsAtTheArrayAndTheCountOfTheView) {
  for (const view_case &each : every_view()) {
    if (each.code == VIEW_WORK) {
      continue;
    }
    fill_unfiled(each.code, 2);

    EXPECT_EQ(change_vindex_type(each.code), 0) << int{each.code};

    EXPECT_EQ(list.vch_type, each.code);
    EXPECT_EQ(list.cur_vch, get_virtual_channel_st(each.code)) << int{each.code};
    EXPECT_EQ(list.cur_vnumber, get_virtual_channel_vnumber(each.code)) << int{each.code};
  }
}

TEST_F(ViewSwitching, TheAllViewLeavesTheGroupListsAndResetsTheChannelType) {
  fill_unfiled(VIEW_ALL, 1);

  EXPECT_EQ(change_vindex_type(VIEW_ALL), 0);

  EXPECT_EQ(list.use_group_list, 0);
  EXPECT_EQ(list.ch_type, 0);
  EXPECT_EQ(list.net_index, 9);
  EXPECT_EQ(list.service_type, 8);
  EXPECT_EQ(list.sub_group_id, 42);
}

TEST_F(ViewSwitching, TheAllViewIsChosenEvenWhenEmpty) {
  fill_unfiled(VIEW_TV, 1);
  change_vindex_type(VIEW_TV);
  list.use_group_list = 3;
  list.ch_type = 77;

  EXPECT_EQ(writes_at(5, [] { EXPECT_EQ(change_vindex_type(VIEW_ALL), -4); }), lines{});

  EXPECT_EQ(list.vch_type, 0);
  EXPECT_EQ(list.cur_vch, list.vch);
  EXPECT_EQ(list.cur_vnumber, &list.vnumber);
  EXPECT_EQ(list.use_group_list, 0);
  EXPECT_EQ(list.ch_type, 0);
}

TEST_F(ViewSwitching, TvAndRadioShowAllNetworksAndTheirServiceType) {
  for (const std::int8_t code : {std::int8_t{VIEW_TV}, std::int8_t{VIEW_RADIO}}) {
    fill_unfiled(code, 1);
    list.net_index = 9;
    list.use_group_list = 3;

    EXPECT_EQ(change_vindex_type(code), 0);

    EXPECT_EQ(list.net_index, -1);
    EXPECT_EQ(list.use_group_list, 0);
    EXPECT_EQ(list.service_type, code);
    EXPECT_EQ(list.ch_type, 77);
    EXPECT_EQ(list.sub_group_id, 42);
  }
}

TEST_F(ViewSwitching, UserAndPromotionKeepEverySetting) {
  for (const std::int8_t code : {std::int8_t{VIEW_USER}, std::int8_t{VIEW_PROMOTION}}) {
    fill_unfiled(code, 1);
    const auto before = std::make_unique<channel_list_st>(list);

    EXPECT_EQ(change_vindex_type(code), 0);

    before->vch_type = code;
    before->cur_vch = get_virtual_channel_st(code);
    before->cur_vnumber = get_virtual_channel_vnumber(code);
    EXPECT_EQ(std::memcmp(&list, before.get(), sizeof list), 0) << int{code};
  }
}

TEST_F(ViewSwitching, TracesTheViewAtLevelTwo) {
  const std::vector<std::pair<std::int8_t, const char *>> names = {
      {VIEW_ALL, "ALL CH"}, {VIEW_USER, "USER CH"}, {VIEW_PROMOTION, "NONE"}};
  for (const auto &[code, name] : names) {
    fill_unfiled(code, 1);
    EXPECT_EQ(writes_at(2, [code = code] { return change_vindex_type(code); }), switch_trace(8, name));
    EXPECT_EQ(writes_at(1, [code = code] { return change_vindex_type(code); }), lines{});
  }
}

TEST_F(ViewSwitching, TheTraceShowsTheNewServiceType) {
  fill_unfiled(VIEW_TV, 1);
  fill_unfiled(VIEW_RADIO, 1);

  EXPECT_EQ(writes_at(2, [] { return change_vindex_type(VIEW_RADIO); }), switch_trace(2, "RADIO CH"));
  EXPECT_EQ(writes_at(2, [] { return change_vindex_type(VIEW_TV); }), switch_trace(1, "TV CH"));
  EXPECT_EQ(writes_at(1, [] { return change_vindex_type(VIEW_RADIO); }), lines{});
}

TEST_F(ViewSwitching, AFavouriteGroupTracesItsEntriesAndTheView) {
  for (const std::int8_t code : {std::int8_t{10}, std::int8_t{29}}) {
    fill_unfiled(code, 2);
    get_virtual_channel_st(code)[0].favorite_id = 5;
    get_virtual_channel_st(code)[1].favorite_id = 9;
    lines expected = {visit(5, 1), visit(9, 2)};
    EXPECT_EQ(writes_at(1, [&] { return change_vindex_type(code); }), expected);

    for (const std::string &line : switch_trace(8, "FAV CH")) {
      expected.push_back(line);
    }
    EXPECT_EQ(writes_at(2, [&] { return change_vindex_type(code); }), expected);
    EXPECT_EQ(writes_at(0, [&] { return change_vindex_type(code); }), lines{});
  }
}

TEST_F(ViewSwitching, AnUnknownCodeIsKeptWhileTheAllViewIsUsed) {
  fill_unfiled(VIEW_ALL, 2);
  fill_unfiled(VIEW_TV, 1);
  fill_unfiled(VIEW_WORK, 1);
  for (const int type : {4, 6, 7, 8, 9, 30, 127, -1, -128}) {
    change_vindex_type(VIEW_TV);
    list.use_group_list = 3;

    EXPECT_EQ(change_vindex_type(static_cast<std::int8_t>(type)), -1) << type;

    EXPECT_EQ(get_vindex_type(), type);
    EXPECT_EQ(list.vch_type, type);
    EXPECT_EQ(list.cur_vch, list.vch) << type;
    EXPECT_EQ(list.cur_vnumber, &list.vnumber) << type;
    EXPECT_EQ(list.use_group_list, 0) << type;
    EXPECT_EQ(get_channel_list_number(), 2) << type;
  }
}

TEST_F(ViewSwitching, AnUnknownCodeKeepsTheOtherSettings) {
  for (const int type : {4, 30, -1}) {
    const auto before = std::make_unique<channel_list_st>(list);

    change_vindex_type(static_cast<std::int8_t>(type));

    before->vch_type = static_cast<std::int16_t>(type);
    before->use_group_list = 0;
    EXPECT_EQ(std::memcmp(&list, before.get(), sizeof list), 0) << type;
  }
}

TEST_F(ViewSwitching, AnUnknownCodeIsAnErrorWithoutLineEnd) {
  fill_unfiled(VIEW_ALL, 1);
  for (const int type : {4, 6, 7, 8, 9, 30, 127, -1, -128}) {
    const auto code = static_cast<std::int8_t>(type);
    EXPECT_EQ(writes_at(0, [&] { return change_vindex_type(code); }),
              lines{"ERROR: change_vindex_type:# Unknown vch_type=" + std::to_string(type)});
    EXPECT_EQ(writes_at(-1, [&] { return change_vindex_type(code); }), lines{});
  }
}

TEST_F(ViewSwitching, AnUnknownCodeIsNotTracedAsASwitch) {
  fill_unfiled(VIEW_ALL, 1);
  log_capture log(5);

  change_vindex_type(4);

  EXPECT_EQ(log.writes_with("USE LIST"), lines{});
  EXPECT_EQ(log.writes_with(banner), lines{});
}

TEST_F(ViewSwitching, AnEmptyAllViewDoesNotChangeTheResultOfAnUnknownCode) {
  EXPECT_EQ(change_vindex_type(4), -1);
  EXPECT_EQ(change_vindex_type(99), -1);
}

TEST_F(ViewSwitching, TheAllViewComesBackAfterAnUnknownCode) {
  fill_unfiled(VIEW_ALL, 1);
  change_vindex_type(99);

  EXPECT_EQ(change_vindex_type(VIEW_ALL), 0);

  EXPECT_EQ(get_vindex_type(), VIEW_ALL);
}

TEST_F(ViewSwitching, WorksOnADestroyedList) {
  destroy_channel_list();

  EXPECT_EQ(change_vindex_type(VIEW_TV), -1);
  EXPECT_EQ(list.cur_vch, nullptr);
  EXPECT_EQ(change_vindex_type(VIEW_ALL), -4);
  EXPECT_EQ(list.cur_vch, list.vch);
}

}  // namespace
