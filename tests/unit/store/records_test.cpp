// The records: limits, values after initialisation, signs of the fields that accessors return, and counts that are the
// lengths of their lists.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <iterator>
#include <memory>

#include "support/channel_file.h"
#include "support/hierarchy_walk.h"

namespace {

using namespace test_support;

class Records : public file_test {
 protected:
  // Empties the list and loads what save() wrote.
  void reload() {
    reset_channel_list();
    EXPECT_EQ(load_named("saved.dat"), 10);
  }
};

TEST_F(Records, ArraysHaveThePublishedLimits) {
  EXPECT_EQ(std::size(list.vch), 5000U);
  EXPECT_EQ(std::size(list.user_vch), 5000U);
  EXPECT_EQ(std::size(list.tv_vch), 4000U);
  EXPECT_EQ(std::size(list.radio_vch), 1000U);
  EXPECT_EQ(std::size(list.promo_vch), 10U);
  EXPECT_EQ(std::size(list.favorite_vch), 20U);
  EXPECT_EQ(std::size(list.favorite_vch[0]), 40U);
  EXPECT_EQ(std::size(list.favorite_vnumber), 20U);
  EXPECT_EQ(std::size(list.favorite_group), 20U);
  EXPECT_EQ(std::size(list.provider), 500U);
  EXPECT_EQ(std::size(list.genre), 50U);
  EXPECT_EQ(std::size(list.country), 200U);
  EXPECT_EQ(int{MAX_RETURN_CHANNEL}, 20);
}

TEST_F(Records, AnInitialisedListIsZeroButForItsDefaults) {
  const std::unique_ptr<channel_list_st> expected(new channel_list_st());
  std::memset(expected.get(), 0, sizeof *expected);
  expected->version = 10;
  expected->use_tuner = -1;
  expected->bouquet_id = 0xFFFF;
  expected->service_type = 1;
  expected->net_index = -1;
  expected->sub_group_id = -1;
  expected->cur_vch = list.vch;
  expected->cur_vnumber = &list.vnumber;
  expected->network_list = {&list.network_list, &list.network_list};
  expected->spare_list_a = {&list.spare_list_a, &list.spare_list_a};
  expected->spare_list_b = {&list.spare_list_b, &list.spare_list_b};
  std::memset(&list, 0xA5, sizeof list);

  init_channel_list();

  EXPECT_EQ(std::memcmp(&list, expected.get(), sizeof list), 0);
}

TEST_F(Records, EightBitFieldsKeepTheirSign) {
  for (const int value : {-128, -1, 0, 1, 127}) {
    const auto field = static_cast<std::int8_t>(value);
    list.use_group_list = field;
    list.service_type = field;
    list.net_index = field;
    list.ch_type = field;
    list.use_tuner = 0;
    CHAPI_set_use_tuner(field);

    EXPECT_EQ(get_use_group_list(), value);
    EXPECT_EQ(get_current_service_type(), value);
    EXPECT_EQ(get_channel_list_net_index(), value);
    EXPECT_EQ(get_ch_type(), value);
    EXPECT_EQ(CHAPI_get_use_tuner(), value);
    EXPECT_EQ(list.use_tuner, value);
  }
}

TEST_F(Records, SixteenBitFieldsKeepTheirSign) {
  for (const int value : {-32768, -1, 0, 1, 32767}) {
    list.sub_group_id = static_cast<std::int16_t>(value);

    EXPECT_EQ(get_current_sub_group_id(), value);
  }
}

TEST_F(Records, TheNumberOfFavouriteGroupsKeepsItsSign) {
  for (const int value : {-1, 0, 1, 19, 20}) {
    list.favorite_group_num = static_cast<std::int16_t>(value);

    EXPECT_EQ(get_fav_group_number(), value);
  }
}

TEST_F(Records, TheCurrentViewIsTheLowByteOfItsCode) {
  const struct {
    std::int16_t code;
    int reported;
  } cases[] = {{0, 0}, {29, 29}, {127, 127}, {128, -128}, {255, -1}, {256, 0}, {-1, -1}, {0x7F0A, 10}};
  for (const auto &each : cases) {
    list.vch_type = each.code;

    EXPECT_EQ(get_vindex_type(), each.reported) << each.code;
  }
}

TEST_F(Records, TheBouquetIdHasNoSign) {
  for (const int value : {0, 1, 0x7FFF, 0x8000, 0xFFFF}) {
    set_bouquet_id(static_cast<std::uint16_t>(value));

    EXPECT_EQ(get_bouquet_id(), value);
    EXPECT_EQ(list.bouquet_id, value);
  }
}

TEST_F(Records, ThePublishedIntegerIsNeverTouched) {
  EXPECT_EQ(SID_TYPE, 0);
  SID_TYPE = 0x12345678;

  file_service({});
  save();
  reload();
  destroy_channel_list();
  init_channel_list();

  EXPECT_EQ(SID_TYPE, 0x12345678);
  SID_TYPE = 0;
}

TEST_F(Records, AReloadSetsTheCountryOfEveryChannelToZeroAndKeepsItsOtherGroups) {
  for (std::uint16_t id = 1; id <= 3; ++id) {
    channel_st *service = file_service({.ts_id = id, .frequency = id * 10'000, .service_id = id});
    service->country_id = static_cast<std::int16_t>(id - 2);
    service->genre_id = static_cast<std::int16_t>(-id);
    service->provider_id = static_cast<std::int16_t>(1000 + id);
  }
  save();

  reload();

  ASSERT_TRUE(counts_match_lists());
  int found = 0;
  for (const tp_ch_st *transponder : transponders(*networks().at(0))) {
    for (const channel_st *service : services(*transponder)) {
      EXPECT_EQ(service->country_id, 0);
      EXPECT_EQ(service->genre_id, -service->service_id);
      EXPECT_EQ(service->provider_id, 1000 + service->service_id);
      ++found;
    }
  }
  EXPECT_EQ(found, 3);
}

TEST_F(Records, CountsAreTheLengthsOfTheirListsAfterEveryOperation) {
  EXPECT_TRUE(counts_match_lists());
  channel_st *service = file_service({});
  EXPECT_TRUE(counts_match_lists());
  channel_st *refused = file_service({});
  EXPECT_TRUE(counts_match_lists());
  std::free(refused);
  file_service({.service_id = 2});
  file_service({.frequency = 12'000'000});
  file_service({.net_index = 9});
  EXPECT_TRUE(counts_match_lists());
  network_ch_st *network = alloc_network_ch_info(3, 4, nullptr);
  EXPECT_TRUE(counts_match_lists());
  release_rch_info(service);
  EXPECT_TRUE(counts_match_lists());
  release_network_ch_info(network);
  EXPECT_TRUE(counts_match_lists());
  save();
  reload();
  EXPECT_TRUE(counts_match_lists());
  EXPECT_EQ(list.network_num, 2);
  reset_channel_list();
  EXPECT_TRUE(counts_match_lists());
  EXPECT_EQ(list.network_num, 0);
}

}  // namespace
