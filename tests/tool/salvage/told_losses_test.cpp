// What a salvage tells: what counts claim, what is in doubt, what a conversion found, how far it has come.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "tool/salvage/salvaging_host.h"

namespace {

using chlist::salvage_outcome;
using salvage_test::Salvaging;
using test_support::bytes;
using test_support::channel_file;
using test_support::record_kind;
using test_support::record_place;
using test_support::service_data;

using namespace test_support::record_fields;

TEST_F(Salvaging, WhatIsLostIsTold) {
  const record_place &service = original.records[4];
  ASSERT_EQ(service.kind, record_kind::service);

  const salvage_outcome outcome = expect_salvaged(overwritten(service.offset, bytes(service.size, '\0')));

  EXPECT_EQ(outcome.missing.services, 1U);
  ASSERT_EQ(outcome.unexplained.size(), 1U);
  EXPECT_EQ(outcome.unexplained[0].offset, service.offset);
  EXPECT_EQ(outcome.unexplained[0].size, service.size);
  ASSERT_EQ(outcome.list.lost_entries.size(), 3U);
  EXPECT_EQ(outcome.list.lost_entries[0].view.kind, "ALL");
  EXPECT_EQ(outcome.list.lost_entries[0].number, 2);
}

// Services that no view lists are claimed by counts alone.
TEST_F(Salvaging, WhatCountsClaimBehindTheEndOfTheFileIsMissing) {
  channel_file file;
  for (const service_data &data : services) {
    file.service(data);
  }
  file.entry(VIEW_ALL, services[0], 1);
  const auto cut_in_front_of = [&file](std::size_t record) {
    const chlist::record_counts missing = salvage(file.data.substr(0, file.records[record].offset)).missing;
    return std::vector<std::size_t>{missing.networks, missing.transponders, missing.services};
  };

  // The list, a network, a transponder, three services, a transponder, three services, and the same again.
  EXPECT_EQ(cut_in_front_of(15), (std::vector<std::size_t>{0, 1, 0}));
  EXPECT_EQ(cut_in_front_of(10), (std::vector<std::size_t>{1, 0, 0}));
  EXPECT_EQ(cut_in_front_of(8), (std::vector<std::size_t>{1, 0, 2}));
  EXPECT_EQ(cut_in_front_of(6), (std::vector<std::size_t>{1, 1, 0}));
  EXPECT_TRUE(salvage(file.data.substr(0, file.records[15].offset)).has_findings());
  EXPECT_FALSE(salvage(file.data).has_findings());
}

TEST_F(Salvaging, ATransponderWithoutItsServicesCountsThem) {
  const salvage_outcome outcome = expect_salvaged(truncated(original.records[7].offset));

  ASSERT_EQ(original.records[6].kind, record_kind::transponder);
  ASSERT_EQ(outcome.without_services.size(), 1U);
  EXPECT_EQ(outcome.without_services[0].kind, "transponder");
  EXPECT_EQ(outcome.without_services[0].offset, original.records[6].offset);
  EXPECT_EQ(outcome.missing.services, 3U);
}

TEST_F(Salvaging, ANetworkThatIsThereTwiceIsNotMissing) {
  original.network(1, 0x0102, "Network").transponder(3000, 12'500'000, 1);

  EXPECT_TRUE(salvage(original.data).missing.is_none());
}

TEST_F(Salvaging, AnUnlistedServiceBesideAStaleEntryComesBack) {
  service_data unlisted = services.back();
  unlisted.service_id = 900;
  service_data gone = services.back();
  gone.service_id = 901;
  original.service(unlisted).entry(VIEW_ALL, gone, 13);

  const salvage_outcome outcome = salvage(original.data);

  EXPECT_EQ(outcome.recovered.services, 13U);
  ASSERT_EQ(outcome.contradicted.size(), 1U);
  EXPECT_EQ(outcome.contradicted[0].known.id.service_id, 900);
  EXPECT_EQ(outcome.list.lost_entries.size(), 1U);
  EXPECT_TRUE(outcome.has_findings());
}

TEST_F(Salvaging, WhatAConversionFindsIsTold) {
  original.set(list_field::version, 2, 9).service(services.back());

  const salvage_outcome outcome = salvage(original.data);

  ASSERT_TRUE(outcome.converted.has_value());
  EXPECT_EQ(outcome.converted->version, 9);
  EXPECT_EQ(outcome.converted->duplicates.size(), 0U);
  EXPECT_EQ(outcome.repeated.services, 1U);
  EXPECT_EQ(outcome.recovered.services, 12U);
  EXPECT_TRUE(outcome.has_findings());
  EXPECT_FALSE(salvage(channel_file(original).set(list_field::version, 2, 10).data).converted.has_value());
}

// One bit of 10 is 8.
TEST_F(Salvaging, AVersionThatTheRecordsContradictIsNotBelieved) {
  original.set(list_field::version, 2, 8);

  const salvage_outcome outcome = salvage(original.data);

  EXPECT_EQ(outcome.version, 10);
  EXPECT_EQ(outcome.recovered.services, 12U);
  EXPECT_TRUE(outcome.has_wrong_version);
  EXPECT_TRUE(outcome.has_findings());
}

TEST_F(Salvaging, ProgressGoesUpToItsTotal) {
  std::vector<std::size_t> steps;
  std::size_t of = 0;

  chlist::salvage_to_memory(std::as_bytes(std::span(original.data)), {}, [&](std::size_t done, std::size_t total) {
    steps.push_back(done);
    of = total;
  });

  EXPECT_EQ(of, 2 * original.data.size());
  EXPECT_TRUE(std::ranges::is_sorted(steps));
  ASSERT_FALSE(steps.empty());
  EXPECT_LE(steps.back(), of);
}

}  // namespace
