// Findings in networks, transponders and services: those that are there twice, that hide others or stand in the wrong
// place, and groups that services name. Each in a file that has that one fault.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "tool/check/findings_host.h"

namespace {

using namespace findings_test;

using CheckHierarchy = test_support::store_test;

TEST_F(CheckHierarchy, TheSameNetworkTwiceIsFound) {
  channel_file file = sound_file();
  const std::size_t at = file.data.size();
  file.network(1, 1, "Again");

  EXPECT_EQ(found_in(file), (findings{{at, severity::warning, "duplicate-network",
                                       "network 2 (net 1, network 1) is network 1 once more",
                                       "searches look into the first one only: services of this one are not found"}}));
}

TEST_F(CheckHierarchy, TranspondersWithinTheToleranceAreFound) {
  const auto near = [](std::uint32_t distance, std::uint8_t polarisation) {
    channel_file file = sound_file();
    return found_of_kind(file.transponder(101, 11'000'000 - distance, polarisation), "near-transponders");
  };
  const std::size_t at = sound_file().data.size();

  EXPECT_EQ(near(2499, 0), (findings{{at, severity::warning, "near-transponders",
                                      "transponder ts 101, 10997501 H is within the tolerance of ts 100, 11000000 H at "
                                      "offset 460448",
                                      "searches take the first one for both: services of this one are not found "
                                      "there"}}));
  EXPECT_EQ(near(0, 0).size(), 1U);
  EXPECT_EQ(near(2500, 0), findings{});
  EXPECT_EQ(near(0, 1), findings{});
}

TEST_F(CheckHierarchy, APolarisationWithoutALetterIsItsNumber) {
  channel_file file = sound_file();

  const findings found =
      found_of_kind(file.transponder(101, 13'000'000, 2).transponder(102, 13'000'001, 2), "near-transponders");

  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].what.substr(0, found[0].what.find(" at ")),
            "transponder ts 102, 13000001 2 is within the tolerance of ts 101, 13000000 2");
}

// The one at 11,001,000 lies between two of which the second in the list is hidden by the first.
TEST_F(CheckHierarchy, TranspondersWithinTheToleranceAreFoundAcrossOthers) {
  channel_file file = sound_file();
  const std::size_t second = file.data.size();
  file.transponder(101, 11'002'000, 0).transponder(102, 11'001'000, 0).transponder(103, 11'004'000, 0);
  const std::size_t third = second + test_support::transponder_size;
  const std::size_t fourth = third + test_support::transponder_size;

  const findings found = found_of_kind(file, "near-transponders");

  ASSERT_EQ(found.size(), 3U);
  EXPECT_EQ(found[0].offset, second);
  EXPECT_EQ(found[0].what, "transponder ts 101, 11002000 H is within the tolerance of ts 100, 11000000 H at offset "
                           "460448");
  EXPECT_EQ(found[1].offset, third);
  EXPECT_EQ(found[1].what, "transponder ts 102, 11001000 H is within the tolerance of ts 100, 11000000 H at offset "
                           "460448");
  EXPECT_EQ(found[2].offset, fourth);
  EXPECT_EQ(found[2].what, "transponder ts 103, 11004000 H is within the tolerance of ts 101, 11002000 H at offset " +
                               std::to_string(second));
}

TEST_F(CheckHierarchy, ServicesBehindAnEarlierTransponderAreShadowed) {
  const service_data third = {.ts_id = 101, .frequency = 11'002'000, .service_id = 3, .name = "Hidden"};
  channel_file file = sound_file();
  file.service(third).entry(VIEW_ALL, third, 3);
  const finding expected = {second_service + test_support::service_size + test_support::transponder_size,
                            severity::error, "shadowed-service",
                            "service \"Hidden\" (net 1, network 1, ts 101, 11002000 H, service 3) stands below a "
                            "transponder or network that an earlier one hides",
                            "searches end at the earlier one: none finds it, and a channel search adds it a second "
                            "time"};

  EXPECT_EQ(found_of_kind(file, "shadowed-service"), findings{expected});
  EXPECT_EQ(found_of_kind(file, "misplaced-service"), findings{});
}

TEST_F(CheckHierarchy, ServicesOfANetworkThatIsThereTwiceAreShadowed) {
  const service_data third = {.service_id = 3, .name = "Hidden"};
  channel_file file = sound_file();
  file.network(1, 1, "Again").service(third);

  EXPECT_EQ(found_of_kind(file, "shadowed-service").size(), 1U);
  EXPECT_EQ(found_of_kind(file, "misplaced-service"), findings{});
}

TEST_F(CheckHierarchy, AServiceBelowAnotherNetworkIsMisplaced) {
  channel_file file = sound_file();
  file.set(first_network + network_field::network_id, 2, 9);

  EXPECT_EQ(found_of_kind(file, "misplaced-service").size(), 2U);
}

TEST_F(CheckHierarchy, AServiceBelowAnotherTransponderIsMisplaced) {
  channel_file file = sound_file();
  file.set(first_transponder + transponder_field::frequency, 4, 12'000'000);

  const findings found = found_of_kind(file, "misplaced-service");

  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0],
            (finding{first_service, severity::error, "misplaced-service",
                     "service " + std::string(news_text) + " does not stand below a transponder of its identity",
                     "no search finds it by that identity, and a channel search adds it a second time; when many "
                     "services are concerned, the file is out of frame"}));
}

TEST_F(CheckHierarchy, TheSecondOfTwoEqualServicesIsHidden) {
  channel_file file = sound_file();
  const std::size_t at = file.data.size();
  file.service({.service_id = 1, .name = "News"});

  EXPECT_EQ(found_of_kind(file, "hidden-service"),
            (findings{{at, severity::warning, "hidden-service",
                       "service " + std::string(news_text) + " has the identity of the one at offset 460784",
                       "every search stops at the first one: this one is never shown"}}));
}

TEST_F(CheckHierarchy, GroupIdsOfServicesHaveARecord) {
  channel_file file = sound_file();
  file.set_last(record_kind::service, service_field::country_id, 2, 5)
      .set_last(record_kind::service, service_field::genre_id, 2, 6)
      .set_last(record_kind::service, service_field::provider_id, 2, 7);

  const std::string who = "service " + std::string(films_text);
  EXPECT_EQ(
      found_in(file),
      (findings{{second_service + service_field::provider_id, severity::warning, "unknown-group-id",
                 who + " has the provider id 7, which no provider has",
                 "it is shown without a provider, and no provider's list holds it"},
                {second_service + service_field::country_id, severity::note, "unknown-group-id",
                 who + " has the country id 5, which no country has", "none: every load sets the country id to 0"},
                {second_service + service_field::genre_id, severity::note, "unknown-group-id",
                 who + " has the genre id 6, which no genre has",
                 "no genre's list holds it, unless the receiver has the genres in a file of their own"}}));
}

TEST_F(CheckHierarchy, ServicesWithoutGroupsAreSound) {
  for (const std::uint64_t id : {std::uint64_t{0}, std::uint64_t{0xFFFF}, std::uint64_t{1}}) {
    channel_file file = sound_file();
    EXPECT_EQ(found_in(file.set_last(record_kind::service, service_field::provider_id, 2, id)), findings{});
  }
}

}  // namespace
