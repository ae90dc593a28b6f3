// Registering providers in tables that are full, or hold what no registration leaves: ids, orders and counts of files.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <limits>
#include <numeric>
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

const lines refused_full = {"ERROR: add_provider_info:# can't insert provider: exceed max\n"};

class ProvidersOfAnyTable : public store_test {};

TEST_F(ProvidersOfAnyTable, TheTableHolds500Providers) {
  fill_providers(499);

  EXPECT_EQ(add_provider("zzz"), 499);
  EXPECT_EQ(get_provider_number(), 500);
  EXPECT_EQ(provider_names().back(), "zzz");
  const std::string full = provider_table_image();
  const std::string behind = image_of(list.genre[0]);

  EXPECT_EQ(add_provider("Aaa"), -1);
  EXPECT_EQ(add_provider("zzzz"), -1);

  EXPECT_EQ(provider_table_image(), full);
  EXPECT_EQ(image_of(list.genre[0]), behind);
}

TEST_F(ProvidersOfAnyTable, TheLastPlaceIsFilledAlsoByAnInsertionInFront) {
  fill_providers(499);
  const std::string behind = image_of(list.genre[0]);

  EXPECT_EQ(add_provider("Aaa"), 499);

  ids expected(500);
  std::iota(expected.begin(), expected.end(), -1);
  expected[0] = 499;
  EXPECT_EQ(provider_ids(), expected);
  EXPECT_EQ(provider_names().back(), "Provider 0498");
  EXPECT_EQ(image_of(list.genre[0]), behind);
}

TEST_F(ProvidersOfAnyTable, TheOneFreeIdOfAnAlmostFullTableIsFound) {
  for (const int freed : {0, 250, 499}) {
    reset_channel_list();
    fill_providers(500);
    remove_provider_index(freed);

    EXPECT_EQ(add_provider("zzz"), freed);
  }
}

TEST_F(ProvidersOfAnyTable, AFullTableIsReportedAndNothingElse) {
  fill_providers(MAX_PROVIDER);
  const auto add = [] { return add_provider("a"); };

  EXPECT_EQ(writes_at(0, add), refused_full);
  EXPECT_EQ(writes_at(5, add), refused_full);
  EXPECT_EQ(writes_at(-1, add), lines{});
}

TEST_F(ProvidersOfAnyTable, IdsThatNoTableGivesDoNotCount) {
  put_provider("a", -1);
  put_provider("b", 500);
  put_provider("c", 32767);
  put_provider("d", -32768);
  put_provider("e", 0);

  EXPECT_EQ(add_provider("f"), 1);

  EXPECT_EQ(provider_ids(), (ids{-1, 500, 32767, -32768, 0, 1}));
}

TEST_F(ProvidersOfAnyTable, AnIdThatStandsTwiceIsTakenOnce) {
  put_provider("a", 0);
  put_provider("b", 0);
  put_provider("c", 2);

  EXPECT_EQ(add_provider("d"), 1);
}

TEST_F(ProvidersOfAnyTable, TheFirstGreaterNameOfAnUnsortedTableDecides) {
  put_provider("b", 0);
  put_provider("d", 1);
  put_provider("a", 2);

  add_provider("c");

  EXPECT_EQ(provider_names(), (names{"b", "c", "d", "a"}));
}

TEST_F(ProvidersOfAnyTable, ACountBeyondTheTableIsAFullTable) {
  fill_providers(MAX_PROVIDER);
  for (const int count : {501, 32767}) {
    list.provider_num = static_cast<std::int16_t>(count);
    const std::string before = provider_table_image();

    EXPECT_EQ(add_provider("a"), -1) << count;

    EXPECT_EQ(provider_table_image(), before) << count;
  }
}

TEST_F(ProvidersOfAnyTable, ANegativeCountIsAnEmptyTable) {
  for (const int count : {-1, static_cast<int>(std::numeric_limits<std::int16_t>::min())}) {
    reset_channel_list();
    list.provider_num = static_cast<std::int16_t>(count);

    EXPECT_EQ(add_provider("a"), 0) << count;

    EXPECT_EQ(provider_names(), (names{"a"})) << count;
  }
}

}  // namespace
