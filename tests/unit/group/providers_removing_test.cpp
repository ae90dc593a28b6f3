// Removing a provider by its place.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "support/log_capture.h"
#include "support/providers.h"
#include "support/store_builder.h"

namespace {

using namespace test_support;
using lines = std::vector<std::string>;
using names = std::vector<std::string>;
using ids = std::vector<int>;

class ProvidersRemoving : public store_test {};

TEST_F(ProvidersRemoving, AProviderIsRemovedFromEveryPlace) {
  const names present = {"a", "b", "c"};
  for (int place = 0; place < 3; ++place) {
    reset_channel_list();
    add_providers(present);
    names expected = present;
    expected.erase(expected.begin() + place);
    ids expected_ids = {0, 1, 2};
    expected_ids.erase(expected_ids.begin() + place);

    EXPECT_EQ(remove_provider_index(place), 0);

    EXPECT_EQ(provider_names(), expected);
    EXPECT_EQ(provider_ids(), expected_ids);
    EXPECT_TRUE(places_behind_providers_are_zero());
  }
}

TEST_F(ProvidersRemoving, TheLastProviderLeavesAnEmptyTable) {
  add_provider("a");

  EXPECT_EQ(remove_provider_index(0), 0);

  EXPECT_EQ(get_provider_number(), 0);
  EXPECT_TRUE(places_behind_providers_are_zero());
}

TEST_F(ProvidersRemoving, AFullTableLosesItsFirstAndItsLastProvider) {
  fill_providers(MAX_PROVIDER);
  list.genre[0] = named_group("genre", 9);

  EXPECT_EQ(remove_provider_index(499), 0);
  EXPECT_EQ(remove_provider_index(0), 0);

  EXPECT_EQ(get_provider_number(), 498);
  EXPECT_EQ(provider_ids().front(), 1);
  EXPECT_EQ(provider_ids().back(), 498);
  EXPECT_TRUE(places_behind_providers_are_zero());
  EXPECT_EQ(image_of(list.genre[0]), image_of(named_group("genre", 9)));
}

TEST_F(ProvidersRemoving, ServicesKeepTheIdOfARemovedProvider) {
  add_provider("a");
  channel_st *service = file_service({});
  service->provider_id = 0;
  add_provider("b");
  service->provider_id = 1;

  remove_provider_index(1);

  EXPECT_EQ(service->provider_id, 1);
}

TEST_F(ProvidersRemoving, AnIndexOutsideTheTableRemovesNothing) {
  for (const int count : {0, 1, 3, 499, 500}) {
    reset_channel_list();
    fill_providers(count);
    const std::string before = provider_table_image();

    // 65536 is place 0 to anyone who cuts it to 16 bits.
    for (const std::int32_t index : {count, count + 1, 501, 65536, -1, -65536, std::numeric_limits<std::int32_t>::max(),
                                     std::numeric_limits<std::int32_t>::min()}) {
      EXPECT_EQ(remove_provider_index(index), -1) << index;
    }
    EXPECT_EQ(provider_table_image(), before);
  }
}

TEST_F(ProvidersRemoving, OnlyAnIndexThatThePlacesBoundWouldLetPassIsReported) {
  add_providers({"a", "b"});

  EXPECT_EQ(writes_at(0, [] { return remove_provider_index(2); }),
            lines{"ERROR: remove_provider_index:# index 2 outside the provider table\n"});
  EXPECT_EQ(writes_at(0, [] { return remove_provider_index(-1); }),
            lines{"ERROR: remove_provider_index:# index -1 outside the provider table\n"});
  EXPECT_EQ(writes_at(-1, [] { return remove_provider_index(2); }), lines{});
  EXPECT_EQ(writes_at(5, [] { return remove_provider_index(3); }), lines{});
}

TEST_F(ProvidersRemoving, ARemovalIsNotTraced) {
  add_provider("a");

  EXPECT_EQ(writes_at(5, [] { return remove_provider_index(0); }), lines{});
}

TEST_F(ProvidersRemoving, ACountOutsideTheTableIsReadAsTheNearestInside) {
  fill_providers(MAX_PROVIDER);
  list.provider_num = 32767;
  EXPECT_EQ(remove_provider_index(500), -1);
  EXPECT_EQ(remove_provider_index(499), 0);
  EXPECT_EQ(get_provider_number(), 499);

  list.provider_num = -7;
  EXPECT_EQ(remove_provider_index(0), -1);
  EXPECT_EQ(remove_provider_index(-7), -1);
  EXPECT_EQ(get_provider_number(), -7);
}

}  // namespace
