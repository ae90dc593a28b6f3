// Which array and which count each view code names, what unknown codes give, and the accessors of the list's settings.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/log_capture.h"
#include "support/store_builder.h"
#include "support/view_cases.h"

namespace {

using namespace test_support;

class ViewTypes : public store_test {};

bool lies_inside_the_list(const void *address) {
  const auto begin = reinterpret_cast<std::uintptr_t>(get_channel_list());
  const auto wanted = reinterpret_cast<std::uintptr_t>(address);
  return wanted >= begin && wanted < begin + sizeof(channel_list_st);
}

std::vector<std::int8_t> codes_without_a_view() {
  std::vector<std::int8_t> codes;
  for (int code = -128; code <= 127; ++code) {
    if ((code < 0 || code > 5) && (code < 10 || code > 29)) {
      codes.push_back(static_cast<std::int8_t>(code));
    }
  }
  return codes;
}

TEST_F(ViewTypes, PlainCodesNameTheArraysOfTheList) {
  EXPECT_EQ(get_virtual_channel_st(0), list.vch);
  EXPECT_EQ(get_virtual_channel_st(1), list.tv_vch);
  EXPECT_EQ(get_virtual_channel_st(2), list.radio_vch);
  EXPECT_EQ(get_virtual_channel_st(3), list.user_vch);
  EXPECT_EQ(get_virtual_channel_st(5), list.promo_vch);
}

TEST_F(ViewTypes, PlainCodesNameTheCountsOfTheList) {
  EXPECT_EQ(get_virtual_channel_vnumber(0), &list.vnumber);
  EXPECT_EQ(get_virtual_channel_vnumber(1), &list.tv_vnumber);
  EXPECT_EQ(get_virtual_channel_vnumber(2), &list.radio_vnumber);
  EXPECT_EQ(get_virtual_channel_vnumber(3), &list.user_vnumber);
  EXPECT_EQ(get_virtual_channel_vnumber(5), &list.promo_vnumber);
}

TEST_F(ViewTypes, CodesTenToTwentyNineNameTheFavouriteGroups) {
  for (int group = 0; group < 20; ++group) {
    const auto code = static_cast<std::int8_t>(10 + group);
    EXPECT_EQ(get_virtual_channel_st(code), list.favorite_vch[group]) << group;
    EXPECT_EQ(get_virtual_channel_vnumber(code), &list.favorite_vnumber[group]) << group;
  }
}

TEST_F(ViewTypes, TheWorkViewLiesOutsideTheList) {
  ASSERT_NE(get_virtual_channel_st(4), nullptr);
  ASSERT_NE(get_virtual_channel_vnumber(4), nullptr);
  EXPECT_FALSE(lies_inside_the_list(get_virtual_channel_st(4)));
  EXPECT_FALSE(lies_inside_the_list(get_virtual_channel_vnumber(4)));
}

TEST_F(ViewTypes, TheWorkViewOutlivesTheInitialisationOfTheList) {
  fill_unfiled(4, 3);

  init_channel_list();

  EXPECT_EQ(*get_virtual_channel_vnumber(4), 3);
  EXPECT_EQ(service_ids(4), (std::vector<int>{1, 2, 3}));
}

TEST_F(ViewTypes, EveryViewKeepsAsManyEntriesAsItHolds) {
  for (const view_case &each : every_view()) {
    fill_unfiled(each.code, each.capacity);
  }
  for (const view_case &each : every_view()) {
    std::vector<int> expected(static_cast<std::size_t>(each.capacity));
    std::generate(expected.begin(), expected.end(), [n = 0]() mutable { return ++n; });
    EXPECT_EQ(service_ids(each.code), expected) << int{each.code};
  }
}

TEST_F(ViewTypes, KnownCodesAreNotReported) {
  for (const view_case &each : every_view()) {
    EXPECT_EQ(writes_at(5, [&] { return get_virtual_channel_st(each.code); }), lines{}) << int{each.code};
    EXPECT_EQ(writes_at(5, [&] { return get_virtual_channel_vnumber(each.code); }), lines{}) << int{each.code};
  }
}

TEST_F(ViewTypes, EveryOtherCodeIsUnknown) {
  const std::vector<std::int8_t> codes = codes_without_a_view();

  ASSERT_EQ(codes.size(), 256U - 26U);
  for (const std::int8_t code : codes) {
    EXPECT_EQ(get_virtual_channel_st(code), nullptr) << int{code};
    EXPECT_EQ(get_virtual_channel_vnumber(code), nullptr) << int{code};
  }
}

TEST_F(ViewTypes, BothAccessorsWarnOfUnknownCodes) {
  for (const std::int8_t code : unknown_codes) {
    const std::string text = "unknown vch_type=" + std::to_string(code) + "\n";
    EXPECT_EQ(writes_at(1, [&] { return get_virtual_channel_st(code); }),
              lines{"WARNING: get_virtual_channel_st:# " + text});
    EXPECT_EQ(writes_at(1, [&] { return get_virtual_channel_vnumber(code); }),
              lines{"WARNING: get_virtual_channel_vnumber:# " + text});
  }
}

TEST_F(ViewTypes, UnknownCodesAreNoErrors) {
  EXPECT_EQ(writes_at(0, [] { return get_virtual_channel_st(30); }), lines{});
  EXPECT_EQ(writes_at(0, [] { return get_virtual_channel_vnumber(30); }), lines{});
}

TEST_F(ViewTypes, ThereIsOneListForTheLifeOfTheProcess) {
  const channel_list_st *before = get_channel_list();
  destroy_channel_list();
  const channel_list_st *destroyed = get_channel_list();
  init_channel_list();

  EXPECT_NE(before, nullptr);
  EXPECT_EQ(destroyed, before);
  EXPECT_EQ(get_channel_list(), before);
}

TEST_F(ViewTypes, SettingsAfterInitialisation) {
  EXPECT_EQ(get_vindex_type(), 0);
  EXPECT_EQ(get_ch_type(), 0);
  EXPECT_EQ(get_bouquet_id(), 0xFFFF);
  EXPECT_EQ(CHAPI_get_use_tuner(), -1);
  EXPECT_EQ(get_channel_list_net_index(), -1);
}

TEST_F(ViewTypes, EveryViewIsEmptyAfterInitialisation) {
  for (const view_case &each : every_view()) {
    if (each.code != 4) {
      fill_unfiled(each.code, each.capacity);
    }
  }

  init_channel_list();

  for (const view_case &each : every_view()) {
    EXPECT_EQ(*get_virtual_channel_vnumber(each.code), 0) << int{each.code};
    EXPECT_TRUE(slots_behind_count_are_zero(each.code, each.capacity)) << int{each.code};
  }
  EXPECT_EQ(list.cur_vch, list.vch);
  EXPECT_EQ(list.cur_vnumber, &list.vnumber);
}

TEST_F(ViewTypes, TheCodeOfTheCurrentViewIsTheLowByteOfTheField) {
  const std::vector<std::pair<int, int>> cases = {{0, 0},   {29, 29},     {127, 127},     {0x0105, 5}, {0x01FF, -1},
                                                  {-1, -1}, {-128, -128}, {0x7F80, -128}, {-32768, 0}, {128, -128}};
  for (const auto &[field, code] : cases) {
    list.vch_type = static_cast<std::int16_t>(field);
    EXPECT_EQ(get_vindex_type(), code) << field;
  }
}

TEST_F(ViewTypes, SignedSettingsAreReadAsSignedBytes) {
  for (const int value : {-128, -1, 0, 1, 127}) {
    list.ch_type = static_cast<std::int8_t>(value);
    list.net_index = static_cast<std::int8_t>(value);
    EXPECT_EQ(get_ch_type(), value);
    EXPECT_EQ(get_channel_list_net_index(), value);
  }
}

TEST_F(ViewTypes, TheBouquetIdIsKeptAsGiven) {
  for (const std::uint16_t id :
       {std::uint16_t{0}, std::uint16_t{1}, std::uint16_t{0x8000}, std::uint16_t{0xFFFE}, std::uint16_t{0xFFFF}}) {
    set_bouquet_id(id);
    EXPECT_EQ(get_bouquet_id(), id);
    EXPECT_EQ(list.bouquet_id, id);
  }
}

TEST_F(ViewTypes, TheTunerSettingIsKeptAsGiven) {
  for (const int tuner : {-128, -1, 0, 1, 127}) {
    CHAPI_set_use_tuner(static_cast<std::int8_t>(tuner));
    EXPECT_EQ(CHAPI_get_use_tuner(), tuner);
    EXPECT_EQ(list.use_tuner, tuner);
  }
}

TEST_F(ViewTypes, SettersChangeNothingElse) {
  const auto before = std::make_unique<channel_list_st>(list);
  set_bouquet_id(0x1234);
  CHAPI_set_use_tuner(5);

  list.bouquet_id = before->bouquet_id;
  list.use_tuner = before->use_tuner;

  EXPECT_EQ(std::memcmp(&list, before.get(), sizeof list), 0);
}

TEST_F(ViewTypes, AccessorsOfTheSettingsAreSilent) {
  EXPECT_EQ(writes_at(5,
                      [] {
                        set_bouquet_id(1);
                        CHAPI_set_use_tuner(1);
                        static_cast<void>(get_channel_list());
                        return get_bouquet_id() + CHAPI_get_use_tuner() + get_vindex_type() + get_ch_type() +
                               get_channel_list_net_index();
                      }),
            lines{});
}

}  // namespace
