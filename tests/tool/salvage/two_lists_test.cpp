// Files that hold a list twice, or two lists one behind the other.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tool/salvage/salvaging_host.h"

namespace {

using chlist::salvage_outcome;
using salvage_test::Salvaging;
using test_support::bytes;
using test_support::channel_file;
using test_support::record_place;
using test_support::service_data;

using namespace test_support::record_fields;

TEST_F(Salvaging, AListThatIsThereTwiceComesBackOnce) {
  const salvage_outcome outcome = expect_salvaged({"twice", original.data + original.data, {}});

  EXPECT_EQ(outcome.recovered.networks, 2U);
  EXPECT_EQ(outcome.recovered.transponders, 4U);
  EXPECT_EQ(outcome.recovered.services, 12U);
  EXPECT_EQ(outcome.repeated.networks, 2U);
  EXPECT_EQ(outcome.repeated.transponders, 4U);
  EXPECT_EQ(outcome.repeated.services, 12U);
  EXPECT_EQ(outcome.other_lists, std::vector<std::size_t>{original.data.size()});
  EXPECT_TRUE(outcome.missing.is_none());
  EXPECT_TRUE(outcome.unexplained.empty());
  EXPECT_TRUE(outcome.without_services.empty());
  EXPECT_TRUE(outcome.has_findings());
}

TEST_F(Salvaging, OfAnIdentityThatIsThereTwiceTheSoundOneStays) {
  const record_place &service = original.records[4];
  bytes torn = original.data;
  torn.insert(service.offset, original_of(service));
  torn[service.offset + service_field::name_len] = 77;

  const salvage_outcome outcome = salvage(torn);

  EXPECT_EQ(outcome.recovered.services, 12U);
  EXPECT_EQ(outcome.repeated.services, 1U);
  EXPECT_TRUE(outcome.doubtful.empty());
  EXPECT_TRUE(outcome.has_findings());
}

// Of another owner: its services are none of this list's views.
TEST_F(Salvaging, AListBehindAnotherLeavesItsOwnRecordOut) {
  channel_file other;
  for (int i = 0; i < 3; ++i) {
    service_data data;
    data.ts_id = 4000;
    data.frequency = 12'600'000;
    data.service_id = static_cast<std::uint16_t>(900 + i);
    other.service(data).entry(VIEW_ALL, data, i + 1);
  }
  other.service(services[5]).entry(VIEW_ALL, services[5], 4);

  const salvage_outcome outcome = expect_salvaged({"two lists", original.data + other.data, {}});

  EXPECT_EQ(outcome.other_lists, std::vector<std::size_t>{original.data.size()});
  EXPECT_EQ(outcome.recovered.services, 15U);
  EXPECT_EQ(outcome.repeated.services, 1U);
  EXPECT_EQ(outcome.of_another_list.size(), 3U);
  EXPECT_TRUE(outcome.missing.is_none());
  EXPECT_EQ(get_channel_list()->vnumber, 12);
}

TEST_F(Salvaging, ServicesBehindTheLastNetworkThatIsCountedAreStrangersWhenNoViewListsThem) {
  service_data data;
  data.net_index = 7;
  data.network_id = 70;
  data.service_id = 70;
  original.service(data).set(list_field::network_num, 2, 2);

  const salvage_outcome outcome = salvage(original.data);

  EXPECT_EQ(outcome.recovered.services, 13U);
  ASSERT_EQ(outcome.of_another_list.size(), 1U);
  EXPECT_EQ(outcome.of_another_list[0].known.id.service_id, 70);
  EXPECT_TRUE(outcome.has_findings());
}

}  // namespace
