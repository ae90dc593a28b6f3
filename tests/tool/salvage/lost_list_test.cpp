// Files whose own list record has lost bytes, or got some: what comes back of it, and of the services behind it.
#include <channel/channel.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "tool/salvage/salvaging_host.h"

namespace {

using chlist::all_view;
using chlist::salvage_outcome;
using salvage_test::damage;
using salvage_test::noise_of;
using salvage_test::run_sizes;
using salvage_test::Salvaging;
using test_support::bytes;
using test_support::record_kind;
using test_support::record_place;

using namespace test_support::record_fields;

TEST_F(Salvaging, RunsInsertedIntoTheListsRecordShiftItBack) {
  for (const std::size_t at : {std::size_t{8}, std::size_t{30'000}, std::size_t{79'000}, list_field::vch,
                               list_field::vch + 50, std::size_t{150'000}, std::size_t{250'000},
                               list_field::favorite_vch + 24, std::size_t{400'000}, std::size_t{459'900}}) {
    for (const std::size_t size : run_sizes) {
      const salvage_outcome outcome = expect_salvaged(inserted(at, bytes(size, '\0')));

      // Behind the last entry that is in use nothing tells: the bytes are found in front of the first network.
      EXPECT_EQ(outcome.shift(), at < 400'000 ? static_cast<std::ptrdiff_t>(size) : 0) << at;
      EXPECT_EQ(outcome.unexplained.size(), at < 400'000 ? 0U : 1U) << at;
    }
  }
}

TEST_F(Salvaging, RunsCutOutOfTheListsRecordShiftItBack) {
  for (const std::size_t at : {std::size_t{30'000}, list_field::vch, list_field::vch + 50, std::size_t{150'000},
                               std::size_t{250'000}, list_field::favorite_vch + 24, std::size_t{400'000}}) {
    for (const std::size_t size : run_sizes) {
      expect_salvaged(cut_out(at, size));
    }
  }
}

// Every view finds its own place again; only the pieces that are torn are lost.
TEST_F(Salvaging, BytesMissingAtTwoPlacesOfTheListsRecordShiftEachViewByItself) {
  const std::size_t behind[] = {list_field::vch + 7 * test_support::entry_size + 3,
                                list_field::tv_vch + 3 * test_support::entry_size + 5, list_field::radio_vch - 900,
                                list_field::favorite_vch + 30, list_field::favorite_vch + 980};
  for (const std::size_t first : {std::size_t{30'000}, list_field::vch + 30}) {
    for (const std::size_t second : behind) {
      for (const std::size_t size : {std::size_t{1}, std::size_t{7}, std::size_t{100}}) {
        damage done = cut_out(second, size);
        done.file.erase(first, 5);
        done.hit.push_back({first, first + 5});
        done.name += " and 5 at " + std::to_string(first);
        const salvage_outcome outcome = expect_salvaged(done);

        EXPECT_EQ(outcome.torn.size(), 2U) << done.name;
        EXPECT_EQ(outcome.shift(), -5 - static_cast<std::ptrdiff_t>(size)) << done.name;
      }
    }
  }
}

TEST_F(Salvaging, BytesInsertedBehindAsManyThatWereCutOutAreFoundThoughTheRecordsStandInTheirPlace) {
  damage done = inserted(list_field::tv_vch + 50, bytes(10, '\0'));
  done.file.erase(list_field::vch + 30, 10);
  done.hit.push_back({list_field::vch + 30, list_field::vch + 40});
  const salvage_outcome outcome = expect_salvaged(done);

  ASSERT_EQ(outcome.torn.size(), 2U);
  EXPECT_EQ(outcome.torn[0].bytes, -10);
  EXPECT_EQ(outcome.torn[1].bytes, 10);
  EXPECT_TRUE(outcome.has_findings());
}

TEST_F(Salvaging, WithoutAnyViewTheServicesAreNumberedAnew) {
  const salvage_outcome outcome = salvage(overwritten(0, noise_of(test_support::list_size, 5)).file);

  EXPECT_TRUE(outcome.has_lost_settings);
  EXPECT_EQ(outcome.list.all, all_view::numbered_anew);
  EXPECT_EQ(outcome.recovered.services, 12U);
  EXPECT_EQ(get_channel_list()->vnumber, 12);
  EXPECT_EQ(get_channel_list()->vch[11].major_ch_num, 12);
  EXPECT_EQ(get_channel_list()->tv_vnumber, 9);
  EXPECT_EQ(get_channel_list()->radio_vnumber, 3);
  EXPECT_TRUE(outcome.has_findings());
}

TEST_F(Salvaging, LongRunsCutOutOfTheListsRecordLoseOnlyTheirArrays) {
  for (const std::size_t at : {std::size_t{8}, std::size_t{1'000}, list_field::vch, list_field::vch + 60}) {
    for (const std::size_t size :
         {std::size_t{65'536}, std::size_t{65'537}, std::size_t{120'000}, std::size_t{300'001}, std::size_t{379'000}}) {
      const damage done = cut_out(at, size);
      const salvage_outcome outcome = expect_salvaged(done);

      EXPECT_EQ(outcome.recovered.services, 12U) << done.name;
      EXPECT_EQ(outcome.recovered.transponders, 4U) << done.name;
      EXPECT_EQ(get_channel_list()->vnumber, 12) << done.name;
      EXPECT_TRUE(outcome.has_findings()) << done.name;
    }
  }
}

TEST_F(Salvaging, ServicesComeBackWithoutTheListsRecord) {
  for (const std::size_t left :
       {std::size_t{0}, std::size_t{1}, std::size_t{2}, std::size_t{12}, std::size_t{50'000}}) {
    const salvage_outcome outcome = expect_salvaged(cut_out(left, test_support::list_size - left));

    EXPECT_EQ(outcome.recovered.services, 12U) << left;
    EXPECT_EQ(outcome.list_bytes_missing, test_support::list_size - left);
    EXPECT_EQ(outcome.list.all, all_view::numbered_anew) << left;
    EXPECT_EQ(get_channel_list()->vch[11].major_ch_num, 12) << left;
  }
}

TEST_F(Salvaging, TheEndOfTheListsRecordMayBeCutOutWithTheFirstRecords) {
  const record_place &service = original.records[3];
  ASSERT_EQ(service.kind, record_kind::service);
  for (const std::size_t left : {std::size_t{400'000}, std::size_t{459'700}, std::size_t{460'031}}) {
    const salvage_outcome outcome = expect_salvaged(cut_out(left, service.offset - left));

    EXPECT_EQ(outcome.recovered.services, 12U) << left;
    EXPECT_EQ(outcome.list_bytes_missing, test_support::list_size - left);
    EXPECT_TRUE(outcome.missing.networks == 0) << left;
  }
}

TEST_F(Salvaging, TheAllViewIsBuiltAnewWithTheNumbersOfOtherViews) {
  const salvage_outcome outcome =
      expect_salvaged(overwritten(list_field::vch, bytes(test_support::entry_size * services.size(), '\0')));

  EXPECT_EQ(outcome.list.all, all_view::filled);
  EXPECT_EQ(outcome.list.counts.size(), 1U);
  ASSERT_EQ(get_channel_list()->vnumber, 12);
  for (int i = 0; i < 12; ++i) {
    EXPECT_EQ(get_channel_list()->vch[i].major_ch_num, i + 1);
    EXPECT_EQ(get_channel_list()->vch[i].service_id, 500 + i);
  }
  EXPECT_TRUE(outcome.has_findings());
}

TEST_F(Salvaging, FavouritesWhoseGroupsAreCutOutGetAName) {
  const salvage_outcome outcome = expect_salvaged(cut_out(list_field::favorite_group, test_support::group_size * 20));

  EXPECT_EQ(outcome.list.groups.named_favourites, 2U);
  EXPECT_EQ(get_channel_list()->favorite_group_num, 2);
  EXPECT_STREQ(get_channel_list()->favorite_group[1].name, "Favourites 2");
  EXPECT_EQ(get_channel_list()->favorite_vnumber[1], 6);
}

// A file that ends within the list's own record has no services behind it.
TEST_F(Salvaging, WithoutServicesGroupsAndEntriesStay) {
  for (const std::size_t size :
       {list_field::vch + 6 * test_support::entry_size - 1, list_field::vnumber, list_field::radio_vch + 2,
        list_field::favorite_vch, test_support::list_size - 1, test_support::list_size}) {
    const salvage_outcome outcome = salvage(original.data.substr(0, size));

    // Of the sixth entry the last byte is missing, which is of a pointer's slot.
    const int entries = size < 200'000 ? 6 : 12;
    EXPECT_EQ(get_channel_list()->vnumber, entries) << size;
    EXPECT_EQ(get_channel_list()->vch[4].major_ch_num, 5) << size;
    EXPECT_EQ(get_channel_list()->provider_num, 1) << size;
    EXPECT_STREQ(get_channel_list()->favorite_group[1].name, "Second best") << size;
    EXPECT_EQ(outcome.recovered.services, 0U) << size;
    EXPECT_GE(outcome.list.entries_without_service, static_cast<std::size_t>(entries)) << size;
    EXPECT_EQ(outcome.list_bytes_missing, test_support::list_size - size);
    EXPECT_EQ(outcome.missing.networks, size == test_support::list_size ? 2U : 0U);
    EXPECT_TRUE(outcome.has_findings());
  }
}

TEST_F(Salvaging, WithoutServicesGroupsAloneAreSomething) {
  const salvage_outcome outcome = salvage(original.data.substr(0, 300));

  EXPECT_EQ(get_channel_list()->provider_num, 1);
  EXPECT_EQ(outcome.list.entries_without_service, 0U);
}

TEST_F(Salvaging, WithoutServicesNothingIsLeftWithoutAVersion) {
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{2}, std::size_t{12}, std::size_t{115}}) {
    EXPECT_THROW(salvage(original.data.substr(0, size)), std::runtime_error) << size;
  }
  bytes file = original.data.substr(0, test_support::list_size);
  test_support::put(file, list_field::version, 2, 0);
  EXPECT_THROW(salvage(file), std::runtime_error);
}

}  // namespace
